// What a document holds, as a list of texts that tests compare.
#ifndef VORLAN_TESTS_XMLSCANNEREVENTS_H
#define VORLAN_TESTS_XMLSCANNEREVENTS_H

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "support/XmlTwin.h"

namespace Vorlan::test {

using XmlEvents = std::vector<std::string>;

/// The attributes in the order of their names.
inline std::string BeginEvent(std::string_view name, const std::map<std::string, std::string>& all)
{
    std::string event = "begin " + std::string(name);
    for (const auto& [attribute, value] : all) {
        event += " " + attribute + "=\"" + value + "\"";
    }
    return event;
}

inline std::string BeginEvent(std::string_view name, std::string_view attributes)
{
    std::map<std::string, std::string> all;
    TwinParseAttributes(std::string(attributes), all);
    return BeginEvent(name, all);
}

/// The events of the tree below a node. Other markup is told on request.
inline void AddEvents(const TwinNode& node, bool withMarkup, XmlEvents& events)
{
    for (const TwinNode& child : node.children) {
        if (child.type == XML_ELEMENT) {
            events.push_back(BeginEvent(child.value, child.attributes));
            AddEvents(child, withMarkup, events);
            events.emplace_back("end");
        } else if (withMarkup) {
            events.push_back("markup " + child.value);
        }
    }
}

/// The plain twin's events; failure is its message, empty without one.
struct TwinEvents {
    TwinEvents(const std::string& text, bool withMarkup)
    {
        TwinNode top;
        failure = TwinParse(text, '\n', top).c_str(); // it ends at a NUL
        AddEvents(top, withMarkup, events);
    }

    XmlEvents events;
    std::string failure;
};

} // namespace Vorlan::test

#endif // VORLAN_TESTS_XMLSCANNEREVENTS_H
