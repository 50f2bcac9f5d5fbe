// Records as a native table that takes its place when it is whole.
#ifndef PELGRIN_NATIVETABLE_H
#define PELGRIN_NATIVETABLE_H

#include <string>
#include <vector>

#include "files/NewFile.h"
#include "run/Parameters.h"

namespace pelgrin {

/// Throws Failure unless path can be written and is no input. option is what the
/// user knows it as: "--out".
void CheckNewFile(const Parameters& parameters, const std::string& path, const std::string& option);

/// Lets the library write all records. Throws Failure when it cannot.
void WriteNativeTable(const std::vector<Vorlan::PeptideIdentification>& records,
                      const NewFile& table, const std::string& path);

/// Lines of a report: how many records bear something that the table has no
/// place for.
struct NotHeldText {
    std::string text;
    bool hasLosses = false; ///< some of it belongs into the table
};

NotHeldText NotHeldBy(const std::vector<Vorlan::PeptideIdentification>& records);

} // namespace pelgrin

#endif // PELGRIN_NATIVETABLE_H
