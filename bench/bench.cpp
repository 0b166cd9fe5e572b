#include "bench/bench.h"

#include <afxwin.h>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>

namespace bench
{

namespace
{

constexpr double kSampleSeconds = 4e-4; // the least a sample takes, so that the clock's steps do not show
constexpr double kRowSeconds = 1.2;     // what a row takes unless it is slow
constexpr double kLongSeconds = 2;      // what takes this long is not done again
constexpr int kRounds = 11;
constexpr int kFewestRounds = 5;
constexpr int kMostTurns = 20;
constexpr int kMostRepeats = 100000;
// Ratios are shown with three decimals below 0.1, two below 10, one below 100.
constexpr double kTwoDecimals = 0.1;
constexpr double kOneDecimal = 10;
constexpr double kNoDecimal = 100;

CWinApp g_app;
bool g_quick = false;
std::string_view g_row; // a part of the text of the rows to measure
const char* g_subject = "";

std::map<std::string_view, Subject::Function>& Subjects()
{
    static std::map<std::string_view, Subject::Function> subjects;
    return subjects;
}

// Seconds since some moment.
double Now()
{
    LARGE_INTEGER now;
    LARGE_INTEGER perSecond;
    ::QueryPerformanceCounter(&now);
    ::QueryPerformanceFrequency(&perSecond);
    return static_cast<double>(now.QuadPart) / static_cast<double>(perSecond.QuadPart);
}

// Seconds that one execution of the body takes, measured over some of them.
double Sample(const Work& work, int repeats)
{
    if (!work.prepare) {
        const double start = Now();
        for (int i = 0; i < repeats; ++i)
            work.body();
        return (Now() - start) / repeats;
    }
    double sum = 0;
    for (int i = 0; i < repeats; ++i) {
        work.prepare();
        const double start = Now();
        work.body();
        sum += Now() - start;
    }
    return sum / repeats;
}

// How often a body that takes so long has to be executed for a sample of some length.
int RepeatsFor(double sampleSeconds, double seconds)
{
    return static_cast<int>(std::clamp<double>(sampleSeconds / seconds, 1, kMostRepeats));
}

// Seconds that one execution takes, measured until it is long enough to be told.
double Estimate(const Work& work)
{
    int repeats = 1;
    double seconds = Sample(work, repeats);
    while (repeats < kMostRepeats && seconds * repeats < kSampleSeconds) {
        repeats *= 2;
        seconds = Sample(work, repeats);
    }
    return seconds;
}

// What a thread of the framework drops when it has nothing to do: temporary objects would pile up and slow
// both sides down.
void BeIdle()
{
    MSG message;
    while (::PeekMessage(&message, nullptr, 0, 0, PM_REMOVE)) {
        ::TranslateMessage(&message);
        ::DispatchMessage(&message);
    }
    for (LONG count = 0; g_app.OnIdle(count); ++count) {
    }
}

// The ratios of all rounds, sorted. In a round the two sides take turns, and the fastest sample of each
// counts: on a busy machine it is the one that was interrupted least. Samples of both sides are equally long,
// since long ones are interrupted more.
std::vector<double> RatiosOfRounds(const Work& ours, const Work& yardstick)
{
    // What is executed for the first time is slower; where it counts, this only warms up.
    const double firstOfYardstick = Sample(yardstick, 1);
    const double first = Sample(ours, 1);
    if (g_quick || firstOfYardstick > kLongSeconds)
        return {first / firstOfYardstick};
    const double estimateOfYardstick = Estimate(yardstick);
    const double estimate = first > kLongSeconds ? first : Estimate(ours);
    const double length = std::max({kSampleSeconds, estimate, estimateOfYardstick});
    const int yardstickRepeats = RepeatsFor(length, estimateOfYardstick);
    const int repeats = RepeatsFor(length, estimate);
    if (first > kLongSeconds)
        return {first / Sample(yardstick, yardstickRepeats)};
    std::vector<double> ratios;
    const double start = Now();
    for (int round = 0; round < kRounds; ++round) {
        if (round >= kFewestRounds && Now() - start > kRowSeconds)
            break;
        BeIdle();
        double time = Sample(ours, repeats);
        double yardstickTime = Sample(yardstick, yardstickRepeats);
        const double roundStart = Now();
        for (int turn = 1; turn < kMostTurns && Now() - roundStart < kRowSeconds / kRounds; ++turn) {
            time = std::min(time, Sample(ours, repeats));
            yardstickTime = std::min(yardstickTime, Sample(yardstick, yardstickRepeats));
        }
        ratios.push_back(time / yardstickTime);
    }
    std::sort(ratios.begin(), ratios.end());
    return ratios;
}

std::string RatioText(double ratio)
{
    const int decimals = ratio < kTwoDecimals ? 3 : ratio < kOneDecimal ? 2 : ratio < kNoDecimal ? 1 : 0;
    char text[32];
    std::snprintf(text, sizeof text, "%.*f", decimals, ratio);
    return text;
}

std::string CountText(long n, std::string_view unit)
{
    if (n == 0)
        return "";
    std::string digits = std::to_string(n);
    for (auto place = static_cast<int>(digits.size()) - 3; place > 0; place -= 3)
        digits.insert(static_cast<size_t>(place), 1, ',');
    return digits + ' ' + std::string(unit);
}

void PrintHead()
{
    std::puts("| subject | what | with | compared with | ratio | middle half |");
    std::puts("| --- | --- | ---: | --- | ---: | ---: |");
}

// Takes an option off the names, with its value if it has one.
bool TakeOption(std::vector<std::string_view>& names, std::string_view option, std::string_view& value)
{
    const auto found = std::find_if(names.begin(), names.end(), [option](std::string_view name) {
        return name.substr(0, option.size()) == option;
    });
    if (found == names.end())
        return false;
    value = found->substr(option.size());
    names.erase(found);
    return true;
}

} // namespace

Subject::Subject(const char* name, Function run)
{
    Subjects()[name] = run;
}

bool Subject::Run(const std::vector<std::string_view>& names)
{
    for (const std::string_view name : names) {
        if (Subjects().count(name) != 0)
            continue;
        std::fprintf(stderr, "no such subject: %.*s; there are", static_cast<int>(name.size()), name.data());
        for (const auto& [known, run] : Subjects())
            std::fprintf(stderr, " %s", known.data());
        std::fputs("\n", stderr);
        return false;
    }
    PrintHead();
    for (const auto& [name, run] : Subjects()) {
        if (!names.empty() && std::find(names.begin(), names.end(), name) == names.end())
            continue;
        g_subject = name.data();
        run();
    }
    return true;
}

void Compare(std::string_view what, long n, std::string_view unit, const Work& ours,
             const Yardstick& yardstick)
{
    if (what.find(g_row) == std::string_view::npos)
        return;
    const std::vector<double> ratios = RatiosOfRounds(ours, yardstick.work);
    const size_t last = ratios.size() - 1;
    std::printf("| %s | %.*s | %s | %.*s | %s | %s-%s |\n", g_subject, static_cast<int>(what.size()),
                what.data(), CountText(n, unit).c_str(), static_cast<int>(yardstick.name.size()),
                yardstick.name.data(), RatioText(ratios[last / 2]).c_str(),
                RatioText(ratios[last / 4]).c_str(), RatioText(ratios[last - last / 4]).c_str());
    std::fflush(stdout);
}

std::vector<int> Sizes(std::initializer_list<int> sizes)
{
    return {sizes.begin(), g_quick ? sizes.begin() + 1 : sizes.end()};
}

void Require(bool success, std::string_view what)
{
    if (success)
        return;
    std::printf("%s: %.*s failed\n", g_subject, static_cast<int>(what.size()), what.data());
    std::fflush(stdout);
    std::_Exit(1);
}

} // namespace bench

// vgui_bench [--quick] [--row=TEXT] [SUBJECT...]: with --quick, once and with the smallest sizes; with --row,
// only rows whose second column has the text in it.
int main(int argc, char* argv[])
{
    std::vector<std::string_view> names(argv + 1, argv + argc);
    std::string_view none;
    bench::g_quick = bench::TakeOption(names, "--quick", none);
    bench::TakeOption(names, "--row=", bench::g_row);
    if (!AfxWinInit(::GetModuleHandle(nullptr), nullptr, ::GetCommandLine(), SW_HIDE))
        return 1;
    if (!bench::Subject::Run(names))
        return 1;
    // What the test of a quick run looks for: a crash may look like success under Wine.
    if (bench::g_quick)
        std::puts("ALL SUBJECTS MEASURED");
    return 0;
}
