// What the commands that join records and spectra have on their command lines.
#ifndef PELGRIN_MINMATCHOPTION_H
#define PELGRIN_MINMATCHOPTION_H

#include <optional>
#include <string>

#include <CLI/CLI.hpp>

#include "run/Parameters.h"

namespace pelgrin {

inline void AddMinMatchOption(CLI::App& command, std::optional<std::string>& text)
{
    command
        .add_option("--min-match", text,
                    "share of the records that must meet their spectrum, of all and of each file, "
                    "such as 0.9; exit status 3 when fewer do")
        ->type_name("SHARE");
}

inline std::optional<double> MinMatchOf(const std::optional<std::string>& text)
{
    return text ? std::optional(ParseMinMatch(*text)) : std::nullopt;
}

} // namespace pelgrin

#endif // PELGRIN_MINMATCHOPTION_H
