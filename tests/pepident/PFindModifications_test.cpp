// Names, sites and masses of the modifications of pFind.
#include "pepident/PFindModifications.h"

#include <string>
#include <vector>

#include <OpenMS/CONCEPT/Exception.h>
#include <OpenMS/CONCEPT/GlobalExceptionHandler.h>

#include "param/ParameterText.h"
#include "pepident/EngineTableText.h"
#include "support/Sanitized.h"

namespace Vorlan::test {
namespace {

using pfind::MassesByName;
using pfind::ParsePFind28;
using pfind::ParsePFind3;

struct EntryCase {
    std::string reason;
    std::string entry;
    std::string mod;
};

TEST(PFindModifications, EntriesOfPFind3)
{
    const std::vector<EntryCase> cases = {
        {"a residue", "2,Oxidation[M]", "Oxidation@2 on M Anywhere +0.000000"},
        {"the start of a protein", "0,Acetyl[ProteinN-term]",
         "Acetyl@0 on ProteinN-term Protein N-term +0.000000"},
        {"any start", "0,TMT6plex[AnyN-term]", "TMT6plex@0 on AnyN-term Any N-term +0.000000"},
        {"a start with its residue", "0,Gln->pyro-Glu[AnyN-termQ]",
         "Gln->pyro-Glu@0 on AnyN-termQ Any N-term +0.000000"},
        {"the end of a protein", "9,Amidated[ProteinC-term]",
         "Amidated@9 on ProteinC-term Protein C-term +0.000000"},
        {"several residues", "3,Phospho[STY]", "Phospho@3 on STY Anywhere +0.000000"},
        {"a bracket in the name", "3,a[b]c[K]", "a[b]c@3 on K Anywhere +0.000000"},
        {"two parts", "3,Link[K](Part[R])", "Link(Part)@3 on K Anywhere +0.000000"},
        {"two parts at a terminus", "0,Link[AnyN-term](Part[AnyN-term])",
         "Link(Part)@0 on AnyN-term Any N-term +0.000000"},
        {"two parts, the second one without a site", "3,Link[K](Part])",
         "Link(Part]))@3 on K Anywhere +0.000000"},
        {"a bracket in the second name", "3,Link[K](a[b]c[R])",
         "Link(a[b]c)@3 on K Anywhere +0.000000"},
        {"three parts: the last one is not told", "3,A[K](B[K](C[K])",
         "A(B)@3 on K Anywhere +0.000000"},
        {"three parts, the second one without a site", "3,A[K](B](C[K])",
         "A(B)@3 on K Anywhere +0.000000"},
        {"a closing one without parts", "3,Link[K])", "Link@3 on K Anywhere +0.000000"},
        {"no site", "3,Oxidation", "Oxidation@3 on  Anywhere +0.000000"},
        {"an open site", "3,Oxidation[M", "Oxidation@3 on M Anywhere +0.000000"},
        {"a comma in the name", "3,a,b[K]", "a,b@3 on K Anywhere +0.000000"},
        {"no position", "x,Oxidation[M]", "Oxidation@0 on M Anywhere +0.000000"},
        {"no comma", "3", "@3 on  Anywhere +0.000000"},
        {"nothing", "", "@0 on  Anywhere +0.000000"},
    };
    for (const EntryCase& row : cases) {
        EXPECT_EQ(FullDump(ParsePFind3(row.entry)), row.mod) << row.reason;
    }
}

TEST(PFindModifications, NamesOfPFind28)
{
    const std::vector<EntryCase> cases = {
        {"a residue", "Oxidation (M)", "Oxidation (M)@7 on M Anywhere +0.000000"},
        {"a terminus gets its Any", "Acetyl (N-term)",
         "Acetyl (Any N-term)@7 on Any N-term Any N-term +0.000000"},
        {"the other one", "Amidated (C-term)",
         "Amidated (Any C-term)@7 on Any C-term Any C-term +0.000000"},
        {"it has one", "Acetyl (Any N-term)",
         "Acetyl (Any N-term)@7 on Any N-term Any N-term +0.000000"},
        {"of a protein", "Acetyl (Protein N-term)",
         "Acetyl (Protein N-term)@7 on Protein N-term Protein N-term +0.000000"},
        {"a terminus with its residue", "Gln->pyro-Glu (N-term Q)",
         "Gln->pyro-Glu (Any N-term Q)@7 on Any N-term Q Any N-term +0.000000"},
        {"only the first one", "a (N-term (N-term)",
         "a (Any N-term (N-term)@7 on N-term Any N-term +0.000000"},
        {"an underscore", "Oxidation_M", "Oxidation_M@7 on  Anywhere +0.000000"},
        {"not closed", "Oxidation (M", "Oxidation (M@7 on  Anywhere +0.000000"},
        {"nothing", "", "@7 on  Anywhere +0.000000"},
    };
    for (const EntryCase& row : cases) {
        EXPECT_EQ(FullDump(ParsePFind28(row.entry, 7)), row.mod) << row.reason;
    }
}

class PFindMasses : public ParameterTest {};

TEST_F(PFindMasses, OfTheDefaultTable)
{
    MassesByName masses;
    EXPECT_EQ(masses.Of("Oxidation", "M"), 15.994915);
    EXPECT_EQ(masses.Of("Oxidation (M)", "M"), 15.994915);
    EXPECT_EQ(masses.Of("Cap (Any N-term)", "Any N-term"), 1.0);
    EXPECT_EQ(masses.Of("Cap (Protein C-term)", ""), 4.0);
    EXPECT_EQ(masses.Of("Nothing", "M"), 0.0);
    EXPECT_EQ(masses.Of("", ""), 0.0);
    EXPECT_EQ(masses.Of("Oxidation", "K"), 15.994915) << "no record for the site: the first one";
    EXPECT_EQ(masses.Of("Ring", "K"), 7.0) << "of several the first one";
}

TEST_F(PFindMasses, OnlyASiteOfOneLetterTellsRecordsApart)
{
    MassesByName masses;
    EXPECT_EQ(masses.Of("Cap", "AnyC-term"), 1.0) << "the first one";
    EXPECT_EQ(masses.Of("Phospho", "T"), 79.966331);
}

/// What OpenMS knows of the exception that was made last.
class LastException : public OpenMS::Exception::GlobalExceptionHandler {
public:
    static void Forget() { setName(""); }
    static std::string Name() { return name_(); }
};

TEST_F(PFindMasses, UnknownNamesMakeNoException)
{
    if (kSanitized) {
        GTEST_SKIP() << "built by clang++, this program and OpenMS each have a handler";
    }
    LastException::Forget();
    EXPECT_THROW(CModificationsDBCalvexDefault::getInstance()->getModification("Nothing", "", {}),
                 OpenMS::Exception::ElementNotFound);
    EXPECT_EQ(LastException::Name(), "ElementNotFound");
    LastException::Forget();
    MassesByName masses;
    EXPECT_EQ(masses.Of("Nothing", "M"), 0.0);
    EXPECT_EQ(LastException::Name(), "");
}

using PFindDatabaseAlone = ParameterTest;

TEST_F(PFindDatabaseAlone, OfTheParametersIsAskedFirst)
{
    Write("modification.ini", "@NUMBER_MODIFICATION=2\n"
                              "name1=Oxidation[M] 0\nOxidation[M]=M NORMAL 100.5 100.5 0 O(1)\n"
                              "name2=Own[K] 0\nOwn[K]=K NORMAL 200.5 200.5 0 O(1)\n");
    ASSERT_EQ(Read(FullParameters()
                       .Set("Search", "search_result_format", "pFind 3 (.spectra)")
                       .Set("Search", "modification_database", "modification.ini")
                       .SetMods("fixed_mod", {})
                       .SetMods("var_mod", {})
                       .SetMods("target_mod", {})),
              Thrown());
    MassesByName masses;
    EXPECT_EQ(masses.Of("Oxidation", "M"), 100.5);
    EXPECT_EQ(masses.Of("Own", "K"), 200.5);
    EXPECT_EQ(masses.Of("Phospho", "S"), 79.966331) << "then the default table";
}

TEST(PFindMassesAlone, WithoutAnyTableMassesAreZero)
{
    const TempFolder folder;
    const auto former = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path());
    MassesByName masses;
    EXPECT_EQ(OutputOf([&] { EXPECT_EQ(masses.Of("Nothing", "M"), 0.0); }), "");
    std::filesystem::current_path(former);
}

} // namespace
} // namespace Vorlan::test
