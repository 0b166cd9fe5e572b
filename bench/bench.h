// The frame of the benchmarks. Times differ from machine to machine; what is shown are ratios to a yardstick
// that is measured in the same run.
//
// A file holds one subject and registers it:
//
//     const bench::Subject subject("imaging", [] { ... });
#pragma once

#include <string_view>

namespace bench
{

using Function = void (*)();

class Subject
{
public:
    // The name selects the subject on the command line and must last as long as the program.
    Subject(const char* name, Function run);

    // Runs the named subjects, or all without names. False when a name is unknown.
    static bool Run(int count, const char* const* names);

private:
    const char* m_name;
    Function m_run;
    Subject* m_next;
};

// Seconds since some moment.
[[nodiscard]] double Now();

// The least of the times, in seconds, of calls of body(), each after an untimed call of prepare().
template <class Prepare, class Body>
[[nodiscard]] double Fastest(Prepare prepare, Body body)
{
    constexpr int kRounds = 15;
    double least = 1e9;
    for (int round = 0; round < kRounds; ++round) {
        prepare();
        const double start = Now();
        body();
        const double time = Now() - start;
        least = time < least ? time : least;
    }
    return least;
}

template <class Body>
[[nodiscard]] double Fastest(Body body)
{
    return Fastest([] {}, body);
}

// Prints a table's heading, and a row of it: the time of a subject in units of the yardstick's.
void PrintHeading(std::string_view title, std::string_view yardstick, double yardstickSeconds);
void PrintRow(std::string_view name, double seconds, double yardstickSeconds);

} // namespace bench
