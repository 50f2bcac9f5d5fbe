// What the commands that look for peptides in proteins have on their command lines.
#ifndef PELGRIN_EQUATEILOPTION_H
#define PELGRIN_EQUATEILOPTION_H

#include <CLI/CLI.hpp>

namespace pelgrin {

inline void AddEquateIlOption(CLI::App& command, bool& equateIl)
{
    command.add_flag("--equate-il", equateIl,
                     "leucine and isoleucine are one residue when peptides are looked for");
}

} // namespace pelgrin

#endif // PELGRIN_EQUATEILOPTION_H
