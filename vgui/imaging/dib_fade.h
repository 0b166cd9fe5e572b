// The values that colour channels have while an image fades. Plain arithmetic.
#pragma once

#include <afxwin.h>
#include <algorithm>
#include <array>

// A table from a channel's value in the image to its value in the current frame.
class VFadeLevels
{
public:
    enum class Kind { In, Out };

    // In: every channel starts at 0 and ends at its value; Out: the other way round. steps: in how many
    // frames the end is reached, if that takes no more than 255; below 1 counts as 1.
    VFadeLevels(Kind kind, int steps) : m_isIn(kind == Kind::In), m_divisor(std::max(steps, 1))
    {
        for (int value = 0; value < kValues; ++value)
            m_distance[value] = static_cast<BYTE>(value);
        FillLevels();
    }

    // The value in the current frame.
    BYTE operator[](BYTE value) const { return m_levels[value]; }

    // Whether all values are the same in the current frames.
    bool operator==(const VFadeLevels& other) const { return m_levels == other.m_levels; }

    // Goes to the next frame: every channel makes good one part in so many of what is left, rounded up.
    void Advance()
    {
        for (BYTE& distance : m_distance)
            distance =
                static_cast<BYTE>(distance - distance / m_divisor - (distance % m_divisor != 0 ? 1 : 0));
        m_divisor = std::max(m_divisor - 1, 1);
        FillLevels();
    }

private:
    static constexpr int kValues = 256;

    void FillLevels()
    {
        for (int value = 0; value < kValues; ++value)
            m_levels[value] = m_isIn ? static_cast<BYTE>(value - m_distance[value]) : m_distance[value];
    }

    bool m_isIn;
    int m_divisor;
    std::array<BYTE, kValues> m_distance; // from the end, by value
    std::array<BYTE, kValues> m_levels;
};
