// The reader of DTA folders as a whole: what it lists, the order of calls, what
// it prints, and its steps.
#include <string>
#include <vector>

#include <sys/stat.h>

#include "spectra/DtaProbe.h"
#include "support/OpenFiles.h"

namespace Vorlan::test {
namespace {

using testing::ElementsAre;
using std::string_literals::operator""s;

const std::string kA = "a.dta|400.5|1+|scan 0|rt 0|1:2|from run\\";
const std::string kB = "b.dta|500.5|1+|scan 0|rt 0|3:4 5:6|from run\\";
const std::string kC = "c.DTA|600.5|1+|scan 0|rt 0||from run\\";

/// Charge 1, so that the precursor m/z is MH.
DtaFolder ThreeFiles()
{
    return DtaFolder{
        {"c.DTA", "600.5 1\n"}, {"a.dta", "400.5 1\n1 2\n"}, {"b.dta", "500.5 1\n3 4\n5 6\n"}};
}

// ---- The folder ------------------------------------------------------------

TEST(DtaIO, GivesOneSpectrumAFileInByteWiseOrderOfNames)
{
    const DtaFolder folder = ThreeFiles();
    DtaIO reader;
    EXPECT_EQ(OutputOf([&] { reader.InitLoad(folder.Path()); }), "");
    EXPECT_EQ(reader.tGetInputSpecNumber(), 3u);
    EXPECT_THAT(DtaRest(reader), ElementsAre(kA, kB, kC));
}

TEST(DtaIO, ListsWhatEndsInDtaAndNoSubfolders)
{
    const DtaFolder folder{{"B.dTa", ""}, {"a.dta", ""},          {".dta", ""},   {"a.dta.gz", ""},
                           {"adta", ""},  {"\xC3\xA4 1.dta", ""}, {"a\n.dta", ""}};
    std::filesystem::create_directory(folder.PathOf("x.dta"));
    folder.Write("x.dta/inner.dta", "");
    DtaProbe reader;
    reader.InitLoad(folder.Path());
    EXPECT_THAT(reader.Filenames(),
                ElementsAre(".dta", "B.dTa", "a\n.dta", "a.dta", "\xC3\xA4 1.dta"));
    EXPECT_EQ(reader.tGetInputSpecNumber(), 5u);
    std::vector<std::string> titles;
    std::vector<Spectrum> spectra;
    while (reader.bLoadNextSpectrum(spectra)) {
        titles.push_back(spectra.back().strTitle);
    }
    EXPECT_EQ(titles, reader.Filenames());
}

TEST(DtaIO, FolderMayEndInAnyNumberOfBackslashes)
{
    const DtaFolder folder = ThreeFiles();
    for (const std::string end : {"", "\\", "\\\\", "\\\\\\\\\\"}) {
        DtaProbe reader;
        reader.InitLoad(folder.Path() + end);
        EXPECT_EQ(reader.Folder(), folder.Path() + "\\") << end;
        std::vector<Spectrum> spectra;
        ASSERT_TRUE(reader.bLoadNextSpectrum(spectra)) << end;
        EXPECT_EQ(spectra[0].strSource, folder.Path() + "\\") << end;
        EXPECT_EQ(Dump(spectra[0]), kA) << end;
    }
}

TEST(DtaIO, FolderMayBeWrittenWithBackslashesThatTheSourceKeeps)
{
    const DtaFolder folder = ThreeFiles();
    DtaIO reader;
    reader.InitLoad(folder.Parent() + "\\run");
    EXPECT_EQ(reader.tGetInputSpecNumber(), 3u);
    std::vector<Spectrum> spectra;
    ASSERT_TRUE(reader.bLoadNextSpectrum(spectra));
    EXPECT_EQ(spectra[0].strSource, folder.Parent() + "\\run\\");
}

TEST(DtaIO, ASlashAtTheEndOfTheFolderStays)
{
    const DtaFolder folder = ThreeFiles();
    DtaIO reader;
    reader.InitLoad(folder.Path() + "/");
    EXPECT_EQ(reader.tGetInputSpecNumber(), 3u);
    std::vector<Spectrum> spectra;
    ASSERT_TRUE(reader.bLoadNextSpectrum(spectra));
    EXPECT_EQ(spectra[0].strSource, folder.Path() + "/\\");
}

TEST(DtaIO, B71_AFolderThatCannotBeReadIsEmptyAndSaysNothing)
{
    const DtaFolder folder = ThreeFiles();
    const TempFolder empty;
    for (const std::string& path :
         {folder.PathOf("missing"), folder.PathOf("a.dta"), empty.Path(), folder.Path() + '\0'}) {
        DtaIO reader;
        EXPECT_EQ(OutputOf([&] { reader.InitLoad(path); }), "") << path;
        EXPECT_EQ(reader.tGetInputSpecNumber(), 0u) << path;
        EXPECT_THAT(DtaRest(reader), ElementsAre()) << path;
        std::vector<Spectrum> spectra(1);
        EXPECT_EQ(reader.tLoadAllSpectra(spectra), 0u) << path;
        EXPECT_EQ(spectra.size(), 1u) << path;
    }
}

// ---- Iteration -------------------------------------------------------------

TEST(DtaIO, HasNothingBeforeInitLoad)
{
    DtaIO reader;
    std::vector<Spectrum> spectra;
    EXPECT_EQ(reader.tGetInputSpecNumber(), 0u);
    EXPECT_FALSE(reader.bLoadNextSpectrum(spectra));
    EXPECT_EQ(reader.tLoadAllSpectra(spectra), 0u);
    EXPECT_EQ(OutputOf([&] { EXPECT_FALSE(reader.bLoadOneSpectrum("no.dta", spectra)); }),
              DtaNotOpened("no.dta"));
    reader.ResetIter();
    reader.EndLoad();
    EXPECT_TRUE(spectra.empty());
}

TEST(DtaIO, ResetIterStartsAtTheFirstFile)
{
    const DtaFolder folder = ThreeFiles();
    DtaIO reader;
    reader.InitLoad(folder.Path());
    std::vector<Spectrum> spectra;
    reader.bLoadNextSpectrum(spectra);
    reader.ResetIter();
    EXPECT_THAT(DtaRest(reader), ElementsAre(kA, kB, kC));
    EXPECT_THAT(DtaRest(reader), ElementsAre());
    EXPECT_FALSE(reader.bLoadNextSpectrum(spectra));
    EXPECT_EQ(spectra.size(), 1u);
}

TEST(DtaIO, B72_LoadAllStartsAtTheFirstFileWhereverTheIterationStands)
{
    const DtaFolder folder = ThreeFiles();
    DtaIO reader;
    reader.InitLoad(folder.Path());
    std::vector<Spectrum> spectra;
    reader.bLoadNextSpectrum(spectra);
    reader.bLoadNextSpectrum(spectra);
    EXPECT_EQ(reader.tLoadAllSpectra(spectra), 3u);
    EXPECT_THAT(Dump(spectra), ElementsAre(kA, kB, kA, kB, kC));
    EXPECT_FALSE(reader.bLoadNextSpectrum(spectra)) << "the iteration ends at its end";
    EXPECT_EQ(reader.tLoadAllSpectra(spectra), 3u);
    EXPECT_EQ(spectra.size(), 8u);
}

/// Leaves "b.dta" out and shows who is asked for.
class ReaderWithoutB : public DtaIO {
public:
    bool bLoadNextSpectrum(std::vector<Spectrum>& vSpectra) override
    {
        asked.push_back("next");
        return DtaIO::bLoadNextSpectrum(vSpectra);
    }
    bool bLoadOneSpectrum(const std::string& name, std::vector<Spectrum>& vSpectra) override
    {
        asked.push_back(name);
        return name != "b.dta" && DtaIO::bLoadOneSpectrum(name, vSpectra);
    }

