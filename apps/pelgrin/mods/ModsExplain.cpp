#include <cmath>
#include <set>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "common/Failure.h"
#include "common/TextTable.h"
#include "mods/Combinations.h"
#include "mods/IsotopeShift.h"
#include "mods/Mods.h"

namespace pelgrin {

using Vorlan::CResidueModification;
using Vorlan::CSearchParam;
using Vorlan::IdentModification;

namespace {

constexpr double kDefaultTolerance = 0.01;
constexpr std::size_t kMaxSize = 4;
constexpr std::size_t kMaxSizeOfDatabase = 3;

enum class Origin { Fixed, Variable, Database };

struct Candidate {
    std::string name;
    double mass = 0.0;
    SiteRule rule;
    Origin origin = Origin::Database;
    std::string reason; ///< why it cannot sit here; empty: it can
};

const char* TextOf(Origin origin)
{
    switch (origin) {
    case Origin::Fixed: return "fixed";
    case Origin::Variable: return "variable";
    case Origin::Database: break;
    }
    return "database";
}

CResidueModification::TermSpecificity SpecificityOf(const IdentModification& modification)
{
    CResidueModification record;
    record.setTermSpecificity(modification.strPosition);
    return record.getTermSpecificity();
}

/// How far the mass may be off, in Da, and where that comes from.
struct Reach {
    double tolerance;
    std::string source;
};

Reach ReachOf(const MassWidth& width, const std::optional<double>& mh, const std::string& source)
{
    if (!width.isPpm) {
        return {width.value, source};
    }
    if (!mh) {
        throw UsageError(fmt::format("{} is {} ppm, of the mass of the peptide: give it as --mh "
                                     "MASS, or --tolerance in Da",
                                     source, width.value));
    }
    return {width.value * 1e-6 * *mh, fmt::format("{}, {} ppm of MH {}", source, width.value, *mh)};
}

/// search is null without a parameter file.
Reach ReachOf(const ExplainQuestion& question, const CSearchParam* search)
{
    if (question.tolerance) {
        return ReachOf(*question.tolerance, question.mh, "--tolerance");
    }
    if (search != nullptr) {
        return ReachOf({search->dPrecursorTol, search->ePrecursorTolType != Vorlan::TolType::Da},
                       question.mh, "precursor_tol");
    }
    return {kDefaultTolerance, "the default"};
}

/// The modifications that can be part of an explanation, each once.
class Candidates {
public:
    explicit Candidates(const Site& site) : site_(site) {}

    void AddSpecified(const std::vector<IdentModification>& modifications, Origin origin)
    {
        for (const IdentModification& modification : modifications) {
            Add({FullIdOf(modification), modification.dMass,
                 SiteRule{modification.strSite, SpecificityOf(modification)}, origin, ""});
            ++specified_;
        }
    }

    void AddDatabase(const std::vector<const CResidueModification*>& records)
    {
        for (const CResidueModification* record : records) {
            Add({record->getFullId(), record->getDiffMonoMass(),
                 SiteRule{record->getOrigin(), record->getTermSpecificity()}, Origin::Database,
                 ""});
        }
        records_ = records.size();
    }

    const std::vector<Candidate>& Fitting() const { return fitting_; }
    const std::vector<Candidate>& Rejected() const { return rejected_; }

    std::string Text() const
    {
        std::string text = fmt::format("{} specified", specified_);
        if (records_ > 0) {
            text += fmt::format(", {} records of the database", records_);
        }
        return text + fmt::format("; {} can sit here", fitting_.size());
    }

private:
    void Add(Candidate candidate)
    {
        if (!known_.insert({candidate.name, candidate.mass}).second) {
            return;
        }
        candidate.reason = WhyNot(candidate.rule, site_);
        (candidate.reason.empty() ? fitting_ : rejected_).push_back(std::move(candidate));
    }

