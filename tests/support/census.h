// Counts what the process holds of the system's graphic and user objects, to find leaks.
#pragma once

#include "tests/support/wait.h"

#include <gtest/gtest.h>
#include <map>
#include <string>

namespace support
{

// How many objects of each kind there are ("brush", "window", "menu" ...).
using ObjectCounts = std::map<std::string, int>;

// Counts now. The framework's temporary objects are dropped first.
[[nodiscard]] ObjectCounts CountObjects();

// Remembers the counts of its construction.
class Census
{
public:
    Census();

    // Success when every count is what it was; else the differences by kind, with the class and caption
    // of every window that is new.
    [[nodiscard]] testing::AssertionResult Unchanged() const;
    // The same as an expectation.
    void ExpectUnchanged() const;

private:
    ObjectCounts m_counts;
    std::map<HWND, std::string> m_windows;
};

// Makes the system create what it keeps for good at the first use: cached DCs, the message box, the
// common controls, fonts. Does its work once per process.
void WarmUpSystem();

// The base of test suites that must leave nothing behind. Every suite runs twice in its process; the census
// begins when the second round does and is compared when it ends. A suite with a warm-up of its own hides
// SetUpTestSuite:
//
//     static void SetUpTestSuite() { UseEverythingOnce(); CensusTest::SetUpTestSuite(); }
class CensusTest : public testing::Test
{
public:
    static void SetUpTestSuite();
    static void TearDownTestSuite();
};

} // namespace support
