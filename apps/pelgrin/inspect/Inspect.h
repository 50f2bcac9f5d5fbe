// What a file is, how it is written, what stands in it, and what is read of it.
#ifndef PELGRIN_INSPECT_H
#define PELGRIN_INSPECT_H

#include <string>

#include "inspect/Facts.h"

namespace pelgrin {

/// Of a file, which may be packed, or a folder of DTA files. Throws Failure when it
/// cannot be read, or unpacked, to its end, and for a folder without DTA files.
Facts Inspect(const std::string& path);

} // namespace pelgrin

#endif // PELGRIN_INSPECT_H
