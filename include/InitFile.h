// The plain-text parameter file: named sections of key=value pairs.
//
//     # what stands behind a comment symbol is not read
//     [Search]
//     precursor_tol = 20
//     precursor_tol_type = 1     # ppm
//
// Contents
//   1. Section    one section with its pairs
//   2. InitFile   loads, answers, changes and saves
//
// docs/formats/parameters.md describes the format and the keys of a run.
#ifndef VORLAN_INITFILE_H
#define VORLAN_INITFILE_H

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <OpenMS/DATASTRUCTURES/String.h>

#include "VorlanExport.h"

namespace Vorlan {

// ===== 1. Section ==========================================================

/// The pairs under one header.
class VORLAN_API Section {
public:
    OpenMS::String strName;                             ///< without its brackets
    std::map<OpenMS::String, OpenMS::String> mapValues; ///< key -> value

    Section() = default;
    /// A section without pairs.
    explicit Section(const OpenMS::String& name);
};

// ===== 2. InitFile =========================================================

/// A parameter file in memory. Copies are independent of each other.
class VORLAN_API InitFile {
public:
    OpenMS::String strFilename;     ///< last loaded or set
    OpenMS::String strSymbol = "#"; ///< the comment symbols, each character one
    std::vector<Section> vSections; ///< in the order first met
    /// Name of a section -> its index in vSections, which alone decides which
    /// section Get, Set and pGetSection take: whoever changes one of the two
    /// changes the other. An index behind the end means no section.
    std::map<OpenMS::String, std::size_t> mapSectionIndex;

    InitFile() = default;

    /// Remembers path, removes all sections and reads the file, line by line:
    /// - the first character of the symbol set (see SetSymbol) that occurs in
    ///   the line cuts it at its first occurrence; the other symbols are then
    ///   not looked for (B-25);
    /// - blanks around the rest are trimmed (as OpenMS' String::trim does) and
    ///   an empty rest is passed over;
    /// - "[name]" opens a section, blanks around the name trimmed; a section
    ///   that is there already is continued;
    /// - any other line is a pair: key and value around its only "=", both
    ///   trimmed, either may be empty. The last value of a repeated key wins.
    ///   A value can therefore not contain "=".
    ///
    /// Lines may hold 81,919 characters; a longer one is read that far and
    /// ends the reading. After a failure the sections read so far are there.
    /// \throws OpenMS::Exception::FileNotFound with the path, label
    ///         "InitFile::Load", when the file cannot be opened; the line
    ///         "Error when reading "<path>"." is printed on standard output.
    /// \throws OpenMS::Exception::InvalidParameter, label "InitFile::Load", for
    ///         a line with no or more than one "=" and for a pair before any
    ///         header: the line's number (from 1), a blank, the line as it
    ///         stands in double quotes, and " Invalid parameter format".
    void Load(const OpenMS::String& path);

    /// Writes every section in the order in which it was first met: "[name]"
    /// and a line "key=value" for each pair, in the order of the keys' bytes.
    /// Comments are not kept.
    /// \throws OpenMS::Exception::FileNotWritable with the path, label
    ///         "InitFile::Save", when the file cannot be opened or written.
    void Save(const OpenMS::String& path) const;

    /// The value, or an empty text for a section or key that is not there.
    /// Never throws (but std::bad_alloc).
    OpenMS::String Get(const OpenMS::String& section, const OpenMS::String& key) const;

    /// Stores value under key in a section that is there. For any other
    /// section nothing happens, and nothing is said (B-26).
    void Set(const OpenMS::String& section, const OpenMS::String& key, const OpenMS::String& value);

    /// The section, or null. Good until the next Load, Clear or assignment.
    Section* pGetSection(const OpenMS::String& name);
    const Section* pGetSection(const OpenMS::String& name) const;

    /// Replaces the remembered path; nothing is read.
    void SetFilename(const OpenMS::String& path);

    /// Replaces the comment symbols, by default "#": each character is one.
    void SetSymbol(const OpenMS::String& symbols);

    /// Prints what Save would write on standard output.
    void Display() const;

    /// Removes all sections.
    void Clear();

private:
    void ReadLine_(std::string_view line, std::size_t number);
    void OpenSection_(const OpenMS::String& name);
    std::string Text_() const;

    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
    std::size_t nCurrent_ = kNone; ///< the section that Load opened or Set found last
};

} // namespace Vorlan

#endif // VORLAN_INITFILE_H
