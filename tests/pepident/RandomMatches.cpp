#include "pepident/RandomMatches.h"

#include <cmath>
#include <cstring>
#include <limits>
#include <string>

namespace Vorlan::test {

namespace {

std::string RandomText(std::mt19937& random, std::size_t longest)
{
    static const std::string letters = "ACDEFGHIKLMNPQRSTVWY_.|() 0123456789abc\xC3\xA9\"'-";
    std::string text;
    for (std::size_t length = 1 + random() % longest; length > 0; --length) {
        text += letters[random() % letters.size()];
    }
    return text;
}

/// What "%.6f" gives back exactly.
double SixDecimals(std::mt19937& random)
{
    const auto millionths = static_cast<std::int64_t>(random() % 4000000000) - 2000000000;
    return static_cast<double>(millionths) / 1000000;
}

double AnyDouble(std::mt19937& random)
{
    switch (random() % 8) {
    case 0: return 0.0;
    case 1: return -0.0;
    case 2: return 0.00001;
    case 3: return std::nextafter(0.00001, random() % 2 == 0 ? 0.0 : 1.0);
    case 4: return static_cast<double>(random() % 1000) / 64;
    default: break;
    }
    const std::uint64_t bits = std::uint64_t{random()} << 32 | random();
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

PeptideIdentification RandomMatch(std::mt19937& random)
{
    PeptideIdentification match;
    match.strDatasetName = RandomText(random, 12) + ".mgf";
    match.strSpectrumName = RandomText(random, 30);
    match.strSequence = RandomText(random, 20);
    match.nCharge = random() % 8;
    match.dObsMH = SixDecimals(random);
    match.dMassShift = SixDecimals(random);
    match.dMainScore = std::fabs(SixDecimals(random)) + 0.001;
    match.bHighScoreBetter = random() % 2 == 0;
    std::int32_t position = 0;
    for (std::size_t mods = random() % 4; mods > 0; --mods) {
        IdentModification mod;
        mod.strName = RandomText(random, 8) + " (M)";
        mod.nPos = position;
        position += static_cast<std::int32_t>(random() % 3);
        match.vMods.push_back(mod);
    }
    for (std::size_t proteins = random() % 4; proteins > 0; --proteins) {
        match.vEvidences.emplace_back(RandomText(random, 15),
                                      static_cast<std::int32_t>(random() % 3000) - 1, 0,
                                      "KR-X"[random() % 4], "AC-X"[random() % 4]);
    }
    return match;
}

} // namespace

std::vector<PeptideIdentification> RandomMatches(std::mt19937& random, std::size_t count)
{
    std::vector<PeptideIdentification> matches;
    while (matches.size() < count) {
        matches.push_back(RandomMatch(random));
    }
    return matches;
}

std::vector<PeptideIdentification> RandomOddMatches(std::mt19937& random, std::size_t count)
{
    std::vector<PeptideIdentification> matches = RandomMatches(random, count);
    for (PeptideIdentification& match : matches) {
        match.nCharge = random() % 4 == 0 ? std::uint64_t{random()} << 32 : match.nCharge;
        match.dObsMH = AnyDouble(random);
        match.dMassShift = AnyDouble(random);
        match.dMainScore = AnyDouble(random);
        for (IdentModification& mod : match.vMods) {
            static const char* const names[] = {"Acetyl (N-term)", "Amidated (C-term M)", "",
                                                "a (N-term (C-term (N-term", "x (Protein N-term)"};
            mod.strName = names[random() % 5];
            mod.nPos = static_cast<std::int32_t>(random());
        }
        for (PeptideEvidence& evidence : match.vEvidences) {
            evidence.nStart = static_cast<std::int32_t>(random());
        }
    }
    return matches;
}

} // namespace Vorlan::test
