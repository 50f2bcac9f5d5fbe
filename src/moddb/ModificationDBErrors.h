// Every exception of the unit ModificationDB. Line numbers that hosts know are
// fixed. labels are literals: the exception class stores the bare pointers.
#ifndef VORLAN_MODDB_ERRORS_H
#define VORLAN_MODDB_ERRORS_H

#include <cstddef>
#include <string>

#include <OpenMS/CONCEPT/Exception.h>

namespace Vorlan::errors {

inline constexpr char kModificationDB[] = "ModificationDB";
inline constexpr char kPFind3Reader[] = "CModificationsDBEnginePFind3::readFromSearchEngineFile";

[[noreturn]] inline void InvalidTermSpecificityName(const std::string& name)
{
    throw OpenMS::Exception::InvalidValue(kModificationDB, 148,
                                          "CResidueModification::setTermSpecificity",
                                          "Invalid term specificity", name);
}

[[noreturn]] inline void InvalidTermSpecificity()
{
    throw OpenMS::Exception::InvalidValue(kModificationDB, 177,
                                          "CResidueModification::getTermSpecificityName",
                                          "Invalid term specificity", "");
}

[[noreturn]] inline void ModificationNotAvailable(const std::string& name)
{
    throw OpenMS::Exception::InvalidValue(
        kModificationDB, 395, "CModificationsDB::getModification",
        "Retrieving the modification failed. It is not available for the residue and term "
        "specificity.",
        name);
}

[[noreturn]] inline void NoSuchModification(const std::string& name)
{
    throw OpenMS::Exception::ElementNotFound(kModificationDB, 407,
                                             "CModificationsDB::searchModifications", name);
}

[[noreturn]] inline void DumpNotWritable(const std::string& path)
{
    // Deliberate: B-39. The class says "readable".
    throw OpenMS::Exception::FileNotReadable(kModificationDB, 459, "CModificationsDB::writeToFile",
                                             path);
}

[[noreturn]] inline void EngineNotSupported(const std::string& engine)
{
    throw OpenMS::Exception::InvalidParameter(
        kModificationDB, 913, "CModificationsDBEngine::getInstance",
        "Modification database loading from " + engine + " is not supported for now.");
}

/// label is the literal name of the table's reader.
[[noreturn]] inline void TableNotReadable(const char* label, const std::string& path)
{
    throw OpenMS::Exception::FileNotReadable(kModificationDB, __LINE__, label, path);
}

[[noreturn]] inline void PFind3FileNotReadable(const std::string& path)
{
    throw OpenMS::Exception::FileNotReadable(kModificationDB, 1141, kPFind3Reader, path);
}

/// line is the one that the messages of the reader name.
[[noreturn]] inline void NotOneEqualsSign(std::size_t line)
{
    throw OpenMS::Exception::InvalidParameter(
        kModificationDB, 1176, kPFind3Reader,
        "There was expected to be (and only be) one \"=\" in line" + std::to_string(line));
}

[[noreturn]] inline void TooFewItems()
{
    throw OpenMS::Exception::InvalidParameter(kModificationDB, 1182, kPFind3Reader,
                                              "There are no sufficient items after \"=\"");
}

/// sourceLine is 1194 for a key with two modifications and 1204 for others.
[[noreturn]] inline void NoSpecificityInKey(int sourceLine, std::size_t line)
{
    throw OpenMS::Exception::InvalidParameter(
        kModificationDB, sourceLine, kPFind3Reader,
        "There was expected to be \"mod[specificity]\" before \"=\" in line"
            + std::to_string(line));
}

[[noreturn]] inline void UnexpectedSpecificity(const std::string& item, std::size_t line)
{
    throw OpenMS::Exception::InvalidParameter(kModificationDB, 1228, kPFind3Reader,
                                              "Unexpected term specificity" + item + "in line "
                                                  + std::to_string(line) + ".");
}

[[noreturn]] inline void MSFraggerFileNotReadable(const std::string& path)
{
    throw OpenMS::Exception::FileNotReadable(
        kModificationDB, 1276, "CModificationsDBEngineMSFragger::readFromSearchEngineFile", path);
}

} // namespace Vorlan::errors

#endif // VORLAN_MODDB_ERRORS_H
