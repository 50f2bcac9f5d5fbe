// What a file is, by what stands in it.
#ifndef PELGRIN_FILEKIND_H
#define PELGRIN_FILEKIND_H

#include <cstddef>
#include <optional>
#include <string>

#include "DataStructures.h"

namespace pelgrin {

enum class FileKind : std::size_t {
    Unknown, ///< none of these, or empty
    Mgf,
    Dta,       ///< one DTA file
    DtaFolder, ///< a folder with DTA files
    MzMl,
    MzXml,
    PepXml,
    NativeTable,
    Msgf,
    MaxQuantMatches,  ///< msms.txt
    MaxQuantPeptides, ///< peptides.txt
    PFind3,
    PFind28,
    Sequest,
    Fasta,
    Unimod,
    ModificationTable,
    PFind3Modifications,
    ParameterFile,
    OtherXml,
    OtherTable, ///< tab-separated
};
constexpr std::size_t kFileKinds = 21;

/// The key in JSON, such as "maxquant_matches".
const char* KeyOf(FileKind kind);
/// The words of a report, such as "matches of MaxQuant (msms.txt)".
const char* TextOf(FileKind kind);

/// Looks at the beginning of an unpacked file, never at its name. A table of an
/// engine is known by its characteristic columns, in any letter case, also when
/// others are missing. Throws Failure when the path cannot be read.
FileKind KindOf(const std::string& path);

/// The result format of a kind; nothing for what holds no matches. A pepXML file
/// that names no other engine is Comet's.
std::optional<Vorlan::PepIdentType::EPepIdentType> FormatOf(FileKind kind, const std::string& path);

} // namespace pelgrin

#endif // PELGRIN_FILEKIND_H
