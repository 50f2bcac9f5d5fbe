// Steps that the identification readers share.
#ifndef VORLAN_PEPIDENT_READERSTEPS_H
#define VORLAN_PEPIDENT_READERSTEPS_H

#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>

#include "DataStructures.h"

namespace Vorlan {

/// Folder without its trailing backslashes, one backslash, file name.
OpenMS::String ResultPathOf(const PepIdentSource& source);

/// The same for the second file of a source.
OpenMS::String SecondPathOf(const PepIdentSource& source);

/// The line feeds of a file less one, modulo 2^64. Throws NotReadable with
/// label and path when the file cannot be opened.
std::uint64_t CountResultRows(const std::string& path, const char* label);

/// Closes output; it fails when that fails.
void CloseOutput(std::ofstream& output);

/// The first character of a cell, or otherwise for an empty one.
inline char FirstOr(std::string_view text, char otherwise)
{
    return text.empty() ? otherwise : text.front();
}

/// Numbers as OpenMS' toInt and toDouble read them, to the last bit; they throw
/// ConversionError. Plain ones take a quick path; anything else goes to OpenMS itself.
std::int32_t IntOf(std::string_view cell);
double DoubleOf(std::string_view cell);

/// name in the spelling of the modification databases: the first " (N-term"
/// becomes " (Any N-term", the first " (C-term" becomes " (Any C-term".
std::string WithAnyTerm(std::string_view name);

/// The m/z, Th, of a precursor with this singly protonated mass, Da; 0 for a
/// charge that is not positive.
double MzOf(double mh, std::int32_t charge);

/// The singly protonated mass, Da, of a precursor with this m/z, Th; 0 for a
/// charge that is not positive.
double MhOf(double mz, std::int32_t charge);

} // namespace Vorlan

#endif // VORLAN_PEPIDENT_READERSTEPS_H
