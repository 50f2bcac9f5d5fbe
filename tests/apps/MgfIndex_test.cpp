// The host's index of an MGF file against the library's.
#include "files/MgfIndex.h"

#include <map>
#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "SpectraIO.h"
#include "files/MgfAudit.h"
#include "support/Random.h"
#include "support/Support.h"

using namespace pelgrin;

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Vorlan::test::Random;
using Vorlan::test::TempFolder;

MgfIndex IndexOf(const std::string& bytes)
{
    const TempFolder folder;
    MgfIndex index;
    AuditMgf(folder.Write("file.mgf", bytes), &index);
    return index;
}

/// A record whose m/z tells it from others.
std::string RecordOf(const std::string& title, const std::string& mz)
{
    return "BEGIN IONS\nTITLE=" + title + "\nPEPMASS=" + mz + "\nCHARGE=2+\n100 1\nEND IONS\n";
}

/// The m/z of the record that a name finds.
double MzOf(const MgfIndex& index, const std::string& name)
{
    const auto hit = index.Find(name);
    return hit ? index.Records()[hit->record].precursorMz.value_or(0.0) : -1.0;
}

// ---- Against the library --------------------------------------------------------

struct Loaded {
    double mz = 0.0;
    std::uint64_t charge = 0;

    bool operator==(const Loaded& other) const { return mz == other.mz && charge == other.charge; }
};

std::ostream& operator<<(std::ostream& out, const Loaded& loaded)
{
    return out << loaded.mz << " " << loaded.charge;
}

/// What a fresh reader gives for each name that the library knows: a reader that
/// has loaded nothing keeps no value of another spectrum.
std::map<std::string, Loaded> OfLibrary(const std::string& path)
{
    std::vector<Vorlan::Spectrum> spectra;
    Vorlan::MgfIO all;
    all.InitLoad(path);
    all.tLoadAllSpectra(spectra);
    std::map<std::string, Loaded> loaded;
    for (const Vorlan::Spectrum& named : spectra) {
        Vorlan::MgfIO fresh;
        fresh.InitLoad(path);
        std::vector<Vorlan::Spectrum> one;
        EXPECT_TRUE(fresh.bLoadOneSpectrum(named.strTitle, one));
        loaded[named.strTitle] = {one.at(0).dPrecursorMz, one.at(0).nCharge};
    }
    return loaded;
}

/// A line of an MGF file, mostly one that means something.
std::string RandomLine(Random& random)
{
    static const std::vector<std::string> kLines = {"BEGIN IONS",
                                                    "BEGIN IONS",
                                                    "END IONS",
                                                    "END IONS",
                                                    "100.5 7",
                                                    "200 1",
                                                    "CHARGE=3+",
                                                    "CHARGE=x",
                                                    "CHARGE=-2",
                                                    "CHARGE=99999999999",
                                                    "PEPMASS=",
                                                    "PEPMASS= x",
                                                    "PEPMASS=1e",
                                                    "PEPMASS=0x10",
                                                    "PEPMASS2=5",
                                                    " PEPMASS=5",
                                                    "TOL=1",
                                                    "B",
                                                    "T",
                                                    "",
                                                    " TITLE=blank",
                                                    "\xEF\xBB\xBF"
                                                    "BEGIN IONS"};
    static const std::vector<std::string> kTitles = {"run.1.1.2",
                                                     "run.1.1.3",
                                                     "run.01.1.2 scan=1",
                                                     "a scan=12",
                                                     "b scan=1",
                                                     "scan=12\"",
                                                     "12",
                                                     "1",
                                                     "run.1405.1405.2 NativeID:\"scan=5\"",
                                                     "x y",
                                                     "x z",
                                                     " Cmpd 7",
                                                     "",
                                                     "run.00001.00001.2"};
    switch (random.Below(8)) {
    case 0:
    case 1: return "TITLE=" + kTitles[random.Below(kTitles.size())];
    case 2: return "PEPMASS=" + std::to_string(100 + random.Below(100000)) + ".25 7";
    default: return kLines[random.Below(kLines.size())];
    }
}

std::string RandomFile(Random& random)
{
    std::string text = random.OneIn(5) ? "\xEF\xBB\xBF" : "";
    const std::string feed = random.OneIn(4) ? "\r\n" : "\n";
    for (std::size_t lines = random.Below(60); lines > 0; --lines) {
        text += RandomLine(random) + feed;
    }
    if (random.OneIn(6)) {
        text += RandomLine(random) + std::string(81900 + random.Below(40), '1') + feed;
        text += "BEGIN IONS" + feed + "TITLE=behind" + feed + "1 1" + feed;
    }
    return text;
}

