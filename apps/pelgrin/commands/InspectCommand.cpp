#include "commands/InspectCommand.h"

#include <memory>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>
#include <spdlog/spdlog.h>

#include "common/Failure.h"
#include "common/Terminal.h"
#include "inspect/Inspect.h"

namespace pelgrin {

namespace {

struct InspectTexts {
    std::vector<std::string> paths;
    bool isJson = false;
};

constexpr const char kInspectFooter[] = R"help(
Example:
  pelgrin inspect run01.mgf run01.pep.xml.gz proteins.fasta

Says of each file what it is, by its content: format, search engine, packing,
encoding, line ends, what stands in it, and how much of it can be read.

Exit status: 0 all were told; 1 a file could not be read (a message says which,
the others were told); 2 wrong usage.
)help";

/// One document with an array "files", and an object for each path.
void PrintJson(const nlohmann::ordered_json& files)
{
    const nlohmann::ordered_json document = {{"files", files}};
    PrintOut(document.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n");
}

ExitStatus RunInspect(const InspectTexts& texts)
{
    ExitStatus status = AllWell;
    auto files = nlohmann::ordered_json::array();
    bool isFirst = true;
    for (const std::string& path : texts.paths) {
        nlohmann::ordered_json file = {{"path", path}};
        try {
            const Facts facts = Inspect(path);
            file.update(JsonOf(facts));
            if (!texts.isJson) {
                PrintOut((isFirst ? "" : "\n") + OneLine(path) + "\n" + TextOf(facts));
                isFirst = false;
            }
        } catch (const Failure& failure) {
            spdlog::error("{}", OneLine(failure.what()));
            file["error"] = failure.what();
            status = Failed;
        }
        files.push_back(std::move(file));
    }
    if (texts.isJson) {
        PrintJson(files);
    }
    return status;
}

} // namespace

void AddInspectCommand(CLI::App& app, Command& chosen)
{
    CLI::App* const command =
        app.add_subcommand("inspect", "Say what files are, and what can be read of them");
    const auto texts = std::make_shared<InspectTexts>();
    command->footer(kInspectFooter);
    command->add_option("files", texts->paths, "files, packed or not, and folders of DTA files")
        ->type_name("FILE ...")
        ->required();
    command->add_flag("--json", texts->isJson, "one JSON document instead of text");
    command->callback([&chosen, texts] { chosen.run = [texts] { return RunInspect(*texts); }; });
}

} // namespace pelgrin
