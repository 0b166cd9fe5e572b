// Texts that nobody would write.
#pragma once

#include "tests/support/soak.h"

#include <afxwin.h>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

class RandomText
{
public:
    explicit RandomText(support::SoakInputs& inputs) : m_random(inputs.Random()) {}

    // From 0 to limit - 1.
    size_t Below(size_t limit) { return std::uniform_int_distribution<size_t>(0, limit - 1)(m_random); }
    bool Rarely() { return Below(10) == 0; }

    // Mostly a few characters with many of the given ones among them, rarely thousands; never a zero.
    std::wstring Next(std::wstring_view frequent = {}, size_t usualLength = 12)
    {
        std::wstring text(Below(Rarely() ? 3000 : usualLength), L' ');
        for (wchar_t& c : text)
            c = !frequent.empty() && Below(3) == 0 ? frequent[Below(frequent.size())] : AnyCharacter();
        return text;
    }
    // Bytes of all kinds, for what reads them as text.
    std::vector<BYTE> Bytes(size_t limit)
    {
        std::vector<BYTE> bytes(Below(limit));
        for (BYTE& byte : bytes)
            byte = static_cast<BYTE>(Below(256));
        return bytes;
    }
    // The same as characters of one byte.
    std::string String(size_t limit)
    {
        const std::vector<BYTE> bytes = Bytes(limit);
        return {bytes.begin(), bytes.end()};
    }
    // From a set of values at the limits of what is sensible, or near zero.
    int Number()
    {
        constexpr int kLimits[] = {0,     1,     -1,     2,     259,   260,     4096,
                                   32767, 32768, -32768, 65535, 65536, INT_MAX, INT_MIN};
        return Below(2) == 0 ? kLimits[Below(std::size(kLimits))] : static_cast<int>(Below(2000)) - 1000;
    }

private:
    wchar_t AnyCharacter()
    {
        // Signs that mean something somewhere, Chinese, half of a surrogate pair, marks of direction.
        static constexpr std::wstring_view kSome =
            L"abcXYZ019 \t\r\n&%s\\/|;?=.:\"'[]{}<>中文\xD83D\xDC00\x202E\xFFFF\x0001";
        return Rarely() ? static_cast<wchar_t>(1 + Below(0xFFFF)) : kSome[Below(kSome.size())];
    }

    std::mt19937& m_random;
};

// Calls check with one input of the running test after the other, until it fails.
template <class Check>
void SoakWithText(int shortCount, Check check)
{
    support::SoakInputs inputs(shortCount);
    while (!testing::Test::HasFailure() && inputs.Next()) {
        SCOPED_TRACE(inputs.Name());
        RandomText random(inputs);
        check(random);
    }
}
