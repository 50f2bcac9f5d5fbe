#include <memory>

#include "SpectraIO.h"
#include "support/Support.h"

namespace Vorlan::test {
namespace {

TEST(SpecIOFactory, MakesAReaderForMgf)
{
    SpectraIO* pReader = SpecIOFactory::pGetSpectraIO(DatasetType::Mgf);
    ASSERT_NE(pReader, nullptr);
    EXPECT_NE(dynamic_cast<MgfIO*>(pReader), nullptr);
    SpecIOFactory::DesctroySpectraIO(pReader);
    EXPECT_EQ(pReader, nullptr);
}

TEST(SpecIOFactory, MakesAReaderForEveryFormat)
{
    const auto isMade = [](DatasetType::EDatasetType type, auto* pLike) {
        SpectraIO* pReader = SpecIOFactory::pGetSpectraIO(type);
        const bool isLike = dynamic_cast<decltype(pLike)>(pReader) != nullptr;
        SpecIOFactory::DesctroySpectraIO(pReader);
        EXPECT_EQ(pReader, nullptr);
        return isLike;
    };
    EXPECT_TRUE(isMade(DatasetType::Dta, static_cast<DtaIO*>(nullptr)));
    EXPECT_TRUE(isMade(DatasetType::Mgf, static_cast<MgfIO*>(nullptr)));
    EXPECT_TRUE(isMade(DatasetType::MzXml, static_cast<MzXMLIO*>(nullptr)));
    EXPECT_TRUE(isMade(DatasetType::MzMl, static_cast<MzMLIO*>(nullptr)));
    EXPECT_FALSE(isMade(DatasetType::Dta, static_cast<MulSpecIO*>(nullptr)))
        << "a folder is no file of many spectra";
}

TEST(SpecIOFactory, MakesANewReaderEveryTime)
{
    SpectraIO* pFirst = SpecIOFactory::pGetSpectraIO(DatasetType::Mgf);
    SpectraIO* pSecond = SpecIOFactory::pGetSpectraIO(DatasetType::Mgf);
    EXPECT_NE(pFirst, pSecond);
    SpecIOFactory::DesctroySpectraIO(pFirst);
    SpecIOFactory::DesctroySpectraIO(pSecond);
}

TEST(SpecIOFactory, MakesNothingForTypesThatDoNotExist)
{
    for (const int type : {0, 5, -1, 1000}) {
        EXPECT_EQ(SpecIOFactory::pGetSpectraIO(static_cast<DatasetType::EDatasetType>(type)),
                  nullptr)
            << type;
    }
}

TEST(SpecIOFactory, DestroyingNothingDoesNothing)
{
    SpectraIO* pReader = nullptr;
    SpecIOFactory::DesctroySpectraIO(pReader);
    EXPECT_EQ(pReader, nullptr);
}

} // namespace
} // namespace Vorlan::test
