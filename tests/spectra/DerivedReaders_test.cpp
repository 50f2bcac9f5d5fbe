// Readers that a host derives: which of their members the others call, in what order,
// and what comes of the results.
#include <new>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "spectra/DtaProbe.h"
#include "spectra/MgfProbe.h"
#include "support/FailingMemory.h"
#include "support/OpenFiles.h"

namespace Vorlan::test {
namespace {

using testing::ElementsAre;

const char* const kTwoRecords = "BEGIN IONS\nTITLE=a\nPEPMASS=5\n1 2\nEND IONS\n"
                                "BEGIN IONS\nTITLE=b\n3 4\nEND IONS\n";
const char* const kOneRecord = "BEGIN IONS\nTITLE=z\n7 8\nEND IONS\n";

const std::string kFirstDta = "a.dta|400.5|1+|scan 0|rt 0|1:2|from run\\";
const std::string kSecondDta = "b.dta|500.5|1+|scan 0|rt 0|3:4|from run\\";
const std::string kThirdDta = "c.dta|600.5|1+|scan 0|rt 0||from run\\";

/// Charge 1, so that the precursor m/z is MH.
DtaFolder DtaFiles()
{
    return DtaFolder{
        {"a.dta", "400.5 1\n1 2\n"}, {"b.dta", "500.5 1\n3 4\n"}, {"c.dta", "600.5 1\n"}};
}

// ---- Who is called ---------------------------------------------------------

/// Keeps the calls of members that both kinds of readers have.
template <typename Reader>
class Logged : public Reader {
public:
    void ResetIter() override
    {
        Log("ResetIter of " + std::to_string(this->tGetInputSpecNumber()));
        Reader::ResetIter();
    }

    /// Those since it was asked last.
    std::vector<std::string> Calls() { return std::exchange(calls_, {}); }

protected:
    bool bOpenInputFile(const std::string& path) override
    {
        Log("bOpenInputFile " + path);
        return Reader::bOpenInputFile(path);
    }
    void CloseInputFile() override
    {
        Log("CloseInputFile");
        Reader::CloseInputFile();
    }
    bool bGetOneSpec() override
    {
        Log("bGetOneSpec");
        return Reader::bGetOneSpec();
    }

