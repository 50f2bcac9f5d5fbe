#include "util/Progress.h"

#include <limits>

#include "support/Support.h"

namespace Vorlan {
namespace {

using test::Repeat;

/// Everything printed for so many rows.
std::string ShownFor(std::uint64_t total, int rows)
{
    return test::OutputOf([total, rows] {
        Progress progress(console::Stream::Out, total);
        for (int row = 0; row < rows; ++row) {
            progress.Begin();
            progress.End();
        }
        progress.Finish();
    });
}

/// A text and the backspaces that set the cursor back over it.
std::string Shown(const std::string& text)
{
    return text + Repeat("\b", text.size());
}

/// The blanks and backspaces that erase text.
std::string Erased(const std::string& text)
{
    return Repeat(" ", text.size()) + Repeat("\b", text.size());
}

struct ProgressCase {
    const char* reason;
    std::uint64_t total;
    int rows;
    std::vector<std::string> texts;
};

const ProgressCase kProgressCases[] = {
    {"every 1000th row and the last",
     2500,
     2500,
     {"1000/2500 (40%)", "2000/2500 (80%)", "2500/2500 (100%)"}},
    {"the last row is a 1000th row, shown once",
     2000,
     2000,
     {"1000/2000 (50%)", "2000/2000 (100%)"}},
    {"one row", 1, 1, {"1/1 (100%)"}},
    {"the percentage is cut, not rounded", 1001, 1001, {"1000/1001 (99%)", "1001/1001 (100%)"}},
    {"a total of 0 shows 0 percent", 0, 1000, {"1000/0 (0%)"}},
    {"the largest total",
     std::numeric_limits<std::uint64_t>::max(),
     1000,
     {"1000/18446744073709551615 (0%)"}},
    {"a total counted too low", 3, 1000, {"3/3 (100%)", "1000/3 (33333%)"}},
    {"a total counted too high", 5000, 1500, {"1000/5000 (20%)"}},
    {"no rows, nothing shown", 10, 0, {}},
    {"too few rows, nothing shown", 10, 9, {}},
    {"no rows of none", 0, 0, {}},
};

TEST(Progress, ShowsEvery1000thRowAndRowTotal)
{
    for (const ProgressCase& c : kProgressCases) {
        std::string expected;
        for (const std::string& text : c.texts) {
            expected += Shown(text);
        }
        expected += c.texts.empty() ? "" : Erased(c.texts.back());
        EXPECT_EQ(ShownFor(c.total, c.rows), expected) << c.reason;
    }
}

TEST(Progress, BytesOf2500RowsAreTheseExactly)
{
    const std::string back15 = "\b\b\b\b\b\b\b\b\b\b\b\b\b\b\b";
    EXPECT_EQ(ShownFor(2500, 2500), "1000/2500 (40%)" + back15 + "2000/2500 (80%)" + back15
                                        + "2500/2500 (100%)" + back15 + "\b" + "                "
                                        + back15 + "\b");
}

TEST(Progress, TextStandsWhileTheRowIsWorkedOn)
{
    Progress progress(console::Stream::Out, 1);
    EXPECT_EQ(test::OutputOf([&] { progress.Begin(); }), "1/1 (100%)");
    EXPECT_EQ(test::OutputOf([&] { progress.End(); }), Repeat("\b", 10));
    EXPECT_EQ(test::OutputOf([&] { progress.Finish(); }), Erased("1/1 (100%)"));
}

TEST(Progress, GoesToTheStreamNamed)
{
    testing::internal::CaptureStderr();
    const std::string out = test::OutputOf([] {
        Progress progress(console::Stream::Err, 1);
        progress.Begin();
        progress.End();
        progress.Finish();
    });
    EXPECT_EQ(testing::internal::GetCapturedStderr(), Shown("1/1 (100%)") + Erased("1/1 (100%)"));
    EXPECT_EQ(out, "");
}

} // namespace
} // namespace Vorlan
