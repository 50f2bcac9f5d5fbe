// What "pelgrin mods" does. The options are read in ModsCommand.cpp.
#ifndef PELGRIN_MODS_H
#define PELGRIN_MODS_H

#include <cstddef>
#include <optional>
#include <string>

#include "common/Command.h"
#include "mods/ModificationSource.h"
#include "mods/Sites.h"

namespace pelgrin {

// Each of these throws UsageError and Failure.

struct ImportQuestion {
    std::string unimod; ///< Unimod XML; empty: where FindUnimodXml finds it
    std::string out;
    bool mayOverwrite = false;
};

/// Makes the modification table from Unimod XML.
ExitStatus RunModsImport(const ImportQuestion& question);

struct FindQuestion {
    DatabaseChoice database;
    double mass = 0.0;
    double tolerance = 0.01; ///< either side, Da
    std::string residue;     ///< one letter; empty: any origin
    Vorlan::CResidueModification::TermSpecificity term =
        Vorlan::CResidueModification::NUMBER_OF_TERM_SPECIFICITY; ///< that: any
};

/// The records of a mass. WithLosses when there is none.
ExitStatus RunModsFind(const FindQuestion& question);

struct ShowQuestion {
    DatabaseChoice database;
    std::string name;
};

/// The records of a name, whole. WithLosses, and similar names, when there is none.
ExitStatus RunModsShow(const ShowQuestion& question);

/// How far a mass may be off.
struct MassWidth {
    double value = 0.0;
    bool isPpm = false; ///< of the peptide's MH; else Da
};

struct ExplainQuestion {
    DatabaseChoice database;
    double mass = 0.0;
    Site site;
    std::optional<MassWidth> tolerance; ///< none: that of the parameter file, else 0.01 Da
    std::optional<double> mh;           ///< of the peptide, Da
    bool isWholeDatabase = false;       ///< every record is a candidate
    std::size_t maxSize = 0;            ///< 0: 4, or 3 with the whole database
    std::size_t lines = 20;             ///< of each list
};

/// The combinations that explain a mass at a place. WithLosses when none does.
ExitStatus RunModsExplain(const ExplainQuestion& question);

/// What explain says, as a text of its own: "Acetyl (Any N-term K)".
std::string FullIdOf(const Vorlan::IdentModification& modification);

} // namespace pelgrin

#endif // PELGRIN_MODS_H
