#include "support/Claims.h"

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <map>

#include <benchmark/benchmark.h>

namespace bench {

namespace {

/// Medians over the repetitions of one benchmark.
struct Median {
    double cpu = 0.0;  ///< seconds
    double wall = 0.0; ///< seconds
    double megabytes = 0.0;
    double each = 0.0; ///< how many things took that time
};

double MedianOf(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const std::size_t half = values.size() / 2;
    return values.size() % 2 == 1 ? values[half] : (values[half - 1] + values[half]) / 2;
}

/// Prints as Google Benchmark does, and keeps the single repetitions.
class Collector : public benchmark::ConsoleReporter {
public:
    Collector() : ConsoleReporter(OO_Tabular) {}

    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            failed_ = failed_ || run.error_occurred;
            if (run.run_type != Run::RT_Iteration || run.error_occurred) {
                continue;
            }
            const double unit = benchmark::GetTimeUnitMultiplier(run.time_unit);
            Samples& samples = samples_[run.run_name.function_name];
            const auto counter = [&run](const char* name, double otherwise) {
                const auto found = run.counters.find(name);
                return found == run.counters.end() ? otherwise : found->second.value;
            };
            samples.cpu.push_back(counter("own_cpu_s", run.GetAdjustedCPUTime() / unit));
            samples.wall.push_back(counter("own_wall_s", run.GetAdjustedRealTime() / unit));
            samples.megabytes.push_back(counter("MB", 0.0));
            samples.each.push_back(counter("each", 1.0));
        }
        ConsoleReporter::ReportRuns(runs);
    }

    bool Has(const std::string& name) const { return samples_.count(name) != 0; }

    Median Of(const std::string& name) const
    {
        const Samples& samples = samples_.at(name);
        return {MedianOf(samples.cpu), MedianOf(samples.wall), MedianOf(samples.megabytes),
                MedianOf(samples.each)};
    }

    bool Failed() const { return failed_; }

private:
    struct Samples {
        std::vector<double> cpu, wall, megabytes, each;
    };
    std::map<std::string, Samples> samples_;
    bool failed_ = false;
};

/// printf into a string.
template <typename... Values>
std::string Format(const char* format, Values... values)
{
    char text[128];
    std::snprintf(text, sizeof text, format, values...);
    return text;
}

std::string Seconds(double value)
{
    if (value >= 0.1) {
        return Format("%.2f s", value);
    }
    return value >= 0.005 ? Format("%.1f ms", 1e3 * value) : Format("%.0f us", 1e6 * value);
}

std::string Times(const Median& median)
{
    return Seconds(median.cpu) + " (" + Seconds(median.wall) + ")";
}

std::string NanosecondsEach(const Median& median)
{
    return Format("%.1f ns (%.1f ns)", 1e9 * median.cpu / median.each,
                  1e9 * median.wall / median.each);
}

void PrintRow(const Claim& claim, const std::string& ours, const std::string& other,
              const std::string& measured, const std::string& wanted, bool holds)
{
    const bool isWanted = claim.bound != Claim::kNothingWanted;
    std::cout << "| " << claim.what << " | " << ours << " | " << claim.otherIs << other << " | "
              << measured << " | " << (isWanted ? wanted : "") << " | "
              << (!isWanted ? ""
                  : holds   ? "yes"
                            : "**no**")
              << " |\n";
}

std::string TimesFaster(const Median& ours, const Median& other)
{
    return Format("%.3g (%.3g) times faster", other.cpu / ours.cpu, other.wall / ours.wall);
}

/// A claim about the times themselves, not about their ratio.
void PrintClaimOnTimes(const Claim& claim, const Median& ours, const Median& other)
{
    if (claim.kind == Claim::Milliseconds) {
        PrintRow(claim, Times(ours), ": " + Times(other), TimesFaster(ours, other),
                 Format("<= %.3g ms", claim.bound), 1e3 * ours.cpu <= claim.bound);
    } else if (claim.kind == Claim::MillisecondsMore) {
        const double more = 1e3 * (ours.cpu - other.cpu);
        PrintRow(claim, Times(ours), ": " + Times(other),
                 Format("%.2f ms (%.2f ms) more", more, 1e3 * (ours.wall - other.wall)),
                 Format("<= %.3g ms", claim.bound), more <= claim.bound);
    } else {
        PrintRow(claim, NanosecondsEach(ours), ": " + NanosecondsEach(other),
                 TimesFaster(ours, other), Format("<= %.3g ns", claim.bound),
                 1e9 * ours.cpu / ours.each <= claim.bound);
    }
}

/// other is 0 where there is nothing beside ours.
void PrintClaimOnMemory(const Claim& claim, double ours, double other)
{
    const bool isRatio = claim.kind == Claim::TimesTheMemory;
    const bool alone = other == 0.0;
    PrintRow(claim, Format("%.1f MB", ours), alone ? "" : Format(": %.1f MB", other),
             alone ? "" : Format("%.3g times as much", ours / other),
             Format(isRatio ? "<= %.3g" : "<= %.4g MB", claim.bound),
             (isRatio ? ours / other : ours) <= claim.bound);
}

void PrintClaim(const Claim& claim, const Collector& results)
{
    const Median ours = results.Of(claim.ours);
    if (claim.kind == Claim::Megabytes || claim.kind == Claim::TimesTheMemory) {
        PrintClaimOnMemory(claim, ours.megabytes,
                           claim.other.empty() ? 0.0 : results.Of(claim.other).megabytes);
        return;
    }
    const Median other = results.Of(claim.other);
    if (claim.kind != Claim::TimesFaster && claim.kind != Claim::TimesTheTime) {
        PrintClaimOnTimes(claim, ours, other);
        return;
    }
    const bool faster = claim.kind == Claim::TimesFaster;
    const double cpu = faster ? other.cpu / ours.cpu : ours.cpu / other.cpu;
    const double wall = faster ? other.wall / ours.wall : ours.wall / other.wall;
    const char* const words = faster ? "faster" : "the time";
    PrintRow(claim, Times(ours), ": " + Times(other),
             Format("%.3g (%.3g) times %s", cpu, wall, words),
             Format(faster ? ">= %.3g" : "<= %.3g", claim.bound),
             faster ? cpu >= claim.bound : cpu <= claim.bound);
}

} // namespace

int Run(int argc, char** argv, const std::vector<Claim>& claims)
{
    char interleaving[] = "--benchmark_enable_random_interleaving=true";
    std::vector<char*> arguments(argv, argv + argc);
    arguments.insert(arguments.begin() + 1, interleaving);
    int count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) {
        return 2;
    }
    Collector results;
    results.SetOutputStream(&std::cerr);
    results.SetErrorStream(&std::cerr);
    benchmark::RunSpecifiedBenchmarks(&results);
    for (const Claim& claim : claims) {
        if (results.Has(claim.ours) && (claim.other.empty() || results.Has(claim.other))) {
            PrintClaim(claim, results);
        }
    }
    return results.Failed() ? 1 : 0;
}

} // namespace bench
