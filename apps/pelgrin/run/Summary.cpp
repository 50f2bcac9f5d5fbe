#include "run/Summary.h"

#include <nlohmann/json.hpp>

#include "run/JoinText.h"

namespace pelgrin {

namespace {

using Json = nlohmann::ordered_json;

Json FdrOf(const FdrPlan& plan)
{
    const std::string method = Vorlan::FdrEstimateType::typeToName(plan.method);
    const std::string formula = Vorlan::TdFdrType::typeToName(plan.formula);
    return {{"method", method},
            {"formula", formula},
            {"threshold", plan.threshold},
            {"decoy_tag", plan.decoyTag}};
}

/// What only a run from a parameter file has.
void AddFileParameters(const Parameters& parameters, Json& json)
{
    json["psms"] = parameters.psms;
    json["shifted_ions"] = parameters.shiftedIons;
    json["fdr"] = parameters.fdr ? FdrOf(*parameters.fdr) : Json();
}

Json JsonOf(const Parameters& parameters)
{
    Json ions = Json::array();
    for (const Vorlan::Peak::EIonType ion : parameters.ions) {
        ions.push_back(std::string(1, LetterOf(ion)));
    }
    Json modifications = Json::object();
    for (const auto& [name, mass] : parameters.modifications) {
        if (parameters.modificationsGiven.count(name) + parameters.modificationSources.count(name)
            > 0) {
            modifications[name] = mass;
        }
    }
    const std::string format = Vorlan::PepIdentType::typeToName(parameters.format);
    Json json = {{"spectra", parameters.spectra},
                 {"psms", parameters.psms.front()},
                 {"format", format},
                 {"tolerance", TextOf(parameters.tolerance)},
                 {"ions", ions},
                 {"modifications", modifications},
                 {"min_shift", parameters.minShift},
                 {"out", parameters.out}};
    if (!parameters.second.empty()) {
        json["second"] = parameters.second;
    }
    if (!parameters.datasets.empty()) {
        json["datasets"] = parameters.datasets;
    }
    if (!parameters.parameterFile.empty()) {
        json["parameter_file"] = parameters.parameterFile;
        json["modification_sources"] = parameters.modificationSources;
    }
    if (parameters.isRun) {
        AddFileParameters(parameters, json);
    }
    return json;
}

Json JsonOf(const FdrGroup& group)
{
    return {{"files", group.files},
            {"targets", group.targets},
            {"decoys", group.decoys},
            {"passing", group.passing},
            {"worst_score", group.worstScore ? Json(*group.worstScore) : Json()}};
}

Json FdrRecordsOf(const Counts& counts)
{
    return {{"total", counts.LeftByFdr()},
            {"above_threshold", counts.aboveThreshold},
            {"decoys", counts.decoys},
            {"without_proteins", counts.withoutProteins},
            {"score_not_a_number", counts.scoreNotANumber}};
}

Json JsonOf(const SpectraFile& file)
{
    const std::string format = Vorlan::DatasetType::typeToName(file.format);
    Json json = {{"dataset", file.dataset},
                 {"path", file.path},
                 {"format", format},
                 {"spectra", file.spectra}};
    if (file.format == Vorlan::DatasetType::Dta) {
        json["not_readable"] = file.dta.notReadable.size();
        json["without_precursor"] = file.dta.withoutPrecursor.size();
        json["without_peaks"] = file.dta.withoutPeaks.size();
        json["with_lines_behind_empty_line"] = file.dta.behindEmptyLine.count;
        json["cut_at_long_line"] = file.dta.longLine.count;
        json["lines_without_numbers"] = file.dta.unreadableNumbers.count;
    } else {
        json["without_peaks"] = file.mgf.titlesWithoutPeaks.size();
        json["with_foreign_title"] = file.mgf.foreignTitles.size();
        json["behind_long_line"] = file.mgf.spectraBehindLongLine;
    }
    return json;
}

Json JsonOf(const SpectraPool& spectra, const Counts& counts)
{
    Json files = Json::array();
    std::uint64_t total = 0;
    for (const SpectraFile& file : spectra.Files()) {
        total += file.spectra;
        files.push_back(JsonOf(file));
    }
    return {{"total", total},
            {"names_in_index", spectra.Names()},
            {"joined", counts.spectraWritten},
            {"files", files}};
}

/// The counts of the reasons for which select is true.
template <typename Select>
Json ReasonsOf(const Counts& counts, std::uint64_t total, Select select)
{
    Json json = {{"total", total}};
    for (std::size_t i = 0; i < kReasons; ++i) {
        const auto reason = static_cast<Reason>(i);
        if (select(reason)) {
            json[KeyOf(reason)] = counts.notUsed[i];
        }
    }
    return json;
}

Json UnreadOf(const Counts& counts, bool isLoss)
{
    Json json = Json::object();
    for (std::size_t i = 0; i < kUnread; ++i) {
        if (IsLoss(static_cast<Unread>(i)) == isLoss) {
            json[KeyOf(static_cast<Unread>(i))] = counts.unread[i];
        }
    }
    return json;
}

Json JoinedOf(const Counts& counts)
{
    Json json = {{"total", counts.Joined()}};
    for (std::size_t i = 0; i < kNameRules; ++i) {
        json[KeyOf(static_cast<NameRule>(i))] = counts.joined[i];
    }
    return json;
}

/// Which file every dataset name was taken for.
Json JsonOf(const Datasets& datasets, const SpectraPool& spectra)
{
    Json json = Json::object();
    for (const auto& [name, hit] : datasets) {
        if (hit) {
            json[name] = {{"file", spectra.Files()[hit->file].dataset}, {"rule", KeyOf(hit->rule)}};
        }
    }
    return json;
}

Json RecordsOf(const Counts& counts)
{
    Json details = Json::object();
    for (std::size_t i = 0; i < kReasons; ++i) {
        if (!counts.details[i].empty()) {
            details[KeyOf(static_cast<Reason>(i))] = counts.details[i];
        }
    }
    const auto isNotJoined = [](Reason reason) { return IsNotJoined(reason); };
    const auto isSkipped = [](Reason reason) { return !IsNotJoined(reason); };
    return {{"read", counts.read},
            {"joined", JoinedOf(counts)},
            {"joined_by_scan_in_title", counts.joinedByScan},
            {"not_joined", ReasonsOf(counts, counts.NotJoined(), isNotJoined)},
            {"skipped", ReasonsOf(counts, counts.Skipped(), isSkipped)},
            {"annotated", counts.annotated},
            {"details", details}};
}

Json JsonOf(const Share& share, const char* asked, const char* matched)
{
    return {{asked, share.asked}, {matched, share.matched}, {"share", share.Value()}};
}

Json IonsOf(const Parameters& parameters, const Counts& counts)
{
    Json json = JsonOf(counts.AllIons(), "asked", "matched");
    Json series = Json::object();
    for (const Vorlan::Peak::EIonType ion : parameters.ions) {
        series[std::string(1, LetterOf(ion))] = {
            {"unshift", JsonOf(counts.Ions(ion, Vorlan::Peak::UNSHIFT), "asked", "matched")},
            {"shift", JsonOf(counts.Ions(ion, Vorlan::Peak::SHIFT), "asked", "matched")}};
    }
    json["series"] = series;
    return json;
}

} // namespace

std::string SummaryOf(const Parameters& parameters, const SpectraPool& spectra,
                      const RunResults& results)
{
    const Counts& counts = results.counts;
    Json json = {{"program", parameters.program},
                 {"version", PELGRIN_VERSION},
                 {"parameters", JsonOf(parameters)},
                 {"spectra", JsonOf(spectra, counts)},
                 {"datasets", JsonOf(results.datasets, spectra)},
                 {"matches_held", counts.held},
                 {"rows_not_read", UnreadOf(counts, true)},
                 {"records_rejected", counts.rejected},
                 {"files_refused", counts.filesRefused},
                 {"readers_restarted", results.read.rejects.restarts.size()},
                 {"rows_cut", counts.rowsCut},
                 {"passed_over", UnreadOf(counts, false)},
                 {"records", RecordsOf(counts)},
                 {"join", results.join ? JsonOf(*results.join, parameters.minMatch) : Json()},
                 {"ions", IonsOf(parameters, counts)},
                 {"bonds", JsonOf(counts.fragments, "asked", "matched")},
                 {"peaks", JsonOf(counts.peaks, "in_annotated_spectra", "annotated")}};
    if (parameters.isRun) {
        json["not_offered"] = parameters.notOffered;
        json["records"]["fdr_control"] = FdrRecordsOf(counts);
        Json groups = Json::array();
        for (const FdrGroup& group : results.fdr) {
            groups.push_back(JsonOf(group));
        }
        json["fdr"] = groups;
        json["proteins"] = results.proteins ? results.proteins->Summary() : Json();
    }
    // Names may hold any bytes; what is no UTF-8 becomes U+FFFD.
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace pelgrin
