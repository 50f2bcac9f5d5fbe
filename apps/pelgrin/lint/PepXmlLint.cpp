#include <cstdlib>

#include <fmt/format.h>

#include "common/Failure.h"
#include "common/Words.h"
#include "files/XmlTags.h"
#include "lint/LineFlaws.h"
#include "lint/ResultLint.h"
#include "lint/XmlLint.h"

namespace pelgrin {

using Vorlan::PepIdentType;

namespace {

constexpr std::string_view kRead[] = {"msms_run_summary",  "spectrum_query",
                                      "search_hit",        "search_score",
                                      "modification_info", "mod_aminoacid_mass"};

/// Follows what the library reads: the first run, of a query the first hit.
class Walk {
public:
    Walk(const std::string& path, PepIdentType::EPepIdentType format, Findings& findings)
        : path_(path), tags_(path), isThirdScore_(format == PepIdentType::MsFraggerPepXml),
          findings_(findings), markup_(findings)
    {
    }

    void Take()
    {
        while (tags_.Next()) {
            markup_.Take(tags_);
            TakeTag(tags_.Name());
        }
        markup_.Finish(tags_);
        EndQuery();
        if (runs_ == 0) {
            throw Failure(
                fmt::format("{}: expected pepXML with an element msms_run_summary", path_));
        }
    }

private:
    void TakeTag(std::string_view name)
    {
        if (name == "msms_run_summary") {
            TakeRun();
        } else if (runs_ != 1) {
            return;
        } else if (name == "spectrum_query") {
            TakeQuery();
        } else if (name == "/spectrum_query" || name == "/msms_run_summary") {
            EndQuery();
        } else if (name == "search_result") {
            ++results_;
        } else if (name == "search_hit") {
            TakeHit();
        } else if (isInHit_) {
            TakeInHit(name);
        }
        for (const std::string_view read : kRead) {
            if (name == read && HasSingleQuotes(tags_.Text())) {
                Add(Rule::XmlSingleQuotes, fmt::format("{}; expected double quotes",
                                                       Shown("<" + std::string(tags_.Text()))));
            }
        }
    }

    void TakeRun()
    {
        EndQuery();
        if (++runs_ > 1) {
            Add(Rule::FurtherRun, fmt::format("run {} is not read; expected one in a file", runs_));
            return;
        }
        LintEscapes("base_name", {});
    }

    void TakeQuery()
    {
        EndQuery();
        isInQuery_ = true;
        query_ = tags_.Line();
        results_ = hits_ = 0;
        const std::string_view spectrum = tags_.Attribute("spectrum");
        subject_ = "spectrum " + Shown(spectrum);
        if (spectrum.find(' ') != std::string_view::npos) {
            Add(Rule::QueryName, "the name ends at its first blank; expected none");
        }
        LintEscapes("spectrum", {});
        LintNumber("assumed_charge");
        LintNumber("precursor_neutral_mass");
    }

    void TakeHit()
    {
        EndHit();
        if (results_ > 1 || ++hits_ > 1) {
            Add(Rule::FurtherHit, "a further hit is not read");
            return;
        }
        isInHit_ = true;
        hit_ = tags_.Line();
        scores_ = 0;
        hasExpect_ = false;
        thirdScore_.clear();
        peptideLength_ = tags_.Attribute("peptide").size();
        LintEscapes("protein", {"&apos;", "&gt;"});
        LintNumber("massdiff");
        const std::string_view text = tags_.Text();
        if (text.size() > 1 && text[text.size() - 2] == '/') {
            EndHit();
        }
    }

