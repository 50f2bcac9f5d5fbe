// How accessions of decoys begin, as the accessions themselves tell.
#ifndef PELGRIN_DECOYS_H
#define PELGRIN_DECOYS_H

#include <cstdint>
#include <string>
#include <string_view>

#include "inspect/Facts.h"

namespace pelgrin {

/// The front of an accession that marks decoys by custom, as it is spelled:
/// "DECOY_" of "DECOY_sp|P12345|NAME". Empty when there is none.
std::string DecoyFrontOf(std::string_view accession);

class Decoys {
public:
    void Add(std::string_view accession);

    /// The fronts with their shares of all accessions.
    void Tell(Facts& facts) const;

private:
    Tally fronts_;
    std::uint64_t accessions_ = 0;
};

} // namespace pelgrin

#endif // PELGRIN_DECOYS_H
