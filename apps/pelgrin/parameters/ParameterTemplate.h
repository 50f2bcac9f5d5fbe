// The parameter file that "pelgrin params template" writes.
#ifndef PELGRIN_PARAMETERTEMPLATE_H
#define PELGRIN_PARAMETERTEMPLATE_H

#include <string>

namespace pelgrin {

/// Every key of the table of keys, with its meaning, its values and when it is
/// needed. It can be read as it stands.
std::string ParameterTemplate();

} // namespace pelgrin

#endif // PELGRIN_PARAMETERTEMPLATE_H
