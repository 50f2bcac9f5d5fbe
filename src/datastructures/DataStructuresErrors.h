// Every exception of the unit DataStructures. File and label are literals: the
// exception class stores the bare pointers.
#ifndef VORLAN_DATASTRUCTURES_ERRORS_H
#define VORLAN_DATASTRUCTURES_ERRORS_H

#include <cstdint>
#include <string>

#include <OpenMS/CONCEPT/Exception.h>
#include <OpenMS/DATASTRUCTURES/String.h>

namespace Vorlan::errors {

inline constexpr char kDataStructures[] = "DataStructures";

[[noreturn]] inline void NoProteinInformation()
{
    throw OpenMS::Exception::InvalidValue(kDataStructures, __LINE__,
                                          "PeptideIdentification::isTarget",
                                          "There is no protein information", "");
}

/// firstCharacter is the code of the offending character, 0 for none.
[[noreturn]] inline void NoSuchModificationSite(unsigned char firstCharacter)
{
    throw OpenMS::Exception::InvalidValue(
        kDataStructures, __LINE__, "LocalizeResult::transStringToEModSite",
        "There is no such modification site", std::to_string(firstCharacter));
}

[[noreturn]] inline void NotATermSpecificity()
{
    throw OpenMS::Exception::InvalidValue(
        kDataStructures, __LINE__, "LocalizeResult::transETermSpecificityToString",
        "NUMBER_OF_TERM_SPECIFICITY is Invalid value", "NUMBER_OF_TERM_SPECIFICITY");
}

[[noreturn]] inline void UnknownTermSpecificity(const OpenMS::String& text)
{
    throw OpenMS::Exception::InvalidParameter(kDataStructures, __LINE__,
                                              "LocalizeResult::transStringToETermSpecificity",
                                              "The Term Specificity of " + text + " is unknown.");
}

/// label is the literal name of the member, "Peak::getChargeOf".
[[noreturn]] inline void NoSuchMatch(std::uint64_t index, std::uint64_t size, const char* label)
{
    throw OpenMS::Exception::IndexOverflow(kDataStructures, __LINE__, label,
                                           static_cast<OpenMS::SignedSize>(index), size);
}

[[noreturn]] inline void UnknownIonType(int value)
{
    throw OpenMS::Exception::InvalidValue(kDataStructures, __LINE__, "Peak::getMatchResName",
                                          "unknown ion type", std::to_string(value));
}

[[noreturn]] inline void UnknownHitStatus(int value)
{
    throw OpenMS::Exception::InvalidValue(kDataStructures, __LINE__, "Peak::getMatchResName",
                                          "unknown hit status", std::to_string(value));
}

} // namespace Vorlan::errors

#endif // VORLAN_DATASTRUCTURES_ERRORS_H
