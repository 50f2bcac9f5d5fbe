#include "run/Parameters.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <limits>

#include <fmt/format.h>

#include "PeptideIdentificationIO.h"
#include "common/Failure.h"
#include "common/Words.h"
#include "run/Modifications.h"

namespace pelgrin {

using Vorlan::Peak;
using Vorlan::PepIdentIOFactory;
using Vorlan::PepIdentType;
using Vorlan::TolType;

namespace {

constexpr std::string_view kIonLetters = "abcxyz"; // in the order of Peak::EIonType

} // namespace

bool HasReader(PepIdentType::EPepIdentType type)
{
    Vorlan::PeptideIdentificationIO* reader = PepIdentIOFactory::pGetPepIdentIO(type);
    const bool has = reader != nullptr;
    PepIdentIOFactory::DesctroyPepIdentIO(reader);
    return has;
}

Tolerance ParseTolerance(const std::string& text)
{
    const auto refuse = [&text]() -> Tolerance {
        throw UsageError(fmt::format("--tolerance: \"{}\" is not a positive number followed by "
                                     "ppm or Da, such as 20ppm or 0.02Da",
                                     text));
    };
    const std::string lower = Lower(WithoutBlanks(text));
    Tolerance tolerance;
    std::string_view number = lower;
    for (const auto& [name, unit] :
         {std::pair<std::string_view, TolType::ETolType>{"ppm", TolType::Ppm},
          {"da", TolType::Da}}) {
        if (lower.size() > name.size()
            && lower.compare(lower.size() - name.size(), name.size(), name) == 0) {
            number.remove_suffix(name.size());
            tolerance.unit = unit;
        }
    }
    if (number.size() == lower.size()) {
        return refuse();
    }
    const std::optional<double> value = ParseNumber(WithoutBlanks(number));
    if (!value || !(*value > 0.0)) {
        return refuse();
    }
    tolerance.value = *value;
    return tolerance;
}

std::vector<Peak::EIonType> ParseIons(const std::string& text)
{
    std::vector<Peak::EIonType> ions;
    std::size_t begin = 0;
    while (begin <= text.size()) {
        const std::size_t end = std::min(text.find(',', begin), text.size());
        const std::string piece =
            Lower(WithoutBlanks(std::string_view(text).substr(begin, end - begin)));
        const std::size_t place = piece.size() == 1 ? kIonLetters.find(piece) : std::string::npos;
        if (place == std::string::npos) {
            throw UsageError(fmt::format(
                "--ions: \"{}\" is not an ion series; choose from a, b, c, x, y, z, as in b,y",
                piece));
        }
        const auto ion = static_cast<Peak::EIonType>(place + 1);
        if (std::find(ions.begin(), ions.end(), ion) == ions.end()) {
            ions.push_back(ion);
        }
        begin = end + 1;
    }
    return ions;
}

std::pair<std::string, double> ParseModification(const std::string& text)
{
    const std::size_t equals = text.rfind('=');
    std::optional<double> mass;
    if (equals != std::string::npos && equals > 0) {
        mass = ParseNumber(WithoutBlanks(std::string_view(text).substr(equals + 1)));
    }
    if (!mass) {
        throw UsageError(fmt::format("--mod: \"{}\" is not a name, \"=\" and a mass in Da, such as "
                                     "\"Oxidation (M)=15.994915\"",
                                     text));
    }
    return {text.substr(0, equals), *mass};
}

ModificationMasses ParseModifications(const std::vector<std::string>& texts)
{
    ModificationMasses masses;
    for (const std::string& text : texts) {
        const auto [written, mass] = ParseModification(text);
        std::set<std::string> names = {WithAnyTerm(written)};
        for (const ModificationName& name : NamesBySite(written)) {
            names.insert(FullNameOf(name));
        }
        for (const std::string& name : names) {
            const auto [entry, isNew] = masses.emplace(name, mass);
            if (!isNew && entry->second != mass) {
                throw UsageError(
                    fmt::format("--mod: \"{}\" is given twice, with two masses", name));
            }
        }
    }
    return masses;
}

std::set<std::string> NamesGiven(const std::vector<std::string>& texts)
{
    std::set<std::string> names;
    for (const std::string& text : texts) {
        names.insert(WithAnyTerm(ParseModification(text).first));
    }
    return names;
}

std::map<std::string, std::string> ParseDatasets(const std::vector<std::string>& texts,
                                                 const std::vector<std::string>& spectra)
{
    std::map<std::string, std::string> datasets;
    for (const std::string& text : texts) {
        const std::size_t equals = text.rfind('=');
        if (equals == std::string::npos || equals == 0) {
            throw UsageError(
                fmt::format("--dataset: \"{}\" is not the name of a dataset, \"=\" and "
                            "a file of spectra, such as \"/data/run.raw=run.mgf\"",
                            text));
        }
        const std::string name = text.substr(0, equals);
        const std::string file = text.substr(equals + 1);
        const auto hit = std::find_if(spectra.begin(), spectra.end(), [&](const std::string& path) {
            std::error_code ignored;
            return path == file || std::filesystem::path(path).filename() == file
                   || std::filesystem::equivalent(path, file, ignored);
        });
        if (hit == spectra.end()) {
            throw UsageError(
                fmt::format("--dataset: \"{}\" is no file of spectra of this run", file));
        }
        if (!datasets.emplace(name, *hit).second) {
            throw UsageError(fmt::format("--dataset: \"{}\" is given twice", name));
        }
    }
    return datasets;
}

double ParseMinMatch(const std::string& text)
{
    const std::optional<double> value = ParseNumber(WithoutBlanks(text));
    if (!value || *value < 0.0 || *value > 1.0) {
        throw UsageError(
            fmt::format("--min-match: \"{}\" is not a share from 0 to 1, such as 0.9", text));
    }
    return *value;
}

double ParseMinShift(const std::string& text)
{
    const std::optional<double> value = ParseNumber(WithoutBlanks(text));
    if (!value || *value < 0.0) {
        throw UsageError(
            fmt::format("--min-shift: \"{}\" is not a mass in Da of 0 or more, such as 0.5", text));
    }
    return *value;
}

PepIdentType::EPepIdentType ParseFormat(const std::string& text)
{
    const PepIdentType::EPepIdentType type = PepIdentType::nameToType(text);
    if (!HasReader(type)) {
        throw UsageError(
            fmt::format("--format: \"{}\" is not a format that can be read; choose from {}", text,
                        FormatChoices()));
    }
    return type;
}

std::string FormatChoices()
{
    std::string choices;
    // The names end where typeToName has none.
    for (int value = 1;
         !PepIdentType::typeToName(static_cast<PepIdentType::EPepIdentType>(value)).empty();
         ++value) {
        const auto type = static_cast<PepIdentType::EPepIdentType>(value);
        if (HasReader(type)) {
            choices += choices.empty() ? "\"" : ", \"";
            choices += PepIdentType::typeToName(type) + "\"";
        }
    }
    return choices;
}

std::string WithAnyTerm(const std::string& name)
{
    std::string result = name;
    for (const char* const term : {" (N-term", " (C-term"}) {
        const std::size_t hit = result.find(term);
        if (hit != std::string::npos) {
            result.insert(hit + 2, "Any ");
        }
    }
    return result;
}

char LetterOf(Peak::EIonType ion)
{
    return kIonLetters.at(static_cast<std::size_t>(ion) - 1);
}

std::string TextOf(const Tolerance& tolerance)
{
    return fmt::format("{} {}", tolerance.value,
                       static_cast<const std::string&>(TolType::typeToName(tolerance.unit)));
}

} // namespace pelgrin
