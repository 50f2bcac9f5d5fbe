// Every key of a parameter file: what it may hold, when it is needed, and what
// the template says. Messages, checks and the template read this one table.
#ifndef PELGRIN_PARAMETERKEYS_H
#define PELGRIN_PARAMETERKEYS_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pelgrin {

/// How the library reads a value.
enum class ValueKind {
    Text,
    Number, ///< by atof: what stands behind the number is not read
    Count,  ///< by atoi: the same
    Switch, ///< 0 or 1; the library takes other texts, too, in silence
};

struct ParameterKey {
    const char* section;
    const char* key;    ///< "fixed_mod_N" stands for fixed_mod_1, fixed_mod_2 and so on
    const char* number; ///< of a key with N: the key that holds their number; else null
    ValueKind kind;
    const char* allowed; ///< "a number above 0"
    const char* needed;  ///< "always"; "when open_search is 1"
    const char* meaning; ///< for people, one line
    const char* example; ///< value in the template; null: the line is a comment there

    bool IsRequired() const { return std::string_view(needed) == "always"; }
};

/// All keys, section by section, in the order in which the library reads them.
const std::vector<ParameterKey>& ParameterKeys();

/// The row of a key as it stands in a file, fixed_mod_3 for one. Null for a
/// key that the section does not have.
const ParameterKey* FindParameterKey(std::string_view section, std::string_view key);

/// N of a key in a row with N; nothing when it is no number from 1 as the
/// library writes it.
std::optional<std::uint64_t> NumberIn(const ParameterKey& row, std::string_view key);

bool IsParameterSection(std::string_view section);

/// The known key of the section, or section, that is written most like name;
/// empty when none is near.
std::string NearestParameterKey(std::string_view section, std::string_view key);
std::string NearestParameterSection(std::string_view section);

} // namespace pelgrin

#endif // PELGRIN_PARAMETERKEYS_H