TEST(MgfIndex, HoldsTheNamesAndRecordsOfTheLibrary)
{
    Random random(13);
    const TempFolder folder;
    std::size_t names = 0;
    for (int round = 0; round < 400; ++round) {
        const std::string bytes = RandomFile(random);
        const std::string path = folder.Write("file.mgf", bytes);
        MgfIndex index;
        AuditMgf(path, &index);
        const std::map<std::string, Loaded> library = OfLibrary(path);
        ASSERT_EQ(index.Names(), library.size()) << bytes.substr(0, 3000);
        for (const auto& [name, loaded] : library) {
            const auto hit = index.Find(name);
            ASSERT_TRUE(hit) << name;
            const MgfIndex::Record& record = index.Records()[hit->record];
            ASSERT_EQ((Loaded{record.precursorMz.value_or(0.0), record.charge}), loaded)
                << "[" << name << "] in\n"
                << bytes.substr(0, 3000);
            ASSERT_EQ(index.BearersOf(name, 1000).size(), hit->bearers);
            ASSERT_EQ(index.BearersOf(name, 1000).back(), hit->record) << "the last one";
        }
        names += library.size();
    }
    EXPECT_GT(names, 1000U) << "the files hold something";
}

TEST(MgfIndex, HoldsTheNamesOfEveryRealFile)
{
    PELGRIN_NEEDS_REAL_DATA();
    std::size_t files = 0;
    std::set<std::string> without; // names of records that set no m/z
    for (const auto& entry :
         std::filesystem::recursive_directory_iterator(Vorlan::test::RealDataFolder())) {
        if (entry.path().extension() != ".mgf") {
            continue;
        }
        SCOPED_TRACE(entry.path().string());
        ++files;
        MgfIndex index;
        AuditMgf(entry.path().string(), &index);
        Vorlan::MgfIO library;
        library.InitLoad(entry.path().string());
        EXPECT_EQ(index.Names(), library.tGetInputSpecNumber());
        std::vector<Vorlan::Spectrum> spectra;
        while (library.bLoadNextSpectrum(spectra)) {
            const Vorlan::Spectrum& spectrum = spectra.back();
            const auto hit = index.Find(spectrum.strTitle);
            ASSERT_TRUE(hit) << spectrum.strTitle;
            const MgfIndex::Record& record = index.Records()[hit->record];
            if (!record.precursorMz) {
                without.insert(spectrum.strTitle);
            }
            ASSERT_EQ(record.precursorMz.value_or(spectrum.dPrecursorMz), spectrum.dPrecursorMz)
                << spectrum.strTitle;
            spectra.clear();
        }
    }
    EXPECT_GE(files, 18U);
    EXPECT_EQ(without.size(), 20U) << "two names of each of 10 spectra, all of the HCT116 set";
}

// ---- Kinds ----------------------------------------------------------------------

TEST(MgfIndex, TellsTheKindOfAName)
{
    const MgfIndex index = IndexOf(RecordOf("run.7.7.2 File:\"\", NativeID:\"scan=7\"", "500.5"));
    EXPECT_EQ(index.Find("run.7.7.2 File:\"\", NativeID:\"scan=7\"")->kind, NameKind::Title);
    EXPECT_EQ(index.Find("run.7.7.2")->kind, NameKind::FirstWord);
    EXPECT_EQ(index.Find("run.00007.00007.2")->kind, NameKind::Dotted);
    EXPECT_EQ(index.Find("7")->kind, NameKind::Scan);
    EXPECT_FALSE(index.Find("7")->isAmbiguous);
    EXPECT_FALSE(index.Find("run.7.7.3"));
    EXPECT_FALSE(index.Find(""));
    EXPECT_EQ(index.Records()[0].line, 1U);
    EXPECT_EQ(index.Records()[0].charge, 2U);
}

TEST(MgfIndex, ANameOfOneRecordByTwoKindsIsTheFirstKind)
{
    const MgfIndex index = IndexOf(RecordOf("run.00007.00007.2", "500.5"));
    EXPECT_EQ(index.Names(), 1U);
    EXPECT_EQ(index.Find("run.00007.00007.2")->kind, NameKind::Title);
    EXPECT_EQ(index.Find("run.00007.00007.2")->bearers, 1U);
}

