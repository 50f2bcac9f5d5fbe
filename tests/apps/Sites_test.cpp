// Where modifications may sit, and which names somebody may have meant.
#include "mods/Sites.h"

#include "common/SimilarNames.h"
#include "support/Support.h"

namespace pelgrin {
namespace {

using Mod = Vorlan::CResidueModification;

Site Residue(char letter)
{
    Site site;
    site.residue = letter;
    return site;
}

Site Terminus(Site::Kind kind, std::optional<char> residue = {}, std::optional<char> before = {},
              std::optional<char> after = {})
{
    Site site;
    site.kind = kind;
    site.residue = residue;
    site.before = before;
    site.after = after;
    return site;
}

TEST(Sites, SayWhyAModificationCannotSitThere)
{
    constexpr auto kN = Site::Kind::NTerm;
    constexpr auto kC = Site::Kind::CTerm;
    struct Case {
        const char* reason;
        SiteRule rule;
        Site site;
        const char* text;
    };
    const Case cases[] = {
        {"its residue", {"S", Mod::ANYWHERE}, Residue('S'), ""},
        {"another residue",
         {"M", Mod::ANYWHERE},
         Residue('S'),
         "wrong residue: sits on M, not on S"},
        {"one of several letters", {"STY", Mod::ANYWHERE}, Residue('T'), ""},
        {"none of several letters",
         {"STY", Mod::ANYWHERE},
         Residue('N'),
         "wrong residue: sits on STY, not on N"},
        {"letters of the word N-term are no residues",
         {"N-term", Mod::N_TERM},
         Residue('N'),
         "wrong terminus: sits on the N-terminus only"},
        {"terminus", {"N-term", Mod::N_TERM}, Terminus(kN), ""},
        {"a terminus that is given as anywhere", {"N-term", Mod::ANYWHERE}, Terminus(kN), ""},
        {"the other terminus",
         {"C-term", Mod::C_TERM},
         Terminus(kN),
         "wrong terminus: sits on the C-terminus only"},
        {"terminus with its residue", {"Q", Mod::N_TERM}, Terminus(kN, 'Q'), ""},
        {"terminus with another residue",
         {"Q", Mod::N_TERM},
         Terminus(kN, 'E'),
         "wrong residue: sits on Q, not on E"},
        {"terminus without a known residue",
         {"Q", Mod::N_TERM},
         Terminus(kN),
         "sits on the residue Q, but --residue does not tell which one is here"},
        {"side chain of the first residue", {"S", Mod::ANYWHERE}, Terminus(kN, 'S'), ""},
        {"side chain at a terminus of unknown residue",
         {"S", Mod::ANYWHERE},
         Terminus(kN),
         "sits on the residue S, not on a terminus"},
        {"start of the protein", {"N-term", Mod::PROTEIN_N_TERM}, Terminus(kN, {}, '-'), ""},
        {"not the start of the protein",
         {"N-term", Mod::PROTEIN_N_TERM},
         Terminus(kN, {}, 'K', '-'),
         "needs the protein N-terminus, but the residue before is K"},
        {"start of the protein not known",
         {"N-term", Mod::PROTEIN_N_TERM},
         Terminus(kN, {}, {}, '-'),
         "needs the protein N-terminus, but --before is not given"},
        {"end of the protein", {"C-term", Mod::PROTEIN_C_TERM}, Terminus(kC, {}, 'K', '-'), ""},
        {"not the end of the protein",
         {"C-term", Mod::PROTEIN_C_TERM},
         Terminus(kC, {}, '-', 'R'),
         "needs the protein C-terminus, but the residue after is R"},
        {"start of the protein with another residue",
         {"M", Mod::PROTEIN_N_TERM},
         Terminus(kN, 'S', '-'),
         "wrong residue: sits on M, not on S"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.reason);
        EXPECT_EQ(WhyNot(c.rule, c.site), c.text);
    }
}

TEST(Sites, HaveTexts)
{
    EXPECT_EQ(TextOf(Residue('S')), "the residue S");
    EXPECT_EQ(TextOf(Terminus(Site::Kind::NTerm)), "the N-terminus");
    EXPECT_EQ(TextOf(Terminus(Site::Kind::CTerm, 'K')), "the C-terminus K");
}

TEST(Sites, ResiduesAreSingleLettersOfAminoAcids)
{
    EXPECT_EQ(ResidueOf("S"), 'S');
    EXPECT_EQ(ResidueOf("k"), 'K');
    EXPECT_EQ(ResidueOf("U"), 'U');
    for (const char* const text : {"", "B", "X", "ST", "-", "1", "\xC3"}) {
        EXPECT_EQ(ResidueOf(text), std::nullopt) << text;
    }
}

TEST(SimilarNames, LetterCaseFirstThenTheFewestChanges)
{
    const std::vector<std::string> names = {"Phospo",    "Phospho",  "PHOSPHO",
                                            "Oxidation", "Phosphos", "Phosp"};
    using Names = std::vector<std::string>;
    EXPECT_EQ(SimilarNames("phospho", names),
              (Names{"Phospho", "PHOSPHO", "Phospo", "Phosphos", "Phosp"}));
    EXPECT_EQ(SimilarNames("Oxydation", names), Names{"Oxidation"});
    EXPECT_EQ(SimilarNames("Carbamyl", names), Names{});
    EXPECT_EQ(SimilarNames("", names), Names{});
    EXPECT_EQ(SimilarNames(std::string(1000000, 'x'), names), Names{});
}

TEST(SimilarNames, AreAtMostFive)
{
    EXPECT_EQ(SimilarNames("abcdef", std::vector<std::string>(9, "abcdeg")).size(), 5U);
}

} // namespace
} // namespace pelgrin
