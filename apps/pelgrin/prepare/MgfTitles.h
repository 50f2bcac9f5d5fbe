// Titles under which every record of an MGF file is found by all of its names.
//
// The library enters a record under up to four names of its title, and a later
// record takes a name over (docs/formats/mgf.md). Good titles look like
//
//     run.1405.1405.2 File:"run", NativeID:"scan=1405"
//
// and no two records share a name. A title that is good already stays. Of another
// one without blanks the text becomes the first word, so that it is still a name;
// else the first word is made of file, scan and charge, and the old title stands
// behind it, where it is no name: see OldNames. A scan number that several records
// have is nobody's name, since it would be the last one's.
#ifndef PELGRIN_PREPARE_MGFTITLES_H
#define PELGRIN_PREPARE_MGFTITLES_H

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace pelgrin {

/// A record that is to have a title.
struct TitledRecord {
    std::string title; ///< trimmed; empty when the record has none
    std::uint32_t scan = 0;
    std::uint32_t charge = 0; ///< 0 unknown
    /// The copy has it. A record that is left out keeps its names, also those that
    /// engines make of scan and charge, so that nobody else gets them.
    bool isWritten = true;
};

struct NewTitles {
    std::vector<std::string> titles; ///< of the records, in order
    /// Names that the file had and that are not the same record's any more -> the
    /// first word of its new title. Empty for a name that meets one record of the copy,
    /// and nobody can tell whether it was meant.
    std::unordered_map<std::string, std::string> renamed;
    std::vector<bool> isShared; ///< scan and charge are those of another record, too
};

/// stem is the name of the file without its ending.
NewTitles TitlesOf(const std::vector<TitledRecord>& records, const std::string& stem);

} // namespace pelgrin

#endif // PELGRIN_PREPARE_MGFTITLES_H
