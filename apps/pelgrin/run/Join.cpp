#include "run/Join.h"

#include <algorithm>

#include <nlohmann/json.hpp>
#include <spdlog/spdlog.h>

#include "common/Terminal.h"
#include "run/Conversion.h"
#include "run/Identifications.h"
#include "run/JoinText.h"

namespace pelgrin {

namespace {

DatasetResolver ResolverOf(const Parameters& parameters, const SpectraPool& spectra)
{
    DatasetResolver::Given given;
    for (const auto& [name, path] : parameters.datasets) {
        const auto hit = std::find(parameters.spectra.begin(), parameters.spectra.end(), path);
        given[name] = static_cast<std::size_t>(hit - parameters.spectra.begin());
    }
    return {spectra.DatasetNames(), std::move(given)};
}

} // namespace

Datasets ResolveDatasets(const Parameters& parameters, const SpectraPool& spectra,
                         const std::vector<Vorlan::PeptideIdentification>& records)
{
    const DatasetResolver resolver = ResolverOf(parameters, spectra);
    Datasets datasets;
    for (const Vorlan::PeptideIdentification& record : records) {
        const auto [dataset, isNew] = datasets.try_emplace(record.strDatasetName);
        if (!isNew) {
            continue;
        }
        dataset->second = resolver.Find(record.strDatasetName);
        if (dataset->second && dataset->second->rule > NameRule::Exact) {
            spdlog::info("the dataset \"{}\" is taken for \"{}\": {}",
                         OneLine(record.strDatasetName),
                         OneLine(spectra.Files()[dataset->second->file].dataset),
                         TextOf(dataset->second->rule));
        }
    }
    for (const auto& [name, path] : parameters.datasets) {
        if (datasets.count(name) == 0) {
            spdlog::warn("--dataset: no record has the dataset \"{}\"", OneLine(name));
        }
    }
    return datasets;
}

std::variant<Meeting, Problem> Joiner::Find(const Vorlan::PeptideIdentification& record)
{
    const auto& dataset = datasets_.at(record.strDatasetName);
    if (!dataset) {
        audit_.TakeWithoutFile(record);
        return Problem{Reason::DatasetNotGiven, record.strDatasetName};
    }
    const SpectraFile& file = spectra_.Files()[dataset->file];
    const auto name = spectra_.NameOf(file, record);
    audit_.Take(file, dataset->file, record, name);
    if (!name) {
        return Problem{Reason::SpectrumUnknown, {}};
    }
    if (name->isAmbiguous) {
        return Problem{Reason::SpectrumNameAmbiguous, {}};
    }
    return Meeting{&file, dataset->rule, *name};
}

ExitStatus Join(const Parameters& parameters, bool asJson)
{
    const LibraryOutput libraryOutput;
    const SpectraPool spectra(parameters.spectra);
    Counts counts;
    const Identifications identifications = ReadIdentifications(parameters, counts);
    const Datasets datasets = ResolveDatasets(parameters, spectra, identifications.records);
    JoinAudit audit(spectra.Files());
    Joiner joiner(datasets, spectra, audit);
    for (const Vorlan::PeptideIdentification& record : identifications.records) {
        joiner.Find(record);
    }
    // Names may hold any bytes; what is no UTF-8 becomes U+FFFD.
    constexpr auto kReplace = nlohmann::ordered_json::error_handler_t::replace;
    std::string report = FullTextOf(audit);
    const bool hasLosses =
        WriteLosses(parameters, identifications, counts, NotHeldCounts(), report);
    PrintOut(asJson ? JsonOf(audit, parameters.minMatch).dump(2, ' ', false, kReplace) + "\n"
                    : report);
    const bool isEnough = audit.Warn(parameters.minMatch);
    const bool areAllMet = parameters.minMatch || audit.Met() == audit.Read();
    return isEnough && areAllMet && !hasLosses ? AllWell : WithLosses;
}

} // namespace pelgrin
