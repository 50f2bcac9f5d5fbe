// Records and spectra on the way between processes: what goes in comes out.
#include "isolation/RecordBytes.h"

#include <cmath>
#include <cstring>
#include <limits>

#include "support/Random.h"
#include "support/Support.h"

namespace pelgrin::test {
namespace {

using Vorlan::IdentModification;
using Vorlan::PeptideEvidence;
using Vorlan::PeptideIdentification;
using Vorlan::Spectrum;
using Vorlan::test::Random;

using Records = std::vector<PeptideIdentification>;

const std::string kNul("a\0b\0", 4);
const std::vector<std::string> kTexts = {"",
                                         kNul,
                                         "\t\r\n;",
                                         "\xC3\x9F \xC2\xB5 \xFF\xFE",
                                         "GASK<>&;",
                                         "run.1.1.2 ",
                                         std::string(70000, 'x')};
const std::vector<double> kNumbers = {0.0,
                                      -0.0,
                                      1.5,
                                      std::numeric_limits<double>::quiet_NaN(),
                                      std::numeric_limits<double>::infinity(),
                                      -std::numeric_limits<double>::infinity(),
                                      std::numeric_limits<double>::denorm_min(),
                                      std::numeric_limits<double>::max()};

/// A value of every type, whatever there is.
class Any {
public:
    explicit Any(std::uint64_t seed) : random_(seed) {}

    std::string Text() { return kTexts[random_.Below(kTexts.size())]; }
    double Number() { return kNumbers[random_.Below(kNumbers.size())]; }
    std::uint64_t Bits() { return random_.Bits(); }
    std::int32_t Integer() { return static_cast<std::int32_t>(random_.Bits()); }
    char Letter() { return static_cast<char>(random_.Bits()); }
    bool Flag() { return random_.OneIn(2); }

