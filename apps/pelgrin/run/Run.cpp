#include "run/Run.h"

#include <memory>
#include <utility>
#include <variant>

#include <spdlog/spdlog.h>

#include "common/Progress.h"
#include "common/Terminal.h"
#include "run/Annotation.h"
#include "run/FdrControl.h"
#include "run/Identifications.h"
#include "run/Join.h"
#include "run/Ledger.h"
#include "run/Modifications.h"
#include "run/Output.h"
#include "run/Report.h"
#include "run/RunRecord.h"
#include "run/Spectra.h"
#include "run/Summary.h"

namespace pelgrin {

namespace {

/// Annotates the records of a run one by one.
class Annotator {
public:
    Annotator(const Parameters& parameters, const Joiner& joiner, SpectraPool& spectra,
              OutputFolder& output, Counts& counts)
        : parameters_(parameters), joiner_(joiner), spectra_(spectra), output_(output),
          counts_(counts)
    {
    }

    /// Annotates record, or says why not.
    std::optional<Problem> Take(const Vorlan::PeptideIdentification& record)
    {
        const auto found = joiner_.Find(record);
        if (const auto* const problem = std::get_if<Problem>(&found)) {
            return *problem;
        }
        const Meeting& met = std::get<Meeting>(found);
        const SpectraFile& file = *met.file;
        ++counts_.joined.at(static_cast<std::size_t>(met.rule));
        counts_.joinedByScan += met.name.IsByScan() ? 1 : 0;
        const auto unusable = file.unusable.find(met.name.name);
        if (unusable != file.unusable.end()) {
            const bool isFile = file.format == Vorlan::DatasetType::Dta;
            return Problem{unusable->second, isFile ? met.name.name : std::string()};
        }
        Vorlan::Spectrum* const spectrum = spectra_.Load(file, met.name.name);
        return spectrum == nullptr ? Problem{Reason::SpectrumReaderEnded, met.name.name}
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
    Joiner joiner_;
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
    // Without the records.
    results.read = identifications; // NOLINT(cppcoreguidelines-slicing)
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
    const bool isEnough = !results.join || results.join->Warn(parameters.minMatch);
    const bool hasProteinLosses = results.proteins && results.proteins->HasLosses();
    if (ledger.HasLosses()) {
        spdlog::warn("{} of {} records were not annotated, and {} matches of the results not read "
                     "or cut; all reasons are in {}",
                     counts.NotUsed(), counts.read, counts.LostRows(),
                     OneLine(parameters.out + "/ledger.json"));
    }
    return ledger.HasLosses() || hasProteinLosses || !parameters.notOffered.empty() || !isEnough
               ? WithLosses
               : AllWell;
}

/// The files that tell what was lost; warns of the worst.
Ledger WriteLosses(const Parameters& parameters, const SpectraPool& spectra, RunResults& results,
                   const NotHeldCounts& notHeld, OutputFolder& output)
{
    for (const std::string& end : spectra.ReaderEnds()) {
        results.read.rejects.restarts.push_back(end);
    }
    results.read.rejects.Warn(parameters.out + "/rejects.tsv");
    Ledger ledger(parameters.allowed);
    ledger.AddPrepared(parameters.prepared);
    ledger.AddMatches(results.read, results.counts);
    ledger.AddSpectra(spectra.Files());
    ledger.AddRecords(results.counts);
    ledger.AddTable(notHeld, parameters.out + "/results.txt");
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
    MakeOutputFolder(parameters);
    // Spectra
    record.Begin("spectra");
    SpectraPool spectra(parameters.spectra);
    // Identifications
    record.Begin("identifications");
    const std::vector<Vorlan::PeptideIdentification> records = Identify(parameters, results);
    results.datasets = ResolveDatasets(parameters, spectra, records);
    results.join = JoinAudit(spectra.Files());
    // Annotation
    record.Begin("annotation");
    OutputFolder output(parameters);
    Annotator annotator(parameters, Joiner(results.datasets, spectra, *results.join), spectra,
                        output, results.counts);
    AnnotateAll(records, annotator, results.counts);
    // Output
    record.Begin("output");
    if (results.proteins) {
        output.WriteProteins(*results.proteins, records);
    }
    const NotHeldCounts notHeld = output.Finish(records);
    results.counts.spectraWritten = output.SpectraWritten();
    const Ledger ledger = WriteLosses(parameters, spectra, results, notHeld, output);
    const std::string summary = SummaryOf(parameters, spectra, results);
    output.WriteText("summary.json", summary);
    PrintReport(ReportOf(parameters, spectra, results, annotator.Best()) + ledger.Text());
    const ExitStatus status = Conclude(parameters, results, ledger);
    output.WriteText("run.json", record.End(parameters, summary, status));
    output.TakePlaces();
    return status;
}

} // namespace pelgrin
