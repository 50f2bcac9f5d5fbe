#include "lint/FindingsText.h"

#include <algorithm>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "common/Terminal.h"
#include "common/TextTable.h"

namespace pelgrin {

using Json = nlohmann::ordered_json;

namespace {

struct RuleCount {
    std::uint64_t findings = 0;
    std::uint64_t files = 0;
};

std::map<Rule, RuleCount> CountsOf(const Findings& findings)
{
    std::map<Rule, RuleCount> counts;
    for (const FileFindings& file : findings.Files()) {
        for (const auto& [rule, list] : file.rules) {
            counts[rule].findings += list.count;
            ++counts[rule].files;
        }
    }
    return counts;
}

std::string LineOf(Rule rule, const Finding& finding)
{
    const std::string place =
        finding.line == 0 ? finding.path : fmt::format("{}:{}", finding.path, finding.line);
    const std::string subject = finding.subject.empty() ? "" : " (" + finding.subject + ")";
    return OneLine(fmt::format("{}: {}: {}{}", place, TextsOf(rule).id, finding.what, subject))
           + "\n";
}

std::uint64_t FilesRead(const Findings& findings)
{
    const auto isRead = [](const FileFindings& file) {
        return file.failure.empty() || !file.rules.empty(); // as far as it goes
    };
    return static_cast<std::uint64_t>(
        std::count_if(findings.Files().begin(), findings.Files().end(), isRead));
}

/// "1 file", "2 files".
std::string CountOf(std::uint64_t count, const char* thing)
{
    return fmt::format("{} {}{}", count, thing, count == 1 ? "" : "s");
}

std::string CountsText(const Findings& findings)
{
    TextTable table({{"Rule"}, {"Findings", true}, {"Files", true}, {"What happens"}});
    for (const auto& [rule, count] : CountsOf(findings)) {
        table.Add({TextsOf(rule).id, std::to_string(count.findings), std::to_string(count.files),
                   TextsOf(rule).text});
    }
    return table.Text();
}

/// JSON wants UTF-8; files may hold any bytes.
std::string Dumped(const Json& document)
{
    return document.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

Json JsonOf(const RuleFindings& list)
{
    Json examples = Json::array();
    for (const Finding& finding : list.examples) {
        Json example = {{"path", finding.path}};
        if (finding.line != 0) {
            example["line"] = finding.line;
        }
        example["what"] = finding.what;
        if (!finding.subject.empty()) {
            example["subject"] = finding.subject;
        }
        examples.push_back(std::move(example));
    }
    return {{"count", list.count}, {"examples", std::move(examples)}};
}

} // namespace

std::string TextOf(const Findings& findings)
{
    std::string text;
    for (const FileFindings& file : findings.Files()) {
        for (const auto& [rule, list] : file.rules) {
            for (const Finding& finding : list.examples) {
                text += LineOf(rule, finding);
            }
            if (list.count > list.examples.size()) {
                text += fmt::format("{}: {}: and {} more\n", OneLine(file.path), TextsOf(rule).id,
                                    list.count - list.examples.size());
            }
        }
    }
    const std::string files = CountOf(FilesRead(findings), "file");
    if (text.empty()) {
        return "No findings in " + files + "\n";
    }
    return text + "\n" + CountsText(findings)
           + fmt::format("\n{} in {}\n", CountOf(findings.Total(), "finding"), files);
}

std::string JsonOf(const Findings& findings)
{
    Json files = Json::array();
    for (const FileFindings& file : findings.Files()) {
        Json rules = Json::object();
        for (const auto& [rule, list] : file.rules) {
            rules[TextsOf(rule).id] = JsonOf(list);
        }
        files.push_back(
            {{"path", file.path}, {"kind", KeyOf(file.kind)}, {"findings", std::move(rules)}});
        if (!file.failure.empty()) {
            files.back()["failure"] = file.failure;
        }
    }
    Json counts = Json::object();
    for (const auto& [rule, count] : CountsOf(findings)) {
        counts[TextsOf(rule).id] = count.findings;
    }
    return Dumped({{"files", std::move(files)},
                   {"counts", std::move(counts)},
                   {"findings", findings.Total()}});
}

std::string TextOfRules()
{
    TextTable table({{"Rule"}, {"What happens"}, {"Behaviour"}, {"pelgrin prepare"}});
    for (std::size_t i = 0; i < kRules; ++i) {
        const RuleTexts& texts = TextsOf(static_cast<Rule>(i));
        table.Add(
            {texts.id, texts.text, *texts.behaviour == '\0' ? "-" : texts.behaviour, texts.remedy});
    }
    return table.Text();
}

std::string JsonOfRules()
{
    Json rules = Json::array();
    for (std::size_t i = 0; i < kRules; ++i) {
        const RuleTexts& texts = TextsOf(static_cast<Rule>(i));
        rules.push_back({{"rule", texts.id},
                         {"text", texts.text},
                         {"behaviour", texts.behaviour},
                         {"prepare", texts.remedy}});
    }
    return Dumped({{"rules", std::move(rules)}});
}

} // namespace pelgrin
