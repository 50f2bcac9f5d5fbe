// The SHA-256 of files, as sha256sum tells it.
#ifndef PELGRIN_SHA256_H
#define PELGRIN_SHA256_H

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace pelgrin {

class Sha256 {
public:
    /// Throws Failure when the system's library has no SHA-256.
    Sha256();
    ~Sha256();
    Sha256(const Sha256&) = delete;
    Sha256& operator=(const Sha256&) = delete;

    void Add(std::string_view bytes);
    /// 64 hexadecimal digits in lower case. Nothing can be added afterwards.
    std::string Hex();

private:
    struct State;
    std::unique_ptr<State> state_;
};

/// Told the number of bytes that were read since it was told last.
using OnBytes = std::function<void(std::uint64_t bytes)>;

/// Of a file, read in pieces. Throws Failure when it cannot be read.
std::string Sha256OfFile(const std::string& path, const OnBytes& onBytes = {});

} // namespace pelgrin

#endif // PELGRIN_SHA256_H
