// What the plain twins of the readers of engine tables share.
#ifndef VORLAN_FUZZ_PLAINENGINETABLES_H
#define VORLAN_FUZZ_PLAINENGINETABLES_H

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include <OpenMS/CONCEPT/Constants.h>
#include <OpenMS/CONCEPT/Exception.h>

#include "FuzzSupport.h"
#include "PeptideIdentificationIO.h"
#include "PlainLines.h"

namespace Vorlan::fuzz {

using Matches = std::vector<PeptideIdentification>;
using Cells = std::map<std::string, std::string>; // column -> cell

/// The matches up to the error, and the error as text; empty: none.
struct MatchOutcome {
    Matches matches;
    std::string error;
};

/// Runs read on the matches of an outcome and keeps the documented exceptions.
template <typename Read>
MatchOutcome MatchOutcomeOf(Read read)
{
    MatchOutcome outcome;
    try {
        read(outcome.matches);
    } catch (const OpenMS::Exception::InvalidValue& error) {
        outcome.error = std::to_string(error.getLine()) + " " + error.what();
    } catch (const OpenMS::Exception::ElementNotFound& error) {
        outcome.error = std::string("ElementNotFound ") + error.what();
    } catch (const OpenMS::Exception::ConversionError& error) {
        outcome.error = std::string("ConversionError ") + error.what();
    }
    return outcome;
}

/// Loads files through the reader, the second one when there is one.
template <typename Reader>
MatchOutcome LoadOf(const MemoryFile& file, const MemoryFile* second = nullptr)
{
    return MatchOutcomeOf([&](Matches& matches) {
        Reader reader;
        PepIdentSource source(file.Folder(), file.Name(), reader.eGetType());
        if (second != nullptr) {
            source.strThird = second->Folder();
            source.strFourth = second->Name();
        }
        reader.InitLoad(source);
        reader.Load(matches);
        reader.EndLoad();
    });
}

// ---- Cells ----------------------------------------------------------------

/// One more than there are separators; none of an empty text.
inline std::vector<std::string> PiecesOf(const std::string& text, char separator)
{
    std::vector<std::string> pieces;
    for (std::size_t begin = 0; !text.empty() && begin <= text.size();) {
        const std::size_t end = std::min(text.find(separator, begin), text.size());
        pieces.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return pieces;
}

/// Piece i; empty when there is none.
inline std::string PieceAt(const std::vector<std::string>& pieces, std::size_t i)
{
    return i < pieces.size() ? pieces[i] : std::string();
}

/// Columns in another order, which depends on turn.
inline std::vector<std::string> Turned(std::vector<std::string> columns, std::uint8_t turn)
{
    const auto middle = static_cast<std::ptrdiff_t>(turn % columns.size());
    std::rotate(columns.begin(), columns.begin() + middle, columns.end());
    return columns;
}

inline std::string Joined(const std::vector<std::string>& cells)
{
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        line += (i == 0 ? "" : "\t") + cells[i];
    }
    return line;
}

/// False when the row has fewer cells than there are columns.
inline bool TakeRow(const std::vector<std::string>& columns, const std::string& row, Cells& cells)
{
    const std::vector<std::string> pieces = PiecesOf(row, '\t');
    cells.clear();
    for (std::size_t i = 0; i < columns.size() && i < pieces.size(); ++i) {
        cells[columns[i]] = pieces[i];
    }
    return pieces.size() >= columns.size();
}

// ---- Numbers --------------------------------------------------------------

inline double PlainDouble(const std::string& text)
{
    return std::strtod(text.c_str(), nullptr);
}

/// atoi, with the nearest of the numbers of 32 bits.
inline std::int32_t PlainInt(const std::string& text)
{
    const long long value = std::strtoll(text.c_str(), nullptr, 10);
    const long long least = std::numeric_limits<std::int32_t>::min();
    const long long most = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::max(least, std::min(most, value)));
}

const double kProton = OpenMS::Constants::PROTON_MASS_U; // Da

// ---- Comparing ------------------------------------------------------------

inline std::string BitsText(double value)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.17g", value == value ? value : 0.0);
    return value == value ? text : "nan";
}

/// Every field.
inline std::string TextOf(const PeptideIdentification& match)
{
    std::string text = match.strDatasetName + "\n" + match.strSpectrumName + "\n"
                       + match.strSequence + "\ncharge " + std::to_string(match.nCharge) + " mz "
                       + BitsText(match.dValue1) + " mh " + BitsText(match.dObsMH) + " shift "
                       + BitsText(match.dMassShift) + " score " + BitsText(match.dMainScore)
                       + (match.bHighScoreBetter ? " high" : " low") + " rt "
                       + BitsText(match.dValue2) + " error " + BitsText(match.dValue3) + " "
                       + std::to_string(match.nValue4) + " scan " + std::to_string(match.nValue5)
                       + (match.bDecoy ? " decoy" : " target");
    for (const IdentModification& mod : match.vMods) {
        text += "\nmod " + mod.strName + "@" + std::to_string(mod.nPos) + " " + mod.strSite + " "
                + mod.strPosition + " " + BitsText(mod.dMass);
    }
    for (const PeptideEvidence& evidence : match.vEvidences) {
        text += "\nprotein " + evidence.strProteinAccession + " " + std::to_string(evidence.nStart)
                + " " + evidence.cBefore + evidence.cAfter;
    }
    return text + (match.vAltMods.empty() ? "" : "\nalternatives");
}

inline void CheckSameMatches(const MatchOutcome& seen, const MatchOutcome& expected)
{
    const char* const rule = "a file reads as through the plain reader";
    CheckSame(seen.error, expected.error, rule);
    for (std::size_t i = 0; i < std::min(seen.matches.size(), expected.matches.size()); ++i) {
        CheckSame(TextOf(seen.matches[i]), TextOf(expected.matches[i]), rule);
    }
    Check(seen.matches.size() == expected.matches.size(), "the number of matches");
}

/// m/z of a precursor with this MH, and MH of one with this m/z.
inline double PlainMz(double mh, std::int32_t charge)
{
    return charge > 0 ? (mh + (charge - 1.0) * kProton) / charge : 0.0;
}

inline double PlainMh(double mz, std::int32_t charge)
{
    return charge > 0 ? mz * charge - (charge - 1.0) * kProton : 0.0;
}

} // namespace Vorlan::fuzz

#endif // VORLAN_FUZZ_PLAINENGINETABLES_H
