// A text file that takes its place when it is whole.
#ifndef PELGRIN_TEXTOUTPUT_H
#define PELGRIN_TEXTOUTPUT_H

#include <fstream>
#include <string>
#include <string_view>

#include "files/NewFile.h"

namespace pelgrin {

class TextOutput {
public:
    /// Makes the folder of target when it is missing. Every member throws Failure
    /// with target when it cannot be written.
    explicit TextOutput(const std::string& target);

    void Write(std::string_view text);
    /// text and a line feed.
    void Line(std::string_view text);
    /// Puts the file in its place. Without it there will be none.
    void Finish();

private:
    void Check() const;

    std::string target_;
    NewFile file_;
    std::ofstream stream_;
};

} // namespace pelgrin

#endif // PELGRIN_TEXTOUTPUT_H
