// The index of an MGF text against a std::map filled through std::istream.
//
// The input is the text (see Expanded). Names and positions are compared as they
// lie in the index, then the spectra behind them.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "CStringProcess.h"
#include "FuzzSupport.h"
#include "SpectraIO.h"
#include "spectra/MgfRecord.h"
#include "spectra/SpectrumIndex.h"
#include "util/LineReader.h"

namespace {

using namespace Vorlan;
using PlainIndex = std::map<std::string, std::uint64_t>;

// A record may reach to the end of the file (B-16): more than a few are loaded
// only where names times bytes stay below this.
constexpr std::size_t kMostWork = std::size_t{128} * 1024;
constexpr std::size_t kFew = 4;

std::string DottedName(const std::string& word)
{
    const std::vector<std::string> pieces = CStringProcess::split(word, ".");
    const int n = static_cast<int>(pieces.size());
    if (n < 2) {
        return {};
    }
    constexpr long long kLow = std::numeric_limits<std::int32_t>::min();
    constexpr long long kHigh = std::numeric_limits<std::int32_t>::max();
    const char* const number = pieces[pieces.size() - 2].c_str();
    char five[32];
    std::snprintf(five, sizeof five, "%05lld.",
                  std::clamp(std::strtoll(number, nullptr, 10), kLow, kHigh));
    std::string name = pieces[0] + ".";
    for (int i = 1; i <= n - 4; ++i) {
        name += pieces[static_cast<std::size_t>(i)] + ".";
    }
    return name + five + five + pieces.back();
}

void EnterNames(std::string line, std::uint64_t position, PlainIndex& index)
{
    CStringProcess::Trim(line);
    const std::string title = line.size() < 6 ? "" : line.substr(6);
    index[title] = position;
    const std::size_t scan = title.find("scan=");
    if (scan != std::string::npos && title.size() > scan + 5) {
        index[title.substr(scan + 5, title.size() - scan - 6)] = position;
    }
    const std::string word = title.substr(0, title.find(' '));
    index[word] = position;
    const std::string dotted = DottedName(word);
    if (!dotted.empty()) {
        index[dotted] = position;
    }
}

PlainIndex IndexOf(const std::string& file)
{
    static char line[LineReader::kMaxLineLength + 1];
    PlainIndex index;
    std::istringstream input(file);
    while (input.getline(line, sizeof line)) {
        if (line[0] != 'B') {
            continue;
        }
        const auto position = static_cast<std::uint64_t>(input.tellg());
        bool hasTitle = false;
        while (!hasTitle && input.getline(line, sizeof line)) {
            hasTitle = line[0] == 'T';
        }
        if (hasTitle) {
            EnterNames(line, position, index);
        }
    }
    return index;
}

/// Shows the index of the reader.
class OpenMgfIO : public MgfIO {
public:
    const SpectrumIndex& Index() const { return *pIndex_; }
};

void CompareNames(const SpectrumIndex& seen, const PlainIndex& expected)
{
    fuzz::Check(seen.Size() == expected.size(), "as many names");
    std::size_t entry = 0;
    for (const auto& [name, position] : expected) {
        fuzz::CheckSame(seen.Name(entry), name, "the same names in the same order");
        fuzz::Check(seen.Position(entry) == position, "each name at the same position");
        fuzz::Check(seen.Find(name) == entry, "each name is found");
        ++entry;
    }
    for (const auto& [name, position] : expected) {
        const std::string longer = name + "x";
        const bool isFound = seen.Find(longer) != SpectrumIndex::kNone;
        fuzz::Check(isFound == (expected.count(longer) > 0), "other names are not found");
    }
}

/// Iteration gives each entry what stands at its position.
void CompareSpectra(MgfIO& reader, const std::string& path, const PlainIndex& index)
{
    std::vector<Spectrum> spectra;
    fuzz::Check(reader.tLoadAllSpectra(spectra) == index.size(), "one spectrum for each name");
    LineReader input;
    input.Open(path, LineReader::Mode::Binary);
    Spectrum expected;
    Peak scratch;
    auto seen = spectra.begin();
    for (const auto& [name, position] : index) {
        input.Seek(position);
        mgf::ReadRecord(input, expected, scratch);
        fuzz::CheckSame(seen->strTitle, name, "the title is the name");
        fuzz::Check(seen->nCharge == expected.nCharge && seen->nScan == expected.nScan
                        && seen->Size() == expected.Size(),
                    "the record at the position");
        for (std::size_t i = 0; i < expected.vPeaks.size(); ++i) {
            fuzz::Check(fuzz::SameBits(seen->vPeaks[i].dMz, expected.vPeaks[i].dMz),
                        "the peaks at the position");
        }
        ++seen;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static fuzz::MemoryFile file;
    fuzz::SilenceConsole();
    const std::string text = fuzz::Expanded(fuzz::TextOf(data, size));
    file.Write(text);
    const PlainIndex index = IndexOf(text);
    OpenMgfIO reader;
    reader.InitLoad(file.Path());
    fuzz::Check(reader.tGetInputSpecNumber() == index.size(), "the number of names");
    CompareNames(reader.Index(), index);
    if (index.size() <= kFew || index.size() * text.size() < kMostWork) {
        CompareSpectra(reader, file.Path(), index);
    }
    return 0;
}
