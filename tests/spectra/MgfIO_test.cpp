// The reader as a whole: order of calls, iteration, what it prints, what it
// keeps from one spectrum to the next.
#include <string>
#include <vector>

#include <sys/stat.h>

#include "spectra/MgfProbe.h"

namespace Vorlan::test {
namespace {

using testing::ElementsAre;

const char* const kThree = "BEGIN IONS\nTITLE=b\nPEPMASS=5\nCHARGE=2+\n1 2\nEND IONS\n"
                           "BEGIN IONS\nTITLE=c\nSCANS=3\n3 4\nEND IONS\n"
                           "BEGIN IONS\nTITLE=a\nRTINSECONDS=9\n5 6\nEND IONS\n";

TEST(MgfIO, HasNothingBeforeInitLoad)
{
    MgfIO reader;
    std::vector<Spectrum> spectra;
    EXPECT_EQ(reader.tGetInputSpecNumber(), 0u);
    EXPECT_FALSE(reader.bLoadNextSpectrum(spectra));
    EXPECT_EQ(reader.tLoadAllSpectra(spectra), 0u);
    reader.ResetIter();
    reader.EndLoad();
    EXPECT_TRUE(spectra.empty());
}

TEST(MgfIO, B22_IteratesOverNamesInTheirByteOrder)
{
    MgfText mgf("BEGIN IONS\nTITLE=b.7.2 scan=10\"\n1 2\nEND IONS\n"
                "BEGIN IONS\nTITLE=\xFFz\n3 4\nEND IONS\nBEGIN IONS\nTITLE=B\n5 6\nEND IONS\n");
    std::vector<std::string> names;
    std::vector<Spectrum> spectra;
    while (mgf.reader.bLoadNextSpectrum(spectra)) {
        names.push_back(spectra.back().strTitle);
    }
    EXPECT_THAT(names,
                ElementsAre("10", "B", "b.00007.00007.2", "b.7.2", "b.7.2 scan=10\"", "\xFFz"));
    EXPECT_EQ(spectra.size(), names.size());
    EXPECT_FALSE(mgf.reader.bLoadNextSpectrum(spectra));
    EXPECT_EQ(spectra.size(), names.size());
}

TEST(MgfIO, TitleIsTheNameAskedFor)
{
    MgfText mgf("BEGIN IONS\nTITLE=run.7.2 scan=10\"\n1 2\nEND IONS\n");
    EXPECT_EQ(mgf.Load("10"), "10|0|0+|scan 0|rt 0|1:2");
    EXPECT_EQ(mgf.Load("run.7.2"), "run.7.2|0|0+|scan 0|rt 0|1:2");
    EXPECT_EQ(mgf.Load("run.00007.00007.2"), "run.00007.00007.2|0|0+|scan 0|rt 0|1:2");
}

TEST(MgfIO, B10_FieldsThatARecordDoesNotSetStay)
{
    MgfText mgf(kThree);
    EXPECT_EQ(mgf.Load("b"), "b|5|2+|scan 0|rt 0|1:2");
    EXPECT_EQ(mgf.Load("c"), "c|5|2+|scan 3|rt 0|3:4");
    EXPECT_EQ(mgf.Load("a"), "a|5|2+|scan 3|rt 9|5:6");
    EXPECT_EQ(mgf.Load("b"), "b|5|2+|scan 3|rt 9|1:2");
}

TEST(MgfIO, B10_PeaksDirectlyBehindBeginIonsKeepAllFields)
{
    MgfText mgf("BEGIN IONS\nTITLE=a\nPEPMASS=5\nCHARGE=2+\nSCANS=3\nRTINSECONDS=9\n1 2\nEND IONS\n"
                "BEGIN IONS\n3 4\nTITLE=b\nEND IONS\n");
    EXPECT_THAT(mgf.Rest(), ElementsAre("a|5|2+|scan 3|rt 9|1:2", "b|5|2+|scan 3|rt 9|3:4 3:4"));
}

TEST(MgfIO, B16_ARecordWithoutPeaksGoesOnIntoTheNextOne)
{
    MgfText mgf("BEGIN IONS\nTITLE=a\nPEPMASS=5\nCHARGE=2+\nEND IONS\n"
                "BEGIN IONS\nTITLE=b\nPEPMASS=7\nSCANS=3\n1 2\nEND IONS\n"
                "BEGIN IONS\nTITLE=c\nCHARGE=4+\nEND IONS\n");
    EXPECT_EQ(mgf.Load("a"), "a|7|2+|scan 3|rt 0|1:2");
    EXPECT_EQ(mgf.Load("b"), "b|7|2+|scan 3|rt 0|1:2");
    EXPECT_EQ(mgf.Load("c"), "c|7|4+|scan 3|rt 0|") << "at the end of the file there are none";
}

TEST(MgfIO, LoadAllCountsWhatIsLeft)
{
    MgfText mgf(kThree);
    std::vector<Spectrum> spectra(2);
    EXPECT_TRUE(mgf.reader.bLoadNextSpectrum(spectra));
    EXPECT_EQ(mgf.reader.tLoadAllSpectra(spectra), 2u);
    EXPECT_EQ(spectra.size(), 5u);
    EXPECT_EQ(mgf.reader.tLoadAllSpectra(spectra), 0u);
    EXPECT_EQ(spectra.size(), 5u);
    mgf.reader.ResetIter();
    EXPECT_EQ(mgf.reader.tLoadAllSpectra(spectra), 3u);
}

/// Leaves "c" out, as a host's own reader may.
class ReaderWithoutC : public MgfIO {
public:
    bool bLoadOneSpectrum(const std::string& name, std::vector<Spectrum>& vSpectra) override
    {
        asked.push_back(name);
        return name != "c" && MgfIO::bLoadOneSpectrum(name, vSpectra);
    }

