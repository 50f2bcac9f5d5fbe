// What the native table makes of a record: one row, whose cells and lists it does
// not escape.
#ifndef PELGRIN_NATIVEROW_H
#define PELGRIN_NATIVEROW_H

#include <cstddef>
#include <string_view>

#include "DataStructures.h"

namespace pelgrin {

/// The characters of the row that the library writes, without its line feed.
std::size_t RowLengthOf(const Vorlan::PeptideIdentification& record);

/// The text is the same when it is read again from a cell of its own.
bool FitsIntoCell(std::string_view text);

/// Likewise from a cell that it shares with others.
bool FitsIntoList(std::string_view text);

} // namespace pelgrin

#endif // PELGRIN_NATIVEROW_H
