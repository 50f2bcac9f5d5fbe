// Copies of what holds neither MGF spectra nor results.
#ifndef PELGRIN_OTHERCOPIES_H
#define PELGRIN_OTHERCOPIES_H

#include <string>

#include "files/ScratchFolder.h"
#include "prepare/Copy.h"

namespace pelgrin {

/// Copies the DTA files of a folder into the folder target; held are the files.
/// Throws Failure.
void CopyDtaFolder(const std::string& folder, const std::string& target, ScratchFolder& scratch,
                   Copy& copy);

// Both copy the plain text file at source to target, and throw Failure.

/// Held are the proteins.
void CopyFasta(const std::string& source, const std::string& target, Copy& copy);

/// Line by line as it is. No records are counted.
void CopyText(const std::string& source, const std::string& target);

} // namespace pelgrin

#endif // PELGRIN_OTHERCOPIES_H
