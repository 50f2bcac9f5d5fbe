// How the records of a run met their spectra: by which kind of name, how far their
// precursors lie apart, and what did not meet, with the names nearest to it.
#ifndef PELGRIN_JOINAUDIT_H
#define PELGRIN_JOINAUDIT_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "DataStructures.h"
#include "run/Spectra.h"

namespace pelgrin {

/// m/z of a record minus m/z of the spectrum that it met.
enum class Deviation : std::size_t {
    Within1Ppm,
    Within5Ppm,
    Within10Ppm,
    Within20Ppm,
    Within50Ppm,
    Within100Ppm,
    Isotopic, ///< 1 to 3 neutrons off, within 20 ppm or 0.01 Th
    WithinHalfTh,
    WithinThreeTh,
    Beyond,
    NotKnown, ///< one of both m/z is not known, or the spectrum is of no use
};
constexpr std::size_t kDeviations = 11;

/// The key in JSON, such as "within_5_ppm".
const char* KeyOf(Deviation deviation);
/// The words of a report, such as "within 5 ppm".
const char* TextOf(Deviation deviation);

/// Both m/z in Th; charge 0: no isotopes.
Deviation DeviationOf(double recordMz, double spectrumMz, std::uint64_t charge);

/// The m/z that a record tells, Th: its own, else that of its MH and charge.
std::optional<double> PrecursorMzOf(const Vorlan::PeptideIdentification& record);

/// Names like wanted in a file of spectra, at most three: those that differ least,
/// titles that hold the same scan number, then those that begin most like it.
std::vector<std::string> NamesNear(const SpectraFile& file, const std::string& wanted);

/// The records of one file of spectra.
struct JoinedFile {
    struct Unknown {
        std::string name;
        std::vector<std::string> nearest;
    };
    struct Ambiguous {
        std::string name;
        std::uint64_t spectra = 0; ///< that have it; 0: DTA files, or a scan number in titles
        std::vector<std::uint64_t> lines; ///< at which the first of them begin, from 1
    };

    std::string file;       ///< its dataset name
    std::uint64_t read = 0; ///< records of the file
    std::array<std::uint64_t, kMeetKinds> met{};
    std::uint64_t unknown = 0;   ///< records whose name no spectrum has
    std::uint64_t ambiguous = 0; ///< records whose name several have
    /// Of these, with a name of whose spectra exactly one has the record's m/z (20
    /// ppm or 0.01 Th) and charge. It may still be another one's: nothing is taken.
    std::uint64_t ambiguousThatFitOne = 0;
    std::uint64_t ambiguousNames = 0; ///< names in the file that several spectra have
    std::array<std::uint64_t, kDeviations> deviations{};
    std::vector<double> ppm; ///< deviations of records within 100 ppm
    // The first different names.
    std::vector<Unknown> unknownExamples;
    std::vector<Ambiguous> ambiguousExamples;

    std::uint64_t Met() const;
    /// Records that met and whose deviation is known.
    std::uint64_t WithDeviation() const;
    /// More than 1 % of those lie beyond 3 Th.
    bool IsSuspicious() const;
    /// Of ppm; nothing when it is empty.
    std::optional<double> MedianPpm() const;
};

class JoinAudit {
public:
    explicit JoinAudit(const std::vector<SpectraFile>& files);

    /// A record that names file number place of the constructor's, and what NameOf
    /// gave for it.
    void Take(const SpectraFile& file, std::size_t place,
              const Vorlan::PeptideIdentification& record, const std::optional<SpectrumName>& name);
    /// A record of a dataset for which no file was given.
    void TakeWithoutFile(const Vorlan::PeptideIdentification& record);

    const std::vector<JoinedFile>& Files() const { return files_; }
    /// Dataset name -> records without a file.
    const std::map<std::string, std::uint64_t>& WithoutFile() const { return withoutFile_; }
    std::uint64_t Read() const;
    std::uint64_t Met() const;

    /// Warns of ambiguous names, of names that met other spectra, and when of all
    /// records, or of those of one file, less than minMatch (0 to 1) met. False for
    /// the last one.
    bool Warn(const std::optional<double>& minMatch) const;

private:
    std::vector<JoinedFile> files_;
    std::map<std::string, std::uint64_t> withoutFile_;
};

} // namespace pelgrin

#endif // PELGRIN_JOINAUDIT_H
