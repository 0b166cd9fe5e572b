// The frame of the benchmarks. Times differ from machine to machine and from moment to moment; what is shown
// are ratios to a yardstick that does the same work and is measured in turn with it.
//
// A file holds one subject and registers it:
//
//     const bench::Subject subject("hooks", &Run);
#pragma once

#include <functional>
#include <initializer_list>
#include <string_view>
#include <vector>

namespace bench
{

class Subject
{
public:
    using Function = void (*)();

    // The name selects the subject on the command line, stands in its rows, and must last as long as the
    // program.
    Subject(const char* name, Function run);

    // Runs the named subjects, or all without names, in the order of their names. False when a name is
    // unknown; nothing is run then.
    static bool Run(const std::vector<std::string_view>& names);
};

// One side of a comparison: what is timed, and what comes before each time of it and is not.
struct Work {
    std::function<void()> body;
    std::function<void()> prepare = {};
};

// What the yardstick of a row is, in words, and what it does.
struct Yardstick {
    std::string_view name;
    Work work;
};

// Measures both sides in turn, in several rounds, and prints the row: the median of the rounds' ratios, and
// the span that holds the middle half of them. n: how many of what the work was done with, 0 for no such
// number.
void Compare(std::string_view what, long n, std::string_view unit, const Work& ours,
             const Yardstick& yardstick);

// The sizes to measure with: all of them, or the first in a quick run, which shows that everything works and
// says nothing of times.
[[nodiscard]] std::vector<int> Sizes(std::initializer_list<int> sizes);

// Ends the program with a message: a benchmark of something that failed would show a fine ratio.
void Require(bool success, std::string_view what);

} // namespace bench