    Site site_;
    std::set<std::pair<std::string, double>> known_;
    std::vector<Candidate> fitting_;
    std::vector<Candidate> rejected_;
    std::size_t specified_ = 0;
    std::size_t records_ = 0;
};

CombinationAnswer Search(const ExplainQuestion& question, const Candidates& candidates,
                         double tolerance)
{
    std::vector<double> masses;
    for (const Candidate& candidate : candidates.Fitting()) {
        masses.push_back(candidate.mass);
    }
    CombinationQuestion search;
    search.mass = question.mass;
    search.tolerance = tolerance;
    search.maxSize = question.isWholeDatabase ? kMaxSizeOfDatabase : kMaxSize;
    if (question.maxSize > 0) {
        search.maxSize = question.maxSize;
    }
    search.maxKept = question.lines;
    return FindCombinations(masses, search);
}

/// "Phospho (S) + 2 x Oxidation (M)".
std::string NameOf(const Combination& combination, const std::vector<Candidate>& candidates)
{
    const std::vector<std::size_t>& parts = combination.parts;
    std::string text;
    for (std::size_t i = 0; i < parts.size();) {
        std::size_t next = i;
        while (next < parts.size() && parts[next] == parts[i]) {
            ++next;
        }
        text += text.empty() ? "" : " + ";
        text += next - i > 1 ? fmt::format("{} x ", next - i) : "";
        text += candidates[parts[i]].name;
        i = next;
    }
    return text.empty() ? "no modification" : text;
}

std::string CombinationsText(const CombinationAnswer& answer,
                             const std::vector<Candidate>& candidates)
{
    TextTable table({{"Rank", true}, {"Error (mDa)", true}, {"Size", true}, {"Combination"}});
    for (std::size_t i = 0; i < answer.best.size(); ++i) {
        const Combination& combination = answer.best[i];
        table.Add({std::to_string(i + 1), fmt::format("{:+.3f}", 1000.0 * combination.error),
                   std::to_string(combination.parts.size()), NameOf(combination, candidates)});
    }
    std::string text = table.Text();
    if (answer.found > answer.best.size()) {
        text += fmt::format("... and {} more (--lines shows more).\n",
                            answer.found - answer.best.size());
    }
    return text;
}

/// What was searched, and what ended the search.
std::string SearchText(const CombinationAnswer& answer)
{
    std::string text =
        answer.isExplained ? fmt::format(
            "The smallest combination that explains the mass has size {}; ", answer.size)
                           : std::string("No combination explains the mass; ");
    text += fmt::format("sizes 0 to {} were searched.\n", answer.searched);
    if (answer.maxStepsReached) {
        text += "The search ended early: there are too many combinations.\n";
    } else if (answer.maxSizeReached) {
        text += fmt::format("The bound ended the search: sizes above {} are not searched "
                            "(--max-size).\n",
                            answer.searched);
    }
    return text;
}

/// All specified modifications that take no part, and the records of the
/// database that have the mass but cannot sit here.
std::string RejectedText(const ExplainQuestion& question, const Candidates& candidates,
                         const CombinationAnswer& answer, double tolerance)
{
    TextTable table({{"Rejected"}, {"From"}, {"Reason"}});
    std::size_t rows = 0;
    const auto add = [&](const Candidate& candidate, const std::string& reason) {
        if (++rows <= question.lines) {
            table.Add({candidate.name, TextOf(candidate.origin), reason});
        }
    };
    std::size_t unused = 0;
    for (std::size_t i = 0; i < candidates.Fitting().size(); ++i) {
        const Candidate& candidate = candidates.Fitting()[i];
        if (answer.isUsed[i]) {
            continue;
        }
        if (candidate.origin == Origin::Database) {
            ++unused;
        } else {
            add(candidate, fmt::format("mass too far: {:.6f} Da leaves {:+.6f} Da", candidate.mass,
                                       question.mass - candidate.mass));
        }
    }
    std::size_t elsewhere = 0;
    for (const Candidate& candidate : candidates.Rejected()) {
        if (candidate.origin != Origin::Database
            || std::abs(candidate.mass - question.mass) <= tolerance) {
            add(candidate, candidate.reason);
        } else {
            ++elsewhere;
        }
    }
    std::string text = table.IsEmpty() ? "" : "\n" + table.Text();
    if (rows > question.lines) {
        text += fmt::format("... and {} more (--lines shows more).\n", rows - question.lines);
    }
    if (question.isWholeDatabase) {
        text += fmt::format("\nOf the other records of the database, {} can sit here but have no "
                            "fitting mass, and {} neither sit here nor have the mass alone.\n",
                            unused, elsewhere);
    }
    return text;
}

std::string NeighboursText(const Site& site)
{
    std::string text;
    text += site.before ? fmt::format(", before it {}", *site.before) : "";
    text += site.after ? fmt::format(", behind it {}", *site.after) : "";
    return text.empty() ? "" : " (of the peptide: " + text.substr(2) + ")";
}

} // namespace

std::string FullIdOf(const IdentModification& modification)
{
    std::string site = modification.strSite;
    if (modification.strPosition != "Anywhere") {
        site = site.size() == 1 ? modification.strPosition + " " + site : modification.strPosition;
    }
    return modification.strName + " (" + site + ")";
}

ExitStatus RunModsExplain(const ExplainQuestion& question)
{
    const Vorlan::CModificationsDB& database = OpenDatabase(question.database);
    std::optional<CSearchParam> search;
    if (!question.database.params.empty()) {
        search = *ReadParameterFile(question.database.params).getSearchParam();
    }
    const Reach reach = ReachOf(question, search ? &*search : nullptr);
    Candidates candidates(question.site);
    if (search) {
        candidates.AddSpecified(search->vFixedMods, Origin::Fixed);
        candidates.AddSpecified(search->vVarMods, Origin::Variable);
    }
    if (question.isWholeDatabase) {
        candidates.AddDatabase(AllRecords(database));
    }
    const CombinationAnswer answer = Search(question, candidates, reach.tolerance);
    std::string text =
        fmt::format("{:.6f} Da at {}{}, within {:.6f} Da ({})\n"
                    "Modifications: {}\n\n",
                    question.mass, TextOf(question.site), NeighboursText(question.site),
                    reach.tolerance, reach.source, candidates.Text());
    if (answer.isExplained) {
        text += CombinationsText(answer, candidates.Fitting()) + "\n";
    }
    text += SearchText(answer);
    if (const auto hint = IsotopeHintOf(question.mass, reach.tolerance)) {
        const bool hasBest = !answer.best.empty();
        text += NoteOf(*hint, hasBest ? NameOf(answer.best.front(), candidates.Fitting()) : "",
                       hasBest ? answer.best.front().error : 0.0);
    }
    PrintOut(text + RejectedText(question, candidates, answer, reach.tolerance));
    return answer.isExplained ? AllWell : WithLosses;
}

} // namespace pelgrin
