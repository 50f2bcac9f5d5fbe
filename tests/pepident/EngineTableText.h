// Tables of search engines as texts, and what the readers make of them.
#ifndef VORLAN_TESTS_ENGINETABLETEXT_H
#define VORLAN_TESTS_ENGINETABLETEXT_H

#include <string>
#include <utility>
#include <vector>

#include "PeptideIdentificationIO.h"
#include "pepident/MatchText.h"
#include "support/Exceptions.h"
#include "support/Support.h"

namespace Vorlan::test {

/// A tab-separated table that tests change column by column.
struct Table {
    std::vector<std::string> columns;
    std::vector<std::vector<std::string>> rows;

    std::size_t Place(const std::string& column) const
    {
        std::size_t place = 0;
        while (columns.at(place) != column) {
            ++place;
        }
        return place;
    }

    /// The same with one cell of one row changed.
    Table With(const std::string& column, const std::string& cell, std::size_t row = 0) const
    {
        Table table = *this;
        table.rows.at(row).at(Place(column)) = cell;
        return table;
    }

    Table Without(const std::string& column) const
    {
        Table table = *this;
        const auto place = static_cast<std::ptrdiff_t>(Place(column));
        table.columns.erase(table.columns.begin() + place);
        for (std::vector<std::string>& row : table.rows) {
            row.erase(row.begin() + place);
        }
        return table;
    }

    Table Renamed(const std::string& column, const std::string& name) const
    {
        Table table = *this;
        table.columns.at(Place(column)) = name;
        return table;
    }

    /// The same with a further column in front of the others.
    Table WithInFront(const std::string& name) const
    {
        Table table = *this;
        table.columns.insert(table.columns.begin(), name);
        for (std::vector<std::string>& row : table.rows) {
            row.insert(row.begin(), "more");
        }
        return table;
    }

    std::string Text(const std::string& lineEnd = "\n") const
    {
        std::string text = Line(columns) + lineEnd;
        for (const std::vector<std::string>& row : rows) {
            text += Line(row) + lineEnd;
        }
        return text;
    }

    std::string Header() const { return Line(columns) + "\n"; }

    static std::string Line(const std::vector<std::string>& cells)
    {
        std::string line;
        for (std::size_t i = 0; i < cells.size(); ++i) {
            line += (i == 0 ? "" : "\t") + cells[i];
        }
        return line;
    }
};

/// "Oxidation@4 on M Anywhere +15.994915"
inline std::string FullDump(const IdentModification& mod)
{
    return mod.strName + "@" + std::to_string(mod.nPos) + " on " + mod.strSite + " "
           + mod.strPosition + " " + ValueText(mod.dMass, "%+.6f");
}

/// Every field of a match; what is not reported is left out:
/// "a.mgf|11|PEPMK|2+|603.192724|shift 0.5|score 1e-12 low|mz 302.1|rt 750|error 1.5 ppm|
///  scan 11|decoy|Oxidation@4 on M Anywhere +15.994915|K.P1.R@-1"
inline std::string FullDump(const PeptideIdentification& match)
{
    static const char* const kUnits[] = {" no unit", " Da", " ppm"};
    std::string text = match.strDatasetName + "|" + match.strSpectrumName + "|" + match.strSequence
                       + "|" + std::to_string(match.nCharge) + "+|"
                       + ValueText(match.dObsMH, "%.6f");
    const auto add = [&text](const char* name, double value) {
        text += value == 0.0 ? "" : std::string("|") + name + " " + ValueText(value, "%.9g");
    };
    add("shift", match.dMassShift);
    text += "|score " + ValueText(match.dMainScore, "%.9g")
            + (match.bHighScoreBetter ? " high" : " low");
    add("mz", match.dValue1);
    add("rt", match.dValue2);
    if (match.dValue3 != 0.0 || match.nValue4 != 0) {
        text += "|error " + ValueText(match.dValue3, "%.9g") + kUnits[match.nValue4 % 3];
    }
    text += "|scan " + std::to_string(match.nValue5) + (match.bDecoy ? "|decoy" : "");
    for (const IdentModification& mod : match.vMods) {
        text += "|" + FullDump(mod);
    }
    for (const PeptideEvidence& evidence : match.vEvidences) {
        text += "|" + Dump(evidence);
    }
    return text + (match.vAltMods.empty() ? "" : "|alternatives");
}

inline std::vector<std::string> FullDump(const std::vector<PeptideIdentification>& matches)
{
    std::vector<std::string> texts;
    for (const PeptideIdentification& match : matches) {
        texts.push_back(FullDump(match));
    }
    return texts;
}

inline std::vector<std::string> FullDump(const std::vector<IdentModification>& mods)
{
    std::vector<std::string> texts;
    for (const IdentModification& mod : mods) {
        texts.push_back(FullDump(mod));
    }
    return texts;
}

/// A reader's files: the first one is the result, the other its second file.
struct EngineFiles {
    std::string text;
    std::string secondName = {}; ///< empty: the source names none
    std::string secondText = {};
};

/// The files of a reader in a folder of their own.
class EngineFolder {
public:
    explicit EngineFolder(const EngineFiles& files)
    {
        folder_.Write("result", files.text);
        source_ = PepIdentSource(folder_.Path(), "result", PepIdentType::Unknown);
        if (!files.secondName.empty()) {
            folder_.Write(files.secondName, files.secondText);
            source_.strThird = folder_.Path();
            source_.strFourth = files.secondName;
        }
    }

    const PepIdentSource& Source() const { return source_; }

private:
    TempFolder folder_;
    PepIdentSource source_;
};

/// Reads a result by way of files, and ends the loading.
inline Reading ReadEngineFiles(PeptideIdentificationIO& reader, const EngineFiles& files)
{
    const EngineFolder folder(files);
    Reading reading;
    const CoutInMemory output;
    reading.thrown = ThrownBy([&] {
        reader.InitLoad(folder.Source());
        reader.Load(reading.matches);
    });
    reader.EndLoad();
    reading.output = output.Text();
    return reading;
}

template <typename Reader>
Reading ReadEngineText(const EngineFiles& files)
{
    Reader reader;
    return ReadEngineFiles(reader, files);
}

} // namespace Vorlan::test

#endif // VORLAN_TESTS_ENGINETABLETEXT_H
