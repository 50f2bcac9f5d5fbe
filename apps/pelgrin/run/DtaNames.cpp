#include "run/DtaNames.h"

#include <string_view>

#include "common/Words.h"
#include "run/DottedName.h"

namespace pelgrin {

namespace {

/// name without ".dta", in any letter case, at its end.
std::string_view StemOf(std::string_view name)
{
    constexpr std::string_view kEnding = ".dta";
    const bool has =
        name.size() > kEnding.size() && Lower(name.substr(name.size() - kEnding.size())) == kEnding;
    return has ? name.substr(0, name.size() - kEnding.size()) : name;
}

} // namespace

DtaNames::DtaNames(const std::vector<std::string>& fileNames)
{
    const auto add = [](Unique& names, std::string key, const std::string& name) {
        const auto [entry, isNew] = names.emplace(std::move(key), name);
        if (!isNew) {
            entry->second.clear();
        }
    };
    for (const std::string& name : fileNames) {
        if (name.find('\\') != std::string::npos) {
            continue; // the library would take it for a separator
        }
        names_.insert(name);
        const std::string_view stem = StemOf(name);
        add(stems_, std::string(stem), name);
        if (const auto dotted = ParseDottedName(stem)) {
            add(dotted_, dotted->Key(), name);
            add(scans_, dotted->firstScan + (dotted->charge.empty() ? "" : "." + dotted->charge),
                name);
        }
    }
}

std::optional<SpectrumName> DtaNames::Find(const std::string& name, std::uint64_t charge) const
{
    if (names_.count(name) > 0) {
        return SpectrumName{name, MeetKind::DtaName, false};
    }
    const auto nameIn = [&name](const Unique& names, const std::string& key, MeetKind kind) {
        const auto hit = names.find(key);
        const bool isAmbiguous = hit != names.end() && hit->second.empty();
        return hit == names.end() ? std::nullopt
                                  : std::optional(SpectrumName{isAmbiguous ? name : hit->second,
                                                               kind, isAmbiguous});
    };
    const std::string stem(StemOf(name));
    auto found = nameIn(stems_, stem, MeetKind::DtaName);
    if (const auto dotted = ParseDottedName(stem); !found && dotted) {
        found = nameIn(dotted_, dotted->Key(), MeetKind::DtaName);
    }
    if (!found && IsScanNumber(name)) {
        const std::string scan = WithoutZeros(name);
        found = nameIn(scans_, scan + "." + std::to_string(charge), MeetKind::ScanInTitle);
        found = found ? found : nameIn(scans_, scan, MeetKind::ScanInTitle);
    }
    return found;
}

} // namespace pelgrin
