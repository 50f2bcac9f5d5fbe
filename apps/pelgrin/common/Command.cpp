#include "common/Command.h"

#include <cstdio>

#include "common/Failure.h"

namespace pelgrin {

void PrintOut(const std::string& text)
{
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()
        || std::fflush(stdout) != 0) {
        throw Failure("standard output: cannot be written");
    }
}

void PrintReport(const std::string& text)
{
    if (ReportIsWanted()) {
        PrintOut(text);
    }
}

} // namespace pelgrin
