// Where a modification may sit, and the place that is written down for it.
#include "pepident/SiteRules.h"

#include "PeptideIdentificationIO.h"
#include "support/Exceptions.h"
#include "support/Support.h"

namespace Vorlan {
namespace {

using test::Thrown;
using test::ThrownBy;

IdentModification Mod(const char* site, const char* position)
{
    return {"Any", 1.0, site, position, 0};
}

struct Fit {
    const char* reason;
    const char* position;
    const char* site;
    int place;
    char residue;
    char before;
    char after;
    bool fits;
};

const Fit kFits[] = {
    {"its residue", "Anywhere", "S", 3, 'S', 'K', 'R', true},
    {"another residue", "Anywhere", "S", 3, 'T', 'K', 'R', false},
    {"the first residue", "Anywhere", "S", 1, 'S', 'K', 'R', true},
    {"letters of one case are not those of the other", "Anywhere", "s", 3, 'S', 'K', 'R', false},
    {"the first letter of a site counts", "Anywhere", "STY", 3, 'S', 'K', 'R', true},
    {"the others do not", "Anywhere", "STY", 3, 'T', 'K', 'R', false},
    {"an empty site fits no residue", "Anywhere", "", 3, 'S', 'K', 'R', false},
    {"a terminus as site is the letter it begins with", "Anywhere", "N-term", 1, 'S', 'K', 'R',
     false},
    {"such a letter", "Anywhere", "N-term", 4, 'N', 'K', 'R', true},
    {"a place in front of the peptide is not asked for", "Anywhere", "S", 0, 'S', 'K', 'R', true},
    {"B-56: a methionine that was cut off", "Anywhere", "M", 1, 'S', '-', 'R', true},
    {"B-56: only in front of the first residue", "Anywhere", "M", 2, 'S', '-', 'R', false},
    {"B-56: only at the protein's start", "Anywhere", "M", 1, 'S', 'K', 'R', false},
    {"B-56: only for the site M", "Anywhere", "C", 1, 'S', '-', 'R', false},
    {"B-56: the site begins with M", "Anywhere", "MW", 1, 'S', '-', 'R', true},

    {"a peptide's start", "Any N-term", "N-term", 1, 'S', 'K', 'R', true},
    {"also the protein's", "Any N-term", "N-term", 1, 'S', '-', 'R', true},
    {"not the second residue", "Any N-term", "N-term", 2, 'S', 'K', 'R', false},
    {"not in front of the first", "Any N-term", "N-term", 0, 'S', 'K', 'R', false},
    {"a residue at the start", "Any N-term", "Q", 1, 'Q', 'K', 'R', true},
    {"that residue elsewhere", "Any N-term", "Q", 2, 'Q', 'K', 'R', false},
    {"another residue at the start", "Any N-term", "Q", 1, 'E', 'K', 'R', false},
    {"the other terminus", "Any N-term", "C-term", 1, 'S', 'K', 'R', false},
    {"whose first letter is there", "Any N-term", "C-term", 1, 'C', 'K', 'R', true},
    {"B-56: for the peptide's start, too", "Any N-term", "M", 1, 'S', '-', 'R', true},
    {"B-56: not without the protein's", "Any N-term", "M", 1, 'S', 'K', 'R', false},

    {"the protein's start", "Protein N-term", "N-term", 1, 'S', '-', 'R', true},
    {"not any peptide's", "Protein N-term", "N-term", 1, 'S', 'K', 'R', false},
    {"not its second residue", "Protein N-term", "N-term", 2, 'S', '-', 'R', false},
    {"a residue at the protein's start", "Protein N-term", "S", 1, 'S', '-', 'R', true},
    {"that residue at another start", "Protein N-term", "S", 1, 'S', 'K', 'R', false},
    {"another residue", "Protein N-term", "S", 1, 'T', '-', 'R', false},
    {"B-56: acetyl behind a methionine", "Protein N-term", "M", 1, 'S', '-', 'R', true},
    {"B-56: not at another start", "Protein N-term", "M", 1, 'S', 'K', 'R', false},

    {"B-55: a peptide's end", "Any C-term", "C-term", 6, 'K', 'K', 'R', true},
    {"B-55: not up to the fifth place", "Any C-term", "C-term", 5, 'K', 'K', 'R', false},
    {"B-55: nor at the third", "Any C-term", "C-term", 3, 'K', 'K', 'R', false},
    {"B-55: nor at the first", "Any C-term", "C-term", 1, 'K', '-', '-', false},
    {"B-55: a residue behind the fifth place", "Any C-term", "K", 6, 'K', 'K', 'R', true},
    {"B-55: that residue at the fifth", "Any C-term", "K", 5, 'K', 'K', 'R', false},
    {"another residue", "Any C-term", "K", 9, 'R', 'K', 'R', false},
    {"the other terminus", "Any C-term", "N-term", 9, 'R', 'K', 'R', false},
    {"no methionine is cut off behind", "Any C-term", "M", 6, 'S', '-', '-', false},
    {"nor in front", "Any C-term", "M", 1, 'S', '-', '-', false},

    {"the protein's end", "Protein C-term", "C-term", 6, 'K', 'K', '-', true},
    {"not any peptide's", "Protein C-term", "C-term", 6, 'K', 'K', 'R', false},
    {"B-55: not up to the fifth place", "Protein C-term", "C-term", 5, 'K', 'K', '-', false},
    {"a residue at the protein's end", "Protein C-term", "K", 7, 'K', 'K', '-', true},
    {"another residue", "Protein C-term", "K", 7, 'R', 'K', '-', false},
    {"that residue at another end", "Protein C-term", "K", 7, 'K', 'K', 'R', false},
};

TEST(SiteRules, AModificationFitsAPlaceOrNot)
{
    MSFraggerPepXMLPepIdentIO reader;
    for (const Fit& row : kFits) {
        const IdentModification mod = Mod(row.site, row.position);
        EXPECT_EQ(reader.SatisfySpecificity(mod, row.place, row.residue, row.before, row.after),
                  row.fits)
            << row.position << " " << row.site << ": " << row.reason;
        EXPECT_EQ(FitsPlace(mod, {row.place, row.residue, row.before, row.after}), row.fits)
            << row.position << " " << row.site << ": " << row.reason;
    }
}

TEST(SiteRules, B55_NoCTerminusUpToPositionFive)
{
    MSFraggerPepXMLPepIdentIO reader;
    const IdentModification mod = Mod("C-term", "Any C-term");
    for (int place = -1; place <= 5; ++place) {
        EXPECT_FALSE(reader.SatisfySpecificity(mod, place, 'K', 'R', '-')) << place;
    }
    for (int place = 6; place <= 60; ++place) {
        EXPECT_TRUE(reader.SatisfySpecificity(mod, place, 'K', 'R', 'A')) << place;
    }
}

TEST(SiteRules, B56_TheFirstResidueStandsForAMethionine)
{
    MSFraggerPepXMLPepIdentIO reader;
    for (const char* const position : {"Anywhere", "Any N-term", "Protein N-term"}) {
        for (const char residue : std::string("ACDEFGHIKLMNPQRSTVWY")) {
            EXPECT_TRUE(reader.SatisfySpecificity(Mod("M", position), 1, residue, '-', 'R'))
                << position << residue;
        }
    }
}

// The reader of Comet has the same members.
TEST(SiteRules, CometAsksTheSame)
{
    CometPepXMLPepIdentIO reader;
    EXPECT_TRUE(reader.SatisfySpecificity(Mod("S", "Anywhere"), 3, 'S', 'K', 'R'));
    EXPECT_FALSE(reader.SatisfySpecificity(Mod("S", "Anywhere"), 3, 'T', 'K', 'R'));
}

TEST(SiteRules, OtherPositionTypesAreRefused)
{
    MSFraggerPepXMLPepIdentIO reader;
    for (const std::string type :
         {"", "anywhere", "Anywhere ", "N-term", "C-term", "Any N-Term", "Protein"}) {
        const Thrown expected = {"InvalidValue", "PeptideIdentificationIO",
                                 "MSFraggerPepXMLPepIdentIO::SatisfySpecificity",
                                 "the value '" + type
                                     + "' was used but is not valid; The specified modifications "
                                       "format was wrong"};
        EXPECT_EQ(
            ThrownBy([&] { reader.SatisfySpecificity(Mod("S", type.c_str()), 3, 'S', 'K', 'R'); }),
            expected);
        // Also where no place would fit.
        EXPECT_EQ(
            ThrownBy([&] { reader.SatisfySpecificity(Mod("", type.c_str()), 0, 'S', 'K', 'R'); }),
            expected);
    }
}

// ---- The place that is written down ---------------------------------------

struct Recorded {
    const char* reason;
    const char* position;
    const char* site;
    int place;
    char first; ///< residue of the peptide
    char before;
    int recorded;
};

const Recorded kRecorded[] = {
    {"a residue", "Anywhere", "S", 3, 'A', 'K', 3},
    {"the first residue", "Anywhere", "S", 1, 'S', 'K', 1},
    {"the first residue of a protein", "Anywhere", "S", 1, 'S', '-', 1},
    {"a peptide's start", "Any N-term", "N-term", 1, 'S', 'K', 0},
    {"a residue at a peptide's start", "Any N-term", "Q", 1, 'Q', 'K', 0},
    {"a protein's start", "Protein N-term", "N-term", 1, 'S', '-', 0},
    {"a peptide's end", "Any C-term", "C-term", 8, 'S', 'K', 9},
    {"a protein's end", "Protein C-term", "K", 8, 'S', 'K', 9},
    {"B-55: one behind wherever it is", "Any C-term", "C-term", 6, 'S', 'K', 7},
    {"B-56: a methionine that was cut off", "Anywhere", "M", 1, 'S', '-', 0},
    {"B-56: one that is still there", "Anywhere", "M", 1, 'M', '-', 1},
    {"B-56: inside of a protein", "Anywhere", "M", 1, 'S', 'K', 1},
    {"B-56: behind the first residue", "Anywhere", "M", 2, 'S', '-', 2},
    {"B-56: the site is M alone", "Anywhere", "MW", 1, 'S', '-', 1},
};

TEST(SiteRules, TheRecordedPlaceIsThatOfTheResidueOrTerminus)
{
    for (const Recorded& row : kRecorded) {
        const ResiduePlace place = {row.place, row.first, row.before, 'R'};
        EXPECT_EQ(RecordedPosition(Mod(row.site, row.position), place, row.first), row.recorded)
            << row.reason;
    }
}

} // namespace
} // namespace Vorlan
