#include "inspect/FastaFacts.h"

#include <fmt/format.h>

#include "common/Words.h"
#include "files/FileLines.h"

namespace pelgrin {

namespace {

struct Style {
    const char* front;
    const char* name;
};

constexpr Style kStyles[] = {
    {"sp|", "UniProt"},        {"tr|", "UniProt"},       {"gi|", "NCBI (gi)"},
    {"ref|", "NCBI (RefSeq)"}, {"NP_", "NCBI (RefSeq)"}, {"XP_", "NCBI (RefSeq)"},
    {"YP_", "NCBI (RefSeq)"},  {"WP_", "NCBI (RefSeq)"}, {"ENSP", "Ensembl"},
    {"ENSMUSP", "Ensembl"},    {"UniRef", "UniRef"},     {"IPI", "IPI"},
};

} // namespace

std::string HeaderStyleOf(std::string_view accession)
{
    accession.remove_prefix(DecoyFrontOf(accession).size());
    for (const Style& style : kStyles) {
        if (BeginsWith(accession, style.front)) {
            return style.name;
        }
    }
    return "other";
}

FastaFacts FastaFactsOf(const std::string& path)
{
    FastaFacts fasta;
    FileLines lines(path, FileLines::Mode::Text);
    FileLines::Line line;
    while (lines.Next(line)) {
        if (!line.begin.empty() && line.begin.front() == '>') {
            const std::string_view header = std::string_view(line.begin).substr(1);
            const std::string_view accession = header.substr(0, header.find_first_of(" \t"));
            ++fasta.entries;
            fasta.styles.Add(HeaderStyleOf(accession));
            fasta.decoys.Add(accession);
        }
    }
    return fasta;
}

void Tell(const FastaFacts& fasta, Facts& facts)
{
    std::vector<Counted> styles = fasta.styles.Counts();
    for (Counted& style : styles) {
        style.text += fmt::format(" ({})", ShareText(style.count, fasta.entries));
    }
    facts.push_back({"entries", "Entries", fasta.entries});
    facts.push_back({"header_styles", "Headers", styles});
    fasta.decoys.Tell(facts);
}

} // namespace pelgrin
