#include "pepident/ResidueMasses.h"

#include <array>

#include <OpenMS/CHEMISTRY/Residue.h>
#include <OpenMS/CHEMISTRY/ResidueDB.h>
#include <OpenMS/CONCEPT/Exception.h>

namespace Vorlan {

namespace {

constexpr double kWater = 18.010565; // Da

double MassInOpenMS(char letter)
{
    try {
        const OpenMS::Residue* const residue =
            OpenMS::ResidueDB::getInstance()->getResidue(static_cast<unsigned char>(letter));
        return residue == nullptr ? 0.0 : residue->getMonoWeight(OpenMS::Residue::Full) - kWater;
    } catch (const OpenMS::Exception::BaseException&) {
        return 0.0;
    }
}

std::array<double, 26> MassesOfLetters()
{
    std::array<double, 26> masses{};
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        masses[static_cast<std::size_t>(letter - 'A')] = MassInOpenMS(letter);
    }
    return masses;
}

} // namespace

double ResidueMass(char letter)
{
    static const std::array<double, 26> masses = MassesOfLetters();
    return letter >= 'A' && letter <= 'Z' ? masses[static_cast<std::size_t>(letter - 'A')] : 0.0;
}

} // namespace Vorlan
