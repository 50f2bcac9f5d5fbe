#include "mods/Sites.h"

#include <cctype>

#include <fmt/format.h>

namespace pelgrin {

using Vorlan::CResidueModification;

const char* const kResidueLetters = "ACDEFGHIKLMNOPQRSTUVWY";

namespace {

constexpr const char kNTerm[] = "N-term";
constexpr const char kCTerm[] = "C-term";

bool IsTerminus(const std::string& origin)
{
    return origin == kNTerm || origin == kCTerm;
}

/// A rule "Anywhere" for a terminus means any terminus of that kind.
CResidueModification::TermSpecificity SpecificityOf(const SiteRule& rule)
{
    if (rule.specificity == CResidueModification::ANYWHERE && rule.origin == kNTerm) {
        return CResidueModification::N_TERM;
    }
    if (rule.specificity == CResidueModification::ANYWHERE && rule.origin == kCTerm) {
        return CResidueModification::C_TERM;
    }
    return rule.specificity;
}

std::string WhyNotResidue(const SiteRule& rule, const Site& site)
{
    if (!site.residue) {
        return fmt::format("sits on the residue {}, but --residue does not tell which one is here",
                           rule.origin);
    }
    return HasResidue(rule.origin, *site.residue)
               ? ""
               : fmt::format("wrong residue: sits on {}, not on {}", rule.origin, *site.residue);
}

std::string WhyNotProteinEnd(const char* end, const char* where, std::optional<char> neighbour)
{
    if (neighbour == '-') {
        return {};
    }
    return neighbour ? fmt::format("needs the protein {}, but the residue {} is {}", end, where,
                                   *neighbour)
                     : fmt::format("needs the protein {}, but --{} is not given", end, where);
}

} // namespace

bool HasResidue(const std::string& origin, char residue)
{
    return !IsTerminus(origin) && origin.find(residue) != std::string::npos;
}

std::string WhyNot(const SiteRule& rule, const Site& site)
{
    const auto specificity = SpecificityOf(rule);
    if (specificity == CResidueModification::ANYWHERE) {
        if (site.kind != Site::Kind::Residue && !site.residue) {
            return fmt::format("sits on the residue {}, not on a terminus", rule.origin);
        }
        return WhyNotResidue(rule, site);
    }
    const bool isN = specificity == CResidueModification::N_TERM
                     || specificity == CResidueModification::PROTEIN_N_TERM;
    const char* const end = isN ? "N-terminus" : "C-terminus";
    if (site.kind != (isN ? Site::Kind::NTerm : Site::Kind::CTerm)) {
        return fmt::format("wrong terminus: sits on the {} only", end);
    }
    if (!IsTerminus(rule.origin)) {
        std::string reason = WhyNotResidue(rule, site);
        if (!reason.empty()) {
            return reason;
        }
    }
    if (specificity == CResidueModification::PROTEIN_N_TERM) {
        return WhyNotProteinEnd(end, "before", site.before);
    }
    if (specificity == CResidueModification::PROTEIN_C_TERM) {
        return WhyNotProteinEnd(end, "after", site.after);
    }
    return {};
}

std::string TextOf(const Site& site)
{
    const std::string residue = site.residue ? fmt::format(" {}", *site.residue) : "";
    switch (site.kind) {
    case Site::Kind::NTerm: return "the N-terminus" + residue;
    case Site::Kind::CTerm: return "the C-terminus" + residue;
    case Site::Kind::Residue: break;
    }
    return "the residue" + residue;
}

std::optional<char> ResidueOf(std::string_view text)
{
    if (text.size() != 1) {
        return std::nullopt;
    }
    const auto letter = static_cast<char>(std::toupper(static_cast<unsigned char>(text.front())));
    if (std::string_view(kResidueLetters).find(letter) == std::string_view::npos) {
        return std::nullopt;
    }
    return letter;
}

} // namespace pelgrin
