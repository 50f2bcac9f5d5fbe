// What inspect tells of any file: the same when it is asked again.
//
// The input: a letter for the name and the file (see WriteHostInput). The kind is
// always what the file shows.
#include <cstdint>
#include <string>

#include "FuzzSupport.h"
#include "HostInput.h"
#include "common/Failure.h"
#include "inspect/Inspect.h"

namespace {

using namespace Vorlan;

std::string FactsOf(const std::string& path)
{
    try {
        const pelgrin::Facts facts = pelgrin::Inspect(path);
        return pelgrin::TextOf(facts)
               + pelgrin::JsonOf(facts).dump(2, ' ', false,
                                             nlohmann::ordered_json::error_handler_t::replace);
    } catch (const pelgrin::Failure& failure) {
        return failure.what();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const fuzz::Folder folder;
    const std::string path = fuzz::WriteHostInput(folder, fuzz::TextOf(data, size)).path;
    const std::string facts = FactsOf(path);
    fuzz::CheckSame(FactsOf(path), facts, "the same is told of a file again");
    return 0;
}
