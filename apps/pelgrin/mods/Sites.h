// Where a modification may sit: pure, without files.
#ifndef PELGRIN_SITES_H
#define PELGRIN_SITES_H

#include <optional>
#include <string>
#include <string_view>

#include "ModificationDB.h"

namespace pelgrin {

/// A place of a peptide that bears a mass shift.
struct Site {
    enum class Kind { Residue, NTerm, CTerm };
    Kind kind = Kind::Residue;
    /// The residue; for a terminus the first or last one, whose side chain then
    /// belongs to the place. None: not known.
    std::optional<char> residue;
    std::optional<char> before; ///< the residue before the peptide, '-' for none, or not known
    std::optional<char> after;  ///< likewise behind it
};

/// Where a modification wants to sit.
struct SiteRule {
    std::string origin; ///< residue letters, "N-term" or "C-term"
    Vorlan::CResidueModification::TermSpecificity specificity =
        Vorlan::CResidueModification::ANYWHERE;
};

/// Empty when a modification of this rule can sit there, else why not, such as
/// "needs the protein N-terminus, but the residue before is K".
std::string WhyNot(const SiteRule& rule, const Site& site);

/// The rule may hold for this residue: origin "S", or "STY" (pFind 3 lists
/// several letters as one origin).
bool HasResidue(const std::string& origin, char residue);

/// "the residue S", "the N-terminus Q", "the N-terminus".
std::string TextOf(const Site& site);

/// 'S' of "S" or "s", or nothing when the text is no residue that a
/// modification can have.
std::optional<char> ResidueOf(std::string_view text);

/// The residue letters, for messages.
extern const char* const kResidueLetters;

} // namespace pelgrin

#endif // PELGRIN_SITES_H
