#include "pepident/ResidueMasses.h"

#include <array>
#include <exception>
#include <new>

#include <OpenMS/CHEMISTRY/Residue.h>
#include <OpenMS/CHEMISTRY/ResidueDB.h>
#include <OpenMS/CONCEPT/Exception.h>

namespace Vorlan {

namespace {

constexpr double kWater = 18.010565; // Da

double MassInOpenMS(char letter)
{
    const OpenMS::Residue* const residue =
        OpenMS::ResidueDB::getInstance()->getResidue(static_cast<unsigned char>(letter));
    return residue == nullptr ? 0.0 : residue->getMonoWeight(OpenMS::Residue::Full) - kWater;
}

std::array<double, 26> MassesOfLetters()
{
    std::array<double, 26> masses{};
    try {
        for (char letter = 'A'; letter <= 'Z'; ++letter) {
            masses[static_cast<std::size_t>(letter - 'A')] = MassInOpenMS(letter);
        }
    } catch (const OpenMS::Exception::BaseException&) {
        throw;
    } catch (const std::exception&) {
        throw;
    } catch (...) {
        // What Xerces, which OpenMS reads its table with, throws when memory ends is no
        // std::exception.
        throw std::bad_alloc();
    }
    return masses;
}

} // namespace

double ResidueMass(char letter)
{
    // Where making them throws, the next call makes them anew, and OpenMS its table.
    static const std::array<double, 26> masses = MassesOfLetters();
    return letter >= 'A' && letter <= 'Z' ? masses[static_cast<std::size_t>(letter - 'A')] : 0.0;
}

} // namespace Vorlan
