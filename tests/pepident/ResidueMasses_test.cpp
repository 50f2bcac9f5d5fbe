#include "pepident/ResidueMasses.h"

#include <cstdlib>
#include <iostream>
#include <new>
#include <optional>
#include <string_view>

#include <OpenMS/CHEMISTRY/Residue.h>
#include <OpenMS/CHEMISTRY/ResidueDB.h>

#include "support/Exceptions.h"
#include "support/FailingMemory.h"
#include "support/Support.h"

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

/// Asks where OpenMS has no residues, and again where it has: the file is copied into
/// its folder in between.
[[noreturn]] void AskTwice(const std::string& residues, const std::string& folder)
{
    std::cerr << test::ThrownBy([] { ResidueMass('G'); }).name;
    std::filesystem::copy_file(residues, folder + "/CHEMISTRY/Residues.xml");
    std::cerr << ", then " << ResidueMass('G') << ", " << ResidueMass('-');
    std::_Exit(0);
}

TEST(ResidueMassesAlone, AreAskedForAgainWhereOpenMSCouldNotReadThem)
{
    const std::string elements = test::OpenMSFile("CHEMISTRY/Elements.xml");
    const std::string residues = test::OpenMSFile("CHEMISTRY/Residues.xml");
    if (elements.empty() || residues.empty()) {
        GTEST_SKIP() << "no real files: the data of OpenMS are not there";
    }
    // OpenMS looks for its data when it is loaded. So this test begins anew, in a
    // process that finds the folder in its environment.
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    constexpr char kFolder[] = "PELGRIN_TEST_OPENMS";
    std::optional<test::TempFolder> made;
    if (std::getenv(kFolder) == nullptr) {
        made.emplace();
        std::filesystem::create_directory(made->PathOf("CHEMISTRY"));
        std::filesystem::copy_file(elements, made->PathOf("CHEMISTRY/Elements.xml"));
        ::setenv(kFolder, made->Path().c_str(), 1);
        ::setenv("OPENMS_DATA_PATH", made->Path().c_str(), 1);
    }
    EXPECT_EXIT(AskTwice(residues, std::getenv(kFolder)), testing::ExitedWithCode(0),
                testing::StrEq("FileNotFound, then 57.0215, 0"));
}

// Xerces, with which OpenMS reads, has an exception of its own for the end of memory.
TEST(ResidueMassesAlone, AreAskedForAgainWhereMemoryEnded)
{
    PELGRIN_NEEDS_FAILING_MEMORY();
    std::size_t failures = 0;
    double mass = 0.0;
    for (std::size_t number = 1; mass == 0.0; number += 1 + number / 8) {
        try {
            const test::FailingMemory memory(number);
            mass = ResidueMass('G');
        } catch (const std::bad_alloc&) {
            ++failures;
        }
    }
    EXPECT_GT(failures, 10u);
    EXPECT_NEAR(mass, 57.021464, 2e-5);
}

} // namespace
} // namespace Vorlan
