// Real mzML and mzXML files: opened, and without spectra.
#include <filesystem>
#include <string>
#include <vector>

#include "SpectraIO.h"
#include "support/Support.h"

namespace Vorlan::test {
namespace {

struct UnparsedFile {
    const char* folder;
    const char* name;
    DatasetType::EDatasetType type;
};

const UnparsedFile kFiles[] = {
    {"mzml", "Ecoli_MS2_small.mzML", DatasetType::MzMl},
    {"mzml", "tiny.pwiz.1.1.mzML", DatasetType::MzMl},
    {"comet/PRG2012_set", "201208-378803.mzML", DatasetType::MzMl},
    {"mzxml", "pyteomics_test.mzXML", DatasetType::MzXml},
    {"mzxml", "DDA-10-scans-no-index.mzXML", DatasetType::MzXml},
};

TEST(RealUnparsed, B73_FilesAreOpenedAndHaveNoSpectra)
{
    PELGRIN_NEEDS_REAL_DATA();
    for (const UnparsedFile& file : kFiles) {
        SpectraIO* pReader = SpecIOFactory::pGetSpectraIO(file.type);
        const std::string path = RealDataFolder() + "/" + file.folder + "/" + file.name;
        ASSERT_TRUE(std::filesystem::exists(path)) << path;
        std::vector<Spectrum> spectra;
        EXPECT_EQ(OutputOf([&] {
                      pReader->InitLoad(path);
                      pReader->tLoadAllSpectra(spectra);
                  }),
                  "")
            << path;
        EXPECT_TRUE(spectra.empty()) << path;
        EXPECT_EQ(pReader->tGetInputSpecNumber(), 0u) << path;
        SpecIOFactory::DesctroySpectraIO(pReader);
    }
}

TEST(RealUnparsed, APoolOfThemHasNoSpectra)
{
    PELGRIN_NEEDS_REAL_DATA();
    std::vector<DatasetSource> sources;
    for (const UnparsedFile& file : kFiles) {
        sources.emplace_back(RealDataFolder() + "/" + file.folder, file.name, file.type);
    }
    DatasetIOPool pool;
    const std::string output = OutputOf([&] { pool.InitLoad(sources); });
    EXPECT_EQ(output.find("error"), std::string::npos) << output;
    EXPECT_EQ(pool.tGetDatasetNumber(), 5u);
    EXPECT_EQ(pool.tGetSpecNumber(), 0u);
    EXPECT_FALSE(pool.bHasSpectrum("tiny.pwiz.1.1.mzML", "scan=1"));
}

} // namespace
} // namespace Vorlan::test
