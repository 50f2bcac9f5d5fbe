// Every exception of the unit PeptideIdentificationIO. label is the literal
// name of the reader's member, "TulkTXTPepIdentIO::Load".
#ifndef VORLAN_PEPIDENT_ERRORS_H
#define VORLAN_PEPIDENT_ERRORS_H

#include <string>

#include <OpenMS/CONCEPT/Exception.h>

namespace Vorlan::errors {

inline constexpr char kPeptideIdentificationIO[] = "PeptideIdentificationIO";

[[noreturn]] inline void NotReadable(const char* label, const std::string& path)
{
    throw OpenMS::Exception::FileNotReadable(kPeptideIdentificationIO, __LINE__, label, path);
}

[[noreturn]] inline void NotWritable(const char* label, const std::string& path)
{
    throw OpenMS::Exception::FileNotWritable(kPeptideIdentificationIO, __LINE__, label, path);
}

[[noreturn]] inline void MissingColumn(const char* label, const std::string& column)
{
    throw OpenMS::Exception::ElementNotFound(kPeptideIdentificationIO, __LINE__, label, column);
}

/// A modified residue of a pepXML file that no specified modifications explain.
[[noreturn]] inline void MassUnexplained()
{
    // Deliberate: B-54. The text names what was looked for.
    throw OpenMS::Exception::ElementNotFound(kPeptideIdentificationIO, __LINE__,
                                             "MSFraggerPepXMLPepIdentIO::getMod",
                                             "the mass shift is a combination of modifications");
}

[[noreturn]] inline void PositionUnknown(const std::string& position)
{
    throw OpenMS::Exception::InvalidValue(kPeptideIdentificationIO, __LINE__,
                                          "MSFraggerPepXMLPepIdentIO::SatisfySpecificity",
                                          "The specified modifications format was wrong", position);
}

/// A mass in a peptide of MS-GF+ that the modification list does not have.
[[noreturn]] inline void MassTextUnknown(const std::string& mass)
{
    throw OpenMS::Exception::InvalidValue(
        kPeptideIdentificationIO, 534, "MSGFTSVPepIdentIO::Load",
        "Unexpected modification mass in \"Peptide\" in .tsv file", mass);
}

/// A modification in a sequence of MaxQuant that has no name.
[[noreturn]] inline void AbbreviationUnknown(const std::string& abbreviation)
{
    throw OpenMS::Exception::InvalidValue(
        kPeptideIdentificationIO, 1011, "MaxQuantTXTPepIdentIO::Load",
        "Unexpected Modification Abbreviation in \"Modified sequence\" in msms.txt", abbreviation);
}

} // namespace Vorlan::errors

#endif // VORLAN_PEPIDENT_ERRORS_H
