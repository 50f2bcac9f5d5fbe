// Cells of the table of MS-GF+.
#include "pepident/MsgfRow.h"

#include <string>
#include <utility>
#include <vector>

#include "pepident/EngineTableText.h"

namespace Vorlan::test {
namespace {

TEST(MsgfRow, B59_SpectraAreLookedForInAnMgf)
{
    const std::vector<std::pair<std::string, std::string>> cells = {
        {"run01.mzML", "run01.mgf"},   {"run01.mgf", "run01.mgf"},
        {"a.b.raw", "a.b.mgf"},        {"run01", "run01"},
        {"run01.", "run01.mgf"},       {".mzML", ".mgf"},
        {"C:\\d.x\\run", "C:\\d.mgf"}, {"", ""},
    };
    for (const auto& [cell, file] : cells) {
        EXPECT_EQ(msgf::SpectrumFile(cell), file) << cell;
    }
}

struct ProteinCase {
    std::string reason;
    std::string peptide;
    std::string protein;
    std::string sequence;
    std::string evidences;
};

std::string EvidencesOf(const PeptideIdentification& match)
{
    std::string text;
    for (const PeptideEvidence& evidence : match.vEvidences) {
        text += (text.empty() ? "" : ";") + Dump(evidence);
    }
    return text;
}

void Check(const std::vector<ProteinCase>& cases)
{
    for (const ProteinCase& row : cases) {
        PeptideIdentification match;
        msgf::ReadProteins(row.peptide, row.protein, match);
        EXPECT_EQ(match.strSequence, row.sequence) << row.reason;
        EXPECT_EQ(EvidencesOf(match), row.evidences) << row.reason;
    }
}

TEST(MsgfRow, B60_AProteinCellIsCutByItsPlaces)
{
    Check({
        {"wrapped, a dot at its second place", "K.PEPMK.R", "[P.12345]", "PEPMK", "K.P.12345.R@-1"},
        {"whatever wraps it", "-.PEPMK.-", "xP.1x", "PEPMK", "-.P.1.-@-1"},
        {"the peptide loses two at each end", "PEPMK", "[P.1]", "P", "P.P.1.K@-1"},
        {"a peptide that has no four", "PEP", "[P.1]", "", "P.P.1.P@-1"},
        {"a list between quotes", "PEPMK", "\"P1(pre=K,post=R);P2(pre=-,post=A)\"", "PEPMK",
         "K.P1.R@-1;-.P2.A@-1"},
        {"whatever wraps the list", "PEPMK", "<P1(pre=K,post=R)>", "PEPMK", "K.P1.R@-1"},
        {"fourteen characters go, whatever they are", "PEPMK", "[ACC--------k------r-]", "PEPMK",
         "k.ACC---.r@-1"},
        {"exactly those fourteen", "PEPMK", "\"(pre=K,post=R)\"", "PEPMK", "K..R@-1"},
        {"an entry with fewer is the accession", "PEPMK", "\"P1;P2(pre=K,post=R)\"", "PEPMK",
         "X.P1.X@-1;K.P2.R@-1"},
    });
}

TEST(MsgfRow, AListThatNothingWrapsIsReadWhole)
{
    Check({
        {"one", "PEPMK", "P1(pre=K,post=R)", "PEPMK", "K.P1.R@-1"},
        {"two", "PEPMK", "P1(pre=K,post=R);sp|P2|X_Y(pre=-,post=-)", "PEPMK",
         "K.P1.R@-1;-.sp|P2|X_Y.-@-1"},
        {"with a dot", "PEPMK", "ENSP01.2(pre=R,post=D)", "PEPMK", "R.ENSP01.2.D@-1"},
        {"only the last one decides", "PEPMK", "P1;P2(pre=K,post=R)", "PEPMK",
         "X.P1.X@-1;K.P2.R@-1"},
        {"an empty entry", "PEPMK", ";P1(pre=K,post=R)", "PEPMK", "X..X@-1;K.P1.R@-1"},
    });
}

TEST(MsgfRow, APeptideBetweenDotsTellsItsNeighbours)
{
    Check({
        {"one protein", "K.PEPMK.R", "P12345", "PEPMK", "K.P12345.R@-1"},
        {"the termini of a protein", "-.PEPMK.-", "P12345", "PEPMK", "-.P12345.-@-1"},
        {"quotes are dropped", "K.PEPMK.R", "\"P12345\"", "PEPMK", "K.P12345.R@-1"},
        {"a single quote is not", "K.PEPMK.R", "\"", "PEPMK", "K.\".R@-1"},
        {"masses stay", "K.+42.011PEPM+15.995K.R", "P1", "+42.011PEPM+15.995K", "K.P1.R@-1"},
        {"an empty peptide", "K..R", "P1", "", "K.P1.R@-1"},
        {"no protein", "K.PEPMK.R", "", "PEPMK", "K..R@-1"},
    });
}

TEST(MsgfRow, CellsTooShortForAnything)
{
    Check({
        {"nothing", "", "", "", ""},
        {"one character", "PEPMK", "P", "PEPMK", ""},
        {"two characters", "PEPMK", "P1", "PEPMK", ""},
        {"three", "PEPMK", "xPx", "PEPMK", "X.P.X@-1"},
        {"a dot second, alone", "A.B", "xyz", "A.B", "X.y.X@-1"},
        {"no peptide but a cut accession", "", "xP.x", "", "X.P..X@-1"},
    });
}

// ---- Masses ---------------------------------------------------------------

const MsgfModifications kMods({{"Oxidation", 15.994915, "M", "Anywhere", 0},
                               {"Acetyl", 42.010565, "N-term", "Protein N-term", 0},
                               {"Carbamidomethyl", 57.021464, "C", "Anywhere", 0},
                               {"TMT", 229.162932, "N-term", "Any N-term", 0},
                               {"TMT", 229.162932, "K", "Anywhere", 0},
                               {"Pyro", -17.026549, "Q", "Any N-term", 0},
                               {"Amide", -0.984016, "C-term", "Any C-term", 0}});

struct SequenceCase {
    std::string reason;
    std::string text;
    std::string sequence;
    std::string mods;
};

std::string ModsOf(const PeptideIdentification& match)
{
    std::string text;
    for (const IdentModification& mod : match.vMods) {
        text += (text.empty() ? "" : ";") + mod.strName + "@" + std::to_string(mod.nPos) + " on "
                + mod.strSite;
    }
    return text;
}

void Check(const std::vector<SequenceCase>& cases)
{
    for (const SequenceCase& row : cases) {
        PeptideIdentification match;
        match.strSequence = row.text;
        msgf::ReadModifications(kMods, match);
        EXPECT_EQ(match.strSequence, row.sequence) << row.reason;
        EXPECT_EQ(ModsOf(match), row.mods) << row.reason;
    }
}

TEST(MsgfRow, AnyResidueIsTheOneInFrontOfTheMass)
{
    const MsgfModifications mods({{"Tag", 1.5, "*", "Anywhere", 0}});
    PeptideIdentification match;
    match.strSequence = "+1.5PM+1.5K";
    msgf::ReadModifications(mods, match);
    EXPECT_EQ(match.strSequence, "PMK");
    EXPECT_EQ(ModsOf(match), "Tag@0 on *;Tag@2 on M") << "in front of all stands none";
}

TEST(MsgfRow, MassesInASequence)
{
    Check(std::vector<SequenceCase>{
        {"none", "PEPTIDE", "PEPTIDE", ""},
        {"in front", "+42.011PEPTIDE", "PEPTIDE", "Acetyl@0 on N-term"},
        {"inside", "PEPM+15.995K", "PEPMK", "Oxidation@4 on M"},
        {"behind the last", "PEPM+15.995", "PEPM", "Oxidation@4 on M"},
        {"several", "+229.163PEC+57.021M+15.995K+229.163", "PECMK",
         "TMT@0 on N-term;Carbamidomethyl@3 on C;Oxidation@4 on M;TMT@5 on K"},
        {"negative", "-17.027QPEP", "QPEP", "Pyro@0 on Q"},
        {"at both ends of one residue", "+42.011K+229.163", "K", "Acetyl@0 on N-term;TMT@1 on K"},
        {"other decimals", "PEPM+15.9949K", "PEPMK", "Oxidation@4 on M"},
        {"no decimals", "PEPM+16K", "PEPMK", "Oxidation@4 on M"},
        {"a mass alone", "+15.995", "", "Oxidation@0 on M"},
        {"nothing", "", "", ""},
    });
}

TEST(MsgfRow, B89_AMassRightBehindAMassStays)
{
    Check(std::vector<SequenceCase>{
        {"two", "PEC+57.021+15.995K", "PEC+15.995K", "Carbamidomethyl@3 on C"},
        {"three: the second one is passed over", "PEC+57.021+15.995+57.021K", "PEC+15.995K",
         "Carbamidomethyl@3 on C;Carbamidomethyl@10 on C"},
        {"at the ends", "+42.011+1.5K+229.163-0.984", "+1.5K-0.984",
         "Acetyl@0 on N-term;TMT@5 on K"},
        {"positions behind it count its characters", "C+57.021+1.5M+15.995", "C+1.5M",
         "Carbamidomethyl@1 on C;Oxidation@6 on M"},
        {"a sign alone", "M+15.995-K", "M-K", "Oxidation@1 on M"},
    });
}

TEST(MsgfRow, AnUnknownMassIsToldAsWritten)
{
    const std::vector<std::pair<std::string, std::string>> texts = {
        {"PEPM+1.5K", "+1.5"},  {"PEPM+15.995K+1.5", "+1.5"},
        {"PEP-3K", "-3"},       {"PEP+K", "+"},
        {"-.PEPK", "-."},       {"PEPM+15.995.1K", "+15.995.1"},
        {"PEPM+ 15.995K", "+"}, {"PEPM+1e3K", "+1"},
    };
    for (const auto& [text, mass] : texts) {
        PeptideIdentification match;
        match.strSequence = text;
        try {
            msgf::ReadModifications(kMods, match);
            ADD_FAILURE() << text;
        } catch (const OpenMS::Exception::InvalidValue& error) {
            EXPECT_STREQ(error.getFile(), "PeptideIdentificationIO");
            EXPECT_STREQ(error.getFunction(), "MSGFTSVPepIdentIO::Load");
            EXPECT_EQ(error.getLine(), 534);
            EXPECT_STREQ(error.what(),
                         ("the value '" + mass
                          + "' was used but is not valid; Unexpected modification mass in "
                            "\"Peptide\" in .tsv file")
                             .c_str());
        }
    }
}

} // namespace
} // namespace Vorlan::test
