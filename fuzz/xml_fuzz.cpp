// The XML model against its plain, recursive twin.
//
// The input is a document; its last byte is the character behind it, which
// messages quote.
#include <cstdint>
#include <string>

#include "FuzzSupport.h"
#include "XmlDocument.h"
#include "support/XmlTwin.h"

namespace {

using namespace Vorlan;
using test::TwinNode;

/// Runs parse and gives the message, empty without a failure.
template <typename Parse>
std::string MessageOf(Parse parse)
{
    try {
        parse();
    } catch (const CXmlException& e) {
        return e.szWhat();
    }
    return {};
}

void CheckSameTree(const CXmlDocument& document, const TwinNode& twin, const char* rule)
{
    fuzz::CheckSame(test::DifferenceOf(document, nullptr, twin), "", rule);
    fuzz::CheckSame(document.strToXml(), TwinXml(twin), rule);
}

/// Both read text into a document that may hold something already.
std::string Read(CXmlDocument& document, TwinNode& twin, const std::string& text, char guard)
{
    const std::string behind = text + guard;
    const std::string message =
        MessageOf([&] { document.Parse(behind.data(), behind.data() + text.size()); });
    std::string expected = test::TwinParse(text, guard, twin);
    fuzz::CheckSame(message, expected.c_str(), "the message"); // it ends at a NUL
    CheckSameTree(document, twin, "the tree");
    return expected;
}

void CompareAsked(CXmlDocument& document, const TwinNode& twin)
{
    fuzz::CheckSame(test::WrongAnswerOf(document, twin), "", "the attributes");
    for (const char* const name : {"a", "b", ""}) {
        std::size_t count = 0;
        for (const TwinNode& child : twin.children) {
            const bool isOne = child.type == XML_ELEMENT && child.value == name;
            fuzz::Check(!isOne || document.pItem(name, count) != nullptr, "an item is found");
            count += isOne ? 1 : 0;
        }
        fuzz::Check(document.tCount(name) == count, "items are counted");
        fuzz::Check(document.pItem(name, count) == nullptr, "no other item is found");
    }
}

/// As a file is read in text mode.
std::string TextOfFile(std::string text)
{
    if (text.compare(0, 3, "\xEF\xBB\xBF") == 0) {
        text.erase(0, 3);
    }
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\r' || i + 1 == text.size() || text[i + 1] != '\n') {
            result += text[i];
        }
    }
    return result;
}

void CompareFile(const std::string& bytes)
{
    static fuzz::MemoryFile file;
    file.Write(bytes);
    CXmlDocument document;
    const std::string message = MessageOf([&] { document.ParseFile(file.Path()); });
    TwinNode twin;
    fuzz::CheckSame(message, test::TwinParse(TextOfFile(bytes), '\n', twin).c_str(),
                    "the message of a file");
    CheckSameTree(document, twin, "the tree of a file");
    document.SaveFile(file.Path());
    fuzz::CheckSame(file.Read(), TwinXml(twin), "the file that is written");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::string text(fuzz::TextOf(data, size));
    CompareFile(text);
    const char guard = text.empty() ? '\n' : text.back();
    if (!text.empty()) {
        text.pop_back();
    }
    CXmlDocument document;
    TwinNode twin;
    Read(document, twin, text, guard);
    CompareAsked(document, twin);
    Read(document, twin, document.strToXml(), '\n'); // behind what is there
    return 0;
}
