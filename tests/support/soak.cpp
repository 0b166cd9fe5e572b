#include "tests/support/soak.h"

#include "tests/support/environment.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <map>

namespace support
{

namespace
{

constexpr int kSuiteRounds = 2;

int Setting(const char* variable, int otherwise)
{
    const char* const text = std::getenv(variable);
    return text != nullptr ? std::atoi(text) : otherwise;
}

std::string RunningTest()
{
    const testing::TestInfo* const test = testing::UnitTest::GetInstance()->current_test_info();
    return std::string(test->test_suite_name()) + "." + test->name();
}

} // namespace

SoakInputs::SoakInputs(int shortCount)
    : m_test(RunningTest()), m_seed(static_cast<unsigned>(Setting("VGUI_SOAK_SEED", 1))),
      m_count(std::max(1, Setting("VGUI_SOAK", shortCount) / kSuiteRounds))
{
    // Where the first round ended the second begins.
    static std::map<std::string, int> ends;
    m_next = ends.try_emplace(m_test, Setting("VGUI_SOAK_FIRST", 0)).first->second;
    m_end = ends[m_test] = m_next + m_count;
    std::printf("[     SOAK ] %s: seed %u, inputs %d to %d\n", m_test.c_str(), m_seed, m_next, m_end - 1);
}

SoakInputs::~SoakInputs()
{
    SetCrashNote("");
}

bool SoakInputs::Next()
{
    if (m_next == m_end)
        return false;
    m_name = m_test + ", seed " + std::to_string(m_seed) + ", input " + std::to_string(m_next);
    SetCrashNote(m_name.c_str());
    std::seed_seq sequence{m_seed, static_cast<unsigned>(m_next)};
    m_random.seed(sequence);
    ++m_next;
    return true;
}

} // namespace support
