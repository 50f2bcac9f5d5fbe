// The columns that the library's readers of tables need.
#ifndef PELGRIN_RESULTCOLUMNS_H
#define PELGRIN_RESULTCOLUMNS_H

#include <string>
#include <vector>

#include "files/FileKind.h"

namespace pelgrin {

/// Spellings of one column, of which a reader takes the first one that is there.
using ColumnNames = std::vector<std::string>;

/// In the order in which the reader looks for them; none for a kind that is no
/// table of a reader.
const std::vector<ColumnNames>& NeededColumns(FileKind kind);

/// '"A" or "B"', for messages.
std::string ChoiceText(const ColumnNames& names);

} // namespace pelgrin

#endif // PELGRIN_RESULTCOLUMNS_H
