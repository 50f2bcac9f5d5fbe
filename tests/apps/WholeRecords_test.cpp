// What the host adds to records, and leaves alone.
#include "run/WholeRecords.h"

#include <gtest/gtest.h>

#include "ParameterFiles.h"
#include "ResultTexts.h"

namespace pelgrin::test {
namespace {

using Vorlan::IdentModification;
using Vorlan::PepIdentType;
using Vorlan::PeptideIdentification;
using Vorlan::test::ReadFile;

const IdentModification kFixedC("Carbamidomethyl", 57.021464, "C", "Anywhere", 0);
const IdentModification kFixedN("TMT6plex", 229.162932, "N-term", "Any N-term", 0);
const IdentModification kFixedProtein("Acetyl", 42.010565, "N-term", "Protein N-term", 0);

PeptideIdentification Record(const std::string& sequence)
{
    PeptideIdentification record;
    record.strSequence = sequence;
    return record;
}

std::string TextOf(const PeptideIdentification& record)
{
    std::string text;
    for (const IdentModification& mod : record.vMods) {
        text += mod.strName + "@" + std::to_string(mod.nPos) + " ";
    }
    return text;
}

TEST(WholeRecords, MaxQuantGetsTheFixedModifications)
{
    PeptideIdentification record = Record("ACMC");
    record.vMods.emplace_back("Oxidation (M)", 15.994915, "M", "Anywhere", 3);
    MakeWhole(PepIdentType::MaxQuant, {kFixedC, kFixedN, kFixedProtein}, record);
    EXPECT_EQ(TextOf(record), "TMT6plex@0 Carbamidomethyl@2 Oxidation (M)@3 Carbamidomethyl@4 ");
    EXPECT_EQ(record.vMods[1].dMass, 57.021464);
}

TEST(WholeRecords, AModifiedResidueGetsNoFixedModification)
{
    PeptideIdentification record = Record("AC");
    record.vMods.emplace_back("Nethylmaleimide (C)", 125.047679, "C", "Anywhere", 2);
    MakeWhole(PepIdentType::MaxQuant, {kFixedC}, record);
    EXPECT_EQ(TextOf(record), "Nethylmaleimide (C)@2 ");
}

TEST(WholeRecords, OtherFormatsListTheirFixedModifications)
{
    for (const auto format : {PepIdentType::SequestTxt, PepIdentType::MsgfTsv,
                              PepIdentType::CometPepXml, PepIdentType::CalvexTxt}) {
        PeptideIdentification record = Record("ACC");
        MakeWhole(format, {kFixedC}, record);
        EXPECT_EQ(TextOf(record), "") << format;
    }
}

TEST(WholeRecords, NamedTerminiJoinTheOthers)
{
    PeptideIdentification record = Record("AMK");
    record.vMods.emplace_back("Oxidation", 15.994915, "M", "Anywhere", 2);
    record.vAltMods.emplace_back("", 12.0, "C-term", "", 4);
    record.vAltMods.emplace_back("Acetyl", 42.010565, "N-term", "Protein N-term", 0);
    MakeWhole(PepIdentType::CometPepXml, {}, record);
    EXPECT_EQ(TextOf(record), "Acetyl@0 Oxidation@2 ");
    ASSERT_EQ(record.vAltMods.size(), 1U);
    EXPECT_EQ(record.vAltMods.front().dMass, 12.0);
}

TEST(WholeRecords, AccessionsLoseTheirBlanksButInTheNativeTable)
{
    for (const auto& [format, expected] : {std::pair{PepIdentType::SequestTxt, "P1|"},
                                           std::pair{PepIdentType::CalvexTxt, "  P1 |"}}) {
        PeptideIdentification record = Record("AK");
        record.vEvidences.emplace_back("  P1 ", -1, -1, 'K', 'A');
        record.vEvidences.emplace_back("   ", -1, -1, 'K', 'A');
        MakeWhole(format, {}, record);
        EXPECT_EQ(record.vEvidences[0].strProteinAccession + "|", expected);
    }
}

TEST(WholeRecords, ARunOnMaxQuantWritesTheFixedModifications)
{
    const ParameterWorkplace place;
    place.Write("run.mgf", kRunMgf);
    place.Write("peptides.txt", kPeptidesHeader + PeptidesRow("0"));
    place.Write("msms.txt", kMsmsHeader + MsmsRow("_GACK_"));
    const Outcome outcome = place.Run(Ini()
                                          .With("Search", "pep_ident_format", "MaxQuant")
                                          .With("Search", "pep_ident_filename_1", "./msms.txt")
                                          .With("Search", "fixed_mod_number", "1")
                                          .With("Search", "fixed_mod_1", "Carbamidomethyl (C)"));
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(ReadFile(place.PathOf("out/results.txt")),
                testing::HasSubstr("\tGACK\t2\t390.192724\t0.000000\t90.000000\t1\t"
                                   "Carbamidomethyl\t3\tP1;P2\t"));
}

} // namespace
} // namespace pelgrin::test
