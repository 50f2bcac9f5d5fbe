#include "commands/AnnotateCommand.h"

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "commands/AllowOption.h"
#include "commands/DatasetOption.h"
#include "commands/MinMatchOption.h"
#include "commands/ResultOptions.h"
#include "common/Failure.h"
#include "files/Packed.h"
#include "files/SpectraSource.h"
#include "run/Parameters.h"
#include "run/Run.h"

namespace pelgrin {

namespace {

/// The options of "annotate" as texts.
struct AnnotateTexts {
    std::vector<std::string> spectra;
    std::string psms;
    ResultOptions result;
    std::vector<std::string> datasets;
    std::optional<std::string> minMatch;
    std::string tolerance;
    std::string ions = "b,y";
    std::string minShift = "0.5";
    std::string out;
    std::vector<std::string> allowed;
};

constexpr const char kAnnotateFooter[] = R"(
Example:
  pelgrin annotate --spectra demo.mgf --psms demo_psms.txt \
    --tolerance 20ppm --ions b,y \
    --mod "Oxidation (M)=15.994915" --mod "Carbamidomethyl (C)=57.021464" \
    --out results

A record and a spectrum meet by dataset and spectrum name. The dataset is the
name of the MGF file, or of the folder of DTA files; engines that write a path,
another ending or the name up to its first dot are understood, too. --dataset
says what is meant otherwise.

Writes annotations.tsv, results.txt, matched.mgf, rejects.tsv, ledger.json,
summary.json and run.json into the folder, and a short report to standard output.

Exit status: 0 all well; 1 failure; 2 wrong usage; 3 finished, but something
that the inputs hold is not in the output (ledger.json says what and why) and
--allow does not name its class.
)";

void AddAnnotateOptions(CLI::App* annotate, AnnotateTexts& texts)
{
    annotate->footer(kFormatNeeds + std::string(kAnnotateFooter));
    annotate
        ->add_option("--spectra", texts.spectra,
                     "MGF files and folders of DTA files with the spectra")
        ->type_name("FILE")
        ->required();
    annotate->add_option("--psms", texts.psms, "result with peptide-spectrum matches")
        ->type_name("FILE")
        ->required();
    AddResultOptions(*annotate, texts.result, false);
    AddDatasetOption(*annotate, texts.datasets);
    AddMinMatchOption(*annotate, texts.minMatch);
    annotate
        ->add_option("--tolerance", texts.tolerance,
                     "how far a peak may lie from the ion, such as 20ppm or 0.02Da")
        ->type_name("WIDTH")
        ->required();
    annotate->add_option("--ions", texts.ions, "ion series, of a, b, c, x, y, z")
        ->type_name("LETTERS")
        ->capture_default_str();
    annotate
        ->add_option("--min-shift", texts.minShift,
                     "smallest mass shift of a record, in Da, for which shifted ions are asked")
        ->type_name("MASS")
        ->capture_default_str();
    AddAllowOption(*annotate, texts.allowed);
    annotate->add_option("--out", texts.out, "folder for the results; made when missing")
        ->type_name("DIR")
        ->required();
}

Parameters ParametersOf(const AnnotateTexts& texts)
{
    Parameters parameters;
    for (const std::string& path : texts.spectra) {
        parameters.spectra.push_back(WithoutLastSeparators(path));
    }
    parameters.psms = {texts.psms};
    parameters.tolerance = ParseTolerance(texts.tolerance);
    parameters.ions = ParseIons(texts.ions);
    parameters.minShift = ParseMinShift(texts.minShift);
    parameters.out = texts.out;
    parameters.allowed = ParseAllowed(texts.allowed);
    parameters.datasets = ParseDatasets(texts.datasets, parameters.spectra);
    parameters.minMatch = MinMatchOf(texts.minMatch);
    TakeResultOptions(texts.result, parameters);
    return parameters;
}

/// Refuses what cannot work before any work is done.
void CheckAllSpectra(const Parameters& parameters)
{
    std::set<std::string> names;
    for (const std::string& path : parameters.spectra) {
        CheckSpectra(path);
        RefusePacked(path);
        const std::string name = PlaceOfDataset(path).name;
        if (!names.insert(name).second) {
            throw UsageError(fmt::format("--spectra: two files are named \"{}\"; records could not "
                                         "tell them apart",
                                         name));
        }
    }
}

ExitStatus RunAnnotate(const AnnotateTexts& texts, const std::vector<std::string>& arguments)
{
    Parameters parameters = ParametersOf(texts);
    parameters.arguments = arguments;
    CheckAllSpectra(parameters);
    return Run(std::move(parameters));
}

} // namespace

void AddAnnotateCommand(CLI::App& app, Command& chosen)
{
    CLI::App* const annotate = app.add_subcommand(
        "annotate", "Find the fragment ions of identified peptides in their spectra");
    const auto texts = std::make_shared<AnnotateTexts>();
    AddAnnotateOptions(annotate, *texts);
    annotate->callback([&chosen, texts] {
        chosen.run = [texts, &chosen] { return RunAnnotate(*texts, chosen.arguments); };
    });
}

} // namespace pelgrin
