// What a DTA file may hold, and what is read of it.
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "spectra/DtaProbe.h"

namespace Vorlan::test {
namespace {

using testing::ElementsAre;
using std::string_literals::operator""s;

constexpr std::size_t kLongest = 81919;
constexpr double kProton = 1.0072764667710;

Spectrum ReadDta(const std::string& text)
{
    const DtaFolder folder{{"a.dta", text}};
    DtaIO reader;
    reader.InitLoad(folder.Path());
    std::vector<Spectrum> spectra;
    reader.bLoadNextSpectrum(spectra);
    return spectra.at(0);
}

/// The peaks behind a usual first line, as "1:2 3:4".
std::string PeaksOf(const std::string& lines)
{
    const std::string begin = "a.dta|400.5|1+|scan 0|rt 0|";
    const std::string end = "|from run\\";
    const std::string dump = DumpOfDta("400.5 1\n" + lines);
    EXPECT_EQ(dump.substr(0, begin.size()), begin);
    return dump.substr(begin.size(), dump.size() - begin.size() - end.size());
}

// ---- The first line --------------------------------------------------------

TEST(DtaReading, TheExampleOfThePage)
{
    const Spectrum spectrum = ReadDta("1006.5228 2\n175.11895 2310.7\n288.20301 1250.1\n");
    EXPECT_DOUBLE_EQ(spectrum.dPrecursorMz, (1006.5228 - kProton) / 2 + kProton);
    EXPECT_EQ(Dump(spectrum), "a.dta|503.7650382|2+|scan 0|rt 0|175.11895:2310.7 288.20301:1250.1"
                              "|from run\\");
}

struct FirstLineCase {
    const char* reason;
    std::string line;
    double mh;
    std::uint64_t charge;
};

const FirstLineCase kFirstLines[] = {
    {"charge 1", "500.5 1", 500.5, 1},
    {"charge 4", "2000.25 4", 2000.25, 4},
    {"a tab between", "500.5\t3", 500.5, 3},
    {"blanks at both ends", " 500.5  3 ", 500.5, 3},
    {"more columns", "500.5 2 17 x", 500.5, 2},
    {"a charge with its sign behind", "500.5 2+", 500.5, 2},
    {"a charge with a plus sign in front", "500.5 +2", 500.5, 2},
    {"a charge with a fraction", "500.5 2.9", 500.5, 2},
    {"an exponent", "5.005e2 2", 500.5, 2},
    {"no blank but a sign between", "500.5+2", 500.5, 2},
    {"no mass at all", "0 2", 0.0, 2},
    {"a negative mass", "-500.5 2", -500.5, 2},
    {"minus one is the largest number", "500.5 -1", 500.5,
     std::numeric_limits<std::uint64_t>::max()},
    {"a huge charge", "500.5 18446744073709551615", 500.5,
     std::numeric_limits<std::uint64_t>::max()},
};

TEST(DtaReading, MassAndChargeGiveThePrecursor)
{
    for (const FirstLineCase& c : kFirstLines) {
        const Spectrum spectrum = ReadDta(c.line + "\n1 2\n");
        EXPECT_EQ(spectrum.nCharge, c.charge) << c.reason;
        EXPECT_DOUBLE_EQ(spectrum.dPrecursorMz,
                         (c.mh - kProton) / static_cast<double>(c.charge) + kProton)
            << c.reason;
        EXPECT_EQ(spectrum.vPeaks.size(), 1u) << c.reason;
    }
}

struct NoChargeCase {
    const char* reason;
    std::string line;
    const char* precursor;
};

const NoChargeCase kNoCharges[] = {
    {"a charge of 0", "500.5 0", "inf"},
    {"MH only", "500.5", "inf"},
    {"MH and a blank", "500.5 ", "inf"},
    {"a charge that is no number", "500.5 two", "inf"},
    {"a charge behind a comma", "500.5,2", "inf"},
    {"a charge that is too large", "500.5 18446744073709551616", "inf"},
    {"an empty line", "", "-inf"},
    {"a line of blanks", " \t ", "-inf"},
    {"a mass that is no number: the charge is not read", "mass 2", "-inf"},
    {"a mass that is too large: the charge is not read", "1e999 2", "-inf"},
    {"an infinite mass: the charge is not read", "inf 2", "-inf"},
    {"half an exponent: the charge is not read", "500.5e 2", "-inf"},
    {"no mass, no charge", "0 0", "-inf"},
    {"a mass below that of the proton", "1 0", "-inf"},
    {"the very mass of the proton", "1.0072764667710 0", "nan"},
};

TEST(DtaReading, B70_NoChargeDividesByZero)
{
    for (const NoChargeCase& c : kNoCharges) {
        const Spectrum spectrum = ReadDta(c.line + "\n1 2\n");
        EXPECT_EQ(spectrum.nCharge, 0u) << c.reason;
        EXPECT_EQ(ShortNumber(spectrum.dPrecursorMz), c.precursor) << c.reason;
        EXPECT_EQ(spectrum.vPeaks.size(), 1u) << c.reason << ": the peaks follow all the same";
    }
}

TEST(DtaReading, AFirstLineThatIsCutShort)
{
    const std::string line = "1006.5228 2";
    EXPECT_EQ(DumpOfDta(line.substr(0, 9)), "a.dta|inf|0+|scan 0|rt 0||from run\\");
    EXPECT_EQ(DumpOfDta(line.substr(0, 5)), "a.dta|inf|0+|scan 0|rt 0||from run\\");
    EXPECT_EQ(DumpOfDta(line), "a.dta|503.7650382|2+|scan 0|rt 0||from run\\");
}

TEST(DtaReading, B70_AnEmptyFileHasNoChargeAndNoPeaks)
{
    EXPECT_EQ(DumpOfDta(""), "a.dta|-inf|0+|scan 0|rt 0||from run\\");
    EXPECT_EQ(DumpOfDta("\n"), "a.dta|-inf|0+|scan 0|rt 0||from run\\");
}

TEST(DtaReading, ALineBreakWithinTheFirstLineMakesTheChargeAPeak)
{
    EXPECT_EQ(DumpOfDta("500.5\n2\n1 3\n"), "a.dta|inf|0+|scan 0|rt 0|2:0 1:3|from run\\");
}

// ---- Peaks -----------------------------------------------------------------

struct PeakCase {
    const char* reason;
    std::string lines;
    std::string peaks;
};

const PeakCase kPeaks[] = {
    {"in the order of the file", "300 1\n100 2\n200 3\n", "300:1 100:2 200:3"},
    {"twice the same", "100 1\n100 1\n", "100:1 100:1"},
    {"no line end at the end", "100 1\n200 2", "100:1 200:2"},
    {"tabs and blanks", "100\t1\n  200 \t 2 \n", "100:1 200:2"},
    {"other white space between", "100\v1\n200\f2\n300\r3\n", "100:1 200:2 300:3"},
    {"further columns are ignored", "100 1 1+ x\n200 2\t7\n", "100:1 200:2"},
    {"exponents and signs", "1e2 2.5E-1\n-3 +4\n", "100:0.25 -3:4"},
    {"points at the ends", "100. .5\n", "100:0.5"},
    {"an intensity that is missing is the one before", "100 7\n200\n300 8\n", "100:7 200:7 300:8"},
    {"an intensity that is missing is 0 at first", "100\n200 8\n", "100:0 200:8"},
    {"an intensity that is no number", "100 7\n200 x\n", "100:7 200:7"},
    {"a line that is no number repeats both", "100 7\nfive\n", "100:7 100:7"},
    {"the intensity is not read behind an m/z that is none", "100 7\nx 9\n", "100:7 100:7"},
    {"a comma between", "100 7\n200,8\n", "100:7 200:7"},
    {"nothing readable at first", "five\n", "0:0"},
    {"infinite numbers are none", "100 7\ninf 8\n200 inf\nnan nan\n", "100:7 100:7 200:7 200:7"},
    {"hexadecimal ones are 0 and what follows", "100 7\n0x10 8\n", "100:7 0:7"},
    {"too large ones are none", "100 7\n1e999 8\n200 1e999\n", "100:7 100:7 200:7"},
    {"too small ones are 0", "1e-999 5\n", "0:5"},
    {"a comment is a peak", "100 7\n# made by hand\n", "100:7 100:7"},
};

TEST(DtaReading, PeaksAreReadAsAStreamReadsNumbers)
{
    for (const PeakCase& c : kPeaks) {
        EXPECT_EQ(PeaksOf(c.lines), c.peaks) << c.reason;
    }
}

const PeakCase kEmptyLines[] = {
    {"an empty line ends the peaks", "100 1\n\n200 2\n", "100:1"},
    {"with carriage returns, too", "100 1\r\n\r\n200 2\r\n", "100:1"},
    {"directly behind the first line", "\n100 1\n", ""},
    {"at the end of the file", "100 1\n\n\n", "100:1"},
    {"a bundle of two spectra yields the first", "100 1\n\n800.5 2\n200 2\n", "100:1"},
    {"a NUL at its begin makes a line empty", "100 1\n\0 9\n200 2\n"s, "100:1"},
    {"a line of a blank is a peak", "100 1\n \n200 2\n", "100:1 100:1 200:2"},
    {"a line of a tab is a peak", "100 1\n\t\n", "100:1 100:1"},
    {"a line of blanks at first is a peak of nothing", "  \n", "0:0"},
    {"of two carriage returns one is left", "100 1\n\r\r\n200 2\n", "100:1 100:1 200:2"},
    {"a carriage return without a line feed is no line end", "100 1\n\r", "100:1 100:1"},
};

TEST(DtaReading, B74_AnEmptyLineEndsThePeaksAndABlankOneDoesNot)
{
    for (const PeakCase& c : kEmptyLines) {
        EXPECT_EQ(PeaksOf(c.lines), c.peaks) << c.reason;
    }
}

TEST(DtaReading, B17_NumbersThatCannotBeReadAreThoseOfTheLineBefore)
{
    EXPECT_EQ(PeaksOf("100 1\n200\nx\n \n300 x\n"), "100:1 200:1 200:1 200:1 300:1");
}

TEST(DtaReading, NothingCarriesOverFromFileToFile)
{
    const DtaFolder folder{{"a.dta", "400.5 1\n100 7\n"},
                           {"b.dta", "500.5\nx\n"},
                           {"c.dta", ""},
                           {"d.dta", "600.5 3\n"},
                           {"e.dta", "x\n200\n"}};
    DtaIO reader;
    reader.InitLoad(folder.Path());
    EXPECT_THAT(DtaRest(reader), ElementsAre("a.dta|400.5|1+|scan 0|rt 0|100:7|from run\\",
                                             "b.dta|inf|0+|scan 0|rt 0|0:0|from run\\",
                                             "c.dta|-inf|0+|scan 0|rt 0||from run\\",
                                             "d.dta|200.8381843|3+|scan 0|rt 0||from run\\",
                                             "e.dta|-inf|0+|scan 0|rt 0|200:0|from run\\"));
    std::vector<Spectrum> spectra;
    reader.bLoadOneSpectrum("a.dta", spectra);
    reader.bLoadOneSpectrum("c.dta", spectra);
    EXPECT_EQ(Dump(spectra.at(1)), "c.dta|-inf|0+|scan 0|rt 0||from run\\");
}

// ---- Bytes -----------------------------------------------------------------

TEST(DtaReading, CarriageReturnsBeforeLineFeedsAreDropped)
{
    EXPECT_EQ(DumpOfDta("400.5 1\r\n100 1\r\n200 2\r\n"),
              "a.dta|400.5|1+|scan 0|rt 0|100:1 200:2|from run\\");
    EXPECT_EQ(DumpOfDta("400.5 1\r\n100 1\r"), "a.dta|400.5|1+|scan 0|rt 0|100:1|from run\\")
        << "one that is left is white space";
}

TEST(DtaReading, CarriageReturnsAloneAreWhiteSpace)
{
    EXPECT_EQ(DumpOfDta("400.5 1\r100 1\r200 2\r"), "a.dta|400.5|1+|scan 0|rt 0||from run\\");
}

TEST(DtaReading, AByteOrderMarkIsDropped)
{
    EXPECT_EQ(DumpOfDta("\xEF\xBB\xBF"
                        "400.5 1\n100 1\n"),
              "a.dta|400.5|1+|scan 0|rt 0|100:1|from run\\");
    EXPECT_EQ(PeaksOf("100 1\n\xEF\xBB\xBF"
                      "200 2\n"),
              "100:1 100:1")
        << "only at the start of the file";
}

TEST(DtaReading, ANulEndsTheTextOfItsLine)
{
    EXPECT_EQ(DumpOfDta("400.5 1\0 9\n100 1\0 9\n200\0 2\n30\0"
                        "0 5\n"s),
              "a.dta|400.5|1+|scan 0|rt 0|100:1 200:1 30:1|from run\\");
    EXPECT_EQ(DumpOfDta("\0"
                        "400.5 1\n100 1\n"s),
              "a.dta|-inf|0+|scan 0|rt 0|100:1|from run\\");
}

TEST(DtaReading, ALineThatIsTooLongIsCutAndTheLastOne)
{
    const auto filled = [](std::size_t length) { return "200 2 " + std::string(length - 6, 'x'); };
    EXPECT_EQ(PeaksOf("100 1\n" + filled(kLongest) + "\n300 3\n"), "100:1 200:2 300:3");
    EXPECT_EQ(PeaksOf("100 1\n" + filled(kLongest) + "\r\n300 3\n"), "100:1 200:2 300:3");
    EXPECT_EQ(PeaksOf("100 1\n" + filled(kLongest + 1) + "\n300 3\n"), "100:1 200:2");
    EXPECT_EQ(PeaksOf("100 1\n" + filled(500000) + "\n300 3\n"), "100:1 200:2");
    EXPECT_EQ(PeaksOf("200 " + std::string(kLongest, ' ') + "7\n300 3\n"), "200:0")
        << "what is cut off is not read";
}

TEST(DtaReading, AFirstLineThatIsTooLongLeavesNoPeaks)
{
    const std::string line = "400.5 1 " + std::string(kLongest, 'x');
    EXPECT_EQ(DumpOfDta(line + "\n100 1\n"), "a.dta|400.5|1+|scan 0|rt 0||from run\\");
}

TEST(DtaReading, AReaderGoesOnBehindAFileWithALineThatIsTooLong)
{
    const DtaFolder folder{{"a.dta", "400.5 1\n" + std::string(kLongest + 1, '1')},
                           {"b.dta", "500.5 1\n100 1\n"}};
    DtaIO reader;
    reader.InitLoad(folder.Path());
    std::vector<Spectrum> spectra;
    EXPECT_EQ(reader.tLoadAllSpectra(spectra), 2u);
    EXPECT_EQ(Dump(spectra.at(1)), "b.dta|500.5|1+|scan 0|rt 0|100:1|from run\\");
}

TEST(DtaReading, AHundredThousandPeaks)
{
    std::string text = "400.5 1\n";
    for (int i = 0; i < 100000; ++i) {
        text += std::to_string(i) + ".5 " + std::to_string(i % 97) + "\n";
    }
    const Spectrum spectrum = ReadDta(text);
    ASSERT_EQ(spectrum.vPeaks.size(), 100000u);
    for (std::size_t i = 0; i < spectrum.vPeaks.size(); ++i) {
        ASSERT_EQ(spectrum.vPeaks[i].dMz, static_cast<double>(i) + 0.5);
        ASSERT_EQ(spectrum.vPeaks[i].dIntensity, static_cast<double>(i % 97));
    }
}

} // namespace
} // namespace Vorlan::test
