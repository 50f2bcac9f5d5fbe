#include "files/FileLines.h"
#include "files/PeakLine.h"
#include "prepare/OtherCopies.h"
#include "prepare/TextOutput.h"

#include <fmt/format.h>

#include "common/Failure.h"

namespace pelgrin {

void CopyText(const std::string& source, const std::string& target)
{
    FileLines lines(source, FileLines::Mode::Text);
    FileLines::Line line;
    TextOutput output(target);
    while (lines.Next(line)) {
        if (line.begin.size() != line.length) {
            throw Failure(fmt::format("{}:{}: expected lines of at most {} characters without NUL",
                                      source, line.number, kLongestLine));
        }
        output.Line(WithoutReturns(line.begin));
    }
    output.Finish();
}

} // namespace pelgrin
