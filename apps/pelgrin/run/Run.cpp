#include "run/Run.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <variant>

#include <spdlog/spdlog.h>

#include "common/Progress.h"
#include "common/Terminal.h"
#include "files/ScratchFolder.h"
#include "run/Annotation.h"
#include "run/FdrControl.h"
#include "run/Identifications.h"
#include "run/Ledger.h"
#include "run/Modifications.h"
#include "run/Output.h"
#include "run/Report.h"
#include "run/RunRecord.h"
#include "run/Spectra.h"
#include "run/Summary.h"

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

/// The file of every dataset name that the records bear. Says what was met only
/// by a weak rule, and what of --dataset nothing met.
Datasets Resolve(const Parameters& parameters, const SpectraPool& spectra,
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

/// Annotates the records of a run one by one.
class Annotator {
public:
    Annotator(const Parameters& parameters, const Datasets& datasets, SpectraPool& spectra,
              OutputFolder& output, Counts& counts)
        : parameters_(parameters), datasets_(datasets), spectra_(spectra), output_(output),
          counts_(counts)
    {
    }

    /// Annotates record, or says why not.
    std::optional<Problem> Take(const Vorlan::PeptideIdentification& record)
    {
        const auto& dataset = datasets_.at(record.strDatasetName);
        if (!dataset) {
            return Problem{Reason::DatasetNotGiven, record.strDatasetName};
        }
        const SpectraFile& file = spectra_.Files()[dataset->file];
        const auto found = spectra_.NameOf(file, record);
        if (!found) {
            return Problem{Reason::SpectrumUnknown, {}};
        }
        ++counts_.joined.at(static_cast<std::size_t>(dataset->rule));
        counts_.joinedByScan += found->isByScan ? 1 : 0;
        const auto unusable = file.unusable.find(found->name);
        if (unusable != file.unusable.end()) {
            const bool isFile = file.format == Vorlan::DatasetType::Dta;
            return Problem{unusable->second, isFile ? found->name : std::string()};
        }
        Vorlan::Spectrum* const spectrum = spectra_.Load(file, found->name);
        return spectrum == nullptr ? Problem{Reason::SpectrumReaderEnded, found->name}
                                   : TakeJoined(record, *spectrum, file.dataset);
    }

    const BestRecords& Best() const { return best_; }

private:
    std::optional<Problem> TakeJoined(const Vorlan::PeptideIdentification& record,
                                      Vorlan::Spectrum& spectrum, const std::string& dataset)
    {
        output_.WriteSpectrum(dataset, spectrum);
        const auto examined = Examine(record, parameters_.modifications);
        if (const auto* const problem = std::get_if<Problem>(&examined)) {
            return *problem;
        }
        if (spectrum.vPeaks.empty()) {
            return Problem{Reason::SpectrumWithoutPeaks, {}};
        }
        const FragmentPlan plan = PlanOf(record, parameters_);
        const Annotation annotation = Annotate(spectrum, std::get<PeptideMasses>(examined), plan,
                                               parameters_.tolerance, counts_);
        output_.WriteAnnotation(record, annotation);
        best_.Offer(record, plan, annotation);
        return std::nullopt;
    }

    const Parameters& parameters_;
    const Datasets& datasets_;
    SpectraPool& spectra_;
    OutputFolder& output_;
    Counts& counts_;
    BestRecords best_;
};

/// Step 3: the records that a run goes on with, and the masses of the
/// modifications that they name.
std::vector<Vorlan::PeptideIdentification> Identify(Parameters& parameters, RunResults& results)
{
    Identifications identifications = ReadIdentifications(parameters, results.counts);
    results.read = identifications; // without the records
    if (parameters.fdr) {
        results.fdr = ControlFdr(*parameters.fdr, identifications, results.counts);
    }
    if (results.proteins) {
        results.proteins->Fill(identifications.records);
    }
    if (parameters.lookup) {
        AddMasses(identifications.records, parameters);
    }
    return std::move(identifications.records);
}

void AnnotateAll(const std::vector<Vorlan::PeptideIdentification>& records, Annotator& annotator,
                 Counts& counts)
{
    Progress progress("annotating", records.size());
    for (const Vorlan::PeptideIdentification& record : records) {
        if (const auto problem = annotator.Take(record)) {
            counts.Add(*problem);
        }
        progress.Step();
    }
    counts.Check();
    if (counts.joinedByScan > 0) {
        spdlog::info("{} records name a scan; their spectra were found by the scan number in the "
                     "title",
                     counts.joinedByScan);
    }
}

/// Says what was lost, and gives the status that tells it.
ExitStatus Conclude(const Parameters& parameters, const RunResults& results, const Ledger& ledger)
{
    const Counts& counts = results.counts;
    const bool hasProteinLosses = results.proteins && results.proteins->HasLosses();
    if (ledger.HasLosses()) {
        spdlog::warn("{} of {} records were not annotated, and {} matches of the results not read "
                     "or cut; all reasons are in {}",
                     counts.NotUsed(), counts.read, counts.LostRows(),
                     OneLine(parameters.out + "/ledger.json"));
    }
    return ledger.HasLosses() || hasProteinLosses || !parameters.notOffered.empty() ? WithLosses
                                                                                    : AllWell;
}

/// The files that tell what was lost; warns of the worst.
Ledger WriteLosses(const Parameters& parameters, const SpectraPool& spectra, RunResults& results,
                   OutputFolder& output)
{
    for (const std::string& end : spectra.ReaderEnds()) {
        results.read.rejects.restarts.push_back(end);
    }
    results.read.rejects.Warn(parameters.out + "/rejects.tsv");
    Ledger ledger(parameters.allowed);
    ledger.AddMatches(results.read, results.counts);
    ledger.AddSpectra(spectra.Files());
    ledger.AddRecords(results.counts);
    output.WriteText("rejects.tsv", results.read.rejects.Table());
    output.WriteText("ledger.json", ledger.Json());
    return ledger;
}

} // namespace

ExitStatus Run(Parameters parameters)
{
    const LibraryOutput libraryOutput;
    RunRecord record(parameters, "parameters");
    RunResults results;
    // Parameters
    if (parameters.proteins) {
        results.proteins = std::make_unique<MappedProteins>(*parameters.proteins);
    }
    CheckOutput(parameters);
    // Spectra
    record.Begin("spectra");
    ScratchFolder scratch;
    SpectraPool spectra(parameters.spectra, scratch);
    // Identifications
    record.Begin("identifications");
    const std::vector<Vorlan::PeptideIdentification> records = Identify(parameters, results);
    results.datasets = Resolve(parameters, spectra, records);
    // Annotation
    record.Begin("annotation");
    OutputFolder output(parameters);
    Annotator annotator(parameters, results.datasets, spectra, output, results.counts);
    AnnotateAll(records, annotator, results.counts);
    // Output
    record.Begin("output");
    if (results.proteins) {
        output.WriteProteins(*results.proteins, records);
    }
    output.Finish(records);
    results.counts.spectraWritten = output.SpectraWritten();
    const Ledger ledger = WriteLosses(parameters, spectra, results, output);
    const std::string summary = SummaryOf(parameters, spectra, results);
    output.WriteText("summary.json", summary);
    PrintReport(ReportOf(parameters, spectra, results, annotator.Best()) + ledger.Text());
    const ExitStatus status = Conclude(parameters, results, ledger);
    output.WriteText("run.json", record.End(parameters, summary, status));
    output.TakePlaces();
    return status;
}

} // namespace pelgrin
