// MGF as written: exact bytes, ranges, failures, and read back.
#include <limits>
#include <locale>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "spectra/MgfProbe.h"

namespace Vorlan::test {
namespace {

Spectrum MakeSpectrum(const std::string& title, const std::vector<std::pair<double, double>>& peaks)
{
    Spectrum spectrum;
    spectrum.strTitle = title;
    for (const auto& [mz, intensity] : peaks) {
        Peak peak;
        peak.setMz(mz);
        peak.setIntensity(intensity);
        spectrum.vPeaks.push_back(peak);
    }
    return spectrum;
}

std::vector<Spectrum> Numbered(int count)
{
    std::vector<Spectrum> spectra;
    for (int i = 0; i < count; ++i) {
        spectra.push_back(MakeSpectrum("s" + std::to_string(i), {{i + 1.0, 1.0}}));
    }
    return spectra;
}

std::string TextOf(Spectrum spectrum)
{
    const TempFolder folder;
    const std::string path = folder.PathOf("out.mgf");
    MgfIO writer;
    writer.InitSave(path);
    EXPECT_TRUE(writer.bSaveOneSpec(spectrum));
    writer.EndSave();
    return ReadFile(path);
}

/// The record of Numbered's spectrum i.
std::string RecordOf(int i)
{
    return "BEGIN IONS\nTITLE=s" + std::to_string(i) + "\nPEPMASS=0\nCHARGE=0+\nRTINSECONDS=0\n"
           + std::to_string(i + 1) + " 1\nEND IONS\n";
}

TEST(MgfWriting, OneRecord)
{
    Spectrum spectrum = MakeSpectrum("run.1.1.2 scan=1\"", {{300.5, 7}, {100.25, 1.5}});
    spectrum.dPrecursorMz = 500.25;
    spectrum.nCharge = 2;
    spectrum.dRetentionTime = 61.5;
    EXPECT_EQ(TextOf(spectrum), "BEGIN IONS\nTITLE=run.1.1.2 scan=1\"\nPEPMASS=500.25\nCHARGE=2+\n"
                                "RTINSECONDS=61.5\n300.5 7\n100.25 1.5\nEND IONS\n");
}

TEST(MgfWriting, AnEmptySpectrum)
{
    EXPECT_EQ(TextOf(Spectrum()),
              "BEGIN IONS\nTITLE=\nPEPMASS=0\nCHARGE=0+\nRTINSECONDS=0\nEND IONS\n");
}

TEST(MgfWriting, B14_NothingOfTheScanNumber)
{
    Spectrum spectrum = MakeSpectrum("t", {{1, 2}});
    spectrum.nScan = 4711;
    const std::string text = TextOf(spectrum);
    EXPECT_EQ(text.find("SCANS"), std::string::npos);
    EXPECT_EQ(text.find("4711"), std::string::npos);
}

TEST(MgfWriting, B14_SixSignificantDigits)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const std::vector<std::pair<double, std::string>> numbers = {
        {1234.56789, "1234.57"},
        {0.000012, "1.2e-05"},
        {0.0001, "0.0001"},
        {123456, "123456"},
        {1234567, "1.23457e+06"},
        {999999.5, "1e+06"},
        {100, "100"},
        {-1.5, "-1.5"},
        {0, "0"},
        {-0.0, "-0"},
        {1e300, "1e+300"},
        {5e-324, "4.94066e-324"},
        {kInfinity, "inf"},
        {-kInfinity, "-inf"},
        {1e10, "1e+10"},
        {std::numeric_limits<double>::quiet_NaN(), "nan"},
    };
    for (const auto& [value, text] : numbers) {
        Spectrum spectrum = MakeSpectrum("t", {{value, value}});
        spectrum.dPrecursorMz = value;
        spectrum.dRetentionTime = value;
        EXPECT_EQ(TextOf(spectrum), "BEGIN IONS\nTITLE=t\nPEPMASS=" + text + "\nCHARGE=0+\n"
                                        + "RTINSECONDS=" + text + "\n" + text + " " + text
                                        + "\nEND IONS\n");
    }
}

TEST(MgfWriting, ChargeIsUnsigned)
{
    Spectrum spectrum;
    spectrum.nCharge = std::numeric_limits<std::uint64_t>::max();
    EXPECT_NE(TextOf(spectrum).find("\nCHARGE=18446744073709551615+\n"), std::string::npos);
}

/// Groups of three digits and a decimal comma.
class OtherPunctuation : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(MgfWriting, TheHostsLocaleChangesNothing)
{
    Spectrum spectrum = MakeSpectrum("t", {{1234.5, 123456}});
    spectrum.dPrecursorMz = 4321.5;
    spectrum.nCharge = 1234567;
    spectrum.dRetentionTime = 5000.25;
    const std::string expected = TextOf(spectrum);
    const std::locale former =
        std::locale::global(std::locale(std::locale::classic(), new OtherPunctuation));
    const std::string text = TextOf(spectrum);
    std::locale::global(former);
    EXPECT_EQ(text, expected);
    EXPECT_NE(text.find("1234.5 123456\n"), std::string::npos);
}

struct RangeCase {
    std::string reason;
    std::uint64_t first;
    std::uint64_t last;
    std::uint64_t written;
    std::string text;
};

TEST(MgfWriting, RangesOfSpectra)
{
    constexpr std::uint64_t kHuge = std::numeric_limits<std::uint64_t>::max();
    const std::vector<RangeCase> cases = {
        {"both ends count", 0, 2, 3, RecordOf(0) + RecordOf(1) + RecordOf(2)},
        {"one", 1, 1, 1, RecordOf(1)},
        {"first behind last", 2, 1, 0, ""},
        {"stops at the end", 1, 7, 2, RecordOf(1) + RecordOf(2)},
        {"a huge last", 2, kHuge, 1, RecordOf(2)},
        {"first at the end", 3, 3, 0, ""},
        {"both huge", kHuge, kHuge, 0, ""},
    };
    for (const RangeCase& row : cases) {
        const TempFolder folder;
        std::vector<Spectrum> spectra = Numbered(3);
        MgfIO writer;
        writer.InitSave(folder.PathOf("out.mgf"));
        EXPECT_EQ(writer.tSaveSpectra(spectra, row.first, row.last), row.written) << row.reason;
        writer.EndSave();
        EXPECT_EQ(ReadFile(folder.PathOf("out.mgf")), row.text) << row.reason;
    }
    std::vector<Spectrum> none;
    EXPECT_EQ(MgfIO().tSaveSpectra(none, 0, kHuge), 0u) << "an empty vector";
}

/// Takes "s1" for one that cannot be written.
class WriterWithoutS1 : public MgfIO {
public:
    std::vector<std::string> asked;

protected:
    bool bPutOneSpec(Spectrum& spectrum) override
    {
        asked.push_back(spectrum.strTitle);
        return spectrum.strTitle != "s1" && MgfIO::bPutOneSpec(spectrum);
    }
};

TEST(MgfWriting, ARangeEndsAtTheFirstSpectrumThatIsNotWritten)
{
    const TempFolder folder;
    std::vector<Spectrum> spectra = Numbered(3);
    WriterWithoutS1 writer;
    writer.InitSave(folder.PathOf("out.mgf"));
    EXPECT_EQ(writer.tSaveSpectra(spectra, 0, 2), 1u);
    writer.EndSave();
    EXPECT_THAT(writer.asked, testing::ElementsAre("s0", "s1"));
    EXPECT_EQ(ReadFile(folder.PathOf("out.mgf")), RecordOf(0));
}

TEST(MgfWriting, FlushesAfterEachRecord)
{
    const TempFolder folder;
    std::vector<Spectrum> spectra = Numbered(2);
    MgfIO writer;
    writer.InitSave(folder.PathOf("out.mgf"));
    writer.bSaveOneSpec(spectra[0]);
    EXPECT_EQ(ReadFile(folder.PathOf("out.mgf")), RecordOf(0));
    writer.bSaveOneSpec(spectra[1]);
    EXPECT_EQ(ReadFile(folder.PathOf("out.mgf")), RecordOf(0) + RecordOf(1));
}

/// Keeps its text as it is whenever it was told to pass it on.
class FlushedTexts : public std::stringbuf {
public:
    const std::vector<std::string>& Texts() const { return texts_; }

protected:
    int sync() override
    {
        texts_.push_back(str());
        return 0;
    }

private:
    std::vector<std::string> texts_;
};

/// Writes into the memory of another.
class WriterInto : public MgfIO {
public:
    explicit WriterInto(std::streambuf& buffer)
    {
        static_cast<std::ostream&>(ofsOutput_).rdbuf(&buffer);
    }
};

TEST(MgfWriting, FlushesBehindBeginIonsAndBehindEndIons)
{
    FlushedTexts buffer;
    WriterInto writer(buffer);
    std::vector<Spectrum> spectra = Numbered(2);
    EXPECT_EQ(writer.tSaveSpectra(spectra, 0, 1), 2u);
    EXPECT_THAT(buffer.Texts(),
                testing::ElementsAre("BEGIN IONS\n", RecordOf(0), RecordOf(0) + "BEGIN IONS\n",
                                     RecordOf(0) + RecordOf(1)));
}

TEST(MgfWriting, InitSaveEmptiesTheFileAndClosesTheFormerOne)
{
    const TempFolder folder;
    const std::string first = folder.Write("first.mgf", "former contents");
    const std::string second = folder.PathOf("second.mgf");
    std::vector<Spectrum> spectra = Numbered(2);
    MgfIO writer;
    EXPECT_EQ(OutputOf([&] { writer.InitSave(first); }), "");
    EXPECT_EQ(ReadFile(first), "");
    writer.bSaveOneSpec(spectra[0]);
    EXPECT_EQ(OutputOf([&] { writer.InitSave(second); }), "");
    writer.bSaveOneSpec(spectra[1]);
    writer.EndSave();
    EXPECT_EQ(ReadFile(first), RecordOf(0));
    EXPECT_EQ(ReadFile(second), RecordOf(1));
}

TEST(MgfWriting, OpeningTellsWhetherItCould)
{
    const TempFolder folder;
    const std::string path = folder.PathOf("out.mgf");
    const std::string missing = folder.PathOf("missing/out.mgf");
    std::vector<Spectrum> spectra = Numbered(1);
    MgfProbe writer;
    EXPECT_EQ(OutputOf([&] { EXPECT_FALSE(writer.bOpenOutputFile(missing)); }),
              MgfNotOpened(missing));
    writer.CloseOutputFile();
    EXPECT_EQ(OutputOf([&] { EXPECT_TRUE(writer.bOpenOutputFile(path)); }), "");
    writer.bSaveOneSpec(spectra[0]);
    writer.CloseOutputFile();
    EXPECT_EQ(ReadFile(path), RecordOf(0));
    EXPECT_EQ(OutputOf([&] { EXPECT_TRUE(writer.bOpenOutputFile(path)); }), "") << "once closed";
    EXPECT_EQ(ReadFile(path), "");
}

TEST(MgfWriting, APathWithANulIsToldAndIsNotTheFileInFrontOfIt)
{
    const TempFolder folder;
    const std::string path = folder.Write("out.mgf", "former");
    const std::string beyond = path + '\0' + ".bak";
    MgfProbe writer;
    EXPECT_EQ(OutputOf([&] { EXPECT_FALSE(writer.bOpenOutputFile(beyond)); }),
              MgfNotOpened(beyond));
    EXPECT_EQ(ReadFile(path), "former");
}

TEST(MgfWriting, AnOpenOutputIsNotOpenedAgainAndLosesWhatFollows)
{
    const TempFolder folder;
    const std::string first = folder.PathOf("first.mgf");
    const std::string second = folder.PathOf("second.mgf");
    std::vector<Spectrum> spectra = Numbered(2);
    MgfProbe writer;
    writer.InitSave(first);
    writer.bSaveOneSpec(spectra[0]);
    EXPECT_EQ(OutputOf([&] { EXPECT_FALSE(writer.bOpenOutputFile(second)); }),
              MgfNotOpened(second));
    EXPECT_FALSE(std::filesystem::exists(second));
    EXPECT_TRUE(writer.bSaveOneSpec(spectra[1]));
    EXPECT_EQ(OutputOf([&] { writer.InitSave(second); }), "") << "closes it first";
    writer.bSaveOneSpec(spectra[1]);
    writer.EndSave();
    EXPECT_EQ(ReadFile(first), RecordOf(0));
    EXPECT_EQ(ReadFile(second), RecordOf(1));
}

TEST(MgfWriting, B15_SavingIntoAFailedOutputGivesTrue)
{
    const TempFolder folder;
    const std::string path = folder.PathOf("missing") + "/out.mgf";
    std::vector<Spectrum> spectra = Numbered(2);
    MgfIO writer;
    EXPECT_EQ(OutputOf([&] { writer.InitSave(path); }), MgfNotOpened(path));
    EXPECT_TRUE(writer.bSaveOneSpec(spectra[0]));
    EXPECT_EQ(writer.tSaveSpectra(spectra, 0, 1), 2u);
    writer.EndSave();
    EXPECT_TRUE(MgfIO().bSaveOneSpec(spectra[0])) << "an output that was never opened";
}

TEST(MgfWriting, AFolderCannotBeWritten)
{
    const TempFolder folder;
    EXPECT_EQ(OutputOf([&] { MgfIO().InitSave(folder.Path()); }), MgfNotOpened(folder.Path()));
}

TEST(MgfWriting, AnOutputThatFailedCanBeOpenedAnew)
{
    const TempFolder folder;
    std::vector<Spectrum> spectra = Numbered(1);
    MgfIO writer;
    OutputOf([&] { writer.InitSave(folder.Path()); });
    writer.bSaveOneSpec(spectra[0]);
    writer.InitSave(folder.PathOf("out.mgf"));
    writer.bSaveOneSpec(spectra[0]);
    writer.EndSave();
    EXPECT_EQ(ReadFile(folder.PathOf("out.mgf")), RecordOf(0));
}

TEST(MgfWriting, ReadingAndWritingAtTheSameTime)
{
    const TempFolder folder;
    MgfIO both;
    both.InitLoad(folder.Write("in.mgf", RecordOf(0) + RecordOf(1)));
    both.InitSave(folder.PathOf("out.mgf"));
    std::vector<Spectrum> spectra;
    both.bLoadNextSpectrum(spectra);
    both.bSaveOneSpec(spectra[0]);
    both.EndLoad();
    both.bSaveOneSpec(spectra[0]);
    both.EndSave();
    EXPECT_EQ(ReadFile(folder.PathOf("out.mgf")), RecordOf(0) + RecordOf(0));
}

/// A number that six significant digits hold.
double RandomNumber(std::mt19937& random)
{
    return static_cast<double>(random() % 1000000) / (random() % 2 == 0 ? 1000 : 10);
}

TEST(MgfWriting, ReadBackWithSixDigits)
{
    std::mt19937 random(11);
    std::vector<Spectrum> spectra;
    for (int i = 0; i < 1000; ++i) {
        Spectrum spectrum = MakeSpectrum("s" + std::to_string(10000 + i), {});
        spectrum.dPrecursorMz = RandomNumber(random);
        spectrum.nCharge = random() % 6;
        spectrum.dRetentionTime = RandomNumber(random);
        for (std::size_t peaks = 1 + random() % 30; peaks > 0; --peaks) {
            Peak peak;
            peak.setMz(RandomNumber(random));
            peak.setIntensity(RandomNumber(random));
            spectrum.vPeaks.push_back(peak);
        }
        spectra.push_back(spectrum);
    }
    const TempFolder folder;
    MgfIO both;
    both.InitSave(folder.PathOf("out.mgf"));
    EXPECT_EQ(both.tSaveSpectra(spectra, 0, spectra.size() - 1), spectra.size());
    both.EndSave();
    both.InitLoad(folder.PathOf("out.mgf"));
    std::vector<Spectrum> loaded;
    EXPECT_EQ(both.tLoadAllSpectra(loaded), spectra.size());
    EXPECT_EQ(Dump(loaded), Dump(spectra));
}

TEST(MgfWriting, B14_ReadBackTheScanIsThatOfTheSpectrumBefore)
{
    const TempFolder folder;
    Spectrum spectrum = MakeSpectrum("t", {{1, 2}});
    spectrum.nScan = 5;
    MgfText mgf("BEGIN IONS\nTITLE=a\nSCANS=77\n1 2\nEND IONS\n");
    mgf.Rest();
    mgf.reader.InitSave(folder.PathOf("out.mgf"));
    mgf.reader.bSaveOneSpec(spectrum);
    mgf.reader.EndSave();
    mgf.reader.InitLoad(folder.PathOf("out.mgf"));
    EXPECT_EQ(mgf.Load("t"), "t|0|0+|scan 77|rt 0|1:2");
}

} // namespace
} // namespace Vorlan::test
