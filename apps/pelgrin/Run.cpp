#include "Run.h"

#include <set>
#include <variant>

#include <fmt/format.h>
#include <spdlog/spdlog.h>

#include "Annotation.h"
#include "Failure.h"
#include "FileLines.h"
#include "Identifications.h"
#include "Output.h"
#include "Report.h"
#include "Spectra.h"
#include "Summary.h"
#include "Terminal.h"

namespace pelgrin {

namespace {

/// Refuses what cannot work before any work is done.
void CheckInputs(const Parameters& parameters)
{
    CheckReadable(parameters.psms);
    std::set<std::string> names;
    for (const std::string& path : parameters.spectra) {
        CheckReadable(path);
        if (!names.insert(FileNameOf(path)).second) {
            throw UsageError(fmt::format("--spectra: two files are named \"{}\"; records could not "
                                         "tell them apart",
                                         FileNameOf(path)));
        }
    }
}

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

} // namespace

ExitStatus RunAnnotate(const Parameters& parameters)
{
    const LibraryOutput libraryOutput;
    Counts counts;

    // Parameters
    CheckInputs(parameters);
    OutputFolder output(parameters);
    // Spectra
    SpectraPool spectra(parameters.spectra, output.ScratchPath());
    // Identifications
    const std::vector<Vorlan::PeptideIdentification> records =
        ReadIdentifications(parameters, counts);
    // Annotation
    Annotator annotator(parameters, spectra, output, counts);
    {
        ProgressBar bar("annotating", records.size());
        for (const Vorlan::PeptideIdentification& record : records) {
            if (const auto problem = annotator.Take(record)) {
                counts.Add(*problem);
            }
            bar.Step();
        }
    }
    counts.Check();
    // Output
    output.Finish(records);
    counts.spectraWritten = output.SpectraWritten();
    output.WriteSummary(SummaryOf(parameters, spectra, counts));
    PrintOut(ReportOf(parameters, spectra, counts, annotator.Best()));
    if (counts.HasLosses()) {
        const std::uint64_t rows =
            counts.rowsBehindEmptyLine + counts.rowsBehindLongLine + counts.rowsCut;
        spdlog::warn("{} of {} records were not annotated and {} rows not read or cut; all reasons "
                     "are in {}",
                     counts.read - counts.annotated, counts.read, rows,
                     OneLine(parameters.out + "/summary.json"));
        return WithLosses;
    }
    return AllWell;
}

} // namespace pelgrin
