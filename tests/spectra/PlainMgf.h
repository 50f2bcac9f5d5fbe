// The slow twin of the MGF reader: streams, sscanf and std::map, written as
// plainly as the rules are told.
#ifndef VORLAN_TESTS_PLAINMGF_H
#define VORLAN_TESTS_PLAINMGF_H

#include <cstdint>
#include <fstream>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "DataStructures.h"

namespace Vorlan::test {

/// atoi, but a number beyond 32 bits becomes the nearest one of them.
std::int32_t PlainAtoi(const std::string& text);

/// The names of a title line, in the order in which they are entered. Repeated
/// ones stay.
std::vector<std::string> PlainTitleNames(std::string line);

class PlainMgf {
public:
    using Index = std::map<std::string, std::uint64_t>;

    explicit PlainMgf(const std::string& path);

    const Index& Names() const { return index_; }

    /// The spectrum of a known name. What its record does not set keeps the
    /// value of the one loaded before.
    const Spectrum& Load(const std::string& name);

private:
    bool NextLine();
    void SetMap();
    void ReadHeaderLine();
    void GetOneSpec();

    std::ifstream file_;
    std::vector<char> buffer_;
    const char* line_;
    Index index_;
    Spectrum current_;
};

} // namespace Vorlan::test

#endif // VORLAN_TESTS_PLAINMGF_H
