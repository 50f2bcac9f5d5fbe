// LineReader against a reader that holds the whole file in memory.
//
// The first line of the input is a script, the rest the file. The script begins
// with 't' for text mode or anything else for binary mode; then
//   n  Next        f<char>    NextBeginningWith, in binary mode
//   w  NextWhole   s<number>  Seek to a byte offset
//   o  Seek to where the reader stands
//   a  Skip the first whole line of those Ahead
//   h  NextOfAnyLength
// At its end the remaining lines are read with Next.
#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "FuzzSupport.h"
#include "util/LineReader.h"

namespace {

using namespace Vorlan;

/// The rules of LineReader.h, word for word.
class SlowLines {
public:
    SlowLines(const std::string& file, bool isText) : file_(file), isText_(isText)
    {
        // Only at the opening: Seek goes to any byte, that of the mark included.
        if (isText_ && file_.compare(0, 3, "\xEF\xBB\xBF") == 0) {
            offset_ = 3;
        }
    }

    bool NextOfAnyLength(std::string& line)
    {
        line.clear();
        if (failed_ || offset_ >= file_.size()) {
            failed_ = true;
            return false;
        }
        const std::size_t begin = static_cast<std::size_t>(offset_);
        const std::size_t feed = file_.find('\n', begin);
        const bool hasFeed = feed != std::string::npos;
        line = file_.substr(begin, hasFeed ? feed - begin : std::string::npos);
        offset_ += line.size() + (hasFeed ? 1 : 0);
        if (isText_ && hasFeed && !line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        return true;
    }

    bool Next(std::string& line)
    {
        if (!NextOfAnyLength(line)) {
            return false;
        }
        isCut_ = line.size() > LineReader::kMaxLineLength;
        if (isCut_) {
            line.resize(LineReader::kMaxLineLength);
            failed_ = true;
        }
        line.resize(std::min(line.find('\0'), line.size())); // a NUL ends it
        return true;
    }

    bool NextWhole(std::string& line) { return Next(line) && !isCut_; }

    bool NextBeginningWith(char first, std::string& line)
    {
        while (NextWhole(line)) {
            if (FirstOf(line) == first) {
                return true;
            }
        }
        return false;
    }

    void Seek(std::uint64_t offset)
    {
        offset_ = offset;
        failed_ = false;
    }

    bool Failed() const { return failed_; }
    std::uint64_t Offset() const { return offset_; }

    /// The bytes from here on; none behind a failure.
    std::string_view Rest() const
    {
        return failed_ || offset_ > file_.size() ? std::string_view()
                                                 : std::string_view(file_).substr(offset_);
    }

private:
    const std::string& file_;
    bool isText_;
    std::uint64_t offset_ = 0;
    bool failed_ = false;
    bool isCut_ = false;
};

/// Both readers, doing the same.
class Pair {
public:
    Pair(const std::string& path, const std::string& file, bool isText)
        : isText_(isText), slow_(file, isText)
    {
        const auto mode = isText ? LineReader::Mode::Text : LineReader::Mode::Binary;
        fuzz::Check(reader_.Open(path, mode), "the file opens");
        CompareState();
    }

    void Run(std::string_view script)
    {
        for (std::size_t i = 1; i < script.size(); ++i) {
            switch (script[i]) {
            case 'n': Next(); break;
            case 'w': NextWhole(); break;
            case 'h': NextOfAnyLength(); break;
            case 'o': Seek(reader_.Offset()); break;
            case 'a': SkipAhead(); break;
            case 's': Seek(NumberAt(script, i + 1)); break;
            case 'f':
                if (i + 1 < script.size()) {
                    NextBeginningWith(script[++i]);
                }
                break;
            default: break;
            }
        }
        while (Next()) {
        }
    }

private:
    /// Digits modulo 2^64; 0 without any.
    static std::uint64_t NumberAt(std::string_view script, std::size_t i)
    {
        std::uint64_t number = 0;
        for (; i < script.size() && script[i] >= '0' && script[i] <= '9'; ++i) {
            number = 10 * number + static_cast<std::uint64_t>(script[i] - '0');
        }
        return number;
    }

    bool Next() { return Compare(reader_.Next(seen_), slow_.Next(expected_)); }

    void NextWhole() { Compare(reader_.NextWhole(seen_), slow_.NextWhole(expected_)); }

    void NextOfAnyLength()
    {
        std::string line;
        const bool hasLine = reader_.NextOfAnyLength(line);
        seen_ = line;
        Compare(hasLine, slow_.NextOfAnyLength(expected_));
        seen_ = {};
    }

    void NextBeginningWith(char first)
    {
        // FirstOf gives NUL for an empty line: no line begins with it.
        if (!isText_ && first != '\0') {
            Compare(reader_.NextBeginningWith(first, seen_),
                    slow_.NextBeginningWith(first, expected_));
        }
    }

    void SkipAhead()
    {
        const std::string_view ahead = reader_.Ahead();
        fuzz::Check(slow_.Rest().compare(0, ahead.size(), ahead) == 0, "Ahead is what comes next");
        const std::size_t feed = ahead.find('\n');
        if (feed != std::string_view::npos) {
            reader_.Skip(feed + 1);
            slow_.Seek(slow_.Offset() + feed + 1);
            CompareState();
        }
    }

    void Seek(std::uint64_t offset)
    {
        reader_.Seek(offset);
        slow_.Seek(offset);
        CompareState();
    }

    bool Compare(bool hasSeen, bool hasExpected)
    {
        fuzz::Check(hasSeen == hasExpected, "both readers have a line, or none");
        if (hasSeen) {
            fuzz::CheckSame(seen_, expected_, "both readers have the same line");
        }
        CompareState();
        return hasSeen;
    }

    void CompareState()
    {
        fuzz::Check(reader_.Failed() == slow_.Failed(), "both readers failed, or none");
        // A reader that failed stands nowhere.
        fuzz::Check(reader_.Failed() || reader_.Offset() == slow_.Offset(),
                    "both readers stand at the same offset");
    }

    bool isText_;
    LineReader reader_;
    SlowLines slow_;
    std::string_view seen_;
    std::string expected_;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static fuzz::MemoryFile file;
    const std::string_view input = fuzz::TextOf(data, size);
    const std::size_t feed = input.find('\n');
    const std::string_view script = input.substr(0, feed);
    const std::string text =
        feed == std::string_view::npos ? std::string() : fuzz::Expanded(input.substr(feed + 1));
    file.Write(text);
    Pair(file.Path(), text, FirstOf(script) == 't').Run(script);
    return 0;
}
