#include "FastaProteinDB.h"

#include <algorithm>
#include <iterator>

#include "proteindb/FastaText.h"
#include "util/Console.h"

namespace Vorlan {

namespace {

void Rewind(std::ifstream& stream)
{
    stream.clear();
    stream.seekg(0);
}

/// The next line, without a byte order mark where the stream begins.
bool NextLine(std::ifstream& stream, std::string& line)
{
    const bool atStart = stream.tellg() == std::ifstream::pos_type(0);
    if (!std::getline(stream, line)) {
        line.clear();
        return false;
    }
    if (atStart && line.compare(0, fasta::kByteOrderMark.size(), fasta::kByteOrderMark) == 0) {
        line.erase(0, fasta::kByteOrderMark.size());
    }
    return true;
}

} // namespace

std::uint64_t CFastaParser::GetEntryNum(std::ifstream& stream)
{
    if (!stream.is_open()) {
        console::Print(console::Stream::Err, "Can not open file!\n");
        return 0;
    }
    Rewind(stream);
    std::uint64_t number = 0;
    std::string line;
    while (NextLine(stream, line)) {
        number += fasta::BeginsEntry(line) ? 1 : 0;
    }
    Rewind(stream);
    return number;
}

bool CFastaParser::ReadOnePrteinEntry(CProtein& protein, std::ifstream& stream)
{
    protein.strAccession.clear();
    protein.strDescription.clear();
    protein.strSequence.clear();
    std::string header;
    if (!stream.is_open() || !NextLine(stream, header)) {
        return false;
    }
    header.erase(header.find_last_not_of('\r') + 1); // npos + 1 is 0
    if (!fasta::BeginsEntry(header)) {
        console::Print(console::Stream::Out, fasta::kNoHeader);
        return false;
    }
    ReadEntryAC(protein, header);
    ReadEntryDE(protein, header);
    ReadEntrySQ(protein, stream);
    return true;
}

void CFastaParser::ReadEntryAC(CProtein& protein, const std::string& header)
{
    // Deliberate: B-75. A tab does not end it.
    protein.strAccession = header.empty() ? std::string() : header.substr(1, header.find(' ') - 1);
}

void CFastaParser::ReadEntryDE(CProtein& protein, const std::string& header)
{
    const std::size_t blank = header.find(' ');
    protein.strDescription = blank == std::string::npos ? std::string() : header.substr(blank + 1);
    ChangeInvalidChar(protein.strDescription);
}

void CFastaParser::ReadEntrySQ(CProtein& protein, std::ifstream& stream)
{
    _ReadEntrySQ(protein.strSequence, stream);
}

void CFastaParser::_ReadEntrySQ(std::string& sequence, std::ifstream& stream)
{
    std::string line;
    while (stream && stream.peek() != '>' && std::getline(stream, line)) {
        std::copy_if(line.begin(), line.end(), std::back_inserter(sequence), fasta::IsResidue);
    }
}

void CFastaParser::ChangeInvalidChar(std::string& text)
{
    // Deliberate: B-77.
    _ChangeChar(text, '\x01');
    _ChangeChar(text, '<');
    _ChangeChar(text, '&');
}

void CFastaParser::_ChangeChar(std::string& text, char ch)
{
    for (std::size_t hit = text.find(ch); hit != std::string::npos; hit = text.find(ch, hit + 1)) {
        text[hit] = ' ';
    }
}

} // namespace Vorlan
