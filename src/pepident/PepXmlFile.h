// The pepXML file of a search engine.
#ifndef VORLAN_PEPIDENT_PEPXMLFILE_H
#define VORLAN_PEPIDENT_PEPXMLFILE_H

#include <string>
#include <vector>

#include "DataStructures.h"
#include "pepident/PepXmlMatches.h"

namespace Vorlan {

/// Appends the matches of the file. A file that is not there, is not well-formed
/// or has no element gives none and prints the text of its CXmlException with a
/// line end on standard output. Throws what PepXmlMatches::MoveTo throws.
void LoadPepXml(const std::string& path, PepXmlScore score,
                std::vector<PeptideIdentification>& vMatches);

} // namespace Vorlan

#endif // VORLAN_PEPIDENT_PEPXMLFILE_H
