// What the pool loads, finds and counts.
#include <string>
#include <vector>

#include "spectra/PoolText.h"
#include "support/Exceptions.h"

namespace Vorlan::test {
namespace {

using testing::ElementsAre;

const std::string kA1 = "a1|0|0+|scan 0|rt 0|1:2";
const std::string kA2 = "a2|0|0+|scan 0|rt 0|3:4";
const std::string kB1 = "b1|0|0+|scan 0|rt 0|5:6";

Thrown UnknownDataset(const std::string& name)
{
    return {"FileNotFound", "SpectraIO", "DatasetIOPool::bLoadOneSpectrum",
            "the file '" + name + "' could not be found"};
}

TEST(DatasetIOPool, IsEmptyBeforeInitLoad)
{
    DatasetIOPool pool;
    std::vector<Spectrum> spectra;
    EXPECT_EQ(pool.tGetDatasetNumber(), 0u);
    EXPECT_EQ(pool.tGetSpecNumber(), 0u);
    EXPECT_FALSE(pool.bLoadNextSpectrum(spectra));
    EXPECT_EQ(pool.tLoadAllSpectra(spectra), 0u);
    EXPECT_FALSE(pool.bHasSpectrum("", ""));
    pool.ResetIter();
    pool.EndLoad();
}

TEST(DatasetIOPool, ServesOneDatasetAfterTheOther)
{
    const PoolFolder folder;
    DatasetIOPool pool;
    QuietInitLoad(pool, folder.TwoDatasets());
    EXPECT_EQ(pool.tGetDatasetNumber(), 2u);
    std::vector<Spectrum> spectra;
    EXPECT_TRUE(pool.bLoadNextSpectrum(spectra));
    EXPECT_TRUE(pool.bLoadNextSpectrum(spectra));
    EXPECT_TRUE(pool.bLoadNextSpectrum(spectra));
    EXPECT_FALSE(pool.bLoadNextSpectrum(spectra));
    EXPECT_FALSE(pool.bLoadNextSpectrum(spectra));
    EXPECT_THAT(Dump(spectra), ElementsAre(kA1, kA2, kB1));
}

TEST(DatasetIOPool, EmptyDatasetsArePassedOver)
{
    const PoolFolder folder;
    std::vector<DatasetSource> sources = {folder.Dataset("empty.mgf", "")};
    for (const DatasetSource& source : folder.TwoDatasets()) {
        sources.push_back(source);
        sources.emplace_back(folder.Path(), "missing.mgf", DatasetType::Mgf);
    }
    DatasetIOPool pool;
    QuietInitLoad(pool, sources);
    EXPECT_EQ(pool.tGetDatasetNumber(), 5u);
    EXPECT_THAT(RestOf(pool), ElementsAre(kA1, kA2, kB1));
}

TEST(DatasetIOPool, ResetIterStartsAtTheFirstDataset)
{
    const PoolFolder folder;
    DatasetIOPool pool;
    QuietInitLoad(pool, folder.TwoDatasets());
    std::vector<Spectrum> spectra;
    pool.bLoadNextSpectrum(spectra);
    pool.ResetIter();
    EXPECT_THAT(RestOf(pool), ElementsAre(kA1, kA2, kB1));
    EXPECT_THAT(RestOf(pool), ElementsAre());
    pool.ResetIter();
    EXPECT_THAT(RestOf(pool), ElementsAre(kA1, kA2, kB1));
}

TEST(DatasetIOPool, B09_LoadAllGivesTheSizeOfTheVector)
{
    const PoolFolder folder;
    DatasetIOPool pool;
    QuietInitLoad(pool, folder.TwoDatasets());
    std::vector<Spectrum> spectra(3);
    EXPECT_EQ(pool.tLoadAllSpectra(spectra), 6u);
    EXPECT_EQ(pool.tLoadAllSpectra(spectra), 6u) << "nothing is left, the vector is as long";
}

TEST(DatasetIOPool, LoadsByDatasetAndName)
{
    const PoolFolder folder;
    DatasetIOPool pool;
    QuietInitLoad(pool, folder.TwoDatasets());
    EXPECT_EQ(LoadFrom(pool, "b.mgf", "b1"), kB1);
    EXPECT_EQ(LoadFrom(pool, "a.mgf", "a2"), kA2);
    EXPECT_THAT(RestOf(pool), ElementsAre(kA1, kA2, kB1)) << "the iteration does not move";
    EXPECT_EQ(LoadFrom(pool, "a.mgf", "a1"), kA1);
}

TEST(DatasetIOPool, EachDatasetKeepsItsOwnValues)
{
    const PoolFolder folder;
    DatasetIOPool pool;
    QuietInitLoad(pool,
                  {folder.Dataset("a.mgf", Record("a1", "CHARGE=2+\n1 2") + Record("a2", "3 4")),
                   folder.Dataset("b.mgf", Record("b1", "5 6"))});
    EXPECT_EQ(LoadFrom(pool, "a.mgf", "a1"), "a1|0|2+|scan 0|rt 0|1:2");
    EXPECT_EQ(LoadFrom(pool, "b.mgf", "b1"), kB1);
    EXPECT_EQ(LoadFrom(pool, "a.mgf", "a2"), "a2|0|2+|scan 0|rt 0|3:4");
}

TEST(DatasetIOPool, AnUnknownSpectrumIsToldByTheReader)
{
    const PoolFolder folder;
    DatasetIOPool pool;
    QuietInitLoad(pool, folder.TwoDatasets());
    EXPECT_EQ(OutputOf([&] { EXPECT_EQ(LoadFrom(pool, "a.mgf", "b1"), "none"); }),
              "\nUnable to load spectrum b1\n");
}

TEST(DatasetIOPool, AnUnknownDatasetThrows)
{
    const PoolFolder folder;
    DatasetIOPool pool;
    QuietInitLoad(pool, folder.TwoDatasets());
    for (const std::string name : {"c.mgf", "A.mgf", "a", ""}) {
        EXPECT_EQ(ThrownBy([&] { LoadFrom(pool, name, "a1"); }), UnknownDataset(name));
    }
    EXPECT_EQ(ThrownBy([&] { LoadFrom(pool, folder.Path() + "\\a.mgf", "a1"); }),
              UnknownDataset(folder.Path() + "\\a.mgf"));
    EXPECT_THAT(RestOf(pool), ElementsAre(kA1, kA2, kB1)) << "nothing changes in the pool";
}

TEST(DatasetIOPool, TheExceptionBearsItsFixedLine)
{
    DatasetIOPool pool;
    try {
        LoadFrom(pool, "a.mgf", "a1");
        FAIL() << "nothing thrown";
    } catch (const OpenMS::Exception::FileNotFound& e) {
        EXPECT_EQ(e.getLine(), 626);
    }
}

TEST(DatasetIOPool, B85_OfTwoDatasetsWithOneNameTheLaterIsFound)
{
    const PoolFolder first;
    const PoolFolder second;
    DatasetIOPool pool;
    QuietInitLoad(pool, {first.Dataset("a.mgf", Record("a1", "1 2") + Record("x", "1 1")),
                         second.Dataset("a.mgf", Record("a1", "7 8"))});
    EXPECT_EQ(LoadFrom(pool, "a.mgf", "a1"), "a1|0|0+|scan 0|rt 0|7:8");
    EXPECT_EQ(OutputOf([&] { EXPECT_EQ(LoadFrom(pool, "a.mgf", "x"), "none"); }),
              "\nUnable to load spectrum x\n");
    EXPECT_EQ(pool.tGetDatasetNumber(), 2u);
    EXPECT_EQ(RestOf(pool).size(), 3u) << "the iteration gives both";
}

TEST(DatasetIOPool, B22_CountsNamesNotSpectra)
{
    const PoolFolder folder;
    DatasetIOPool pool;
    QuietInitLoad(pool, {folder.Dataset("a.mgf", Record("r.5.5.2 scan=5\"", "1 2")),
                         folder.Dataset("b.mgf", Record("b1", "5 6"))});
    EXPECT_EQ(pool.tGetSpecNumber(), 5u);
}

TEST(DatasetIOPool, HasSpectrumIsQuietAndKnowsWhatCanBeLoaded)
{
    const PoolFolder folder;
    std::vector<DatasetSource> sources = folder.TwoDatasets();
    sources.emplace_back(folder.Path(), "missing.mgf", DatasetType::Mgf);
    sources.emplace_back(folder.Path(), "other", DatasetType::Unknown);
    DatasetIOPool pool;
    QuietInitLoad(pool, sources);
    EXPECT_EQ(OutputOf([&] {
                  EXPECT_TRUE(pool.bHasSpectrum("a.mgf", "a1"));
                  EXPECT_TRUE(pool.bHasSpectrum("b.mgf", "b1"));
                  EXPECT_FALSE(pool.bHasSpectrum("a.mgf", "b1"));
                  EXPECT_FALSE(pool.bHasSpectrum("a.mgf", ""));
                  EXPECT_FALSE(pool.bHasSpectrum("c.mgf", "a1"));
                  EXPECT_FALSE(pool.bHasSpectrum("missing.mgf", "a1"));
                  EXPECT_FALSE(pool.bHasSpectrum("other", "a1"));
                  pool.EndLoad();
                  EXPECT_FALSE(pool.bHasSpectrum("a.mgf", "a1"));
              }),
              "");
}

TEST(DatasetIOPool, DatasetsOfUnknownTypeArePassedOver)
{
    const PoolFolder folder;
    std::vector<DatasetSource> sources = folder.TwoDatasets();
    for (const int type : {0, 5, 99}) {
        sources.insert(sources.begin() + 1, {folder.Path(), "type" + std::to_string(type),
                                             static_cast<DatasetType::EDatasetType>(type)});
    }
    DatasetIOPool pool;
    QuietInitLoad(pool, sources);
    EXPECT_EQ(pool.tGetDatasetNumber(), 5u);
    EXPECT_EQ(pool.tGetSpecNumber(), 3u);
    EXPECT_EQ(OutputOf([&] { EXPECT_EQ(LoadFrom(pool, "type5", "a1"), "none"); }), "");
    EXPECT_EQ(LoadFrom(pool, "b.mgf", "b1"), kB1);
    EXPECT_THAT(RestOf(pool), ElementsAre(kA1, kA2, kB1));
    pool.ResetIter();
    EXPECT_THAT(RestOf(pool), ElementsAre(kA1, kA2, kB1));
    pool.EndLoad();
}

TEST(DatasetIOPool, EndLoadLetsGoOfTheReaders)
{
    const PoolFolder folder;
    DatasetIOPool pool;
    QuietInitLoad(pool, folder.TwoDatasets());
    pool.EndLoad();
    EXPECT_EQ(pool.tGetDatasetNumber(), 2u);
    EXPECT_EQ(pool.tGetSpecNumber(), 0u);
    EXPECT_THAT(RestOf(pool), ElementsAre());
    EXPECT_EQ(OutputOf([&] { EXPECT_EQ(LoadFrom(pool, "a.mgf", "a1"), "none"); }), "");
    EXPECT_EQ(ThrownBy([&] { LoadFrom(pool, "c.mgf", "a1"); }), UnknownDataset("c.mgf"));
    pool.EndLoad();
}

TEST(DatasetIOPool, ASecondInitLoadForgetsTheFirst)
{
    const PoolFolder folder;
    DatasetIOPool pool;
    QuietInitLoad(pool, folder.TwoDatasets());
    RestOf(pool);
    QuietInitLoad(pool, {folder.Dataset("c.mgf", Record("c1", "7 8"))});
    EXPECT_EQ(pool.tGetDatasetNumber(), 1u);
    EXPECT_EQ(ThrownBy([&] { LoadFrom(pool, "a.mgf", "a1"); }), UnknownDataset("a.mgf"));
    EXPECT_THAT(RestOf(pool), ElementsAre("c1|0|0+|scan 0|rt 0|7:8"));
    pool.EndLoad();
    QuietInitLoad(pool, folder.TwoDatasets());
    EXPECT_THAT(RestOf(pool), ElementsAre(kA1, kA2, kB1));
}

TEST(DatasetIOPool, CopiesShareReaders)
{
    const PoolFolder folder;
    DatasetIOPool pool;
    QuietInitLoad(pool, folder.TwoDatasets());
    DatasetIOPool copy(pool);
    std::vector<Spectrum> spectra;
    EXPECT_TRUE(pool.bLoadNextSpectrum(spectra));
    EXPECT_TRUE(copy.bLoadNextSpectrum(spectra));
    EXPECT_THAT(Dump(spectra), ElementsAre(kA1, kA2)) << "the place in a dataset is shared";
    DatasetIOPool assigned;
    assigned = pool;
    EXPECT_EQ(LoadFrom(assigned, "b.mgf", "b1"), kB1);
    EXPECT_EQ(assigned.tGetSpecNumber(), 3u);
}

TEST(DatasetIOPool, EndLoadOfOneCopyClosesTheFilesOfTheOther)
{
    const PoolFolder folder;
    DatasetIOPool pool;
    QuietInitLoad(pool, folder.TwoDatasets());
    DatasetIOPool copy(pool);
    pool.EndLoad();
    EXPECT_EQ(copy.tGetSpecNumber(), 3u);
    EXPECT_EQ(LoadFrom(copy, "a.mgf", "a1"), "a1|0|0+|scan 0|rt 0|");
    copy.EndLoad();
}

TEST(DatasetIOPool, ACopyOutlivesTheOriginal)
{
    const PoolFolder folder;
    DatasetIOPool copy;
    {
        DatasetIOPool pool;
        QuietInitLoad(pool, folder.TwoDatasets());
        copy = pool;
    }
    EXPECT_THAT(RestOf(copy), ElementsAre(kA1, kA2, kB1));
}

} // namespace
} // namespace Vorlan::test
