// A pool over datasets of all formats.
#include <string>
#include <vector>

#include "spectra/DtaProbe.h"
#include "spectra/PoolText.h"
#include "support/Exceptions.h"

namespace Vorlan::test {
namespace {

using testing::ElementsAre;

const std::string kM1 = "m1|0|0+|scan 0|rt 0|1:2";
const std::string kA = "a.dta|400.5|1+|scan 0|rt 0|3:4|from run\\";
const std::string kB = "b.dta|500.5|1+|scan 0|rt 0|5:6|from run\\";

class DatasetIOPoolFormats : public testing::Test {
protected:
    /// "run" with two DTA files, an mzML, an MGF and an mzXML file, in that order.
    std::vector<DatasetSource> Sources() const
    {
        return {{run_.Parent() + "/", "run", DatasetType::Dta},
                Other("a.mzML", DatasetType::MzMl),
                mgf_.Dataset("m.mgf", Record("m1", "1 2")),
                Other("b.mzXML", DatasetType::MzXml)};
    }

    DatasetSource Other(const std::string& name, DatasetType::EDatasetType type) const
    {
        DatasetSource source = mgf_.Dataset(name, "<mzML/>\n");
        source.eType = type;
        return source;
    }

    const DtaFolder run_{{"b.dta", "500.5 1\n5 6\n"}, {"a.dta", "400.5 1\n3 4\n"}};
    const PoolFolder mgf_{};
    DatasetIOPool pool_;
};

TEST_F(DatasetIOPoolFormats, PrintsNothingButItsProgress)
{
    EXPECT_EQ(OutputOf([&] { pool_.InitLoad(Sources()); }),
              kPoolStart + "1/4\b\b\b2/4\b\b\b3/4\b\b\b4/4\b\b\b" + kPoolDone);
}

TEST_F(DatasetIOPoolFormats, ServesOneDatasetAfterTheOther)
{
    QuietInitLoad(pool_, Sources());
    EXPECT_EQ(pool_.tGetDatasetNumber(), 4u);
    std::vector<std::string> titles;
    std::vector<Spectrum> spectra;
    while (pool_.bLoadNextSpectrum(spectra)) {
        titles.push_back(spectra.back().strTitle);
    }
    EXPECT_THAT(titles, ElementsAre("a.dta", "b.dta", "m1"));
    EXPECT_EQ(spectra[0].strSource, run_.Parent() + "/\\run\\");
    EXPECT_EQ(spectra[2].strSource, "");
}

TEST_F(DatasetIOPoolFormats, CountsFilesOfAFolderAndNothingOfAnMzMLFile)
{
    QuietInitLoad(pool_, Sources());
    EXPECT_EQ(pool_.tGetSpecNumber(), 3u);
    QuietInitLoad(pool_,
                  {Other("a.mzML", DatasetType::MzMl), Other("b.mzXML", DatasetType::MzXml)});
    EXPECT_EQ(pool_.tGetDatasetNumber(), 2u);
    EXPECT_EQ(pool_.tGetSpecNumber(), 0u);
    EXPECT_THAT(RestOf(pool_), ElementsAre());
}

TEST_F(DatasetIOPoolFormats, LoadAllGivesWhatIsLeftOfAFolderToo)
{
    QuietInitLoad(pool_, Sources());
    std::vector<Spectrum> spectra;
    pool_.bLoadNextSpectrum(spectra);
    EXPECT_EQ(pool_.tLoadAllSpectra(spectra), 3u) << "the pool itself does not start over";
    EXPECT_EQ(spectra.at(1).strTitle, "b.dta");
    pool_.ResetIter();
    EXPECT_EQ(RestOf(pool_).size(), 3u);
}

TEST_F(DatasetIOPoolFormats, LoadsByDatasetAndName)
{
    const DatasetSource run(run_.Parent(), "run", DatasetType::Dta);
    QuietInitLoad(pool_, {run, mgf_.Dataset("m.mgf", Record("m1", "1 2"))});
    std::vector<Spectrum> spectra;
    ASSERT_TRUE(pool_.bLoadOneSpectrum("run", "b.dta", spectra));
    ASSERT_TRUE(pool_.bLoadOneSpectrum("run", "a.dta", spectra));
    ASSERT_TRUE(pool_.bLoadOneSpectrum("m.mgf", "m1", spectra));
    EXPECT_EQ(spectra[0].strSource, run_.Parent() + "\\run\\");
    for (Spectrum& spectrum : spectra) {
        spectrum.strSource = spectrum.strSource.empty() ? "" : "run\\";
    }
    EXPECT_THAT(Dump(spectra), ElementsAre(kB, kA, kM1));
}

TEST_F(DatasetIOPoolFormats, UnknownNamesAreToldByEachReaderInItsWords)
{
    QuietInitLoad(pool_, Sources());
    const std::string path = run_.Parent() + "/\\run\\m1";
    EXPECT_EQ(OutputOf([&] { EXPECT_EQ(LoadFrom(pool_, "run", "m1"), "none"); }),
              DtaNotOpened(path));
    EXPECT_EQ(OutputOf([&] { EXPECT_EQ(LoadFrom(pool_, "a.mzML", "m1"), "none"); }),
              "\nUnable to load spectrum m1\n");
    EXPECT_EQ(OutputOf([&] { EXPECT_EQ(LoadFrom(pool_, "b.mzXML", "m1"), "none"); }),
              "\nUnable to load spectrum m1\n");
}

TEST_F(DatasetIOPoolFormats, AnUnknownDatasetThrowsAsEver)
{
    QuietInitLoad(pool_, Sources());
    for (const std::string name : {"run\\", "RUN", "a.mzml", ""}) {
        EXPECT_EQ(ThrownBy([&] { LoadFrom(pool_, name, "a.dta"); }),
                  (Thrown{"FileNotFound", "SpectraIO", "DatasetIOPool::bLoadOneSpectrum",
                          "the file '" + name + "' could not be found"}));
    }
}

TEST_F(DatasetIOPoolFormats, HasSpectrumIsQuietAndKnowsWhatCanBeLoaded)
{
    std::vector<DatasetSource> sources = Sources();
    sources.emplace_back(run_.Parent(), "missing", DatasetType::Dta);
    QuietInitLoad(pool_, sources);
    run_.Write("later.dta", "600.5 1\n");
    std::filesystem::create_directory(run_.PathOf("x.dta"));
    EXPECT_EQ(OutputOf([&] {
                  EXPECT_TRUE(pool_.bHasSpectrum("run", "a.dta"));
                  EXPECT_TRUE(pool_.bHasSpectrum("run", "b.dta"));
                  EXPECT_TRUE(pool_.bHasSpectrum("run", "later.dta")) << "listed or not";
                  EXPECT_TRUE(pool_.bHasSpectrum("m.mgf", "m1"));
                  EXPECT_FALSE(pool_.bHasSpectrum("run", "c.dta"));
                  EXPECT_FALSE(pool_.bHasSpectrum("run", "A.dta"));
                  EXPECT_FALSE(pool_.bHasSpectrum("run", "x.dta")) << "a folder";
                  EXPECT_FALSE(pool_.bHasSpectrum("run", ""));
                  EXPECT_FALSE(pool_.bHasSpectrum("run", std::string("a.dta\0", 6)));
                  EXPECT_FALSE(pool_.bHasSpectrum("missing", "a.dta"));
                  EXPECT_FALSE(pool_.bHasSpectrum("a.mzML", "a.dta"));
                  EXPECT_FALSE(pool_.bHasSpectrum("b.mzXML", ""));
                  EXPECT_FALSE(pool_.bHasSpectrum("no", "a.dta"));
                  pool_.EndLoad();
                  EXPECT_FALSE(pool_.bHasSpectrum("run", "a.dta"));
              }),
              "");
}

TEST_F(DatasetIOPoolFormats, HasSpectrumDisturbsNeitherIterationNorLoading)
{
    QuietInitLoad(pool_, Sources());
    std::vector<Spectrum> spectra;
    pool_.bLoadNextSpectrum(spectra);
    EXPECT_TRUE(pool_.bHasSpectrum("run", "a.dta"));
    EXPECT_FALSE(pool_.bHasSpectrum("run", "c.dta"));
    pool_.bLoadNextSpectrum(spectra);
    EXPECT_EQ(spectra.at(1).strTitle, "b.dta");
    EXPECT_EQ(spectra[1].vPeaks.size(), 1u);
}

TEST_F(DatasetIOPoolFormats, B71_AFolderThatIsMissingIsPassedOverInSilence)
{
    std::vector<DatasetSource> sources = Sources();
    sources.insert(sources.begin(), {run_.Parent(), "missing", DatasetType::Dta});
    EXPECT_EQ(OutputOf([&] { pool_.InitLoad(sources); }),
              kPoolStart + "1/5\b\b\b2/5\b\b\b3/5\b\b\b4/5\b\b\b5/5\b\b\b" + kPoolDone);
    EXPECT_EQ(RestOf(pool_).size(), 3u);
    EXPECT_EQ(OutputOf([&] { EXPECT_EQ(LoadFrom(pool_, "missing", "a.dta"), "none"); }),
              DtaNotOpened(run_.Parent() + "\\missing\\a.dta"));
}

TEST_F(DatasetIOPoolFormats, EndLoadOfOneCopyEmptiesTheFolderOfTheOther)
{
    QuietInitLoad(pool_, Sources());
    DatasetIOPool copy(pool_);
    EXPECT_EQ(copy.tGetSpecNumber(), 3u);
    pool_.EndLoad();
    EXPECT_EQ(copy.tGetSpecNumber(), 1u) << "the name of the MGF file stays";
    EXPECT_FALSE(copy.bHasSpectrum("run", "a.dta"));
    copy.EndLoad();
}

} // namespace
} // namespace Vorlan::test
