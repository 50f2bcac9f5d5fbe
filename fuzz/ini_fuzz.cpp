// Parameter files against a plain twin, and through a file and back.
//
// The first line of the input holds the comment symbols, the rest is the file
// (see Expanded).
#include <cstdint>
#include <string>

#include <OpenMS/CONCEPT/Exception.h>

#include "FuzzSupport.h"
#include "InitFile.h"
#include "support/IniTwin.h"

namespace {

using namespace Vorlan;

/// The message of the failure, empty without one.
std::string Load(InitFile& parameters, const std::string& path)
{
    try {
        parameters.Load(path);
    } catch (const OpenMS::Exception::InvalidParameter& e) {
        return e.getMessage();
    }
    return {};
}

void CheckSections(const InitFile& parameters, const test::TwinSections& expected, const char* rule)
{
    for (const auto& [name, pairs] : expected) {
        const Section* const section = parameters.pGetSection(name);
        fuzz::Check(section != nullptr, rule);
        fuzz::CheckSame(section->strName, name, rule);
        fuzz::Check(section->mapValues.size() == pairs.size(), rule);
        for (const auto& [key, value] : pairs) {
            fuzz::CheckSame(parameters.Get(name, key), value, rule);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static fuzz::MemoryFile file;
    const std::string_view input = fuzz::TextOf(data, size);
    const std::size_t feed = input.find('\n');
    const std::string symbols(input.substr(0, feed));
    const std::string text =
        feed == std::string_view::npos ? std::string() : fuzz::Expanded(input.substr(feed + 1));
    file.Write(text);

    InitFile parameters;
    parameters.SetSymbol(symbols);
    const std::string message = Load(parameters, file.Path());
    test::IniTwin twin(symbols);
    twin.Load(text);
    fuzz::CheckSame(message, twin.Message(), "the message");
    CheckSections(parameters, twin.Sections(), "the sections");

    parameters.Save(file.Path());
    const std::string saved = file.Read();
    fuzz::CheckSame(saved, test::TwinText(twin.Sections()), "the file that is written");

    // What was read from a file comes back whole, when nothing is a comment.
    InitFile again;
    again.SetSymbol("");
    fuzz::CheckSame(Load(again, file.Path()), "", "what was written can be read");
    CheckSections(again, twin.Sections(), "the sections come back");
    again.Save(file.Path());
    fuzz::CheckSame(file.Read(), saved, "and are written in the same way");
    return 0;
}
