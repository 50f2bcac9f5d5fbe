// FASTA files: the database, the parser's steps and the scanner against a plain
// reader, and Query against a walk over all proteins.
//
// The input is the text of a file; see Expanded, where the long repetitions are a bin
// of the database here. Files of several blocks are left to the tests: each costs as
// much as a hundred small ones, and the scanner is cut anywhere in those.
#include <algorithm>
#include <cstdint>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "FastaProteinDB.h"
#include "FuzzSupport.h"
#include "proteindb/FastaScanner.h"

namespace {

using namespace Vorlan;

constexpr std::uint64_t kBinWidth = 2000;

// ---- The plain reader -----------------------------------------------------

/// What a file must give: the outcome of ReadFromFile and what is loaded then.
struct PlainDatabase {
    bool isGood = true;
    std::vector<CProtein> proteins;
    std::vector<std::uint64_t> starts;
    std::string concatenation;
};

std::string WithoutMark(std::string text)
{
    return text.compare(0, 3, "\xEF\xBB\xBF") == 0 ? text.substr(3) : text;
}

/// The pieces of text that end in a line feed, and the rest, if there is any.
std::vector<std::string> FastaLines(const std::string& text)
{
    std::vector<std::string> lines;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        lines.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return lines;
}

bool IsHeader(const std::string& line)
{
    return line.substr(0, 1) == ">";
}

CProtein FromHeader(std::string line)
{
    while (line.back() == '\r') {
        line.pop_back();
    }
    CProtein protein;
    const std::size_t blank = std::min(line.find(' '), line.size());
    protein.strAccession = line.substr(1, blank - 1);
    protein.strDescription = line.substr(std::min(blank + 1, line.size()));
    for (const char invalid : {'\x01', '<', '&'}) {
        std::replace(protein.strDescription.begin(), protein.strDescription.end(), invalid, ' ');
    }
    return protein;
}

/// The entry that begins at line i, which moves behind it.
CProtein PlainEntry(const std::vector<std::string>& lines, std::size_t& i)
{
    CProtein protein = FromHeader(lines[i]);
    for (++i; i < lines.size() && !IsHeader(lines[i]); ++i) {
        std::copy_if(lines[i].begin(), lines[i].end(), std::back_inserter(protein.strSequence),
                     [](char c) { return c >= 'A' && c <= 'Z'; });
    }
    return protein;
}

PlainDatabase PlainRead(const std::vector<std::string>& lines)
{
    PlainDatabase database;
    if (std::none_of(lines.begin(), lines.end(), IsHeader)) {
        return database;
    }
    database.isGood = IsHeader(lines[0]);
    for (std::size_t i = 0; database.isGood && i < lines.size();) {
        database.proteins.push_back(PlainEntry(lines, i));
        database.starts.push_back(database.concatenation.size());
        database.concatenation += database.proteins.back().strSequence + ';';
    }
    return database;
}

// ---- Reading --------------------------------------------------------------

void CheckSameProtein(const CProtein& seen, const CProtein& expected, const char* rule)
{
    fuzz::CheckSame(seen.strAccession, expected.strAccession, rule);
    fuzz::CheckSame(seen.strDescription, expected.strDescription, rule);
    fuzz::CheckSame(seen.strSequence, expected.strSequence, rule);
}

void CheckSameProteins(const std::vector<CProtein>& seen, const std::vector<CProtein>& expected,
                       const char* rule)
{
    fuzz::Check(seen.size() == expected.size(), rule);
    for (std::size_t i = 0; i < seen.size(); ++i) {
        CheckSameProtein(seen[i], expected[i], rule);
    }
}

void CompareDatabase(CFastaProteinDB& database, const PlainDatabase& expected)
{
    fuzz::Check(database.ReadFromFile() == expected.isGood, "the same files can be loaded");
    fuzz::Check(database.GetEntryNum() == expected.proteins.size(), "the number of proteins");
    CheckSameProteins(database.cProteins(), expected.proteins, "the database's proteins");
    fuzz::CheckSame(database.cProteinString(), expected.concatenation, "the concatenation");
}

/// Entry by entry to the end of the file; a line that is no header is passed over
/// by itself.
void CompareSteps(const std::string& path, const std::vector<std::string>& lines)
{
    std::ifstream stream(path, std::ios::in | std::ios::binary);
    const auto headers = std::count_if(lines.begin(), lines.end(), IsHeader);
    fuzz::Check(CFastaParser::GetEntryNum(stream) == static_cast<std::uint64_t>(headers),
                "the number of headers");
    CProtein seen;
    for (std::size_t i = 0; i < lines.size();) {
        const bool isEntry = IsHeader(lines[i]);
        const CProtein expected = isEntry ? PlainEntry(lines, i) : CProtein();
        i += isEntry ? 0 : 1;
        fuzz::Check(CFastaParser::ReadOnePrteinEntry(seen, stream) == isEntry,
                    "a step reads an entry or refuses a line");
        CheckSameProtein(seen, expected, "the parser's proteins");
    }
    fuzz::Check(!CFastaParser::ReadOnePrteinEntry(seen, stream), "behind the end is no entry");
    CheckSameProtein(seen, CProtein(), "behind the end all texts are empty");
}

/// The next byte of the text tells how far to the next two cuts, which are a byte
/// apart: one byte a step, or 16 in a large text. A wrong size of the file costs time
/// only.
void CompareScanner(std::string_view text, const PlainDatabase& expected)
{
    std::vector<CProtein> proteins;
    std::vector<std::uint64_t> starts;
    std::string concatenation;
    FastaScanner scanner(proteins, starts, concatenation);
    scanner.Expect(text.size() / 2);
    const std::size_t step = text.size() < 8192 ? 1 : 16;
    while (!text.empty()) {
        const std::size_t size =
            std::min(step * (static_cast<unsigned char>(text.front()) % 64), text.size());
        scanner.Take(text.substr(0, size)); // nothing, for a size of 0
        scanner.Take(text.substr(size, 1));
        text.remove_prefix(std::min(size + 1, text.size()));
    }
    scanner.Finish();
    fuzz::Check(scanner.HasFalseStart() == !expected.isGood, "the scanner knows a false start");
    if (expected.isGood) {
        CheckSameProteins(proteins, expected.proteins, "the scanner's proteins");
        fuzz::CheckSame(concatenation, expected.concatenation, "the scanner's concatenation");
        fuzz::Check(starts == expected.starts, "the scanner's starts");
    }
}

// ---- Query ----------------------------------------------------------------

/// The last protein that begins before endPos (B-79), but the first one of the bin
/// when it begins there.
std::size_t PlainProtein(const std::vector<std::uint64_t>& starts, std::uint64_t endPos)
{
    const std::uint64_t binStart = endPos / kBinWidth * kBinWidth;
    std::size_t protein = 0;
    for (std::size_t i = 0; i < starts.size(); ++i) {
        const bool isFirstOfBin = starts[i] >= binStart && (i == 0 || starts[i - 1] < binStart);
        if (starts[i] < endPos || (starts[i] == endPos && isFirstOfBin)) {
            protein = i;
        }
    }
    return protein;
}

void CompareQuery(const CFastaProteinDB& database, const PlainDatabase& expected,
                  std::size_t length, std::uint64_t endPos)
{
    const CProtein untouched("accession", "description", "SEQUENCE");
    CProtein protein = untouched;
    std::uint64_t start = 12345;
    const bool isFound = database.Query(std::string(length, 'A'), endPos, protein, start);
    const bool hasBin = endPos / kBinWidth <= expected.concatenation.size() / kBinWidth;
    fuzz::Check(isFound == (length > 0 && hasBin && !expected.proteins.empty()),
                "a query finds a protein");
    if (!isFound) {
        CheckSameProtein(protein, untouched, "without a protein the argument stays");
        fuzz::Check(start == 12345, "without a protein the start stays");
        return;
    }
    const std::size_t found = PlainProtein(expected.starts, endPos);
    CheckSameProtein(protein, expected.proteins[found], "the protein is that of the walk");
    fuzz::Check(start == endPos - expected.starts[found] - length + 1, "the start in the protein");
}

/// One position further and one residue longer a match of one residue is told to
/// lie where it does.
void CheckExact(const CFastaProteinDB& database, const PlainDatabase& expected, std::size_t i)
{
    const std::size_t length = expected.proteins[i].strSequence.size();
    for (const std::size_t first : {std::size_t{0}, length / 2, length - 1}) {
        CProtein protein;
        std::uint64_t start = 0;
        const std::uint64_t behind = expected.starts[i] + first + 1;
        fuzz::Check(database.Query("AA", behind, protein, start) && start == first,
                    "one residue is found where it stands");
        CheckSameProtein(protein, expected.proteins[i], "one residue is found in its protein");
    }
}

/// Where proteins and bins begin, at the end and far behind it.
std::vector<std::uint64_t> EdgesOf(const PlainDatabase& database)
{
    const std::uint64_t size = database.concatenation.size();
    std::vector<std::uint64_t> edges = {0, 1, size, size + kBinWidth, ~std::uint64_t{0}};
    for (std::uint64_t bin = kBinWidth; bin <= size + kBinWidth; bin += kBinWidth) {
        edges.push_back(bin);
    }
    edges.insert(edges.end(), database.starts.begin(), database.starts.end());
    return edges;
}

/// Around the edges and anywhere. The walk meets every protein and a query copies
/// one: fewer of them for large files.
void CompareQueries(const CFastaProteinDB& database, const PlainDatabase& expected)
{
    constexpr std::size_t kMostWork = std::size_t{256} * 1024;
    const std::vector<std::uint64_t> edges = EdgesOf(expected);
    const std::size_t proteins = std::max<std::size_t>(expected.proteins.size(), 1);
    const std::size_t size = expected.concatenation.size();
    const std::size_t step = 1 + edges.size() * (proteins + size / proteins / 16) / kMostWork;
    std::uint64_t mixed = std::hash<std::string>()(expected.concatenation);
    for (std::size_t i = mixed % step; i < edges.size(); i += step) {
        mixed = mixed * 6364136223846793005u + 1442695040888963407u;
        for (const std::uint64_t endPos :
             {edges[i] - 1, edges[i], edges[i] + 1, (mixed >> 33) % (size + 1)}) {
            CompareQuery(database, expected, (mixed >> 60) % 4, endPos);
        }
    }
    for (std::size_t i = mixed % step; i < expected.proteins.size(); i += step) {
        if (!expected.proteins[i].strSequence.empty()) {
            CheckExact(database, expected, i);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static fuzz::MemoryFile file;
    fuzz::SilenceConsole();
    const std::string text = fuzz::Expanded(fuzz::TextOf(data, size), kBinWidth);
    file.Write(text);
    const std::string unmarked = WithoutMark(text);
    const std::vector<std::string> lines = FastaLines(unmarked);
    const PlainDatabase expected = PlainRead(lines);
    CFastaProteinDB database;
    database.SetDBPath(file.Path());
    CompareDatabase(database, expected);
    CompareDatabase(database, expected); // what was loaded before is gone
    CompareSteps(file.Path(), lines);
    CompareScanner(unmarked, expected);
    CompareQueries(database, expected);
    return 0;
}
