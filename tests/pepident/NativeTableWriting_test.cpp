// The native table as written: exact bytes, failures.
#include <cmath>
#include <filesystem>
#include <limits>
#include <locale>
#include <string>
#include <vector>

#include <unistd.h>

#include "pepident/MatchText.h"
#include "pepident/PlainNativeTable.h"

namespace Vorlan::test {
namespace {

PeptideIdentification FullMatch()
{
    PeptideIdentification match;
    match.strDatasetName = "d.mgf";
    match.strSpectrumName = "run.00012.00012.2";
    match.strSequence = "PEPTIDEK";
    match.nCharge = 2;
    match.dObsMH = 928.4622;
    match.dMassShift = -0.0001;
    match.dMainScore = 3.25;
    match.bHighScoreBetter = true;
    match.vMods = {{"Oxidation (M)", 15.9949, "M", "Anywhere", 3},
                   {"Acetyl (Any N-term)", 42.01, "N-term", "Any N-term", 0}};
    match.vEvidences = {{"P1", 17, 25, 'K', 'A'}, {"P2", -1, 0, '-', 'X'}};
    return match;
}

/// The rows behind the header.
std::string RowsOf(const std::vector<PeptideIdentification>& matches)
{
    const std::string text = NativeTextOf(matches);
    EXPECT_EQ(text.substr(0, kNativeHeader.size()), kNativeHeader);
    return text.substr(kNativeHeader.size());
}

Thrown NotWritable(const std::string& path)
{
    return {"FileNotWritable", "PeptideIdentificationIO", kNativeSave,
            "the file '" + path + "' is not writable for the current user"};
}

TEST(NativeTableWriting, NoMatches)
{
    EXPECT_EQ(NativeTextOf({}), kNativeHeader);
}

TEST(NativeTableWriting, AFullRow)
{
    EXPECT_EQ(RowsOf({FullMatch()}),
              "d.mgf\trun.00012.00012.2\tPEPTIDEK\t2\t928.462200\t-0.000100\t3.250000\t1\t"
              "Oxidation (M);Acetyl (Any N-term)\t3;0\tP1;P2\tK;-\tA;X\t17;-1\n");
}

TEST(NativeTableWriting, WithoutModificationsAndProteins)
{
    PeptideIdentification match = FullMatch();
    match.vEvidences.clear();
    EXPECT_EQ(RowsOf({match}),
              "d.mgf\trun.00012.00012.2\tPEPTIDEK\t2\t928.462200\t-0.000100\t3.250000\t1\t"
              "Oxidation (M);Acetyl (Any N-term)\t3;0\t\t\t\t\n");
    match = FullMatch();
    match.vMods.clear();
    EXPECT_EQ(RowsOf({match}),
              "d.mgf\trun.00012.00012.2\tPEPTIDEK\t2\t928.462200\t-0.000100\t3.250000\t1\t"
              "\t\tP1;P2\tK;-\tA;X\t17;-1\n");
    EXPECT_EQ(RowsOf({PeptideIdentification()}),
              "\t\t\t0\t0.000000\t0.000000\t0.00000e+00\t0\t\t\t\t\t\t\n");
}

TEST(NativeTableWriting, AlternativeModificationsAreNotWritten)
{
    PeptideIdentification match = FullMatch();
    match.vAltMods = match.vMods;
    EXPECT_EQ(RowsOf({match}), RowsOf({FullMatch()}));
}

struct NumberCase {
    std::string reason;
    double value;
    std::string fixed;
    std::string score;
};

TEST(NativeTableWriting, Numbers)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const std::vector<NumberCase> cases = {
        {"one half", 0.5, "0.500000", "0.500000"},
        {"zero is below the border", 0, "0.000000", "0.00000e+00"},
        {"the border itself", 0.00001, "0.000010", "0.000010"},
        {"just below it", std::nextafter(0.00001, 0.0), "0.000010", "1.00000e-05"},
        {"a millionth", 0.000001, "0.000001", "1.00000e-06"},
        {"very small", 1.23456789e-300, "0.000000", "1.23457e-300"},
        {"negative", -3.25, "-3.250000", "-3.25000e+00"},
        {"negative and large", -123456789.125, "-123456789.125000", "-1.23457e+08"},
        {"rounded to even", 0.0000005, "0.000000", "5.00000e-07"},
        {"large", 1e15, "1000000000000000.000000", "1000000000000000.000000"},
        {"huge", 1e22, "10000000000000000000000.000000", "10000000000000000000000.000000"},
        {"infinite", kInfinity, "inf", "inf"},
        {"minus infinite", -kInfinity, "-inf", "-inf"},
        {"not a number", std::numeric_limits<double>::quiet_NaN(), "nan", "nan"},
    };
    for (const NumberCase& row : cases) {
        PeptideIdentification match;
        match.dObsMH = match.dMassShift = match.dMainScore = row.value;
        EXPECT_EQ(RowsOf({match}), "\t\t\t0\t" + row.fixed + "\t" + row.fixed + "\t" + row.score
                                       + "\t0\t\t\t\t\t\t\n")
            << row.reason;
    }
}

TEST(NativeTableWriting, LargestNumbers)
{
    PeptideIdentification match;
    match.dObsMH = std::numeric_limits<double>::max();
    match.dMassShift = std::numeric_limits<double>::lowest();
    match.dMainScore = std::numeric_limits<double>::max();
    match.nCharge = std::numeric_limits<std::uint64_t>::max();
    match.vMods = {{"a", 0, "", "", std::numeric_limits<std::int32_t>::min()}};
    match.vEvidences = {{"P", std::numeric_limits<std::int32_t>::max(), 0, 'K', 'A'}};
    EXPECT_EQ(NativeTextOf({match}), PlainNativeText({match}));
    EXPECT_NE(NativeTextOf({match}).find("\t18446744073709551615\t"), std::string::npos);
}

TEST(NativeTableWriting, TheNotationOfOneRowDoesNotReachTheNext)
{
    PeptideIdentification small;
    small.dMainScore = 0.000001;
    small.dObsMH = 1.5;
    PeptideIdentification large = small;
    large.dMainScore = 2.5;
    EXPECT_EQ(RowsOf({small, large, small}),
              "\t\t\t0\t1.500000\t0.000000\t1.00000e-06\t0\t\t\t\t\t\t\n"
              "\t\t\t0\t1.500000\t0.000000\t2.500000\t0\t\t\t\t\t\t\n"
              "\t\t\t0\t1.500000\t0.000000\t1.00000e-06\t0\t\t\t\t\t\t\n");
}

/// Groups of three digits and a decimal comma.
class OtherPunctuation : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(NativeTableWriting, TheHostsLocaleChangesNothing)
{
    PeptideIdentification match = FullMatch();
    match.nCharge = 1234567;
    match.vMods[0].nPos = 1000;
    match.vEvidences[0].nStart = 20000;
    const std::string expected = NativeTextOf({match});
    const std::locale former =
        std::locale::global(std::locale(std::locale::classic(), new OtherPunctuation));
    const std::string text = NativeTextOf({match});
    std::locale::global(former);
    EXPECT_EQ(text, expected);
    EXPECT_NE(text.find("\t1234567\t928.462200\t"), std::string::npos);
    EXPECT_NE(text.find("\t20000;-1\n"), std::string::npos);
}

TEST(NativeTableWriting, InitSaveEmptiesTheFile)
{
    const TempFolder folder;
    const std::string path = folder.Write("t.txt", "former contents");
    TulkTXTPepIdentIO writer;
    writer.InitSave(path);
    EXPECT_EQ(ReadFile(path), "");
}

TEST(NativeTableWriting, EverythingIsInTheFileWhenSaveReturns)
{
    const TempFolder folder;
    TulkTXTPepIdentIO writer;
    writer.InitSave(folder.PathOf("t.txt"));
    OutputOf([&] { writer.Save(std::vector<PeptideIdentification>(3)); });
    EXPECT_EQ(ReadFile(folder.PathOf("t.txt")),
              NativeTextOf(std::vector<PeptideIdentification>(3)));
}

TEST(NativeTableWriting, ASecondSaveWritesASecondHeader)
{
    const TempFolder folder;
    TulkTXTPepIdentIO writer;
    writer.InitSave(folder.PathOf("t.txt"));
    const std::string printed = OutputOf([&] { writer.Save({FullMatch()}); });
    EXPECT_NE(printed, "");
    EXPECT_EQ(OutputOf([&] { writer.Save({FullMatch()}); }), printed) << "rows count from 1 again";
    const std::string once = NativeTextOf({FullMatch()});
    EXPECT_EQ(ReadFile(folder.PathOf("t.txt")), once + once);
}

TEST(NativeTableWriting, AnObjectMayWriteOneFileAfterTheOther)
{
    const TempFolder folder;
    TulkTXTPepIdentIO writer;
    for (const char* const name : {"a.txt", "b.txt"}) {
        writer.InitSave(folder.PathOf(name));
        OutputOf([&] { writer.Save({FullMatch()}); });
        writer.EndSave();
        EXPECT_EQ(ReadFile(folder.PathOf(name)), NativeTextOf({FullMatch()}));
    }
}

TEST(NativeTableWriting, AFileThatIsOpenIsNotReplacedByAnother)
{
    const TempFolder folder;
    const std::string second = folder.PathOf("b.txt");
    TulkTXTPepIdentIO writer;
    writer.InitSave(folder.PathOf("a.txt"));
    writer.InitSave(second);
    EXPECT_EQ(ThrownBy([&] { writer.Save({FullMatch()}); }), NotWritable(second));
    EXPECT_EQ(ReadFile(folder.PathOf("a.txt")), "");
    EXPECT_FALSE(std::filesystem::exists(second));
    writer.EndSave();
    writer.InitSave(second);
    OutputOf([&] { writer.Save({FullMatch()}); });
    EXPECT_EQ(ReadFile(second), NativeTextOf({FullMatch()}));
}

TEST(NativeTableWriting, SaveWithoutInitSaveIsNotWritable)
{
    TulkTXTPepIdentIO writer;
    EXPECT_EQ(OutputOf([&] {
                  EXPECT_EQ(ThrownBy([&] { writer.Save({FullMatch()}); }), NotWritable(""));
              }),
              "");
}

TEST(NativeTableWriting, SaveAfterEndSaveIsNotWritable)
{
    const TempFolder folder;
    TulkTXTPepIdentIO writer;
    writer.InitSave(folder.PathOf("t.txt"));
    writer.EndSave();
    EXPECT_EQ(ThrownBy([&] { writer.Save({}); }), NotWritable(folder.PathOf("t.txt")));
    EXPECT_EQ(ReadFile(folder.PathOf("t.txt")), "");
}

TEST(NativeTableWriting, WhatCannotBeOpenedIsReportedBySave)
{
    const TempFolder folder;
    for (const std::string& path :
         {folder.Path(), folder.PathOf("missing") + "/t.txt", folder.PathOf("a\\b\\t.txt")}) {
        TulkTXTPepIdentIO writer;
        EXPECT_EQ(OutputOf([&] { writer.InitSave(path); }), "");
        EXPECT_EQ(ThrownBy([&] { writer.Save({}); }), NotWritable(path));
    }
}

TEST(NativeTableWriting, APathWithANulIsReportedAndIsNotTheFileInFrontOfIt)
{
    const TempFolder folder;
    const std::string path = folder.Write("t.txt", "former");
    TulkTXTPepIdentIO writer;
    writer.InitSave(path + '\0');
    EXPECT_EQ(ThrownBy([&] { writer.Save({}); }).name, "FileNotWritable");
    EXPECT_EQ(ReadFile(path), "former");
}

TEST(NativeTableWriting, AFullDiskIsReported)
{
    if (::access("/dev/full", W_OK) != 0) {
        GTEST_SKIP() << "no /dev/full";
    }
    TulkTXTPepIdentIO writer;
    writer.InitSave("/dev/full");
    OutputOf([&] {
        EXPECT_EQ(ThrownBy([&] { writer.Save({FullMatch()}); }), NotWritable("/dev/full"));
        EXPECT_EQ(ThrownBy([&] { writer.Save({FullMatch()}); }), NotWritable("/dev/full"))
            << "the output has failed before";
    });
}

} // namespace
} // namespace Vorlan::test
