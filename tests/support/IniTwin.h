// The slow twin of the parameter file's reader and writer.
#ifndef VORLAN_TESTS_INITWIN_H
#define VORLAN_TESTS_INITWIN_H

#include <cstddef>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace Vorlan::test {

/// Sections in the order first met.
using TwinSections = std::vector<std::pair<std::string, std::map<std::string, std::string>>>;

class IniTwin {
public:
    explicit IniTwin(std::string symbols) : symbols_(std::move(symbols)) {}

    /// Reads a whole file; sections that were read before go.
    void Load(std::string text)
    {
        constexpr std::size_t kLongestLine = 81919;
        if (text.compare(0, 3, "\xEF\xBB\xBF") == 0) {
            text.erase(0, 3);
        }
        std::istringstream input(text);
        std::string line;
        bool isWhole = true;
        for (int number = 1; isWhole && std::getline(input, line); ++number) {
            if (!input.eof() && !line.empty() && line.back() == '\r') {
                line.pop_back();
            }
            isWhole = line.size() <= kLongestLine;
            line.resize(isWhole ? line.size() : kLongestLine);
            if (!Read(line.c_str())) { // a NUL ends a line
                message_ =
                    std::to_string(number) + " \"" + line.c_str() + "\" Invalid parameter format";
                return;
            }
        }
    }

    const TwinSections& Sections() const { return sections_; }

    /// Empty without a failure.
    const std::string& Message() const { return message_; }

private:
    static std::string Trimmed(const std::string& text)
    {
        const char* const blanks = " \t\n\r";
        const std::size_t first = text.find_first_not_of(blanks);
        return first == std::string::npos
                   ? std::string()
                   : text.substr(first, text.find_last_not_of(blanks) + 1 - first);
    }

    /// False for a line that is neither comment, header nor pair.
    bool Read(const std::string& line)
    {
        std::string text = line;
        for (const char symbol : symbols_) {
            if (line.find(symbol) != std::string::npos) {
                text = line.substr(0, line.find(symbol));
                break;
            }
        }
        text = Trimmed(text);
        if (text.size() >= 2 && text.front() == '[' && text.back() == ']') {
            Open(Trimmed(text.substr(1, text.size() - 2)));
            return true;
        }
        const std::size_t equals = text.find('=');
        if (!text.empty()) {
            if (equals == std::string::npos || text.rfind('=') != equals || sections_.empty()) {
                return false;
            }
            sections_[current_].second[Trimmed(text.substr(0, equals))] =
                Trimmed(text.substr(equals + 1));
        }
        return true;
    }

    void Open(const std::string& name)
    {
        for (current_ = 0; current_ < sections_.size(); ++current_) {
            if (sections_[current_].first == name) {
                return;
            }
        }
        sections_.emplace_back(name, std::map<std::string, std::string>());
    }

    std::string symbols_;
    TwinSections sections_;
    std::size_t current_ = 0;
    std::string message_;
};

inline std::string TwinText(const TwinSections& sections)
{
    std::string text;
    for (const auto& [name, pairs] : sections) {
        text += "[" + name + "]\n";
        for (const auto& [key, value] : pairs) {
            text += key + "=" + value + "\n";
        }
    }
    return text;
}

} // namespace Vorlan::test

#endif // VORLAN_TESTS_INITWIN_H
