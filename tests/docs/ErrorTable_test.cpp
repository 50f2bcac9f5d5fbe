// Walks the tables of docs/errors.md: every row is provoked and compared, and
// everything that can be provoked here has a row.
#include <functional>
#include <map>
#include <sstream>

#include <OpenMS/CONCEPT/Exception.h>

#include "CStringProcess.h"
#include "PeptideIdentificationIO.h"
#include "SpectraIO.h"
#include "support/Support.h"

namespace Vorlan {
namespace {

using Row = std::vector<std::string>; // class, unit, label, text

std::vector<Row> RowsOf(const std::string& heading)
{
    const std::string page = test::ReadFile(std::string(PELGRIN_DOCS) + "/errors.md");
    std::istringstream lines(page.substr(page.find("\n## " + heading + "\n") + 1));
    std::vector<Row> rows;
    std::string line;
    std::getline(lines, line);
    while (std::getline(lines, line) && line.rfind("## ", 0) != 0) {
        if (line.rfind("| ", 0) != 0) {
            continue;
        }
        Row cells;
        for (std::string cell : CStringProcess::split(line.substr(1, line.size() - 2), "|")) {
            CStringProcess::replace_all(cell, "`", "");
            CStringProcess::Trim(cell);
            cells.push_back(cell);
        }
        rows.push_back(cells);
    }
    rows.erase(rows.begin()); // the names of the columns
    return rows;
}

/// A caught exception as the table writes it, the variable text put back into
/// its brackets.
Row Caught(const std::function<void()>& call, const std::string& value,
           const std::string& placeholder)
{
    try {
        call();
    } catch (const OpenMS::Exception::BaseException& e) {
        std::string text = e.what();
        CStringProcess::replace_all(text, value, placeholder);
        return {e.getName(), e.getFile(), e.getFunction(), text};
    }
    return {"nothing thrown"};
}

PeptideIdentification MatchWithoutProteins()
{
    return {};
}

Peak PeakWith(int ionType, int hitStatus)
{
    Peak::MatchRes match;
    match.eIonType = static_cast<Peak::EIonType>(ionType);
    match.eHitStatus = static_cast<Peak::EPeakHitStatus>(hitStatus);
    Peak peak;
    peak.addMatchRes(match);
    return peak;
}

void ThrowMissingColumn()
{
    const test::TempFolder folder;
    folder.Write("table.txt", "Spectrum Name\n");
    TulkTXTPepIdentIO reader;
    reader.InitLoad(PepIdentSource(folder.Path(), "table.txt", PepIdentType::CalvexTxt));
    std::vector<PeptideIdentification> matches;
    reader.Load(matches);
}

std::vector<Row> ProvokedExceptions()
{
    std::vector<Row> rows;
    const auto add = [&rows](const std::function<void()>& call, const std::string& value = "",
                             const std::string& placeholder = "") {
        rows.push_back(Caught(call, value, placeholder));
    };
    add([] { MatchWithoutProteins().isTarget("REV_"); });
    add([] { LocalizeResult::transStringToEModSite("s"); }, "'115'", "'<code>'");
    add([] {
        LocalizeResult::transETermSpecificityToString(LocalizeResult::NUMBER_OF_TERM_SPECIFICITY);
    });
    add([] { LocalizeResult::transStringToETermSpecificity("Any"); }, "of Any", "of <text>");

    Peak peak;
    const std::string value = "7 (size = 0)";
    const std::string placeholder = "<index> (size = <size>)";
    add([&] { peak.getIonTypeOf(7); }, value, placeholder);
    add([&] { peak.setIonTypeOf(Peak::B_ION, 7); }, value, placeholder);
    add([&] { peak.getIonIndexOf(7); }, value, placeholder);
    add([&] { peak.setIonIndexOf(1, 7); }, value, placeholder);
    add([&] { peak.getChargeOf(7); }, value, placeholder);
    add([&] { peak.setChargeOf(1, 7); }, value, placeholder);
    add([&] { peak.getHitStatusOf(7); }, value, placeholder);
    add([&] { peak.setHitStatusOf(Peak::SHIFT, 7); }, value, placeholder);
    add([&] { peak.getMatchResOf(7); }, value, placeholder);
    add([&] { peak.getHitStatusStringOf(7); }, value, placeholder);
    add([] { PeakWith(9, 1).getHitStatusStringOf(0); }, "'9'", "'<number>'");
    add([] { PeakWith(2, 9).getHitStatusStringOf(0); }, "'9'", "'<number>'");

    std::vector<Spectrum> spectra;
    add([&] { DatasetIOPool().bLoadOneSpectrum("a.mgf", "b", spectra); }, "a.mgf",
        "<dataset name>");
    add(
        [] {
            TulkTXTPepIdentIO().InitLoad(
                PepIdentSource("/no/folder", "psms.txt", PepIdentType::CalvexTxt));
        },
        "/no/folder\\psms.txt", "<path>");
    add(ThrowMissingColumn, "Dataset Name", "<column>");
    add(
        [] {
            TulkTXTPepIdentIO writer;
            writer.InitSave("/no/folder/out.txt");
            writer.Save({});
        },
        "/no/folder/out.txt", "<path>");
    return rows;
}

TEST(ErrorTable, ListsEveryExceptionAsItIsThrown)
{
    EXPECT_EQ(RowsOf("Exceptions"), ProvokedExceptions());
}

TEST(ErrorTable, ListsEveryMessageAsItIsPrinted)
{
    std::vector<std::string> texts;
    for (const Row& row : RowsOf("Messages")) {
        texts.push_back(row.at(2));
    }
    const auto printed = [](const std::function<void(MgfIO&)>& call, const std::string& value,
                            const std::string& placeholder) {
        MgfIO reader;
        std::string text = test::OutputOf([&] { call(reader); });
        CStringProcess::replace_all(text, value, placeholder);
        return text;
    };
    std::vector<Spectrum> spectra;
    EXPECT_EQ(texts.size(), 2U);
    EXPECT_EQ(printed([](MgfIO& io) { io.InitLoad("/no/file.mgf"); }, "/no/file.mgf", "<path>"),
              "\n" + texts.at(0) + "\n");
    EXPECT_EQ(printed([](MgfIO& io) { io.InitSave("/no/file.mgf"); }, "/no/file.mgf", "<path>"),
              "\n" + texts.at(0) + "\n");
    EXPECT_EQ(printed([&](MgfIO& io) { io.bLoadOneSpectrum("17", spectra); }, "17", "<name>"),
              "\n" + texts.at(1) + "\n");
}

} // namespace
} // namespace Vorlan
