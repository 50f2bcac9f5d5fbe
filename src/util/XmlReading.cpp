#include "util/XmlReading.h"

#include <cstddef>
#include <vector>

#include "XmlDocument.h"
#include "util/TextWindow.h"
#include "util/XmlAccess.h"
#include "util/XmlScanner.h"

namespace Vorlan {

namespace {

/// Passes on what the scanner tells.
class Teller {
public:
    explicit Teller(XmlListener& listener) : listener_(listener) {}

    void Begin(std::string_view name, const char* attributes, const char* attributesEnd)
    {
        listener_.Begin(name, xml::View(attributes, attributesEnd));
    }
    void End() { listener_.End(); }
    void Unknown(std::string_view) {}

private:
    XmlListener& listener_;
};

/// False when the careful way is needed; something may have been told then.
bool ReadQuickly(const std::string& path, XmlListener& listener)
{
    TextWindow window;
    if (!window.Open(path)) {
        return false;
    }
    Teller teller(listener);
    XmlScanner<Teller> scanner(teller);
    std::size_t used = 0;
    while (window.More(used)) {
        const char* const rest = scanner.Read(window.Begin(), window.End(), window.IsLast());
        if (rest == nullptr) {
            return false;
        }
        used = static_cast<std::size_t>(rest - window.Begin());
    }
    return true;
}

void TellTree(const CXmlElement& top, XmlListener& listener)
{
    struct Open {
        const CXmlElement* element;
        std::size_t next; ///< child to be told
    };
    std::vector<Open> open{{&top, 0}};
    for (;;) {
        Open& innermost = open.back();
        const auto& nodes = innermost.element->cNodes();
        if (innermost.next < nodes.size()) {
            CXmlNode* const node = nodes[innermost.next++];
            if (const CXmlElement* const element = XmlAccess::ElementOf(node)) {
                listener.Begin(element->strValue(), XmlAccess::AttributeText(*element));
                open.push_back({element, 0});
            }
        } else if (open.size() > 1) {
            listener.End();
            open.pop_back();
        } else {
            return;
        }
    }
}

} // namespace

void ReadXmlFile(const std::string& path, XmlListener& listener)
{
    if (ReadQuickly(path, listener)) {
        return;
    }
    CXmlDocument document;
    document.ParseFile(path);
    listener.Restart();
    TellTree(document, listener);
}

} // namespace Vorlan
