// What every benchmark program has in common: it measures, then compares ours
// with the other side and prints the result as rows of one Markdown table.
#ifndef PELGRIN_BENCH_CLAIMS_H
#define PELGRIN_BENCH_CLAIMS_H

#include <string>
#include <vector>

namespace bench {

/// One row: two benchmarks of this program and the ratio that is wanted.
struct Claim {
    enum Kind {
        TimesFaster,      ///< time of other / time of ours, at least bound
        TimesTheTime,     ///< time of ours / time of other, at most bound
        Megabytes,        ///< the counter "MB" of ours, at most bound
        TimesTheMemory,   ///< the counter "MB" of ours / that of other, at most bound
        Milliseconds,     ///< CPU time of ours, at most bound, beside that of other
        MillisecondsMore, ///< CPU time of ours - CPU time of other, at most bound
        NanosecondsEach   ///< CPU time of ours / its counter "each", at most bound
    };
    /// A bound for rows that are there for information.
    static constexpr double kNothingWanted = 0.0;

    std::string what;
    std::string ours;    ///< name of a benchmark
    std::string otherIs; ///< what the other side is, for the table
    std::string other;   ///< name of a benchmark; may be empty for Megabytes
    Kind kind;
    double bound;
};

/// Runs the benchmarks: details go to standard error, the rows of the claims
/// to standard output. Repetitions of different benchmarks alternate, so that
/// other load on the machine meets both sides. Gives the exit status: 0 unless
/// a benchmark reported an error; a bound that is missed is only shown.
///
/// The counters "own_cpu_s" and "own_wall_s" of a benchmark, in seconds, stand for
/// the time that was measured: another process may have taken it.
int Run(int argc, char** argv, const std::vector<Claim>& claims);

} // namespace bench

#endif // PELGRIN_BENCH_CLAIMS_H
