#include "common/Terminal.h"

#include <cstdio>
#include <iostream>
#include <utility>

#include <unistd.h>

#include <fmt/format.h>
#include <spdlog/sinks/stdout_color_sinks.h>
#include <spdlog/spdlog.h>

namespace pelgrin {

namespace {

/// Collects lines and passes on those that are no progress.
class LineFilter : public std::streambuf {
public:
    LineFilter() = default;
    LineFilter(const LineFilter&) = delete;
    LineFilter& operator=(const LineFilter&) = delete;
    ~LineFilter() override { EndLine(); }

protected:
    int_type overflow(int_type value) override
    {
        if (traits_type::eq_int_type(value, traits_type::eof())) {
            return traits_type::not_eof(value);
        }
        const char c = traits_type::to_char_type(value);
        if (c == '\n') {
            EndLine();
        } else {
            line_ += c;
        }
        return value;
    }

private:
    void EndLine()
    {
        const bool isProgress = line_.find('\b') != std::string::npos || EndsInPercent();
        if (!isProgress && line_.find_first_not_of(' ') != std::string::npos) {
            spdlog::warn("{}", OneLine(line_));
        }
        line_.clear();
    }

    /// A first "row/total (percent%)", not yet overwritten when reading failed.
    bool EndsInPercent() const
    {
        return line_.size() > 2 && line_.compare(line_.size() - 2, 2, "%)") == 0;
    }

    std::string line_;
};

} // namespace

void SetUpMessages()
{
    auto logger = spdlog::stderr_color_st("pelgrin");
    logger->set_pattern("pelgrin: %^%l%$: %v");
    spdlog::set_default_logger(std::move(logger));
}

bool ErrorsGoToTerminal()
{
    return ::isatty(STDERR_FILENO) == 1;
}

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
{
    if (!ErrorsGoToTerminal()) {
        filter_ = std::make_unique<LineFilter>();
    }
    former_ = std::cout.rdbuf(filter_ ? filter_.get() : std::cerr.rdbuf());
}

LibraryOutput::~LibraryOutput()
{
    std::cout.rdbuf(former_);
    if (!filter_) {
        std::fputs("\r\x1b[K", stderr); // progress that was cut short
    }
}

ProgressBar::ProgressBar(std::string task, std::uint64_t total)
    : task_(std::move(task)), total_(total), visible_(ErrorsGoToTerminal())
{
}

ProgressBar::~ProgressBar()
{
    if (visible_ && shown_ <= 100) {
        std::fputs("\r\x1b[K", stderr);
    }
}

void ProgressBar::Step()
{
    ++done_;
    if (!visible_) {
        return;
    }
    const std::uint64_t percent = total_ == 0 ? 100 : 100 * done_ / total_;
    if (percent != shown_) {
        shown_ = percent;
        const std::string bar(static_cast<std::size_t>(percent * 30 / 100), '#');
        fmt::print(stderr, "\r{} [{:<30}] {:3}% ({}/{})", task_, bar, percent, done_, total_);
    }
}

} // namespace pelgrin
