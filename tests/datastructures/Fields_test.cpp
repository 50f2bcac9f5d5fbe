// What hosts compile against: types and order of the published fields, and what
// the members give.
#include "support/Fields.h"

#include <cstdint>
#include <type_traits>

#include "DataStructures.h"
#include "support/Support.h"

namespace Vorlan {
namespace {

using OpenMS::String;
using std::int32_t;
using std::uint64_t;
using test::Fields;
using Text = std::string;
using Strings = std::vector<String>;
using Numbers = std::vector<double>;

// ---- Fields ----------------------------------------------------------------

TEST(PublishedFields, ThoseOfIdentificationsStandInTheirOrder)
{
    const IdentModification mod;
    EXPECT_TRUE((Fields<Text, double, Text, Text, int32_t>::StandInOrder(
        mod.strName, mod.dMass, mod.strSite, mod.strPosition, mod.nPos)));
    const PeptideEvidence evidence;
    EXPECT_TRUE((Fields<Text, int32_t, char, char>::StandInOrder(
        evidence.strProteinAccession, evidence.nStart, evidence.cBefore, evidence.cAfter)));
    const PeptideIdentification m;
    EXPECT_TRUE(
        (Fields<Text, Text, Text, double, uint64_t, double, double, double, uint64_t, double, bool,
                double, int32_t, bool, std::vector<PeptideEvidence>, std::vector<IdentModification>,
                std::vector<IdentModification>>::StandInOrder(m.strDatasetName, m.strSpectrumName,
                                                              m.strSequence, m.dValue1, m.nCharge,
                                                              m.dValue2, m.dValue3, m.dMassShift,
                                                              m.nValue4, m.dMainScore,
                                                              m.bHighScoreBetter, m.dObsMH,
                                                              m.nValue5, m.bDecoy, m.vEvidences,
                                                              m.vMods, m.vAltMods)));
}

TEST(PublishedFields, ThoseOfSourcesStandInTheirOrder)
{
    const PepIdentSource result;
    EXPECT_TRUE(
        (Fields<String, String, Strings, String, String, Strings,
                PepIdentType::EPepIdentType>::StandInOrder(result.strFirst, result.strThird,
                                                           result.vFirstList, result.strSecond,
                                                           result.strFourth, result.vSecondList,
                                                           result.eType)));
    const DatasetSource dataset;
    EXPECT_TRUE((Fields<Text, Text, DatasetType::EDatasetType>::StandInOrder(
        dataset.strFirst, dataset.strSecond, dataset.eType)));
}

TEST(PublishedFields, ThoseOfLocalisationAndAnnotationStandInTheirOrder)
{
    const LocalizeResult site;
    EXPECT_TRUE((Fields<uint64_t, LocalizeResult::EModSite, LocalizeResult::ETermSpecificity,
                        double>::StandInOrder(site.nIndex, site.eSite, site.ePos, site.dProb)));
    const DeltaMass shift;
    EXPECT_TRUE((Fields<Numbers, double, double, double, double, double, Text,
                        std::map<Text, double>>::StandInOrder(shift.vValues, shift.dDeltaMass,
                                                              shift.dValue1, shift.dValue2,
                                                              shift.dValue3, shift.dValue4,
                                                              shift.strName, shift.mapValues)));
    const AnnoResult result;
    EXPECT_TRUE((Fields<double, Numbers, Numbers, Numbers, double>::StandInOrder(
        result.dValue1, result.vFirst, result.vSecond, result.vThird, result.dValue2)));
}

TEST(PublishedFields, ThoseOfProteinsStandInTheirOrder)
{
    const InferProtein protein;
    EXPECT_TRUE((Fields<Text, Text, Text, double>::StandInOrder(
        protein.strAccession, protein.strDescription, protein.strSequence, protein.dValue)));
}

TEST(PublishedFields, ThoseOfSpectraStandInTheirOrder)
{
    const Peak::MatchRes match;
    EXPECT_TRUE((Fields<Peak::EIonType, uint64_t, int32_t, Peak::EPeakHitStatus>::StandInOrder(
        match.eIonType, match.nIonIndex, match.nCharge, match.eHitStatus)));
    const Peak peak;
    EXPECT_TRUE((Fields<double, double, std::vector<Peak::MatchRes>>::StandInOrder(
        peak.dMz, peak.dIntensity, peak.vMatchRes)));
    const Spectrum s;
    EXPECT_TRUE(
        (Fields<int32_t, String, String, double, uint64_t, int32_t, double, std::vector<Peak>,
                std::vector<int32_t>>::StandInOrder(s.nSpecFlag, s.strSource, s.strTitle,
                                                    s.dPrecursorMz, s.nCharge, s.nScan,
                                                    s.dRetentionTime, s.vPeaks, s.vHashTable)));
}

// ---- Members ---------------------------------------------------------------

template <typename Registry, typename Value>
constexpr bool NamesItsTypes()
{
    return std::is_same_v<
               decltype(&Registry::typeToName),
               String (*)(
                   Value)> && std::is_same_v<decltype(&Registry::nameToType), Value (*)(const String&)> && std::is_same_v<std::underlying_type_t<Value>, int>;
}

static_assert(NamesItsTypes<DatasetType, DatasetType::EDatasetType>());
static_assert(NamesItsTypes<FdrEstimateType, FdrEstimateType::EFdrEstimateType>());
static_assert(NamesItsTypes<FragMethodType, FragMethodType::EFragType>());
static_assert(NamesItsTypes<PepIdentType, PepIdentType::EPepIdentType>());
static_assert(NamesItsTypes<SearchEngineType, SearchEngineType::ESearchEngineType>());
static_assert(NamesItsTypes<TdFdrType, TdFdrType::ETdFdrType>());
static_assert(NamesItsTypes<TolType, TolType::ETolType>());

/// Record knows this order of two of its parts, without an object.
template <typename Part>
using Order = bool (*)(const Part&, const Part&);

static_assert(std::is_same_v<decltype(&PeptideIdentification::bPosLess), Order<IdentModification>>);
static_assert(std::is_same_v<decltype(&Spectrum::bMzLesser), Order<Peak>>);
static_assert(std::is_same_v<decltype(&Spectrum::bIntensityGreater), Order<Peak>>);
static_assert(
    std::is_same_v<decltype(&Spectrum::GetHitPeak),
                   int32_t (Spectrum::*)(Peak&, const double&, const TolType::ETolType&, bool)>);
static_assert(
    std::is_same_v<decltype(&Peak::getHitStatusStringOf), String (Peak::*)(uint64_t) const>);
static_assert(
    std::is_same_v<decltype(&Peak::getMatchResOf), Peak::MatchRes (Peak::*)(uint64_t) const>);
static_assert(std::is_same_v<decltype(&Peak::addMatchRes), void (Peak::*)(Peak::MatchRes&)>);
static_assert(std::is_same_v<decltype(&LocalizeResult::transEModSiteToString),
                             String (*)(LocalizeResult::EModSite)>);
static_assert(std::is_same_v<decltype(&LocalizeResult::transStringToETermSpecificity),
                             LocalizeResult::ETermSpecificity (*)(const String&)>);

// Records are values without virtual members.
static_assert(!std::is_polymorphic_v<PeptideIdentification> && !std::is_polymorphic_v<Spectrum>);
static_assert(!std::is_polymorphic_v<CProtein> && std::is_base_of_v<CProtein, InferProtein>);

} // namespace
} // namespace Vorlan
