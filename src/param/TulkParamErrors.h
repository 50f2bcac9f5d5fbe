// Every exception of the unit TulkParam.
#ifndef VORLAN_PARAM_ERRORS_H
#define VORLAN_PARAM_ERRORS_H

#include <string>

#include <OpenMS/CONCEPT/Exception.h>

namespace Vorlan::errors {

[[noreturn]] inline void BadParameter(const std::string& message)
{
    throw OpenMS::Exception::InvalidParameter("TulkParam", __LINE__, "CTulkParam::readFromFile_",
                                              message);
}

} // namespace Vorlan::errors

#endif // VORLAN_PARAM_ERRORS_H
