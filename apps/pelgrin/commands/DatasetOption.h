// What the commands that join records and spectra have on their command lines.
#ifndef PELGRIN_DATASETOPTION_H
#define PELGRIN_DATASETOPTION_H

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace pelgrin {

inline void AddDatasetOption(CLI::App& command, std::vector<std::string>& datasets)
{
    command
        .add_option("--dataset", datasets,
                    "file of spectra that a dataset name of the records means; once for each name")
        ->type_name("NAME=FILE");
}

} // namespace pelgrin

#endif // PELGRIN_DATASETOPTION_H
