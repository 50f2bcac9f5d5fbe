#include "files/TableCells.h"

#include <string>

#include <OpenMS/CONCEPT/Exception.h>
#include <OpenMS/DATASTRUCTURES/String.h>

namespace pelgrin {

bool HasQuotedTab(std::string_view line)
{
    bool isInside = false;
    for (const char c : line) {
        isInside ^= c == '"';
        if (isInside && c == '\t') {
            return true;
        }
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
