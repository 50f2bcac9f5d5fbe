#include "pepident/ReaderSteps.h"

#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "PeptideIdentificationIO.h"
#include "support/Exceptions.h"
#include "support/Random.h"
#include "support/Sanitized.h"
#include "support/Support.h"
#include "util/RandomNumbers.h"

namespace Vorlan::test {
namespace {

TEST(ReaderSteps, FolderAndNameAreJoinedByOneBackslash)
{
    const std::vector<std::pair<std::string, std::string>> folders = {
        {"results", "results\\a.txt"}, {"results\\", "results\\a.txt"},
        {"r\\s\\\\\\", "r\\s\\a.txt"}, {"", "\\a.txt"},
        {"\\\\", "\\a.txt"},           {"/data/", "/data/\\a.txt"},
    };
    for (const auto& [folder, path] : folders) {
        PepIdentSource source(folder, "a.txt", PepIdentType::MsgfTsv);
        EXPECT_EQ(ResultPathOf(source), path) << folder;
        source.strThird = folder;
        source.strFourth = "b.txt";
        EXPECT_EQ(SecondPathOf(source), path.substr(0, path.size() - 5) + "b.txt") << folder;
    }
}

TEST(ReaderSteps, RowsAreLineFeedsLessOne)
{
    const TempFolder folder;
    const std::vector<std::pair<std::string, std::uint64_t>> texts = {
        {"header\n", 0},
        {"header\nrow\n", 1},
        {"header\nrow", 0},
        {"header\n\n\n", 2},
        {"header\r\nrow\r\n", 1},
        {"\r\r", std::numeric_limits<std::uint64_t>::max()},
        {"", std::numeric_limits<std::uint64_t>::max()},
        {std::string("\0\n\0\n", 4), 1},
        {Repeat("0123456789\n", 100000), 99999}, // several blocks
    };
    for (const auto& [text, rows] : texts) {
        EXPECT_EQ(CountResultRows(folder.Write("a", text), "label"), rows) << text.substr(0, 20);
    }
    EXPECT_EQ(ThrownBy([] { CountResultRows("/no/file", "label"); }),
              (Thrown{"FileNotReadable", "PeptideIdentificationIO", "label",
                      "the file '/no/file' is not readable for the current user"}));
}

TEST(ReaderSteps, TheFirstCharacterOrAnother)
{
    EXPECT_EQ(FirstOr("KR", 'X'), 'K');
    EXPECT_EQ(FirstOr("", 'X'), 'X');
}

TEST(ReaderSteps, NumbersOfOpenMSThrow)
{
    EXPECT_EQ(IntOf(" 7 "), 7);
    EXPECT_EQ(DoubleOf("-1.5e2"), -150.0);
    for (const char* const text : {"", "x", "7x", "1.5"}) {
        EXPECT_EQ(ThrownBy([text] { IntOf(text); }).name, "ConversionError") << text;
    }
    for (const char* const text : {"", "x", "1,5"}) {
        EXPECT_EQ(ThrownBy([text] { DoubleOf(text); }).name, "ConversionError") << text;
    }
}

/// What a cell is for a function: its bits, or the exception with its words.
template <typename Value, typename Read>
std::string Outcome(Read read)
{
    Value value{};
    const Thrown thrown = ThrownBy([&] { value = read(); });
    return thrown.name.empty() ? std::string(reinterpret_cast<const char*>(&value), sizeof value)
                               : thrown.name + ": " + thrown.message;
}

void ExpectAsOpenMS(const std::string& cell)
{
    const OpenMS::String text(cell);
    EXPECT_EQ(Outcome<std::int32_t>([&] { return IntOf(cell); }),
              Outcome<std::int32_t>([&] { return text.toInt(); }))
        << testing::PrintToString(cell);
    EXPECT_EQ(Outcome<double>([&] { return DoubleOf(cell); }),
              Outcome<double>([&] { return text.toDouble(); }))
        << testing::PrintToString(cell);
}

TEST(ReaderSteps, NumbersAreThoseOfOpenMSOnHostileCells)
{
    const std::string digits = "12345678901234567890123456789012345678901234567890";
    for (const char* const sign : {"", "-", "+", "--", " -", "- "}) {
        for (std::size_t whole = 0; whole < 24; ++whole) {
            const std::string zeros(whole, '0');
            for (const std::string& front : {digits.substr(0, whole), zeros, zeros + "7"}) {
                ExpectAsOpenMS(sign + front);
                ExpectAsOpenMS(sign + front + "." + digits.substr(0, 3));
                ExpectAsOpenMS(sign + digits.substr(0, 4) + "." + front);
                ExpectAsOpenMS(sign + front + ".");
                ExpectAsOpenMS(sign + front + "e2");
            }
        }
    }
    for (const char* const cell : {"2147483647",
                                   "2147483648",
                                   "-2147483648",
                                   "-2147483649",
                                   "999999999",
                                   "0.1",
                                   "-0",
                                   "-0.0",
                                   "9007199254740993",
                                   "900719925474099.3",
                                   "1,5",
                                   "1.2.3",
                                   "0x10",
                                   "nan",
                                   "-inf",
                                   "1e400",
                                   "1e-400",
                                   "\xC2\xA0"
                                   "1",
                                   "1 ",
                                   "\t1",
                                   "1\r",
                                   ".",
                                   "-.",
                                   "-.5",
                                   ""}) {
        ExpectAsOpenMS(cell);
    }
    ExpectAsOpenMS(std::string("1\0", 2));
    ExpectAsOpenMS(std::string("1\0"
                               "2",
                               3));
}

TEST(ReaderSteps, NumbersAreThoseOfOpenMSOnRandomCells)
{
    // Most of them throw in OpenMS, which takes long under sanitizers.
    constexpr int kNumbers = kSanitized ? 10000 : 50000;
    Random random(71);
    for (int i = 0; i < kNumbers && !testing::Test::HasFailure(); ++i) {
        ExpectAsOpenMS(RandomNumber(random));
        ExpectAsOpenMS(RandomNumberBytes(random));
        std::string plain = random.Text("0123456789", 1 + random.Below(18));
        ExpectAsOpenMS(plain.insert(random.Below(plain.size() + 1), 1, '.'));
    }
}

TEST(ReaderSteps, TerminiAreSpelledWithAny)
{
    const std::vector<std::pair<std::string, std::string>> names = {
        {"Acetyl (N-term)", "Acetyl (Any N-term)"},
        {"Amidated (C-term)", "Amidated (Any C-term)"},
        {"Gln->pyro-Glu (N-term Q)", "Gln->pyro-Glu (Any N-term Q)"},
        {"Acetyl (Any N-term)", "Acetyl (Any N-term)"},
        {"Acetyl (Protein N-term)", "Acetyl (Protein N-term)"},
        {"Acetyl(N-term)", "Acetyl(N-term)"},
        {"a (N-term (N-term", "a (Any N-term (N-term"},
        {"a (C-term (N-term", "a (Any C-term (Any N-term"},
        {"Oxidation (M)", "Oxidation (M)"},
        {"", ""},
    };
    for (const auto& [name, spelled] : names) {
        EXPECT_EQ(WithAnyTerm(name), spelled);
    }
}

TEST(ReaderSteps, MassesAndCharges)
{
    const double proton = 1.007276466;
    EXPECT_NEAR(MhOf(500.0, 1), 500.0, 1e-9);
    EXPECT_NEAR(MhOf(500.0, 2), 1000.0 - proton, 1e-6);
    EXPECT_NEAR(MhOf(500.0, 3), 1500.0 - 2 * proton, 1e-6);
    EXPECT_NEAR(MzOf(1000.0, 1), 1000.0, 1e-9);
    EXPECT_NEAR(MzOf(1000.0 - proton, 2), 500.0, 1e-6);
    for (const std::int32_t charge : {0, -1, std::numeric_limits<std::int32_t>::min()}) {
        EXPECT_EQ(MhOf(500.0, charge), 0.0) << charge;
        EXPECT_EQ(MzOf(500.0, charge), 0.0) << charge;
    }
    const std::int32_t most = std::numeric_limits<std::int32_t>::max();
    EXPECT_NEAR(MzOf(MhOf(500.0, most), most), 500.0, 1e-6);
}

TEST(ReaderSteps, FormatsThatShowNoProgressCountNoRows)
{
    for (const auto type :
         {PepIdentType::Pfind28Txt, PepIdentType::Pfind3Spectra, PepIdentType::SequestTxt}) {
        PeptideIdentificationIO* reader = PepIdentIOFactory::pGetPepIdentIO(type);
        EXPECT_NO_THROW(reader->GetResultNumberOfFile()) << "no file is needed for it";
        PepIdentIOFactory::DesctroyPepIdentIO(reader);
    }
}

} // namespace
} // namespace Vorlan::test
