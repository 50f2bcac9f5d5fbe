#include "lint/FastaLint.h"

#include <fstream>
#include <functional>
#include <unordered_map>
#include <vector>

#include <fmt/format.h>

#include "common/Failure.h"
#include "files/FileLines.h"
#include "lint/LineFlaws.h"

namespace pelgrin {

namespace {

constexpr std::size_t kBlockSize = std::size_t{256} * 1024;
constexpr std::size_t kLongestHeader = std::size_t{64} * 1024; // of which a look is taken

/// Takes the bytes of a file: lines may have any length.
class Walk {
public:
    explicit Walk(Findings& findings) : findings_(findings) {}

    void Take(std::string_view block)
    {
        for (const char c : block) {
            if (c == '\n') {
                EndLine();
            } else {
                TakeByte(c);
            }
        }
    }

    void Finish()
    {
        EndLine();
        EndEntry();
        if (entry_ == 0 && !hasFalseBegin_) {
            findings_.Add(Rule::FastaNoHeader, 1,
                          "no header in the file; expected a line that begins with \">\"");
        }
    }

private:
    /// What a line is told of but once.
    struct Seen {
        bool hasReturn = false;
        std::uint64_t lowerCase = 0;
        std::uint64_t others = 0;
        char firstOther = '\0';
    };

    void TakeByte(char c)
    {
        if (returns_ > 0 && c != '\r' && !seen_.hasReturn) {
            seen_.hasReturn = true;
            findings_.Add(Rule::LoneReturn, line_,
                          "a carriage return inside the line; expected lines that end in a line "
                          "feed");
        }
        returns_ = c == '\r' ? returns_ + 1 : 0;
        if (atLineStart_) {
            atLineStart_ = false;
            BeginLine(c);
        }
        if (inHeader_) {
            if (header_.size() < kLongestHeader) {
                header_ += c;
            }
        } else {
            TakeResidue(c);
        }
    }

    void BeginLine(char first)
    {
        inHeader_ = first == '>';
        if (inHeader_) {
            EndEntry();
            entry_ = line_;
            residues_ = 0;
            header_.clear();
        } else if (entry_ == 0 && !hasFalseBegin_) {
            hasFalseBegin_ = true;
            findings_.Add(Rule::FastaNoHeader, line_,
                          "the file begins with something else; expected a header that begins "
                          "with \">\"");
        }
    }

    void TakeResidue(char c)
    {
        if (c >= 'A' && c <= 'Z') {
            ++residues_;
        } else if (c >= 'a' && c <= 'z') {
            ++seen_.lowerCase;
        } else if (c != ' ' && c != '\t' && c != '\r') {
            seen_.firstOther = seen_.others++ == 0 ? c : seen_.firstOther;
        }
    }

    void EndLine()
    {
        if (!atLineStart_ && inHeader_) {
            TellHeader();
        }
        if (seen_.lowerCase > 0) {
            findings_.Add(Rule::FastaLowerCase, line_,
                          fmt::format("{} lower-case letters; expected A to Z", seen_.lowerCase),
                          subject_);
        }
        if (seen_.others > 0) {
            findings_.Add(Rule::FastaOtherCharacter, line_,
                          fmt::format("{} other characters, the first one {}; expected A to Z",
                                      seen_.others, Shown({&seen_.firstOther, 1})),
                          subject_);
        }
        seen_ = {};
        returns_ = 0;
        atLineStart_ = true;
        ++line_;
    }

    void TellHeader()
    {
        header_.erase(header_.find_last_not_of('\r') + 1); // npos + 1 is 0
        const std::string_view text = std::string_view(header_).substr(1);
        const std::size_t blank = text.find(' ');
        const std::string_view accession = text.substr(0, blank);
        subject_ = "protein " + Shown(accession);
        if (accession.empty()) {
            findings_.Add(Rule::FastaEmptyAccession, line_,
                          fmt::format("{}; expected an accession behind \">\"", Shown(header_)));
            return;
        }
        if (accession.find('\t') != std::string_view::npos) {
            findings_.Add(Rule::FastaTab, line_, "a tab; expected a blank behind the accession",
                          subject_);
        }
        if (blank != std::string_view::npos
            && text.find_first_of("<&\x01", blank) != std::string_view::npos) {
            findings_.Add(Rule::FastaDescription, line_,
                          fmt::format("{} in the description; expected no \"<\", \"&\" or "
                                      "character 1",
                                      Shown(text.substr(text.find_first_of("<&\x01", blank), 1))),
                          subject_);
        }
        const auto [known, isNew] =
            accessions_.try_emplace(std::hash<std::string_view>()(accession), line_);
        if (!isNew) {
            findings_.Add(
                Rule::FastaRepeatedAccession, line_,
                fmt::format("the accession of line {}; expected one of its own", known->second),
                subject_);
        }
    }

    void EndEntry()
    {
        if (entry_ != 0 && residues_ == 0) {
            findings_.Add(Rule::FastaNoResidues, entry_, "no residues; expected letters A to Z",
                          subject_);
        }
    }

    Findings& findings_;
    std::uint64_t line_ = 1;
    bool atLineStart_ = true;
    bool inHeader_ = false;
    bool hasFalseBegin_ = false;
    std::uint64_t returns_ = 0; ///< carriage returns in a row that end the line so far
    Seen seen_;
    std::string header_;
    std::string subject_;
    std::uint64_t entry_ = 0; ///< line of its header; 0 none yet
    std::uint64_t residues_ = 0;
    std::unordered_map<std::size_t, std::uint64_t> accessions_; ///< hash -> line
};

} // namespace

void LintFasta(const std::string& path, Findings& findings)
{
    CheckReadable(path);
    std::ifstream file(path, std::ios::binary);
    std::vector<char> block(kBlockSize);
    Walk walk(findings);
    for (bool isFirst = true; file; isFirst = false) {
        file.read(block.data(), static_cast<std::streamsize>(block.size()));
        const std::string_view bytes(block.data(), static_cast<std::size_t>(file.gcount()));
        walk.Take(bytes.substr(isFirst && BeginsWithMark(bytes) ? 3 : 0));
    }
    if (file.bad()) {
        throw Failure(fmt::format("{}: cannot be read to its end", path));
    }
    walk.Finish();
}

} // namespace pelgrin
