#include "param/ModificationEntry.h"

#include <ostream>

#include "support/Support.h"

namespace Vorlan {
namespace {

using Specificity = CResidueModification::TermSpecificity;

constexpr Specificity kAnywhere = CResidueModification::ANYWHERE;
constexpr Specificity kAnyN = CResidueModification::N_TERM;
constexpr Specificity kAnyC = CResidueModification::C_TERM;
constexpr Specificity kProteinN = CResidueModification::PROTEIN_N_TERM;
constexpr Specificity kProteinC = CResidueModification::PROTEIN_C_TERM;

struct Accepted {
    const char* reason;
    const char* text;
    const char* name;
    const char* site;
    Specificity specificity;
};

const Accepted kAccepted[] = {
    {"one residue", "Carbamidomethyl (C)", "Carbamidomethyl", "C", kAnywhere},
    {"residues as given", "Phospho (STY)", "Phospho", "STY", kAnywhere},
    {"small letters as given", "Phospho (s)", "Phospho", "s", kAnywhere},
    {"no blank before the site", "Phospho(S)", "Phospho", "S", kAnywhere},
    {"blanks around the name", "  Phospho \t (S)", "Phospho", "S", kAnywhere},
    {"blanks before the site", "Phospho ( S)", "Phospho", "S", kAnywhere},
    {"a blank behind the site stays", "Phospho (S )", "Phospho", "S ", kAnywhere},
    {"blanks behind the parenthesis", "Phospho (S)  ", "Phospho", "S", kAnywhere},
    {"a name of several words", "Label:13C(6) 15N(2) (K)", "Label:13C(6) 15N(2)", "K", kAnywhere},
    {"the last opening one counts", "Phospho (S) (T)", "Phospho (S)", "T", kAnywhere},
    {"closing ones in the name", "a) b) (S)", "a) b)", "S", kAnywhere},
    {"no name", "(S)", "", "S", kAnywhere},
    {"one blank is a name, trimming keeps it", " (S)", " ", "S", kAnywhere},

    {"protein N-terminus", "Acetyl (Protein N-term)", "Acetyl", "N-term", kProteinN},
    {"protein C-terminus", "Acetyl (Protein C-term)", "Acetyl", "C-term", kProteinC},
    {"any N-terminus", "Acetyl (Any N-term)", "Acetyl", "N-term", kAnyN},
    {"any C-terminus", "Acetyl (Any C-term)", "Acetyl", "C-term", kAnyC},
    {"small letters", "Acetyl (protein n-term)", "Acetyl", "N-term", kProteinN},
    {"capital letters", "Acetyl (ANY C-TERM)", "Acetyl", "C-term", kAnyC},
    {"mixed letters", "Acetyl (aNy n-TeRm)", "Acetyl", "N-term", kAnyN},

    {"residue at the protein N-terminus", "A (Protein N-term K)", "A", "K", kProteinN},
    {"residue at the protein C-terminus", "A (Protein C-term K)", "A", "K", kProteinC},
    {"residue at any N-terminus", "Gln->pyro-Glu (Any N-term Q)", "Gln->pyro-Glu", "Q", kAnyN},
    {"residue at any C-terminus", "A (Any C-term K)", "A", "K", kAnyC},
    {"a small residue becomes a capital", "A (any n-term q)", "A", "Q", kAnyN},

    {"the first letter", "A (Any N-term A)", "A", "A", kAnyN},
    {"the last letter", "A (Any N-term Z)", "A", "Z", kAnyN},
    {"what stands before the letters", "A (Any N-term @)", "A", "Any N-term @", kAnywhere},
    {"what stands behind them", "A (Any N-term [)", "A", "Any N-term [", kAnywhere},
    {"what stands before the small ones", "A (Any N-term `)", "A", "Any N-term `", kAnywhere},
    {"what stands behind the small ones", "A (Any N-term {)", "A", "Any N-term {", kAnywhere},

    {"a bare terminus is no phrase", "A (N-term)", "A", "N-term", kAnywhere},
    {"no blank before the residue", "A (Any N-termQ)", "A", "Any N-termQ", kAnywhere},
    {"two blanks before the residue", "A (Any N-term  Q)", "A", "Any N-term  Q", kAnywhere},
    {"a tab before the residue", "A (Any N-term\tQ)", "A", "Any N-term\tQ", kAnywhere},
    {"two residues", "A (Any N-term QK)", "A", "Any N-term QK", kAnywhere},
    {"a digit is no residue", "A (Any N-term 1)", "A", "Any N-term 1", kAnywhere},
    {"a blank and nothing", "A (Any N-term )", "A", "Any N-term ", kAnywhere},
    {"two blanks in the phrase", "A (Any  N-term)", "A", "Any  N-term", kAnywhere},
    {"a phrase within", "A (at Any N-term)", "A", "at Any N-term", kAnywhere},
    {"anywhere is no phrase", "A (Anywhere)", "A", "Anywhere", kAnywhere},
};

TEST(ModificationEntry, NameSiteAndSpecificityAreRead)
{
    for (const Accepted& row : kAccepted) {
        SCOPED_TRACE(row.reason);
        const auto entry = ParseModificationEntry(row.text);
        ASSERT_TRUE(entry.has_value());
        EXPECT_EQ(entry->name, row.name);
        EXPECT_EQ(entry->site, row.site);
        EXPECT_EQ(entry->specificity, row.specificity);
    }
}

struct Rejected {
    const char* reason;
    const char* text;
};

const Rejected kRejected[] = {
    {"nothing", ""},
    {"no parenthesis", "Phospho"},
    {"no opening one", "Phospho S)"},
    {"no closing one", "Phospho (S"},
    {"nothing behind the opening one", "Phospho ("},
    {"no site", "Phospho ()"},
    {"a site of blanks", "Phospho (  )"},
    {"two closing ones", "Phospho (S))"},
    {"text behind the closing one", "Phospho (S) x"},
    {"a closing one before the text", "Phospho (S)T)"},
    {"the last opening one has no closing one", "Phospho (S) ("},
};

TEST(ModificationEntry, OtherTextsAreNothing)
{
    for (const Rejected& row : kRejected) {
        EXPECT_FALSE(ParseModificationEntry(row.text).has_value()) << row.reason;
    }
}

} // namespace
} // namespace Vorlan
