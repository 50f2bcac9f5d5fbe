// What the commands that read a parameter file have on their command lines.
#ifndef PELGRIN_PARAMETERFILEOPTIONS_H
#define PELGRIN_PARAMETERFILEOPTIONS_H

#include <memory>
#include <string>

#include <CLI/CLI.hpp>

namespace pelgrin {

struct ParameterFileOptions {
    std::string file;
    bool makeTable = false;
};

inline std::shared_ptr<ParameterFileOptions> AddParameterFileOptions(CLI::App& command)
{
    auto options = std::make_shared<ParameterFileOptions>();
    command
        .add_option("PARAMETERS.ini", options->file, "its parameters; see pelgrin params template")
        ->type_name("FILE")
        ->required();
    command.add_flag("--make-table", options->makeTable,
                     "make unimod.txt in the working folder when it is needed and missing");
    return options;
}

} // namespace pelgrin

#endif // PELGRIN_PARAMETERFILEOPTIONS_H
