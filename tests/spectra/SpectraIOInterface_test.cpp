// What hosts are compiled against: abstract classes, and the order of their virtual
// members, which is that of their table.
#include <cstddef>
#include <type_traits>
#include <vector>

#include "SpectraIO.h"
#include "support/Slots.h"
#include "support/Support.h"

namespace Vorlan::test {
namespace {

/// Names the protected members.
class Members : public MulSpecIO {
public:
    static std::vector<std::size_t> OfSpectraIO()
    {
        return {SlotOf(&SpectraIO::InitLoad),
                SlotOf(&SpectraIO::bLoadNextSpectrum),
                SlotOf(&SpectraIO::tLoadAllSpectra),
                SlotOf(&SpectraIO::EndLoad),
                SlotOf(&SpectraIO::bLoadOneSpectrum),
                SlotOf(&SpectraIO::ResetIter),
                SlotOf(&SpectraIO::tGetInputSpecNumber),
                SlotOf(&Members::InitMember),
                SlotOf(&Members::bOpenInputFile),
                SlotOf(&Members::CloseInputFile),
                SlotOf(&Members::bGetOneSpec)};
    }

    static std::vector<std::size_t> OfMulSpecIO()
    {
        return {SlotOf(&Members::SetMap), SlotOf(&Members::bPutOneSpec)};
    }
};

TEST(SpectraIOInterface, VirtualMembersStandInTheirOrder)
{
    EXPECT_THAT(Members::OfSpectraIO(), testing::ElementsAre(2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12));
    EXPECT_THAT(Members::OfMulSpecIO(), testing::ElementsAre(13, 14));
}

TEST(SpectraIOInterface, FormatsAreConcreteAndTheirBasesAbstract)
{
    EXPECT_TRUE(std::is_abstract_v<SpectraIO>);
    EXPECT_TRUE(std::is_abstract_v<MulSpecIO>);
    EXPECT_TRUE(std::has_virtual_destructor_v<SpectraIO>);
    EXPECT_TRUE((std::is_base_of_v<MulSpecIO, MgfIO>));
    EXPECT_TRUE((std::is_base_of_v<MulSpecIO, MzMLIO>));
    EXPECT_TRUE((std::is_base_of_v<MulSpecIO, MzXMLIO>));
    EXPECT_TRUE((std::is_base_of_v<SpectraIO, DtaIO>));
    EXPECT_FALSE((std::is_base_of_v<MulSpecIO, DtaIO>)) << "a folder is no file";
    EXPECT_FALSE(std::is_polymorphic_v<DatasetIOPool>);
    EXPECT_TRUE(std::is_copy_constructible_v<DatasetIOPool>);
    EXPECT_TRUE(std::is_copy_assignable_v<DatasetIOPool>);
}

} // namespace
} // namespace Vorlan::test
