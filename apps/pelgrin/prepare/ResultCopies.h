// Copies of results, one function for each format.
#ifndef PELGRIN_RESULTCOPIES_H
#define PELGRIN_RESULTCOPIES_H

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "prepare/Copy.h"

namespace pelgrin {

/// The new name of a spectrum whose old one is not its own any more, empty when nobody
/// can tell which spectrum is meant; nothing for others.
using NewName = std::function<std::optional<std::string>(const std::string& dataset,
                                                         const std::string& spectrum)>;

// Each copies the plain text file at source to target and counts in copy; held are
// its matches. Throws Failure for a file that cannot be read or written, or lacks
// a column that the library needs.

void CopyNativeTable(const std::string& source, const std::string& target, const NewName& newName,
                     Copy& copy);
void CopyMsgf(const std::string& source, const std::string& target, Copy& copy);
void CopySequest(const std::string& source, const std::string& target, Copy& copy);
void CopyPFind3(const std::string& source, const std::string& target, Copy& copy);

/// peptides is a plain text file, too, or empty. Writes msms.txt, and a
/// peptides.txt that names its rows in their order: proteins and residues of a
/// sequence are those of peptides, without it the proteins of msms.txt.
void CopyMaxQuant(const std::string& source, const std::string& peptides, const std::string& target,
                  const std::string& peptidesTarget, Copy& copy);

/// Each msms_run_summary goes to a file of its own: pathOf gives the path of run k
/// of n, from 1. Gives the paths.
std::vector<std::string>
CopyPepXml(const std::string& source,
           const std::function<std::string(std::size_t k, std::size_t n)>& pathOf,
           const NewName& newName, Copy& copy);

} // namespace pelgrin

#endif // PELGRIN_RESULTCOPIES_H
