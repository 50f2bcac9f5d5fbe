// Walks the other tables of docs/errors.md: the XML model, messages, and ends
// of the process.
#include <functional>
#include <utility>

#include "CStringProcess.h"
#include "InitFile.h"
#include "ModificationDB.h"
#include "SpectraIO.h"
#include "XmlDocument.h"
#include "docs/Page.h"
#include "support/Support.h"

namespace Vorlan {
namespace {

using test::Row;

std::string Replaced(std::string text, const std::string& value, const std::string& placeholder)
{
    CStringProcess::replace_all(text, value, placeholder);
    return text;
}

/// One column of the rows under a heading, the first being number 1.
std::vector<std::string> Column(const std::string& heading, std::size_t column)
{
    std::vector<std::string> cells;
    for (const Row& row : test::RowsUnder("errors.md", heading)) {
        cells.push_back(test::WithoutTicks(row.at(column)));
    }
    return cells;
}

// ---- The XML model -------------------------------------------------------

std::string XmlMessage(const std::function<void()>& call)
{
    try {
        call();
    } catch (const CXmlException& error) {
        return error.szWhat();
    }
    return "nothing thrown";
}

std::string ParseMessage(const std::string& xml)
{
    return XmlMessage([&xml] { CXmlElement().Parse(xml.data(), xml.data() + xml.size()); });
}

TEST(ErrorMessages, EveryTextOfTheXmlModelIsListed)
{
    const std::string unended = "<root><tag x>";
    const std::string noEnd = XmlMessage([&unended] {
        CXmlElement().Parse(unended.data() + 6, unended.data() + unended.size() - 1);
    });
    const std::vector<std::string> provoked = {
        Replaced(noEnd, "<tag x>", "<rest of the text><character behind it>"),
        Replaced(ParseMessage("<a b=\"1\">"), "<a b=\"1\">", "<tag>"),
        ParseMessage("<![CDATA[x]>"),
        ParseMessage("<!DOCTYPE x><x/>"),
        XmlMessage([] { CXmlDocument().ParseFile("/no/file.xml"); }),
        XmlMessage([] { CXmlDocument().SaveFile("/no/file.xml"); }),
        XmlMessage([] { CXmlDocument().cRoot(); }),
        XmlMessage([] { CXmlElement().cAt(0); }),
        XmlMessage([] { CXmlElement().pNewItem(""); }),
    };
    EXPECT_EQ(Column("Exceptions of the XML model", 3), provoked);
}

TEST(ErrorMessages, AFileEndsALineBehindItsTextForTheXmlModel)
{
    const test::TempFolder folder;
    const std::string path = folder.Write("a.xml", "<a");
    EXPECT_EQ(XmlMessage([&path] { CXmlDocument().ParseFile(path); }), "<a\nCan not find '>'");
    EXPECT_EQ(ParseMessage("<a></a"), std::string("<a></a")) << "as far as the NUL behind it";
}

// ---- Messages ------------------------------------------------------------

struct Printed {
    std::string out;
    std::string err;
};

Printed PrintedBy(const std::function<void()>& call)
{
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    call();
    return {testing::internal::GetCapturedStdout(), testing::internal::GetCapturedStderr()};
}

TEST(ErrorMessages, EveryMessageIsListedWithItsStream)
{
    std::vector<Row> provoked;
    const auto add = [&provoked](const std::function<void()>& call, const std::string& value,
                                 const std::string& placeholder) {
        const Printed printed = PrintedBy(call);
        if (!printed.out.empty()) {
            provoked.push_back({"standard output", Replaced(printed.out, value, placeholder)});
        }
        if (!printed.err.empty()) {
            provoked.push_back({"standard error", Replaced(printed.err, value, placeholder)});
        }
    };
    std::vector<Spectrum> spectra;
    add([] { MgfIO().InitLoad("/no/file.mgf"); }, "/no/file.mgf", "<path>");
    add([&] { MgfIO().bLoadOneSpectrum("17", spectra); }, "17", "<name>");
    add([] { EXPECT_ANY_THROW(InitFile().Load("/no/file.ini")); }, "/no/file.ini", "<path>");
    add([] { CModificationsDBUnimod::getInstance("/no/file.xml"); }, "Can not open file!",
        "<text of the CXmlException>");

    std::vector<Row> listed;
    for (const Row& row : test::RowsUnder("errors.md", "Messages")) {
        const bool isOfSpectra = row.at(1) == "`MulSpecIO`, `MgfIO`";
        listed.push_back(
            {row.at(2), (isOfSpectra ? "\n" : "") + test::WithoutTicks(row.at(4)) + "\n"});
    }
    EXPECT_EQ(listed, provoked);
}

TEST(ErrorMessages, AFileThatCannotBeWrittenIsToldLikeOneThatCannotBeRead)
{
    EXPECT_EQ(PrintedBy([] { MgfIO().InitSave("/no/file.mgf"); }).out,
              PrintedBy([] { MgfIO().InitLoad("/no/file.mgf"); }).out);
}

// ---- Ends of the process -------------------------------------------------

class DefaultTable : public CModificationsDBCalvexDefault {
public:
    explicit DefaultTable(const std::string& path) : CModificationsDBCalvexDefault(path) {}
};

/// A database of one record that has no term specificity.
class BrokenDatabase : public CModificationsDB {
public:
    BrokenDatabase()
    {
        CResidueModification record;
        record.setTermSpecificity(CResidueModification::NUMBER_OF_TERM_SPECIFICITY);
        addModifications_({record}, BY_ID);
    }
};

class ErrorMessagesDeathTest : public testing::Test {
protected:
    /// The row with this number ends the process as it says.
    void ExpectEnd(std::size_t number, const std::string& value, const std::string& placeholder,
                   const std::function<void()>& call) const
    {
        const Row row = test::RowsUnder("errors.md", "Ends of the process").at(number);
        std::string text =
            test::WithoutTicks(row.at(3)) + "\n" + test::WithoutTicks(row.at(4)) + "\n";
        text = Replaced(Replaced(text, "<tab>", "\t"), placeholder, value);
        EXPECT_EXIT(call(), testing::ExitedWithCode(1), testing::StrEq(text));
    }

