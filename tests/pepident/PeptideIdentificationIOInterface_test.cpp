// What hosts are compiled against: the order of the virtual members, which is that of
// their table, and which reader derives from which.
#include <cstddef>
#include <type_traits>
#include <vector>

#include "PeptideIdentificationIO.h"
#include "support/Slots.h"
#include "support/Support.h"

namespace Vorlan::test {
namespace {

using testing::ElementsAre;

TEST(PeptideIdentificationIOInterface, VirtualMembersStandInTheirOrder)
{
    using Interface = PeptideIdentificationIO;
    const std::vector<std::size_t> slots = {SlotOf(&Interface::InitLoad),
                                            SlotOf(&Interface::Load),
                                            SlotOf(&Interface::EndLoad),
                                            SlotOf(&Interface::InitSave),
                                            SlotOf(&Interface::Save),
                                            SlotOf(&Interface::EndSave),
                                            SlotOf(&Interface::GetResultNumberOfFile)};
    EXPECT_THAT(slots, ElementsAre(2, 3, 4, 5, 6, 7, 8)) << "the destructor stands in front";
}

TEST(PeptideIdentificationIOInterface, IsAbstractAndDestroysWhatDerives)
{
    EXPECT_TRUE(std::is_abstract_v<PeptideIdentificationIO>);
    EXPECT_TRUE(std::has_virtual_destructor_v<PeptideIdentificationIO>);
    EXPECT_FALSE(std::is_copy_constructible_v<PeptideIdentificationIO>);
    EXPECT_FALSE(std::is_copy_assignable_v<PeptideIdentificationIO>);
}

/// How many of the classes each reader is or derives from.
template <typename... Readers>
struct Family {
    template <typename Reader>
    static int AncestorsOf()
    {
        EXPECT_TRUE((std::is_base_of_v<PeptideIdentificationIO, Reader>));
        EXPECT_FALSE(std::is_abstract_v<Reader>);
        return (int{std::is_base_of_v<Readers, Reader>} + ...);
    }

    static std::vector<int> Ancestors() { return {AncestorsOf<Readers>()...}; }
};

TEST(PeptideIdentificationIOInterface, OnlyTheReaderOfCometDerivesFromAnotherOne)
{
    using All = Family<PfindTXTPepIdentIO, MSFraggerPepXMLPepIdentIO, SequestTXTPepIdentIO,
                       MaxQuantTXTPepIdentIO, TulkTXTPepIdentIO, Pfind3PepIdentIO,
                       MSGFTSVPepIdentIO, CometPepXMLPepIdentIO>;
    EXPECT_THAT(All::Ancestors(), ElementsAre(1, 1, 1, 1, 1, 1, 1, 2)) << "itself counts";
    EXPECT_TRUE((std::is_base_of_v<MSFraggerPepXMLPepIdentIO, CometPepXMLPepIdentIO>));
}

} // namespace
} // namespace Vorlan::test
