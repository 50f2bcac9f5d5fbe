// The names under which the library knows a record of an MGF file.
//
// The library enters a record under up to four names that it takes from the
// title, and tells nobody which of them a spectrum was found by. This is the same
// rule, for the host's own look; a test compares both.
#ifndef PELGRIN_MGFNAMES_H
#define PELGRIN_MGFNAMES_H

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace pelgrin {

enum class NameKind : std::size_t {
    Title,     ///< the whole title, trimmed
    FirstWord, ///< the title up to its first blank
    Dotted,    ///< the first word with the number before its last dot twice (B-24)
    Scan,      ///< behind "scan=", less the last character of the title (B-13)
};
constexpr std::size_t kNameKinds = 4;

/// The key in JSON, such as "first_word".
const char* KeyOf(NameKind kind);
/// The words of a report, such as "the first word of the title".
const char* TextOf(NameKind kind);

struct MgfNames {
    /// By NameKind; a name that the title does not give is not `has`.
    std::array<std::string, kNameKinds> names;
    std::array<bool, kNameKinds> has{};
    /// The scan name is a number that lost its last digit: the title ends in it.
    bool scanIsCut = false;

    const std::string& Of(NameKind kind) const { return names[static_cast<std::size_t>(kind)]; }
    bool Has(NameKind kind) const { return has[static_cast<std::size_t>(kind)]; }
};

/// The names of a title line, "TITLE=..." or any other that begins with 'T': the
/// library takes each of them, and drops its first six characters.
MgfNames NamesOf(std::string_view titleLine);

} // namespace pelgrin

#endif // PELGRIN_MGFNAMES_H
