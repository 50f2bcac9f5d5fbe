#include "run/SpectrumName.h"

namespace pelgrin {

namespace {

struct KindTexts {
    const char* key;
    const char* text;
};

/// Of the kinds that are no NameKind.
constexpr KindTexts kTexts[kMeetKinds - kNameKinds] = {
    {"scan_in_title", "the scan number in the title or file name"},
    {"composed", "a title made of run, scan and charge"},
    {"without_charge", "the dotted name without its charge"},
    {"dta_name", "the name of the DTA file"},
};

static_assert(static_cast<std::size_t>(MeetKind::Title) == static_cast<std::size_t>(NameKind::Title)
              && static_cast<std::size_t>(MeetKind::Scan)
                     == static_cast<std::size_t>(NameKind::Scan)
              && static_cast<std::size_t>(MeetKind::ScanInTitle) == kNameKinds);

} // namespace

const char* KeyOf(MeetKind kind)
{
    const auto index = static_cast<std::size_t>(kind);
    return index < kNameKinds ? KeyOf(static_cast<NameKind>(index))
                              : kTexts[index - kNameKinds].key;
}

const char* TextOf(MeetKind kind)
{
    const auto index = static_cast<std::size_t>(kind);
    return index < kNameKinds ? TextOf(static_cast<NameKind>(index))
                              : kTexts[index - kNameKinds].text;
}

MeetKind MeetKindOf(NameKind kind)
{
    return static_cast<MeetKind>(kind);
}

} // namespace pelgrin
