// What others print in this process, and text as it may stand on a terminal.
#ifndef PELGRIN_TERMINAL_H
#define PELGRIN_TERMINAL_H

#include <memory>
#include <ostream>
#include <sstream>
#include <streambuf>
#include <string>

namespace pelgrin {

/// Text as one line: bytes below a blank become "?".
std::string OneLine(std::string text);

/// While it lives, everything printed on std::cout is kept from standard output,
/// which then holds only the report. The library's counter of rows becomes a
/// Progress, other lines that it writes over go to the log, and each line that
/// remains is a warning.
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

} // namespace pelgrin

#endif // PELGRIN_TERMINAL_H
