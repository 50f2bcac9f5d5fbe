// What is said about a parameter file: its errors, each with line, key and what
// is allowed, and what the library would pass over in silence.
#ifndef PELGRIN_PARAMETERMESSAGES_H
#define PELGRIN_PARAMETERMESSAGES_H

#include <string>
#include <vector>

#include "parameters/ParameterText.h"

namespace pelgrin {

/// Why a key's value cannot be used: "run.ini:12: fragment_tol = "0": expected
/// a number above 0". A reason, when given, comes before what is expected.
std::string BadValue(const ParameterText& text, const std::string& section, const std::string& key,
                     const std::string& reason = {});

/// The same for any expectation.
std::string BadValue(const ParameterText& text, const std::string& section, const std::string& key,
                     const std::string& reason, const std::string& expected);

/// The text of an exception of CTulkParam, told with file, line, key and what
/// is allowed. Any other text comes behind the file's name.
std::string Explain(const ParameterText& text, const std::string& message);

/// Section and key that such a text names; both empty for other texts.
struct NamedKey {
    std::string section;
    std::string key;
};
NamedKey KeyIn(const std::string& message);

/// Unknown sections and keys, keys that stand twice or are not counted, and
/// values that are read as something else than they look like.
std::vector<std::string> WarningsOf(const ParameterText& text);

} // namespace pelgrin

#endif // PELGRIN_PARAMETERMESSAGES_H
