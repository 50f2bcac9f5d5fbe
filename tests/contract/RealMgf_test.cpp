// MGF files of many programs. Each must give what the plain twin gives, and
// the numbers that were counted in it by other means.
#include <algorithm>
#include <filesystem>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "spectra/MgfProbe.h"

namespace Vorlan::test {
namespace {

/// The MGF files below the folder of the real files, their paths relative to it.
std::vector<std::string> RealMgfFiles()
{
    std::vector<std::string> files;
    const std::string folder = RealDataFolder();
    if (folder.empty()) {
        return files;
    }
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file() && entry.path().extension() == ".mgf") {
            files.push_back(std::filesystem::relative(entry.path(), folder).string());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::string PathOf(const std::string& file)
{
    return RealDataFolder() + "/" + file;
}

struct CountedFile {
    std::string file;
    std::uint64_t names;
};

const std::vector<CountedFile> kCounted = {
    {"comet/F13_set/F13.mgf", 5624},
    {"comet/Jurkat_set/PV_Jurk_Promega50_IAP_minwash.mgf", 8000},
    {"mgf/Bruker_Cmpd_crlf.mgf", 22},
    {"mgf/OpenMS_Ecoli_MS2_small.mgf", 556},
    {"mgf/ThermoRawFileParser_really_small.mgf", 69},
    {"mgf/ThermoRaw_withEmptySpectra_BOM.mgf", 3},
    {"mgf/msconvert_SmallCalibratibleYeast.mgf", 472},
    {"mgf/msconvert_tpp_small.mgf", 136},
    {"mgf/pParse_BSA_DSSO.part1.mgf", 600},
};

TEST(RealMgf, NumbersOfNames)
{
    PELGRIN_NEEDS_REAL_DATA();
    for (const CountedFile& row : kCounted) {
        MgfIO reader;
        EXPECT_EQ(OutputOf([&] { reader.InitLoad(PathOf(row.file)); }), "") << row.file;
        EXPECT_EQ(reader.tGetInputSpecNumber(), row.names) << row.file;
    }
}

TEST(RealMgf, NamesAndPositionsAreThoseOfThePlainTwin)
{
    PELGRIN_NEEDS_REAL_DATA();
    const std::vector<std::string> files = RealMgfFiles();
    ASSERT_GE(files.size(), kCounted.size());
    for (const std::string& file : files) {
        MgfProbe reader;
        reader.InitLoad(PathOf(file));
        const PlainMgf twin(PathOf(file));
        const std::vector<std::pair<std::string, std::uint64_t>> entries(twin.Names().begin(),
                                                                         twin.Names().end());
        EXPECT_FALSE(entries.empty()) << file;
        EXPECT_EQ(reader.Entries(), entries) << file;
    }
}

TEST(RealMgf, SpectraInOrderAreThoseOfThePlainTwin)
{
    PELGRIN_NEEDS_REAL_DATA();
    for (const std::string& file : RealMgfFiles()) {
        MgfIO reader;
        reader.InitLoad(PathOf(file));
        PlainMgf twin(PathOf(file));
        std::vector<Spectrum> spectra;
        for (const auto& name : twin.Names()) {
            spectra.clear();
            ASSERT_TRUE(reader.bLoadNextSpectrum(spectra)) << file;
            ASSERT_EQ(ExactDump(spectra.at(0)), ExactDump(twin.Load(name.first))) << file;
        }
        EXPECT_FALSE(reader.bLoadNextSpectrum(spectra)) << file;
    }
}

TEST(RealMgf, SpectraByNameInAnyOrderAreThoseOfThePlainTwin)
{
    PELGRIN_NEEDS_REAL_DATA();
    std::mt19937 random(5);
    for (const std::string& file : RealMgfFiles()) {
        MgfIO reader;
        reader.InitLoad(PathOf(file));
        PlainMgf twin(PathOf(file));
        std::vector<std::string> names;
        for (const auto& name : twin.Names()) {
            names.push_back(name.first);
        }
        std::shuffle(names.begin(), names.end(), random);
        for (const std::string& name : names) {
            std::vector<Spectrum> spectra;
            ASSERT_TRUE(reader.bLoadOneSpectrum(name, spectra)) << file << " " << name;
            ASSERT_EQ(ExactDump(spectra.at(0)), ExactDump(twin.Load(name))) << file;
        }
    }
}

struct WholeSet {
    std::string file;
    std::size_t spectra;
    std::size_t namesOfEach;
    std::size_t peaks;
};

/// Every record is reached under each of its names and has its own peaks: all
/// of them together are the peak lines of the file.
void CheckWholeSet(const WholeSet& set)
{
    MgfProbe reader;
    reader.InitLoad(PathOf(set.file));
    std::map<std::uint64_t, std::set<std::size_t>> peaksAt;
    std::map<std::uint64_t, std::size_t> namesAt;
    for (const auto& [name, position] : reader.Entries()) {
        std::vector<Spectrum> spectra;
        ASSERT_TRUE(reader.bLoadOneSpectrum(name, spectra));
        peaksAt[position].insert(spectra.at(0).vPeaks.size());
        ++namesAt[position];
    }
    EXPECT_EQ(peaksAt.size(), set.spectra);
    std::size_t peaks = 0;
    for (const auto& [position, sizes] : peaksAt) {
        EXPECT_EQ(sizes.size(), 1u) << "at " << position;
        EXPECT_EQ(namesAt[position], set.namesOfEach) << "at " << position;
        peaks += *sizes.begin();
    }
    EXPECT_EQ(peaks, set.peaks);
}

TEST(RealMgf, EverySpectrumOfTheF13SetHasItsPeaksUnderEachName)
{
    PELGRIN_NEEDS_REAL_DATA();
    CheckWholeSet({"comet/F13_set/F13.mgf", 1406, 4, 138172});
}

TEST(RealMgf, EverySpectrumOfTheJurkatSetHasItsPeaksUnderEachName)
{
    PELGRIN_NEEDS_REAL_DATA();
    CheckWholeSet({"comet/Jurkat_set/PV_Jurk_Promega50_IAP_minwash.mgf", 2000, 4, 127393});
}

} // namespace
} // namespace Vorlan::test