    template <typename Thing, typename Make>
    std::vector<Thing> Some(Make make)
    {
        std::vector<Thing> things;
        for (std::size_t i = random_.Below(4); i > 0; --i) {
            things.push_back(make());
        }
        return things;
    }

private:
    Random random_;
};

PeptideIdentification RecordOf(Any& any)
{
    const auto modification = [&any] {
        IdentModification one;
        one.strName = any.Text();
        one.dMass = any.Number();
        one.strSite = any.Text();
        one.strPosition = any.Text();
        one.nPos = any.Integer();
        return one;
    };
    const auto evidence = [&any] {
        PeptideEvidence one;
        one.strProteinAccession = any.Text();
        one.nStart = any.Integer();
        one.cBefore = any.Letter();
        one.cAfter = any.Letter();
        return one;
    };
    PeptideIdentification record;
    record.strDatasetName = any.Text();
    record.strSpectrumName = any.Text();
    record.strSequence = any.Text();
    record.dValue1 = any.Number();
    record.nCharge = any.Bits();
    record.dValue2 = any.Number();
    record.dValue3 = any.Number();
    record.dMassShift = any.Number();
    record.nValue4 = any.Bits();
    record.dMainScore = any.Number();
    record.bHighScoreBetter = any.Flag();
    record.dObsMH = any.Number();
    record.nValue5 = any.Integer();
    record.bDecoy = any.Flag();
    record.vEvidences = any.Some<PeptideEvidence>(evidence);
    record.vMods = any.Some<IdentModification>(modification);
    record.vAltMods = any.Some<IdentModification>(modification);
    return record;
}

/// The very bits: a NaN is itself, and -0 is not 0.
std::uint64_t BitsOf(double value)
{
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

void ExpectSame(const std::vector<IdentModification>& mods,
                const std::vector<IdentModification>& others)
{
    ASSERT_EQ(mods.size(), others.size());
    for (std::size_t i = 0; i < mods.size(); ++i) {
        EXPECT_EQ(mods[i].strName, others[i].strName);
        EXPECT_EQ(BitsOf(mods[i].dMass), BitsOf(others[i].dMass));
        EXPECT_EQ(mods[i].strSite, others[i].strSite);
        EXPECT_EQ(mods[i].strPosition, others[i].strPosition);
        EXPECT_EQ(mods[i].nPos, others[i].nPos);
    }
}

void ExpectSame(const PeptideIdentification& record, const PeptideIdentification& other)
{
    EXPECT_EQ(record.strDatasetName, other.strDatasetName);
    EXPECT_EQ(record.strSpectrumName, other.strSpectrumName);
    EXPECT_EQ(record.strSequence, other.strSequence);
    EXPECT_EQ(BitsOf(record.dValue1), BitsOf(other.dValue1));
    EXPECT_EQ(record.nCharge, other.nCharge);
    EXPECT_EQ(BitsOf(record.dValue2), BitsOf(other.dValue2));
    EXPECT_EQ(BitsOf(record.dValue3), BitsOf(other.dValue3));
    EXPECT_EQ(BitsOf(record.dMassShift), BitsOf(other.dMassShift));
    EXPECT_EQ(record.nValue4, other.nValue4);
    EXPECT_EQ(BitsOf(record.dMainScore), BitsOf(other.dMainScore));
    EXPECT_EQ(record.bHighScoreBetter, other.bHighScoreBetter);
    EXPECT_EQ(BitsOf(record.dObsMH), BitsOf(other.dObsMH));
    EXPECT_EQ(record.nValue5, other.nValue5);
    EXPECT_EQ(record.bDecoy, other.bDecoy);
    ASSERT_EQ(record.vEvidences.size(), other.vEvidences.size());
    for (std::size_t i = 0; i < record.vEvidences.size(); ++i) {
        EXPECT_EQ(record.vEvidences[i].strProteinAccession,
                  other.vEvidences[i].strProteinAccession);
        EXPECT_EQ(record.vEvidences[i].nStart, other.vEvidences[i].nStart);
        EXPECT_EQ(record.vEvidences[i].cBefore, other.vEvidences[i].cBefore);
        EXPECT_EQ(record.vEvidences[i].cAfter, other.vEvidences[i].cAfter);
    }
    ExpectSame(record.vMods, other.vMods);
    ExpectSame(record.vAltMods, other.vAltMods);
}

Records SomeRecords(std::uint64_t seed, std::size_t count)
{
    Any any(seed);
    Records records;
    for (; count > 0; --count) {
        records.push_back(RecordOf(any));
    }
    return records;
}

TEST(RecordBytes, EveryFieldOfARecordComesBack)
{
    const Records records = SomeRecords(1, 200);
    Records others;
    AppendRecords(BytesOf(records, 0, records.size()), others);
    ASSERT_EQ(others.size(), records.size());
    for (std::size_t i = 0; i < records.size(); ++i) {
        SCOPED_TRACE(i);
        ExpectSame(others[i], records[i]);
    }
}

TEST(RecordBytes, PartsAreAppendedInTheirOrder)
{
    const Records records = SomeRecords(2, 9);
    Records others(1);
    AppendRecords(BytesOf(records, 2, 5), others);
    AppendRecords(BytesOf(records, 5, 5), others);
    AppendRecords(BytesOf(records, 5, 9), others);
    ASSERT_EQ(others.size(), 8U);
    ExpectSame(others[0], PeptideIdentification());
    for (std::size_t i = 2; i < records.size(); ++i) {
        SCOPED_TRACE(i);
        ExpectSame(others[i - 1], records[i]);
    }
}

TEST(RecordBytes, ARecordWithoutAnythingComesBack)
{
    Records others;
    AppendRecords(BytesOf(Records(1), 0, 1), others);
    ASSERT_EQ(others.size(), 1U);
    ExpectSame(others[0], PeptideIdentification());
}

/// One field after the other: what differs in it has other bytes.
TEST(RecordBytes, DifferWhenAFieldDiffers)
{
    const auto bytes = [](const auto& change) {
        Records records(1);
        records[0].vEvidences.resize(1);
        records[0].vMods.resize(1);
        records[0].vAltMods.resize(1);
        change(records[0]);
        return BytesOf(records, 0, 1);
    };
    using Record = PeptideIdentification;
    const std::vector<void (*)(Record&)> changes = {
        [](Record& r) { r.strDatasetName = "x"; },
        [](Record& r) { r.strSpectrumName = "x"; },
        [](Record& r) { r.strSequence = "x"; },
        [](Record& r) { r.dValue1 = 1; },
        [](Record& r) { r.nCharge = 1; },
        [](Record& r) { r.dValue2 = 1; },
        [](Record& r) { r.dValue3 = 1; },
        [](Record& r) { r.dMassShift = -0.0; },
        [](Record& r) { r.nValue4 = 1; },
        [](Record& r) { r.dMainScore = 1; },
        [](Record& r) { r.bHighScoreBetter = true; },
        [](Record& r) { r.dObsMH = 1; },
        [](Record& r) { r.nValue5 = 1; },
        [](Record& r) { r.bDecoy = true; },
        [](Record& r) { r.vEvidences[0].nStart = 1; },
        [](Record& r) { r.vMods[0].strPosition = ""; },
        [](Record& r) { r.vAltMods[0].nPos = 1; },
        [](Record& r) { r.vAltMods.clear(); },
    };
    std::vector<std::string> seen = {bytes([](Record&) {})};
    for (const auto& change : changes) {
        seen.push_back(bytes(change));
        for (std::size_t i = 0; i + 1 < seen.size(); ++i) {
            EXPECT_NE(seen[i], seen.back()) << i << " and " << seen.size() - 1;
        }
    }
}

TEST(RecordBytes, EveryFieldOfASpectrumComesBack)
{
    Any any(3);
    for (int round = 0; round < 100; ++round) {
        Spectrum spectrum;
        spectrum.nSpecFlag = any.Integer();
        spectrum.strSource = any.Text();
        spectrum.strTitle = any.Text();
        spectrum.dPrecursorMz = any.Number();
        spectrum.nCharge = any.Bits();
        spectrum.nScan = any.Integer();
        spectrum.dRetentionTime = any.Number();
        spectrum.vPeaks.resize(any.Bits() % 5);
        for (Vorlan::Peak& peak : spectrum.vPeaks) {
            peak.dMz = any.Number();
            peak.dIntensity = any.Number();
        }
        const Spectrum other = SpectrumOf(BytesOf(spectrum));
        EXPECT_EQ(other.nSpecFlag, spectrum.nSpecFlag);
        EXPECT_EQ(other.strSource, spectrum.strSource);
        EXPECT_EQ(other.strTitle, spectrum.strTitle);
        EXPECT_EQ(BitsOf(other.dPrecursorMz), BitsOf(spectrum.dPrecursorMz));
        EXPECT_EQ(other.nCharge, spectrum.nCharge);
        EXPECT_EQ(other.nScan, spectrum.nScan);
        EXPECT_EQ(BitsOf(other.dRetentionTime), BitsOf(spectrum.dRetentionTime));
        ASSERT_EQ(other.vPeaks.size(), spectrum.vPeaks.size());
        for (std::size_t i = 0; i < other.vPeaks.size(); ++i) {
            EXPECT_EQ(BitsOf(other.vPeaks[i].dMz), BitsOf(spectrum.vPeaks[i].dMz));
            EXPECT_EQ(BitsOf(other.vPeaks[i].dIntensity), BitsOf(spectrum.vPeaks[i].dIntensity));
        }
    }
}

} // namespace
} // namespace pelgrin::test
