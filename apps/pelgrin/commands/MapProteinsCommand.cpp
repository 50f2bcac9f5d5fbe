#include "commands/MapProteinsCommand.h"

#include <memory>
#include <string>

#include "commands/AllowOption.h"
#include "commands/EquateIlOption.h"
#include "commands/ResultOptions.h"
#include "run/ProteinMapping.h"

namespace pelgrin {

namespace {

struct MapProteinsTexts {
    std::string fasta;
    std::string psms;
    ResultOptions result;
    std::string out;
    std::string proteins;
    std::string decoyTag;
    bool equateIl = false;
    LossFiles losses;
};

constexpr const char kMapProteinsFooter[] = R"help(
Example:
  pelgrin map-proteins --fasta proteins.fasta --psms results.txt \
    --decoy-tag DECOY_ --proteins proteins.tsv --out mapped.txt

Looks for every peptide in every protein. Evidences of the matches get the start
(from 1) and the residues beside the peptide that they lack ("-" at the end of a
protein); what they have stays. Proteins that hold the peptide and have no
evidence get one, but no decoy joins a match that is a target. The matches go to
the table --out, a "Calvex (.txt)" file.

Exit status: 0 all well; 1 failure; 2 wrong usage; 3 finished, but matches or
parts of them are missing, peptides or proteins were not found, or do not fit
(the report says which and why).
)help";

ExitStatus RunMapProteins(const MapProteinsTexts& texts)
{
    Parameters parameters;
    parameters.program = "pelgrin map-proteins";
    parameters.psms = {texts.psms};
    parameters.out = texts.out;
    TakeLossOptions(texts.losses, parameters);
    RefuseModificationsTwice(texts.result);
    TakeResultOptions(texts.result, parameters);
    ProteinPlan& plan = parameters.proteins.emplace();
    plan.database = texts.fasta;
    plan.equateIl = texts.equateIl;
    if (!texts.decoyTag.empty()) {
        plan.decoyTag = texts.decoyTag;
    }
    parameters.fileInputs.push_back(texts.fasta);
    return MapProteins(parameters, texts.proteins);
}

void AddMapProteinsOptions(CLI::App& command, MapProteinsTexts& texts)
{
    command.add_option("--fasta", texts.fasta, "proteins")->type_name("FASTA")->required();
    command.add_option("--psms", texts.psms, "result with peptide-spectrum matches")
        ->type_name("FILE")
        ->required();
    AddResultOptions(command, texts.result, false);
    command.add_option("--out", texts.out, "table of the matches to be written")
        ->type_name("TABLE")
        ->required();
    command.add_option("--proteins", texts.proteins, "table of the proteins to be written")
        ->type_name("TABLE");
    command.add_option("--decoy-tag", texts.decoyTag, "how the accession of a decoy begins")
        ->type_name("TAG");
    AddEquateIlOption(command, texts.equateIl);
    AddLossOptions(command, texts.losses);
}

} // namespace

void AddMapProteinsCommand(CLI::App& app, Command& chosen)
{
    CLI::App* const command = app.add_subcommand(
        "map-proteins", "Look up in which proteins the peptides of a result lie");
    const auto texts = std::make_shared<MapProteinsTexts>();
    command->footer(kFormatNeeds + std::string(kMapProteinsFooter));
    AddMapProteinsOptions(*command, *texts);
    command->callback(
        [&chosen, texts] { chosen.run = [texts] { return RunMapProteins(*texts); }; });
}

} // namespace pelgrin
