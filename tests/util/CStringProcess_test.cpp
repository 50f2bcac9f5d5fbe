#include "CStringProcess.h"

#include "support/Support.h"

namespace Vorlan {
namespace {

std::string Trimmed(std::string text)
{
    CStringProcess::Trim(text);
    return text;
}

TEST(CStringProcess, B01_TrimOfBlanksOnlyKeepsTheLastOne)
{
    EXPECT_EQ(Trimmed("   "), " ");
    EXPECT_EQ(Trimmed("\r\n"), "\n");
    EXPECT_EQ(Trimmed("\t"), "\t");
    EXPECT_EQ(Trimmed(""), "");
}

} // namespace
} // namespace Vorlan
