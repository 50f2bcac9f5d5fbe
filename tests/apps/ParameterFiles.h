// Parameter files for tests, and a place to run them in.
#ifndef PELGRIN_TESTS_PARAMETERFILES_H
#define PELGRIN_TESTS_PARAMETERFILES_H

#include <string>
#include <vector>

#include "HostProgram.h"

namespace pelgrin::test {

/// A parameter file that can be changed key by key.
class Ini {
public:
    /// A closed search with 20 ppm; run.mgf and psms.txt in the working folder,
    /// modifications of mods.txt, no FDR control, results in "out".
    Ini();
    /// Any text.
    explicit Ini(std::string text) : text_(std::move(text)) {}

    /// Replaces the value of a key, or adds the key at the end of its section.
    Ini With(const std::string& section, const std::string& key, const std::string& value) const;
    Ini Without(const std::string& key) const;
    Ini WithoutSection(const std::string& section) const;
    /// Turns FDR control on: decoys begin with "D_".
    Ini WithFdr(const std::string& threshold, const std::string& method = "1",
                const std::string& formula = "1") const;
    /// Turns localization on, without target modifications.
    Ini WithLocalization() const;

    const std::string& Text() const { return text_; }
    /// The number of the line that begins with front, from 1.
    std::size_t LineOf(const std::string& front) const;

private:
    std::string text_;
};

/// A Workplace with mods.txt, in which pelgrin runs.
class ParameterWorkplace : public Workplace {
public:
    ParameterWorkplace();

    /// Writes ini as run.ini and runs "pelgrin" with arguments + run.ini.
    Outcome Pelgrin(const std::vector<std::string>& arguments, const Ini& ini) const;
    Outcome Run(const Ini& ini) const { return Pelgrin({"run"}, ini); }
    Outcome Check(const Ini& ini) const { return Pelgrin({"params", "check"}, ini); }
    /// Runs on psms.txt with these rows.
    Outcome Run(const Ini& ini, const std::vector<Row>& rows) const;
};

/// Six modifications as a table of the library's own.
std::string ModificationTable();

} // namespace pelgrin::test

#endif // PELGRIN_TESTS_PARAMETERFILES_H
