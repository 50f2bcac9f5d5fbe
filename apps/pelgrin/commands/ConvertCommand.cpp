#include "commands/ConvertCommand.h"

#include <memory>
#include <string>

#include "commands/AllowOption.h"
#include "commands/ResultOptions.h"
#include "run/Conversion.h"

namespace pelgrin {

namespace {

struct ConvertTexts {
    std::string in;
    ResultOptions result;
    std::string out;
    LossFiles losses;
};

constexpr const char kConvertFooter[] = R"help(
Examples:
  pelgrin convert --format "Comet (.pep.xml)" --in run01.pep.xml \
    --mod "Oxidation (M)=15.9949" --mod "Carbamidomethyl (C)=57.021464" \
    --out run01.txt
  pelgrin convert --format MaxQuant --in txt/msms.txt --out msms_table.txt

Writes every match to the table, a "Calvex (.txt)" file, and says on standard
output how many there were, what of the result gave no match, and what the table
has no place for.

A record that cannot be read is left out and told with file, line and reason;
the others are kept. Files of any size are read in memory of a fixed size.

Exit status: 0 all well; 1 failure; 2 wrong usage; 3 finished, but matches or
parts of them are missing (the report says which and why) and --allow does not
name their class.
)help";

ExitStatus RunConvert(const ConvertTexts& texts)
{
    Parameters parameters;
    parameters.program = "pelgrin convert";
    parameters.psms = {texts.in};
    parameters.out = texts.out;
    TakeLossOptions(texts.losses, parameters);
    RefuseModificationsTwice(texts.result);
    TakeResultOptions(texts.result, parameters);
    return Convert(parameters);
}

} // namespace

void AddConvertCommand(CLI::App& app, Command& chosen)
{
    CLI::App* const convert =
        app.add_subcommand("convert", "Turn the result of a search engine into the native table");
    const auto texts = std::make_shared<ConvertTexts>();
    convert->footer(kFormatNeeds + std::string(kConvertFooter));
    convert->add_option("--in", texts->in, "result of a search engine")
        ->type_name("FILE")
        ->required();
    AddResultOptions(*convert, texts->result, true);
    convert->add_option("--out", texts->out, "table to be written")->type_name("TABLE")->required();
    AddLossOptions(*convert, texts->losses);
    convert->callback([&chosen, texts] { chosen.run = [texts] { return RunConvert(*texts); }; });
}

} // namespace pelgrin
