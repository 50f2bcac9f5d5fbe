// Which names somebody may have meant: pure, without files.
#ifndef PELGRIN_SIMILARNAMES_H
#define PELGRIN_SIMILARNAMES_H

#include <string>
#include <vector>

namespace pelgrin {

/// The names nearest to wanted, at most five: those that differ in letter case
/// only, then those with the fewest letters changed, added or left out (at most
/// a third of them, and at most four). Equally near ones keep their order.
std::vector<std::string> SimilarNames(const std::string& wanted,
                                      const std::vector<std::string>& names);

} // namespace pelgrin

#endif // PELGRIN_SIMILARNAMES_H
