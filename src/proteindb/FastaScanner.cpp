#include "proteindb/FastaScanner.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "FastaProteinDB.h"
#include "platform/Memory.h"
#include "proteindb/FastaText.h"

namespace Vorlan {

namespace {

/// Eight characters that are worked on at once.
using Word = std::uint64_t;
constexpr std::ptrdiff_t kWordSize = sizeof(Word);

constexpr Word InEveryByte(unsigned char byte)
{
    return 0x0101010101010101u * byte;
}

/// Whether any of eight characters is not A to Z. The sums set the top bit of
/// every byte that is at least 'A', or above 'Z'; none reaches the next byte.
bool HasOthers(Word characters)
{
    const Word low = characters & InEveryByte(0x7F);
    const Word atLeastA = low + InEveryByte(0x80 - 'A');
    const Word aboveZ = low + InEveryByte(0x80 - 'Z' - 1);
    return ((~atLeastA | aboveZ | characters) & InEveryByte(0x80)) != 0;
}

/// Copies the residues at text to out, up to another character or to the end.
/// Writes up to a word more than that.
void CopyResidues(const char*& text, const char* const end, char*& out)
{
    for (Word word = 0; end - text >= kWordSize; text += kWordSize, out += kWordSize) {
        std::memcpy(&word, text, sizeof word);
        std::memcpy(out, &word, sizeof word);
        if (HasOthers(word)) {
            break;
        }
    }
    while (text < end && fasta::IsResidue(*text)) {
        *out++ = *text++;
    }
}

} // namespace

FastaScanner::FastaScanner(std::vector<CProtein>& proteins, std::vector<std::uint64_t>& starts,
                           std::string& concatenation)
    : proteins_(proteins), starts_(starts), concatenation_(concatenation)
{
}

void FastaScanner::Expect(std::uint64_t fileSize)
{
    expected_ = fileSize;
    concatenation_.reserve(fileSize);
}

/// The pages of the concatenation at once, a good way ahead: one by one, each at
/// its first use, they take longer than all reading.
void FastaScanner::ProvideRoom(std::size_t size)
{
    constexpr std::size_t kStep = std::size_t{4} << 20;
    if (provided_ < concatenation_.capacity() && provided_ < concatenation_.size() + size) {
        const std::size_t step = std::min(kStep, concatenation_.capacity() - provided_);
        platform::ProvidePages(concatenation_.data() + provided_, step);
        provided_ += step;
    }
}

/// A new entry of the list. It grows to what the file will hold when its entries
/// go on as they began, yet never to many times of what there is.
CProtein& FastaScanner::AddProtein()
{
    constexpr std::uint64_t kGrowth = 8;
    if (proteins_.size() == proteins_.capacity()) {
        const std::uint64_t times = expected_ / std::max<std::uint64_t>(taken_, 1) + 1;
        proteins_.reserve(proteins_.size() * std::clamp<std::uint64_t>(times, 2, kGrowth) + 1);
    }
    return proteins_.emplace_back();
}

void FastaScanner::Take(std::string_view part)
{
    ProvideRoom(part.size());
    residues_.resize(std::max(residues_.size(), part.size() + sizeof(Word)));
    taken_ += part.size();
    while (!part.empty()) {
        if (atLineStart_) {
            BeginLine(part.front());
        }
        part.remove_prefix(inHeader_ ? TakeHeader(part) : TakeSequence(part));
    }
}

void FastaScanner::Finish()
{
    if (starts_.size() > proteins_.size()) {
        EndEntry();
    }
}

void FastaScanner::BeginLine(char first)
{
    inHeader_ = first == '>';
    if (inHeader_) {
        Finish();
        starts_.push_back(concatenation_.size());
        header_.clear();
    } else {
        falseStart_ |= starts_.empty();
    }
}

std::size_t FastaScanner::TakeHeader(std::string_view text)
{
    const std::size_t feed = text.find('\n');
    header_.append(text.substr(0, feed));
    atLineStart_ = feed != std::string_view::npos;
    return atLineStart_ ? feed + 1 : text.size();
}

std::size_t FastaScanner::TakeSequence(std::string_view text)
{
    const char* p = text.data();
    const char* const end = p + text.size();
    char* out = residues_.data();
    for (bool goesOn = true; goesOn;) {
        CopyResidues(p, end, out);
        atLineStart_ = p < end && *p == '\n';
        p += p < end ? 1 : 0;
        goesOn = p < end && !(atLineStart_ && *p == '>');
    }
    if (!starts_.empty()) {
        concatenation_.append(residues_.data(), out);
    }
    return static_cast<std::size_t>(p - text.data());
}

void FastaScanner::EndEntry()
{
    header_.erase(header_.find_last_not_of('\r') + 1); // npos + 1 is 0
    CProtein& protein = AddProtein();
    CFastaParser::ReadEntryAC(protein, header_);
    CFastaParser::ReadEntryDE(protein, header_);
    protein.strSequence.assign(concatenation_, starts_.back());
    concatenation_ += ';';
}

} // namespace Vorlan
