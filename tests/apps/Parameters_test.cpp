#include "run/Parameters.h"

#include <cmath>

#include "common/Failure.h"
#include "common/Words.h"
#include "support/Support.h"

namespace pelgrin {
namespace {

using testing::HasSubstr;
using Vorlan::Peak;
using Vorlan::TolType;

template <typename Call>
std::string RefusalOf(Call call)
{
    try {
        call();
    } catch (const UsageError& error) {
        return error.what();
    }
    return "no refusal";
}

TEST(ParseTolerance, TakesAPositiveNumberAndAUnit)
{
    struct Case {
        const char* reason;
        const char* text;
        double value;
        TolType::ETolType unit;
    };
    for (const Case& c :
         {Case{"ppm", "20ppm", 20.0, TolType::Ppm}, Case{"dalton", "0.02Da", 0.02, TolType::Da},
          Case{"unit in other case", "20PPM", 20.0, TolType::Ppm},
          Case{"unit in other case", "0.5dA", 0.5, TolType::Da},
          Case{"blank before the unit", "10 ppm", 10.0, TolType::Ppm},
          Case{"exponent", "1e-2Da", 0.01, TolType::Da},
          Case{"sign", "+5ppm", 5.0, TolType::Ppm}}) {
        SCOPED_TRACE(c.reason);
        const Tolerance tolerance = ParseTolerance(c.text);
        EXPECT_EQ(tolerance.value, c.value);
        EXPECT_EQ(tolerance.unit, c.unit);
    }
}

TEST(ParseTolerance, RefusesEverythingElseAndSaysWhatIsWanted)
{
    for (const char* const text :
         {"", "20", "ppm", "Da", "0ppm", "-1Da", "nanppm", "infDa", "1e999Da", "20 mmu", "0,02Da",
          "20ppmx", "2 0ppm", "0x10ppm", "20ppmda", "+-5ppm"}) {
        const std::string refusal = RefusalOf([&] { ParseTolerance(text); });
        EXPECT_EQ(refusal, "--tolerance: \"" + std::string(text)
                               + "\" is not a positive number followed by ppm or Da, such as 20ppm "
                                 "or 0.02Da");
    }
}

TEST(ParseIons, TakesLettersInTheirOrderAndEachOnce)
{
    using Ions = std::vector<Peak::EIonType>;
    EXPECT_EQ(ParseIons("b,y"), (Ions{Peak::B_ION, Peak::Y_ION}));
    EXPECT_EQ(ParseIons("z,x,c,a"), (Ions{Peak::Z_ION, Peak::X_ION, Peak::C_ION, Peak::A_ION}));
    EXPECT_EQ(ParseIons("Y, b,y"), (Ions{Peak::Y_ION, Peak::B_ION}));
}

TEST(ParseIons, NamesTheChoicesForAnUnknownLetter)
{
    EXPECT_EQ(RefusalOf([] { ParseIons("b,q"); }),
              "--ions: \"q\" is not an ion series; choose from a, b, c, x, y, z, as in b,y");
    for (const char* const text : {"", ",", "b,", ",y", "by", "b;y", "b,,y"}) {
        EXPECT_THAT(RefusalOf([&] { ParseIons(text); }), HasSubstr("choose from a, b, c")) << text;
    }
}

TEST(LetterOf, IsTheLetterThatParseIonsReads)
{
    for (const char letter : std::string("abcxyz")) {
        EXPECT_EQ(LetterOf(ParseIons(std::string(1, letter)).at(0)), letter);
    }
}

TEST(ParseModification, SplitsAtTheLastEqualsSign)
{
    EXPECT_EQ(ParseModification("Oxidation (M)=15.994915"),
              std::make_pair(std::string("Oxidation (M)"), 15.994915));
    EXPECT_EQ(ParseModification("a=b=-17.5"), std::make_pair(std::string("a=b"), -17.5));
    EXPECT_EQ(ParseModification("x= +1"), std::make_pair(std::string("x"), 1.0));
}

TEST(ParseModification, RefusesWhatHasNoNameOrNoMass)
{
    for (const char* const text :
         {"", "=", "=5", "Oxidation (M)", "Oxidation (M)=", "x=abc", "x=1.5Da", "x=nan", "x=inf"}) {
        EXPECT_THAT(RefusalOf([&] { ParseModification(text); }),
                    HasSubstr("is not a name, \"=\" and a mass in Da"))
            << text;
    }
}

TEST(ParseModifications, TakesBothSpellingsOfATerminusForOneName)
{
    const ModificationMasses masses = ParseModifications({"Acetyl (N-term)=42.01"});
    EXPECT_EQ(masses.count("Acetyl (Any N-term)"), 1U);
    EXPECT_EQ(RefusalOf([] {
                  ParseModifications({"Acetyl (N-term)=42.01", "Acetyl (Any N-term)=43"});
              }),
              "--mod: \"Acetyl (Any N-term)\" is given twice, with two masses");
}

TEST(ParseModifications, GivesEachResidueOfANameItsMass)
{
    const ModificationMasses masses = ParseModifications({"Oxidation (MW)=16", "Acetyl(K)=42"});
    EXPECT_THAT(masses, testing::UnorderedElementsAre(testing::Pair("Oxidation (MW)", 16.0),
                                                      testing::Pair("Oxidation (M)", 16.0),
                                                      testing::Pair("Oxidation (W)", 16.0),
                                                      testing::Pair("Acetyl(K)", 42.0),
                                                      testing::Pair("Acetyl (K)", 42.0)));
    for (const char* const other : {"Oxidation (M)=17", "Oxidation(M)=17", "Oxidation (CM)=17"}) {
        EXPECT_EQ(RefusalOf([&] {
                      ParseModifications({"Oxidation (MW)=16", other});
                  }),
                  "--mod: \"Oxidation (M)\" is given twice, with two masses");
    }
    // One list for reading "(MW)" and for annotating "(M)".
    EXPECT_EQ(
        ParseModifications({"Oxidation (MW)=16", "Oxidation (M)=16", "Oxidation(M)=16"}).size(),
        4U);
}

TEST(NamesGiven, AreThoseOfTheUser)
{
    EXPECT_THAT(NamesGiven({"Oxidation (MW)=16", "Acetyl (N-term)=42"}),
                testing::UnorderedElementsAre("Oxidation (MW)", "Acetyl (Any N-term)"));
}

TEST(Clip, CutsNoLetter)
{
    const std::string text = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80z"; // 1, 2, 3, 4, 1 bytes
    const std::vector<std::size_t> sizes = {0, 1, 1, 3, 3, 3, 6, 6, 6, 6, 10, 11, 11};
    for (std::size_t most = 0; most < sizes.size(); ++most) {
        EXPECT_EQ(Clip(text, most), text.substr(0, sizes[most])) << most;
    }
    // Bytes that are no letters are cut anywhere.
    EXPECT_EQ(Clip(std::string(9, '\x80'), 5), std::string(2, '\x80'));
}

TEST(WithAnyTerm, SpellsATerminusAsTheTableReaderDoes)
{
    EXPECT_EQ(WithAnyTerm("Carbamyl (N-term)"), "Carbamyl (Any N-term)");
    EXPECT_EQ(WithAnyTerm("Amidated (C-term)"), "Amidated (Any C-term)");
    EXPECT_EQ(WithAnyTerm("Acetyl (Protein N-term)"), "Acetyl (Protein N-term)");
    EXPECT_EQ(WithAnyTerm("Acetyl (Any N-term)"), "Acetyl (Any N-term)");
    EXPECT_EQ(WithAnyTerm("Oxidation (M)"), "Oxidation (M)");
}

TEST(ParseMinShift, TakesFiniteMassesFromZeroOn)
{
    EXPECT_EQ(ParseMinShift("0"), 0.0);
    EXPECT_EQ(ParseMinShift("0.5"), 0.5);
    for (const char* const text : {"-0.1", "nan", "inf", "", "half"}) {
        EXPECT_THAT(RefusalOf([&] { ParseMinShift(text); }), HasSubstr("--min-shift")) << text;
    }
}

TEST(ParseFormat, TakesTheNamesOfReadersAndNamesThemForOthers)
{
    EXPECT_EQ(ParseFormat("Calvex (.txt)"), Vorlan::PepIdentType::CalvexTxt);
    EXPECT_EQ(ParseFormat("CALVEX (.TXT)"), Vorlan::PepIdentType::CalvexTxt);
    for (const char* const text : {"", "unknown", "native", "Mascot_dat"}) {
        EXPECT_THAT(RefusalOf([&] { ParseFormat(text); }),
                    HasSubstr("choose from " + FormatChoices()))
            << text;
    }
    EXPECT_THAT(FormatChoices(), HasSubstr("\"Calvex (.txt)\""));
}

} // namespace
} // namespace pelgrin
