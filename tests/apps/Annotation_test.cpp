#include "run/Annotation.h"

#include <limits>

#include "support/Support.h"

namespace pelgrin {
namespace {

using Vorlan::IdentModification;
using Vorlan::Peak;
using Vorlan::PeptideIdentification;

PeptideIdentification Record(const std::string& sequence,
                             const std::vector<IdentModification>& mods = {})
{
    PeptideIdentification record;
    record.strSequence = sequence;
    record.nCharge = 2;
    record.vMods = mods;
    return record;
}

IdentModification Mod(const std::string& name, int position)
{
    return {name, 0.0, "", "Anywhere", position};
}

const ModificationMasses kMasses = {{"M1", 10.0}, {"M2", 1.0}, {"Acetyl (Any N-term)", 42.0}};

TEST(MassesOf, ModificationsAddUpAtTheirPositions)
{
    const auto result = MassesOf(Record("GGG", {Mod("Acetyl (N-term)", 0), Mod("M1", 2),
                                                Mod("M2", 2), Mod("M2", 3), Mod("M1", 4)}),
                                 kMasses);
    const PeptideMasses& peptide = std::get<PeptideMasses>(result);
    const double g = ResidueMass('G').value();
    EXPECT_THAT(peptide.residues, testing::ElementsAre(g, g + 10.0 + 1.0, g + 1.0));
    EXPECT_EQ(peptide.nTerm, 42.0);
    EXPECT_EQ(peptide.cTerm, 10.0);
}

TEST(Examine, NamesTheFirstReasonThatForbidsAnnotation)
{
    struct Case {
        const char* what;
        PeptideIdentification record;
        Reason reason;
        const char* detail;
    };
    PeptideIdentification uncharged = Record("");
    uncharged.nCharge = 0;
    PeptideIdentification negative = Record("GG");
    negative.nCharge = static_cast<std::uint64_t>(-2);
    PeptideIdentification unshiftable = Record("GG");
    unshiftable.dMassShift = std::numeric_limits<double>::quiet_NaN();
    for (const Case& c :
         {Case{"charge 0", uncharged, Reason::ChargeUnusable, ""},
          Case{"charge below 0", negative, Reason::ChargeUnusable, ""},
          Case{"no letter", Record(""), Reason::EmptySequence, ""},
          Case{"shift is no number", unshiftable, Reason::MassShiftNotFinite, ""},
          Case{"letter of two residues", Record("GBG"), Reason::ResidueWithoutMass, "B"},
          Case{"small letter", Record("Gg"), Reason::ResidueWithoutMass, "g"},
          Case{"name not given", Record("GG", {Mod("M3", 1)}), Reason::ModificationWithoutMass,
               "M3"},
          Case{"name empty", Record("GG", {Mod("", 1)}), Reason::ModificationWithoutMass, ""},
          Case{"behind the C-terminus", Record("GG", {Mod("M1", 4)}),
               Reason::PositionOutsideSequence, ""},
          Case{"before the N-terminus", Record("GG", {Mod("M1", -1)}),
               Reason::PositionOutsideSequence, ""}}) {
        SCOPED_TRACE(c.what);
        const auto result = Examine(c.record, kMasses);
        ASSERT_TRUE(std::holds_alternative<Problem>(result));
        EXPECT_EQ(std::get<Problem>(result).reason, c.reason);
        EXPECT_EQ(std::get<Problem>(result).detail, c.detail);
    }
}

TEST(PlanOf, OnlyAMassShiftOfMinShiftAsksForShiftedIons)
{
    Parameters parameters;
    PeptideIdentification record = Record("GG");
    for (const auto& [shift, isAsked] : {std::pair<double, bool>{0.49, false},
                                         {-0.49, false},
                                         {0.5, true},
                                         {-0.5, true},
                                         {0.0, false}}) {
        record.dMassShift = shift;
        EXPECT_EQ(PlanOf(record, parameters).massShift.has_value(), isAsked) << shift;
    }
    parameters.minShift = 0.0;
    record.dMassShift = 0.0;
    EXPECT_FALSE(PlanOf(record, parameters).massShift.has_value());
}

TEST(Annotate, CountsIonsBondsAndPeaks)
{
    PeptideMasses peptide;
    peptide.residues = {100.0, 100.0, 100.0};
    FragmentPlan plan;
    plan.ions = {Peak::B_ION};
    plan.maxCharge = 2;
    Vorlan::Spectrum spectrum;
    for (const auto& [mz, intensity] : {std::pair<double, double>{201.00728, 4.0},
                                        {101.00728, 5.0},
                                        {500.0, 6.0},
                                        {51.00728, 7.0}}) {
        Peak peak;
        peak.dMz = mz;
        peak.dIntensity = intensity;
        spectrum.vPeaks.push_back(peak);
    }
    Counts counts;
    const Annotation annotation =
        Annotate(spectrum, peptide, plan, {0.001, Vorlan::TolType::Da}, counts);
    // b1 is found with both charges; b2 with charge 1, since 101.007 is b1 and b2++.
    ASSERT_EQ(annotation.matches.size(), 4U);
    EXPECT_EQ(annotation.matches[0].peakMz, 101.00728);
    EXPECT_EQ(annotation.matches[1].intensity, 7.0);
    EXPECT_NEAR(annotation.matches[0].ErrorPpm(), (101.00728 - 101.00727646688) / 101.0 * 1e6,
                1e-3);
    EXPECT_EQ(annotation.bonds.asked, 2U);
    EXPECT_EQ(annotation.bonds.matched, 2U);
    EXPECT_EQ(counts.ions[Peak::B_ION][Peak::UNSHIFT].asked, 4U);
    EXPECT_EQ(counts.ions[Peak::B_ION][Peak::UNSHIFT].matched, 4U);
    EXPECT_EQ(counts.peaks.asked, 4U);
    EXPECT_EQ(counts.peaks.matched, 3U);
    EXPECT_EQ(counts.annotated, 1U);
}

TEST(Counts, ThatDoNotAddUpAreAnError)
{
    Counts counts;
    counts.read = 2;
    counts.joined[0] = 1;
    counts.annotated = 1;
    EXPECT_THROW(counts.Check(), std::logic_error);
    counts.Add({Reason::SpectrumUnknown, {}});
    EXPECT_NO_THROW(counts.Check());
    counts.annotated = 0;
    EXPECT_THROW(counts.Check(), std::logic_error);
    counts.Add({Reason::EmptySequence, {}});
    EXPECT_NO_THROW(counts.Check());
}

TEST(Counts, EveryReasonHasItsOwnKeyAndText)
{
    std::set<std::string> keys;
    std::set<std::string> texts;
    for (std::size_t i = 0; i < kReasons; ++i) {
        keys.insert(KeyOf(static_cast<Reason>(i)));
        texts.insert(TextOf(static_cast<Reason>(i)));
    }
    EXPECT_EQ(keys.size(), kReasons);
    EXPECT_EQ(texts.size(), kReasons);
}

TEST(Counts, LostRowsAreThoseThatShouldHaveGivenARecord)
{
    Counts counts;
    ResultAudit audit;
    audit.Add(Unread::WithoutCandidate, 2);
    audit.Add(Unread::QueryWithoutHit, 3);
    counts.Add(audit);
    EXPECT_FALSE(counts.HasLosses());
    audit.Add(Unread::ShortRow, 4);
    audit.cutsRow = true;
    counts.Add(audit);
    EXPECT_EQ(counts.LostRows(), 2U);
    EXPECT_EQ(counts.unread[static_cast<std::size_t>(Unread::WithoutCandidate)], 2U);
}

// ---- Names and masses of modifications ---------------------------------------

Vorlan::PeptideIdentification RecordOf(const std::string& sequence, const std::string& mod,
                                       std::int32_t position, double mass = 0.0)
{
    Vorlan::PeptideIdentification record;
    record.strSequence = sequence;
    record.vMods.emplace_back(mod, mass, "", "Anywhere", position);
    return record;
}

TEST(NamesOf, ANameWithoutASiteIsLookedUpWithItsSite)
{
    const auto namesOf = [](const Vorlan::PeptideIdentification& record) {
        return NamesOf(record.vMods.front(), record);
    };
    using Names = std::vector<std::string>;
    EXPECT_EQ(namesOf(RecordOf("GAMK", "Oxidation", 3)), (Names{"Oxidation", "Oxidation (M)"}));
    EXPECT_EQ(namesOf(RecordOf("GAMK", "Oxidation (M)", 3)), (Names{"Oxidation (M)"}));
    EXPECT_EQ(namesOf(RecordOf("GAMK", "Acetyl (N-term)", 0)), (Names{"Acetyl (Any N-term)"}));
    EXPECT_EQ(namesOf(RecordOf("GAMK", "TMT", 0)), (Names{"TMT", "TMT (Any N-term)"}));
    EXPECT_EQ(namesOf(RecordOf("GAMK", "TMT", 5)), (Names{"TMT", "TMT (Any C-term)"}));
    Vorlan::PeptideIdentification record = RecordOf("GAMK", "Acetyl", 0);
    record.vEvidences.emplace_back("P1", 1, -1, '-', 'R');
    EXPECT_EQ(namesOf(record), (Names{"Acetyl", "Acetyl (Any N-term)", "Acetyl (Protein N-term)"}));
}

TEST(MassesOf, WhatTheUserSaysCountsBeforeWhatTheReaderSays)
{
    const auto massAt = [](const Vorlan::PeptideIdentification& record, std::size_t residue,
                           const ModificationMasses& masses) {
        const auto result = MassesOf(record, masses);
        const auto* const peptide = std::get_if<PeptideMasses>(&result);
        return peptide == nullptr ? -1.0 : peptide->residues.at(residue) - *ResidueMass('M');
    };
    EXPECT_NEAR(massAt(RecordOf("GAMK", "Oxidation", 3, 16.0), 2, {}), 16.0, 1e-9);
    EXPECT_NEAR(massAt(RecordOf("GAMK", "Oxidation", 3, 16.0), 2, {{"Oxidation (M)", 17.0}}), 17.0,
                1e-9);
    EXPECT_EQ(massAt(RecordOf("GAMK", "Oxidation", 3), 2, {{"Oxidation (W)", 17.0}}), -1.0);
    EXPECT_EQ(massAt(RecordOf("GAMK", "Oxidation", 3, std::nan("")), 2, {}), -1.0);
}

TEST(MassesOf, AMassOnATerminusWithoutANameCounts)
{
    Vorlan::PeptideIdentification record = RecordOf("GAMK", "Oxidation", 3, 16.0);
    record.vAltMods.emplace_back("", 229.0, "N-term", "", 0);
    record.vAltMods.emplace_back("", 1.0, "C-term", "", 5);
    const auto result = MassesOf(record, {});
    ASSERT_TRUE(std::holds_alternative<PeptideMasses>(result));
    EXPECT_EQ(std::get<PeptideMasses>(result).nTerm, 229.0);
    EXPECT_EQ(std::get<PeptideMasses>(result).cTerm, 1.0);
}

} // namespace
} // namespace pelgrin
