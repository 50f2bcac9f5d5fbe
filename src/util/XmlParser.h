// Turning a text into the nodes of a tree.
//
// What a document means is told by the careful way: an element ends at the
// first closing tag, from its own tag on, that begins with its name; then what
// stands between is parsed in the same manner. Done as it is told, that reads
// every character once for each element around it.
//
// The quick way, XmlScanner, reads a usual document once, with a stack of open
// elements, and gives up, leaving nothing behind, as soon as it sees something
// that the careful way might understand differently. The careful way then makes
// the tree, or the error; XmlClosingTags keeps it from reading too much.
//
// Held by tests/util/XmlTwin_test.cpp, which compares trees and messages with a
// plain recursive twin on random, malformed and hostile texts.
#ifndef VORLAN_UTIL_XMLPARSER_H
#define VORLAN_UTIL_XMLPARSER_H

#include <cstddef>
#include <memory>

#include "XmlDocument.h"

namespace Vorlan {

/// Parses text[0, size) and appends the nodes to the children of element.
/// guard is the character behind the text; messages quote it. Throws
/// CXmlException.
void ParseXmlContent(CXmlElement& element, std::unique_ptr<char[]> text, std::size_t size,
                     const char& guard);

} // namespace Vorlan

#endif // VORLAN_UTIL_XMLPARSER_H
