#include "pepident/MsgfModifications.h"

#include <array>
#include <cmath>
#include <utility>

#include "CStringProcess.h"
#include "pepident/ElementMasses.h"
#include "pepident/PeptideIdentificationErrors.h"
#include "util/LetterCase.h"
#include "util/LineReader.h"
#include "util/Numbers.h"
#include "util/TabTable.h"

namespace Vorlan {

namespace {

constexpr std::size_t kFields = 5;

/// The place of a modification in the list, and how a record tells it.
struct ListPlace {
    const char* inList; ///< in lower case, without "-"
    const char* position;
    const char* site; ///< of a modification of any residue
};

constexpr ListPlace kPlaces[] = {
    {"any", "Anywhere", "*"},
    {"nterm", "Any N-term", "N-term"},
    {"cterm", "Any C-term", "C-term"},
    {"protnterm", "Protein N-term", "N-term"},
    {"protcterm", "Protein C-term", "C-term"},
};

const ListPlace& PlaceNamed(const std::string& text)
{
    std::string name = LowerAscii(text);
    CStringProcess::replace_all(name, "-", "");
    for (const ListPlace& place : kPlaces) {
        if (name == place.inList) {
            return place;
        }
    }
    return kPlaces[0];
}

std::string Trimmed(std::string_view text)
{
    const char* begin = text.data();
    const char* end = begin + text.size();
    CStringProcess::Trim(begin, end);
    return {begin, end};
}

double MassOf(const std::string& field)
{
    return IsComposition(field) ? CompositionMass(field) : numbers::ToDouble(field);
}

void AppendLine(std::string_view line, std::vector<IdentModification>& mods)
{
    TabRow row;
    row.Split(line, ',');
    if (row.Size() < kFields) {
        return;
    }
    std::array<std::string, kFields> fields;
    for (std::size_t i = 0; i < kFields; ++i) {
        fields[i] = Trimmed(row.Cell(static_cast<int>(i)));
    }
    if (LowerAscii(fields[2]) == "custom") {
        return;
    }
    const double mass = MassOf(fields[0]);
    const ListPlace& place = PlaceNamed(fields[3]);
    for (const char residue : fields[1]) {
        const std::string site = residue == '*' ? place.site : std::string(1, residue);
        mods.emplace_back(fields[4], mass, site, place.position, 0);
    }
}

/// More than half of the last decimal of the text.
double ToleranceOf(std::string_view massText)
{
    const std::size_t dot = massText.find('.');
    const std::size_t decimals = dot == std::string_view::npos ? 0 : massText.size() - dot - 1;
    // Not std::pow: the library needs nothing else of libm, and each library that it
    // needs makes every program that links it start later.
    return 0.51 * numbers::ToDouble("1e-" + std::to_string(decimals));
}

bool FitsResidue(const IdentModification& mod, char residue)
{
    const bool isTerminus = mod.strSite == "N-term" || mod.strSite == "C-term";
    return mod.strSite == "*" || (!isTerminus && mod.strSite.find(residue) != std::string::npos);
}

bool Fits(const IdentModification& mod, const MsgfModifications::Place& place)
{
    if (mod.strPosition.find("N-term") != std::string::npos) {
        return place.before == 0 && (mod.strSite == "N-term" || FitsResidue(mod, place.next));
    }
    if (mod.strPosition.find("C-term") != std::string::npos) {
        return place.next == '\0' && (mod.strSite == "C-term" || FitsResidue(mod, place.residue));
    }
    return place.before > 0 && FitsResidue(mod, place.residue);
}

} // namespace

MsgfModifications MsgfModifications::FromList(const std::string& path, const char* label)
{
    LineReader lines;
    if (!lines.Open(path, LineReader::Mode::Text)) {
        errors::NotReadable(label, path);
    }
    std::vector<IdentModification> mods;
    std::string_view line;
    while (lines.Next(line)) {
        line = line.substr(0, line.find('#'));
        if (line.find('=') == std::string_view::npos) {
            AppendLine(line, mods);
        }
    }
    return MsgfModifications(std::move(mods));
}

MsgfModifications::MsgfModifications(std::vector<IdentModification> mods) : mods_(std::move(mods))
{
}

const IdentModification* MsgfModifications::Find(std::string_view massText,
                                                 const Place& place) const
{
    const double mass = numbers::ToDouble(massText);
    const double tolerance = ToleranceOf(massText);
    const IdentModification* first = nullptr;
    for (const IdentModification& mod : mods_) {
        if (!(std::abs(mod.dMass - mass) <= tolerance)) {
            continue;
        }
        if (Fits(mod, place)) {
            return &mod;
        }
        if (first == nullptr) {
            first = &mod;
        }
    }
    return first;
}

} // namespace Vorlan
