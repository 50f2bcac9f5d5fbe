// The manual page pelgrin(1), made of the tree of commands.
#ifndef PELGRIN_MANUALPAGE_H
#define PELGRIN_MANUALPAGE_H

#include <string>
#include <utility>
#include <vector>

#include "help/CommandTree.h"

namespace pelgrin {

/// Exit status -> what it means, as help, manual page and docs tell it.
const std::vector<std::pair<int, std::string>>& ExitStatusTexts();

/// The page in the language of man, of a version such as "0.1.0". It holds no
/// date: the same program gives the same bytes.
std::string ManualPageOf(const CommandNode& program, const std::string& version);

} // namespace pelgrin

#endif // PELGRIN_MANUALPAGE_H
