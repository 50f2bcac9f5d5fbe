#include "FastaProteinDB.h"

#include <memory>
#include <string_view>
#include <utility>

#include "platform/InputFile.h"
#include "platform/Paths.h"
#include "proteindb/FastaScanner.h"
#include "proteindb/FastaText.h"
#include "proteindb/ProteinStarts.h"
#include "util/Console.h"
#include "util/TextMode.h"

namespace AC {

void Node::SetChild(std::uint64_t index, char ch)
{
    tChild_ = index;
    cChild_ = ch;
}

std::pair<std::uint64_t, char> Node::GetChild() const
{
    return {tChild_, cChild_};
}

void Node::SetBrother(std::uint64_t index, char ch)
{
    tBrother_ = index;
    cBrother_ = ch;
}

std::pair<std::uint64_t, char> Node::GetBrother() const
{
    return {tBrother_, cBrother_};
}

void Node::SetF(std::uint64_t index)
{
    tF_ = index;
}

std::uint64_t Node::GetF() const
{
    return tF_;
}

} // namespace AC

namespace Vorlan {

namespace {

constexpr std::uint64_t kBinWidth = 2000;
constexpr std::size_t kBlockSize = std::size_t{256} * 1024;

bool Tell(console::Stream stream, std::string_view message)
{
    console::Print(stream, message);
    return false;
}

/// The size of the file, at whose start the stream stands then.
std::uint64_t SizeOf(std::ifstream& stream)
{
    stream.seekg(0, std::ios::end);
    const std::streamoff size = stream.tellg();
    stream.seekg(0);
    return size > 0 ? static_cast<std::uint64_t>(size) : 0;
}

/// Gives the whole stream to scanner, block by block. A read error counts as the
/// end.
void Scan(std::ifstream& stream, FastaScanner& scanner)
{
    scanner.Expect(SizeOf(stream));
    const std::unique_ptr<char[]> block(new char[kBlockSize]); // not filled with zeros first
    for (bool isFirst = true; stream; isFirst = false) {
        stream.read(block.get(), kBlockSize);
        auto size = static_cast<std::size_t>(stream.gcount());
        if (isFirst) {
            size = DropByteOrderMark(block.get(), size);
        }
        scanner.Take({block.get(), size});
    }
    scanner.Finish();
}

} // namespace

CFastaProteinDB::CFastaProteinDB() : tBinWidth_(kBinWidth) {}

CFastaProteinDB::~CFastaProteinDB() = default;

void CFastaProteinDB::SetDBName(const std::string& name)
{
    strDBName_ = name;
}

std::string CFastaProteinDB::GetDBName() const
{
    return strDBName_;
}

void CFastaProteinDB::SetDBPath(const std::string& path)
{
    strDBPath_ = path;
}

std::string CFastaProteinDB::GetDBPath() const
{
    return strDBPath_;
}

bool CFastaProteinDB::OpenFile()
{
    CloseFile();
    if (strDBPath_.empty()) {
        return Tell(console::Stream::Out, "DBPath empty!\n");
    }
    // A stream would open a folder, hang on a pipe, and a device may have no end.
    platform::InputFile file;
    if (file.Open(strDBPath_) && file.IsRegular()) {
        ifsFasta_.open(platform::Resolve(strDBPath_), std::ios::in | std::ios::binary);
    }
    return ifsFasta_.is_open() || Tell(console::Stream::Out, "Can't find fasta file!\n");
}

void CFastaProteinDB::CloseFile()
{
    if (ifsFasta_.is_open()) {
        ifsFasta_.close();
    }
    ifsFasta_.clear();
}

bool CFastaProteinDB::ReadFromFile()
{
    if (!OpenFile()) {
        return Tell(console::Stream::Err, "Can not open Fasta file!\n");
    }
    std::vector<CProtein> proteins;
    std::vector<std::uint64_t> starts;
    std::string concatenation;
    FastaScanner scanner(proteins, starts, concatenation);
    Scan(ifsFasta_, scanner);
    CloseFile();
    if (scanner.HasFalseStart()) {
        console::Print(console::Stream::Out, fasta::kNoHeader);
        return Tell(console::Stream::Out, "Error: Fasta file format is wrong!\n");
    }
    vProteins_ = std::move(proteins);
    vStarts_ = std::move(starts);
    strProteins_ = std::move(concatenation);
    CreateHashTable(); // Deliberate: B-78. Also without any entry.
    return true;
}

void CFastaProteinDB::CreateHashTable()
{
    vBins_.clear();
    if (!vStarts_.empty()) {
        vBins_ = MakeBins(vStarts_, strProteins_.size(), tBinWidth_);
    }
}

std::uint64_t CFastaProteinDB::GetEntryNum() const
{
    return vProteins_.size();
}

std::string CFastaProteinDB::GetProteinString() const
{
    return strProteins_;
}

bool CFastaProteinDB::Query(std::string peptide, std::uint64_t endPos, CProtein& protein,
                            std::uint64_t& startInProtein) const
{
    const std::uint64_t bin = endPos / tBinWidth_;
    if (peptide.empty() || bin >= vBins_.size()) {
        return false;
    }
    const std::uint64_t found = ProteinAt(vStarts_, vBins_[bin], endPos);
    protein = vProteins_[found];
    startInProtein = endPos - vStarts_[found] - peptide.size() + 1;
    return true;
}

const std::vector<CProtein>& CFastaProteinDB::cProteins() const
{
    return vProteins_;
}

const std::string& CFastaProteinDB::cProteinString() const
{
    return strProteins_;
}

} // namespace Vorlan
