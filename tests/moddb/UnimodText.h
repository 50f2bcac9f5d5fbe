// Unimod files as small texts, and a Unimod database that is no singleton.
#ifndef VORLAN_TESTS_UNIMODTEXT_H
#define VORLAN_TESTS_UNIMODTEXT_H

#include <string>

#include "moddb/ModificationText.h"

namespace Vorlan::test {

/// A database of its own; the constructors of the class are for its instance.
class UnimodProbe : public CModificationsDBUnimod {
public:
    explicit UnimodProbe(const std::string& path) : CModificationsDBUnimod(path) {}
};

/// <name attributes>content</name>
inline std::string Tag(const std::string& name, const std::string& attributes,
                       const std::string& content = "")
{
    return "<umod:" + name + " " + attributes + ">" + content + "</umod:" + name + ">\n";
}

inline std::string Site(const std::string& site, const std::string& position = "Anywhere",
                        const std::string& losses = "")
{
    return Tag("specificity",
               "hidden=\"0\" site=\"" + site + "\" position=\"" + position
                   + "\" classification=\"Artefact\" spec_group=\"1\"",
               losses);
}

inline std::string Loss(const std::string& mono, const std::string& average)
{
    return "<umod:NeutralLoss mono_mass=\"" + mono + "\" avge_mass=\"" + average + "\"/>\n";
}

inline const std::string kOxidationDelta =
    "<umod:delta mono_mass=\"15.994915\" avge_mass=\"15.9994\" composition=\"O\"/>\n";

inline std::string Mod(const std::string& title, const std::string& content,
                       const std::string& fullName = "full")
{
    return Tag("mod", "title=\"" + title + "\" full_name=\"" + fullName + "\" record_id=\"35\"",
               content);
}

inline std::string UnimodText(const std::string& mods)
{
    return "<?xml version=\"1.0\"?>\n<umod:unimod>\n" + Tag("elements", "n=\"1\"")
           + "<umod:modifications>\n" + mods + "</umod:modifications>\n</umod:unimod>\n";
}

} // namespace Vorlan::test

#endif // VORLAN_TESTS_UNIMODTEXT_H
