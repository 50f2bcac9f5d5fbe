// Whole documents and their files.
#include "XmlDocument.h"

#include "support/Support.h"
#include "util/XmlText.h"

namespace Vorlan {
namespace {

using std::string_literals::operator""s;
using test::Dump;
using test::MessageOf;
using test::Parsed;
using test::TempFolder;

TEST(CXmlDocument, RootIsTheFirstElement)
{
    Parsed parsed("<?xml version=\"1.0\"?><root/><other/>");
    EXPECT_EQ(&parsed.document.cRoot(), &parsed.document.cAt(1));
    EXPECT_EQ(Dump(parsed.document), "'<?xml version=\"1.0\"?>' root() other()");
    EXPECT_EQ(parsed.document.strToXml(), "<?xml version=\"1.0\"?>\n<root/>\n<other/>");
}

TEST(CXmlDocument, DocumentWithoutAnElementHasNoRoot)
{
    for (const char* const text : {"", "words", "<!--1--><?2?>"}) {
        Parsed parsed(text);
        parsed.document.strText();
        EXPECT_EQ(MessageOf([&] { parsed.document.cRoot(); }), "Can not find root element!")
            << text;
    }
}

TEST(CXmlDocument, WritesNothingOfItsOwn)
{
    CXmlDocument document;
    EXPECT_EQ(document.strToXml(), "");
    document = "value";
    document["x"] = "1";
    EXPECT_EQ(document.strToXml(), "");
    document.Parse("<a/>");
    EXPECT_EQ(document.strToXml(), "\n<a/>");
}

struct FileCase {
    const char* reason;
    std::string bytes;
    std::string dump;
    std::string message = {};
};

const FileCase kFileCases[] = {
    {"an empty file", "", ""},
    {"a line feed", "\n", ""},
    {"blanks belong to the text", "<a x=\" 1\t\n \"/>", "a x=\" 1\t\n \"()"},
    {"a carriage return before a line feed goes", "<a x=\"1\r\n2\r\r\n\"/>\r\n",
     "a x=\"1\n2\r\n\"()"},
    {"others stay", "<a x=\"\r1\n\r\"/>\r", "a x=\"\r1\n\r\"()"},
    {"a byte order mark at the start goes", "\xEF\xBB\xBF<a/>", "a()"},
    {"nothing but a byte order mark", "\xEF\xBB\xBF", ""},
    {"one elsewhere stays", "<!--\xEF\xBB\xBF-->", "'<!--\xEF\xBB\xBF-->'"},
    {"two byte order marks", "\xEF\xBB\xBF\xEF\xBB\xBF<a/>", "a()"},
    {"the text does not end at a NUL", "<a/>\0<b x=\"\0\"/>"s, "a() b x=\"\0\"()"s},
    {"a failure", "<a/><b>", "a() b()", "<b>Can not find </element>"},
    {"a line feed is thought behind the file", "<a/><b", "a()", "<b\nCan not find '>'"},
    {"also behind a line feed", "<a/><b\r\n", "a()", "<b\n\nCan not find '>'"},
};

TEST(CXmlDocument, FilesAreReadInTextMode)
{
    const TempFolder folder;
    for (const FileCase& c : kFileCases) {
        CXmlDocument document;
        const std::string path = folder.Write("document.xml", c.bytes);
        EXPECT_EQ(MessageOf([&] { document.ParseFile(path); }), c.message) << c.reason;
        EXPECT_EQ(Dump(document), c.dump) << c.reason;
    }
}

TEST(CXmlDocument, EveryFileReplacesWhatWasThere)
{
    const TempFolder folder;
    const std::string path = folder.Write("document.xml", "<a/>");
    CXmlDocument document;
    document.Parse("<former/>");
    document["x"] = "1";
    document.ParseFile(path);
    document.ParseFile(path);
    EXPECT_EQ(Dump(document), "a()");
    EXPECT_EQ(document["x"], "");
    const std::string failing = folder.Write("failing.xml", "<b/><c>");
    EXPECT_EQ(MessageOf([&] { document.ParseFile(failing); }), "<c>Can not find </element>");
    EXPECT_EQ(Dump(document), "b() c()");
}

TEST(CXmlDocument, FileThatCannotBeOpenedLeavesTheTree)
{
    const TempFolder folder;
    CXmlDocument document;
    document.Parse("<a x=\"1\"/>");
    for (const std::string& path : {folder.PathOf("missing.xml"), folder.Path(), std::string(),
                                    std::string("/dev/zero"), std::string("/dev/null")}) {
        EXPECT_EQ(MessageOf([&] { document.ParseFile(path); }), "Can not open file!") << path;
        EXPECT_EQ(Dump(document), "a x=\"1\"()") << path;
    }
}

TEST(CXmlDocument, ComposedPathsAreResolved)
{
    const TempFolder folder;
    folder.Write("document.xml", "<a/>");
    CXmlDocument document;
    document.ParseFile(folder.Path() + "\\document.xml");
    EXPECT_EQ(Dump(document), "a()");
    document.SaveFile(folder.Path() + "\\saved.xml");
    EXPECT_EQ(test::ReadFile(folder.PathOf("saved.xml")), "\n<a/>");
}

TEST(CXmlDocument, FileMayChangeOnceItWasRead)
{
    const TempFolder folder;
    const std::string path = folder.Write("document.xml", "<a x=\"1\"/>");
    CXmlDocument document;
    document.ParseFile(path);
    folder.Write("document.xml", "##############");
    EXPECT_EQ(document.cRoot()["x"], "1");
}

TEST(CXmlDocument, SaveEmptiesTheFileFirst)
{
    const TempFolder folder;
    const std::string path = folder.Write("document.xml", std::string(1000, 'x'));
    Parsed parsed("<?xml version=\"1.0\"?>text<root b=\"1\" a=\"2\">\r\n<c/></root>");
    parsed.document.SaveFile(path);
    EXPECT_EQ(test::ReadFile(path),
              "<?xml version=\"1.0\"?>\n<root a=\"2\" b=\"1\">\n<c/>\n</root>");
    CXmlDocument().SaveFile(path);
    EXPECT_EQ(test::ReadFile(path), "");
}

TEST(CXmlDocument, SavedFileReadsBack)
{
    const TempFolder folder;
    const std::string path = folder.PathOf("document.xml");
    Parsed parsed("<?xml?><!--1--><a x=\"1\"><b/><![CDATA[<]]></a>");
    parsed.document.SaveFile(path);
    CXmlDocument again;
    again.ParseFile(path);
    EXPECT_EQ(Dump(again), Dump(parsed.document));
    again.SaveFile(path);
    EXPECT_EQ(test::ReadFile(path), parsed.document.strToXml());
}

/// Writes itself in its own way.
class OwnXml : public CXmlDocument {
public:
    std::string strToXml() const override { return "<own/>" + CXmlDocument::strToXml(); }
};

TEST(CXmlDocument, SaveWritesWhatADerivedDocumentMakesOfItself)
{
    const TempFolder folder;
    OwnXml document;
    document.Parse("<a/>");
    document.SaveFile(folder.PathOf("document.xml"));
    EXPECT_EQ(test::ReadFile(folder.PathOf("document.xml")), "<own/>\n<a/>");
}

class UnwritableXml : public CXmlDocument {
public:
    std::string strToXml() const override { throw CXmlException("no text"); }
};

TEST(CXmlDocument, FileStaysWhereADerivedDocumentHasNoText)
{
    const TempFolder folder;
    const std::string path = folder.Write("document.xml", "<as/>before");
    EXPECT_EQ(MessageOf([&] { UnwritableXml().SaveFile(path); }), "no text");
    EXPECT_EQ(test::ReadFile(path), "<as/>before");
}

TEST(CXmlDocument, FileThatCannotBeWrittenIsAnError)
{
    const TempFolder folder;
    Parsed parsed("<a/>");
    const std::string message = "Can not write to file!";
    EXPECT_EQ(MessageOf([&] { parsed.document.SaveFile(folder.Path()); }), message);
    EXPECT_EQ(MessageOf([&] { parsed.document.SaveFile(""); }), message);
    EXPECT_EQ(MessageOf([&] { parsed.document.SaveFile(folder.PathOf("no/such.xml")); }), message);
    EXPECT_EQ(Dump(parsed.document), "a()");
}

TEST(CXmlDocument, APathWithANulIsAnErrorAndNotTheFileInFrontOfIt)
{
    const TempFolder folder;
    const std::string path = folder.Write("document.xml", "former");
    Parsed parsed("<a/>");
    EXPECT_EQ(MessageOf([&] { parsed.document.SaveFile(path + '\0'); }), "Can not write to file!");
    EXPECT_EQ(test::ReadFile(path), "former");
}

TEST(CXmlDocument, FullDeviceIsAnError)
{
    if (!std::filesystem::exists("/dev/full")) {
        GTEST_SKIP() << "no /dev/full";
    }
    Parsed small("<a/>");
    Parsed large("<a>" + test::Repeat("<b/>", 100000) + "</a>");
    const std::string message = "Can not write to file!";
    EXPECT_EQ(MessageOf([&] { small.document.SaveFile("/dev/full"); }), message);
    EXPECT_EQ(MessageOf([&] { large.document.SaveFile("/dev/full"); }), message);
}

} // namespace
} // namespace Vorlan
