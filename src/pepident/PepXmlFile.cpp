#include "pepident/PepXmlFile.h"

#include "TulkParam.h"
#include "XmlDocument.h"
#include "pepident/SpecifiedModifications.h"
#include "util/Console.h"
#include "util/XmlReading.h"

namespace Vorlan {

namespace {

/// The ending of the spectra files, by the parameters of the run.
std::string EndingOfDatasets()
{
    const CSearchParam* const search = CTulkParam::getInstance()->getSearchParam();
    return DatasetType::typeToName(search == nullptr ? DatasetType::Unknown
                                                     : search->eDatasetFormat);
}

} // namespace

void LoadPepXml(const std::string& path, PepXmlScore score,
                std::vector<PeptideIdentification>& vMatches)
{
    PepXmlMatches matches(score, EndingOfDatasets(), SpecifiedModifications());
    try {
        ReadXmlFile(path, matches);
        if (!matches.HasRoot()) {
            CXmlDocument().cRoot(); // throws as that of a document without elements
        }
    } catch (const CXmlException& error) {
        // Deliberate: B-68
        console::Print(console::Stream::Out, std::string(error.szWhat()) + "\n");
        return;
    }
    matches.MoveTo(vMatches);
}

} // namespace Vorlan
