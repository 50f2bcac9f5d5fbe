// Which names somebody may have meant: pure, without files.
#ifndef PELGRIN_SIMILARNAMES_H
#define PELGRIN_SIMILARNAMES_H

#include <string>
#include <string_view>
#include <vector>

namespace pelgrin {

/// The names nearest to wanted, at most five: those that differ in letter case
/// only, then those with the fewest letters changed, added or left out (at most
/// a third of them, and at most four). Equally near ones keep their order.
std::vector<std::string> SimilarNames(const std::string& wanted,
                                      const std::vector<std::string>& names);

/// The one of names that is written most like name, whatever the case; empty
/// when none is near.
std::string Nearest(const std::vector<std::string>& names, std::string_view name);

} // namespace pelgrin

#endif // PELGRIN_SIMILARNAMES_H
