// Unimod XML on this machine, and the modification table that is made from it.
#ifndef PELGRIN_UNIMODFILE_H
#define PELGRIN_UNIMODFILE_H

#include <cstdint>
#include <optional>
#include <string>

#include "ModificationDB.h"

namespace pelgrin {

/// The first of these that exists: "CHEMISTRY/unimod.xml" below the working
/// folder (where the library looks), below the folder that the variable
/// OPENMS_DATA_PATH names, and in the places where OpenMS is installed.
std::optional<std::string> FindUnimodXml();

/// Where FindUnimodXml looks, for messages: "a, b, c".
std::string UnimodXmlPlaces();

/// The Unimod database of the process, filled from xmlPath. Nothing appears on
/// standard output. Throws Failure with the file and the reason when it cannot
/// be read or holds no records. To be called with one path only: the library
/// keeps the database of the first one.
const Vorlan::CModificationsDB& LoadUnimod(const std::string& xmlPath);

/// Writes the records of Unimod XML as the library's modification table and
/// gives their number. A failure leaves what was at outPath as it was. Throws
/// Failure.
std::uint64_t WriteModificationTable(const std::string& xmlPath, const std::string& outPath);

/// Throws Failure, with file and line, for a table that would end the process
/// when the library reads it, or of which it would read a part only. Gives the
/// number of records.
std::uint64_t CheckModificationTable(const std::string& path);

} // namespace pelgrin

#endif // PELGRIN_UNIMODFILE_H
