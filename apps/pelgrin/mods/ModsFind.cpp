#include <algorithm>
#include <cmath>
#include <iterator>

#include <fmt/format.h>
#include <spdlog/spdlog.h>

#include "common/TextTable.h"
#include "mods/IsotopeShift.h"
#include "mods/Mods.h"

namespace pelgrin {

using Vorlan::CResidueModification;

namespace {

struct Match {
    const CResidueModification* record;
    double error; ///< mass asked for - mass of the record, Da
};

bool IsWanted(const CResidueModification& record, const FindQuestion& question)
{
    const bool residueFits =
        question.residue.empty() || HasResidue(record.getOrigin(), question.residue.front());
    const bool termFits = question.term == CResidueModification::NUMBER_OF_TERM_SPECIFICITY
                          || question.term == record.getTermSpecificity();
    return residueFits && termFits
           && std::abs(record.getDiffMonoMass() - question.mass) <= question.tolerance;
}

/// Nearest first; records of one error stay in the order of the database.
std::vector<Match> MatchesOf(const FindQuestion& question)
{
    std::vector<Match> matches;
    for (const CResidueModification* record : AllRecords(OpenDatabase(question.database))) {
        if (IsWanted(*record, question)) {
            matches.push_back({record, question.mass - record->getDiffMonoMass()});
        }
    }
    std::stable_sort(matches.begin(), matches.end(), [](const Match& a, const Match& b) {
        return std::abs(a.error) < std::abs(b.error);
    });
    return matches;
}

std::string TableOf(const std::vector<Match>& matches)
{
    TextTable table({{"Modification"},
                     {"Mass (Da)", true},
                     {"Error (mDa)", true},
                     {"Classification"},
                     {"Accession"}});
    for (const Match& match : matches) {
        const CResidueModification& record = *match.record;
        table.Add({record.getFullId(), fmt::format("{:.6f}", record.getDiffMonoMass()),
                   fmt::format("{:+.3f}", 1000.0 * match.error),
                   record.getSourceClassificationName(record.getSourceClassification()),
                   record.getUniModAccession()});
    }
    return table.Text();
}

} // namespace

ExitStatus RunModsFind(const FindQuestion& question)
{
    const std::vector<Match> matches = MatchesOf(question);
    std::string text = matches.empty() ? "" : TableOf(matches);
    if (const auto hint = IsotopeHintOf(question.mass, question.tolerance)) {
        text += matches.empty()
                    ? NoteOf(*hint, "", 0.0)
                    : NoteOf(*hint, matches.front().record->getFullId(), matches.front().error);
    }
    if (matches.empty()) {
        spdlog::warn("no modification lies within {} Da of {} Da{}{}", question.tolerance,
                     question.mass, question.residue.empty() ? "" : " on " + question.residue,
                     question.term == CResidueModification::NUMBER_OF_TERM_SPECIFICITY
                         ? ""
                         : " at \"" + CResidueModification().getTermSpecificityName(question.term)
                               + "\"");
    }
    PrintOut(text);
    return matches.empty() ? WithLosses : AllWell;
}

} // namespace pelgrin