    std::vector<std::string> asked;
};

TEST(MgfIO, TheIterationAsksForEachNameAsAHostDoes)
{
    const MgfText mgf(kThree);
    ReaderWithoutC reader;
    reader.InitLoad(mgf.Path());
    std::vector<Spectrum> spectra;
    EXPECT_EQ(reader.tLoadAllSpectra(spectra), 2u) << "those that were given";
    EXPECT_THAT(reader.asked, ElementsAre("a", "b", "c"));
    EXPECT_EQ(spectra.size(), 2u);
    reader.ResetIter();
    for (int name = 0; name < 3; ++name) {
        EXPECT_TRUE(reader.bLoadNextSpectrum(spectra)) << "whatever came of it";
    }
    EXPECT_FALSE(reader.bLoadNextSpectrum(spectra));
    EXPECT_THAT(reader.asked, ElementsAre("a", "b", "c", "a", "b", "c"));
    EXPECT_EQ(spectra.size(), 4u);
}

TEST(MgfIO, LoadingByNameDoesNotMoveTheIteration)
{
    MgfText mgf(kThree);
    std::vector<Spectrum> spectra;
    mgf.reader.bLoadNextSpectrum(spectra);
    EXPECT_EQ(mgf.Load("c"), "c|0|0+|scan 3|rt 9|3:4");
    mgf.reader.bLoadNextSpectrum(spectra);
    EXPECT_EQ(spectra.at(1).strTitle, "b");
}

TEST(MgfIO, AnUnknownNamePrintsOneLineAndGivesFalse)
{
    MgfText mgf(kThree);
    for (const std::string name : {"d", "", "A", "a ", "aa"}) {
        std::vector<Spectrum> spectra;
        bool found = true;
        EXPECT_EQ(OutputOf([&] { found = mgf.reader.bLoadOneSpectrum(name, spectra); }),
                  "\nUnable to load spectrum " + name + "\n");
        EXPECT_FALSE(found);
        EXPECT_TRUE(spectra.empty());
    }
}

TEST(MgfIO, WhatCanBeReadPrintsNothing)
{
    EXPECT_EQ(OutputOf([] {
                  MgfText mgf(kThree);
                  mgf.Rest();
                  mgf.Load("a");
                  mgf.reader.EndLoad();
              }),
              "");
}

TEST(MgfIO, AMissingFileIsToldAndEmpty)
{
    const TempFolder folder;
    const std::string path = folder.PathOf("missing.mgf");
    MgfIO reader;
    EXPECT_EQ(OutputOf([&] { reader.InitLoad(path); }), MgfNotOpened(path));
    EXPECT_EQ(reader.tGetInputSpecNumber(), 0u);
    std::vector<Spectrum> spectra;
    EXPECT_FALSE(reader.bLoadNextSpectrum(spectra));
    EXPECT_EQ(OutputOf([&] { reader.bLoadOneSpectrum("a", spectra); }),
              "\nUnable to load spectrum a\n");
}

TEST(MgfIO, FoldersPipesAndNoPathCannotBeOpened)
{
    const TempFolder folder;
    const std::string pipe = folder.PathOf("pipe.mgf");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string& path : {folder.Path(), pipe, std::string()}) {
        MgfIO reader;
        EXPECT_EQ(OutputOf([&] { reader.InitLoad(path); }), MgfNotOpened(path));
        EXPECT_EQ(reader.tGetInputSpecNumber(), 0u);
    }
}

TEST(MgfIO, ThePathIsPrintedAsGivenAndOpenedWithSlashes)
{
    const TempFolder folder;
    folder.Write("a.mgf", kThree);
    MgfIO reader;
    EXPECT_EQ(OutputOf([&] { reader.InitLoad(folder.Path() + "\\a.mgf"); }), "");
    EXPECT_EQ(reader.tGetInputSpecNumber(), 3u);
    const std::string missing = folder.Path() + "\\b.mgf";
    EXPECT_EQ(OutputOf([&] { reader.InitLoad(missing); }), MgfNotOpened(missing));
}

TEST(MgfIO, OpeningTellsWhetherItCould)
{
    const TempFolder folder;
    const std::string path = folder.Write("a.mgf", kThree);
    const std::string missing = folder.PathOf("missing.mgf");
    MgfProbe reader;
    EXPECT_EQ(OutputOf([&] { EXPECT_FALSE(reader.bOpenInputFile(missing)); }),
              MgfNotOpened(missing));
    EXPECT_EQ(OutputOf([&] { EXPECT_TRUE(reader.bOpenInputFile(path)); }), "");
    reader.SetMap();
    EXPECT_EQ(reader.tGetInputSpecNumber(), 3u);
}

TEST(MgfIO, AnOpenReaderOpensNoOtherFileAndFails)
{
    const TempFolder folder;
    const std::string path = folder.Write("a.mgf", kThree);
    const std::string other = folder.Write("b.mgf", "BEGIN IONS\nTITLE=z\n7 8\nEND IONS\n");
    MgfProbe reader;
    ASSERT_TRUE(reader.bOpenInputFile(path));
    EXPECT_EQ(OutputOf([&] { EXPECT_FALSE(reader.bOpenInputFile(other)); }), MgfNotOpened(other));
    reader.SetMap();
    EXPECT_EQ(reader.tGetInputSpecNumber(), 0u);
    reader.CloseInputFile();
    EXPECT_EQ(OutputOf([&] { EXPECT_TRUE(reader.bOpenInputFile(other)); }), "") << "once closed";
    reader.SetMap();
    EXPECT_EQ(reader.tGetInputSpecNumber(), 1u);
}

TEST(MgfIO, AnOpenReaderThatOpenedNoOtherFileStaysOnItsOwn)
{
    MgfText mgf(kThree);
    OutputOf([&] { EXPECT_FALSE(mgf.reader.bOpenInputFile(mgf.Path())); });
    EXPECT_EQ(mgf.Load("b"), "b|5|2+|scan 0|rt 0|1:2");
    OutputOf([&] { EXPECT_FALSE(mgf.reader.bOpenInputFile(mgf.Path())); });
    EXPECT_EQ(OutputOf([&] { mgf.reader.InitLoad(mgf.Path()); }), "") << "closes it first";
    EXPECT_EQ(mgf.reader.tGetInputSpecNumber(), 3u);
}

TEST(MgfIO, InitLoadOnAnOpenReaderChangesTheFile)
{
    const TempFolder folder;
    MgfText mgf(kThree);
    std::vector<Spectrum> spectra;
    mgf.reader.bLoadNextSpectrum(spectra);
    mgf.reader.InitLoad(folder.Write("b.mgf", "BEGIN IONS\nTITLE=z\n7 8\nEND IONS\n"));
    EXPECT_EQ(mgf.reader.tGetInputSpecNumber(), 1u);
    EXPECT_THAT(mgf.Rest(), ElementsAre("z|0|0+|scan 0|rt 9|7:8"));
}

TEST(MgfIO, InitLoadThatFailsForgetsTheFormerFile)
{
    MgfText mgf(kThree);
    OutputOf([&] { mgf.reader.InitLoad(mgf.Path() + ".missing"); });
    EXPECT_EQ(mgf.reader.tGetInputSpecNumber(), 0u);
    EXPECT_THAT(mgf.Rest(), ElementsAre());
}

TEST(MgfIO, B86_AfterEndLoadKnownNamesHaveNoPeaks)
{
    MgfText mgf(kThree);
    EXPECT_EQ(mgf.Load("b"), "b|5|2+|scan 0|rt 0|1:2");
    mgf.reader.EndLoad();
    EXPECT_EQ(mgf.reader.tGetInputSpecNumber(), 3u);
    EXPECT_EQ(mgf.Load("a"), "a|5|2+|scan 0|rt 0|");
    EXPECT_THAT(mgf.Rest(),
                ElementsAre("a|5|2+|scan 0|rt 0|", "b|5|2+|scan 0|rt 0|", "c|5|2+|scan 0|rt 0|"));
    mgf.reader.EndLoad();
    mgf.reader.InitLoad(mgf.Path());
    EXPECT_EQ(mgf.Load("c"), "c|5|2+|scan 3|rt 0|3:4");
}

TEST(MgfIO, AppendsAndNeverClears)
{
    MgfText mgf(kThree);
    std::vector<Spectrum> spectra(1);
    spectra[0].strTitle = "kept";
    mgf.reader.bLoadOneSpectrum("c", spectra);
    mgf.reader.bLoadNextSpectrum(spectra);
    mgf.reader.tLoadAllSpectra(spectra);
    ASSERT_EQ(spectra.size(), 5u);
    EXPECT_EQ(spectra[0].strTitle, "kept");
    EXPECT_EQ(spectra[1].strTitle, "c");
    EXPECT_EQ(spectra[4].strTitle, "c");
}

TEST(MgfIO, SpectraAreCopies)
{
    MgfText mgf(kThree);
    std::vector<Spectrum> spectra;
    mgf.reader.bLoadOneSpectrum("b", spectra);
    spectra[0].vPeaks[0].vMatchRes.resize(3);
    spectra[0].vPeaks.clear();
    EXPECT_EQ(mgf.Load("b"), "b|5|2+|scan 0|rt 0|1:2");
}

TEST(MgfIO, TwoReadersOfOneFileDoNotDisturbEachOther)
{
    MgfText mgf(kThree);
    MgfIO other;
    other.InitLoad(mgf.Path());
    std::vector<Spectrum> spectra;
    mgf.reader.bLoadNextSpectrum(spectra);
    other.bLoadNextSpectrum(spectra);
    mgf.reader.EndLoad();
    other.bLoadNextSpectrum(spectra);
    EXPECT_THAT(Dump(spectra), ElementsAre("a|0|0+|scan 0|rt 9|5:6", "a|0|0+|scan 0|rt 9|5:6",
                                           "b|5|2+|scan 0|rt 9|1:2"));
}

TEST(MgfIO, InitMemberClearsThePeaksAndMakesRoom)
{
    MgfProbe reader;
    EXPECT_EQ(reader.Extension(), ".mgf");
    EXPECT_GE(reader.Current().vPeaks.capacity(), 256u);
    reader.Current().vPeaks.resize(1000);
    const std::size_t room = reader.Current().vPeaks.capacity();
    reader.InitMember();
    EXPECT_TRUE(reader.Current().vPeaks.empty());
    EXPECT_EQ(reader.Current().vPeaks.capacity(), room) << "more room stays";
    EXPECT_EQ(reader.Extension(), ".mgf");
}

} // namespace
} // namespace Vorlan::test
