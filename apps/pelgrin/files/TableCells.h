// How the library's readers of tables take a cell.
#ifndef PELGRIN_TABLECELLS_H
#define PELGRIN_TABLECELLS_H

#include <string_view>

namespace pelgrin {

/// A tab stands in a cell between double quotes, where the row is torn. Such a cell begins
/// with a quote and ends with one that is not doubled; other quotes are text.
bool HasQuotedTab(std::string_view line);

/// The readers that refuse a cell that is no number take this one.
bool IsWholeNumber(std::string_view cell);
bool IsNumber(std::string_view cell);

} // namespace pelgrin

#endif // PELGRIN_TABLECELLS_H
