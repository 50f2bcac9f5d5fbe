#include "files/Sha256.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <vector>

#include <fmt/format.h>
#include <openssl/evp.h>

#include "common/Failure.h"

namespace pelgrin {

namespace {

void Check(int isGood)
{
    if (isGood != 1) {
        throw Failure("SHA-256 cannot be computed: the system's libcrypto refuses it");
    }
}

} // namespace

struct Sha256::State {
    std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context{EVP_MD_CTX_new(),
                                                                    EVP_MD_CTX_free};
};

Sha256::Sha256() : state_(std::make_unique<State>())
{
    Check(state_->context != nullptr ? 1 : 0);
    Check(EVP_DigestInit_ex(state_->context.get(), EVP_sha256(), nullptr));
}

Sha256::~Sha256() = default;

void Sha256::Add(std::string_view bytes)
{
    Check(EVP_DigestUpdate(state_->context.get(), bytes.data(), bytes.size()));
}

std::string Sha256::Hex()
{
    unsigned char digest[EVP_MAX_MD_SIZE];
    unsigned int size = 0;
    Check(EVP_DigestFinal_ex(state_->context.get(), digest, &size));
    std::string hex;
    for (unsigned int i = 0; i < size; ++i) {
        hex += fmt::format("{:02x}", digest[i]);
    }
    return hex;
}

std::string Sha256OfFile(const std::string& path, const OnBytes& onBytes)
{
    constexpr std::size_t kPiece = std::size_t{1} << 18;
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    std::vector<char> piece(kPiece);
    Sha256 sum;
    while (file) {
        file.read(piece.data(), static_cast<std::streamsize>(piece.size()));
        const auto count = static_cast<std::size_t>(file.gcount());
        sum.Add({piece.data(), count});
        if (onBytes) {
            onBytes(count);
        }
    }
    if (!file.eof()) {
        throw Failure(fmt::format("{}: cannot be read{}{}", path, errno != 0 ? ": " : "",
                                  errno != 0 ? std::strerror(errno) : ""));
    }
    return sum.Hex();
}

} // namespace pelgrin
