// What hosts are compiled against: abstract classes, and the order of their virtual
// members, which is that of their table.
#include <cstddef>
#include <type_traits>
#include <utility>
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

/// Shows what is protected in every reader.
template <typename Reader>
class Shown : public Reader {
public:
    using Reader::bGetOneSpec;
    using Reader::bOpenInputFile;
    using Reader::CloseInputFile;
    using Reader::InitMember;
};

/// The same in those of one file.
template <typename Reader>
class ShownFile : public Reader {
public:
    using Reader::bOpenOutputFile;
    using Reader::bPutOneSpec;
    using Reader::CloseOutputFile;
    using Reader::SetMap;
};

template <typename Reader>
class ShownFolder : public Reader {
public:
    using Reader::SetFilenameList;
};

template <typename Pool>
class ShownPool : public Pool {
public:
    using Pool::InitSpecIO;
    using Pool::SetDatasetSourceIndex;
};

/// Whether a call compiles on none of the classes, and on all where it is shown.
template <template <typename> class Shows, typename... Classes, typename Call>
constexpr bool IsProtected(Call)
{
    return (!std::is_invocable_v<Call, Classes&> && ...)
           && (std::is_invocable_v<Call, Shows<Classes>&> && ...);
}

template <typename Call>
constexpr bool IsProtectedInReaders(Call call)
{
    return IsProtected<Shown, SpectraIO, MulSpecIO, DtaIO, MgfIO, MzMLIO, MzXMLIO>(call);
}

template <typename Call>
constexpr bool IsProtectedInFiles(Call call)
{
    return IsProtected<ShownFile, MulSpecIO, MgfIO, MzMLIO, MzXMLIO>(call);
}

static_assert(IsProtectedInReaders([](auto& r) -> decltype(r.InitMember()) {}));
static_assert(IsProtectedInReaders([](auto& r) -> decltype(void(r.bOpenInputFile(""))) {}));
static_assert(IsProtectedInReaders([](auto& r) -> decltype(r.CloseInputFile()) {}));
static_assert(IsProtectedInReaders([](auto& r) -> decltype(void(r.bGetOneSpec())) {}));
static_assert(IsProtectedInFiles([](auto& r) -> decltype(r.SetMap()) {}));
static_assert(
    IsProtectedInFiles([](auto& r) -> decltype(void(r.bPutOneSpec(std::declval<Spectrum&>()))) {}));
static_assert(IsProtectedInFiles([](auto& r) -> decltype(void(r.bOpenOutputFile(""))) {}));
static_assert(IsProtectedInFiles([](auto& r) -> decltype(r.CloseOutputFile()) {}));
static_assert(IsProtected<ShownFolder, DtaIO>([](auto& r) -> decltype(r.SetFilenameList()) {}));
static_assert(
    IsProtected<ShownPool, DatasetIOPool>([](auto& r) -> decltype(r.SetDatasetSourceIndex()) {}));
static_assert(IsProtected<ShownPool, DatasetIOPool>([](auto& r) -> decltype(r.InitSpecIO()) {}));

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
