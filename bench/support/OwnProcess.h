// A process of its own for what this one must not do: use memory that is to be
// measured, crash, or never end.
#ifndef PELGRIN_BENCH_OWN_PROCESS_H
#define PELGRIN_BENCH_OWN_PROCESS_H

#include <cstddef>
#include <string>
#include <vector>

namespace bench {

struct Limits {
    unsigned seconds = 0;  ///< of CPU time; 0 for no limit
    std::size_t bytes = 0; ///< of address space; 0 for no limit
};

struct OwnProcessResult {
    std::string output; ///< what it wrote on standard output
    int status = 0;     ///< as waitpid tells it; 0 for a plain success
};

/// Runs this program again with other arguments and waits for its end. A limit
/// of time that is reached ends it by SIGXCPU.
OwnProcessResult RunMyself(const std::vector<std::string>& arguments, const Limits& limits = {});

/// CPU time of this process, in seconds.
double CpuSeconds();

/// The resident set of this process, now and at its highest.
double ResidentMegabytes();
double PeakResidentMegabytes();

} // namespace bench

#endif // PELGRIN_BENCH_OWN_PROCESS_H
