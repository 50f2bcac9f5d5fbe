// The modifications that a run specifies, given to the library as a host does.
#ifndef PELGRIN_BENCH_SPECIFIED_MODS_H
#define PELGRIN_BENCH_SPECIFIED_MODS_H

#include <string>
#include <vector>

namespace bench {

struct SpecifiedMod {
    std::string name;
    char residue;
    double mass; ///< Da
};

/// Writes a parameter file and a modification table into folder and has them
/// read. Once a process: the library keeps the first table.
void Specify(const std::vector<SpecifiedMod>& mods, const std::string& folder);

} // namespace bench

#endif // PELGRIN_BENCH_SPECIFIED_MODS_H
