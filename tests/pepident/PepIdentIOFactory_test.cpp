#include "PeptideIdentificationIO.h"
#include "support/Support.h"

namespace Vorlan::test {
namespace {

TEST(PepIdentIOFactory, MakesTheReaderOfTheNativeTable)
{
    PeptideIdentificationIO* pReader = PepIdentIOFactory::pGetPepIdentIO(PepIdentType::CalvexTxt);
    ASSERT_NE(pReader, nullptr);
    EXPECT_NE(dynamic_cast<TulkTXTPepIdentIO*>(pReader), nullptr);
    EXPECT_EQ(pReader->eGetType(), PepIdentType::CalvexTxt);
    PepIdentIOFactory::DesctroyPepIdentIO(pReader);
    EXPECT_EQ(pReader, nullptr);
}

TEST(PepIdentIOFactory, MakesNothingForTypesThatHaveNoReader)
{
    for (const int type : {0, 2, 5, 6, 8, 13, -1, 1000}) {
        PeptideIdentificationIO* pReader = nullptr;
        EXPECT_EQ(OutputOf([&] {
                      pReader = PepIdentIOFactory::pGetPepIdentIO(
                          static_cast<PepIdentType::EPepIdentType>(type));
                  }),
                  "");
        EXPECT_EQ(pReader, nullptr) << type;
    }
}

TEST(PepIdentIOFactory, DestroyingNothingDoesNothing)
{
    PeptideIdentificationIO* pReader = nullptr;
    PepIdentIOFactory::DesctroyPepIdentIO(pReader);
    EXPECT_EQ(pReader, nullptr);
}

} // namespace
} // namespace Vorlan::test
