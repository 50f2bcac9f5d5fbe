#include <typeinfo>

#include "PeptideIdentificationIO.h"
#include "support/Support.h"

namespace Vorlan::test {
namespace {

template <typename Reader>
void ExpectReader(PepIdentType::EPepIdentType type)
{
    PeptideIdentificationIO* pReader = PepIdentIOFactory::pGetPepIdentIO(type);
    ASSERT_NE(pReader, nullptr) << type;
    EXPECT_TRUE(typeid(*pReader) == typeid(Reader)) << type;
    EXPECT_EQ(pReader->eGetType(), type);
    PepIdentIOFactory::DesctroyPepIdentIO(pReader);
    EXPECT_EQ(pReader, nullptr);
}

TEST(PepIdentIOFactory, MakesTheReaderOfEachType)
{
    ExpectReader<PfindTXTPepIdentIO>(PepIdentType::Pfind28Txt);
    ExpectReader<MSFraggerPepXMLPepIdentIO>(PepIdentType::MsFraggerPepXml);
    ExpectReader<SequestTXTPepIdentIO>(PepIdentType::SequestTxt);
    ExpectReader<MaxQuantTXTPepIdentIO>(PepIdentType::MaxQuant);
    ExpectReader<TulkTXTPepIdentIO>(PepIdentType::CalvexTxt);
    ExpectReader<Pfind3PepIdentIO>(PepIdentType::Pfind3Spectra);
    ExpectReader<MSGFTSVPepIdentIO>(PepIdentType::MsgfTsv);
    ExpectReader<CometPepXMLPepIdentIO>(PepIdentType::CometPepXml);
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
