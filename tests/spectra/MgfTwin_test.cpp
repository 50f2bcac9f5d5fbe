// The reader and its plain twin over thousands of random texts: the same
// names, positions and fields, values carried over included.
#include <filesystem>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "spectra/MgfProbe.h"
#include "spectra/RandomMgf.h"
#include "support/Sanitized.h"

namespace Vorlan::test {
namespace {

/// Loads every name in order, then names at random, with both.
void ExpectAgreement(MgfProbe& reader, const std::string& path, std::mt19937& random)
{
    PlainMgf twin(path);
    const std::vector<std::pair<std::string, std::uint64_t>> entries(twin.Names().begin(),
                                                                     twin.Names().end());
    ASSERT_EQ(reader.Entries(), entries);
    ASSERT_EQ(reader.tGetInputSpecNumber(), entries.size());
    std::vector<Spectrum> spectra;
    ASSERT_EQ(reader.tLoadAllSpectra(spectra), entries.size());
    ASSERT_EQ(spectra.size(), entries.size());
    for (std::size_t i = 0; i < entries.size(); ++i) {
        ASSERT_EQ(ExactDump(spectra[i]), ExactDump(twin.Load(entries[i].first)));
    }
    for (std::size_t loads = 0; loads < 2 * entries.size(); ++loads) {
        const std::string& name = entries[random() % entries.size()].first;
        spectra.clear();
        ASSERT_TRUE(reader.bLoadOneSpectrum(name, spectra));
        ASSERT_EQ(spectra.size(), 1u);
        ASSERT_EQ(ExactDump(spectra[0]), ExactDump(twin.Load(name)));
    }
}

TEST(MgfTwin, AgreesOnRandomTexts)
{
    std::mt19937 random(4711);
    const TempFolder folder;
    std::size_t names = 0;
    for (int round = 0; round < 10000 / kRandomShare; ++round) {
        const std::string text = RandomMgf(random);
        std::filesystem::remove(folder.PathOf("random.mgf")); // new files are quicker
        const std::string path = folder.Write("random.mgf", text);
        MgfProbe reader;
        reader.InitLoad(path);
        names += reader.tGetInputSpecNumber();
        ExpectAgreement(reader, path, random);
        ASSERT_FALSE(HasFatalFailure()) << "round " << round << ", text:\n" << text;
    }
    EXPECT_GT(names, 40000u / kRandomShare) << "the random texts hold hardly any records";
}

TEST(MgfTwin, AgreesOnARandomFileOfManyBlocks)
{
    std::mt19937 random(42);
    const TempFolder folder;
    std::string text;
    for (int i = 0; i < 6000; ++i) {
        text += RandomMgf(random);
        text += "\n";
    }
    const std::string path = folder.Write("large.mgf", text);
    MgfProbe reader;
    reader.InitLoad(path);
    ExpectAgreement(reader, path, random);
}

} // namespace
} // namespace Vorlan::test
