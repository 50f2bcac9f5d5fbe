// The account of the joining: by which names, and how far precursors lie apart.
#include "run/JoinAudit.h"

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "run/Counts.h"
#include "run/JoinText.h"
#include "support/Support.h"

using namespace pelgrin;

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using Vorlan::PeptideIdentification;
using Vorlan::test::TempFolder;

constexpr double kProton = 1.00727646688;

/// One record of an MGF file.
std::string RecordOf(const std::string& title, const std::string& header = "PEPMASS=500")
{
    return "BEGIN IONS\nTITLE=" + title + "\n" + header + "\n100 1\nEND IONS\n";
}

PeptideIdentification Named(const std::string& name, double mz = 500.0, std::uint64_t charge = 2)
{
    PeptideIdentification record;
    record.strDatasetName = "run.mgf";
    record.strSpectrumName = name;
    record.nCharge = charge;
    record.dValue1 = mz;
    return record;
}

/// A pool of run.mgf alone, and the account of the records that were joined with it.
class Place {
public:
    explicit Place(const std::string& mgf)
        : pool_({folder_.Write("run.mgf", mgf)}), audit_(pool_.Files())
    {
    }

    /// "kind name", "ambiguous name" or "-".
    std::string Join(const PeptideIdentification& record)
    {
        const SpectraFile& file = pool_.Files()[0];
        const auto name = pool_.NameOf(file, record);
        audit_.Take(file, 0, record, name);
        if (!name) {
            return "-";
        }
        return (name->isAmbiguous ? "ambiguous" : KeyOf(name->kind)) + (" " + name->name);
    }
    std::string Join(const std::string& name, std::uint64_t charge = 2)
    {
        return Join(Named(name, 500.0, charge));
    }

    const JoinedFile& Account() const { return audit_.Files()[0]; }
    const SpectraFile& File() const { return pool_.Files()[0]; }
    JoinAudit& Audit() { return audit_; }
    std::uint64_t Deviating(Deviation deviation) const
    {
        return Account().deviations[static_cast<std::size_t>(deviation)];
    }

private:
    TempFolder folder_;
    SpectraPool pool_;
    JoinAudit audit_;
};

// ---- By which name --------------------------------------------------------------

TEST(JoinAudit, CountsEveryKindOfName)
{
    Place place(RecordOf("run.7.7.2 File:\"\", NativeID:\"scan=7\"")
                + RecordOf("raw controllerNumber=1 scan=12") + RecordOf("run.9.9.2")
                + RecordOf("run.11.11."));
    EXPECT_EQ(place.Join("run.7.7.2 File:\"\", NativeID:\"scan=7\""),
              "title run.7.7.2 File:\"\", NativeID:\"scan=7\"");
    EXPECT_EQ(place.Join("run.7.7.2"), "first_word run.7.7.2");
    EXPECT_EQ(place.Join("run.00007.00007.2"), "dotted run.00007.00007.2");
    EXPECT_EQ(place.Join("7"), "scan 7");
    EXPECT_EQ(place.Join("12"), "scan_in_title raw controllerNumber=1 scan=12");
    EXPECT_EQ(place.Join("run.00012.00012.2"), "scan_in_title raw controllerNumber=1 scan=12");
    EXPECT_EQ(place.Join("9"), "composed run.9.9.2");
    EXPECT_EQ(place.Join("run.11.11.3"), "without_charge run.11.11.");
    EXPECT_EQ(place.Join("9", 3), "-");
    EXPECT_EQ(place.Join("1"), "-") << "scan 12 lost its digit";
    EXPECT_THAT(place.Account().met, ElementsAre(1, 1, 1, 1, 2, 1, 1, 0));
    EXPECT_EQ(place.Account().read, 10U);
    EXPECT_EQ(place.Account().Met(), 8U);
    EXPECT_EQ(place.Account().unknown, 2U);
    EXPECT_EQ(place.Audit().Met(), 8U);
}

TEST(JoinAudit, AnAmbiguousNameIsNotTaken)
{
    Place place(RecordOf("a.5.5.2 x") + RecordOf("a.5.5.2 y") + RecordOf("b \"scan=8\"")
                + RecordOf("c \"scan=8\"") + RecordOf("d scan=21") + RecordOf("e scan=21")
                + RecordOf("f") + RecordOf("f") + RecordOf("g z") + RecordOf("g"));
    EXPECT_EQ(place.Join("a.5.5.2"), "ambiguous a.5.5.2");
    EXPECT_EQ(place.Join("a.00005.00005.2"), "ambiguous a.00005.00005.2");
    EXPECT_EQ(place.Join("a.5.5.2 x"), "title a.5.5.2 x");
    EXPECT_EQ(place.Join("8"), "ambiguous 8");
    EXPECT_EQ(place.Join("21"), "ambiguous 21");
    EXPECT_EQ(place.Join("2"), "-") << "a number that lost its digit is no name, twice or not";
    EXPECT_EQ(place.Join("f"), "ambiguous f");
    EXPECT_EQ(place.Join("g"), "title g") << "the title of one, and the library gives that one";
    EXPECT_EQ(place.Account().ambiguous, 5U);
    EXPECT_EQ(place.Account().unknown, 1U);
    const auto& examples = place.Account().ambiguousExamples;
    ASSERT_THAT(examples, SizeIs(5));
    EXPECT_EQ(examples[0].spectra, 2U);
    EXPECT_THAT(examples[0].lines, ElementsAre(1, 6));
}

