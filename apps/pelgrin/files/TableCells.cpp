#include "files/TableCells.h"

#include <string>

#include <OpenMS/CONCEPT/Exception.h>
#include <OpenMS/DATASTRUCTURES/String.h>

#include "common/Words.h"

namespace pelgrin {

namespace {

/// A doubled quote is one within the text.
bool EndsQuoted(std::string_view cell)
{
    return (cell.size() - (cell.find_last_not_of('"') + 1)) % 2 == 1;
}

} // namespace

bool HasQuotedTab(std::string_view line)
{
    line = line.substr(0, line.find_last_not_of('\r') + 1);
    bool isInside = false;
    for (bool isLast = false; !isLast;) {
        const std::size_t tab = line.find('\t');
        const std::string_view cell = line.substr(0, tab);
        if (isInside && EndsQuoted(cell)) {
            return true;
        }
        isInside = isInside || (BeginsWith(cell, "\"") && !EndsQuoted(cell.substr(1)));
        isLast = tab == std::string_view::npos;
        line.remove_prefix(isLast ? line.size() : tab + 1);
    }
    return false;
}

bool IsWholeNumber(std::string_view cell)
{
    try {
        OpenMS::String(std::string(cell)).toInt();
        return true;
    } catch (const OpenMS::Exception::BaseException&) {
        return false;
    }
}

bool IsNumber(std::string_view cell)
{
    try {
        OpenMS::String(std::string(cell)).toDouble();
        return true;
    } catch (const OpenMS::Exception::BaseException&) {
        return false;
    }
}

} // namespace pelgrin
