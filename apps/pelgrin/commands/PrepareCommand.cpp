#include "commands/PrepareCommand.h"

#include <memory>
#include <string>
#include <vector>

#include "common/TextTable.h"
#include "prepare/Preparation.h"

namespace pelgrin {

namespace {

struct PrepareTexts {
    std::vector<std::string> inputs;
    std::string out;
};

constexpr const char kPrepareFooter[] = R"(Examples:
  pelgrin prepare --out prepared run01.mgf.gz run01.pep.xml
  pelgrin prepare --out prepared spectra/dta_folder txt/msms.txt proteins.fasta

Writes a copy of every file, or folder of DTA files, that the library reads
right: unpacked (gz, bz2, xz, zst), as UTF-8 with line feeds, every spectrum
under names of its own, tables with the columns and cells that their readers
want, one run in each pepXML file. Bytes of peaks are never changed. What cannot
be mended is left out and counted.

prepared.json says what was changed in each file, and where first; titles.tsv
lists the titles that changed. Give native tables and pepXML with their spectra:
names that changed are changed in them, too.

Exit status: 0 all well; 1 failure; 2 wrong usage; 3 finished, but records were
left out (prepared.json says which and why).
)";

std::string ReportOf(const std::vector<Copy>& copies)
{
    TextTable table(
        {{"Input"}, {"Kind"}, {"Records", true}, {"Written", true}, {"Left out", true}});
    TextTable details({{"Input"}, {"Count", true}, {"What"}});
    for (const Copy& copy : copies) {
        table.Add({copy.input, TextOf(copy.kind), std::to_string(copy.held),
                   std::to_string(copy.written), std::to_string(copy.held - copy.written)});
        for (const ClassCounts* const tallies : {&copy.leftOut, &copy.changes}) {
            for (const auto& [key, tally] : *tallies) {
                const char* const leftOut = tallies == &copy.leftOut ? "left out: " : "";
                details.Add({copy.input, std::to_string(tally.count),
                             leftOut + std::string(TextOfClass(key))});
            }
        }
    }
    return table.Text() + (details.IsEmpty() ? "" : "\n" + details.Text());
}

ExitStatus Prepare(const PrepareTexts& texts)
{
    Preparation preparation(texts.out);
    for (const std::string& input : texts.inputs) {
        preparation.Add(input);
    }
    preparation.Run();
    preparation.WriteReports();
    WarnOfLosses(preparation.Copies());
    PrintReport(ReportOf(preparation.Copies()));
    return HasLosses(preparation.Copies()) ? WithLosses : AllWell;
}

} // namespace

void AddPrepareCommand(CLI::App& app, Command& chosen)
{
    CLI::App* const prepare =
        app.add_subcommand("prepare", "Copy inputs into the form that the library reads right");
    prepare->footer(kPrepareFooter);
    const auto texts = std::make_shared<PrepareTexts>();
    prepare->add_option("--out", texts->out, "folder of the copies; it is made when missing")
        ->type_name("DIR")
        ->required();
    prepare->add_option("inputs", texts->inputs, "files, and folders of DTA files")
        ->type_name("FILE")
        ->required();
    prepare->callback([&chosen, texts] { chosen.run = [texts] { return Prepare(*texts); }; });
}

} // namespace pelgrin
