// The grammar of one MGF record, in tables of text and outcome. Every row is
// also held against the plain twin.
#include <string>
#include <vector>

#include "spectra/MgfProbe.h"
#include "spectra/MgfRecord.h"

namespace Vorlan::test {
namespace {

using testing::ElementsAre;

struct RecordCase {
    std::string reason;
    std::string lines;
    std::string dump; ///< behind the title
};

/// lines stand between the title "t" and, where they have no peaks, a peak.
void Check(const std::vector<RecordCase>& cases, const std::string& peaks)
{
    for (const RecordCase& row : cases) {
        MgfText mgf("BEGIN IONS\nTITLE=t\n" + row.lines + peaks + "END IONS\n");
        EXPECT_THAT(mgf.Rest(), ElementsAre("t|" + row.dump)) << row.reason;
        EXPECT_THAT(mgf.AllOfThePlainTwin(), ElementsAre("t|" + row.dump))
            << "plain twin: " << row.reason;
    }
}

void CheckHeaders(const std::vector<RecordCase>& cases)
{
    Check(cases, "1 2\n");
}

void CheckPeaks(const std::vector<RecordCase>& cases)
{
    Check(cases, "");
}

TEST(MgfReading, AllHeaderLines)
{
    CheckHeaders({
        {"none", "", "0|0+|scan 0|rt 0|1:2"},
        {"all four", "PEPMASS=500.25\nCHARGE=2+\nRTINSECONDS=61.5\nSCANS=7\n",
         "500.25|2+|scan 7|rt 61.5|1:2"},
        {"in any order", "SCANS=7\nRTINSECONDS=61.5\nCHARGE=2+\nPEPMASS=500.25\n",
         "500.25|2+|scan 7|rt 61.5|1:2"},
        {"the last of two counts", "SCANS=7\nSCANS=8\n", "0|0+|scan 8|rt 0|1:2"},
        {"an unreadable second one changes nothing", "SCANS=7\nSCANS=x\n", "0|0+|scan 7|rt 0|1:2"},
        {"carriage returns", "PEPMASS=500.25\r\nCHARGE=2+\r\nSCANS=7\r\n",
         "500.25|2+|scan 7|rt 0|1:2"},
    });
}

TEST(MgfReading, LinesThatAreNoHeaderLinesArePassedOver)
{
    CheckHeaders({
        {"another key", "INSTRUMENT=x\n", "0|0+|scan 0|rt 0|1:2"},
        {"a comment", "# 5 6\n", "0|0+|scan 0|rt 0|1:2"},
        {"an empty line", "\n\n", "0|0+|scan 0|rt 0|1:2"},
        {"a second title", "TITLE=u\n", "0|0+|scan 0|rt 0|1:2"},
        {"a blank in front", " SCANS=7\n", "0|0+|scan 0|rt 0|1:2"},
        {"small letters", "scans=7\ncharge=2+\npepmass=5\nrtinseconds=1\n", "0|0+|scan 0|rt 0|1:2"},
        {"a longer key", "SCANSX=7\nCHARGES=2\n", "0|0+|scan 0|rt 0|1:2"},
        {"a shorter key", "SCAN=7\nS\nC\nP\nR\n", "0|0+|scan 0|rt 0|1:2"},
        {"a blank before the sign", "SCANS =7\n", "0|0+|scan 0|rt 0|1:2"},
        {"END IONS before any peak", "END IONS\n", "0|0+|scan 0|rt 0|1:2"},
    });
}

TEST(MgfReading, Charge)
{
    CheckHeaders({
        {"plus behind", "CHARGE=2+\n", "0|2+|scan 0|rt 0|1:2"},
        {"no sign", "CHARGE=2\n", "0|2+|scan 0|rt 0|1:2"},
        {"plus in front", "CHARGE=+2\n", "0|2+|scan 0|rt 0|1:2"},
        {"minus in front gives the magnitude", "CHARGE=-2\n", "0|2+|scan 0|rt 0|1:2"},
        {"minus behind is not read", "CHARGE=2-\n", "0|2+|scan 0|rt 0|1:2"},
        {"the first of several", "CHARGE=2+ and 3+\n", "0|2+|scan 0|rt 0|1:2"},
        {"a blank in front", "CHARGE= 3+\n", "0|3+|scan 0|rt 0|1:2"},
        {"a fraction is cut", "CHARGE=2.9\n", "0|2+|scan 0|rt 0|1:2"},
        {"zero", "CHARGE=3\nCHARGE=0\n", "0|0+|scan 0|rt 0|1:2"},
        {"the largest", "CHARGE=2147483647+\n", "0|2147483647+|scan 0|rt 0|1:2"},
        {"one above it", "CHARGE=2147483648+\n", "0|2147483647+|scan 0|rt 0|1:2"},
        {"huge", "CHARGE=99999999999+\n", "0|2147483647+|scan 0|rt 0|1:2"},
        {"beyond 64 bits", "CHARGE=99999999999999999999999+\n", "0|2147483647+|scan 0|rt 0|1:2"},
        {"huge and negative", "CHARGE=-99999999999\n", "0|2147483648+|scan 0|rt 0|1:2"},
        {"empty keeps", "CHARGE=3\nCHARGE=\n", "0|3+|scan 0|rt 0|1:2"},
        {"a sign alone keeps", "CHARGE=3\nCHARGE=+\n", "0|3+|scan 0|rt 0|1:2"},
        {"text keeps", "CHARGE=3\nCHARGE=two\n", "0|3+|scan 0|rt 0|1:2"},
    });
}

TEST(MgfReading, PrecursorMass)
{
    CheckHeaders({
        {"an intensity behind it is not read", "PEPMASS=500.25 1234.5\n",
         "500.25|0+|scan 0|rt 0|1:2"},
        {"a tab before the intensity", "PEPMASS=500.25\t1234.5\n", "500.25|0+|scan 0|rt 0|1:2"},
        {"a decimal comma ends it", "PEPMASS=500,25\n", "500|0+|scan 0|rt 0|1:2"},
        {"an exponent", "PEPMASS=5.0025E+2\n", "500.25|0+|scan 0|rt 0|1:2"},
        {"no digit before the point", "PEPMASS=.5\n", "0.5|0+|scan 0|rt 0|1:2"},
        {"no digit behind the point", "PEPMASS=5.\n", "5|0+|scan 0|rt 0|1:2"},
        {"blanks in front", "PEPMASS= \t5\n", "5|0+|scan 0|rt 0|1:2"},
        {"negative", "PEPMASS=-5\n", "-5|0+|scan 0|rt 0|1:2"},
        {"hexadecimal", "PEPMASS=0x1p4\n", "16|0+|scan 0|rt 0|1:2"},
        {"infinite", "PEPMASS=inf\n", "inf|0+|scan 0|rt 0|1:2"},
        {"not a number", "PEPMASS=nan\n", "nan|0+|scan 0|rt 0|1:2"},
        {"out of range", "PEPMASS=1e999\n", "inf|0+|scan 0|rt 0|1:2"},
        {"empty keeps", "PEPMASS=5\nPEPMASS=\n", "5|0+|scan 0|rt 0|1:2"},
        {"text keeps", "PEPMASS=5\nPEPMASS=about 6\n", "5|0+|scan 0|rt 0|1:2"},
    });
}

TEST(MgfReading, RetentionTimeAndScan)
{
    CheckHeaders({
        {"the first of a range of times", "RTINSECONDS=12.5-14.5\n", "0|0+|scan 0|rt 12.5|1:2"},
        {"the first of two times", "RTINSECONDS=12.5,14.5\n", "0|0+|scan 0|rt 12.5|1:2"},
        {"an XML duration keeps", "RTINSECONDS=3\nRTINSECONDS=PT12S\n", "0|0+|scan 0|rt 3|1:2"},
        {"the first of a range of scans", "SCANS=7-9\n", "0|0+|scan 7|rt 0|1:2"},
        {"a negative scan", "SCANS=-1\n", "0|0+|scan -1|rt 0|1:2"},
        {"a huge scan", "SCANS=99999999999\n", "0|0+|scan 2147483647|rt 0|1:2"},
        {"a huge negative scan", "SCANS=-99999999999\n", "0|0+|scan -2147483648|rt 0|1:2"},
        {"an empty scan keeps", "SCANS=5\nSCANS=\n", "0|0+|scan 5|rt 0|1:2"},
    });
}

TEST(MgfReading, PeakForms)
{
    CheckPeaks({
        {"a blank", "100.5 2\n", "0|0+|scan 0|rt 0|100.5:2"},
        {"a tab", "100.5\t2\n", "0|0+|scan 0|rt 0|100.5:2"},
        {"several blanks and tabs", "100.5 \t \t  2\n", "0|0+|scan 0|rt 0|100.5:2"},
        {"a third column", "100.5 2 1+\n", "0|0+|scan 0|rt 0|100.5:2"},
        {"blanks at the end", "100.5 2  \t\n", "0|0+|scan 0|rt 0|100.5:2"},
        {"a carriage return at the end", "100.5 2\r\n", "0|0+|scan 0|rt 0|100.5:2"},
        {"exponents", "1.5e2 2E+3\n", "0|0+|scan 0|rt 0|150:2000"},
        {"integers", "100 2\n", "0|0+|scan 0|rt 0|100:2"},
        {"a negative intensity", "100 -2\n", "0|0+|scan 0|rt 0|100:-2"},
        {"a decimal comma ends the m/z and hides the intensity", "100,5 2\n",
         "0|0+|scan 0|rt 0|100:0"},
        {"hexadecimal", "0x10 0x.8p1\n", "0|0+|scan 0|rt 0|16:1"},
        {"file order is kept", "300 1\n100 2\n200 3\n", "0|0+|scan 0|rt 0|300:1 100:2 200:3"},
        {"equal peaks are kept", "100 1\n100 1\n", "0|0+|scan 0|rt 0|100:1 100:1"},
        {"17 digits", "100.12345678901234 2\n", "0|0+|scan 0|rt 0|100.1234568:2"},
        {"40 digits", "100.1234567890123456789012345678901234567 2\n",
         "0|0+|scan 0|rt 0|100.1234568:2"},
    });
}

TEST(MgfReading, TheFirstPeakLineBeginsWithADigit)
{
    CheckPeaks({
        {"a leading blank makes the first one a header line", " 100 2\n200 3\n",
         "0|0+|scan 0|rt 0|200:3"},
        {"behind the first one it is read", "100 2\n 200 3\n", "0|0+|scan 0|rt 0|100:2 200:3"},
        {"a point in front of the first one", ".5 2\n200 3\n", "0|0+|scan 0|rt 0|200:3"},
        {"a point in front of a later one", "100 2\n.5 3\n", "0|0+|scan 0|rt 0|100:2 0.5:3"},
        {"a sign in front of a later one", "100 2\n+200 3\n", "0|0+|scan 0|rt 0|100:2 200:3"},
    });
}

TEST(MgfReading, B17_NumbersThatCannotBeReadAreThoseBefore)
{
    CheckPeaks({
        {"a blank line", "100 2\n\n300 4\n", "0|0+|scan 0|rt 0|100:2 100:2 300:4"},
        {"a line of blanks", "100 2\n  \n300 4\n", "0|0+|scan 0|rt 0|100:2 100:2 300:4"},
        {"a comment", "100 2\n# 200 3\n300 4\n", "0|0+|scan 0|rt 0|100:2 100:2 300:4"},
        {"a header line", "100 2\nSCANS=7\n300 4\n", "0|0+|scan 0|rt 0|100:2 100:2 300:4"},
        {"no intensity", "100 2\n300\n", "0|0+|scan 0|rt 0|100:2 300:2"},
        {"an intensity that is text", "100 2\n300 x\n", "0|0+|scan 0|rt 0|100:2 300:2"},
        {"no intensity in the first line is zero", "100\n300 4\n", "0|0+|scan 0|rt 0|100:0 300:4"},
        {"an intensity without an m/z is not read", "100 2\nx 4\n", "0|0+|scan 0|rt 0|100:2 100:2"},
    });
}

TEST(MgfReading, B23_ALineThatBeginsWithEEndsThePeaks)
{
    for (const char* const end : {"END IONS", "END IONS\r", "END", "E", "E 5 6", "Else"}) {
        MgfText mgf("BEGIN IONS\nTITLE=t\n1 2\n" + std::string(end) + "\n3 4\n");
        EXPECT_THAT(mgf.Rest(), ElementsAre("t|0|0+|scan 0|rt 0|1:2")) << end;
    }
    MgfText mgf("BEGIN IONS\nTITLE=t\n1 2\nend ions\nEND IONS\n");
    EXPECT_THAT(mgf.Rest(), ElementsAre("t|0|0+|scan 0|rt 0|1:2 1:2")) << "small letters do not";
}

TEST(MgfReading, WithoutEndTheNextRecordsLinesArePeaks)
{
    MgfText mgf("BEGIN IONS\nTITLE=t\n1 2\nBEGIN IONS\nTITLE=u\n3 4\nEND IONS\n");
    EXPECT_THAT(mgf.Rest(),
                ElementsAre("t|0|0+|scan 0|rt 0|1:2 1:2 1:2 3:4", "u|0|0+|scan 0|rt 0|3:4"));
}

TEST(MgfReading, TextBehindANulIsNotRead)
{
    CheckHeaders({
        {"inside a number", WithNuls("SCANS=7@8\n"), "0|0+|scan 7|rt 0|1:2"},
        {"before a key", WithNuls("@SCANS=7\n"), "0|0+|scan 0|rt 0|1:2"},
        {"before a peak", WithNuls("@5 6\n"), "0|0+|scan 0|rt 0|1:2"},
    });
    CheckPeaks({
        {"inside an intensity", WithNuls("100 2@5\n"), "0|0+|scan 0|rt 0|100:2"},
        {"between the columns", WithNuls("100 2\n300 @5\n"), "0|0+|scan 0|rt 0|100:2 300:2"},
        {"at the start of a peak line", WithNuls("100 2\n@300 5\n"),
         "0|0+|scan 0|rt 0|100:2 100:2"},
        {"before END IONS: goes on to the end", WithNuls("100 2\n@END IONS\n"),
         "0|0+|scan 0|rt 0|100:2 100:2"},
    });
}

TEST(MgfReading, EndOfInputEndsTheRecord)
{
    const std::vector<std::pair<std::string, std::string>> texts = {
        {"", "0|0+|scan 0|rt 0|"},
        {"SCANS=7", "0|0+|scan 7|rt 0|"},
        {"SCANS=7\n", "0|0+|scan 7|rt 0|"},
        {"SCANS=7\n1 2", "0|0+|scan 7|rt 0|1:2"},
        {"SCANS=7\n1 2\n", "0|0+|scan 7|rt 0|1:2"},
        {"SCANS=7\n1 2\n3", "0|0+|scan 7|rt 0|1:2 3:2"},
        {"SCANS=7\n1 2\n3 4", "0|0+|scan 7|rt 0|1:2 3:4"},
        {"SCANS=7\n1 2\nE", "0|0+|scan 7|rt 0|1:2"},
    };
    for (const auto& [lines, dump] : texts) {
        MgfText mgf("BEGIN IONS\nTITLE=t\n" + lines);
        EXPECT_THAT(mgf.Rest(), ElementsAre("t|" + dump)) << lines;
    }
}

TEST(MgfReading, EveryTruncationAgreesWithThePlainTwin)
{
    const std::string whole =
        "COM=x\r\nBEGIN IONS\nTITLE=a.1.2.3 scan=17\"\nPEPMASS=500.25 7\n"
        "CHARGE=2+ and 3+\nRTINSECONDS=1-2\nSCANS=7\n1e2\t2.5\n\n3 4 1+\n"
        "END IONS\n\nBEGIN IONS\nEND IONS\nBEGIN IONS\nTITLE=b\n5 6\nEND IONS";
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        MgfText mgf(whole.substr(0, length));
        EXPECT_EQ(mgf.Rest(), mgf.AllOfThePlainTwin()) << "cut at " << length;
    }
}

TEST(MgfReading, EveryPeakIsACopyOfTheScratch)
{
    TempFolder folder;
    folder.Write("a.mgf", "1 2\n3 4\nEND IONS\n");
    LineReader input;
    ASSERT_TRUE(input.Open(folder.PathOf("a.mgf"), LineReader::Mode::Binary));
    Peak scratch;
    scratch.vMatchRes.resize(2);
    Spectrum spectrum;
    mgf::ReadRecord(input, spectrum, scratch);
    ASSERT_EQ(spectrum.vPeaks.size(), 2u);
    EXPECT_EQ(spectrum.vPeaks[0].vMatchRes.size(), 2u);
    EXPECT_EQ(spectrum.vPeaks[1].vMatchRes.size(), 2u);
    EXPECT_EQ(spectrum.vPeaks[1].dMz, 3.0);
}

} // namespace
} // namespace Vorlan::test
