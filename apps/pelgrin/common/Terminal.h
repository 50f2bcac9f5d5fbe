// What stands on the terminal during a run: messages, progress, and what the
// library prints.
#ifndef PELGRIN_TERMINAL_H
#define PELGRIN_TERMINAL_H

#include <cstdint>
#include <memory>
#include <ostream>
#include <sstream>
#include <streambuf>
#include <string>

namespace pelgrin {

/// Messages go to standard error, as "pelgrin: warning: text".
void SetUpMessages();

bool ErrorsGoToTerminal();

/// Text as one line: bytes below a blank become "?".
std::string OneLine(std::string text);

/// While it lives, everything printed on std::cout goes to standard error: as
/// it stands on a terminal, else without progress (lines with backspaces), each
/// remaining line as a warning. Standard output then holds only the report.
class LibraryOutput {
public:
    LibraryOutput();
    ~LibraryOutput();
    LibraryOutput(const LibraryOutput&) = delete;
    LibraryOutput& operator=(const LibraryOutput&) = delete;

private:
    std::unique_ptr<std::streambuf> filter_;
    std::streambuf* former_;
};

/// While it lives, what is printed on a stream is kept from it.
class Captured {
public:
    explicit Captured(std::ostream& stream) : stream_(stream), former_(stream.rdbuf(&text_)) {}
    ~Captured() { stream_.rdbuf(former_); }
    Captured(const Captured&) = delete;
    Captured& operator=(const Captured&) = delete;

    std::string Text() const { return text_.str(); }

private:
    std::stringbuf text_;
    std::ostream& stream_;
    std::streambuf* former_;
};

/// A bar on standard error, only when that is a terminal.
class ProgressBar {
public:
    ProgressBar(std::string task, std::uint64_t total);
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    void Step();

private:
    std::string task_;
    std::uint64_t total_;
    std::uint64_t done_ = 0;
    std::uint64_t shown_ = 101; ///< percent shown last
    bool visible_;
};

} // namespace pelgrin

#endif // PELGRIN_TERMINAL_H
