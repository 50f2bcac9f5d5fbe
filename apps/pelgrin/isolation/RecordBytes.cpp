#include "isolation/RecordBytes.h"

#include <sstream>

#include <cereal/archives/binary.hpp>
#include <cereal/types/string.hpp>
#include <cereal/types/vector.hpp>

// Each function names all members of its class, so that one that is added later
// does not compile before it goes the way, too.
namespace cereal {

template <typename Archive>
void serialize(Archive& archive, Vorlan::PeptideEvidence& evidence)
{
    auto& [accession, start, before, after] = evidence;
    archive(accession, start, before, after);
}

template <typename Archive>
void serialize(Archive& archive, Vorlan::IdentModification& modification)
{
    auto& [name, mass, site, position, pos] = modification;
    archive(name, mass, site, position, pos);
}

template <typename Archive>
void serialize(Archive& archive, Vorlan::PeptideIdentification& record)
{
    auto& [dataset, spectrum, sequence, mz, charge, time, error, shift, unit, score, highBetter, mh,
           scan, decoy, evidences, mods, altMods] = record;
    archive(dataset, spectrum, sequence, mz, charge, time, error, shift, unit, score, highBetter,
            mh, scan, decoy, evidences, mods, altMods);
}

} // namespace cereal

namespace pelgrin {

namespace {

/// A string of OpenMS is one of the standard library.
std::string& Plain(OpenMS::String& text)
{
    return text;
}

/// Everything of a spectrum but its peaks.
template <typename Archive>
void TakeHead(Archive& archive, Vorlan::Spectrum& spectrum)
{
    auto& [flag, source, title, mz, charge, scan, time, peaks, table] = spectrum;
    static_cast<void>(peaks);
    static_cast<void>(table);
    archive(flag, Plain(source), Plain(title), mz, charge, scan, time);
}

} // namespace

std::string BytesOf(const std::vector<Vorlan::PeptideIdentification>& records, std::size_t begin,
                    std::size_t end)
{
    std::ostringstream bytes;
    cereal::BinaryOutputArchive archive(bytes);
    archive(static_cast<std::uint64_t>(end - begin));
    for (; begin < end; ++begin) {
        archive(records[begin]);
    }
    return bytes.str();
}

void AppendRecords(const std::string& bytes, std::vector<Vorlan::PeptideIdentification>& records)
{
    std::istringstream stream(bytes);
    cereal::BinaryInputArchive archive(stream);
    std::uint64_t count = 0;
    archive(count);
    for (; count > 0; --count) {
        records.emplace_back();
        archive(records.back());
    }
}

std::string BytesOf(const Vorlan::Spectrum& spectrum)
{
    std::ostringstream bytes;
    cereal::BinaryOutputArchive archive(bytes);
    Vorlan::Spectrum head = spectrum;
    TakeHead(archive, head);
    std::vector<double> numbers;
    numbers.reserve(2 * spectrum.vPeaks.size());
    for (const Vorlan::Peak& peak : spectrum.vPeaks) {
        numbers.push_back(peak.dMz);
        numbers.push_back(peak.dIntensity);
    }
    archive(numbers);
    return bytes.str();
}

Vorlan::Spectrum SpectrumOf(const std::string& bytes)
{
    std::istringstream stream(bytes);
    cereal::BinaryInputArchive archive(stream);
    Vorlan::Spectrum spectrum;
    TakeHead(archive, spectrum);
    std::vector<double> numbers;
    archive(numbers);
    spectrum.vPeaks.resize(numbers.size() / 2);
    for (std::size_t i = 0; i < spectrum.vPeaks.size(); ++i) {
        spectrum.vPeaks[i].dMz = numbers[2 * i];
        spectrum.vPeaks[i].dIntensity = numbers[2 * i + 1];
    }
    return spectrum;
}

} // namespace pelgrin
