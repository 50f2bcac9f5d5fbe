// An MGF reader that shows its steps and its index, and readers of texts.
#ifndef VORLAN_TESTS_MGFPROBE_H
#define VORLAN_TESTS_MGFPROBE_H

#include <string>
#include <utility>
#include <vector>

#include "SpectraIO.h"
#include "spectra/PlainMgf.h"
#include "spectra/SpectrumIndex.h"
#include "spectra/SpectrumText.h"
#include "support/Support.h"

namespace Vorlan::test {

class MgfProbe : public MgfIO {
public:
    using MgfIO::bOpenInputFile;
    using MgfIO::bOpenOutputFile;
    using MgfIO::CloseInputFile;
    using MgfIO::CloseOutputFile;
    using MgfIO::InitMember;
    using MgfIO::SetMap;

    Spectrum& Current() { return cSpectrum_; }
    const std::string& Extension() const { return strExtension_; }

    /// The names with their positions, in the order of the iteration.
    std::vector<std::pair<std::string, std::uint64_t>> Entries() const
    {
        std::vector<std::pair<std::string, std::uint64_t>> entries;
        for (std::size_t i = 0; i < pIndex_->Size(); ++i) {
            entries.emplace_back(pIndex_->Name(i), pIndex_->Position(i));
        }
        return entries;
    }
};

inline std::string MgfNotOpened(const std::string& path)
{
    return "\nMulSpecIO error: failed to open spectra file " + path + "\n";
}

/// A reader opened on a text.
class MgfText {
public:
    explicit MgfText(const std::string& text) : path_(folder_.Write("a.mgf", text))
    {
        reader.InitLoad(path_);
    }

    const std::string& Path() const { return path_; }

    /// All that the iteration has left.
    std::vector<std::string> Rest()
    {
        std::vector<Spectrum> spectra;
        reader.tLoadAllSpectra(spectra);
        return Dump(spectra);
    }

    std::string Load(const std::string& name)
    {
        std::vector<Spectrum> spectra;
        return reader.bLoadOneSpectrum(name, spectra) ? Dump(spectra.at(0)) : "unknown";
    }

    /// What the plain twin gives for all names in their order.
    std::vector<std::string> AllOfThePlainTwin() const
    {
        PlainMgf twin(path_);
        std::vector<std::string> texts;
        for (const auto& name : twin.Names()) {
            texts.push_back(Dump(twin.Load(name.first)));
        }
        return texts;
    }

private:
    TempFolder folder_;
    std::string path_;

public:
    MgfProbe reader;
};

/// text with every '@' as a NUL.
inline std::string WithNuls(std::string text)
{
    for (char& c : text) {
        c = c == '@' ? '\0' : c;
    }
    return text;
}

} // namespace Vorlan::test

#endif // VORLAN_TESTS_MGFPROBE_H
