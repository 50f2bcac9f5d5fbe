// Static text helpers that every line-oriented reader of the library shares.
//
// Contents
//   1. Blanks        bIsNoUse, Trim
//   2. Fields        split, GetAttributesFromFirstRow
//   3. Replacement   replace_all
//
// All members work on byte strings, keep no state and throw nothing but
// std::bad_alloc. Nothing here depends on a locale.
#ifndef VORLAN_CSTRINGPROCESS_H
#define VORLAN_CSTRINGPROCESS_H

#include <map>
#include <string>
#include <vector>

#include "VorlanExport.h"

namespace Vorlan {

/// The text helpers; there are no objects of this class to make.
class VORLAN_API CStringProcess {
public:
    // ---- 1. Blanks ------------------------------------------------------

    /// True for exactly four characters: horizontal tab (9), line feed (10),
    /// carriage return (13) and blank (32). Vertical tab, form feed and bytes
    /// above 127 are ordinary characters.
    static bool bIsNoUse(char c);

    /// Narrows the half-open range [pBegin, pEnd) by the no-use characters at
    /// both of its ends. A range of nothing else ends empty (pBegin == pEnd).
    static void Trim(const char*& pBegin, const char*& pEnd);

    /// Removes the no-use characters at both ends of s, in place.
    /// A non-empty text of nothing but no-use characters keeps its last one
    /// (B-01): three blanks become one blank. The length counts as a signed
    /// 32-bit number: a text for which that is not above zero (2 to 4 GiB, 6 to
    /// 8 GiB and so on) stays as it is, and of one between these only so many
    /// characters are kept.
    static void Trim(std::string& s);

    // ---- 2. Fields ------------------------------------------------------

    /// Splits s at every whole occurrence of sep (a text, not a set).
    /// - An empty s has no field.
    /// - One line feed at the end of s is dropped first; a carriage return
    ///   before it stays.
    /// - Empty fields count, the last one included: "a,b," gives a, b and "".
    /// - An empty sep makes every character a field of its own.
    static std::vector<std::string> split(const std::string& s, const std::string& sep);

    /// Enters the fields of a header row, between sep, into columns: text -> column
    /// number, counted from 0. Texts are not trimmed. The first of two equal
    /// texts wins. Other entries of columns stay.
    static void GetAttributesFromFirstRow(const std::string& row,
                                          std::map<std::string, int>& columns,
                                          const std::string& sep);

    // ---- 3. Replacement -------------------------------------------------

    /// Replaces every occurrence of from in s, left to right; the search is
    /// that of std::string::find, and nothing is moved twice. Inserted text is
    /// never searched again. An empty from leaves s unchanged.
    static void replace_all(std::string& s, const std::string& from, const std::string& to);
};

} // namespace Vorlan

#endif // VORLAN_CSTRINGPROCESS_H
