#include "proteins/ProteinCounts.h"

#include "proteins/Examples.h"

namespace pelgrin {

namespace {

using Group = ProteinCountGroup;

struct Row {
    const char* key;
    const char* text;
    Group group;
    bool isLoss;
};

constexpr Row kRows[kProteinCounts] = {
    {"found", "found in a protein", Group::Peptides, false},
    {"not_found", "found in no protein", Group::Peptides, true},
    {"not_found_decoy", "of decoys only, found in no protein", Group::Peptides, false},
    {"not_letters", "not all of letters A to Z", Group::Peptides, true},
    {"peptide_in_protein", "name a protein that holds the peptide", Group::Evidences, false},
    {"accession_unknown", "name a protein that the database lacks", Group::Evidences, true},
    {"accession_unknown_decoy", "name a decoy that the database lacks", Group::Evidences, false},
    {"peptide_not_in_protein", "name a protein without the peptide", Group::Evidences, true},
    {"start_filled", "starts filled in", Group::Confirmed, false},
    {"residues_filled", "residues beside the peptide filled in", Group::Confirmed, false},
    {"start_from_0", "starts count from 0", Group::Confirmed, false},
    {"start_from_1", "starts count from 1", Group::Confirmed, false},
    {"start_disagrees", "starts are none of the peptide", Group::Confirmed, true},
    {"residues_disagree", "residues beside the peptide are others", Group::Confirmed, true},
    {"added", "added, for proteins that hold the peptide, too", Group::Added, false},
    {"decoy_left_out", "left out: decoys, for matches that are targets", Group::Added, false},
    {"no_room", "left out: no line of a table can hold them", Group::Added, true},
    {"not_writable", "left out: no table can hold such an accession", Group::Added, true},
};

const Row& RowOf(ProteinCount count)
{
    return kRows[static_cast<std::size_t>(count)];
}

} // namespace

const char* KeyOf(ProteinCount count)
{
    return RowOf(count).key;
}

const char* TextOf(ProteinCount count)
{
    return RowOf(count).text;
}

ProteinCountGroup GroupOf(ProteinCount count)
{
    return RowOf(count).group;
}

bool IsLoss(ProteinCount count)
{
    return RowOf(count).isLoss;
}

void ProteinCounts::Add(ProteinCount count, const std::string& example)
{
    Add(count);
    AddExample(example, examples[static_cast<std::size_t>(count)]);
}

std::uint64_t ProteinCounts::Total(ProteinCountGroup group) const
{
    std::uint64_t total = 0;
    for (std::size_t i = 0; i < kProteinCounts; ++i) {
        total += kRows[i].group == group ? counts[i] : 0;
    }
    return total;
}

std::uint64_t ProteinCounts::Losses() const
{
    std::uint64_t losses = 0;
    for (std::size_t i = 0; i < kProteinCounts; ++i) {
        losses += kRows[i].isLoss ? counts[i] : 0;
    }
    return losses;
}

} // namespace pelgrin
