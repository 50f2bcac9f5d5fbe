// Closing tags are found where a plain search finds them, before and after the
// index is made.
#include "util/XmlClosingTags.h"

#include "support/Random.h"
#include "support/Support.h"

namespace Vorlan {
namespace {

using std::string_literals::operator""s;
using test::Random;

constexpr std::size_t kNone = XmlClosingTags::kNone;

std::size_t PlainFind(const std::string& text, std::size_t from, std::size_t end,
                      const std::string& name)
{
    const std::size_t place = text.substr(0, end).find("</" + name, from);
    return place == std::string::npos ? kNone : place;
}

/// Reads the text so often that the index is made.
void UseUp(XmlClosingTags& tags, const std::string& text)
{
    for (int i = 0; i < 20; ++i) {
        tags.Find(0, text.size(), "no such name");
    }
}

struct FindCase {
    const char* reason;
    std::string text;
    std::size_t from;
    std::size_t end;
    std::string name;
    std::size_t place;
};

const FindCase kFindCases[] = {
    {"the only one", "x</a>", 0, 5, "a", 1},
    {"the first of two", "</a></a>", 0, 8, "a", 0},
    {"from where it stands", "</a></a>", 4, 8, "a", 4},
    {"behind it", "</a></a>", 1, 8, "a", 4},
    {"behind all", "</a></a>", 5, 8, "a", kNone},
    {"a longer name", "</b></ab>", 0, 9, "a", 4},
    {"a shorter name", "</a>", 0, 4, "ab", kNone},
    {"a longer name in front", "</ab></a>", 0, 9, "a", 0},
    {"the empty name", "x</b>", 0, 5, "", 1},
    {"the empty name at the end of the text", "x</", 0, 3, "", 1},
    {"its last character is the last", "x</ab", 0, 5, "ab", 1},
    {"its last character lies behind the end", "x</ab", 0, 4, "ab", kNone},
    {"the slash lies behind the end", "x</", 0, 2, "", kNone},
    {"an empty range", "</a>", 0, 0, "a", kNone},
    {"an empty text", "", 0, 0, "a", kNone},
    {"a name with a lesser sign", "</</a</a</b<", 0, 12, "a<", 2},
    {"a name that is cut by a slash", "</a/b>", 0, 6, "a", 0},
    {"names of any bytes", "</a\xFF></a\x7F></a\0>"s, 0, 15, "a\0"s, 10},
    {"no lesser sign", "/a>/a>", 0, 6, "a", kNone},
};

TEST(XmlClosingTags, PlainSearches)
{
    for (const FindCase& c : kFindCases) {
        XmlClosingTags tags(c.text);
        EXPECT_EQ(tags.Find(c.from, c.end, c.name), c.place) << c.reason;
        EXPECT_EQ(PlainFind(c.text, c.from, c.end, c.name), c.place) << c.reason;
    }
}

TEST(XmlClosingTags, SearchesThroughTheIndex)
{
    for (const FindCase& c : kFindCases) {
        XmlClosingTags tags(c.text);
        UseUp(tags, c.text);
        EXPECT_EQ(tags.Find(c.from, c.end, c.name), c.place) << c.reason;
    }
}

std::string RandomNameOf(Random& random)
{
    return random.Text("ab<", random.Below(4));
}

std::string RandomText(Random& random)
{
    std::string text;
    for (std::size_t count = random.Below(40); count > 0; --count) {
        text += random.OneIn(3) ? random.Text("</ab> ", random.Below(4))
                                : "</" + RandomNameOf(random) + ">";
    }
    return text;
}

TEST(XmlClosingTags, AgreeWithThePlainSearch)
{
    Random random(1);
    for (int round = 0; round < 5000; ++round) {
        const std::string text = RandomText(random);
        XmlClosingTags tags(text);
        if (random.OneIn(2)) {
            UseUp(tags, text);
        }
        std::size_t from = 0;
        for (int search = 0; search < 40; ++search) {
            from += random.OneIn(2) ? 0 : random.Below(text.size() - from + 1) / 8;
            const std::size_t end =
                random.OneIn(2) ? text.size() : from + random.Below(text.size() - from + 1);
            const std::string name = RandomNameOf(random);
            ASSERT_EQ(tags.Find(from, end, name), PlainFind(text, from, end, name))
                << text << " from " << from << " to " << end << ": " << name;
        }
    }
}

} // namespace
} // namespace Vorlan
