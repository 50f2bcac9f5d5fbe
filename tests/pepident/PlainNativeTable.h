// The slow twin of the native table's reader and writer: std::getline,
// OpenMS::String and streams, as plainly as the format is told.
#ifndef VORLAN_TESTS_PLAINNATIVETABLE_H
#define VORLAN_TESTS_PLAINNATIVETABLE_H

#include <string>
#include <vector>

#include "DataStructures.h"

namespace Vorlan::test {

/// The matches of a well-formed text with at least one line.
std::vector<PeptideIdentification> PlainNativeMatches(const std::string& text);

std::string PlainNativeText(const std::vector<PeptideIdentification>& matches);

} // namespace Vorlan::test

#endif // VORLAN_TESTS_PLAINNATIVETABLE_H
