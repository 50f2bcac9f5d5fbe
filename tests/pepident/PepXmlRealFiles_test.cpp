// pepXML files of real searches: what was counted in them by other means.
#include <map>

#include "PepXmlText.h"
#include "SpectraIO.h"

namespace Vorlan::test {
namespace {

/// A modification table with what these searches looked for.
std::string TableOfSearches()
{
    return kModificationHeader + ModificationRow("Carbamidomethyl", "Anywhere", "C", "57.021464")
           + ModificationRow("Carboxymethyl", "Anywhere", "C", "58.005479")
           + ModificationRow("Oxidation", "Anywhere", "M", "15.994915")
           + ModificationRow("Phospho", "Anywhere", "S", "79.966331")
           + ModificationRow("Phospho", "Anywhere", "T", "79.966331")
           + ModificationRow("Phospho", "Anywhere", "Y", "79.966331")
           + ModificationRow("Deamidated", "Anywhere", "N", "0.984016")
           + ModificationRow("Deamidated", "Anywhere", "Q", "0.984016")
           + ModificationRow("Gln->pyro-Glu", "Any N-term", "Q", "-17.026549")
           + ModificationRow("TMTpro", "Anywhere", "K", "304.207146")
           + ModificationRow("TMTpro", "Any N-term", "N-term", "304.207146")
           + ModificationRow("Acetyl", "Protein N-term", "N-term", "42.010565");
}

using Names = std::vector<std::string>;

const Names kCysteine = {"Carbamidomethyl (C)"};
const Names kUsual = {"Oxidation (M)", "Acetyl (Protein N-term)"};
const Names kPhospho = {"Oxidation (M)", "Phospho (S)", "Phospho (T)", "Phospho (Y)",
                        "Acetyl (Protein N-term)"};

struct RealFile {
    const char* folder;
    const char* name;
    bool comet;
    Names fixed;
    Names variable;
    std::size_t matches;
    std::map<std::string, int> mods; ///< how many of each name and site
    int othersNamed;                 ///< of vAltMods
    std::string first;               ///< dataset|spectrum|sequence|charge|protein
    std::string last;
};

const RealFile kRealFiles[] = {
    {"comet/F13_set/closed",
     "F13.pep.xml",
     true,
     kCysteine,
     kUsual,
     589,
     {{"Carbamidomethyl C", 55}, {"Oxidation M", 34}},
     1,
     "F13.mgf|F13.01664.01664.2|KPGTHR|2|R.DECOY_sp|Q8IVP9|ZN547_HUMAN.V",
     "F13.mgf|F13.07492.07492.2|ILFNVVLEAR|2|K.sp|Q86U86|PB1_HUMAN.E"},
    {"comet/F13_set/open",
     "F13.pep.xml",
     true,
     kCysteine,
     kUsual,
     1384,
     {{"Carbamidomethyl C", 135}, {"Oxidation M", 139}},
     7,
     "F13.mgf|F13.00144.00144.2|SQAIATK|2|K.sp|P04114|APOB_HUMAN.K",
     "F13.mgf|F13.07492.07492.2|KTEGTPNQGK|2|K.sp|Q9P2E9|RRBP1_HUMAN.K"},
    {"comet/Jurkat_set/closed",
     "PV_Jurk_Promega50_IAP_minwash.pep.xml",
     true,
     kCysteine,
     kPhospho,
     1999,
     {{"Carbamidomethyl C", 302},
      {"Oxidation M", 291},
      {"Phospho S", 681},
      {"Phospho T", 509},
      {"Phospho Y", 247}},
     9,
     "PV_Jurk_Promega50_IAP_minwash.mgf|"
     "PV_Jurk_Promega50_IAP_minwash.01013.01013.2|GEAQQSNK|2|K.sp|Q9P2M7|CING_HUMAN.E",
     "PV_Jurk_Promega50_IAP_minwash.mgf|"
     "PV_Jurk_Promega50_IAP_minwash.08683.08683.2|SLMPSASFER|2|K.DECOY_sp|Q9UQ35|SRRM2_HUMAN.G"},
    {"comet/Jurkat_set/open",
     "PV_Jurk_Promega50_IAP_minwash.pep.xml",
     true,
     kCysteine,
     kUsual,
     1999,
     {{"Carbamidomethyl C", 343}, {"Oxidation M", 235}},
     9,
     "PV_Jurk_Promega50_IAP_minwash.mgf|"
     "PV_Jurk_Promega50_IAP_minwash.01013.01013.2|KDKNENK|2|K.DECOY_sp|Q53T94|TAF1B_HUMAN.H",
     "PV_Jurk_Promega50_IAP_minwash.mgf|"
     "PV_Jurk_Promega50_IAP_minwash.08683.08683.2|LSKVCTK|2|K.DECOY_sp|Q8WZ42|TITIN_HUMAN.T"},
    {"comet/PRG2012_set",
     "201208-378803-cm.pep.xml",
     true,
     {"Carboxymethyl (C)"},
     {"Oxidation (M)", "Deamidated (N)", "Deamidated (Q)", "Gln->pyro-Glu (Any N-term Q)"},
     174,
     {{"Carboxymethyl C", 54}, {"Oxidation M", 59}, {"Deamidated N", 56}, {"Deamidated Q", 95}},
     0,
     "201208-378803.mgf|201208-378803.00001.00001.2|"
     "AEPESDLPR|2|H.XXX_gi|528920173|ref|XP_001788336.2|.N",
     "201208-378803.mgf|201208-378803.00108.00108.2|"
     "ISDMNQNIGAT|2|K.XXX_gi|528944678|ref|XP_005204735.1|.E"},
    {"comet",
     "x00530_phospho_head.pepXML",
     true,
     kCysteine,
     kPhospho,
     182,
     {{"Carbamidomethyl C", 1}, {"Oxidation M", 15}, {"Phospho S", 144}, {"Phospho T", 22}},
     0,
     "34339_x00530_AH_AH006c_DDA_1.mgf|34339_x00530_AH_AH006c_DDA_1.3286.3286.3|RATPEKKPK|3|"
     "R.YCR088W.E",
     "34339_x00530_AH_AH006c_DDA_1.mgf|34339_x00530_AH_AH006c_DDA_1.4000.4000.3|KLSMSNTTNR|3|"
     "R.YFL033C.S"},
    {"comet",
     "LakeTrout_2016.pep.xml",
     true,
     kCysteine,
     kUsual,
     2,
     {{"Carbamidomethyl C", 2}, {"Oxidation M", 2}},
     0,
     "1.mgf|"
     "1.00007.00007.6|QRMADVKKVAADMEEEKD|6|D.DECOY_tr|A0A1S3S7H0|A0A1S3S7H0_SALSA.R",
     "1.mgf|"
     "1.00009.00009.6|LPVLYSSPAALLALRVCQGVVKVSAGVSRRGCAGAVPVM|6|"
     "D.DECOY_DECOY_tr|E9QEY6|E9QEY6_DANRE_UNMAPPED.-"},
    {"msfragger/open",
     "q02261_open.part1.pep.xml",
     false,
     kCysteine,
     kUsual,
     32,
     {{"Carbamidomethyl C", 11}, {"Oxidation M", 1}},
     0,
     "q02261.mgf|q02261.01161.01161.2|KPVGAAK|2|"
     "K.sp|P16403|H12_HUMAN.K",
     "q02261.mgf|q02261.02553.02553.3|"
     "KAEGGGGGGRPGAPAAGDGK|3|K.sp|Q00839|HNRPU_HUMAN.T"},
    {"msfragger/closed",
     "HLA_MSFragger3.7.pepXML",
     false,
     kCysteine,
     kUsual,
     4,
     {{"Carbamidomethyl C", 2}},
     0,
     "text.mgf|test.1886.1886.5|PGSEYPRSGRFVEDKMRF|5|L.rev_sp|O60733|PLPL9_HUMAN.Y",
     "text.mgf|test.1933.1933.5|GHHIECRVVTPNAYAKVEF|5|Q.rev_sp|Q86XK2|FBX11_HUMAN.G"},
    {"msfragger/closed",
     "TMT18_MSFragger3.8.pepXML",
     false,
     {"Carbamidomethyl (C)", "TMTpro (K)", "TMTpro (Any N-term)"},
     {"Oxidation (M)"},
     3,
     {{"TMTpro K", 1}, {"Oxidation M", 1}},
     3,
     "Ecl1_0277_R0096-01_S004436_D_H01_TMT18_01.mgf|"
     "Ecl1_0277_R0096-01_S004436_D_H01_TMT18_01.2459.2459.5|GQAVLAFQEQVGTGR|5|"
     "A.rev_tr|E9Q8J5|E9Q8J5_MOUSE.Y",
     "Ecl1_0277_R0096-01_S004436_D_H01_TMT18_01.mgf|"
     "Ecl1_0277_R0096-01_S004436_D_H01_TMT18_01.3945.3945.3|ESTKSAAER|3|"
     "V.rev_sp|Q3TLH4-5|PRC2C_MOUSE.E"},
    {"msfragger/closed",
     "spectra_MSFragger3.0.pepXML",
     false,
     kCysteine,
     kUsual,
     3,
     {{"Oxidation M", 1}},
     0,
     "spectra.mgf|spectra.1.1.3|DFASSGGYVLHLHR|3|-. test2_rev ##1.E",
     "spectra.mgf|spectra.3.3.3|RPGADSDIGGFGGLFDLAQAGFR|3|-.BSA3 ##3.A"},
};

class PepXmlRealFiles : public ParameterTest {
protected:
    void Specify(const Names& fixed, const Names& variable)
    {
        Write("table.txt", TableOfSearches());
        ASSERT_EQ(Read(FullParameters()
                           .Set("Search", "search_result_format", "Calvex (.txt)")
                           .Set("Search", "modification_database", "table.txt")
                           .SetMods("fixed_mod", fixed)
                           .SetMods("var_mod", variable)),
                  Thrown{});
    }

