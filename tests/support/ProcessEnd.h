// Calls that end the process.
#ifndef PELGRIN_TESTS_PROCESSEND_H
#define PELGRIN_TESTS_PROCESSEND_H

#include <cstdio>
#include <string>

#include "support/Support.h"

namespace Vorlan::test {

/// The call ends the process with status 1, having printed out on standard
/// output and nothing on standard error. It runs in a child process.
template <typename Call>
void ExpectEndOnOutput(Call call, const std::string& out)
{
    const TempFolder folder;
    const std::string path = folder.Write("out", "");
    const auto run = [&] {
        if (std::freopen(path.c_str(), "w", stdout) != nullptr) {
            call();
        }
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(1), testing::StrEq(""));
    EXPECT_EQ(ReadFile(path), out);
}

} // namespace Vorlan::test

#endif // PELGRIN_TESTS_PROCESSEND_H
