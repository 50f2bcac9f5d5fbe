// What users give as spectra: MGF files, folders of DTA files, and what is neither.
#ifndef PELGRIN_SPECTRASOURCE_H
#define PELGRIN_SPECTRASOURCE_H

#include <string>

namespace pelgrin {

/// A dataset, as the library wants it.
struct DatasetPlace {
    std::string folder;
    std::string name; ///< of the file, or of the folder of DTA files
};

/// An existing folder, which holds a dataset as DTA files; else it is a file.
bool IsFolder(const std::string& path);

/// path without the separators at its end when it is a folder.
std::string WithoutLastSeparators(const std::string& path);

/// "." and ".." are known by their real names.
DatasetPlace PlaceOfDataset(const std::string& path);

/// Throws Failure unless path is a file that may hold MGF. One that is mzML or
/// mzXML, by its ending or its content, is refused with ConversionOf.
void CheckMgf(const std::string& path);

/// Throws Failure unless path is a folder that can be read and holds DTA files.
void CheckDtaFolder(const std::string& path);

/// One or the other, as IsFolder says.
void CheckSpectra(const std::string& path);

/// "FileConverter -in run.mzML -out run.mgf (Debian package topp)", with the file
/// names as a shell wants them. FileConverter goes by the ending of a name: a file
/// without one of format, "mzML" or "mzXML", is to be renamed first.
std::string ConversionOf(const std::string& path, const std::string& format);

} // namespace pelgrin

#endif // PELGRIN_SPECTRASOURCE_H
