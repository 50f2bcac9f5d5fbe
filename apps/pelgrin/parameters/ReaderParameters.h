// What a reader is told about modifications, for the commands that have no
// parameter file of their own.
//
// Engines write masses and abbreviations; the readers explain them with the
// modifications of the library's parameters. These come from a parameter file
// of the user, or from the names and masses of the command line, which are put
// into a parameter file that lives as long as the reading of it.
#ifndef PELGRIN_READERPARAMETERS_H
#define PELGRIN_READERPARAMETERS_H

#include <memory>
#include <string>
#include <vector>

#include "run/Modifications.h"
#include "run/Parameters.h"

namespace pelgrin {

/// Lets the library read the parameter file at path, and gives the masses that
/// it names. Its files are added to inputs. Throws Failure as LoadParameters.
std::shared_ptr<const ModificationLookup> TellParameterFile(const std::string& path,
                                                            std::vector<std::string>& inputs);

/// Lets the library know modifications such as "Oxidation (M)=15.994915", in
/// this order, and that spectra are MGF files. A name without a site tells it
/// nothing; a warning says so. Throws UsageError for a name that no parameter
/// file can hold.
void TellModifications(const std::vector<std::string>& modifications);

/// Does the one or the other for a result of this format. The native table
/// needs neither.
void TellReader(const std::string& parameterFile, const std::vector<std::string>& modifications,
                Parameters& parameters);

} // namespace pelgrin

#endif // PELGRIN_READERPARAMETERS_H
