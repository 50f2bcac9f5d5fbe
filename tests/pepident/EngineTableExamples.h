// A small table for each reader of a tab-separated table, for the tests that
// run over all of them.
#ifndef VORLAN_TESTS_ENGINETABLEEXAMPLES_H
#define VORLAN_TESTS_ENGINETABLEEXAMPLES_H

#include <ostream>
#include <string>
#include <vector>

#include "pepident/EngineTableText.h"

namespace Vorlan::test {

struct EngineTableExample {
    std::string testName; ///< letters and digits only
    PepIdentType::EPepIdentType type;
    Table table;           ///< with all columns that are required and no others
    std::string tellsOf;   ///< how a missing column is told; empty: by an exception
    Table other;           ///< the reader's other table
    bool isSecond = false; ///< table is that of the second file
    std::string otherName = {};

    EngineFiles Files(const std::string& text) const
    {
        return isSecond ? EngineFiles{other.Text(), otherName, text}
                        : EngineFiles{text, otherName, other.Text()};
    }

    /// Its header is a row like any other: it is cut where it is too long, and ends at a NUL.
    bool BoundsItsHeader() const { return type == PepIdentType::SequestTxt; }

    /// Reads the text as this table.
    Reading Read(const std::string& text) const
    {
        PeptideIdentificationIO* pReader = PepIdentIOFactory::pGetPepIdentIO(type);
        const Reading reading = ReadEngineFiles(*pReader, Files(text));
        PepIdentIOFactory::DesctroyPepIdentIO(pReader);
        return reading;
    }
};

inline void PrintTo(const EngineTableExample& example, std::ostream* out)
{
    *out << example.testName;
}

inline const Table kMsgfTable = {
    {"#SpecFile", "ScanNum", "Peptide", "Charge", "Precursor", "PrecursorError(ppm)", "SpecEValue",
     "Protein"},
    {{"run01.mzML", "1405", "PEPMK", "2", "302.1", "1.5", "1E-12", "P1(pre=K,post=R)"},
     {"run01.mzML", "1406", "SAMPLER", "3", "268.4", "-2.25", "0.5",
      "P1(pre=-,post=A);P2(pre=R,post=-)"},
     {"run01.mzML", "1407", "ACK", "1", "335.2", "0", "3", "P3(pre=R,post=G)"}}};

inline const Table kMatchTable = {{"Raw file", "Sequence", "Scan number", "Charge", "Reverse",
                                   "Score", "Mass Error [ppm]", "m/z", "Proteins", "Retention time",
                                   "Modifications", "Modified sequence"},
                                  {{"run01", "PEPMK", "1405", "2", "", "80.5", "1.5", "302.1",
                                    "P1;P2", "12.5", "Oxidation (M)", "_PEPM(ox)K_"},
                                   {"run01", "PEPMK", "1406", "3", "", "10", "-2.25", "201.7",
                                    "P1;P2", "13", "Unmodified", "_PEPMK_"},
                                   {"run02.raw", "SAMPLER", "7", "2", "+", "1", "0", "402.2",
                                    "REV__P3", "0.5", "Unmodified", "_SAMPLER_"}}};

inline const Table kPeptidesTable = {
    {"Amino acid before", "Amino acid after", "Proteins", "MS/MS IDs"},
    {{"K", "A", "P1;P2", "0;1"}, {"R", "-", "REV__P3", "2"}}};

inline const Table kPFind3Table = {
    {"File_Name", "Sequence", "Scan_No", "Charge", "Target/Decoy", "Final_Score",
     "Mass_Shift(Exp.-Calc.)", "Exp.MH+", "Proteins", "Modification", "Positions"},
    {{"run01.1405.1405.2.0.dta", "PEPMK", "1405", "2", "target", "1e-009", "0.0125", "603.28",
      "P1/P2/", "4,Mark[M];", "7,K,A/0,-,A/"},
     {"run01.1406.1406.3.1.dta", "SAMPLER", "1406", "3", "decoy", "0.5", "-0.01", "803.4",
      "REV_P1/", "", "9,R,-/"},
     {"run01.1407.1407.1.0.dta", "ACK", "1407", "1", "target", "3", "0", "335.2", "P3/", "",
      "99,R,G/"}}};

inline const Table kSequestTable = {
    {"Rank", "Spectrum File", "First Scan", "Sequence", "XCorr", "Deltam/z [Da]", "MH+ [Da]",
     "Theo. MH+ [Da]", "Charge", "Protein Accessions", "Modifications", "DeltaCn"},
    {{"1", "sample.raw", "1405", "PEPMK", "2.5", "0.00125", "603.28", "603.27", "2", "P1;P2",
      "M4(Oxidation)", "0"},
     {"1", "sample.raw", "1406", "SAMPLER", "1.5", "-0.25", "803.4", "803.9", "3", "P3", "", "0"},
     {"1", "sample.raw", "1407", "ACK", "0.5", "0", "335.2", "335.2", "1", "P3", "", "0.1"}}};

inline const std::vector<EngineTableExample>& EngineTableExamples()
{
    static const std::vector<EngineTableExample> examples = {
        {"Msgf", PepIdentType::MsgfTsv, kMsgfTable, ".tsv file", {}},
        {"MaxQuantMatches", PepIdentType::MaxQuant, kMatchTable, "msms.txt", kPeptidesTable, false,
         "peptides.txt"},
        {"MaxQuantPeptides", PepIdentType::MaxQuant, kPeptidesTable, "peptides.txt", kMatchTable,
         true, "peptides.txt"},
        {"PFind3", PepIdentType::Pfind3Spectra, kPFind3Table, "pFind-Filtered.spectra", {}},
        {"Sequest", PepIdentType::SequestTxt, kSequestTable, "", {}},
    };
    return examples;
}

} // namespace Vorlan::test

#endif // VORLAN_TESTS_ENGINETABLEEXAMPLES_H
