#include "inspect/Decoys.h"

#include <algorithm>

#include <fmt/format.h>

#include "common/Words.h"

namespace pelgrin {

namespace {

/// In lower case; a longer one before those that it begins with.
constexpr std::string_view kFronts[] = {
    "decoy_",    "decoy-",    "rev__",    "rev_",    "reverse_", "reversed_",
    "###rev###", "###rnd###", "xxx_",     "xxx.",    "random_",  "rand_",
    "rnd_",      "shuffled_", "shuffle_", "pseudo_", "dec_",     "##",
};

} // namespace

std::string DecoyFrontOf(std::string_view accession)
{
    constexpr std::size_t kLongest = 10;
    const std::string front = Lower(accession.substr(0, kLongest));
    for (const std::string_view known : kFronts) {
        if (front.compare(0, known.size(), known) == 0) {
            return std::string(accession.substr(0, known.size()));
        }
    }
    return {};
}

void Decoys::Add(std::string_view accession)
{
    ++accessions_;
    const std::string front = DecoyFrontOf(WithoutBlanks(accession));
    if (!front.empty()) {
        fronts_.Add(front);
    }
}

void Decoys::Tell(Facts& facts) const
{
    std::vector<Counted> counts = fronts_.Counts();
    for (Counted& counted : counts) {
        counted.text += fmt::format(" ({})", ShareText(counted.count, accessions_));
    }
    facts.push_back({"accessions", "", accessions_});
    facts.push_back({"decoy_fronts", "Decoys", counts});
    if (counts.empty() && accessions_ > 0) {
        facts.push_back({"", "Decoys", std::string("no known front of an accession")});
    }
}

} // namespace pelgrin
