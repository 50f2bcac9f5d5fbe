#include "DataStructures.h"
#include "datastructures/DataStructuresErrors.h"

namespace Vorlan {

namespace {

/// Match i of a list, const or not, after the check that every accessor makes.
template <typename Matches>
auto& CheckedAt(Matches& matches, std::uint64_t i, const char* label)
{
    if (i >= matches.size()) {
        errors::NoSuchMatch(i, matches.size(), label);
    }
    return matches[i];
}

const char* IonName(Peak::EIonType type)
{
    switch (type) {
    case Peak::A_ION: return "a-ion";
    case Peak::B_ION: return "b-ion";
    case Peak::C_ION: return "c-ion";
    case Peak::X_ION: return "x-ion";
    case Peak::Y_ION: return "y-ion";
    case Peak::Z_ION: return "z-ion";
    case Peak::Z_DOT_ION: break; // Deliberate: B-08. The z-dot ion has no printable name.
    }
    errors::UnknownIonType(type);
}

const char* HitStatusName(Peak::EPeakHitStatus status)
{
    switch (status) {
    case Peak::UNSHIFT: return "unshift";
    case Peak::SHIFT: return "shift";
    }
    errors::UnknownHitStatus(status);
}

} // namespace

// Deliberate: B-07. The four single-match arguments are ignored.
Peak::Peak(double mz, double intensity, EIonType /*ionType*/, std::uint64_t /*ionIndex*/,
           std::int32_t /*charge*/, EPeakHitStatus /*hitStatus*/,
           const std::vector<MatchRes>& matchRes)
    : dMz(mz), dIntensity(intensity), vMatchRes(matchRes)
{
}

double Peak::getMz() const
{
    return dMz;
}

void Peak::setMz(double mz)
{
    dMz = mz;
}

double Peak::getIntensity() const
{
    return dIntensity;
}

void Peak::setIntensity(double intensity)
{
    dIntensity = intensity;
}

void Peak::addMatchRes(MatchRes& matchRes)
{
    vMatchRes.push_back(matchRes);
}

void Peak::clearMatchRes()
{
    vMatchRes.clear();
}

std::uint64_t Peak::getNumberOfMatchRes() const
{
    return vMatchRes.size();
}

Peak::EIonType Peak::getIonTypeOf(std::uint64_t i) const
{
    return CheckedAt(vMatchRes, i, "Peak::getIonTypeOf").eIonType;
}

void Peak::setIonTypeOf(EIonType ionType, std::uint64_t i)
{
    CheckedAt(vMatchRes, i, "Peak::setIonTypeOf").eIonType = ionType;
}

std::uint64_t Peak::getIonIndexOf(std::uint64_t i) const
{
    return CheckedAt(vMatchRes, i, "Peak::getIonIndexOf").nIonIndex;
}

void Peak::setIonIndexOf(std::uint64_t ionIndex, std::uint64_t i)
{
    CheckedAt(vMatchRes, i, "Peak::setIonIndexOf").nIonIndex = ionIndex;
}

std::int32_t Peak::getChargeOf(std::uint64_t i) const
{
    return CheckedAt(vMatchRes, i, "Peak::getChargeOf").nCharge;
}

void Peak::setChargeOf(std::int32_t charge, std::uint64_t i)
{
    CheckedAt(vMatchRes, i, "Peak::setChargeOf").nCharge = charge;
}

Peak::EPeakHitStatus Peak::getHitStatusOf(std::uint64_t i) const
{
    return CheckedAt(vMatchRes, i, "Peak::getHitStatusOf").eHitStatus;
}

void Peak::setHitStatusOf(EPeakHitStatus hitStatus, std::uint64_t i)
{
    CheckedAt(vMatchRes, i, "Peak::setHitStatusOf").eHitStatus = hitStatus;
}

Peak::MatchRes Peak::getMatchResOf(std::uint64_t i) const
{
    return CheckedAt(vMatchRes, i, "Peak::getMatchResOf");
}

OpenMS::String Peak::getHitStatusStringOf(std::uint64_t i) const
{
    return getMatchResName(CheckedAt(vMatchRes, i, "Peak::getHitStatusStringOf"));
}

OpenMS::String Peak::getMatchResName(const MatchRes& matchRes)
{
    std::string name = IonName(matchRes.eIonType);
    name.append("_").append(HitStatusName(matchRes.eHitStatus));
    return name.append("_").append(std::to_string(matchRes.nCharge));
}

} // namespace Vorlan
