// The scan number that a title of an MGF record tells, in the ways of many programs.
#ifndef PELGRIN_TITLESCAN_H
#define PELGRIN_TITLESCAN_H

#include <cstdint>
#include <optional>
#include <string_view>

namespace pelgrin {

/// What a title says outright: behind the first "scan=", as the pair of numbers of
/// a first word "run.1405.1405.2", or behind a word "Scan". Nothing otherwise.
std::optional<std::uint32_t> ScanOfTitle(std::string_view title);

/// A number that counts the spectra otherwise: behind "Cmpd" or "index=".
std::optional<std::uint32_t> CountOfTitle(std::string_view title);

/// The number at the start of text, blanks in front allowed; nothing for one that does not fit.
std::optional<std::uint32_t> LeadingNumber(std::string_view text);
/// The same with a "+" in front allowed, as the library reads SCANS= and charges.
std::optional<std::uint32_t> LeadingValue(std::string_view text);

/// The scan of a word such as "run.1405.1405.2", "run.1405.1405.2.0.dta",
/// "run.1405.1405." or "run.1405.1405".
std::optional<std::uint32_t> ScanOfDottedWord(std::string_view word);

} // namespace pelgrin

#endif // PELGRIN_TITLESCAN_H
