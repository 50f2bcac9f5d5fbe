#include "lint/Findings.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

namespace pelgrin {

namespace {

bool IsSame(const std::string& a, const std::string& b)
{
    std::error_code ignored;
    return std::filesystem::equivalent(a, b, ignored);
}

} // namespace

Findings::Findings(std::size_t examples, std::set<Rule> ignored)
    : examples_(examples), ignored_(std::move(ignored))
{
}

void Findings::Begin(const std::string& path, FileKind kind)
{
    path_.clear();
    files_.push_back({path, kind, {}, {}, {}});
}

void Findings::SetFailure(const std::string& path, std::string reason)
{
    if (files_.empty() || files_.back().path != path) {
        Begin(path, FileKind::Unknown);
    }
    files_.back().failure = std::move(reason);
}

bool Findings::IsSecond(const std::string& path) const
{
    return std::any_of(files_.begin(), files_.end(), [&path](const FileFindings& file) {
        return !file.second.empty() && IsSame(file.second, path);
    });
}

void Findings::Add(Rule rule, std::uint64_t line, std::string what, std::string subject)
{
    if (ignored_.count(rule) == 0) {
        Defer(files_.back().rules[rule], line, std::move(what), std::move(subject));
    }
}

void Findings::Defer(RuleFindings& list, std::uint64_t line, std::string what,
                     std::string subject) const
{
    ++list.count;
    if (list.examples.size() < examples_) {
        list.examples.push_back({path_.empty() ? files_.back().path : path_, line, std::move(what),
                                 std::move(subject)});
    }
}

void Findings::Add(Rule rule, RuleFindings&& deferred)
{
    if (deferred.count == 0 || ignored_.count(rule) != 0) {
        return;
    }
    RuleFindings& all = files_.back().rules[rule];
    all.count += deferred.count;
    for (Finding& finding : deferred.examples) {
        if (all.examples.size() < examples_) {
            all.examples.push_back(std::move(finding));
        }
    }
}

std::uint64_t Findings::Total() const
{
    std::uint64_t total = 0;
    for (const FileFindings& file : files_) {
        for (const auto& [rule, findings] : file.rules) {
            total += findings.count;
        }
    }
    return total;
}

} // namespace pelgrin