    const test::TempFolder folder_;
};

TEST_F(ErrorMessagesDeathTest, EveryEndIsTestedHere)
{
    EXPECT_THAT(Column("Ends of the process", 1),
                testing::ElementsAre("readers of modification tables (B-44)",
                                     "readers of modification tables (B-44)",
                                     "CModificationsDB::writeToFile"));
}

TEST_F(ErrorMessagesDeathTest, B44_AMissingColumn)
{
    const std::string path = folder_.Write("table.txt", "id\tfull_id\n");
    ExpectEnd(0, "unimod_accession", "<column>", [&] { DefaultTable table(path); });
    ExpectEnd(0, "unimod_accession", "<column>", [&] { CModificationsDBEngineCalvex table(path); });
}

TEST_F(ErrorMessagesDeathTest, B44_ALineOfOtherThanElevenFields)
{
    const std::string header =
        test::LinesOf(test::ReadFile(PELGRIN_EXAMPLES "/data/demo_modifications.txt")).at(0);
    const std::string path = folder_.Write("table.txt", header + "\n\na\tb\n");
    ExpectEnd(1, "3", "<line>", [&] { DefaultTable table(path); });
    ExpectEnd(1, "3", "<line>", [&] { CModificationsDBEngineCalvex table(path); });
}

TEST_F(ErrorMessagesDeathTest, B44_ALineThatLacksANamedColumn)
{
    const std::string header =
        test::LinesOf(test::ReadFile(PELGRIN_EXAMPLES "/data/demo_modifications.txt")).at(0);
    const std::string path =
        folder_.Write("table.txt", "more\t" + header + "\n1\t2\t3\t4\t5\t6\t7\t8\t9\t10\t11\n");
    ExpectEnd(1, "2", "<line>", [&] { CModificationsDBEngineCalvex table(path); });
}

TEST_F(ErrorMessagesDeathTest, B40_ARecordWithoutTermSpecificityIsWritten)
{
    ExpectEnd(2, "", "<>", [&] { BrokenDatabase().writeToFile(folder_.PathOf("dump.txt")); });
}

} // namespace
} // namespace Vorlan
