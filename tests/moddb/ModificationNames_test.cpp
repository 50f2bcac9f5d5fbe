// The table of names against a walk over the records.
#include "moddb/ModificationNames.h"

#include <string>
#include <vector>

#include "moddb/ModificationText.h"
#include "support/Random.h"

namespace Vorlan::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A record and the fields under which it was added.
struct Added {
    std::vector<std::string> names; // id, full id, full name, accession
    unsigned fields;
};

std::vector<std::size_t> Walk(const std::vector<Added>& all, const std::string& name)
{
    std::vector<std::size_t> numbers;
    for (std::size_t i = 0; i < all.size(); ++i) {
        bool hasName = false;
        for (unsigned field = 0; field < 4; ++field) {
            const bool isAdded = (all[i].fields & 1U << field) != 0;
            hasName = hasName || (isAdded && all[i].names[field] == name);
        }
        if (hasName) {
            numbers.push_back(i);
        }
    }
    return numbers;
}

ModificationNames::Records AddressesOf(const Records& records)
{
    ModificationNames::Records addresses;
    for (const CResidueModification& record : records) {
        addresses.push_back(&record);
    }
    return addresses;
}

CResidueModification RecordOf(const std::vector<std::string>& names)
{
    CResidueModification record;
    record.setId(names[0]);
    record.setFullId(names[1]);
    record.setFullName(names[2]);
    record.setUniModAccession(names[3]);
    return record;
}

TEST(ModificationNames, ANewOneKnowsNone)
{
    ModificationNames names;
    names.Add({}, 15);
    EXPECT_THAT(names.Find({}, ""), IsEmpty());
    EXPECT_THAT(names.Find({}, "a"), IsEmpty());
}

TEST(ModificationNames, NumbersAscendEachOnce)
{
    const Records list = {RecordOf({"a", "a", "b", "a"}), RecordOf({"b", "c", "d", "e"}),
                          RecordOf({"c", "a", "a", "b"})};
    const ModificationNames::Records records = AddressesOf(list);
    ModificationNames names;
    names.Add(records, 15);
    EXPECT_THAT(names.Find(records, "a"), ElementsAre(0u, 2u));
    EXPECT_THAT(names.Find(records, "b"), ElementsAre(0u, 1u, 2u));
    EXPECT_THAT(names.Find(records, "e"), ElementsAre(1u));
    EXPECT_THAT(names.Find(records, ""), IsEmpty());
}

TEST(ModificationNames, BytesAreCompared)
{
    const Records list = {RecordOf({std::string("a\0b", 3), "\xFF", "A", ""})};
    const ModificationNames::Records records = AddressesOf(list);
    ModificationNames names;
    names.Add(records, 15);
    EXPECT_THAT(names.Find(records, "a"), IsEmpty());
    EXPECT_THAT(names.Find(records, std::string("a\0b", 3)), ElementsAre(0u));
    EXPECT_THAT(names.Find(records, "\xFF"), ElementsAre(0u));
    EXPECT_THAT(names.Find(records, ""), ElementsAre(0u));
}

TEST(ModificationNames, AgreeWithAWalkAfterEveryLoad)
{
    Random random(53);
    for (int round = 0; round < 200; ++round) {
        ModificationNames names;
        Records list;
        std::vector<Added> all;
        std::size_t waiting = 0; // the first record that was added under no name
        for (std::size_t loads = random.Below(5); loads > 0; --loads) {
            const auto fields = static_cast<unsigned>(random.Below(16));
            for (std::size_t count = random.Below(60); count > 0; --count) {
                std::vector<std::string> texts;
                for (int field = 0; field < 4; ++field) {
                    texts.push_back(random.Text("abc", random.Below(4)));
                }
                list.push_back(RecordOf(texts));
                all.push_back({texts, fields});
            }
            const ModificationNames::Records records = AddressesOf(list);
            names.Add(records, fields);
            for (; fields != 0 && waiting < all.size(); ++waiting) {
                all[waiting].fields = fields;
            }
            for (int question = 0; question < 60; ++question) {
                const std::string name = random.Text("abcd", random.Below(4));
                ASSERT_EQ(names.Find(records, name), Walk(all, name)) << name;
            }
        }
    }
}

} // namespace
} // namespace Vorlan::test
