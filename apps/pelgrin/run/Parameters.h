// Step 1 of a run: the parameters, and how their texts are read.
#ifndef PELGRIN_PARAMETERS_H
#define PELGRIN_PARAMETERS_H

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "DataStructures.h"
#include "proteins/ProteinMap.h"
#include "run/Fdr.h"

namespace pelgrin {

struct Tolerance {
    double value = 0.0;
    Vorlan::TolType::ETolType unit = Vorlan::TolType::Ppm;
};

/// Name, as WithAnyTerm spells it -> mass, Da.
using ModificationMasses = std::map<std::string, double>;

class ModificationLookup;

/// A key that a parameter file may hold, and its value; nothing when it is not read.
struct FileKey {
    std::string section;
    std::string key;
    std::optional<std::string> value;
};

/// An input that a copy stands for, and what of it is not in the copy.
struct PreparedInput {
    struct LeftOut {
        std::string key;
        std::string text;
        std::uint64_t records = 0;
        std::string example; ///< "run.mgf:12"
        bool isHeld = true;  ///< else something that may be missing cannot be counted
    };

    std::string path;
    std::uint64_t held = 0;
    std::uint64_t written = 0;
    std::vector<LeftOut> leftOut;
};

/// What a run is asked for: by the command line of "annotate", or by the
/// parameter file of "run".
struct Parameters {
    std::string program = "pelgrin annotate";
    std::vector<std::string> arguments; ///< the command line behind the program's name
    std::vector<std::string> spectra;   ///< paths of MGF files and folders of DTA files
    std::vector<std::string> psms;      ///< paths of the results
    std::string second;                 ///< second file of the one result; empty: the default
    std::map<std::string, std::string> datasets; ///< what --dataset says: name -> file of spectra
    std::optional<double> minMatch; ///< share of the records that must meet their spectrum
    Vorlan::PepIdentType::EPepIdentType format = Vorlan::PepIdentType::CalvexTxt; ///< of psms
    Tolerance tolerance;
    std::vector<Vorlan::Peak::EIonType> ions;
    ModificationMasses modifications;
    double minShift = 0.5;               ///< smaller mass shifts are errors of measurement, Da
    bool shiftedIons = true;             ///< ask ions with a record's mass shift, too
    std::string out;                     ///< folder of the output files
    std::string outName = "--out";       ///< what the user knows that folder as
    std::set<std::string> allowed;       ///< classes of losses that are no reason for status 3
    std::vector<PreparedInput> prepared; ///< empty: the inputs are read as they came
    std::string rejectsTable;            ///< of "convert" and "map-proteins" only; may be empty
    std::string ledgerFile;              ///< likewise

    std::string parameterFile;                        ///< may be empty for "annotate"
    std::vector<std::string> fileInputs;              ///< what else was read: never overwritten
    std::shared_ptr<const ModificationLookup> lookup; ///< for names not in modifications
    std::map<std::string, std::string> modificationSources; ///< name -> where its mass stands
    std::set<std::string> modificationsGiven; ///< those of --mod, without the names of each residue

    // Of "run" only.
    bool isRun = false;
    std::optional<FdrPlan> fdr;
    std::optional<ProteinPlan> proteins;
    std::vector<std::string> notOffered; ///< what the file asks for in vain: "localization"
    std::vector<FileKey> fileKeys;       ///< all keys, in the order of the template
    std::string plan;                    ///< what "params check" says of the file
};

// Each of these throws UsageError with a text that names what was given and
// what is wanted.

/// "20ppm", "0.02 Da": a positive number and a unit, in any case.
Tolerance ParseTolerance(const std::string& text);

/// "b,y": letters of a, b, c, x, y, z in any case, each kept once.
std::vector<Vorlan::Peak::EIonType> ParseIons(const std::string& text);

/// "Oxidation (M)=15.994915": name and mass around the last "=".
std::pair<std::string, double> ParseModification(const std::string& text);

/// All modifications, as they are written and with one name for each residue. A name
/// has one mass, however it is spelled; throws UsageError for two.
ModificationMasses ParseModifications(const std::vector<std::string>& texts);

/// The names of all modifications as they are written, as WithAnyTerm spells them.
std::set<std::string> NamesGiven(const std::vector<std::string>& texts);

/// "/data/run01.raw=run01.mgf": dataset name and file around the last "=", once
/// for each name. Each file must be one of spectra, as a path or by its name.
/// Gives dataset name -> path in spectra.
std::map<std::string, std::string> ParseDatasets(const std::vector<std::string>& texts,
                                                 const std::vector<std::string>& spectra);

/// "0.9": the share of records that must meet their spectrum, 0 to 1.
double ParseMinMatch(const std::string& text);

/// A mass that is not negative.
double ParseMinShift(const std::string& text);

/// The type of a result by its display name, in any case. Only types that the
/// library reads are choices.
Vorlan::PepIdentType::EPepIdentType ParseFormat(const std::string& text);

/// The library has a reader for the type.
bool HasReader(Vorlan::PepIdentType::EPepIdentType type);

/// The display names that ParseFormat takes, in quotes, joined by ", ".
std::string FormatChoices();

/// Spells a terminus as the table reader does: " (N-term" becomes
/// " (Any N-term", and likewise for the C-terminus.
std::string WithAnyTerm(const std::string& name);

/// 'b' for Peak::B_ION and so on.
char LetterOf(Vorlan::Peak::EIonType ion);

/// "20 ppm".
std::string TextOf(const Tolerance& tolerance);

} // namespace pelgrin

#endif // PELGRIN_PARAMETERS_H
