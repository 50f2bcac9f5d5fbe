// What a file is, by what stands in it.
#ifndef PELGRIN_FILEKIND_H
#define PELGRIN_FILEKIND_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

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
    MsgfModifications, ///< list of modifications of an MS-GF+ search
    EngineParameters,  ///< of MSFragger or Comet
    OtherXml,
    OtherTable, ///< tab-separated
};
constexpr std::size_t kFileKinds = 23;

/// The key in JSON, such as "maxquant_matches".
const char* KeyOf(FileKind kind);
/// The words of a report, such as "matches of MaxQuant (msms.txt)".
const char* TextOf(FileKind kind);

/// Looks at the beginning of an unpacked file, never at its name, and of a folder
/// at the names in it. A table of an engine is known by its characteristic columns,
/// in any letter case, also when others are missing. UTF-16 with a byte order mark
/// is understood, and lines may end in any way: that a kind is known does not mean
/// that the library can read the file. Throws Failure when the path cannot be read.
FileKind KindOf(const std::string& path);

/// The search engine that a pepXML file names first, as engine and version, such
/// as "MSFragger" and "3.8": MSFragger itself says "X! Tandem" and "MSFragger-3.8".
struct PepXmlEngine {
    std::string name; ///< empty: none is named
    std::string version;
};
/// Of the attributes search_engine and search_engine_version.
PepXmlEngine EngineOf(std::string_view engine, std::string_view version);

/// The result format of a kind; nothing for what holds no matches. A pepXML file
/// without the name of an engine is Comet's; one of an engine that the library does
/// not know has none. Throws Failure when a pepXML file cannot be read.
std::optional<Vorlan::PepIdentType::EPepIdentType> FormatOf(FileKind kind, const std::string& path);

} // namespace pelgrin

#endif // PELGRIN_FILEKIND_H
