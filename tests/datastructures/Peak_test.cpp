#include <limits>

#include "DataStructures.h"
#include "support/Exceptions.h"
#include "support/Support.h"

namespace Vorlan {
namespace {

using test::Thrown;
using test::ThrownBy;
using MatchRes = Peak::MatchRes;

constexpr std::uint64_t kLargest = std::numeric_limits<std::uint64_t>::max();

MatchRes Match(int ionType, std::uint64_t ionIndex, std::int32_t charge, int hitStatus)
{
    return {static_cast<Peak::EIonType>(ionType), ionIndex, charge,
            static_cast<Peak::EPeakHitStatus>(hitStatus)};
}

Peak PeakWith(std::vector<MatchRes> matches)
{
    Peak peak;
    peak.vMatchRes = std::move(matches);
    return peak;
}

// ---- Fields ----------------------------------------------------------------

TEST(Peak, FreshOneIsEmpty)
{
    const Peak peak;
    EXPECT_EQ(peak.dMz, 0.0);
    EXPECT_EQ(peak.dIntensity, 0.0);
    EXPECT_TRUE(peak.vMatchRes.empty());
    EXPECT_EQ(peak.getNumberOfMatchRes(), 0U);
    const MatchRes match;
    EXPECT_EQ(match.eIonType, 0);
    EXPECT_EQ(match.nIonIndex, 0U);
    EXPECT_EQ(match.nCharge, 0);
    EXPECT_EQ(match.eHitStatus, 0);
}

TEST(Peak, AccessorsReachTheFields)
{
    Peak peak;
    peak.setMz(405.25);
    peak.setIntensity(1e5);
    EXPECT_EQ(peak.dMz, 405.25);
    EXPECT_EQ(peak.getMz(), 405.25);
    EXPECT_EQ(peak.dIntensity, 1e5);
    EXPECT_EQ(peak.getIntensity(), 1e5);
}

TEST(Peak, B07_LongConstructorKeepsOnlyTheList)
{
    const Peak none(100.5, 20.0, Peak::B_ION, 3, 2, Peak::SHIFT, {});
    EXPECT_EQ(none.dMz, 100.5);
    EXPECT_EQ(none.dIntensity, 20.0);
    EXPECT_EQ(none.getNumberOfMatchRes(), 0U);
    const Peak one(100.5, 20.0, Peak::B_ION, 3, 2, Peak::SHIFT, {Match(5, 7, 1, 1)});
    ASSERT_EQ(one.getNumberOfMatchRes(), 1U);
    EXPECT_EQ(one.getIonTypeOf(0), Peak::Y_ION);
    EXPECT_EQ(one.getIonIndexOf(0), 7U);
    EXPECT_EQ(one.getChargeOf(0), 1);
    EXPECT_EQ(one.getHitStatusOf(0), Peak::UNSHIFT);
}

TEST(Peak, MatchesAreKeptInTheOrderAdded)
{
    Peak peak;
    MatchRes first = Match(2, 3, 1, 1);
    MatchRes second = Match(5, 4, 2, 2);
    peak.addMatchRes(first);
    peak.addMatchRes(second);
    peak.addMatchRes(first);
    first.nCharge = 9;
    ASSERT_EQ(peak.getNumberOfMatchRes(), 3U);
    EXPECT_EQ(peak.getHitStatusStringOf(0), "b-ion_unshift_1");
    EXPECT_EQ(peak.getHitStatusStringOf(1), "y-ion_shift_2");
    EXPECT_EQ(peak.getHitStatusStringOf(2), "b-ion_unshift_1");
    peak.clearMatchRes();
    EXPECT_EQ(peak.getNumberOfMatchRes(), 0U);
}

TEST(Peak, MatchOfThePeakItselfMayBeAdded)
{
    Peak peak = PeakWith({Match(2, 3, 1, 1)});
    for (int i = 0; i < 100; ++i) {
        peak.addMatchRes(peak.vMatchRes[0]);
    }
    EXPECT_EQ(peak.getNumberOfMatchRes(), 101U);
    EXPECT_EQ(peak.getIonIndexOf(100), 3U);
}

TEST(Peak, MatchAccessorsReachTheirMatchOnly)
{
    Peak peak = PeakWith({Match(1, 1, 1, 1), Match(2, 2, 2, 2)});
    peak.setIonTypeOf(Peak::Y_ION, 1);
    peak.setIonIndexOf(kLargest, 1);
    peak.setChargeOf(-5, 1);
    peak.setHitStatusOf(Peak::UNSHIFT, 1);
    EXPECT_EQ(peak.getIonTypeOf(1), Peak::Y_ION);
    EXPECT_EQ(peak.getIonIndexOf(1), kLargest);
    EXPECT_EQ(peak.getChargeOf(1), -5);
    EXPECT_EQ(peak.getHitStatusOf(1), Peak::UNSHIFT);
    EXPECT_EQ(peak.getIonTypeOf(0), Peak::A_ION);
    EXPECT_EQ(peak.getIonIndexOf(0), 1U);
    EXPECT_EQ(peak.getChargeOf(0), 1);
    EXPECT_EQ(peak.getHitStatusOf(0), Peak::UNSHIFT);
    MatchRes copy = peak.getMatchResOf(1);
    EXPECT_EQ(copy.nIonIndex, kLargest);
    copy.nCharge = 1;
    EXPECT_EQ(peak.getChargeOf(1), -5);
}

TEST(Peak, CopyAndMoveCarryTheMatches)
{
    Peak peak(100.5, 20.0, Peak::B_ION, 1, 1, Peak::SHIFT, {Match(2, 3, 1, 1)});
    Peak copy = peak;
    copy.setChargeOf(7, 0);
    EXPECT_EQ(peak.getChargeOf(0), 1);
    const Peak moved = std::move(peak);
    EXPECT_EQ(moved.dMz, 100.5);
    EXPECT_EQ(moved.dIntensity, 20.0);
    EXPECT_EQ(moved.getHitStatusStringOf(0), "b-ion_unshift_1");
}

// ---- Indices ---------------------------------------------------------------

struct IndexCase {
    const char* label;
    void (*call)(Peak& peak, std::uint64_t i);
};

const IndexCase kIndexCases[] = {
    {"Peak::getIonTypeOf", [](Peak& peak, std::uint64_t i) { peak.getIonTypeOf(i); }},
    {"Peak::setIonTypeOf", [](Peak& peak, std::uint64_t i) { peak.setIonTypeOf(Peak::A_ION, i); }},
    {"Peak::getIonIndexOf", [](Peak& peak, std::uint64_t i) { peak.getIonIndexOf(i); }},
    {"Peak::setIonIndexOf", [](Peak& peak, std::uint64_t i) { peak.setIonIndexOf(1, i); }},
    {"Peak::getChargeOf", [](Peak& peak, std::uint64_t i) { peak.getChargeOf(i); }},
    {"Peak::setChargeOf", [](Peak& peak, std::uint64_t i) { peak.setChargeOf(1, i); }},
    {"Peak::getHitStatusOf", [](Peak& peak, std::uint64_t i) { peak.getHitStatusOf(i); }},
    {"Peak::setHitStatusOf",
     [](Peak& peak, std::uint64_t i) { peak.setHitStatusOf(Peak::UNSHIFT, i); }},
    {"Peak::getMatchResOf", [](Peak& peak, std::uint64_t i) { peak.getMatchResOf(i); }},
    {"Peak::getHitStatusStringOf",
     [](Peak& peak, std::uint64_t i) { peak.getHitStatusStringOf(i); }},
};

Thrown Overflow(const char* label, const std::string& index, const std::string& size)
{
    return {"IndexOverflow", "DataStructures", label,
            "the given index was too large: " + index + " (size = " + size + ")"};
}

TEST(Peak, IndexOfNoMatchThrows)
{
    for (const IndexCase& c : kIndexCases) {
        SCOPED_TRACE(c.label);
        Peak none;
        EXPECT_EQ(ThrownBy([&] { c.call(none, 0); }), Overflow(c.label, "0", "0"));
        Peak two = PeakWith({Match(2, 3, 4, 2), Match(2, 3, 4, 2)});
        EXPECT_EQ(ThrownBy([&] { c.call(two, 1); }), Thrown());
        two.vMatchRes[1] = Match(2, 3, 4, 2);
        EXPECT_EQ(ThrownBy([&] { c.call(two, 2); }), Overflow(c.label, "2", "2"));
        EXPECT_EQ(ThrownBy([&] { c.call(two, 70); }), Overflow(c.label, "70", "2"));
        EXPECT_THROW(c.call(two, 2), OpenMS::Exception::IndexOverflow);
        EXPECT_THROW(c.call(two, kLargest), OpenMS::Exception::IndexOverflow);
        ASSERT_EQ(two.getNumberOfMatchRes(), 2U);
        EXPECT_EQ(two.getHitStatusStringOf(0), "b-ion_shift_4");
        EXPECT_EQ(two.getHitStatusStringOf(1), "b-ion_shift_4");
        EXPECT_EQ(two.getIonIndexOf(1), 3U);
    }
}

// ---- Names -----------------------------------------------------------------

struct NameCase {
    const char* reason;
    MatchRes match;
    const char* name;
};

const NameCase kNameCases[] = {
    {"a", Match(1, 1, 1, 1), "a-ion_unshift_1"},
    {"b", Match(2, 1, 2, 1), "b-ion_unshift_2"},
    {"c", Match(3, 1, 3, 1), "c-ion_unshift_3"},
    {"x", Match(4, 1, 1, 2), "x-ion_shift_1"},
    {"y", Match(5, 1, 1, 2), "y-ion_shift_1"},
    {"z", Match(6, 1, 1, 2), "z-ion_shift_1"},
    {"the number of the ion is not part of it", Match(2, 99, 1, 1), "b-ion_unshift_1"},
    {"no charge", Match(2, 1, 0, 1), "b-ion_unshift_0"},
    {"a negative charge", Match(2, 1, -2, 1), "b-ion_unshift_-2"},
    {"the largest charge", Match(2, 1, 2147483647, 1), "b-ion_unshift_2147483647"},
};

TEST(Peak, MatchHasAName)
{
    for (const NameCase& c : kNameCases) {
        EXPECT_EQ(PeakWith({Match(6, 0, 0, 1), c.match}).getHitStatusStringOf(1), c.name)
            << c.reason;
    }
}

Thrown Unnamed(int value, const char* message)
{
    return {"InvalidValue", "DataStructures", "Peak::getMatchResName",
            "the value '" + std::to_string(value) + "' was used but is not valid; " + message};
}

Thrown ThrownByNameOf(int ionType, int hitStatus)
{
    const Peak peak = PeakWith({Match(ionType, 1, 1, hitStatus)});
    return ThrownBy([&peak] { peak.getHitStatusStringOf(0); });
}

constexpr int kIntMax = std::numeric_limits<int>::max();
constexpr int kIntMin = std::numeric_limits<int>::min();

TEST(Peak, B08_ZDotIonHasNoName)
{
    EXPECT_EQ(Peak::Z_DOT_ION, 7);
    EXPECT_EQ(ThrownByNameOf(Peak::Z_DOT_ION, 1), Unnamed(7, "unknown ion type"));
    EXPECT_EQ(ThrownByNameOf(Peak::Z_DOT_ION, 2), Unnamed(7, "unknown ion type"));
}

TEST(Peak, OtherIonTypesHaveNoName)
{
    for (const int ionType : {0, 8, -1, 256, 258, kIntMax, kIntMin}) {
        EXPECT_EQ(ThrownByNameOf(ionType, 1), Unnamed(ionType, "unknown ion type"));
    }
    EXPECT_THROW(PeakWith({Match(0, 1, 1, 1)}).getHitStatusStringOf(0),
                 OpenMS::Exception::InvalidValue);
}

TEST(Peak, OtherHitStatusesHaveNoName)
{
    for (const int hitStatus : {0, 3, -1, 257, kIntMax, kIntMin}) {
        EXPECT_EQ(ThrownByNameOf(2, hitStatus), Unnamed(hitStatus, "unknown hit status"));
    }
    EXPECT_THROW(PeakWith({Match(2, 1, 1, 0)}).getHitStatusStringOf(0),
                 OpenMS::Exception::InvalidValue);
}

TEST(Peak, IonTypeIsBlamedBeforeTheHitStatus)
{
    EXPECT_EQ(ThrownByNameOf(0, 0), Unnamed(0, "unknown ion type"));
    EXPECT_EQ(ThrownByNameOf(7, 3), Unnamed(7, "unknown ion type"));
}

} // namespace
} // namespace Vorlan
