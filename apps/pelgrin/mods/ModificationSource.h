// Which modification database a command asks, and its records.
#ifndef PELGRIN_MODIFICATIONSOURCE_H
#define PELGRIN_MODIFICATIONSOURCE_H

#include <string>
#include <vector>

#include "ModificationDB.h"
#include "TulkParam.h"

namespace pelgrin {

/// What the command line says; at most one of params, unimod and engineFile.
struct DatabaseChoice {
    std::string params;     ///< parameter file: the database that it names
    std::string unimod;     ///< Unimod XML
    std::string engineFile; ///< modification file of engine
    std::string engine;     ///< its name, such as "MSFragger"
};

/// The database of the choice; without any choice the table "unimod.txt" in the
/// working folder, else Unimod XML where FindUnimodXml finds it. Says on
/// standard error which one is used. Throws UsageError and Failure.
const Vorlan::CModificationsDB& OpenDatabase(const DatabaseChoice& choice);

/// Reads a whole parameter file. Throws Failure with the file and the reason.
const Vorlan::CTulkParam& ReadParameterFile(const std::string& path);

/// All records, in the order of the database. Those that the library does not
/// give by any name are missing, with a warning.
std::vector<const Vorlan::CResidueModification*>
AllRecords(const Vorlan::CModificationsDB& database);

/// The names of the engines whose files are read, in quotes, joined by ", ".
std::string EngineChoices();

} // namespace pelgrin

#endif // PELGRIN_MODIFICATIONSOURCE_H
