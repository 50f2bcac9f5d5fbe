#include "run/DottedName.h"

namespace pelgrin {

namespace {

/// Takes a dot and the number behind it from the end of name; empty, and name as
/// it was, when there is none.
std::string TakeNumber(std::string_view& name)
{
    const std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos || dot == 0 || !IsScanNumber(name.substr(dot + 1))) {
        return {};
    }
    std::string number = WithoutZeros(name.substr(dot + 1));
    name = name.substr(0, dot);
    return number;
}

/// Both without zeros in front.
bool IsAbove(const std::string& left, const std::string& right)
{
    return left.size() != right.size() ? left.size() > right.size() : left > right;
}

} // namespace

std::string DottedName::Key() const
{
    return front + "." + firstScan + "." + lastScan + (charge.empty() ? "" : "." + charge);
}

std::optional<DottedName> ParseDottedName(std::string_view name)
{
    const std::string last = TakeNumber(name);
    const std::string middle = TakeNumber(name);
    if (middle.empty()) {
        return std::nullopt;
    }
    std::string_view front = name;
    const std::string first = TakeNumber(front);
    // "run.5.12.12" is scan 12 of "run.5", "run.5.5.12" has charge 12.
    if (middle == last && first != middle) {
        return DottedName{std::string(name), middle, last, {}};
    }
    if (first.empty() || IsAbove(first, middle)) {
        return std::nullopt;
    }
    return DottedName{std::string(front), first, middle, last};
}

bool IsScanNumber(std::string_view name)
{
    return !name.empty() && name.find_first_not_of("0123456789") == std::string_view::npos;
}

std::string WithoutZeros(std::string_view number)
{
    const std::size_t first = number.find_first_not_of('0');
    return first == std::string_view::npos ? "0" : std::string(number.substr(first));
}

} // namespace pelgrin
