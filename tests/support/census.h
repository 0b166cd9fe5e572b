// Counts what the process holds of the system's graphic and user objects, to find leaks.
#pragma once

#include "tests/support/wait.h"

#include <gtest/gtest.h>
#include <map>
#include <set>
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
    // Kinds that are left out count nothing.
    explicit Census(std::set<std::string> leftOut = {});

    // Success when every count is what it was; else the differences by kind, and what is known of every
    // window and GDI object that is new.
    [[nodiscard]] testing::AssertionResult Unchanged() const;
    // The same as an expectation.
    void ExpectUnchanged() const;

private:
    std::set<std::string> m_leftOut;
    ObjectCounts m_counts;
    ObjectCounts m_objects; // by what is known of each
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
