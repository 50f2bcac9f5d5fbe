#include "proteindb/FastaScanner.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <new>

#include "FastaProteinDB.h"
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

/// The top bit of every byte that is not A to Z. The sums set it where a character is
/// at least 'A', or above 'Z'; none reaches the next byte.
Word Others(Word characters)
{
    const Word low = characters & InEveryByte(0x7F);
    const Word atLeastA = low + InEveryByte(0x80 - 'A');
    const Word aboveZ = low + InEveryByte(0x80 - 'Z' - 1);
    return (~atLeastA | aboveZ | characters) & InEveryByte(0x80);
}

/// Characters in front of the first one that is marked; the first stands lowest.
std::ptrdiff_t Before(Word marks)
{
    static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__);
    return __builtin_ctzll(marks) / 8;
}

/// Copies the residues at text to out, up to another character or to the end.
/// Writes up to a word more than that.
void CopyResidues(const char*& text, const char* const end, char*& out)
{
    for (Word word = 0; end - text >= kWordSize; text += kWordSize, out += kWordSize) {
        std::memcpy(&word, text, sizeof word);
        std::memcpy(out, &word, sizeof word);
        if (const Word others = Others(word)) {
            text += Before(others);
            out += Before(others);
            return;
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
    try {
        concatenation_.reserve(std::min<std::uint64_t>(fileSize, concatenation_.max_size()));
    } catch (const std::bad_alloc&) {
        // A file may hold far fewer residues than its size says: they find room one by one.
    }
}

/// A new entry of the list. It grows to what the file will hold when its entries
/// go on as they began, yet never to many times of what there is.
CProtein& FastaScanner::AddProtein()
{
    constexpr std::uint64_t kGrowth = 8;
    if (proteins_.size() == proteins_.capacity()) {
        const std::uint64_t times = expected_ / std::max<std::uint64_t>(taken_, 1) + 1;
        try {
            proteins_.reserve(proteins_.size() * std::clamp<std::uint64_t>(times, 2, kGrowth) + 1);
        } catch (const std::bad_alloc&) {
            // The file may hold fewer: the list grows by itself.
        }
    }
    proteinPages_.Reach(proteins_, 1);
    return proteins_.emplace_back();
}

void FastaScanner::Take(std::string_view part)
{
    concatenationPages_.Reach(concatenation_, part.size());
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
