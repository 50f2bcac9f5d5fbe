// Names for the neutral fields of the records, the same for every reader.
#ifndef VORLAN_DATASTRUCTURES_FIELDNAMES_H
#define VORLAN_DATASTRUCTURES_FIELDNAMES_H

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
