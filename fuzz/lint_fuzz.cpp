// The findings of lint in any file: the same when it is looked through again.
//
// The input: a letter for the kind and the file (see WriteHostInput).
#include <cstdint>
#include <optional>
#include <string>

#include "FuzzSupport.h"
#include "HostInput.h"
#include "common/Failure.h"
#include "lint/FindingsText.h"
#include "lint/Lint.h"

namespace {

using namespace Vorlan;

/// As "pelgrin lint" does it: what is given as a kind is the format of a result.
std::string FindingsIn(const fuzz::HostInput& input)
{
    constexpr std::size_t kExamples = 3;
    pelgrin::Findings findings(kExamples);
    std::string failure;
    try {
        if (input.kind) {
            findings.Begin(input.path, *input.kind);
            pelgrin::Lint(input.path, *input.kind, findings);
        } else {
            pelgrin::LintFile(input.path, std::nullopt, findings);
        }
    } catch (const pelgrin::Failure& failed) {
        failure = failed.what();
    }
    return failure + "\n" + pelgrin::TextOf(findings) + pelgrin::JsonOf(findings);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const fuzz::Folder folder;
    const fuzz::HostInput input = fuzz::WriteHostInput(folder, fuzz::TextOf(data, size));
    const std::string findings = FindingsIn(input);
    fuzz::CheckSame(FindingsIn(input), findings, "a file has the same findings again");
    return 0;
}
