#include <cstdlib>

#include <fmt/format.h>

#include "files/FileLines.h"
#include "lint/LineFlaws.h"
#include "lint/ResultLint.h"
#include "lint/TableLint.h"

namespace pelgrin {

namespace {

constexpr std::string_view kSection = "[Spectrum";

/// What may stand in front of a list; else nothing of it is read.
bool IsCount(std::string_view text)
{
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

/// Follows the reader, which takes the lines of a section by their places.
class Walk {
public:
    Walk(const std::string& path, Findings& findings)
        : lines_(path, FileLines::Mode::Text), findings_(findings)
    {
    }

    void Take()
    {
        bool hasSections = false;
        while (Next() && !Begins("[Search]")) {
            hasSections |= Begins(kSection);
        }
        if (!Begins("[Search]")) {
            findings_.Add(Rule::PFind28NoSearch, 0,
                          "no match is read; expected a line [Search] in front of the sections");
            return;
        }
        if (hasSections) {
            findings_.Add(Rule::PFind28NoSearch, line_.number,
                          "sections in front of it are not read; expected it before them");
        }
        Expect("InputPath=", 0);
        while (Next()) {
            while (Begins(kSection)) {
                section_ = line_.begin;
                TakeSection();
                if (!isBroken_) {
                    break;
                }
            }
        }
    }

private:
    bool Next()
    {
        if (isCut_ || !lines_.Next(line_)) {
            line_ = {};
            return false;
        }
        isCut_ = !LintLine(line_, findings_);
        return true;
    }

    bool Begins(std::string_view front) const
    {
        return line_.begin.compare(0, front.size(), front) == 0;
    }

    /// Goes to the line behind so many others and compares its key. Only the first
    /// one of a section that is wrong is told.
    bool Expect(std::string_view key, int skipped)
    {
        for (int i = 0; i <= skipped && !isBroken_; ++i) {
            const std::uint64_t before = line_.number;
            const bool isThere = Next();
            if (!isThere || Begins(kSection) || (i == skipped && !Begins(key))) {
                isBroken_ = true;
                const std::string found = isThere ? Shown(line_.begin) : "the end of the file";
                findings_.Add(Rule::PFind28Place, isThere ? line_.number : before,
                              i == skipped ? fmt::format("{}; expected {}", found, key)
                                           : fmt::format("{}; expected {} lines more and then {}",
                                                         found, skipped - i, key),
                              section_);
            }
        }
        LintBlanks(key);
        return !isBroken_;
    }

    /// Only names of modifications hold blanks. What stands behind the name of a
    /// spectrum is no part of it.
    void LintBlanks(std::string_view key)
    {
        constexpr std::string_view kBlanks = " \t\v\f\r";
        if (isBroken_ || key == "NO1_Modify_Name=" || key == "Input=") {
            return;
        }
        const std::string_view value = std::string_view(line_.begin).substr(key.size());
        const std::size_t last = value.find_last_not_of(kBlanks);
        const std::size_t first = value.find_first_not_of(kBlanks);
        if (last != std::string_view::npos && value.find_first_of(kBlanks, first) < last) {
            findings_.Add(Rule::PFind28Blank, line_.number,
                          fmt::format("{}; expected no blank", Shown(line_.begin)), section_);
        }
    }

    /// The number behind the key of the line.
    long Count(std::string_view key) const
    {
        return std::strtol(line_.begin.c_str() + key.size(), nullptr, 10);
    }

    /// Expects a line "KEY=2,A,B", whose number counts the entries behind it.
    bool ExpectList(std::string_view key, int skipped)
    {
        if (!Expect(key, skipped)) {
            return false;
        }
        const std::vector<std::string_view> pieces =
            PiecesOf(std::string_view(line_.begin).substr(key.size()), ',');
        const char* expected = nullptr;
        if (pieces.size() > 1 && !IsCount(pieces[0])) {
            expected = "a whole number in front of the first comma";
        } else if (Count(key) > 0 && static_cast<std::size_t>(Count(key)) + 1 != pieces.size()) {
            expected = "as many entries as the number says";
        }
        if (expected != nullptr) {
            findings_.Add(Rule::ListLength, line_.number,
                          fmt::format("{}; expected {}", Shown(line_.begin), expected), section_);
        }
        return Count(key) > 0;
    }

    void TakeSection()
    {
        isBroken_ = false;
        Expect("Input=", 0);
        Expect("Charge=", 0);
        Expect("MH=", 1);
        if (!Expect("ValidCandidate=", 2) || Count("ValidCandidate=") <= 0) {
            return;
        }
        Expect("NO1_EValue=", 1);
        Expect("NO1_MH=", 0);
        Expect("NO1_SQ=", 2);
        if (ExpectList("NO1_Proteins=", 1)) {
            ExpectList("NO1_PrevNextAA=", 1);
            ExpectList("NO1_ProStartPos=", 0);
        }
        if (ExpectList("NO1_Modify_Pos=", 0)) {
            ExpectList("NO1_Modify_Name=", 0);
        }
    }

    FileLines lines_;
    FileLines::Line line_;
    Findings& findings_;
    bool isCut_ = false;
    bool isBroken_ = false;
    std::string section_;
};

} // namespace

void LintPFind28(const std::string& path, Findings& findings)
{
    Walk(path, findings).Take();
}

} // namespace pelgrin
