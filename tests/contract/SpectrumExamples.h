// One small dataset per spectrum reader, for the contract suite. A new reader
// joins by adding its example to SpectrumExamples().
#ifndef VORLAN_TESTS_SPECTRUMEXAMPLES_H
#define VORLAN_TESTS_SPECTRUMEXAMPLES_H

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "DataStructures.h"
#include "support/Support.h"

namespace Vorlan::test {

struct SpectrumExample {
    std::string testName; ///< letters only
    DatasetType::EDatasetType type;
    /// Writes the dataset into a folder and gives its path.
    std::function<std::string(const TempFolder&)> write;
    /// Dumps of a new reader's spectra in the order of the iteration, one per
    /// name. Each record sets the same fields. There may be none.
    std::vector<std::string> dumps;
    std::vector<std::string> names;

    // What formats do differently.
    bool tellsWhatCannotBeOpened = true; ///< InitLoad prints the path
    bool keepsNamesAfterEndLoad = true;  ///< else it forgets all of them
    bool loadsAllFromTheFirst = false;   ///< else what the iteration has left
};

const std::vector<SpectrumExample>& SpectrumExamples();

inline void PrintTo(const SpectrumExample& example, std::ostream* out)
{
    *out << example.testName;
}

} // namespace Vorlan::test

#endif // VORLAN_TESTS_SPECTRUMEXAMPLES_H
