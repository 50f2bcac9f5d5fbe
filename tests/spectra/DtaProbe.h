// A DTA reader that shows its steps, and folders of DTA texts.
#ifndef VORLAN_TESTS_DTAPROBE_H
#define VORLAN_TESTS_DTAPROBE_H

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "SpectraIO.h"
#include "spectra/SpectrumText.h"
#include "support/Support.h"

namespace Vorlan::test {

class DtaProbe : public DtaIO {
public:
    using DtaIO::bGetOneSpec;
    using DtaIO::bOpenInputFile;
    using DtaIO::CloseInputFile;
    using DtaIO::InitMember;
    using DtaIO::SetFilenameList;

    Spectrum& Current() { return cSpectrum_; }
    std::string& Extension() { return strExtension_; }
    std::string& Folder() { return strFolder_; }
    std::vector<std::string>& Filenames() { return vFilenames_; }
    std::uint64_t Iter() const { return tIter_; }
};

inline std::string DtaNotOpened(const std::string& path)
{
    return "\nDtaIO error: failed to open dta file " + path + "\n";
}

/// A folder "run" of DTA files.
class DtaFolder {
public:
    using NameAndText = std::pair<std::string, std::string>;

    DtaFolder() { std::filesystem::create_directory(Path()); }
    DtaFolder(std::initializer_list<NameAndText> files) : DtaFolder()
    {
        for (const auto& [name, text] : files) {
            Write(name, text);
        }
    }

    std::string Path() const { return folder_.PathOf("run"); }
    std::string PathOf(const std::string& name) const { return Path() + "/" + name; }
    /// As the reader composes it.
    std::string ComposedPathOf(const std::string& name) const { return Path() + "\\" + name; }
    /// Where the folder lies.
    const std::string& Parent() const { return folder_.Path(); }
    void Write(const std::string& name, const std::string& text) const
    {
        folder_.Write("run/" + name, text);
    }

private:
    TempFolder folder_;
};

/// What is read of a file "a.dta" with that text.
inline std::string DumpOfDta(const std::string& text)
{
    const DtaFolder folder{{"a.dta", text}};
    DtaIO reader;
    reader.InitLoad(folder.Path());
    std::vector<Spectrum> spectra;
    return reader.bLoadNextSpectrum(spectra) ? Dump(spectra.at(0)) : "none";
}

/// All that the iteration has left.
inline std::vector<std::string> DtaRest(DtaIO& reader)
{
    std::vector<Spectrum> spectra;
    while (reader.bLoadNextSpectrum(spectra)) {
    }
    return Dump(spectra);
}

} // namespace Vorlan::test

#endif // VORLAN_TESTS_DTAPROBE_H
