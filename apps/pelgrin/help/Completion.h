// What a shell completes behind "pelgrin", made of the tree of commands.
#ifndef PELGRIN_COMPLETION_H
#define PELGRIN_COMPLETION_H

#include <string>

#include "help/CommandTree.h"

namespace pelgrin {

/// A script to be sourced in bash 4 or later.
std::string BashCompletionOf(const CommandNode& program);

/// A file for a folder of zsh's fpath, "_pelgrin".
std::string ZshCompletionOf(const CommandNode& program);

/// A script for fish 3 or later, "pelgrin.fish".
std::string FishCompletionOf(const CommandNode& program);

} // namespace pelgrin

#endif // PELGRIN_COMPLETION_H
