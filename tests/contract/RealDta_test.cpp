// A real folder of DTA files: what was counted in it by other means, and what the
// plain twin gives.
#include <array>
#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

#include "spectra/DtaProbe.h"
#include "spectra/PlainDta.h"
#include "support/CLocale.h"

namespace Vorlan::test {
namespace {

std::string RealFolder()
{
    return RealDataFolder() + "/dta/20030428_4_29L_15";
}

std::vector<Spectrum> RealSpectra()
{
    DtaIO reader;
    reader.InitLoad(RealFolder());
    std::vector<Spectrum> spectra;
    EXPECT_EQ(OutputOf([&] { reader.tLoadAllSpectra(spectra); }), "");
    return spectra;
}

TEST(RealDta, FilesPeaksAndCharges)
{
    PELGRIN_NEEDS_REAL_DATA();
    const std::vector<Spectrum> spectra = RealSpectra();
    ASSERT_EQ(spectra.size(), 480u);
    std::size_t peaks = 0;
    std::array<std::size_t, 4> withCharge = {};
    for (const Spectrum& spectrum : spectra) {
        peaks += spectrum.vPeaks.size();
        ++withCharge.at(spectrum.nCharge);
    }
    EXPECT_EQ(peaks, 76228u);
    EXPECT_THAT(withCharge, testing::ElementsAre(0, 53, 215, 212));
}

TEST(RealDta, TheNameEndsInTheChargeAndDta)
{
    PELGRIN_NEEDS_REAL_DATA();
    for (const Spectrum& spectrum : RealSpectra()) {
        const std::string end = "." + std::to_string(spectrum.nCharge) + ".dta";
        ASSERT_GE(spectrum.strTitle.size(), end.size());
        EXPECT_EQ(spectrum.strTitle.substr(spectrum.strTitle.size() - end.size()), end);
        EXPECT_EQ(spectrum.strSource, RealFolder() + "\\");
    }
}

TEST(RealDta, ThePrecursorIsThatOfTheFormula)
{
    PELGRIN_NEEDS_REAL_DATA();
    constexpr double kProton = 1.0072764667710;
    for (const Spectrum& spectrum : RealSpectra()) {
        const CLocale plain;
        const double mh = std::atof(ReadFile(RealFolder() + "/" + spectrum.strTitle).c_str());
        const auto charge = static_cast<double>(spectrum.nCharge);
        EXPECT_DOUBLE_EQ(spectrum.dPrecursorMz, (mh - kProton) / charge + kProton);
        EXPECT_NEAR((spectrum.dPrecursorMz - kProton) * charge + kProton, mh, 1e-9);
    }
}

TEST(RealDta, SpectraAreThoseOfThePlainTwin)
{
    PELGRIN_NEEDS_REAL_DATA();
    DtaProbe reader;
    reader.InitLoad(RealFolder());
    const std::vector<Spectrum> spectra = RealSpectra();
    ASSERT_EQ(spectra.size(), reader.Filenames().size());
    for (std::size_t i = spectra.size(); i-- > 0;) {
        const std::string& name = reader.Filenames()[i];
        std::vector<Spectrum> one;
        ASSERT_TRUE(reader.bLoadOneSpectrum(name, one));
        PlainDta twin(RealFolder() + "/" + name);
        const std::string expected = ExactDump(twin.Load(RealFolder() + "\\", name));
        EXPECT_EQ(ExactDump(one.at(0)), expected);
        EXPECT_EQ(ExactDump(spectra[i]), expected);
    }
}

TEST(RealDta, APoolServesTheFolder)
{
    PELGRIN_NEEDS_REAL_DATA();
    DatasetIOPool pool;
    OutputOf([&] {
        pool.InitLoad({{RealDataFolder() + "\\dta", "20030428_4_29L_15", DatasetType::Dta}});
    });
    EXPECT_EQ(pool.tGetSpecNumber(), 480u);
    const std::string name = "20030428_4_29L_15.2042.2042.3.dta";
    EXPECT_TRUE(pool.bHasSpectrum("20030428_4_29L_15", name));
    std::vector<Spectrum> spectra;
    ASSERT_TRUE(pool.bLoadOneSpectrum("20030428_4_29L_15", name, spectra));
    EXPECT_NEAR(spectra[0].dPrecursorMz, (1568.68 - 1.00727646677) / 3 + 1.00727646677, 1e-9);
    EXPECT_EQ(spectra[0].vPeaks.at(0).dMz, 175.12);
}

} // namespace
} // namespace Vorlan::test
