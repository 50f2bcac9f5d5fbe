#include "common/Terminal.h"

#include <charconv>
#include <cstdint>
#include <iostream>
#include <optional>
#include <string_view>
#include <utility>

#include <spdlog/spdlog.h>

#include "common/Progress.h"

namespace pelgrin {

namespace {

struct RowCount {
    std::uint64_t done = 0;
    std::uint64_t total = 0;
};

/// "3000/18000 (16%)", as the library's counter of rows prints it.
std::optional<RowCount> RowCountOf(std::string_view text)
{
    RowCount count;
    const char* const end = text.data() + text.size();
    const auto done = std::from_chars(text.data(), end, count.done);
    if (done.ec != std::errc() || done.ptr == end || *done.ptr != '/') {
        return std::nullopt;
    }
    const auto total = std::from_chars(done.ptr + 1, end, count.total);
    const std::string_view rest = text.substr(static_cast<std::size_t>(total.ptr - text.data()));
    const bool isCount = total.ec == std::errc() && rest.size() > 4 && rest.substr(0, 2) == " ("
                         && rest.substr(rest.size() - 2) == "%)";
    return isCount ? std::optional<RowCount>(count) : std::nullopt;
}

/// Collects what is printed up to a line feed or a backspace: progress goes back
/// over its text with backspaces.
class LineFilter : public std::streambuf {
public:
    LineFilter() = default;
    LineFilter(const LineFilter&) = delete;
    LineFilter& operator=(const LineFilter&) = delete;
    ~LineFilter() override { EndText(); }

protected:
    int_type overflow(int_type value) override
    {
        if (traits_type::eq_int_type(value, traits_type::eof())) {
            return traits_type::not_eof(value);
        }
        const char c = traits_type::to_char_type(value);
        if (c == '\b') {
            isProgress_ = true;
            EndText();
        } else if (c == '\n') {
            EndText();
            isProgress_ = false;
        } else {
            text_ += c;
        }
        return value;
    }

private:
    void EndText()
    {
        const std::string text = std::exchange(text_, {});
        if (text.empty()) {
            return;
        }
        if (const auto count = RowCountOf(text)) {
            Show(*count);
        } else if (text.find_first_not_of(' ') == std::string::npos) {
            rows_.reset(); // progress erases itself at its end
            isProgress_ = false;
        } else if (isProgress_) {
            spdlog::debug("the library: {}", OneLine(text));
        } else {
            spdlog::warn("{}", OneLine(text));
        }
    }

    void Show(const RowCount& count)
    {
        if (!rows_ || rows_->Total() != count.total || rows_->Done() > count.done) {
            rows_.reset();
            rows_.emplace("rows of results", count.total);
        }
        rows_->MoveTo(count.done);
    }

    std::string text_;
    bool isProgress_ = false; ///< backspaces stand in the line
    std::optional<Progress> rows_;
};

} // namespace

std::string OneLine(std::string text)
{
    for (char& c : text) {
        if (static_cast<unsigned char>(c) < ' ' || c == '\x7f') {
            c = '?';
        }
    }
    return text;
}

LibraryOutput::LibraryOutput()
    : filter_(std::make_unique<LineFilter>()), former_(std::cout.rdbuf(filter_.get()))
{
}

LibraryOutput::~LibraryOutput()
{
    std::cout.rdbuf(former_);
}

} // namespace pelgrin