TEST(JoinAudit, RunNumberAndChargeTellWhichSpectrumOfAScanIsMeant)
{
    Place place(RecordOf("run.5.5.2 NativeID:\"scan=5\"")
                + RecordOf("run.5.5.3 NativeID:\"scan=5\""));
    EXPECT_EQ(place.Join("5", 2), "composed run.5.5.2");
    EXPECT_EQ(place.Join("5", 3), "composed run.5.5.3");
    EXPECT_EQ(place.Join("5", 4), "ambiguous 5");
}

TEST(JoinAudit, TheEmptyNameMeetsNothing)
{
    Place place(RecordOf(" Cmpd 1"));
    ASSERT_TRUE(place.File().index.Find("")) << "the library knows it";
    EXPECT_EQ(place.Join(""), "-");
}

TEST(JoinAudit, TellsThatOneOfSeveralWouldFitButDoesNotTakeIt)
{
    Place place(RecordOf("a x", "PEPMASS=500\nCHARGE=2+")
                + RecordOf("a y", "PEPMASS=600\nCHARGE=2+")
                + RecordOf("b x", "PEPMASS=500\nCHARGE=2+")
                + RecordOf("b y", "PEPMASS=500\nCHARGE=3+") + RecordOf("c x") + RecordOf("c y"));
    EXPECT_EQ(place.Join(Named("a", 500.001)), "ambiguous a");
    EXPECT_EQ(place.Account().ambiguousThatFitOne, 1U);
    EXPECT_EQ(place.Join(Named("b", 500.001, 3)), "ambiguous b");
    EXPECT_EQ(place.Account().ambiguousThatFitOne, 2U) << "the charge tells";
    EXPECT_EQ(place.Join(Named("c", 500.0)), "ambiguous c");
    EXPECT_EQ(place.Join(Named("a", 550.0)), "ambiguous a");
    EXPECT_EQ(place.Join(Named("a", 0.0)), "ambiguous a");
    EXPECT_EQ(place.Account().ambiguousThatFitOne, 2U) << "both, none, not known";
}

// ---- Precursors -----------------------------------------------------------------

TEST(JoinAudit, SortsDeviationsIntoBins)
{
    struct Case {
        const char* reason;
        double difference; ///< Th, at m/z 500
        std::uint64_t charge;
        Deviation deviation;
    };
    for (const Case& test :
         {Case{"none", 0.0, 2, Deviation::Within1Ppm},
          Case{"0.9 ppm", 0.00045, 2, Deviation::Within1Ppm},
          Case{"4 ppm below", -0.002, 2, Deviation::Within5Ppm},
          Case{"9 ppm", 0.0045, 2, Deviation::Within10Ppm},
          Case{"19 ppm", 0.0095, 2, Deviation::Within20Ppm},
          Case{"49 ppm", 0.0245, 2, Deviation::Within50Ppm},
          Case{"99 ppm", 0.0495, 2, Deviation::Within100Ppm},
          Case{"a neutron at charge 2", 0.5017, 2, Deviation::Isotopic},
          Case{"a neutron below", -0.5017, 2, Deviation::Isotopic},
          Case{"three neutrons at charge 3", 1.0034, 3, Deviation::Isotopic},
          Case{"four neutrons", 4 * 1.00335, 1, Deviation::Beyond},
          Case{"at the edge of a neutron", 0.5116, 2, Deviation::Isotopic},
          Case{"behind it", 0.5120, 2, Deviation::WithinThreeTh},
          Case{"a neutron of another charge", 0.3344, 2, Deviation::WithinHalfTh},
          Case{"no charge, no neutron", 1.00335, 0, Deviation::WithinThreeTh},
          Case{"3 Th", -3.0, 2, Deviation::WithinThreeTh},
          Case{"more", 3.1, 2, Deviation::Beyond}}) {
        EXPECT_EQ(KeyOf(DeviationOf(500.0 + test.difference, 500.0, test.charge)),
                  KeyOf(test.deviation))
            << test.reason;
    }
}

TEST(JoinAudit, TakesTheMzOfARecordFromItsMassWhereItTellsNone)
{
    PeptideIdentification record = Named("x", 0.0);
    record.dObsMH = 2 * 500.0 - kProton;
    EXPECT_NEAR(PrecursorMzOf(record).value(), 500.0, 1e-6);
    record.dValue1 = 501.0;
    EXPECT_EQ(PrecursorMzOf(record), 501.0);
    record.dValue1 = std::numeric_limits<double>::quiet_NaN();
    EXPECT_NEAR(PrecursorMzOf(record).value(), 500.0, 1e-6);
    record.nCharge = 0;
    EXPECT_FALSE(PrecursorMzOf(record));
    record.nCharge = 2;
    record.dObsMH = -1.0;
    EXPECT_FALSE(PrecursorMzOf(record));
}

