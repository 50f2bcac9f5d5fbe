#include "commands/ResultOptions.h"

#include <fmt/format.h>

#include "common/Failure.h"
#include "files/FileLines.h"
#include "files/Packed.h"
#include "parameters/ReaderParameters.h"
#include "run/Identifications.h"

namespace pelgrin {

using Vorlan::PepIdentType;

const char* const kFormatNeeds = R"(What a format needs:
  Calvex (.txt)        nothing more
  MSFragger (.pepXML)  every modification of the search, fixed ones, too: their
  Comet (.pep.xml)     masses are explained by --mod NAME=MASS or --parameters
  MSGF (.tsv)          the search's list of modifications as --second; without
                       it the modifications of --mod or --parameters
  MaxQuant             peptides.txt as --second, by default the one beside
                       msms.txt; --mod or --parameters for masses
  the others           nothing; --mod or --parameters for masses
)";

void AddResultOptions(CLI::App& command, ResultOptions& options, bool formatIsRequired)
{
    CLI::Option* const format =
        command.add_option("--format", options.format, "its format: " + FormatChoices())
            ->type_name("NAME");
    if (formatIsRequired) {
        format->required();
    } else {
        format->capture_default_str();
    }
    command
        .add_option("--second", options.second,
                    "second file of the result: peptides.txt of MaxQuant, or the list of "
                    "modifications of an MS-GF+ search")
        ->type_name("FILE");
    command
        .add_option("--mod", options.modifications,
                    "name and mass of a modification, in Da; once for each name")
        ->type_name("NAME=MASS");
    command
        .add_option("--parameters", options.parameterFile,
                    "parameter file whose modifications count; see pelgrin params template")
        ->type_name("FILE");
}

void RefuseModificationsTwice(const ResultOptions& options)
{
    if (!options.parameterFile.empty() && !options.modifications.empty()) {
        throw UsageError("--mod and --parameters: give modifications in one way only");
    }
}

void TakeResultOptions(const ResultOptions& options, Parameters& parameters)
{
    parameters.format = ParseFormat(options.format);
    const bool hasSecond =
        parameters.format == PepIdentType::MaxQuant || parameters.format == PepIdentType::MsgfTsv;
    if (!options.second.empty() && !hasSecond) {
        throw UsageError(fmt::format(
            "--second: a result of \"{}\" is one file; only MaxQuant and MSGF have a second one",
            static_cast<const std::string&>(PepIdentType::typeToName(parameters.format))));
    }
    parameters.second = options.second;
    ParseModifications(options.modifications); // wrong usage comes before missing files
    const ResultFiles files = FilesOf(parameters.format, parameters.psms.front(), options.second);
    CheckReadable(files.path);
    RefusePacked(files.path);
    if (!files.second.empty()) {
        CheckReadable(files.second);
        RefusePacked(files.second);
        parameters.fileInputs.push_back(files.second);
    }
    if (!options.parameterFile.empty()) {
        CheckReadable(options.parameterFile);
    }
    TellReader(options.parameterFile, options.modifications, parameters);
}

} // namespace pelgrin