    void Log(const std::string& call) { calls_.push_back(call); }

private:
    std::vector<std::string> calls_;
};

class LoggedMgf : public Logged<MgfIO> {
protected:
    void SetMap() override
    {
        Log("SetMap");
        Logged::SetMap();
    }
};

TEST(DerivedReaders, InitLoadOfAFileOpensItSetsTheMapAndStartsTheIteration)
{
    const TempFolder folder;
    const std::string first = folder.Write("first.mgf", kTwoRecords);
    const std::string second = folder.Write("second.mgf", kOneRecord);
    LoggedMgf reader;
    reader.InitLoad(first);
    EXPECT_THAT(reader.Calls(), ElementsAre("bOpenInputFile " + first, "SetMap", "ResetIter of 2"));
    EXPECT_EQ(OutputOf([&] { reader.InitLoad(second); }), "");
    EXPECT_THAT(reader.Calls(), ElementsAre("bOpenInputFile " + second, "SetMap", "ResetIter of 1"))
        << "the first file is closed without a call";
    std::vector<Spectrum> spectra;
    EXPECT_EQ(reader.tLoadAllSpectra(spectra), 1u);
    EXPECT_THAT(Dump(spectra), ElementsAre("z|0|0+|scan 0|rt 0|7:8"));
}

TEST(DerivedReaders, InitLoadOfAMissingFileGoesOnAllTheSame)
{
    const TempFolder folder;
    const std::string missing = folder.PathOf("missing.mgf");
    LoggedMgf reader;
    EXPECT_EQ(OutputOf([&] { reader.InitLoad(missing); }), MgfNotOpened(missing));
    EXPECT_THAT(reader.Calls(),
                ElementsAre("bOpenInputFile " + missing, "SetMap", "ResetIter of 0"));
}

TEST(DerivedReaders, ASpectrumOfAFileIsReadWithoutOpeningAndEndLoadCloses)
{
    const MgfText mgf(kTwoRecords);
    LoggedMgf reader;
    reader.InitLoad(mgf.Path());
    reader.Calls();
    std::vector<Spectrum> spectra;
    EXPECT_TRUE(reader.bLoadOneSpectrum("b", spectra));
    EXPECT_THAT(reader.Calls(), ElementsAre("bGetOneSpec"));
    OutputOf([&] { EXPECT_FALSE(reader.bLoadOneSpectrum("unknown", spectra)); });
    EXPECT_THAT(reader.Calls(), ElementsAre());
    reader.EndLoad();
    EXPECT_THAT(reader.Calls(), ElementsAre("CloseInputFile"));
}

TEST(DerivedReaders, InitLoadOfAFolderListsItAndStartsTheIteration)
{
    const DtaFolder folder = DtaFiles();
    Logged<DtaIO> reader;
    reader.InitLoad(folder.Path());
    EXPECT_THAT(reader.Calls(), ElementsAre("ResetIter of 3"));
}

TEST(DerivedReaders, ASpectrumOfAFolderIsOpenedReadAndClosed)
{
    const DtaFolder folder = DtaFiles();
    Logged<DtaIO> reader;
    reader.InitLoad(folder.Path());
    reader.Calls();
    std::vector<Spectrum> spectra;
    EXPECT_TRUE(reader.bLoadOneSpectrum("b.dta", spectra));
    EXPECT_THAT(reader.Calls(), ElementsAre("bOpenInputFile " + folder.ComposedPathOf("b.dta"),
                                            "bGetOneSpec", "CloseInputFile"));
    OutputOf([&] { EXPECT_FALSE(reader.bLoadOneSpectrum("missing", spectra)); });
    EXPECT_THAT(reader.Calls(), ElementsAre("bOpenInputFile " + folder.ComposedPathOf("missing")));
}

TEST(DerivedReaders, LoadAllOfAFolderStartsTheIterationAnew)
{
    const DtaFolder folder{{"a.dta", ""}, {"b.dta", ""}};
    Logged<DtaIO> reader;
    reader.InitLoad(folder.Path());
    reader.Calls();
    std::vector<Spectrum> spectra;
    EXPECT_EQ(reader.tLoadAllSpectra(spectra), 2u);
    EXPECT_THAT(reader.Calls(),
                ElementsAre("ResetIter of 2", "bOpenInputFile " + folder.ComposedPathOf("a.dta"),
                            "bGetOneSpec", "CloseInputFile",
                            "bOpenInputFile " + folder.ComposedPathOf("b.dta"), "bGetOneSpec",
                            "CloseInputFile"));
}

// ---- What comes of the results ---------------------------------------------

/// Reads each spectrum and says that it did not.
class MgfThatReadsNothing : public MgfIO {
protected:
    bool bGetOneSpec() override { return !MgfIO::bGetOneSpec(); }
};

TEST(DerivedReaders, ASpectrumOfAFileIsGivenWhateverCameOfReadingIt)
{
    const MgfText mgf(kTwoRecords);
    MgfThatReadsNothing reader;
    reader.InitLoad(mgf.Path());
    std::vector<Spectrum> spectra;
    EXPECT_EQ(OutputOf([&] { EXPECT_TRUE(reader.bLoadOneSpectrum("a", spectra)); }), "");
    EXPECT_THAT(Dump(spectra), ElementsAre("a|5|0+|scan 0|rt 0|1:2"));
    EXPECT_TRUE(reader.bLoadNextSpectrum(spectra));
    EXPECT_EQ(reader.tLoadAllSpectra(spectra), 1u) << "the one that is left";
    EXPECT_EQ(spectra.size(), 3u);
}

/// Reads "b.dta" and says that it did not.
class DtaThatReadsNoB : public DtaIO {
protected:
    bool bGetOneSpec() override { return DtaIO::bGetOneSpec() && cSpectrum_.strTitle != "b.dta"; }
};

TEST(DerivedReaders, ASpectrumOfAFolderThatWasNotReadIsGivenWithFalse)
{
    const DtaFolder folder = DtaFiles();
    const auto before = OpenFileCount();
    DtaThatReadsNoB reader;
    reader.InitLoad(folder.Path());
    std::vector<Spectrum> spectra;
    EXPECT_EQ(OutputOf([&] { EXPECT_FALSE(reader.bLoadOneSpectrum("b.dta", spectra)); }), "");
    EXPECT_THAT(Dump(spectra), ElementsAre(kSecondDta));
    EXPECT_EQ(OpenFileCount(), before) << "it is closed";
    EXPECT_EQ(reader.tLoadAllSpectra(spectra), 2u);
    EXPECT_THAT(Dump(spectra), ElementsAre(kSecondDta, kFirstDta, kSecondDta, kThirdDta));
}

TEST(DerivedReaders, TheNextSpectrumOfAFolderIsTheNextThatWasRead)
{
    const DtaFolder folder = DtaFiles();
    DtaThatReadsNoB reader;
    reader.InitLoad(folder.Path());
    std::vector<Spectrum> spectra;
    EXPECT_TRUE(reader.bLoadNextSpectrum(spectra));
    EXPECT_THAT(Dump(spectra), ElementsAre(kFirstDta));
    EXPECT_TRUE(reader.bLoadNextSpectrum(spectra));
    EXPECT_THAT(Dump(spectra), ElementsAre(kFirstDta, kSecondDta, kThirdDta));
    EXPECT_FALSE(reader.bLoadNextSpectrum(spectra));
}

/// Gives up at "a.dta".
class DtaThatThrowsAtA : public DtaIO {
protected:
    bool bGetOneSpec() override
    {
        if (cSpectrum_.strTitle == "a.dta") {
            throw std::runtime_error("a.dta is not read");
        }
        return DtaIO::bGetOneSpec();
    }
};

TEST(DerivedReaders, AnExceptionPassesThroughAndLeavesNoFileOpen)
{
    const DtaFolder folder = DtaFiles();
    const auto before = OpenFileCount();
    DtaThatThrowsAtA reader;
    reader.InitLoad(folder.Path());
    std::vector<Spectrum> spectra;
    EXPECT_THROW(reader.bLoadOneSpectrum("a.dta", spectra), std::runtime_error);
    EXPECT_TRUE(spectra.empty());
    EXPECT_EQ(OpenFileCount(), before);
    EXPECT_EQ(OutputOf([&] { EXPECT_TRUE(reader.bLoadOneSpectrum("b.dta", spectra)); }), "");
    EXPECT_THAT(Dump(spectra), ElementsAre(kSecondDta));
}

/// Lists its folder anew whenever it opens a file.
class DtaThatListsAnew : public DtaIO {
protected:
    bool bOpenInputFile(const std::string& path) override
    {
        SetFilenameList();
        return DtaIO::bOpenInputFile(path);
    }
};

TEST(DerivedReaders, AListThatChangesMeanwhileChangesNoTitle)
{
    for (const bool isAll : {false, true}) {
        const DtaFolder folder = DtaFiles();
        DtaThatListsAnew reader;
        reader.InitLoad(folder.Path());
        folder.Write("0.dta", "300.5 1\n");
        std::vector<Spectrum> spectra;
        if (isAll) {
            reader.tLoadAllSpectra(spectra);
        } else {
            reader.bLoadNextSpectrum(spectra);
        }
        EXPECT_EQ(Dump(spectra).front(), kFirstDta);
    }
}

// A derived class that throws is one way out of a load; memory that ends is another.
TEST(DtaLoading, NoFileStaysOpenWhereMemoryEnds)
{
    PELGRIN_NEEDS_FAILING_MEMORY();
    const std::string name = std::string(100, 'n') + ".dta"; // with memory of its own
    const DtaFolder folder{{name, "400.5 1\n1 2\n"}};
    const auto before = OpenFileCount();
    std::size_t number = 1;
    for (bool failed = true; failed; ++number) {
        DtaIO reader;
        reader.InitLoad(folder.Path());
        std::vector<Spectrum> spectra;
        try {
            const FailingMemory memory(number);
            reader.bLoadOneSpectrum(name, spectra);
            failed = false;
        } catch (const std::bad_alloc&) {
        }
        ASSERT_EQ(OpenFileCount(), before) << number;
        EXPECT_EQ(OutputOf([&] { EXPECT_TRUE(reader.bLoadOneSpectrum(name, spectra)); }), "");
    }
    EXPECT_GT(number, 4u);
}

} // namespace
} // namespace Vorlan::test