TEST(MgfIndex, ANameOfSeveralRecordsIsAmbiguous)
{
    struct Case {
        const char* reason;
        std::vector<std::string> titles;
        const char* name;
        bool isAmbiguous;
        double mz; ///< of the record that it finds: 1 for the first one, and so on
    };
    for (const Case& test :
         {Case{"one title twice", {"a", "a"}, "a", true, 2.0},
          Case{"a first word of two titles", {"a x", "a y"}, "a", true, 2.0},
          Case{"their titles are their own", {"a x", "a y"}, "a x", false, 1.0},
          Case{"a dotted name of two charges' files",
               {"a.5.5.2 x", "a.05.05.2"},
               "a.00005.00005.2",
               true,
               2.0},
          Case{"the title of the last one, and a word of another", {"a x", "a"}, "a", false, 2.0},
          Case{"the title of the first one, but the last one is found",
               {"a", "a x"},
               "a",
               true,
               2.0},
          Case{"a scan name and a title", {"a NativeID:\"scan=7\"", "7"}, "7", false, 2.0},
          Case{"a scan name of two", {"a \"scan=7\"", "b \"scan=7\""}, "7", true, 2.0},
          Case{"three, two of them by title", {"a", "a x", "a"}, "a", true, 3.0}}) {
        SCOPED_TRACE(test.reason);
        std::string text;
        for (std::size_t i = 0; i < test.titles.size(); ++i) {
            text += RecordOf(test.titles[i], std::to_string(i + 1));
        }
        const MgfIndex index = IndexOf(text);
        ASSERT_TRUE(index.Find(test.name));
        EXPECT_EQ(index.Find(test.name)->isAmbiguous, test.isAmbiguous);
        EXPECT_EQ(MzOf(index, test.name), test.mz);
        EXPECT_EQ(index.AmbiguousNames(), test.isAmbiguous ? 1U : index.AmbiguousNames());
    }
}

TEST(MgfIndex, AScanNumberThatLostItsDigitIsKnownAsSuch)
{
    const MgfIndex cut = IndexOf(RecordOf("a scan=12", "1") + RecordOf("a scan=13", "2"));
    ASSERT_TRUE(cut.Find("1"));
    EXPECT_TRUE(cut.Find("1")->isCutScan);
    EXPECT_THAT(cut.Around("1", 9), ElementsAre("a", "a scan=12", "a scan=13"));
    EXPECT_EQ(cut.AmbiguousNames(), 1U) << "the word a: 1 is no name";
    const MgfIndex both = IndexOf(RecordOf("a scan=12", "1") + RecordOf("b \"scan=1\"", "2"));
    EXPECT_FALSE(both.Find("1")->isCutScan);
    EXPECT_TRUE(both.Find("1")->isAmbiguous);
}

// ---- Precursors -----------------------------------------------------------------

TEST(MgfIndex, ARecordHasThePrecursorThatTheLibraryReads)
{
    EXPECT_EQ(MzOf(IndexOf("BEGIN IONS\nTITLE=a\nPEPMASS=5\nPEPMASS=6\n1 1\nPEPMASS=7\n"), "a"),
              6.0)
        << "the last one in front of the peaks";
    const MgfIndex without =
        IndexOf("BEGIN IONS\nTITLE=a\nPEPMASS=5\nEND IONS\n" + RecordOf("b", "6"));
    EXPECT_EQ(MzOf(without, "a"), 6.0) << "without peaks: that of the next record";
    const MgfIndex none = IndexOf("PEPMASS=4\nBEGIN IONS\nTITLE=a\n1 1\nEND IONS\n");
    ASSERT_TRUE(none.Find("a"));
    EXPECT_FALSE(none.Records()[0].precursorMz) << "in front of the first record";
}

// ---- Names that are near ----------------------------------------------------------

TEST(MgfIndex, FindsTitlesByANumber)
{
    const MgfIndex index = IndexOf(RecordOf("run.1405.1405.2", "1") + RecordOf("run.01405", "2")
                                   + RecordOf("14050 x", "3") + RecordOf("x 21405", "4"));
    EXPECT_THAT(index.TitlesWithNumber("1405", 9), ElementsAre("run.01405", "run.1405.1405.2"));
    EXPECT_THAT(index.TitlesWithNumber("1405", 1), ElementsAre("run.01405"));
    EXPECT_THAT(index.TitlesWithNumber("140", 9), IsEmpty());
}

TEST(MgfIndex, FindsWhatStandsBesideAName)
{
    std::string text;
    for (const char* const title : {"d", "a", "c", "b", " x"}) {
        text += RecordOf(title, "1");
    }
    const MgfIndex index = IndexOf(text);
    EXPECT_THAT(index.Around("bb", 1), ElementsAre("b", "c"));
    EXPECT_THAT(index.Around("", 3), ElementsAre(" x", "a")) << "the empty name is none";
    EXPECT_THAT(index.Around("z", 2), ElementsAre("c", "d"));
    EXPECT_THAT(IndexOf("").Around("z", 2), IsEmpty());
}

} // namespace
