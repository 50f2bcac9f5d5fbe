#include "pepident/ResidueMasses.h"

#include <string_view>

#include <OpenMS/CHEMISTRY/Residue.h>
#include <OpenMS/CHEMISTRY/ResidueDB.h>

#include <gtest/gtest.h>

namespace Vorlan {
namespace {

struct KnownMass {
    char letter;
    double mass;
};

const KnownMass kKnown[] = {
    {'A', 71.037114},  {'R', 156.101111}, {'N', 114.042927}, {'D', 115.026943}, {'C', 103.009185},
    {'E', 129.042593}, {'Q', 128.058578}, {'G', 57.021464},  {'H', 137.058912}, {'I', 113.084064},
    {'L', 113.084064}, {'K', 128.094963}, {'M', 131.040485}, {'F', 147.068414}, {'P', 97.052764},
    {'S', 87.032028},  {'T', 101.047679}, {'W', 186.079313}, {'Y', 163.063329}, {'V', 99.068414},
    {'O', 237.147727},
};

TEST(ResidueMasses, AreThoseOfResiduesInAPeptide)
{
    for (const KnownMass& row : kKnown) {
        EXPECT_NEAR(ResidueMass(row.letter), row.mass, 2e-5) << row.letter;
    }
}

// To the last bit, since what is left of a modified residue is compared with 0.05 Da.
TEST(ResidueMasses, AreTheWeightsOfOpenMSLessThatOfWater)
{
    for (const char letter : std::string_view("ACDEFGHIKLMNOPQRSTUVWY")) {
        const OpenMS::Residue* const residue =
            OpenMS::ResidueDB::getInstance()->getResidue(static_cast<unsigned char>(letter));
        ASSERT_NE(residue, nullptr) << letter;
        EXPECT_EQ(ResidueMass(letter), residue->getMonoWeight(OpenMS::Residue::Full) - 18.010565)
            << letter;
    }
}

// OpenMS takes the lightest isotope of selenium, not the most frequent one.
TEST(ResidueMasses, SelenocysteineIsThatOfOpenMS)
{
    EXPECT_NEAR(ResidueMass('U'), 144.959591, 2e-5);
}

TEST(ResidueMasses, UnknownLettersWeighNothing)
{
    for (const char letter : std::string_view("amz-*1 \0\xC4", 9)) {
        EXPECT_EQ(ResidueMass(letter), 0.0) << static_cast<int>(letter);
    }
}

} // namespace
} // namespace Vorlan