    static std::string FolderOf(const RealFile& file)
    {
        return RealDataFolder() + "/" + file.folder;
    }

    static Reading ReadReal(const RealFile& file)
    {
        return file.comet ? ReadPepXmlFile<CometPepXMLPepIdentIO>(FolderOf(file), file.name)
                          : ReadPepXmlFile(FolderOf(file), file.name);
    }
};

/// Without the folder of the dataset.
std::string Short(const PeptideIdentification& match)
{
    const std::string& dataset = match.strDatasetName;
    const PeptideEvidence& protein = match.vEvidences.at(0);
    return dataset.substr(dataset.find_last_of("/\\") + 1) + "|" + match.strSpectrumName + "|"
           + match.strSequence + "|" + std::to_string(match.nCharge) + "|" + protein.cBefore + "."
           + protein.strProteinAccession + "." + protein.cAfter;
}

/// Each modification sits on its residue.
void CheckSites(const PeptideIdentification& match)
{
    for (const IdentModification& mod : match.vMods) {
        ASSERT_GE(mod.nPos, 1) << Short(match);
        ASSERT_LE(static_cast<std::size_t>(mod.nPos), match.strSequence.size()) << Short(match);
        EXPECT_EQ(mod.strSite, match.strSequence.substr(static_cast<std::size_t>(mod.nPos) - 1, 1));
    }
}

TEST_F(PepXmlRealFiles, HaveWhatWasCounted)
{
    PELGRIN_NEEDS_REAL_DATA();
    for (const RealFile& file : kRealFiles) {
        SCOPED_TRACE(std::string(file.folder) + "/" + file.name);
        Specify(file.fixed, file.variable);
        const Reading reading = ReadReal(file);
        EXPECT_EQ(reading.thrown, Thrown{});
        EXPECT_EQ(reading.output, "");
        ASSERT_EQ(reading.matches.size(), file.matches);
        EXPECT_EQ(Short(reading.matches.front()), file.first);
        EXPECT_EQ(Short(reading.matches.back()), file.last);
        std::map<std::string, int> mods;
        int othersNamed = 0;
        for (const PeptideIdentification& match : reading.matches) {
            CheckSites(match);
            for (const IdentModification& mod : match.vMods) {
                ++mods[mod.strName + " " + mod.strSite];
            }
            for (const IdentModification& mod : match.vAltMods) {
                EXPECT_EQ(mod.nPos, 0);
                othersNamed += mod.strName.empty() ? 0 : 1;
            }
        }
        EXPECT_EQ(mods, file.mods);
        EXPECT_EQ(othersNamed, file.othersNamed);
    }
}

TEST_F(PepXmlRealFiles, AreReadAsThePlainTwinReadsThem)
{
    PELGRIN_NEEDS_REAL_DATA();
    for (const RealFile& file : kRealFiles) {
        SCOPED_TRACE(std::string(file.folder) + "/" + file.name);
        if (file.matches > 1000) {
            continue; // the twin asks for each query from the first one on
        }
        Specify(file.fixed, file.variable);
        Reading reading = ReadReal(file);
        for (PeptideIdentification& match : reading.matches) {
            for (IdentModification& mod : match.vAltMods) { // the twin gives no names
                mod.strName.clear();
                mod.strPosition.clear();
            }
        }
        const PepXmlOutcome twin =
            PepXmlTwin("mgf", file.comet).Read(FolderOf(file) + "/" + file.name);
        EXPECT_EQ(FullTexts(reading.matches), twin.matches);
        EXPECT_EQ(twin.printed, "");
        EXPECT_EQ(twin.thrown, "");
    }
}

TEST_F(PepXmlRealFiles, NumbersOfTheFirstMatches)
{
    PELGRIN_NEEDS_REAL_DATA();
    const double proton = OpenMS::Constants::PROTON_MASS_U;
    Specify(kCysteine, kUsual);
    const PeptideIdentification comet = ReadReal(kRealFiles[0]).matches.at(0);
    EXPECT_EQ(comet.strDatasetName, "/data/search/closed/F13.mgf");
    EXPECT_EQ(comet.dObsMH, 694.397687 + proton);
    EXPECT_EQ(comet.dMassShift, 0.010230);
    EXPECT_EQ(comet.dMainScore, 63.8);
    EXPECT_EQ(comet.nValue5, 1664);
    EXPECT_EQ(comet.dValue2, 0.0);
    const PeptideIdentification msFragger = ReadReal(kRealFiles[7]).matches.at(0);
    EXPECT_EQ(msFragger.dObsMH, 669.4156 + proton);
    EXPECT_EQ(msFragger.dMassShift, -0.0017);
    EXPECT_EQ(msFragger.dMainScore, 0.903);
    EXPECT_EQ(msFragger.nValue5, 1161);
    EXPECT_EQ(msFragger.dValue2, 405.689);
}

// Without the fixed modification its first residue ends the file.
TEST_F(PepXmlRealFiles, B54_FixedModificationsAreToBeSpecified)
{
    PELGRIN_NEEDS_REAL_DATA();
    Specify({}, kUsual);
    const Reading reading = ReadReal(kRealFiles[1]);
    EXPECT_EQ(reading.thrown.function, "MSFraggerPepXMLPepIdentIO::getMod");
    EXPECT_LT(reading.matches.size(), 1384U);
    for (const PeptideIdentification& match : reading.matches) {
        for (const IdentModification& mod : match.vMods) {
            EXPECT_EQ(mod.strName, "Oxidation");
        }
    }
}

// What sits on a terminus is not explained, so it need not be specified.
TEST_F(PepXmlRealFiles, TerminiNeedNoSpecifiedModification)
{
    PELGRIN_NEEDS_REAL_DATA();
    Specify(kCysteine, {"Oxidation (M)"});
    const Reading reading = ReadReal(kRealFiles[1]);
    EXPECT_EQ(reading.thrown, Thrown{});
    std::vector<IdentModification> termini;
    for (const PeptideIdentification& match : reading.matches) {
        termini.insert(termini.end(), match.vAltMods.begin(), match.vAltMods.end());
    }
    ASSERT_EQ(termini.size(), 7U);
    for (const IdentModification& mod : termini) {
        EXPECT_EQ(mod, IdentModification("", 43.018390 - 1.007825, "N-term", "", 0));
    }
}

// Every match of a set has its spectrum in the set's MGF.
TEST_F(PepXmlRealFiles, MatchesMeetTheirSpectraByName)
{
    PELGRIN_NEEDS_REAL_DATA();
    const struct {
        const RealFile& file;
        const char* mgf;
    } sets[] = {{kRealFiles[0], "comet/F13_set/F13.mgf"},
                {kRealFiles[1], "comet/F13_set/F13.mgf"},
                {kRealFiles[2], "comet/Jurkat_set/PV_Jurk_Promega50_IAP_minwash.mgf"},
                {kRealFiles[3], "comet/Jurkat_set/PV_Jurk_Promega50_IAP_minwash.mgf"}};
    for (const auto& set : sets) {
        Specify(set.file.fixed, set.file.variable);
        MgfIO spectra;
        spectra.InitLoad(RealDataFolder() + "/" + set.mgf);
        for (const PeptideIdentification& match : ReadReal(set.file).matches) {
            std::vector<Spectrum> found;
            ASSERT_TRUE(spectra.bLoadOneSpectrum(match.strSpectrumName, found)) << Short(match);
        }
    }
}

} // namespace
} // namespace Vorlan::test
