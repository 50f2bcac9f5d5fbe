#include "run/JoinText.h"

#include <cmath>
#include <iterator>
#include <vector>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "common/Terminal.h"
#include "common/Words.h"
#include "run/Counts.h"

namespace pelgrin {

namespace {

using Json = nlohmann::ordered_json;

// ---- Lines --------------------------------------------------------------------

/// A number below a title that stands once.
class Lines {
public:
    explicit Lines(std::string& text) : text_(text) {}

    void Begin(const char* title) { title_ = title; }
    void Add(std::uint64_t count, const std::string& what)
    {
        if (count > 0) {
            fmt::format_to(std::back_inserter(text_), "{:<13}{:>9}   {}\n", title_, count, what);
            title_ = "";
        }
    }

private:
    std::string& text_;
    const char* title_ = "";
};

std::string Quoted(const std::string& name)
{
    constexpr std::size_t kLongest = 100;
    return "\"" + OneLine(Clip(name, kLongest)) + (name.size() > kLongest ? "..." : "") + "\"";
}

std::string PercentText(std::uint64_t met, std::uint64_t read)
{
    const double share = read == 0 ? 1.0 : static_cast<double>(met) / static_cast<double>(read);
    return fmt::format("of {} matches, {:.1f} %", read, 100 * share);
}

void AddKinds(Lines& lines, const std::array<std::uint64_t, kMeetKinds>& met)
{
    for (std::size_t i = 0; i < kMeetKinds; ++i) {
        lines.Add(met[i], std::string("by ") + TextOf(static_cast<MeetKind>(i)));
    }
}

void AddDeviations(Lines& lines, const std::array<std::uint64_t, kDeviations>& deviations)
{
    for (std::size_t i = 0; i < kDeviations; ++i) {
        lines.Add(deviations[i], TextOf(static_cast<Deviation>(i)));
    }
}

void AddExamples(std::string& text, const JoinedFile& file)
{
    for (const JoinedFile::Unknown& example : file.unknownExamples) {
        std::vector<std::string> names;
        for (const std::string& name : example.nearest) {
            names.push_back(Quoted(name));
        }
        text += fmt::format("  {} met nothing{}{}\n", Quoted(example.name),
                            names.empty() ? "" : "; near it are ", fmt::join(names, ", "));
    }
    for (const JoinedFile::Ambiguous& example : file.ambiguousExamples) {
        text += fmt::format("  {} is the name of {} spectra{}{}{}\n", Quoted(example.name),
                            example.spectra == 0 ? std::string("several")
                                                 : std::to_string(example.spectra),
                            example.lines.empty() ? "" : ", lines ", fmt::join(example.lines, ", "),
                            example.spectra > example.lines.size() ? " and more" : "");
    }
}

void AddFile(std::string& text, const JoinedFile& file)
{
    text += fmt::format("\n{}\n", OneLine(file.file));
    Lines lines(text);
    lines.Begin("  matches");
    lines.Add(file.read, "of the results");
    lines.Begin("  met");
    AddKinds(lines, file.met);
    lines.Begin("  not met");
    lines.Add(file.unknown, TextOf(Reason::SpectrumUnknown));
    lines.Add(file.ambiguous, TextOf(Reason::SpectrumNameAmbiguous));
    lines.Add(file.ambiguousThatFitOne, "of these would fit one of the spectra by m/z and charge");
    lines.Begin("  precursor");
    AddDeviations(lines, file.deviations);
    if (const auto median = file.MedianPpm()) {
        const double rounded = std::round(*median * 100) / 100 + 0.0; // no -0.00
        text += fmt::format("  median     {:>9.2f}   ppm, of those within 100 ppm\n", rounded);
    }
    lines.Begin("  ambiguous");
    lines.Add(file.ambiguousNames, "names that several spectra of the file have");
    AddExamples(text, file);
}

// ---- JSON ---------------------------------------------------------------------

Json JsonOf(const std::array<std::uint64_t, kDeviations>& deviations,
            const std::optional<double>& median)
{
    Json json = Json::object();
    for (std::size_t i = 0; i < kDeviations; ++i) {
        json[KeyOf(static_cast<Deviation>(i))] = deviations[i];
    }
    json["median_ppm"] = median ? Json(*median) : Json();
    return json;
}

Json ExamplesOf(const JoinedFile& file)
{
    Json unknown = Json::array();
    for (const JoinedFile::Unknown& example : file.unknownExamples) {
        unknown.push_back({{"name", example.name}, {"nearest", example.nearest}});
    }
    Json ambiguous = Json::array();
    for (const JoinedFile::Ambiguous& example : file.ambiguousExamples) {
        ambiguous.push_back({{"name", example.name},
                             {"spectra", example.spectra == 0 ? Json() : Json(example.spectra)},
                             {"lines", example.lines}});
    }
    return {{KeyOf(Reason::SpectrumUnknown), unknown},
            {KeyOf(Reason::SpectrumNameAmbiguous), ambiguous}};
}

Json JsonOf(const JoinedFile& file)
{
    Json met = {{"total", file.Met()}};
    for (std::size_t i = 0; i < kMeetKinds; ++i) {
        met[KeyOf(static_cast<MeetKind>(i))] = file.met[i];
    }
    return {{"file", file.file},
            {"records", file.read},
            {"met", met},
            {"not_met",
             {{"total", file.unknown + file.ambiguous},
              {KeyOf(Reason::SpectrumUnknown), file.unknown},
              {KeyOf(Reason::SpectrumNameAmbiguous), file.ambiguous},
              {"ambiguous_that_fit_one", file.ambiguousThatFitOne}}},
            {"precursor_mz", JsonOf(file.deviations, file.MedianPpm())},
            {"ambiguous_names", file.ambiguousNames},
            {"examples", ExamplesOf(file)}};
}

} // namespace

std::string FullTextOf(const JoinAudit& audit)
{
    std::string text = fmt::format("Met          {:>9}   {}\n", audit.Met(),
                                   PercentText(audit.Met(), audit.Read()));
    for (const JoinedFile& file : audit.Files()) {
        AddFile(text, file);
    }
    if (!audit.WithoutFile().empty()) {
        text += fmt::format("\n{}\n", TextOf(Reason::DatasetNotGiven));
        Lines lines(text);
        for (const auto& [name, records] : audit.WithoutFile()) {
            lines.Add(records, Quoted(name));
        }
    }
    return text;
}

std::string ShortTextOf(const JoinAudit& audit)
{
    std::array<std::uint64_t, kMeetKinds> met{};
    std::array<std::uint64_t, kDeviations> deviations{};
    for (const JoinedFile& file : audit.Files()) {
        for (std::size_t i = 0; i < kMeetKinds; ++i) {
            met[i] += file.met[i];
        }
        for (std::size_t i = 0; i < kDeviations; ++i) {
            deviations[i] += file.deviations[i];
        }
    }
    std::string text;
    Lines lines(text);
    lines.Begin("Met");
    AddKinds(lines, met);
    lines.Begin("Precursors");
    AddDeviations(lines, deviations);
    return text;
}

Json JsonOf(const JoinAudit& audit, const std::optional<double>& minMatch)
{
    Json files = Json::array();
    for (const JoinedFile& file : audit.Files()) {
        files.push_back(JsonOf(file));
    }
    return {{"records", audit.Read()},
            {"met", audit.Met()},
            {"min_match", minMatch ? Json(*minMatch) : Json()},
            {"files", files},
            {KeyOf(Reason::DatasetNotGiven), Json(audit.WithoutFile())}};
}

} // namespace pelgrin
