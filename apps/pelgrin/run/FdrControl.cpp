#include "run/FdrControl.h"

#include <algorithm>

#include <fmt/format.h>
#include <spdlog/spdlog.h>

#include "common/Failure.h"
#include "common/Terminal.h"

namespace pelgrin {

namespace {

/// Files first to last - 1 are judged together.
struct Together {
    std::vector<ResultFile>::const_iterator first;
    std::vector<ResultFile>::const_iterator last;

    RecordRange Records() const { return {first->begin, std::prev(last)->end}; }
};

std::vector<Together> GroupsOf(const FdrPlan& plan, const std::vector<ResultFile>& files)
{
    if (files.empty()) {
        return {};
    }
    if (plan.method == Vorlan::FdrEstimateType::Global) {
        return {{files.begin(), files.end()}};
    }
    std::vector<Together> groups;
    for (auto file = files.begin(); file != files.end(); ++file) {
        groups.push_back({file, std::next(file)});
    }
    return groups;
}

/// "psms.txt:12" of a record.
std::string PlaceOf(Vorlan::PepIdentType::EPepIdentType format, const Together& group,
                    std::size_t record)
{
    const auto file = std::find_if(group.first, group.last, [record](const ResultFile& candidate) {
        return record < candidate.end;
    });
    return file->PlaceOf(format, record);
}

void CheckDirections(const Together& group, const Identifications& identifications)
{
    const auto& records = identifications.records;
    const RecordRange range = group.Records();
    if (const auto other = FirstOtherDirection(records, range)) {
        throw Failure(fmt::format(
            "{}: expected \"High Score Better\" as in {}, {}: FDR control cannot compare their "
            "scores",
            PlaceOf(identifications.format, group, *other),
            PlaceOf(identifications.format, group, range.begin),
            records[range.begin].bHighScoreBetter ? "1" : "0"));
    }
}

FdrGroup SummaryOf(const Together& group, const FdrOutcome& outcome)
{
    FdrGroup summary;
    for (auto file = group.first; file != group.last; ++file) {
        summary.files.push_back(file->files.path);
    }
    summary.targets = outcome.Targets();
    summary.decoys = outcome.CountOf(Verdict::Decoy);
    summary.passing = outcome.CountOf(Verdict::Stays);
    summary.worstScore = outcome.worstScore;
    return summary;
}

void Warn(const FdrGroup& group, const FdrPlan& plan)
{
    const std::string files =
        group.files.size() == 1
            ? group.files.front()
            : fmt::format("{} and {} more", group.files.front(), group.files.size() - 1);
    if (group.decoys == 0 && group.targets > 0) {
        spdlog::warn("{}: no accession begins with the decoy tag \"{}\"; without decoys the false "
                     "discovery rate cannot be estimated{}",
                     OneLine(files), OneLine(plan.decoyTag),
                     group.passing == group.targets ? ", and every match stays" : "");
    } else if (group.targets == 0 && group.decoys > 0) {
        spdlog::warn("{}: every match is a decoy, so none stays", OneLine(files));
    }
}

void Add(const FdrOutcome& outcome, Counts& counts)
{
    counts.aboveThreshold += outcome.CountOf(Verdict::AboveThreshold);
    counts.decoys += outcome.CountOf(Verdict::Decoy);
    counts.withoutProteins += outcome.CountOf(Verdict::WithoutProteins);
    counts.scoreNotANumber += outcome.CountOf(Verdict::ScoreNotANumber);
}

} // namespace

std::vector<FdrGroup> ControlFdr(const FdrPlan& plan, Identifications& identifications,
                                 Counts& counts)
{
    std::vector<FdrGroup> groups;
    std::vector<Verdict> verdicts;
    for (const Together& group : GroupsOf(plan, identifications.files)) {
        CheckDirections(group, identifications);
        const FdrOutcome outcome = ControlFdr(identifications.records, group.Records(), plan);
        verdicts.insert(verdicts.end(), outcome.verdicts.begin(), outcome.verdicts.end());
        groups.push_back(SummaryOf(group, outcome));
        Warn(groups.back(), plan);
        Add(outcome, counts);
    }
    std::vector<Vorlan::PeptideIdentification> staying;
    for (std::size_t i = 0; i < verdicts.size(); ++i) {
        if (verdicts[i] == Verdict::Stays) {
            staying.push_back(std::move(identifications.records[i]));
        }
    }
    identifications.records = std::move(staying);
    identifications.files.clear();
    return groups;
}

} // namespace pelgrin
