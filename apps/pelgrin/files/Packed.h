// Files that are packed: gzip, bzip2, xz and zstd.
#ifndef PELGRIN_PACKED_H
#define PELGRIN_PACKED_H

#include <string>

#include "files/ScratchFolder.h"

namespace pelgrin {

enum class Packing { None, Gzip, Bzip2, Xz, Zstd };

/// "gz" and so on; empty for None.
const char* TextOf(Packing packing);

/// By the first bytes of the file. Throws Failure when it cannot be read.
Packing PackingOf(const std::string& path);

/// Throws Failure for a file that is packed. A folder is none.
void RefusePacked(const std::string& path);

/// "run.mgf" for "dir/run.mgf.gz": the file name without the ending of a packing.
std::string NameWithoutPacking(const std::string& path);

/// Writes what is packed in path to target, in memory of fixed size. Throws
/// Failure, with path, for data that is damaged or cut off, and for a target that
/// cannot be written to its end.
void Unpack(const std::string& path, const std::string& target);

/// The path of the file without its packing: path itself, or a file of its name in
/// scratch. Throws as Unpack.
std::string Unpacked(const std::string& path, ScratchFolder& scratch);

/// text, with the path that the user gave in place of that of the unpacked file.
std::string WithGivenPath(std::string text, const std::string& unpacked, const std::string& given);

} // namespace pelgrin

#endif // PELGRIN_PACKED_H
