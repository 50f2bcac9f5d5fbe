// The masses of modifications for a run from a parameter file.
#ifndef PELGRIN_MODIFICATIONS_H
#define PELGRIN_MODIFICATIONS_H

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "ModificationDB.h"
#include "run/Parameters.h"

namespace pelgrin {

/// "Oxidation (M)" as name, site and term specificity. Sites and phrases as in
/// a parameter file: "Protein N-term", "Any C-term K".
struct ModificationName {
    std::string name;
    std::string site; ///< residue letters, "N-term" or "C-term"
    Vorlan::CResidueModification::TermSpecificity specificity =
        Vorlan::CResidueModification::ANYWHERE;
};

/// Nothing for a text without a site in parentheses at its end.
std::optional<ModificationName> ParseModificationName(const std::string& text);

/// The modifications that a text of the command line means: one for each residue of
/// "Phospho (STY)". Nothing for one without a name or a site.
std::vector<ModificationName> NamesBySite(const std::string& text);

/// "Oxidation (M)", "Acetyl (Protein N-term)", "Gln->pyro-Glu (Any N-term Q)".
std::string FullNameOf(const Vorlan::IdentModification& specified);
std::string FullNameOf(const ModificationName& name);

/// The record of a name in the database: with the specificity of the name,
/// else with any. Null when there is none.
const Vorlan::CResidueModification* FindRecord(const Vorlan::CModificationsDB& database,
                                               const ModificationName& name);

/// What the database has instead of a name that it lacks, for a message: the
/// sites of that name, or the name that is written most like it. May be empty.
std::string HintFor(const Vorlan::CModificationsDB& database, const ModificationName& name);

/// Finds the masses of names that a table of matches uses.
class ModificationLookup {
public:
    struct Hit {
        double mass = 0.0;
        std::string source; ///< "parameter file", or the path of the database
        bool isOfDatabase = false;
    };

    /// database must live as long as the lookup.
    ModificationLookup(std::vector<Vorlan::IdentModification> specified,
                       const Vorlan::CModificationsDB& database, std::string databasePath)
        : specified_(std::move(specified)), database_(database),
          databasePath_(std::move(databasePath))
    {
    }

    /// Among the specified modifications first, then in the database. A name of
    /// several residues in the parameter file, "Phospho (STY)", holds for each.
    std::optional<Hit> Find(const std::string& name) const;

private:
    std::vector<Vorlan::IdentModification> specified_;
    const Vorlan::CModificationsDB& database_;
    std::string databasePath_;
};

/// Looks up every name that the records bear and parameters do not know yet,
/// and adds those that are found to its modifications and their sources. Where a
/// record has the mass, too, only the parameter file is asked.
void AddMasses(const std::vector<Vorlan::PeptideIdentification>& records, Parameters& parameters);

/// Warns of masses in a modification file that the library reads in part; see
/// WarningOfMasses.
void WarnOfMasses(const std::string& path, Vorlan::SearchEngineType::ESearchEngineType engine);

} // namespace pelgrin

#endif // PELGRIN_MODIFICATIONS_H
