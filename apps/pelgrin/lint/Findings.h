// What stands in files against the rules: counted, with examples.
#ifndef PELGRIN_FINDINGS_H
#define PELGRIN_FINDINGS_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "files/FileKind.h"
#include "lint/Rules.h"

namespace pelgrin {

struct Finding {
    std::string path;       ///< of the file; a folder's findings name its files
    std::uint64_t line = 0; ///< from 1; 0: the file as a whole
    std::string what;
    std::string subject; ///< 'spectrum "run.1.1.2"'; may be empty
};

/// The findings of one rule: all are counted, the first ones kept.
struct RuleFindings {
    std::uint64_t count = 0;
    std::vector<Finding> examples;
};

struct FileFindings {
    std::string path;
    FileKind kind = FileKind::Unknown;
    std::string second;                 ///< the file that was looked at with it; may be empty
    std::map<Rule, RuleFindings> rules; ///< those with findings
    std::string failure;                ///< why it could not be read to its end; may be empty
};

/// Takes the findings of files, one file after the other.
class Findings {
public:
    /// Keeps so many examples of a rule and file; findings of ignored rules are
    /// not taken at all.
    explicit Findings(std::size_t examples, std::set<Rule> ignored = {});

    /// What is added next is about this file or folder.
    void Begin(const std::string& path, FileKind kind);
    /// The file at this path is looked at with the one that was begun.
    void SetSecond(const std::string& path) { files_.back().second = path; }
    /// The file at this path cannot be read, or not to its end.
    void SetFailure(const std::string& path, std::string reason);
    /// Of a file in the folder, or beside the file, that was begun: findings name
    /// this path until the next call. Empty: the path that was begun.
    void SetPath(std::string path) { path_ = std::move(path); }

    void Add(Rule rule, std::uint64_t line, std::string what, std::string subject = "");
    /// Takes a finding into a list that may be dropped or added later.
    void Defer(RuleFindings& list, std::uint64_t line, std::string what, std::string subject) const;
    void Add(Rule rule, RuleFindings&& deferred);

    const std::vector<FileFindings>& Files() const { return files_; }
    /// The file was looked at with another one, as peptides.txt with msms.txt.
    bool IsSecond(const std::string& path) const;
    std::uint64_t Total() const;

private:
    std::size_t examples_;
    std::set<Rule> ignored_;
    std::string path_;
    std::vector<FileFindings> files_;
};

} // namespace pelgrin

#endif // PELGRIN_FINDINGS_H
