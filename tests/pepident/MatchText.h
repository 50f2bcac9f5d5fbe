// Matches as text, and tables read from and written to texts.
#ifndef VORLAN_TESTS_MATCHTEXT_H
#define VORLAN_TESTS_MATCHTEXT_H

#include <cstdio>
#include <filesystem>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "PeptideIdentificationIO.h"
#include "support/CLocale.h"
#include "support/Exceptions.h"
#include "support/Support.h"

namespace Vorlan::test {

inline const std::string kNativeHeader =
    "Dataset Name\tSpectrum Name\tSequence\tCharge\tObsMH\tMass Shift\tMain Score\tHigh Score "
    "Better\tIdentified Mod Name\tIdentified Mod Position\tProtein Access\tBefore AA\tAfter AA\t"
    "Protein Start Position\n";

inline const char kNativeLoad[] = "TulkTXTPepIdentIO::Load";
inline const char kNativeSave[] = "TulkTXTPepIdentIO::Save";

inline std::string ValueText(double value, const char* format)
{
    if (value != value) {
        return "nan";
    }
    const CLocale plain;
    char text[512];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

/// "Oxidation (M)@3"; what the table does not carry only where it is set.
inline std::string Dump(const IdentModification& mod)
{
    IdentModification plain;
    plain.strName = mod.strName;
    plain.nPos = mod.nPos;
    return mod.strName + "@" + std::to_string(mod.nPos) + (mod == plain ? "" : " and more");
}

/// "K.P12345.R@17"
inline std::string Dump(const PeptideEvidence& evidence)
{
    return std::string(1, evidence.cBefore) + "." + evidence.strProteinAccession + "."
           + evidence.cAfter + "@" + std::to_string(evidence.nStart);
}

/// "dataset|spectrum|SEQ|2+|1000.5|15.9|0.5 high|Mod@1;Mod@3|K.P1.R@17"
inline std::string Dump(const PeptideIdentification& match, const char* format = "%.17g")
{
    std::string text = match.strDatasetName + "|" + match.strSpectrumName + "|" + match.strSequence;
    text += "|" + std::to_string(match.nCharge) + "+|" + ValueText(match.dObsMH, format) + "|"
            + ValueText(match.dMassShift, format) + "|" + ValueText(match.dMainScore, format)
            + (match.bHighScoreBetter ? " high|" : " low|");
    for (std::size_t i = 0; i < match.vMods.size(); ++i) {
        text += (i == 0 ? "" : ";") + Dump(match.vMods[i]);
    }
    text += "|";
    for (std::size_t i = 0; i < match.vEvidences.size(); ++i) {
        text += (i == 0 ? "" : ";") + Dump(match.vEvidences[i]);
    }
    const bool more = match.dValue1 != 0 || match.dValue2 != 0 || match.dValue3 != 0
                      || match.nValue4 != 0 || match.nValue5 != 0 || match.bDecoy
                      || !match.vAltMods.empty();
    return text + (more ? "|fields set that the table does not carry" : "");
}

inline std::vector<std::string> Dump(const std::vector<PeptideIdentification>& matches,
                                     const char* format = "%.17g")
{
    std::vector<std::string> texts;
    for (const PeptideIdentification& match : matches) {
        texts.push_back(Dump(match, format));
    }
    return texts;
}

/// What reading a table gives: the matches, what was printed and thrown.
struct Reading {
    std::vector<PeptideIdentification> matches;
    std::string output;
    Thrown thrown;
};

/// Catches what goes to std::cout in memory: thousands of captures need no
/// files.
class CoutInMemory {
public:
    CoutInMemory() : former_(std::cout.rdbuf(text_.rdbuf())) {}
    ~CoutInMemory() { std::cout.rdbuf(former_); }
    CoutInMemory(const CoutInMemory&) = delete;
    CoutInMemory& operator=(const CoutInMemory&) = delete;

    std::string Text() const { return text_.str(); }

private:
    std::ostringstream text_;
    std::streambuf* former_;
};

/// Reads a text as a table, by way of a file in folder.
inline Reading ReadNativeText(const TempFolder& folder, const std::string& text)
{
    std::filesystem::remove(folder.PathOf("t.txt")); // a new file is quicker than an emptied one
    folder.Write("t.txt", text);
    Reading reading;
    const CoutInMemory output;
    reading.thrown = ThrownBy([&] {
        TulkTXTPepIdentIO reader;
        reader.InitLoad({folder.Path(), "t.txt", PepIdentType::CalvexTxt});
        reader.Load(reading.matches);
        reader.EndLoad();
    });
    reading.output = output.Text();
    return reading;
}

inline Reading ReadNativeText(const std::string& text)
{
    return ReadNativeText(TempFolder(), text);
}

// ---- Progress -------------------------------------------------------------

/// What is printed for one row, with the backspaces behind it.
inline std::string Shown(const std::string& text)
{
    return text + std::string(text.size(), '\b');
}

/// What is printed when the rows are done and text was shown last.
inline std::string Erased(const std::string& text)
{
    return std::string(text.size(), ' ') + std::string(text.size(), '\b');
}

// ---- Writing --------------------------------------------------------------

/// The bytes that Save writes.
inline std::string NativeTextOf(const TempFolder& folder,
                                const std::vector<PeptideIdentification>& matches)
{
    std::filesystem::remove(folder.PathOf("t.txt"));
    const CoutInMemory output;
    TulkTXTPepIdentIO writer;
    writer.InitSave(folder.PathOf("t.txt"));
    writer.Save(matches);
    writer.EndSave();
    return ReadFile(folder.PathOf("t.txt"));
}

inline std::string NativeTextOf(const std::vector<PeptideIdentification>& matches)
{
    return NativeTextOf(TempFolder(), matches);
}

} // namespace Vorlan::test

#endif // VORLAN_TESTS_MATCHTEXT_H
