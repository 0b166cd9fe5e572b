// Long runs over damaged inputs that can be repeated from any place.
#pragma once

#include <random>
#include <string>

namespace support
{

// The inputs of the running test, half of them in each of its suite's two rounds. Their random numbers depend
// on the seed and the input's index alone. Environment variables:
//   VGUI_SOAK         how many inputs; without it the test says
//   VGUI_SOAK_SEED    another seed than 1
//   VGUI_SOAK_FIRST   the index to begin with
// Seed and indices are printed; a crash report names the input.
class SoakInputs
{
public:
    explicit SoakInputs(int shortCount);
    SoakInputs(const SoakInputs&) = delete;
    SoakInputs& operator=(const SoakInputs&) = delete;
    ~SoakInputs();

    // Goes on to the next input; at first to the first one. False after the last one.
    bool Next();
    [[nodiscard]] int Index() const { return m_next - 1; }
    // Inputs of this round.
    [[nodiscard]] int Count() const { return m_count; }
    // Test, seed and index.
    [[nodiscard]] const std::string& Name() const { return m_name; }
    [[nodiscard]] std::mt19937& Random() { return m_random; }

private:
    std::string m_test;
    unsigned m_seed;
    int m_count;
    int m_next;
    int m_end;
    std::string m_name;
    std::mt19937 m_random;
};

} // namespace support
