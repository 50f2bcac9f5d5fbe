#include "Summary.h"

#include <nlohmann/json.hpp>

namespace pelgrin {

namespace {

using Json = nlohmann::ordered_json;

Json JsonOf(const Parameters& parameters)
{
    Json ions = Json::array();
    for (const Vorlan::Peak::EIonType ion : parameters.ions) {
        ions.push_back(std::string(1, LetterOf(ion)));
    }
    Json modifications = Json::object();
    for (const auto& [name, mass] : parameters.modifications) {
        modifications[name] = mass;
    }
    const std::string format = Vorlan::PepIdentType::typeToName(parameters.format);
    return {{"spectra", parameters.spectra},
            {"psms", parameters.psms},
            {"format", format},
            {"tolerance", TextOf(parameters.tolerance)},
            {"ions", ions},
            {"modifications", modifications},
            {"min_shift", parameters.minShift},
            {"out", parameters.out}};
}

Json JsonOf(const SpectraPool& spectra, const Counts& counts)
{
    Json files = Json::array();
    std::uint64_t total = 0;
    for (const SpectraFile& file : spectra.Files()) {
        total += file.audit.spectra;
        files.push_back({{"dataset", file.dataset},
                         {"path", file.path},
                         {"spectra", file.audit.spectra},
                         {"without_peaks", file.audit.titlesWithoutPeaks.size()},
                         {"with_foreign_title", file.audit.foreignTitles.size()},
                         {"behind_long_line", file.audit.spectraBehindLongLine}});
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
            {"joined",
             {{"total", counts.joinedByName + counts.joinedWithoutEnding},
              {"by_file_name", counts.joinedByName},
              {"by_file_name_without_ending", counts.joinedWithoutEnding}}},
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
        const auto& shares = counts.ions.at(ion);
        series[std::string(1, LetterOf(ion))] = {
            {"unshift", JsonOf(shares[Vorlan::Peak::UNSHIFT], "asked", "matched")},
            {"shift", JsonOf(shares[Vorlan::Peak::SHIFT], "asked", "matched")}};
    }
    json["series"] = series;
    return json;
}

} // namespace

std::string SummaryOf(const Parameters& parameters, const SpectraPool& spectra,
                      const Counts& counts)
{
    const Json json = {{"program", "pelgrin annotate"},
                       {"version", PELGRIN_VERSION},
                       {"parameters", JsonOf(parameters)},
                       {"spectra", JsonOf(spectra, counts)},
                       {"rows_not_read",
                        {{"behind_empty_line", counts.rowsBehindEmptyLine},
                         {"behind_long_line", counts.rowsBehindLongLine}}},
                       {"rows_cut", counts.rowsCut},
                       {"records", RecordsOf(counts)},
                       {"ions", IonsOf(parameters, counts)},
                       {"bonds", JsonOf(counts.fragments, "asked", "matched")},
                       {"peaks", JsonOf(counts.peaks, "in_annotated_spectra", "annotated")}};
    // Names may hold any bytes; what is no UTF-8 becomes U+FFFD.
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace pelgrin
