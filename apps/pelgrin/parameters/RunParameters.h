// Step 1 of a run from a parameter file.
#ifndef PELGRIN_RUNPARAMETERS_H
#define PELGRIN_RUNPARAMETERS_H

#include <memory>
#include <string>
#include <vector>

#include "TulkParam.h"
#include "parameters/ParameterText.h"
#include "run/Modifications.h"
#include "run/Parameters.h"

namespace pelgrin {

/// A parameter file that was understood.
struct RunPlan {
    Parameters parameters;
    const Vorlan::CTulkParam* groups = nullptr; ///< as the library read them
    std::string database;                       ///< path of the modifications
    /// Files that are missing or cannot be used: one message each.
    std::vector<std::string> fileProblems;
    /// Of these, such that "run --prepare" mends: packed files, missing second files.
    std::vector<std::string> mendable;
};

/// Throws Failure with the first file problem of a plan, when there is one.
void RefuseFileProblems(const RunPlan& plan);

/// What the command line says of the proteins.
struct ProteinChoice {
    std::string fasta; ///< counts instead of protein_database; empty: not given
    bool equateIl = false;
};

/// What the library read, and the path of the modifications.
struct LoadedParameters {
    const Vorlan::CTulkParam* groups = nullptr;
    std::string database;
};

/// The masses that a parameter file names: of its modifications, and of those
/// in its database. Good until another file is read.
std::shared_ptr<const ModificationLookup> LookupOf(const LoadedParameters& loaded);

/// Lets the library read the file; the files of modifications are looked
/// through before, so that it cannot end the process. Throws Failure with
/// file, line, key and what is allowed. For one file in a process: the library
/// keeps the modifications of the first one.
LoadedParameters LoadParameters(const ParameterText& text, bool makeTable);

/// Of masses in the modification file that the library reads in part.
void WarnOfMasses(const LoadedParameters& loaded);

/// Reads the parameter file at path, and the modifications that it names.
/// makeTable makes the default table of modifications when the file needs it
/// and it is not there. Warnings go to standard error. Throws Failure for the
/// first error that is none of a file of spectra, matches or proteins. For one file in a
/// process, as LoadParameters.
RunPlan ReadRunPlan(const std::string& path, bool makeTable, const ProteinChoice& proteins = {});

/// The same without proteins and output, which joining does not need.
RunPlan ReadJoinPlan(const std::string& path, bool makeTable);

} // namespace pelgrin

#endif // PELGRIN_RUNPARAMETERS_H
