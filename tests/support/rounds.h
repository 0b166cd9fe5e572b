// What is left after something was done many times.
#pragma once

#include "tests/support/census.h"

#include <functional>

namespace support
{

inline constexpr int kRounds = 200;

// The threads of the process and its kernel handles by type ("thread", "Key handle", "File handle" ...).
[[nodiscard]] ObjectCounts CountKernelObjects();

// Does a round a few times and then kRounds times, and expects that the process then has the graphic and user
// objects, threads and kernel handles of before. Of the two times that every test is run, the first one only
// does the few rounds.
void ExpectRoundsLeaveNothing(const std::function<void()>& round);

} // namespace support
