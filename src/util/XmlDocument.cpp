// Whole documents: reading and writing files.
#include "XmlDocument.h"

#include <fstream>
#include <utility>

#include "platform/OutputFile.h"
#include "util/WholeFile.h"
#include "util/XmlAccess.h"
#include "util/XmlParser.h"

namespace Vorlan {

CXmlDocument::CXmlDocument() : CXmlElement(XML_DOCUMENT, nullptr) {}

CXmlDocument::~CXmlDocument() = default;

void CXmlDocument::ParseFile(std::string path)
{
    WholeFile file;
    if (!file.Read(path)) {
        throw CXmlException("Can not open file!");
    }
    Clear();
    constexpr char kGuard = '\n';
    ParseXmlContent(*this, std::move(file.text), file.size, kGuard);
}

void CXmlDocument::SaveFile(std::string path) const
{
    const std::string xml = strToXml(); // which may throw: the file stays then
    std::ofstream file;
    platform::OpenOutput(file, path);
    file.write(xml.data(), static_cast<std::streamsize>(xml.size()));
    file.close();
    if (!file) {
        throw CXmlException("Can not write to file!");
    }
}

CXmlElement& CXmlDocument::cRoot() const
{
    for (CXmlNode* node : cNodes()) {
        if (CXmlElement* const element = XmlAccess::ElementOf(node)) {
            return *element;
        }
    }
    throw CXmlException("Can not find root element!");
}

} // namespace Vorlan
