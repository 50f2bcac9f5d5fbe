#include <limits>
#include <utility>

#include "FastaProteinDB.h"
#include "support/Support.h"

namespace Vorlan::test {
namespace {

using AC::Node;
using Link = std::pair<std::uint64_t, char>;

constexpr std::uint64_t kLargest = std::numeric_limits<std::uint64_t>::max();

TEST(Node, ANewOneHasNeitherChildNorBrother)
{
    const Node node;
    EXPECT_EQ(node.GetChild(), Link(0, '\0'));
    EXPECT_EQ(node.GetBrother(), Link(0, '\0'));
    EXPECT_EQ(node.GetF(), 0u);
}

TEST(Node, GivesBackWhatWasSetAndChangesNothingElse)
{
    Node node;
    node.SetChild(1, 'C');
    EXPECT_EQ(node.GetChild(), Link(1, 'C'));
    EXPECT_EQ(node.GetBrother(), Link(0, '\0'));
    EXPECT_EQ(node.GetF(), 0u);
    node.SetBrother(2, 'B');
    EXPECT_EQ(node.GetChild(), Link(1, 'C'));
    EXPECT_EQ(node.GetBrother(), Link(2, 'B'));
    EXPECT_EQ(node.GetF(), 0u);
    node.SetF(3);
    EXPECT_EQ(node.GetChild(), Link(1, 'C'));
    EXPECT_EQ(node.GetBrother(), Link(2, 'B'));
    EXPECT_EQ(node.GetF(), 3u);
}

TEST(Node, TakesEveryIndexAndCharacter)
{
    Node node;
    for (int code = -128; code < 256; ++code) {
        const char ch = static_cast<char>(code);
        node.SetChild(kLargest, ch);
        node.SetBrother(kLargest - 1, ch);
        EXPECT_EQ(node.GetChild(), Link(kLargest, ch));
        EXPECT_EQ(node.GetBrother(), Link(kLargest - 1, ch));
    }
    node.SetF(kLargest);
    EXPECT_EQ(node.GetF(), kLargest);
}

TEST(Node, SettersOverwrite)
{
    Node node;
    node.SetChild(1, 'A');
    node.SetChild(0, '\0');
    EXPECT_EQ(node.GetChild(), Link(0, '\0'));
    node.SetF(5);
    node.SetF(0);
    EXPECT_EQ(node.GetF(), 0u);
}

TEST(Node, CopiesAndAssignmentsTakeEverything)
{
    Node node;
    node.SetChild(1, 'C');
    node.SetBrother(2, 'B');
    node.SetF(3);
    const Node copy(node);
    Node assigned;
    assigned.SetChild(9, 'x');
    assigned = node;
    node = Node();
    for (const Node& other : {copy, assigned}) {
        EXPECT_EQ(other.GetChild(), Link(1, 'C'));
        EXPECT_EQ(other.GetBrother(), Link(2, 'B'));
        EXPECT_EQ(other.GetF(), 3u);
    }
    EXPECT_EQ(node.GetChild(), Link(0, '\0'));
}

} // namespace
} // namespace Vorlan::test
