#include "run/Run.h"

#include <utility>
#include <variant>

#include <spdlog/spdlog.h>

#include "common/Terminal.h"
#include "run/Annotation.h"
#include "run/FdrControl.h"
#include "run/Identifications.h"
#include "run/Modifications.h"
#include "run/Output.h"
#include "run/Report.h"
#include "run/Spectra.h"
#include "run/Summary.h"

namespace pelgrin {

namespace {

/// Annotates the records of a run one by one.
class Annotator {
public:
    Annotator(const Parameters& parameters, SpectraPool& spectra, OutputFolder& output,
              Counts& counts)
        : parameters_(parameters), spectra_(spectra), output_(output), counts_(counts)
    {
    }

    /// Annotates record, or says why not.
    std::optional<Problem> Take(const Vorlan::PeptideIdentification& record)
    {
        const auto dataset = spectra_.Find(record.strDatasetName);
        if (!dataset) {
            return Problem{Reason::DatasetNotGiven, record.strDatasetName};
        }
        if (!spectra_.Has(*dataset->file, record.strSpectrumName)) {
            return Problem{Reason::SpectrumUnknown, {}};
        }
        ++(dataset->isExact ? counts_.joinedByName : counts_.joinedWithoutEnding);
        const auto unusable = dataset->file->unusable.find(record.strSpectrumName);
        if (unusable != dataset->file->unusable.end()) {
            return Problem{unusable->second, {}};
        }
        return TakeJoined(record, spectra_.Load(*dataset->file, record.strSpectrumName),
                          dataset->file->dataset);
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
    if (parameters.fdr) {
        results.fdr = ControlFdr(*parameters.fdr, identifications, results.counts);
    }
    if (parameters.lookup) {
        AddMasses(identifications.records, parameters);
    }
    return std::move(identifications.records);
}

void AnnotateAll(const std::vector<Vorlan::PeptideIdentification>& records, Annotator& annotator,
                 Counts& counts)
{
    ProgressBar bar("annotating", records.size());
    for (const Vorlan::PeptideIdentification& record : records) {
        if (const auto problem = annotator.Take(record)) {
            counts.Add(*problem);
        }
        bar.Step();
    }
    counts.Check();
}

/// Says what was lost, and gives the status that tells it.
ExitStatus Conclude(const Parameters& parameters, const Counts& counts)
{
    if (counts.HasLosses()) {
        spdlog::warn("{} of {} records were not annotated and {} rows not read or cut; all reasons "
                     "are in {}",
                     counts.NotUsed(), counts.read, counts.LostRows(),
                     OneLine(parameters.out + "/summary.json"));
    }
    return counts.HasLosses() || !parameters.notOffered.empty() ? WithLosses : AllWell;
}

} // namespace

ExitStatus Run(Parameters parameters)
{
    const LibraryOutput libraryOutput;
    RunResults results;
    // Parameters
    OutputFolder output(parameters);
    // Spectra
    SpectraPool spectra(parameters.spectra, output.ScratchPath());
    // Identifications
    const std::vector<Vorlan::PeptideIdentification> records = Identify(parameters, results);
    // Annotation
    Annotator annotator(parameters, spectra, output, results.counts);
    AnnotateAll(records, annotator, results.counts);
    // Output
    output.Finish(records);
    results.counts.spectraWritten = output.SpectraWritten();
    output.WriteSummary(SummaryOf(parameters, spectra, results));
    PrintOut(ReportOf(parameters, spectra, results.counts, annotator.Best()));
    return Conclude(parameters, results.counts);
}

} // namespace pelgrin
