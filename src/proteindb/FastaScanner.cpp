#include "proteindb/FastaScanner.h"

#include <algorithm>
#include <cstddef>

#include "FastaProteinDB.h"
#include "proteindb/FastaText.h"

namespace Vorlan {

namespace {

/// A loop without a branch, for the compiler to work on many bytes at once.
bool AreResidues(std::string_view text)
{
    bool others = false;
    for (const char c : text) {
        others |= !fasta::IsResidue(c);
    }
    return !others;
}

void AppendResidues(std::string& sequence, std::string_view text)
{
    const auto old = static_cast<std::ptrdiff_t>(sequence.size());
    sequence.append(text);
    if (!AreResidues(text)) {
        const auto end = std::remove_if(sequence.begin() + old, sequence.end(),
                                        [](char c) { return !fasta::IsResidue(c); });
        sequence.erase(end, sequence.end());
    }
}

std::string_view WithoutCarriageReturns(std::string_view line)
{
    return line.substr(0, line.find_last_not_of('\r') + 1); // npos + 1 is 0
}

} // namespace

FastaScanner::FastaScanner(std::vector<CProtein>& proteins, std::vector<std::uint64_t>& starts,
                           std::string& concatenation)
    : proteins_(proteins), starts_(starts), concatenation_(concatenation)
{
}

void FastaScanner::Take(std::string_view part)
{
    while (!part.empty()) {
        if (atLineStart_) {
            TakeLineStart(part.front());
        }
        const std::size_t feed = part.find('\n');
        TakePiece(part.substr(0, feed));
        atLineStart_ = feed != std::string_view::npos;
        part.remove_prefix(atLineStart_ ? feed + 1 : part.size());
    }
}

void FastaScanner::Finish()
{
    if (starts_.size() > proteins_.size()) {
        EndEntry();
    }
}

void FastaScanner::TakeLineStart(char first)
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

void FastaScanner::TakePiece(std::string_view piece)
{
    if (inHeader_) {
        header_.append(piece);
    } else if (!starts_.empty()) {
        AppendResidues(concatenation_, WithoutCarriageReturns(piece));
    }
}

void FastaScanner::EndEntry()
{
    header_.resize(WithoutCarriageReturns(header_).size());
    CProtein& protein = proteins_.emplace_back();
    CFastaParser::ReadEntryAC(protein, header_);
    CFastaParser::ReadEntryDE(protein, header_);
    protein.strSequence.assign(concatenation_, starts_.back());
    concatenation_ += ';';
}

} // namespace Vorlan
