// The names under which the title of an MGF record enters the index.
#ifndef VORLAN_SPECTRA_TITLENAMES_H
#define VORLAN_SPECTRA_TITLENAMES_H

#include <optional>
#include <string>
#include <string_view>

namespace Vorlan {

/// The up to four names of one record. All but the dotted one are views into
/// the title line.
struct TitleNames {
    std::string_view title;               ///< trimmed, without "TITLE="
    std::optional<std::string_view> scan; ///< what follows "scan=", less its last character
    std::optional<std::string_view> word; ///< the title up to its first blank
    std::string dotted;                   ///< "run.01405.01405.2"; empty: none
};

/// Finds the names in a title line (one that begins with 'T').
///
/// - title: the line trimmed, without its first six characters; empty for a
///   shorter line.
/// - scan: the text behind the first "scan=" without the last character of
///   the title (B-13); none where nothing is left to drop.
/// - word: the title up to its first blank; none without a blank.
/// - dotted: the first word split at "."; with n pieces, n at least 2:
///   piece 0, then pieces 1 to n - 4, then piece n - 2 as a number of at least
///   five digits twice, then the last piece, all joined by ".".
///
/// names is filled anew; its views are good as long as line is.
void FindTitleNames(std::string_view line, TitleNames& names);

} // namespace Vorlan

#endif // VORLAN_SPECTRA_TITLENAMES_H
