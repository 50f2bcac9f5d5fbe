// What a call prints on both streams.
#ifndef PELGRIN_TESTS_PRINTED_H
#define PELGRIN_TESTS_PRINTED_H

#include <string>

#include <gtest/gtest.h>

namespace Vorlan::test {

struct Printed {
    std::string out;
    std::string err;
};

template <typename Call>
Printed PrintedBy(Call call)
{
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    call();
    return {testing::internal::GetCapturedStdout(), testing::internal::GetCapturedStderr()};
}

} // namespace Vorlan::test

#endif // PELGRIN_TESTS_PRINTED_H
