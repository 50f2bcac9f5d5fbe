#include "pepident/MaxQuantSequence.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <tuple>
#include <utility>

#include "CStringProcess.h"
#include "pepident/PeptideIdentificationErrors.h"
#include "pepident/SpecifiedModifications.h"
#include "util/LetterCase.h"
#include "util/TabTable.h"

namespace Vorlan::maxquant {

namespace {

bool IsLetter(char c)
{
    return c >= 'A' && c <= 'Z';
}

bool Holds(std::string_view text, std::string_view part)
{
    return text.find(part) != std::string_view::npos;
}

/// The number in front of a name, with its blank.
std::size_t LengthOfCount(std::string_view name)
{
    const std::size_t end = name.find_first_not_of("0123456789");
    return end != std::string_view::npos && end > 0 && name[end] == ' ' ? end + 1 : 0;
}

/// The first two letters in lower case.
using Letters = std::pair<char, char>;

Letters FirstLetters(std::string_view text)
{
    const auto letter = [text](std::size_t i) {
        return i < text.size() ? ToLowerAscii(text[i]) : '\0';
    };
    return {letter(0), letter(1)};
}

bool StandsFor(std::string_view tag, std::string_view name)
{
    return tag == name || (tag.size() == 2 && FirstLetters(tag) == FirstLetters(name));
}

/// A name taken apart: "Phospho (STY)", "Acetyl (Protein N-term)".
struct Name {
    explicit Name(std::string_view text) : whole(text), bare(text)
    {
        const std::size_t open = text.rfind(" (");
        if (open != std::string_view::npos && text.back() == ')') {
            bare = text.substr(0, open);
            site = text.substr(open + 2, text.size() - open - 3);
        }
    }

    bool IsNTerm() const { return Holds(site, "N-term"); }
    bool IsCTerm() const { return Holds(site, "C-term"); }

    std::string_view whole;
    std::string_view bare;
    std::string_view site; ///< residue letters or a terminus
};

/// Where a tag stands.
struct TagPlace {
    std::size_t before = 0; ///< residues in front of it
    char residue = '\0';    ///< the last one of these
    bool isLast = false;    ///< no residue behind it
};

bool Fits(const Name& name, const TagPlace& place)
{
    if (name.IsNTerm()) {
        return place.before == 0;
    }
    if (name.IsCTerm()) {
        return place.isLast;
    }
    return place.before > 0 && name.site.find(place.residue) != std::string_view::npos;
}

/// The name of a list that a tag stands for; empty when there is none.
std::string_view NameIn(const std::vector<std::string>& names, std::string_view tag,
                        const TagPlace& place)
{
    std::string_view first;
    for (const std::string& name : names) {
        if (!StandsFor(tag, name)) {
            continue;
        }
        if (Fits(Name(name), place)) {
            return name;
        }
        if (first.empty()) {
            first = name;
        }
    }
    return first;
}

/// "Protein N-term" for such a site, "Any N-term" for "N-term", "Anywhere" for
/// residues.
std::string PositionOf(const Name& name)
{
    if (!name.IsNTerm() && !name.IsCTerm()) {
        return "Anywhere";
    }
    return std::string(Holds(name.site, "Protein") ? "Protein " : "Any ")
           + (name.IsNTerm() ? "N-term" : "C-term");
}

/// What a sequence is read with: its names and the specified modifications.
class Meanings {
public:
    Meanings(const std::vector<std::string>& names, const std::vector<IdentModification>& specified)
        : names_(names), specified_(specified)
    {
        for (const IdentModification& mod : specified) {
            specifiedNames_.push_back(NameWithSite(mod));
        }
    }

    /// The name that a tag stands for; empty when there is none. A row may repeat
    /// a tag thousands of times.
    std::string_view NameOf(std::string_view tag, const TagPlace& place)
    {
        const auto [answer, isNew] = answers_.try_emplace(
            std::make_tuple(tag, place.residue, place.before == 0, place.isLast));
        std::string_view& name = answer->second;
        if (isNew) {
            name = NameIn(names_, tag, place);
            if (name.empty()) {
                name = NameIn(specifiedNames_, tag, place);
            }
        }
        return name;
    }

    /// Da; 0 for a name that is not specified for this place.
    double MassOf(const Name& name, const TagPlace& place) const
    {
        for (std::size_t i = 0; i < specified_.size(); ++i) {
            const std::string& spelled = specifiedNames_[i];
            if (spelled == name.whole
                || (specified_[i].strName == name.bare && Fits(Name(spelled), place))) {
                return specified_[i].dMass;
            }
        }
        return 0.0;
    }

private:
    const std::vector<std::string>& names_;
    const std::vector<IdentModification>& specified_;
    std::vector<std::string> specifiedNames_;
    std::map<std::tuple<std::string_view, char, bool, bool>, std::string_view> answers_;
};

IdentModification Modification(const Name& name, const TagPlace& place, double mass)
{
    IdentModification mod;
    mod.strName = name.whole;
    mod.strPosition = PositionOf(name);
    mod.dMass = mass;
    mod.nPos = static_cast<std::int32_t>(place.before);
    if (name.IsNTerm()) {
        mod.strSite = "N-term";
        mod.nPos = 0;
    } else if (name.IsCTerm()) {
        mod.strSite = "C-term";
        ++mod.nPos;
    } else if (place.before > 0) {
        mod.strSite = place.residue;
    }
    return mod;
}

/// The place of the ")" that closes the "(" at open, else the end.
std::size_t ClosingOf(std::string_view text, std::size_t open)
{
    std::size_t depth = 0;
    for (std::size_t i = open; i < text.size(); ++i) {
        if (text[i] == '(') {
            ++depth;
        } else if (text[i] == ')' && --depth == 0) {
            return i;
        }
    }
    return text.size();
}

/// The residues outside of tags.
std::size_t CountResidues(std::string_view modifiedSequence)
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < modifiedSequence.size(); ++i) {
        if (modifiedSequence[i] == '(') {
            i = ClosingOf(modifiedSequence, i);
        } else if (IsLetter(modifiedSequence[i])) {
            ++count;
        }
    }
    return count;
}

} // namespace

std::vector<std::string> NamesIn(std::string_view modifications)
{
    std::vector<std::string> names;
    TabRow pieces;
    pieces.Split(modifications, ',');
    for (std::size_t i = 0; i < pieces.Size(); ++i) {
        std::string name(pieces.Cell(static_cast<int>(i)));
        CStringProcess::Trim(name);
        names.push_back(name.substr(LengthOfCount(name)));
    }
    return names;
}

std::vector<IdentModification> ModificationsIn(std::string_view modifiedSequence,
                                               const std::vector<std::string>& names,
                                               const std::vector<IdentModification>& specified)
{
    Meanings meanings(names, specified);
    const std::size_t length = CountResidues(modifiedSequence);
    std::vector<IdentModification> mods;
    TagPlace place;
    for (std::size_t i = 0; i < modifiedSequence.size(); ++i) {
        const char c = modifiedSequence[i];
        if (IsLetter(c)) {
            ++place.before;
            place.residue = c;
        } else if (c == '(') {
            const std::size_t end = ClosingOf(modifiedSequence, i);
            const std::string_view tag = modifiedSequence.substr(i + 1, end - i - 1);
            place.isLast = place.before == length;
            const Name name(meanings.NameOf(tag, place));
            if (name.whole.empty()) {
                errors::AbbreviationUnknown(std::string(tag));
            }
            mods.push_back(Modification(name, place, meanings.MassOf(name, place)));
            i = end;
        }
    }
    return mods;
}

} // namespace Vorlan::maxquant
