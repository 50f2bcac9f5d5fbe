// A FASTA database that shows its tables, and entries as text.
#ifndef VORLAN_TESTS_FASTAPROBE_H
#define VORLAN_TESTS_FASTAPROBE_H

#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

#include "FastaProteinDB.h"
#include "support/Support.h"

namespace Vorlan::test {

class DatabaseProbe : public CFastaProteinDB {
public:
    using CFastaProteinDB::CreateHashTable;

    const std::vector<std::uint64_t>& Starts() const { return vStarts_; }
    const std::vector<std::uint64_t>& Bins() const { return vBins_; }
    std::uint64_t BinWidth() const { return tBinWidth_; }
    bool IsOpen() const { return ifsFasta_.is_open(); }

    bool Load(const std::string& path)
    {
        SetDBPath(path);
        return ReadFromFile();
    }
};

/// "accession|description|SEQUENCE".
inline std::string Dump(const CProtein& protein)
{
    return protein.strAccession + "|" + protein.strDescription + "|" + protein.strSequence;
}

inline std::vector<std::string> Dump(const std::vector<CProtein>& proteins)
{
    std::vector<std::string> texts;
    for (const CProtein& protein : proteins) {
        texts.push_back(Dump(protein));
    }
    return texts;
}

/// What a file gives, read in one of the ways.
struct FastaOutcome {
    bool isLoaded = false;
    std::vector<std::string> entries = {};
    std::string concatenation = {};

    bool operator==(const FastaOutcome& other) const
    {
        return isLoaded == other.isLoaded && entries == other.entries
               && concatenation == other.concatenation;
    }
};

inline void PrintTo(const FastaOutcome& outcome, std::ostream* out)
{
    *out << (outcome.isLoaded ? "loaded " : "failed ") << testing::PrintToString(outcome.entries)
         << " " << testing::PrintToString(outcome.concatenation);
}

/// An entry behind the others.
inline void Append(FastaOutcome& outcome, const CProtein& protein)
{
    outcome.entries.push_back(Dump(protein));
    outcome.concatenation += protein.strSequence + ";";
}

/// As a database loads it. What that prints is lost.
inline FastaOutcome ReadByDatabase(const std::string& path)
{
    DatabaseProbe database;
    bool isLoaded = false;
    OutputOf([&] { isLoaded = database.Load(path); });
    return {isLoaded, Dump(database.cProteins()), database.cProteinString()};
}

/// As the parser gives one entry after the other: as many as there are headers.
inline FastaOutcome ReadByParser(const std::string& path)
{
    std::ifstream stream(path, std::ios::in | std::ios::binary);
    FastaOutcome outcome = {true};
    OutputOf([&] {
        for (std::uint64_t left = CFastaParser::GetEntryNum(stream); left > 0; --left) {
            CProtein protein;
            if (!CFastaParser::ReadOnePrteinEntry(protein, stream)) {
                outcome = {};
                return;
            }
            Append(outcome, protein);
        }
    });
    return outcome;
}

} // namespace Vorlan::test

#endif // VORLAN_TESTS_FASTAPROBE_H
