#include "pepident/PFindModifications.h"

#include <cstddef>
#include <utility>

#include <OpenMS/CONCEPT/Exception.h>

#include "TulkParam.h"
#include "moddb/ModificationAccess.h"
#include "pepident/ReaderSteps.h"
#include "util/Numbers.h"

namespace Vorlan::pfind {

namespace {

/// Text in front of and behind the last "[", that and a closing "]" dropped.
std::pair<std::string_view, std::string_view> SplitAtSite(std::string_view text)
{
    const std::size_t bracket = text.rfind('[');
    if (bracket == std::string_view::npos) {
        return {text, {}};
    }
    std::string_view site = text.substr(bracket + 1);
    site = site.substr(0, site.find(']'));
    return {text.substr(0, bracket), site};
}

/// How a record tells the terminus that a site names, such as
/// "ProteinN-term" or "AnyC-termQ".
std::string PositionOf(std::string_view site)
{
    for (const char* const terminus : {"N-term", "C-term"}) {
        if (site.find(terminus) != std::string_view::npos) {
            const bool isProtein = site.find("Protein") != std::string_view::npos;
            return std::string(isProtein ? "Protein " : "Any ") + terminus;
        }
    }
    return "Anywhere";
}

/// The record under this name: the first one for the site, else the first one.
/// Null when the database has none, or is null.
const CResidueModification* FindRecord(const CModificationsDB* database, const std::string& name,
                                       const std::string& site)
{
    if (database == nullptr) {
        return nullptr;
    }
    const auto records = ModificationAccess::Named(*database, name);
    for (const CResidueModification* const record : records) {
        if (site.size() == 1 && record->getOrigin().find(site) != std::string::npos) {
            return record;
        }
    }
    return records.empty() ? nullptr : records.front();
}

} // namespace

IdentModification ParsePFind3(std::string_view entry)
{
    IdentModification mod;
    const std::size_t comma = entry.find(',');
    mod.nPos = numbers::ToInt(entry.substr(0, comma));
    std::string_view text =
        comma == std::string_view::npos ? std::string_view() : entry.substr(comma + 1);
    std::string_view part;
    const std::size_t inner = text.find("](");
    const bool hasPart =
        text.find("])") != std::string_view::npos && inner != std::string_view::npos;
    if (hasPart) {
        part = text.substr(inner + 2);
        part = SplitAtSite(part.substr(0, part.find("]("))).first;
        text = text.substr(0, inner);
    }
    const auto [name, site] = SplitAtSite(text);
    mod.strName = name;
    if (hasPart) {
        mod.strName.append("(").append(part).append(")");
    }
    mod.strSite = site;
    mod.strPosition = PositionOf(site);
    return mod;
}

IdentModification ParsePFind28(std::string_view name, std::int32_t position)
{
    IdentModification mod;
    mod.strName = WithAnyTerm(name);
    mod.nPos = position;
    const std::size_t open = mod.strName.rfind(" (");
    if (open != std::string::npos && mod.strName.back() == ')') {
        mod.strSite = mod.strName.substr(open + 2, mod.strName.size() - open - 3);
        mod.strPosition = PositionOf(mod.strSite);
    }
    return mod;
}

double MassesByName::Of(const std::string& name, const std::string& site)
{
    const auto question = std::make_pair(name, site);
    const auto known = known_.find(question);
    if (known != known_.end()) {
        return known->second;
    }
    const CResidueModification* record = FindRecord(Engine(), name, site);
    if (record == nullptr) {
        record = FindRecord(Default(), name, site);
    }
    return known_[question] = record == nullptr ? 0.0 : record->getDiffMonoMass();
}

const CModificationsDB* MassesByName::Engine()
{
    if (!std::exchange(engine_.isOpen, true)) {
        const CSearchParam* const search = CTulkParam::getInstance()->getSearchParam();
        if (search != nullptr && !search->strModificationDatabase.empty()) {
            engine_.database = CModificationsDBEngine::getInstance(search->strModificationDatabase,
                                                                   search->eSearchEngine);
        }
    }
    return engine_.database;
}

const CModificationsDB* MassesByName::Default()
{
    if (!std::exchange(default_.isOpen, true)) {
        try {
            default_.database = CModificationsDBCalvexDefault::getInstance();
        } catch (const OpenMS::Exception::FileNotReadable&) {
            // There is none in the working folder.
        }
    }
    return default_.database;
}

} // namespace Vorlan::pfind
