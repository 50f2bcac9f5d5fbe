// An input as plain text: unpacked, in UTF-8, with line feeds.
#ifndef PELGRIN_PLAINTEXT_H
#define PELGRIN_PLAINTEXT_H

#include <string>

#include "files/ScratchFolder.h"
#include "prepare/Copy.h"

namespace pelgrin {

/// The path of a file that holds what path holds as UTF-8 with line feeds, save
/// for a mark at its start and carriage returns before line feeds, which
/// FileLines drops: path itself when that is so already, else a new file in
/// scratch. UTF-16 is known by its mark; what is no UTF-8 is taken for Latin-1. A
/// carriage return alone ends a line in a file without line feeds only. Counts
/// in copy. Throws Failure when the file cannot be read, is damaged or no text.
std::string PlainTextOf(const std::string& path, ScratchFolder& scratch, Copy& copy);

/// Removes the plain text of path when it is a file of its own.
void RemovePlain(const std::string& plain, const std::string& path);

} // namespace pelgrin

#endif // PELGRIN_PLAINTEXT_H
