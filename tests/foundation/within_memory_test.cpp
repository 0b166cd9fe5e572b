#include "vgui/foundation/within_memory.h"

#include <gtest/gtest.h>
#include <string>

TEST(WithinMemory, AnswersNothingWhenMemoryIsShort)
{
    EXPECT_EQ(VWithinMemory([] { return 7; }), 7);
    EXPECT_EQ(VWithinMemory([]() -> int { throw std::bad_alloc(); }), 0);
    EXPECT_EQ(VWithinMemory([]() -> std::string { AfxThrowMemoryException(); }), "");
    // Other failures are not its business.
    EXPECT_THROW(VWithinMemory([]() -> int { throw 3; }), int);
}