    void TakeInHit(std::string_view name)
    {
        if (name == "/search_hit") {
            EndHit();
        } else if (name == "alternative_protein") {
            Add(Rule::FurtherProtein,
                fmt::format("{} is not read", Shown(tags_.Attribute("protein"))));
        } else if (name == "search_score") {
            hasExpect_ |= tags_.Attribute("name") == "expect";
            thirdScore_ = ++scores_ == 3 ? std::string(tags_.Attribute("name")) : thirdScore_;
        } else if (name == "modification_info") {
            for (const char* const terminus : {"mod_nterm_mass", "mod_cterm_mass"}) {
                if (!tags_.Attribute(terminus).empty()) {
                    Add(Rule::TerminalMass,
                        fmt::format("{}=\"{}\"", terminus, tags_.Attribute(terminus)));
                }
            }
        } else if (name == "mod_aminoacid_mass") {
            LintPosition(std::string(tags_.Attribute("position")));
        }
    }

    void LintPosition(const std::string& text)
    {
        const long long position = std::strtoll(text.c_str(), nullptr, 10);
        if (position < 1 || static_cast<unsigned long long>(position) > peptideLength_) {
            Add(Rule::ModifiedPosition,
                fmt::format("position {}; expected 1 to {}", Shown(text), peptideLength_));
        }
    }

    void EndHit()
    {
        if (!isInHit_) {
            return;
        }
        isInHit_ = false;
        if (isThirdScore_ && thirdScore_ != "expect") {
            AddAt(hit_, Rule::SearchScore,
                  scores_ < 3
                      ? fmt::format("{} scores: the main score is 0; expected at least 3", scores_)
                      : fmt::format("the main score is {}, the third one; expected \"expect\"",
                                    Shown(thirdScore_)));
        } else if (!isThirdScore_ && !hasExpect_) {
            AddAt(hit_, Rule::SearchScore,
                  "the main score is 0; expected a search_score named expect");
        }
    }

    void EndQuery()
    {
        EndHit();
        if (isInQuery_ && hits_ == 0) {
            AddAt(query_, Rule::QueryWithoutHit, "no hit: no match");
        }
        isInQuery_ = false;
    }

    /// Of the escapes only known ones are resolved.
    void LintEscapes(const char* attribute, std::initializer_list<std::string_view> known)
    {
        const std::string_view value = tags_.Attribute(attribute);
        for (std::size_t hit = value.find('&'); hit != std::string_view::npos;
             hit = value.find('&', hit + 1)) {
            const std::size_t end = value.find(';', hit);
            if (end == std::string_view::npos) {
                return;
            }
            const std::string_view escape = value.substr(hit, end - hit + 1);
            bool isKnown = false;
            for (const std::string_view text : known) {
                isKnown |= escape == text;
            }
            if (!isKnown) {
                Add(Rule::XmlEntity,
                    fmt::format("{}: {} stays; expected the character", attribute, Shown(escape)));
                return;
            }
        }
    }

    void LintNumber(const char* attribute)
    {
        const std::string_view value = tags_.Attribute(attribute);
        if (!ParseNumber(WithoutBlanks(value))) {
            Add(Rule::NumberInPart,
                fmt::format("{}: {}; expected a number", attribute, Shown(value)));
        }
    }

    void Add(Rule rule, std::string what) { AddAt(tags_.Line(), rule, std::move(what)); }
    void AddAt(std::uint64_t line, Rule rule, std::string what)
    {
        findings_.Add(rule, line, std::move(what), isInQuery_ ? subject_ : "");
    }

    const std::string& path_;
    XmlTags tags_;
    bool isThirdScore_;
    Findings& findings_;
    XmlLint markup_;
    std::uint64_t runs_ = 0;
    bool isInQuery_ = false;
    std::uint64_t query_ = 0; ///< its line
    std::string subject_;
    std::uint64_t results_ = 0;
    std::uint64_t hits_ = 0; ///< of the first search_result
    bool isInHit_ = false;   ///< in the one that is read
    std::uint64_t hit_ = 0;  ///< its line
    std::uint64_t scores_ = 0;
    bool hasExpect_ = false;
    std::string thirdScore_; ///< its name
    std::size_t peptideLength_ = 0;
};

} // namespace

void LintPepXml(const std::string& path, PepIdentType::EPepIdentType format, Findings& findings)
{
    Walk(path, format, findings).Take();
}

} // namespace pelgrin
