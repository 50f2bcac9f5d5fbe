#include "pepident/ElementMasses.h"

#include <string>
#include <vector>

#include "support/Support.h"

namespace Vorlan::test {
namespace {

const std::string kUnexpected = "Unexpected Charactor in modification composition\n";

struct MassCase {
    std::string reason;
    std::string composition;
    double mass;
};

TEST(ElementMasses, Compositions)
{
    const std::vector<MassCase> cases = {
        {"oxidation", "O1", 15.9949146},
        {"a count of 1 may be left out", "O", 15.9949146},
        {"carbamidomethyl", "C2H3N1O1", 57.0214637},
        {"without ones", "C2H3NO", 57.0214637},
        {"phospho", "HO3P", 79.9663304},
        {"a loss", "H-1N-1O1", 0.9840156},
        {"a loss of water", "H-2O-1", -18.0105647},
        {"a plus sign", "C+2H+4", 28.0313001},
        {"two digits", "C12H20O2", 196.1463299},
        {"elements in any order and twice", "OHO2PH0", 79.9663304},
        {"a count of 0", "C0", 0.0},
        {"blanks between elements", " C2 H3\tN1 O1 ", 57.0214637},
        {"chlorine is no carbon", "Cl", 34.9688527},
        {"carbon and chlorine", "CCl2", 81.9377054},
        {"bromine", "Br", 78.9183376},
        {"iron", "Fe1", 55.9349363},
        {"selenium is no sulfur", "Se", 79.9165218},
        {"sulfur", "S", 31.9720712},
        {"nothing", "", 0.0},
    };
    for (const MassCase& row : cases) {
        EXPECT_EQ(OutputOf([&] {
                      EXPECT_NEAR(CompositionMass(row.composition), row.mass, 1e-6) << row.reason;
                  }),
                  "")
            << row.reason;
    }
}

struct WrongCase {
    std::string reason;
    std::string composition;
    std::size_t messages;
    double mass;
};

TEST(ElementMasses, EveryCharacterThatFitsNoElementIsTold)
{
    const std::vector<WrongCase> cases = {
        {"an unknown element", "C1X1", 2, 12.0},
        {"and its count", "Na1H1", 2, 14.0030740 + 1.0078250},
        {"lower case", "c2", 2, 0.0},
        {"a fraction", "C1.5", 2, 12.0},
        {"a number with an exponent", "1e2", 3, 0.0},
        {"a sign without a number", "C-", 1, 12.0},
        {"a blank ends the count", "C 2", 1, 12.0},
        {"parentheses", "H(2)", 3, 1.0078250},
        {"a NUL", std::string("C\0H", 3), 1, 13.0078250},
        {"bytes above 127", "\xC3\xA9", 2, 0.0},
    };
    for (const WrongCase& row : cases) {
        EXPECT_EQ(OutputOf([&] {
                      EXPECT_NEAR(CompositionMass(row.composition), row.mass, 1e-6) << row.reason;
                  }),
                  Repeat(kUnexpected, row.messages))
            << row.reason;
    }
}

TEST(ElementMasses, CountsAreOfAnySize)
{
    EXPECT_NEAR(CompositionMass("H99999999999"), 1.00782503223 * 99999999999.0, 1e-3);
    EXPECT_GT(CompositionMass("H" + Repeat("9", 1000)), 1e300);
}

TEST(ElementMasses, ALetterOfAnElementMakesAComposition)
{
    for (const char* const text : {"C", "H1", "12N", "O", "S", "P", "Br", "l", "r", "e", "1e-3"}) {
        EXPECT_TRUE(IsComposition(text)) << text;
    }
    for (const char* const text : {"", "15.9949", "-17.02", "+1", " ", "12 x", "n", "X"}) {
        EXPECT_FALSE(IsComposition(text)) << text;
    }
}

} // namespace
} // namespace Vorlan::test