TEST(JoinAudit, WarnsWhenMoreThanOneInAHundredLieFarOff)
{
    Place place(RecordOf("a") + RecordOf("b", "CHARGE=2+")
                + "BEGIN IONS\nTITLE=c\nPEPMASS=5\nEND IONS\n" + RecordOf("d"));
    for (int i = 0; i < 99; ++i) {
        place.Join(Named("a", 500.0));
    }
    place.Join(Named("a", 510.0));
    EXPECT_FALSE(place.Account().IsSuspicious()) << "one in a hundred";
    place.Join(Named("b"));
    place.Join(Named("c"));
    EXPECT_EQ(place.Deviating(Deviation::NotKnown), 2U)
        << "a spectrum that tells no m/z, and one of no use";
    EXPECT_EQ(place.Account().WithDeviation(), 100U);
    place.Join(Named("a", 510.0));
    EXPECT_TRUE(place.Account().IsSuspicious());
    EXPECT_EQ(place.Account().MedianPpm(), 0.0);
}

// ---- What did not meet ------------------------------------------------------------

TEST(JoinAudit, ShowsTheNamesNearestToOneThatMetNothing)
{
    Place place(RecordOf("run.1405.1405.2 x") + RecordOf("run.1500.1500.2") + RecordOf("other 1405")
                + RecordOf("sample"));
    EXPECT_THAT(NamesNear(place.File(), "Sampel"), ElementsAre("sample", testing::_, testing::_));
    EXPECT_THAT(NamesNear(place.File(), "1405"),
                ElementsAre("other 1405", "run.1405.1405.2 x", testing::_))
        << "titles with the number first";
    EXPECT_THAT(NamesNear(place.File(), std::string(100000, 'x')), SizeIs(3));
    Place empty("");
    EXPECT_THAT(NamesNear(empty.File(), "x"), IsEmpty());
}

TEST(JoinAudit, KeepsTheFirstDifferentNamesOnly)
{
    Place place(RecordOf("a"));
    for (int i = 0; i < 100; ++i) {
        place.Join("x" + std::to_string(i / 2));
    }
    const auto& examples = place.Account().unknownExamples;
    ASSERT_THAT(examples, SizeIs(5));
    EXPECT_EQ(examples[0].name, "x0");
    EXPECT_EQ(examples[4].name, "x4");
    EXPECT_EQ(place.Account().unknown, 100U);
}

// ---- Texts ------------------------------------------------------------------------

TEST(JoinAudit, JsonTellsEveryCount)
{
    Place place(RecordOf("a") + RecordOf("b x") + RecordOf("b y"));
    place.Join("a");
    place.Join("b");
    place.Join("c");
    PeptideIdentification other = Named("a");
    other.strDatasetName = "other.mgf";
    place.Audit().TakeWithoutFile(other);
    const auto json = JsonOf(place.Audit(), 0.5);
    EXPECT_EQ(json["records"], 4);
    EXPECT_EQ(json["met"], 1);
    EXPECT_EQ(json["min_match"], 0.5);
    EXPECT_EQ(json["dataset_not_given"]["other.mgf"], 1);
    const auto& file = json["files"][0];
    EXPECT_EQ(file["records"], 3);
    EXPECT_EQ(file["met"]["total"], 1);
    EXPECT_EQ(file["met"]["title"], 1);
    EXPECT_EQ(file["not_met"]["total"], 2);
    EXPECT_EQ(file["not_met"]["spectrum_name_unknown"], 1);
    EXPECT_EQ(file["not_met"]["spectrum_name_ambiguous"], 1);
    EXPECT_EQ(file["ambiguous_names"], 1);
    EXPECT_EQ(file["precursor_mz"]["within_1_ppm"], 1);
    EXPECT_EQ(file["examples"]["spectrum_name_unknown"][0]["name"], "c");
    EXPECT_EQ(file["examples"]["spectrum_name_ambiguous"][0]["spectra"], 2);
    EXPECT_TRUE(JsonOf(place.Audit(), {})["min_match"].is_null());
}

TEST(JoinAudit, TextsShowOnlyWhatIsThere)
{
    Place place(RecordOf("a"));
    place.Join("a");
    EXPECT_EQ(ShortTextOf(place.Audit()), "Met                  1   by the whole title\n"
                                          "Precursors           1   within 1 ppm\n");
    EXPECT_THAT(FullTextOf(place.Audit()), Not(HasSubstr("not met")));
    place.Join("b\tc");
    EXPECT_THAT(FullTextOf(place.Audit()), HasSubstr("\"b?c\" met nothing; near it are \"a\"\n"));
}

} // namespace
