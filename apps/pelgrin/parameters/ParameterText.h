// The host's own look at a parameter file: in which line everything stands.
//
// The library tells key and section of a bad value but no line, and passes over
// keys that it does not know. This look follows the same rules (InitFile.h).
#ifndef PELGRIN_PARAMETERTEXT_H
#define PELGRIN_PARAMETERTEXT_H

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace pelgrin {

class ParameterText {
public:
    struct Entry {
        std::string section;
        std::string key;
        std::string value;
        std::uint64_t line = 0;
    };
    struct Header {
        std::string section;
        std::uint64_t line = 0;
    };

    /// Reads the file. Throws Failure with file, line and what was expected
    /// for a line that is neither header nor pair.
    explicit ParameterText(std::string path);

    const std::string& Path() const { return path_; }
    const std::vector<Entry>& Entries() const { return entries_; } ///< all, in order
    const std::vector<Header>& Headers() const { return headers_; }
    /// The line that is too long and ends the reading; 0 none.
    std::uint64_t LongLine() const { return longLine_; }

    /// The entry that counts: the last one of the key. Null when there is none.
    const Entry* Find(const std::string& section, const std::string& key) const;
    /// Its value; empty when there is none.
    std::string ValueOf(const std::string& section, const std::string& key) const;
    /// The line of a section's first header; 0 when there is none.
    std::uint64_t LineOfSection(const std::string& section) const;

    /// "run.ini:12: fragment_tol": what a message about a key begins with. For
    /// a key that is not there the line is that of its section.
    std::string PlaceOf(const std::string& section, const std::string& key) const;

private:
    void Take(const std::string& line, std::uint64_t number);

    std::string path_;
    std::vector<Entry> entries_;
    std::vector<Header> headers_;
    std::map<std::pair<std::string, std::string>, std::size_t> last_; ///< section, key -> entry
    std::uint64_t longLine_ = 0;
};

} // namespace pelgrin

#endif // PELGRIN_PARAMETERTEXT_H
