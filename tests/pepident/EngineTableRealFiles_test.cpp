// Results that engines wrote. Each gives the matches, proteins and
// modifications that were counted in it by other means.
#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "SpectraIO.h"
#include "pepident/EngineTableText.h"

namespace Vorlan::test {
namespace {

using testing::ElementsAre;
using testing::Pair;

using Matches = std::vector<PeptideIdentification>;

/// A file of the real ones and a text as the second file of the reader.
template <typename Reader>
Matches Read(const std::string& file, const std::string& secondText = "")
{
    const std::size_t slash = file.rfind('/');
    const TempFolder folder;
    PepIdentSource source(RealDataFolder() + "/" + file.substr(0, slash), file.substr(slash + 1),
                          PepIdentType::Unknown);
    if (!secondText.empty()) {
        folder.Write("second", secondText);
        source.strThird = folder.Path();
        source.strFourth = "second";
    }
    Reader reader;
    Matches matches;
    const CoutInMemory output;
    reader.InitLoad(source);
    reader.Load(matches);
    reader.EndLoad();
    return matches;
}

/// "dataset|spectrum|SEQUENCE", of the first and the last match.
std::vector<std::string> EndsOf(const Matches& matches)
{
    std::vector<std::string> texts;
    for (const PeptideIdentification* match : {&matches.front(), &matches.back()}) {
        texts.push_back(match->strDatasetName + "|" + match->strSpectrumName + "|"
                        + match->strSequence);
    }
    return texts;
}

std::size_t ProteinsOf(const Matches& matches)
{
    std::size_t count = 0;
    for (const PeptideIdentification& match : matches) {
        count += match.vEvidences.size();
    }
    return count;
}

/// How often each modification is on each site: "Oxidation on M".
std::map<std::string, int> ModsOf(const Matches& matches)
{
    std::map<std::string, int> counts;
    for (const PeptideIdentification& match : matches) {
        for (const IdentModification& mod : match.vMods) {
            ++counts[mod.strName + " on " + mod.strSite];
        }
    }
    return counts;
}

/// What holds for every match of every engine.
void CheckWhole(const Matches& matches)
{
    for (const PeptideIdentification& match : matches) {
        ASSERT_FALSE(match.strSpectrumName.empty());
        ASSERT_FALSE(match.strSequence.empty());
        ASSERT_TRUE(std::all_of(match.strSequence.begin(), match.strSequence.end(), [](char c) {
            return c >= 'A' && c <= 'Z';
        })) << match.strSequence;
        ASSERT_FALSE(match.vEvidences.empty()) << match.strSequence;
        ASSERT_GT(match.nCharge, 0u);
        ASSERT_NEAR(match.dValue1 * static_cast<double>(match.nCharge),
                    match.dObsMH + 1.007276466 * (static_cast<double>(match.nCharge) - 1), 1e-4);
        for (const IdentModification& mod : match.vMods) {
            ASSERT_GE(mod.nPos, 0);
            ASSERT_LE(mod.nPos, static_cast<std::int32_t>(match.strSequence.size()) + 1);
        }
    }
}

// ---- MS-GF+ ---------------------------------------------------------------

const std::string kMsgfList = "O1,M,opt,any,Oxidation\nC2H3N1O1,C,fix,any,Carbamidomethyl\n";

TEST(RealMsgf, UnrolledWithFlanks)
{
    PELGRIN_NEEDS_REAL_DATA();
    const Matches matches =
        Read<MSGFTSVPepIdentIO>("msgfplus/QC_Shew_13_05b_msgfplus.tsv", kMsgfList);
    ASSERT_EQ(matches.size(), 18798u);
    CheckWhole(matches);
    EXPECT_EQ(ProteinsOf(matches), 18798u);
    EXPECT_THAT(ModsOf(matches), ElementsAre(Pair("Oxidation on M", 1954)));
    const std::string run = "QC_Shew_13_05b_HCD_500ng_24Mar14_Tiger_14-03-04_dta.mgf|";
    EXPECT_THAT(EndsOf(matches),
                ElementsAre(run + "12457|TNLAALMDGYFAHNEGHEGGQHLNVNVMNR", run + "18071|GGGGGGG"));
    EXPECT_EQ(Dump(matches.front().vEvidences.at(0)), "R.SO_2912.E@-1");
    const auto startsProtein = [](const PeptideIdentification& match) {
        return match.vEvidences.at(0).cBefore == '-';
    };
    const auto endsProtein = [](const PeptideIdentification& match) {
        return match.vEvidences.at(0).cAfter == '-';
    };
    EXPECT_EQ(std::count_if(matches.begin(), matches.end(), startsProtein), 610);
    EXPECT_EQ(std::count_if(matches.begin(), matches.end(), endsProtein), 253);
}

TEST(RealMsgf, OneProteinOfEachRow)
{
    PELGRIN_NEEDS_REAL_DATA();
    for (const char* const file : {"msgfplus/QC_Mam_19_01_msgfplus_excerpt.tsv",
                                   "msgfplus/QC_Mam_19_01_delimited_msgfplus_excerpt.tsv"}) {
        const Matches matches = Read<MSGFTSVPepIdentIO>(file, kMsgfList);
        ASSERT_EQ(matches.size(), 999u) << file;
        CheckWhole(matches);
        EXPECT_EQ(ProteinsOf(matches), 999u);
        EXPECT_THAT(ModsOf(matches),
                    ElementsAre(Pair("Carbamidomethyl on C", 604), Pair("Oxidation on M", 102)));
        const std::string run = "QC_Mam_19_01_1a_25Feb21_Rage_Rep-21-01-02.mgf|";
        EXPECT_THAT(EndsOf(matches),
                    ElementsAre(run + "32113|AGGAGVPAFYTSTGYGTLVQEGGSPIKYNKDGSVAIASKPR",
                                run + "30971|VIISAPSADAPMFVMGVNHEKYDNSLK"));
    }
}

TEST(RealMsgf, ProteinListsOfALabelledSearch)
{
    PELGRIN_NEEDS_REAL_DATA();
    const Matches matches =
        Read<MSGFTSVPepIdentIO>("msgfplus/TMT_set/few_spectra.tsv",
                                ReadFile(RealDataFolder() + "/msgfplus/TMT_set/mods.txt"));
    ASSERT_EQ(matches.size(), 150u);
    CheckWhole(matches);
    EXPECT_EQ(ProteinsOf(matches), 396u);
    EXPECT_THAT(ModsOf(matches),
                ElementsAre(Pair("Carbamidomethyl on C", 47), Pair("Oxidation on M", 32),
                            Pair("TMT6plex on K", 49), Pair("TMT6plex on N-term", 150)));
    EXPECT_THAT(EndsOf(matches), ElementsAre("few_spectra.mgf|10029|SEEAHRAEQLQDAEEEK",
                                             "few_spectra.mgf|10152|SMGELAM"));
    EXPECT_EQ(Dump(matches.back().vEvidences.at(1)), "K.decoy_ENSP00000413409.1.-@-1");
}

TEST(RealMsgf, TheSameMatchesListedAndUnrolled)
{
    PELGRIN_NEEDS_REAL_DATA();
    const Matches listed = Read<MSGFTSVPepIdentIO>("msgfplus/test_prepost.tsv", kMsgfList);
    ASSERT_EQ(listed.size(), 2u);
    EXPECT_EQ(Dump(listed[0].vEvidences.at(1)), "K.test_isoform.T@-1");
    EXPECT_EQ(listed[1].nValue5, -1);
    const Matches unrolled = Read<MSGFTSVPepIdentIO>("msgfplus/test_unrolled.tsv", kMsgfList);
    ASSERT_EQ(unrolled.size(), 3u);
    for (const Matches& matches : {listed, unrolled}) {
        EXPECT_EQ(ProteinsOf(matches), 3u);
        EXPECT_THAT(ModsOf(matches), ElementsAre(Pair("Oxidation on M", 1)));
        EXPECT_THAT(EndsOf(matches),
                    ElementsAre("test.mgf|26559|IGAYLFVDMAHVAGLIAAGVYPNPVPHAHVVTSTTHK",
                                "test.mgf|-1|NLANPTSVILASIQMLEYLGMADK"));
    }
}

TEST(RealMsgf, WithoutItsListAnUnknownMassIsTold)
{
    PELGRIN_NEEDS_REAL_DATA();
    EXPECT_EQ(ThrownBy([] {
                  Read<MSGFTSVPepIdentIO>("msgfplus/TMT_set/few_spectra.tsv", kMsgfList);
              }).message,
              "the value '+229.163' was used but is not valid; Unexpected modification mass in "
              "\"Peptide\" in .tsv file");
}

// ---- MaxQuant -------------------------------------------------------------

/// A peptides.txt of one peptide that lists so many rows.
std::string PeptidesOf(std::size_t rows)
{
    std::string text = "Amino acid before\tAmino acid after\tProteins\tMS/MS IDs\nK\tR\tP\t0";
    for (std::size_t i = 1; i < rows; ++i) {
        // A line holds no more, so each row of matches has a peptide.
        text += "\nK\tR\tP\t" + std::to_string(i);
    }
    return text + "\n";
}

TEST(RealMaxQuant, BothFilesOfOneSearch)
{
    PELGRIN_NEEDS_REAL_DATA();
    for (const char* const set : {"BSA_2.0.3.0", "BSA_2.0.3.0_derived_header"}) {
        const Matches matches =
            Read<MaxQuantTXTPepIdentIO>("maxquant/" + std::string(set) + "/msms.txt");
        ASSERT_EQ(matches.size(), 16u) << set;
        CheckWhole(matches);
        EXPECT_EQ(ProteinsOf(matches), 27u);
        EXPECT_THAT(ModsOf(matches), ElementsAre());
        EXPECT_THAT(EndsOf(matches),
                    ElementsAre("BSA_min_21.mgf|85|AEFVEVTK", "BSA_min_21.mgf|44|YICDNQDTISSK"));
        EXPECT_EQ(Dump(matches[0].vEvidences.at(1)), "K.CON__P02769.L@-1");
        EXPECT_NEAR(matches[0].dValue2, 30.0264, 1e-9) << "seconds";
    }
}

TEST(RealMaxQuant, TagsOfANewerRelease)
{
    PELGRIN_NEEDS_REAL_DATA();
    const Matches matches =
        Read<MaxQuantTXTPepIdentIO>("maxquant/HeLa_1000rows/msms.txt", PeptidesOf(1000));
    ASSERT_EQ(matches.size(), 1000u);
    CheckWhole(matches);
    EXPECT_THAT(ModsOf(matches), ElementsAre(Pair("Acetyl (Protein N-term) on N-term", 106),
                                             Pair("Oxidation (M) on M", 72)));
    EXPECT_EQ(std::count_if(matches.begin(), matches.end(),
                            [](const PeptideIdentification& match) { return match.bDecoy; }),
              3);
    const std::string run = "20130403_QE6_LC5_SJ_QC_MNT_HeLa_01.mgf|";
    EXPECT_THAT(EndsOf(matches),
                ElementsAre(run + "42164|AAAAAAAAAAGAAGGR", run + "51328|ALDVGSGSGILTACFAR"));
}

TEST(RealMaxQuant, TagsOfAnOlderRelease)
{
    PELGRIN_NEEDS_REAL_DATA();
    const Matches matches =
        Read<MaxQuantTXTPepIdentIO>("maxquant/SILAC_phospho_older/msms.txt", PeptidesOf(1036));
    ASSERT_EQ(matches.size(), 1036u);
    CheckWhole(matches);
    std::map<std::string, int> mods = ModsOf(matches);
    EXPECT_EQ(mods["Oxidation (M) on M"], 37);
    EXPECT_EQ(mods["Phospho (STY) on S"] + mods["Phospho (STY) on T"] + mods["Phospho (STY) on Y"],
              329);
    EXPECT_EQ(mods.size(), 4u);
    EXPECT_EQ(std::count_if(matches.begin(), matches.end(),
                            [](const PeptideIdentification& match) { return match.bDecoy; }),
              7);
}

/// How many of the matches have a spectrum under their name in the MGF of
/// their dataset, which lies in folder.
std::size_t MetIn(const std::string& folder, const Matches& matches)
{
    std::map<std::string, MgfIO> readers;
    std::vector<Spectrum> spectra;
    std::size_t met = 0;
    const CoutInMemory output;
    for (const PeptideIdentification& match : matches) {
        MgfIO& reader = readers[match.strDatasetName];
        if (reader.tGetInputSpecNumber() == 0) {
            reader.InitLoad(RealDataFolder() + "/" + folder + "/" + match.strDatasetName);
        }
        met += reader.bLoadOneSpectrum(match.strSpectrumName, spectra) ? 1 : 0;
    }
    return met;
}

TEST(RealMaxQuant, ScanNumbersDoNotMeetTitlesOfOtherForms)
{
    PELGRIN_NEEDS_REAL_DATA();
    Matches matches =
        Read<MaxQuantTXTPepIdentIO>("maxquant/HCT116_set/msms_sample.txt", PeptidesOf(400));
    ASSERT_EQ(matches.size(), 400u);
    EXPECT_EQ(std::count_if(matches.begin(), matches.end(),
                            [](const PeptideIdentification& match) { return match.bDecoy; }),
              200);
    const std::string folder = "maxquant/HCT116_set";
    EXPECT_EQ(MetIn(folder, matches), 0u);
    for (PeptideIdentification& match : matches) { // the titles are "run.scan.scan"
        const std::string run = match.strDatasetName.substr(0, match.strDatasetName.size() - 4);
        match.strSpectrumName = run + "." + match.strSpectrumName + "." + match.strSpectrumName;
    }
    EXPECT_EQ(MetIn(folder, matches), 400u);
}

// ---- pFind ----------------------------------------------------------------

TEST(RealPFind3, EveryRow)
{
    PELGRIN_NEEDS_REAL_DATA();
    const Matches matches = Read<Pfind3PepIdentIO>("pfind3/pFind-Filtered.spectra");
    ASSERT_EQ(matches.size(), 6u);
    CheckWhole(matches);
    EXPECT_EQ(ProteinsOf(matches), 6u);
    EXPECT_THAT(ModsOf(matches),
                ElementsAre(Pair("Carbamidomethyl on C", 1), Pair("Deamidated on N", 1),
                            Pair("Oxidation on M", 3)));
    EXPECT_THAT(EndsOf(matches),
                ElementsAre("Ecoli-1to1to1-un-C13-N15-10mM-20150823.mgf|"
                            "Ecoli-1to1to1-un-C13-N15-10mM-20150823.30507.30507.2.0.dta|"
                            "AMIEAGAAAVHFEDQLASVK",
                            "Ecoli-1to1to1-un-C13-N15-60mM-20150823.mgf|"
                            "Ecoli-1to1to1-un-C13-N15-60mM-20150823.14730.14730.2.0.dta|"
                            "APGSSSSGANGDGSLAQSQTGAVVR"));
    EXPECT_EQ(Dump(matches[0].vEvidences.at(0)), "K.gi|16131841|ref|NP_418439.1|.K@174");
    EXPECT_EQ(matches[0].dMainScore, 5.15726e-13);
}

TEST(RealPFind28, TheLayoutOfAnEarlierReleaseGivesNothing)
{
    PELGRIN_NEEDS_REAL_DATA();
    EXPECT_TRUE(Read<PfindTXTPepIdentIO>("pfind28/pFind_qry.proteins.part1.txt").empty());
}

// ---- Sequest --------------------------------------------------------------

TEST(RealSequest, EveryRowOfAnExport)
{
    PELGRIN_NEEDS_REAL_DATA();
    const Matches matches = Read<SequestTXTPepIdentIO>("sequest/TMT_PSMs_derived_header.txt");
    ASSERT_EQ(matches.size(), 5000u);
    CheckWhole(matches);
    EXPECT_EQ(ProteinsOf(matches), 5617u);
    EXPECT_THAT(ModsOf(matches),
                ElementsAre(Pair("Carbamidomethyl on ", 1617), Pair("Deamidated on ", 452),
                            Pair("Oxidation on ", 110), Pair("TMT6plex on ", 9565)));
    EXPECT_THAT(EndsOf(matches), ElementsAre("anja_lopit_total_rep1_f13_200825080010.mgf|21503|"
                                             "VASTLTEEGGGGGGGGGSVAPKPPR",
                                             "anja_lopit_total_rep1_f4_200825035608.mgf|33856|"
                                             "ELYLEEALQNER"));
    EXPECT_EQ(matches[0].vMods.at(1).nPos, 22);
    const auto hasBlank = [](const PeptideIdentification& match) {
        return match.vEvidences.size() > 1 && match.vEvidences[1].strProteinAccession[0] == ' ';
    };
    EXPECT_EQ(std::count_if(matches.begin(), matches.end(), hasBlank), 273);
}

TEST(RealSequest, OtherExportsLackAColumn)
{
    PELGRIN_NEEDS_REAL_DATA();
    EXPECT_EQ(
        ThrownBy([] { Read<SequestTXTPepIdentIO>("sequest/TMT_PSMs_Rfriendly.txt"); }).message,
        "the element 'Deltam/z [Da]' could not be found");
    EXPECT_EQ(
        ThrownBy([] { Read<SequestTXTPepIdentIO>("sequest/PD_mascot_TMT_brackets.txt"); }).message,
        "the element 'Sequence' could not be found");
}

} // namespace
} // namespace Vorlan::test
