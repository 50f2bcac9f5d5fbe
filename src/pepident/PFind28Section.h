// One spectrum of the text result of pFind 2.8.
#ifndef VORLAN_PEPIDENT_PFIND28SECTION_H
#define VORLAN_PEPIDENT_PFIND28SECTION_H

#include <cstdint>
#include <string>
#include <string_view>

#include "DataStructures.h"
#include "pepident/PFindModifications.h"
#include "util/LineReader.h"
#include "util/TabTable.h"

namespace Vorlan::pfind {

/// The spectrum file of an input path: what stands behind its last backslash,
/// trailing ones not counted.
std::string SpectrumFileOf(std::string_view inputPath);

/// The value of a line "<key><value>", without blanks around it; empty when the
/// line begins otherwise.
std::string_view ValueOf(std::string_view line, std::string_view key);

/// The same up to its first blank.
std::string_view WordOf(std::string_view line, std::string_view key);

/// Reads the sections of one file.
class SectionReader {
public:
    explicit SectionReader(LineReader& lines) : lines_(lines) {}

    /// Reads on behind the line that begins a section. False when it has no
    /// candidate.
    bool Read(PeptideIdentification& match);

private:
    /// The number and the text behind it of a line "<key><number>,<text>".
    struct Counted {
        std::int32_t count = 0;
        std::string list; ///< blanks and what stands behind them included
    };

    std::string_view Next(std::size_t skipped = 0);
    Counted NextCounted(std::size_t skipped, std::string_view key);
    void ReadProteins(PeptideIdentification& match);
    void ReadModifications(PeptideIdentification& match);

    LineReader& lines_;
    TabRow first_, second_, third_;
    MassesByName masses_;
};

} // namespace Vorlan::pfind

#endif // VORLAN_PEPIDENT_PFIND28SECTION_H
