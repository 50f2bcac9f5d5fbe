// Names for the neutral fields of the records, the same for every reader.
#ifndef VORLAN_DATASTRUCTURES_FIELDNAMES_H
#define VORLAN_DATASTRUCTURES_FIELDNAMES_H

#include <cstdint>
#include <string>

#include "DataStructures.h"

namespace Vorlan {

inline const OpenMS::String& FolderOf(const PepIdentSource& source)
{
    return source.strFirst;
}
inline const OpenMS::String& FileNameOf(const PepIdentSource& source)
{
    return source.strSecond;
}
inline const OpenMS::String& SecondFolderOf(const PepIdentSource& source)
{
    return source.strThird;
}
inline const OpenMS::String& SecondFileNameOf(const PepIdentSource& source)
{
    return source.strFourth;
}

inline double& PrecursorMzOf(PeptideIdentification& match)
{
    return match.dValue1;
}
inline double& RetentionTimeOf(PeptideIdentification& match)
{
    return match.dValue2;
}
inline std::int32_t& ScanOf(PeptideIdentification& match)
{
    return match.nValue5;
}
inline void SetMassError(PeptideIdentification& match, double error, TolType::ETolType unit)
{
    match.dValue3 = error;
    match.nValue4 = static_cast<std::uint64_t>(unit);
}

inline std::string& FolderOf(DatasetSource& source)
{
    return source.strFirst;
}
inline const std::string& FolderOf(const DatasetSource& source)
{
    return source.strFirst;
}
inline const std::string& DatasetNameOf(const DatasetSource& source)
{
    return source.strSecond;
}

} // namespace Vorlan

#endif // VORLAN_DATASTRUCTURES_FIELDNAMES_H
