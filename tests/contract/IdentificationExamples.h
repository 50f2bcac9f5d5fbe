// One small result file per identification reader, for the contract suite.
// A new reader joins by adding its example to IdentificationExamples().
#ifndef VORLAN_TESTS_IDENTIFICATIONEXAMPLES_H
#define VORLAN_TESTS_IDENTIFICATIONEXAMPLES_H

#include <ostream>
#include <string>
#include <vector>

#include "DataStructures.h"

namespace Vorlan::test {

struct IdentificationExample {
    std::string testName; ///< letters only
    PepIdentType::EPepIdentType type;
    std::string fileName;
    std::string text;                       ///< line feeds alone, the last line ends with one
    std::vector<std::string> spectrumNames; ///< of its matches, in order
    std::string loadLabel;                  ///< the label of FileNotReadable; empty: see B-68
    bool writes = false;                    ///< Save writes what Load reads
    std::string secondName = {};            ///< of a second file that is needed
    std::string secondText = {};

    /// A file that cannot be opened is told and no exception (B-68). Nothing stays
    /// open, for writing neither.
    bool IsPepXml() const { return loadLabel.empty(); }
};

const std::vector<IdentificationExample>& IdentificationExamples();

inline void PrintTo(const IdentificationExample& example, std::ostream* out)
{
    *out << example.testName;
}

} // namespace Vorlan::test

#endif // VORLAN_TESTS_IDENTIFICATIONEXAMPLES_H
