// The slow twin of the FASTA readers, written as plainly as the rules are told.
#ifndef VORLAN_TESTS_PLAINFASTA_H
#define VORLAN_TESTS_PLAINFASTA_H

#include <sstream>
#include <string>
#include <vector>

#include "proteindb/FastaProbe.h"

namespace Vorlan::test {

/// Accession and description of a header line.
inline CProtein PlainHeader(std::string line)
{
    while (!line.empty() && line.back() == '\r') {
        line.pop_back();
    }
    line.erase(0, 1);
    CProtein protein;
    bool isBehindBlank = false;
    for (const char c : line) {
        if (!isBehindBlank && c == ' ') {
            isBehindBlank = true;
        } else if (isBehindBlank) {
            protein.strDescription += c == '\x01' || c == '<' || c == '&' ? ' ' : c;
        } else {
            protein.strAccession += c;
        }
    }
    return protein;
}

/// What a file with that text gives.
inline FastaOutcome ReadPlainly(std::string text)
{
    if (text.compare(0, 3, "\xEF\xBB\xBF") == 0) {
        text.erase(0, 3);
    }
    std::vector<CProtein> proteins;
    bool isHeaderFirst = true;
    bool isFirst = true;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line); isFirst = false) {
        const bool isHeader = !line.empty() && line[0] == '>';
        isHeaderFirst = isHeaderFirst && (isHeader || !isFirst);
        if (isHeader) {
            proteins.push_back(PlainHeader(line));
            continue;
        }
        for (const char c : line) {
            if (!proteins.empty() && c >= 'A' && c <= 'Z') {
                proteins.back().strSequence += c;
            }
        }
    }
    if (!isHeaderFirst && !proteins.empty()) {
        return {};
    }
    FastaOutcome outcome = {true};
    for (const CProtein& protein : proteins) {
        Append(outcome, protein);
    }
    return outcome;
}

} // namespace Vorlan::test

#endif // VORLAN_TESTS_PLAINFASTA_H
