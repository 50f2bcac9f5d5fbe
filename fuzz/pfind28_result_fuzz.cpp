// Text results of pFind 2.8 against a plain reader, which counts the lines of a
// section as the format tells them.
//
// The input is the text of a result (see Expanded). There is no table of
// modifications, so that all masses are 0.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "FuzzSupport.h"
#include "PlainEngineTables.h"

namespace {

using namespace Vorlan;

constexpr const char kBlanks[] = " \t\v\f\r";

/// The first word, as "%s" reads it.
std::string FirstWord(const std::string& text)
{
    const std::size_t begin = std::min(text.find_first_not_of(kBlanks), text.size());
    return text.substr(begin, text.find_first_of(kBlanks, begin) - begin);
}

double ScannedDouble(const std::string& text)
{
    double number = 0.0;
    std::sscanf(text.c_str(), "%lf", &number);
    return number;
}

/// The lines of a result, one after the other; empty ones at the end.
class PlainLines {
public:
    explicit PlainLines(const std::string& text) : lines_(fuzz::LinesOf(text)) {}

    bool AtEnd() const { return next_ >= lines_.size(); }
    std::string Next() { return fuzz::PieceAt(lines_, next_++); }

    bool SkipTo(const std::string& begin)
    {
        while (!AtEnd()) {
            if (Next().compare(0, begin.size(), begin) == 0) {
                return true;
            }
        }
        return false;
    }

    /// What stands behind key in the next line, without blanks around it.
    std::string Value(const std::string& key) { return ValueOf(Next(), key); }

    static std::string ValueOf(const std::string& line, const std::string& key)
    {
        if (line.compare(0, key.size(), key) != 0) {
            return "";
        }
        const std::size_t begin = line.find_first_not_of(kBlanks, key.size());
        return begin == std::string::npos
                   ? ""
                   : line.substr(begin, line.find_last_not_of(kBlanks) + 1 - begin);
    }

    std::string Word(const std::string& key) { return FirstWord(Value(key)); }

    /// What stands behind the count, and the count. format is that of a scan.
    std::string List(const std::string& key, std::int32_t& count, const char* format = "%*d,%n")
    {
        const std::string value = Value(key);
        count = fuzz::PlainInt(value);
        int end = 0;
        std::sscanf(value.c_str(), format, &end);
        const std::size_t begin = value.find_first_not_of(kBlanks, static_cast<std::size_t>(end));
        return end == 0 || begin == std::string::npos ? "" : value.substr(begin);
    }

    std::vector<std::string> Words(const std::string& key, std::int32_t& count,
                                   const char* format = "%*d,%n")
    {
        return fuzz::PiecesOf(FirstWord(List(key, count, format)), ',');
    }

private:
    std::vector<std::string> lines_;
    std::size_t next_ = 0;
};

IdentModification PlainMod(std::string name, std::int32_t position)
{
    for (const std::string term : {" (N-term", " (C-term"}) {
        const std::size_t hit = name.find(term);
        if (hit != std::string::npos) {
            name.replace(hit, 8, " (Any " + term.substr(2));
        }
    }
    IdentModification mod;
    mod.strName = name;
    mod.nPos = position;
    const std::size_t open = name.rfind(" (");
    if (open != std::string::npos && name.back() == ')') {
        mod.strSite = name.substr(open + 2, name.size() - open - 3);
        const std::string whose =
            mod.strSite.find("Protein") == std::string::npos ? "Any " : "Protein ";
        for (const std::string term : {"C-term", "N-term"}) {
            if (mod.strSite.find(term) != std::string::npos) {
                mod.strPosition = whose + term;
            }
        }
    }
    return mod;
}

void PlainLists(PlainLines& lines, PeptideIdentification& match)
{
    std::int32_t count = 0;
    std::int32_t other = 0;
    const std::vector<std::string> proteins = lines.Words("NO1_Proteins=", count);
    if (count > 0) {
        lines.Next();
        const std::vector<std::string> flanks = lines.Words("NO1_PrevNextAA=", other);
        const std::vector<std::string> starts = lines.Words("NO1_ProStartPos=", other);
        for (std::size_t i = 0; i < proteins.size(); ++i) {
            const std::string flank = fuzz::PieceAt(flanks, i);
            match.vEvidences.emplace_back(
                proteins[i], i < starts.size() ? fuzz::PlainInt(starts[i]) : -1, -1,
                flank.empty() ? 'X' : flank.front(), flank.empty() ? 'X' : flank.back());
        }
    }
    const std::vector<std::string> positions = lines.Words("NO1_Modify_Pos=", count, "%*[^,],%n");
    if (count > 0) {
        // These hold blanks.
        const std::vector<std::string> names =
            fuzz::PiecesOf(lines.List("NO1_Modify_Name=", other), ',');
        for (std::size_t i = 0; i < names.size(); ++i) {
            match.vMods.push_back(PlainMod(names[i], fuzz::PlainInt(fuzz::PieceAt(positions, i))));
        }
    }
}

/// False for a section without a candidate or without its sequence.
bool PlainSection(PlainLines& lines, PeptideIdentification& match)
{
    match.strSpectrumName = lines.Word("Input=");
    const std::int32_t charge = fuzz::PlainInt(lines.Value("Charge="));
    match.nCharge = static_cast<std::uint64_t>(charge);
    lines.Next();
    match.dObsMH = ScannedDouble(lines.Value("MH="));
    match.dValue1 = fuzz::PlainMz(match.dObsMH, charge);
    lines.Next();
    lines.Next();
    if (fuzz::PlainInt(lines.Value("ValidCandidate=")) <= 0) {
        return false;
    }
    lines.Next();
    match.dMainScore = ScannedDouble(lines.Value("NO1_EValue="));
    match.dMassShift = match.dObsMH - ScannedDouble(lines.Value("NO1_MH="));
    lines.Next();
    lines.Next();
    const std::string sequence = lines.Next();
    if (sequence.compare(0, 7, "NO1_SQ=") != 0) {
        return false;
    }
    match.strSequence = FirstWord(PlainLines::ValueOf(sequence, "NO1_SQ="));
    lines.Next();
    PlainLists(lines, match);
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static fuzz::MemoryFile file;
    fuzz::SilenceConsole();
    const std::string text = fuzz::Expanded(fuzz::TextOf(data, size));
    file.Write(text);
    fuzz::MatchOutcome expected;
    PlainLines lines(text);
    if (lines.SkipTo("[Search]")) {
        std::string path = lines.Word("InputPath=");
        path.erase(path.find_last_not_of('\\') + 1);
        while (lines.SkipTo("[Spectrum")) {
            PeptideIdentification match;
            match.strDatasetName = path.substr(path.rfind('\\') + 1);
            if (PlainSection(lines, match)) {
                expected.matches.push_back(match);
            }
        }
    }
    fuzz::CheckSameMatches(fuzz::LoadOf<PfindTXTPepIdentIO>(file), expected);
    return 0;
}
