#include <clocale>
#include <limits>
#include <locale>
#include <ostream>

#include "DataStructures.h"
#include "support/Support.h"

namespace Vorlan {
namespace {

using std::string_literals::operator""s;

/// One registry behind plain integers.
struct Registry {
    const char* name;
    std::vector<std::string> names; ///< of the values 0, 1, ...
    std::string (*nameOf)(int);
    int (*valueOf)(const std::string&);
};

/// What failures and the list of tests show.
void PrintTo(const Registry& registry, std::ostream* out)
{
    *out << registry.name;
}

template <typename Class, typename Value>
Registry MakeRegistry(const char* name, std::vector<std::string> names)
{
    return {name, std::move(names),
            [](int value) -> std::string { return Class::typeToName(static_cast<Value>(value)); },
            [](const std::string& text) -> int { return Class::nameToType(text); }};
}

const Registry kRegistries[] = {
    MakeRegistry<DatasetType, DatasetType::EDatasetType>(
        "DatasetType", {"unknown", "dta", "mgf", "mzXML", "mzML"}),
    MakeRegistry<FdrEstimateType, FdrEstimateType::EFdrEstimateType>(
        "FdrEstimateType", {"unknown", "global", "separate", "transferred"}),
    MakeRegistry<FragMethodType, FragMethodType::EFragType>("FragMethodType",
                                                            {"unknown", "CID/HCD", "ETD"}),
    MakeRegistry<PepIdentType, PepIdentType::EPepIdentType>(
        "PepIdentType", {"unknown", "pFind 2.8 (.txt)", "pBuild_CSV", "MSFragger (.pepXML)",
                         "Sequest (.txt)", "Mascot_dat", "Mascot_PepXML", "MaxQuant", "X!Tandem",
                         "Calvex (.txt)", "pFind 3 (.spectra)", "MSGF (.tsv)", "Comet (.pep.xml)"}),
    MakeRegistry<SearchEngineType, SearchEngineType::ESearchEngineType>(
        "SearchEngineType", {"unknown", "pFind 2.8 (.txt)", "pFind 3 (.spectra)",
                             "MSFragger (.pepXML)", "Mascot", "Sequest (.txt)", "Maxquant",
                             "X!Tandem", "Calvex (.txt)", "MSGF (.tsv)", "Comet (.pep.xml)"}),
    MakeRegistry<TdFdrType, TdFdrType::ETdFdrType>("TdFdrType",
                                                   {"unknown", "decoy/target", "(decoy+1)/target"}),
    MakeRegistry<TolType, TolType::ETolType>("TolType", {"unknown", "Da", "ppm"}),
};

class Registries : public testing::TestWithParam<Registry> {};

INSTANTIATE_TEST_SUITE_P(All, Registries, testing::ValuesIn(kRegistries),
                         [](const auto& one) { return std::string(one.param.name); });

bool IsLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// name with the case of its letters changed: to upper, to lower, or each to
/// the other one.
std::string Upper(std::string name)
{
    for (char& c : name) {
        c = IsLetter(c) ? static_cast<char>(c & ~0x20) : c;
    }
    return name;
}

std::string Lower(std::string name)
{
    for (char& c : name) {
        c = IsLetter(c) ? static_cast<char>(c | 0x20) : c;
    }
    return name;
}

std::string Turned(std::string name)
{
    for (char& c : name) {
        c = IsLetter(c) ? static_cast<char>(c ^ 0x20) : c;
    }
    return name;
}

TEST_P(Registries, ValuesFrom0HaveTheseNames)
{
    const Registry& registry = GetParam();
    for (std::size_t value = 0; value < registry.names.size(); ++value) {
        EXPECT_EQ(registry.nameOf(static_cast<int>(value)), registry.names[value]);
        EXPECT_EQ(registry.valueOf(registry.names[value]), static_cast<int>(value));
    }
}

TEST_P(Registries, ValuesOutsideHaveNoName)
{
    const Registry& registry = GetParam();
    const int count = static_cast<int>(registry.names.size());
    for (const int value : {count, count + 1, 255, 256, 256 + 1, -1,
                            std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        EXPECT_EQ(registry.nameOf(value), "") << value;
    }
}

TEST_P(Registries, NamesAreReadInAnyCase)
{
    const Registry& registry = GetParam();
    for (std::size_t value = 0; value < registry.names.size(); ++value) {
        const std::string& name = registry.names[value];
        for (const std::string& text : {Upper(name), Lower(name), Turned(name)}) {
            EXPECT_EQ(registry.valueOf(text), static_cast<int>(value)) << text;
        }
    }
}

TEST_P(Registries, NearlyANameIsUnknown)
{
    const Registry& registry = GetParam();
    for (const std::string& name : registry.names) {
        for (const std::string& text :
             {" " + name, name + " ", name + "\n", "\t" + name, name + "\0"s, name + name,
              name.substr(1), name.substr(0, name.size() - 1), "\"" + name + "\""}) {
            EXPECT_EQ(registry.valueOf(text), 0) << text;
        }
    }
    EXPECT_EQ(registry.valueOf(""), 0);
    EXPECT_EQ(registry.valueOf("0"), 0);
    EXPECT_EQ(registry.valueOf("1"), 0);
}

TEST_P(Registries, OnlyTheCaseOfAsciiLettersIsForgiven)
{
    const Registry& registry = GetParam();
    for (std::size_t value = 1; value < registry.names.size(); ++value) {
        const std::string& name = registry.names[value];
        for (std::size_t place = 0; place < name.size(); ++place) {
            for (int byte = 0; byte < 256; ++byte) {
                std::string text = name;
                text[place] = static_cast<char>(static_cast<unsigned char>(byte));
                const bool isSame = Lower(text) == Lower(name);
                ASSERT_EQ(registry.valueOf(text) == static_cast<int>(value), isSame)
                    << name << ", byte " << byte << " at " << place;
            }
        }
    }
}

/// As in Turkish, where the capital of i is another letter.
class TurkishLetters : public std::ctype<char> {
protected:
    char do_toupper(char c) const override
    {
        return c == 'i' ? '\xDD' : std::ctype<char>::do_toupper(c);
    }
    char do_tolower(char c) const override
    {
        return c == 'I' ? '\xFD' : std::ctype<char>::do_tolower(c);
    }
};

TEST_P(Registries, LocaleOfTheHostChangesNothing)
{
    const Registry& registry = GetParam();
    const std::locale former =
        std::locale::global(std::locale(std::locale::classic(), new TurkishLetters));
    const char* const set = std::setlocale(LC_CTYPE, "tr_TR.UTF-8");
    for (std::size_t value = 0; value < registry.names.size(); ++value) {
        const std::string& name = registry.names[value];
        EXPECT_EQ(registry.valueOf(Upper(name)), static_cast<int>(value)) << name;
        EXPECT_EQ(registry.valueOf(Lower(name)), static_cast<int>(value)) << name;
    }
    std::locale::global(former);
    if (set != nullptr) {
        std::setlocale(LC_CTYPE, "C");
    }
}

TEST(RegistryValues, B02_SearchEnginesAreNumberedUnlikeTheirFiles)
{
    EXPECT_EQ(PepIdentType::nameToType("maxquant"), 7);
    EXPECT_EQ(SearchEngineType::nameToType("MAXQUANT"), 6);
    EXPECT_EQ(PepIdentType::typeToName(PepIdentType::MaxQuant), "MaxQuant");
    EXPECT_EQ(SearchEngineType::typeToName(SearchEngineType::MaxQuant), "Maxquant");
    EXPECT_EQ(PepIdentType::nameToType("Calvex (.txt)"), 9);
    EXPECT_EQ(SearchEngineType::nameToType("Calvex (.txt)"), 8);
}

TEST(RegistryValues, EnumeratorsHaveTheNumbersThatFilesStore)
{
    EXPECT_EQ(DatasetType::Dta, 1);
    EXPECT_EQ(DatasetType::Mgf, 2);
    EXPECT_EQ(DatasetType::MzXml, 3);
    EXPECT_EQ(DatasetType::MzMl, 4);
    EXPECT_EQ(FdrEstimateType::Global, 1);
    EXPECT_EQ(FdrEstimateType::Separate, 2);
    EXPECT_EQ(FdrEstimateType::Transferred, 3);
    EXPECT_EQ(FragMethodType::CidHcd, 1);
    EXPECT_EQ(FragMethodType::Etd, 2);
    EXPECT_EQ(PepIdentType::Pfind28Txt, 1);
    EXPECT_EQ(PepIdentType::MsFraggerPepXml, 3);
    EXPECT_EQ(PepIdentType::CalvexTxt, 9);
    EXPECT_EQ(PepIdentType::Pfind3Spectra, 10);
    EXPECT_EQ(PepIdentType::CometPepXml, 12);
    EXPECT_EQ(SearchEngineType::Pfind3Spectra, 2);
    EXPECT_EQ(SearchEngineType::CalvexTxt, 8);
    EXPECT_EQ(SearchEngineType::CometPepXml, 10);
    EXPECT_EQ(TdFdrType::DecoyByTarget, 1);
    EXPECT_EQ(TdFdrType::DecoyPlusOneByTarget, 2);
    EXPECT_EQ(TolType::Da, 1);
    EXPECT_EQ(TolType::Ppm, 2);
}

} // namespace
} // namespace Vorlan
