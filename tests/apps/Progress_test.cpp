// Progress in each of its forms, by a clock that the test winds.
#include <sstream>

#include <nlohmann/json.hpp>

#include "common/Progress.h"
#include "support/Support.h"

namespace pelgrin::test {
namespace {

using Form = ProgressStyle::Form;

/// What was written while a step of so many parts, each of so many seconds, went on.
class Watched {
public:
    std::string Run(Form form, std::uint64_t parts, double seconds, std::uint64_t done)
    {
        {
            Progress progress("annotating", parts, Style(form));
            for (std::uint64_t i = 0; i < done; ++i) {
                now_ += seconds;
                progress.Step();
            }
        }
        return text_;
    }

    ProgressStyle Style(Form form)
    {
        return {form, [this](const std::string& text) { text_ += text; },
                [this] {
                    ++looks;
                    return now_;
                }};
    }

    std::uint64_t looks = 0;

private:
    std::string text_;
    double now_ = 100.0;
};

struct Case {
    const char* reason;
    Form form;
    std::uint64_t parts;
    double seconds;
    std::uint64_t done;
    const char* written;
};

TEST(Progress, WritesWhatItsFormSays)
{
    const std::vector<Case> cases = {
        {"none is silent, however long", Form::None, 4, 100.0, 4, ""},
        {"a short step needs no lines", Form::Sparse, 4, 1.0, 4, ""},
        {"a long step has a line every ten seconds, and then one at the end", Form::Sparse, 4, 6.0,
         4,
         "pelgrin: progress: annotating: 2 of 4 (50%)\n"
         "pelgrin: progress: annotating: 4 of 4 (100%)\n"
         "pelgrin: progress: annotating: 4 of 4 (100%)\n"},
        {"plain has a start and an end, however short", Form::Plain, 4, 0.0, 4,
         "pelgrin: progress: annotating: 4 to do\n"
         "pelgrin: progress: annotating: 4 of 4 (100%)\n"},
        {"a step that was cut short does not claim more", Form::Plain, 4, 0.0, 1,
         "pelgrin: progress: annotating: 4 to do\n"
         "pelgrin: progress: annotating: 1 of 4 (25%)\n"},
        {"nothing to do is all done", Form::Plain, 0, 0.0, 0,
         "pelgrin: progress: annotating: 0 to do\n"
         "pelgrin: progress: annotating: 0 of 0 (100%)\n"},
        {"a total counted too low stays at 100", Form::Plain, 2, 0.0, 3,
         "pelgrin: progress: annotating: 2 to do\n"
         "pelgrin: progress: annotating: 3 of 2 (100%)\n"},
        {"a bar is drawn again when its percentage changes, and erased", Form::Bar, 2, 1.0, 2,
         "\rannotating [###############               ]  50% (1/2)\x1b[K"
         "\rannotating [##############################] 100% (2/2)\x1b[K\r\x1b[K"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Watched().Run(c.form, c.parts, c.seconds, c.done), c.written) << c.reason;
    }
}

TEST(Progress, WritesJsonObjectsLineByLine)
{
    std::istringstream lines(Watched().Run(Form::Json, 3, 0.7, 3));
    std::vector<std::string> states;
    std::vector<std::uint64_t> done;
    for (std::string line; std::getline(lines, line);) {
        const auto object = nlohmann::json::parse(line);
        EXPECT_EQ(object["event"], "progress");
        EXPECT_EQ(object["task"], "annotating");
        EXPECT_EQ(object["total"], 3);
        states.push_back(object["state"]);
        done.push_back(object["done"]);
    }
    EXPECT_EQ(states, (std::vector<std::string>{"begin", "going on", "end"}));
    EXPECT_EQ(done, (std::vector<std::uint64_t>{0, 2, 3}));
}

TEST(Progress, LooksAtTheClockRarelyWhenStepsAreQuick)
{
    Watched watched;
    watched.Run(Form::Plain, 1000000, 1e-7, 1000000);
    EXPECT_LT(watched.looks, 60U);
}

TEST(Progress, LooksAtTheClockOftenWhenStepsAreSlow)
{
    Watched watched;
    watched.Run(Form::Plain, 100, 1.0, 100);
    EXPECT_GT(watched.looks, 100U);
}

TEST(Progress, MovesByMoreThanOneStep)
{
    Watched watched;
    Progress progress("bytes", 10, watched.Style(Form::None));
    progress.MoveTo(7);
    progress.Step();
    EXPECT_EQ(progress.Done(), 8U);
    EXPECT_EQ(progress.Total(), 10U);
}

} // namespace
} // namespace pelgrin::test