    std::vector<std::string> asked;
};

TEST(DtaIO, LoadAllAsksForEachFileAsAHostDoes)
{
    const DtaFolder folder = ThreeFiles();
    ReaderWithoutB reader;
    reader.InitLoad(folder.Path());
    std::vector<Spectrum> spectra;
    EXPECT_EQ(reader.tLoadAllSpectra(spectra), 2u);
    EXPECT_THAT(reader.asked, ElementsAre("a.dta", "b.dta", "c.DTA"));
    EXPECT_THAT(Dump(spectra), ElementsAre(kA, kC));
}

TEST(DtaIO, TheNextSpectrumIsAskedForAsAHostDoes)
{
    const DtaFolder folder = ThreeFiles();
    ReaderWithoutB reader;
    reader.InitLoad(folder.Path());
    EXPECT_THAT(DtaRest(reader), ElementsAre(kA, kC));
    EXPECT_THAT(reader.asked, ElementsAre("next", "a.dta", "next", "b.dta", "c.DTA", "next"));
}

TEST(DtaIO, AFileThatGoesBetweenListingAndLoadingIsToldAndPassedOver)
{
    const DtaFolder folder = ThreeFiles();
    DtaIO reader;
    reader.InitLoad(folder.Path());
    std::filesystem::remove(folder.PathOf("b.dta"));
    const std::string told = DtaNotOpened(folder.ComposedPathOf("b.dta"));
    EXPECT_EQ(OutputOf([&] { EXPECT_THAT(DtaRest(reader), ElementsAre(kA, kC)); }), told);
    std::vector<Spectrum> spectra;
    EXPECT_EQ(OutputOf([&] { EXPECT_EQ(reader.tLoadAllSpectra(spectra), 2u); }), told);
    EXPECT_THAT(Dump(spectra), ElementsAre(kA, kC));
    EXPECT_EQ(reader.tGetInputSpecNumber(), 3u) << "files listed";
    std::filesystem::remove(folder.PathOf("c.DTA"));
    reader.ResetIter();
    reader.bLoadNextSpectrum(spectra);
    EXPECT_EQ(OutputOf([&] { EXPECT_FALSE(reader.bLoadNextSpectrum(spectra)); }),
              told + DtaNotOpened(folder.ComposedPathOf("c.DTA")));
    EXPECT_EQ(spectra.size(), 3u);
}

TEST(DtaIO, PipesAndBrokenLinksAreToldAndDoNotHang)
{
    const DtaFolder folder{{"c.dta", "600.5 1\n"}};
    ASSERT_EQ(::mkfifo(folder.PathOf("a.dta").c_str(), 0600), 0);
    std::filesystem::create_symlink("nowhere", folder.PathOf("b.dta"));
    DtaIO reader;
    reader.InitLoad(folder.Path());
    EXPECT_EQ(reader.tGetInputSpecNumber(), 3u);
    EXPECT_EQ(OutputOf([&] { EXPECT_EQ(DtaRest(reader).size(), 1u); }),
              DtaNotOpened(folder.ComposedPathOf("a.dta"))
                  + DtaNotOpened(folder.ComposedPathOf("b.dta")));
}

TEST(DtaIO, AppendsAndNeverClears)
{
    const DtaFolder folder = ThreeFiles();
    DtaIO reader;
    reader.InitLoad(folder.Path());
    std::vector<Spectrum> spectra(1);
    spectra[0].strTitle = "kept";
    reader.bLoadOneSpectrum("b.dta", spectra);
    reader.bLoadNextSpectrum(spectra);
    reader.tLoadAllSpectra(spectra);
    ASSERT_EQ(spectra.size(), 6u);
    EXPECT_EQ(spectra[0].strTitle, "kept");
    spectra.erase(spectra.begin());
    EXPECT_THAT(Dump(spectra), ElementsAre(kB, kA, kA, kB, kC));
}

// ---- By name ---------------------------------------------------------------

TEST(DtaIO, LoadingByNameDoesNotMoveTheIteration)
{
    const DtaFolder folder = ThreeFiles();
    DtaIO reader;
    reader.InitLoad(folder.Path());
    std::vector<Spectrum> spectra;
    EXPECT_TRUE(reader.bLoadOneSpectrum("c.DTA", spectra));
    EXPECT_TRUE(reader.bLoadOneSpectrum("a.dta", spectra));
    EXPECT_THAT(Dump(spectra), ElementsAre(kC, kA));
    EXPECT_THAT(DtaRest(reader), ElementsAre(kA, kB, kC));
}

TEST(DtaIO, ANameThatIsNotListedIsOpenedAllTheSame)
{
    const DtaFolder folder = ThreeFiles();
    DtaIO reader;
    reader.InitLoad(folder.Path());
    folder.Write("later.dta", "700.5 1\n");
    folder.Write("other.txt", "800.5 1\n");
    std::vector<Spectrum> spectra;
    EXPECT_TRUE(reader.bLoadOneSpectrum("later.dta", spectra));
    EXPECT_TRUE(reader.bLoadOneSpectrum("other.txt", spectra));
    EXPECT_THAT(Dump(spectra), ElementsAre("later.dta|700.5|1+|scan 0|rt 0||from run\\",
                                           "other.txt|800.5|1+|scan 0|rt 0||from run\\"));
    EXPECT_EQ(reader.tGetInputSpecNumber(), 3u);
}

TEST(DtaIO, TheTitleIsWhatStandsBehindTheLastBackslashOfTheName)
{
    const DtaFolder folder = ThreeFiles();
    std::filesystem::create_directories(folder.PathOf("x/y"));
    folder.Write("x/y/in.dta", "700.5 1\n");
    DtaIO reader;
    reader.InitLoad(folder.Path());
    const std::vector<std::pair<std::string, std::string>> names = {
        {"x\\y\\in.dta", "in.dta"}, {"x/y/in.dta", "x/y/in.dta"}, {"x/y\\in.dta", "in.dta"},
        {"\\a.dta", "a.dta"},       {"x\\..\\a.dta", "a.dta"},
    };
    for (const auto& [name, title] : names) {
        std::vector<Spectrum> spectra;
        ASSERT_TRUE(reader.bLoadOneSpectrum(name, spectra)) << name;
        EXPECT_EQ(spectra[0].strTitle, title) << name;
        EXPECT_EQ(spectra[0].strSource, folder.Path() + "\\") << name;
    }
}

TEST(DtaIO, AFileWithABackslashInItsNameIsListedAndCannotBeReached)
{
    const DtaFolder folder{{"x\\y.dta", "700.5 1\n"}};
    DtaProbe reader;
    reader.InitLoad(folder.Path());
    EXPECT_THAT(reader.Filenames(), ElementsAre("x\\y.dta"));
    EXPECT_EQ(OutputOf([&] { EXPECT_THAT(DtaRest(reader), ElementsAre()); }),
              DtaNotOpened(folder.ComposedPathOf("x\\y.dta")));
}

TEST(DtaIO, WhatCannotBeOpenedIsToldAndGivesFalse)
{
    const DtaFolder folder = ThreeFiles();
    std::filesystem::create_directory(folder.PathOf("x.dta"));
    DtaIO reader;
    reader.InitLoad(folder.Path());
    for (const std::string& name : {"d.dta"s, ""s, "A.dta"s, "a.dta "s, "a"s, "x.dta"s, "a.dta\0"s,
                                    "no\\a.dta"s, "a\n"s, "a.dta\\"s}) {
        std::vector<Spectrum> spectra;
        bool found = true;
        EXPECT_EQ(OutputOf([&] { found = reader.bLoadOneSpectrum(name, spectra); }),
                  DtaNotOpened(folder.ComposedPathOf(name)));
        EXPECT_FALSE(found) << name;
        EXPECT_TRUE(spectra.empty()) << name;
    }
    EXPECT_THAT(DtaRest(reader), ElementsAre(kA, kB, kC)) << "nothing changes in the reader";
}

TEST(DtaIO, AFileIsReadAnewEveryTime)
{
    const DtaFolder folder = ThreeFiles();
    DtaIO reader;
    reader.InitLoad(folder.Path());
    std::vector<Spectrum> spectra;
    reader.bLoadOneSpectrum("a.dta", spectra);
    folder.Write("a.dta", "450.5 1\n7 8\n");
    reader.bLoadOneSpectrum("a.dta", spectra);
    EXPECT_THAT(Dump(spectra), ElementsAre(kA, "a.dta|450.5|1+|scan 0|rt 0|7:8|from run\\"));
}

TEST(DtaIO, SpectraAreCopies)
{
    const DtaFolder folder = ThreeFiles();
    DtaIO reader;
    reader.InitLoad(folder.Path());
    std::vector<Spectrum> spectra;
    reader.bLoadOneSpectrum("a.dta", spectra);
    spectra[0].vPeaks[0].vMatchRes.resize(3);
    spectra[0].vPeaks.clear();
    spectra.clear();
    reader.bLoadOneSpectrum("a.dta", spectra);
    EXPECT_EQ(Dump(spectra[0]), kA);
}

// ---- EndLoad and InitLoad again --------------------------------------------

TEST(DtaIO, EndLoadForgetsFolderAndFiles)
{
    const DtaFolder folder = ThreeFiles();
    DtaProbe reader;
    reader.InitLoad(folder.Path());
    reader.EndLoad();
    reader.EndLoad();
    EXPECT_EQ(reader.tGetInputSpecNumber(), 0u);
    EXPECT_EQ(reader.Folder(), "");
    EXPECT_THAT(DtaRest(reader), ElementsAre());
    std::vector<Spectrum> spectra;
    EXPECT_EQ(OutputOf([&] { EXPECT_FALSE(reader.bLoadOneSpectrum("a.dta", spectra)); }),
              DtaNotOpened("a.dta"));
    EXPECT_EQ(reader.tLoadAllSpectra(spectra), 0u);
    EXPECT_TRUE(spectra.empty());
}

TEST(DtaIO, B91_WithoutAFolderItReadsFromTheWorkingFolder)
{
    const DtaFolder folder = ThreeFiles();
    const auto former = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path());
    DtaIO fresh;
    DtaIO ended;
    ended.InitLoad(folder.Parent());
    ended.EndLoad();
    for (DtaIO* const reader : {&fresh, &ended}) {
        std::vector<Spectrum> spectra;
        EXPECT_TRUE(reader->bLoadOneSpectrum("a.dta", spectra));
        ASSERT_EQ(spectra.size(), 1u);
        EXPECT_EQ(spectra[0].strTitle, "a.dta");
        EXPECT_EQ(spectra[0].strSource, "");
    }
    std::filesystem::current_path(former);
}

TEST(DtaIO, InitLoadForgetsTheFolderBefore)
{
    const DtaFolder folder = ThreeFiles();
    const DtaFolder other{{"z.dta", "900.5 1\n"}};
    DtaIO reader;
    reader.InitLoad(folder.Path());
    std::vector<Spectrum> spectra;
    reader.bLoadNextSpectrum(spectra);
    reader.InitLoad(other.Path());
    EXPECT_EQ(reader.tGetInputSpecNumber(), 1u);
    EXPECT_THAT(DtaRest(reader), ElementsAre("z.dta|900.5|1+|scan 0|rt 0||from run\\"));
    reader.InitLoad(folder.PathOf("missing"));
    EXPECT_EQ(reader.tGetInputSpecNumber(), 0u);
    reader.EndLoad();
    reader.InitLoad(folder.Path());
    EXPECT_THAT(DtaRest(reader), ElementsAre(kA, kB, kC));
}

// ---- The steps -------------------------------------------------------------

TEST(DtaIO, InitMemberClearsThePeaksAndMakesRoom)
{
    DtaProbe reader;
    EXPECT_EQ(reader.Extension(), ".dta");
    EXPECT_GE(reader.Current().vPeaks.capacity(), 256u);
    reader.Current().vPeaks.resize(7);
    reader.InitMember();
    EXPECT_TRUE(reader.Current().vPeaks.empty());
    EXPECT_GE(reader.Current().vPeaks.capacity(), 256u);
    EXPECT_EQ(reader.Extension(), ".dta");
    reader.Current().vPeaks.reserve(1000);
    const std::size_t room = reader.Current().vPeaks.capacity();
    reader.InitMember();
    EXPECT_EQ(reader.Current().vPeaks.capacity(), room) << "more room stays";
}

TEST(DtaIO, SetFilenameListListsTheFolderAnew)
{
    const DtaFolder folder = ThreeFiles();
    DtaProbe reader;
    reader.InitLoad(folder.Path());
    std::vector<Spectrum> spectra;
    reader.bLoadNextSpectrum(spectra);
    folder.Write("a0.dta", "");
    EXPECT_EQ(reader.tGetInputSpecNumber(), 3u);
    reader.SetFilenameList();
    EXPECT_THAT(reader.Filenames(), ElementsAre("a.dta", "a0.dta", "b.dta", "c.DTA"));
    EXPECT_EQ(reader.Iter(), 1u) << "the iteration stays where it is";
}

TEST(DtaIO, SetFilenameListListsDtaFilesWhateverTheExtensionSays)
{
    const DtaFolder folder{{"a.dta", ""}, {"a.txt", ""}};
    DtaProbe reader;
    reader.Extension() = ".txt";
    reader.InitLoad(folder.Path());
    EXPECT_THAT(reader.Filenames(), ElementsAre("a.dta"));
}

TEST(DtaIO, SetFilenameListMakesRoom)
{
    constexpr std::size_t kUsual = 32768;
    const DtaFolder folder = ThreeFiles();
    DtaProbe reader;
    reader.InitLoad(folder.Path());
    EXPECT_GE(reader.Filenames().capacity(), kUsual);
    reader.Filenames().reserve(kUsual + 1000);
    const std::size_t room = reader.Filenames().capacity();
    reader.SetFilenameList();
    EXPECT_EQ(reader.Filenames().capacity(), room) << "more room stays";
    EXPECT_EQ(reader.Filenames().size(), 3u);
}

TEST(DtaIO, OneFileIsOpenedReadAndClosed)
{
    const DtaFolder folder = ThreeFiles();
    DtaProbe reader;
    const std::string path = folder.ComposedPathOf("b.dta");
    ASSERT_TRUE(reader.bOpenInputFile(path));
    EXPECT_TRUE(reader.bGetOneSpec());
    EXPECT_EQ(reader.Current().dPrecursorMz, 500.5);
    EXPECT_EQ(reader.Current().nCharge, 1u);
    EXPECT_EQ(reader.Current().vPeaks.size(), 2u);
    reader.CloseInputFile();
    reader.CloseInputFile();
    ASSERT_TRUE(reader.bOpenInputFile(path)) << "once more";
    reader.CloseInputFile();
    const std::string missing = folder.ComposedPathOf("missing.dta");
    EXPECT_EQ(OutputOf([&] { EXPECT_FALSE(reader.bOpenInputFile(missing)); }),
              DtaNotOpened(missing));
}

TEST(DtaIO, NoFileStaysOpen)
{
    const DtaFolder folder = ThreeFiles();
    const auto before = OpenFileCount();
    DtaIO reader;
    reader.InitLoad(folder.Path());
    std::vector<Spectrum> spectra;
    reader.bLoadNextSpectrum(spectra);
    EXPECT_EQ(OpenFileCount(), before);
    reader.bLoadOneSpectrum("b.dta", spectra);
    EXPECT_EQ(OpenFileCount(), before);
}

} // namespace
} // namespace Vorlan::test
