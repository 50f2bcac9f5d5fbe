#include "param/ModificationEntry.h"

#include <string_view>

#include "CStringProcess.h"
#include "util/LetterCase.h"

namespace Vorlan {

namespace {

struct Phrase {
    std::string_view text; ///< upper case
    CResidueModification::TermSpecificity specificity;
    const char* site;
};

constexpr Phrase kPhrases[] = {
    {"PROTEIN N-TERM", CResidueModification::PROTEIN_N_TERM, "N-term"},
    {"PROTEIN C-TERM", CResidueModification::PROTEIN_C_TERM, "C-term"},
    {"ANY N-TERM", CResidueModification::N_TERM, "N-term"},
    {"ANY C-TERM", CResidueModification::C_TERM, "C-term"},
};

bool IsResidueAfterBlank(std::string_view text)
{
    return text.size() == 2 && text[0] == ' ' && text[1] >= 'A' && text[1] <= 'Z';
}

/// Fills site and specificity from the text between the parentheses.
void Classify(const std::string& text, ModificationEntry& entry)
{
    const std::string upper = UpperAscii(text);
    entry.site = text;
    for (const Phrase& phrase : kPhrases) {
        if (std::string_view(upper).substr(0, phrase.text.size()) != phrase.text) {
            continue;
        }
        const std::string_view rest = std::string_view(upper).substr(phrase.text.size());
        if (rest.empty() || IsResidueAfterBlank(rest)) {
            entry.site = rest.empty() ? phrase.site : std::string(rest.substr(1));
            entry.specificity = phrase.specificity;
        }
    }
}

} // namespace

std::optional<ModificationEntry> ParseModificationEntry(const std::string& text)
{
    const std::size_t open = text.rfind('(');
    if (open == std::string::npos) {
        return std::nullopt;
    }
    ModificationEntry entry;
    entry.name = text.substr(0, open);
    CStringProcess::Trim(entry.name);
    std::string rest = text.substr(open + 1);
    CStringProcess::Trim(rest);
    const std::vector<std::string> pieces = CStringProcess::split(rest, ")");
    if (pieces.size() != 2 || pieces[0].empty() || !pieces[1].empty()) {
        return std::nullopt;
    }
    Classify(pieces[0], entry);
    return entry;
}

} // namespace Vorlan
