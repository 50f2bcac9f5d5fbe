#include "pepident/ElementMasses.h"

#include <cstddef>

#include "util/Console.h"
#include "util/Numbers.h"

namespace Vorlan {

namespace {

struct Element {
    std::string_view symbol;
    double mass; ///< of the most abundant isotope, Da
};

// Atomic masses of NIST (AME2012), with two letters first: "Cl" is no carbon.
constexpr Element kElements[] = {
    {"Br", 78.9183376},   {"Cl", 34.968852682},  {"Fe", 55.93493633},   {"Se", 79.9165218},
    {"C", 12.0},          {"H", 1.00782503223},  {"N", 14.00307400443}, {"O", 15.99491461957},
    {"S", 31.9720711744}, {"P", 30.97376199842},
};

const Element* ElementAt(std::string_view text)
{
    for (const Element& element : kElements) {
        if (text.substr(0, element.symbol.size()) == element.symbol) {
            return &element;
        }
    }
    return nullptr;
}

/// How much of text, from its start, is a whole number.
std::size_t LengthOfCount(std::string_view text)
{
    const std::size_t sign = !text.empty() && (text[0] == '-' || text[0] == '+') ? 1 : 0;
    std::size_t end = sign;
    while (end < text.size() && text[end] >= '0' && text[end] <= '9') {
        ++end;
    }
    return end == sign ? 0 : end;
}

} // namespace

bool IsComposition(std::string_view text)
{
    return text.find_first_of("CHNOSPBrClFeSe") != std::string_view::npos;
}

double CompositionMass(std::string_view composition)
{
    double mass = 0.0;
    while (!composition.empty()) {
        const Element* const element = ElementAt(composition);
        if (element == nullptr) {
            if (composition.front() != ' ' && composition.front() != '\t') {
                console::Print(console::Stream::Out,
                               "Unexpected Charactor in modification composition\n"); // sic
            }
            composition.remove_prefix(1);
            continue;
        }
        composition.remove_prefix(element->symbol.size());
        const std::size_t length = LengthOfCount(composition);
        mass +=
            element->mass * (length == 0 ? 1.0 : numbers::ToDouble(composition.substr(0, length)));
        composition.remove_prefix(length);
    }
    return mass;
}

} // namespace Vorlan
