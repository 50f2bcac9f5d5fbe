// The name under which a record meets its spectrum, and by which kind of name.
#ifndef PELGRIN_SPECTRUMNAME_H
#define PELGRIN_SPECTRUMNAME_H

#include <cstddef>
#include <string>

#include "files/MgfNames.h"

namespace pelgrin {

enum class MeetKind : std::size_t {
    // The record bears a name of the spectrum in an MGF file (NameKind).
    Title,
    FirstWord,
    Dotted,
    Scan,
    // It bears something else, of which the host makes a title.
    ScanInTitle,   ///< a scan number, which a title or a DTA file's name holds
    Composed,      ///< a scan number, which stands in a title with run and charge
    WithoutCharge, ///< a dotted name, and the title tells no charge
    DtaName,       ///< it bears the name of a DTA file
};
constexpr std::size_t kMeetKinds = 8;

/// The key in JSON, such as "first_word".
const char* KeyOf(MeetKind kind);
/// The words of a report, such as "the first word of the title".
const char* TextOf(MeetKind kind);
MeetKind MeetKindOf(NameKind kind);

/// The name of a spectrum in its dataset.
struct SpectrumName {
    std::string name;
    MeetKind kind = MeetKind::Title;
    /// Several spectra have that name: it is not known which one is meant.
    bool isAmbiguous = false;

    /// Found by the scan number in it.
    bool IsByScan() const { return kind == MeetKind::ScanInTitle || kind == MeetKind::Composed; }
};

} // namespace pelgrin

#endif // PELGRIN_SPECTRUMNAME_H
