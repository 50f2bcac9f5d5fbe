#include "run/DatasetResolver.h"

#include <fmt/format.h>

#include "common/Failure.h"
#include "common/Words.h"

namespace pelgrin {

namespace {

struct NameRuleTexts {
    const char* key;
    const char* text;
};

constexpr NameRuleTexts kTexts[kNameRules] = {
    {"by_user", "as --dataset says"},
    {"by_file_name", "by its name"},
    {"by_file_name_behind_separator", "by the name behind its last separator"},
    {"by_file_name_without_ending", "without its ending"},
    {"by_file_name_cut_at_dot", "by the file's name up to its first dot"},
};

/// Endings of spectra files, of what they are made from, and of results.
constexpr std::string_view kEndings[] = {
    ".mgf", ".dta", ".mzml", ".mzxml", ".mzdata",  ".ms2",    ".mzml.gz", ".mgf.gz",
    ".raw", ".d",   ".wiff", ".baf",   ".pep.xml", ".pepxml", ".unknown",
};

std::string_view BehindSeparator(std::string_view name)
{
    const std::size_t separator = name.find_last_of("/\\");
    return separator == std::string_view::npos ? name : name.substr(separator + 1);
}

/// name without one ending; something must be left.
std::string_view WithoutOneEnding(std::string_view name)
{
    const std::string lower = Lower(name);
    for (const std::string_view ending : kEndings) {
        if (name.size() > ending.size()
            && lower.compare(name.size() - ending.size(), ending.size(), ending) == 0) {
            return name.substr(0, name.size() - ending.size());
        }
    }
    return name;
}

/// What a rule compares of a dataset name; empty: the rule has no say.
std::string KeyOfDataset(NameRule rule, const std::string& name)
{
    switch (rule) {
    case NameRule::UserGiven:
    case NameRule::Exact: return name;
    case NameRule::BehindSeparator: return std::string(BehindSeparator(name));
    case NameRule::WithoutEnding: return WithoutKnownEndings(name);
    default: break;
    }
    // A name that still has a dot was not cut: "run.1" is not "run.2".
    const std::string stem = WithoutKnownEndings(name);
    return stem.find('.') == std::string::npos ? stem : std::string();
}

/// What a rule compares of the name of a file.
std::string KeyOfFile(NameRule rule, const std::string& name)
{
    switch (rule) {
    case NameRule::WithoutEnding: return WithoutKnownEndings(name);
    case NameRule::CutAtDot: return name.substr(0, name.find('.'));
    default: return name;
    }
}

} // namespace

const char* KeyOf(NameRule rule)
{
    return kTexts[static_cast<std::size_t>(rule)].key;
}

const char* TextOf(NameRule rule)
{
    return kTexts[static_cast<std::size_t>(rule)].text;
}

std::string WithoutKnownEndings(std::string_view name)
{
    std::string_view stem = BehindSeparator(name);
    for (std::size_t before = 0; before != stem.size();) {
        before = stem.size();
        stem = WithoutOneEnding(stem);
    }
    return std::string(stem);
}

DatasetResolver::DatasetResolver(std::vector<std::string> fileNames, Given given)
    : fileNames_(std::move(fileNames)), given_(std::move(given))
{
    for (std::size_t rule = 0; rule < kNameRules; ++rule) {
        for (std::size_t file = 0; file < fileNames_.size(); ++file) {
            files_[rule][KeyOfFile(static_cast<NameRule>(rule), fileNames_[file])].push_back(file);
        }
    }
}

std::optional<DatasetResolver::Hit> DatasetResolver::Find(const std::string& datasetName) const
{
    for (std::size_t i = 0; i < kNameRules; ++i) {
        const auto rule = static_cast<NameRule>(i);
        if (const auto file = FindBy(rule, datasetName)) {
            return Hit{*file, rule};
        }
    }
    return std::nullopt;
}

std::optional<std::size_t> DatasetResolver::FindBy(NameRule rule,
                                                   const std::string& datasetName) const
{
    if (rule == NameRule::UserGiven) {
        const auto given = given_.find(datasetName);
        return given == given_.end() ? std::nullopt : std::optional(given->second);
    }
    const std::string key = KeyOfDataset(rule, datasetName);
    const auto& files = files_[static_cast<std::size_t>(rule)];
    const auto hit = key.empty() ? files.end() : files.find(key);
    if (hit == files.end()) {
        return std::nullopt;
    }
    if (hit->second.size() > 1) {
        throw Failure(fmt::format(
            "the dataset \"{}\" may be \"{}\" or \"{}\"; say which with --dataset \"{}=FILE\"",
            datasetName, fileNames_[hit->second[0]], fileNames_[hit->second[1]], datasetName));
    }
    return hit->second.front();
}

} // namespace pelgrin
