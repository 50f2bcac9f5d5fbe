// The one place that prints and ends the process. Callers say on which stream.
#ifndef VORLAN_UTIL_CONSOLE_H
#define VORLAN_UTIL_CONSOLE_H

#include <string_view>

namespace Vorlan::console {

enum class Stream { Out, Err };

/// Writes text as it stands and flushes the stream.
void Print(Stream stream, std::string_view text);

/// Prints text and ends the process with exit status 1, as the C library's exit
/// does.
[[noreturn]] void PrintAndExit(Stream stream, std::string_view text);

} // namespace Vorlan::console

#endif // VORLAN_UTIL_CONSOLE_H
