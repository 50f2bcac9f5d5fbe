// A pool and its datasets as small files.
#ifndef VORLAN_TESTS_POOLTEXT_H
#define VORLAN_TESTS_POOLTEXT_H

#include <string>
#include <vector>

#include "SpectraIO.h"
#include "spectra/SpectrumText.h"
#include "support/Support.h"

namespace Vorlan::test {

/// What the pool prints before and behind its datasets.
inline const std::string kPoolStart = "    Setting spectra index for each dataset: ";
inline const std::string kPoolDone = "...Done.\n";

inline std::string Record(const std::string& title, const std::string& peak)
{
    return "BEGIN IONS\nTITLE=" + title + "\n" + peak + "\nEND IONS\n";
}

class PoolFolder {
public:
    /// A dataset in this folder.
    DatasetSource Dataset(const std::string& name, const std::string& text) const
    {
        folder_.Write(name, text);
        return {folder_.Path(), name, DatasetType::Mgf};
    }

    const std::string& Path() const { return folder_.Path(); }

    /// "a.mgf" with a1 and a2, "b.mgf" with b1.
    std::vector<DatasetSource> TwoDatasets() const
    {
        return {Dataset("a.mgf", Record("a1", "1 2") + Record("a2", "3 4")),
                Dataset("b.mgf", Record("b1", "5 6"))};
    }

private:
    TempFolder folder_;
};

inline void QuietInitLoad(DatasetIOPool& pool, const std::vector<DatasetSource>& sources)
{
    OutputOf([&] { pool.InitLoad(sources); });
}

/// All that the iteration has left.
inline std::vector<std::string> RestOf(DatasetIOPool& pool)
{
    std::vector<Spectrum> spectra;
    pool.tLoadAllSpectra(spectra);
    return Dump(spectra);
}

/// One spectrum, or "none".
inline std::string LoadFrom(DatasetIOPool& pool, const std::string& dataset,
                            const std::string& name)
{
    std::vector<Spectrum> spectra;
    return pool.bLoadOneSpectrum(dataset, name, spectra) ? Dump(spectra.at(0)) : "none";
}

} // namespace Vorlan::test

#endif // VORLAN_TESTS_POOLTEXT_H
