// The steps of reading a parameter file, one function for a section. Each
// throws for the first value that is missing or bad.
#ifndef VORLAN_PARAM_PARAMETERREADER_H
#define VORLAN_PARAM_PARAMETERREADER_H

#include <cstdint>
#include <string>

#include "ModificationDB.h"
#include "TulkParam.h"

namespace Vorlan {

/// "<key>" in section "<section>", double quotes included.
std::string ParameterPlace(const std::string& key, const std::string& section);

/// The values of one section.
class SectionReader {
public:
    SectionReader(const InitFile& file, std::string section);

    /// The value, empty when it is missing.
    std::string Optional(const std::string& key) const;
    /// The value. Throws when it is missing.
    std::string Required(const std::string& key) const;

    /// What a required value means, by atof and atoi (B-51).
    double Number(const std::string& key) const;
    std::int32_t Count(const std::string& key) const;

    [[noreturn]] void Missing(const std::string& key) const;
    [[noreturn]] void Invalid(const std::string& key) const;

private:
    const InitFile& file_;
    std::string section_;
};

/// Reads the section "Search" into param and gives the database that it names.
const CModificationsDB& ReadSearch(const InitFile& file, CSearchParam& param);
void ReadFdrControl(const InitFile& file, CFdrControlParam& param);
void ReadLocalize(const InitFile& file, const CModificationsDB& database, CLocalizeParam& param);
/// localize tells whether localization is on.
void ReadAnnotate(const InitFile& file, bool localize, CAnnotateParam& param);
std::string ReadOutput(const InitFile& file);

} // namespace Vorlan

#endif // VORLAN_PARAM_PARAMETERREADER_H
