// The four libraries are asked themselves: the filters of libarchive take data that
// are cut off, damaged or followed by others for whole ones, without a word.
#include "files/Packed.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <vector>

#include <bzlib.h>
#include <fmt/format.h>
#include <lzma.h>
#include <zlib.h>
#include <zstd.h>

#include "common/Failure.h"

namespace pelgrin {

namespace {

constexpr std::size_t kBlock = std::size_t{256} * 1024;

struct Form {
    Packing packing;
    const char* ending;
    std::string_view magic;
};

constexpr std::array<Form, 4> kForms = {{
    {Packing::Gzip, "gz", "\x1f\x8b"},
    {Packing::Bzip2, "bz2", "BZh"},
    {Packing::Xz, "xz", std::string_view("\xfd\x37zXZ\0", 6)},
    {Packing::Zstd, "zst", "\x28\xb5\x2f\xfd"},
}};

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

File Open(const std::string& path, const char* mode)
{
    File file(std::fopen(path.c_str(), mode));
    if (file == nullptr) {
        throw Failure(fmt::format("{}: cannot be opened: {}", path, std::strerror(errno)));
    }
    return file;
}

/// What is unpacked goes here.
class Target {
public:
    Target(const std::string& source, const std::string& path)
        : source_(source), path_(path), file_(Open(path, "wb"))
    {
    }

    void Write(const void* bytes, std::size_t size)
    {
        if (std::fwrite(bytes, 1, size, file_.get()) != size) {
            Fail();
        }
    }

    /// Before the destructor, which could tell nobody.
    void Close()
    {
        if (std::fclose(file_.release()) != 0) {
            Fail();
        }
    }

private:
    [[noreturn]] void Fail() const
    {
        throw Failure(fmt::format("{}: cannot be unpacked: {} cannot be written to its end: {}",
                                  source_, path_, std::strerror(errno)));
    }

    std::string source_;
    std::string path_;
    File file_;
};

/// A decoder of one packing. Members, the pieces that were packed alone, may
/// stand one behind the other.
class Decoder {
public:
    struct Span {
        std::uint8_t* next;
        std::size_t size;
    };

    Decoder() = default;
    virtual ~Decoder() = default;
    Decoder(const Decoder&) = delete;
    Decoder& operator=(const Decoder&) = delete;

    /// Takes from in and gives to out; true when the member ended, and the next
    /// call then begins one. Throws std::runtime_error for damaged data.
    virtual bool Step(Span& in, Span& out) = 0;
};

[[noreturn]] void DamagedData(const char* reason = nullptr)
{
    throw std::runtime_error(reason != nullptr ? reason : "the data are damaged");
}

void Check(bool isGood)
{
    if (!isGood) {
        DamagedData("no memory");
    }
}

class GzipDecoder : public Decoder {
public:
    GzipDecoder()
    {
        constexpr int kGzipOnly = 16 + MAX_WBITS;
        Check(inflateInit2(&stream_, kGzipOnly) == Z_OK);
    }
    ~GzipDecoder() override { inflateEnd(&stream_); }

    bool Step(Span& in, Span& out) override
    {
        stream_.next_in = in.next;
        stream_.avail_in = static_cast<uInt>(in.size);
        stream_.next_out = out.next;
        stream_.avail_out = static_cast<uInt>(out.size);
        const int state = inflate(&stream_, Z_NO_FLUSH);
        if (state != Z_OK && state != Z_STREAM_END && state != Z_BUF_ERROR) {
            DamagedData(stream_.msg);
        }
        in = {stream_.next_in, stream_.avail_in};
        out = {stream_.next_out, stream_.avail_out};
        if (state == Z_STREAM_END) {
            inflateReset(&stream_);
        }
        return state == Z_STREAM_END;
    }

private:
    z_stream stream_ = {};
};

class Bzip2Decoder : public Decoder {
public:
    Bzip2Decoder() { Begin(); }
    ~Bzip2Decoder() override { BZ2_bzDecompressEnd(&stream_); }

    bool Step(Span& in, Span& out) override
    {
        stream_.next_in = reinterpret_cast<char*>(in.next);
        stream_.avail_in = static_cast<unsigned>(in.size);
        stream_.next_out = reinterpret_cast<char*>(out.next);
        stream_.avail_out = static_cast<unsigned>(out.size);
        const int state = BZ2_bzDecompress(&stream_);
        if (state != BZ_OK && state != BZ_STREAM_END) {
            DamagedData();
        }
        in = {reinterpret_cast<std::uint8_t*>(stream_.next_in), stream_.avail_in};
        out = {reinterpret_cast<std::uint8_t*>(stream_.next_out), stream_.avail_out};
        if (state == BZ_STREAM_END) {
            BZ2_bzDecompressEnd(&stream_);
            Begin();
        }
        return state == BZ_STREAM_END;
    }

private:
    void Begin()
    {
        stream_ = {};
        Check(BZ2_bzDecompressInit(&stream_, 0, 0) == BZ_OK);
    }

    bz_stream stream_ = {};
};

class XzDecoder : public Decoder {
public:
    XzDecoder() { Begin(); }
    ~XzDecoder() override { lzma_end(&stream_); }

    bool Step(Span& in, Span& out) override
    {
        stream_.next_in = in.next;
        stream_.avail_in = in.size;
        stream_.next_out = out.next;
        stream_.avail_out = out.size;
        const lzma_ret state = lzma_code(&stream_, LZMA_RUN);
        if (state != LZMA_OK && state != LZMA_STREAM_END && state != LZMA_BUF_ERROR) {
            DamagedData(state == LZMA_MEMLIMIT_ERROR ? "it needs more than 1 GiB of memory"
                                                     : nullptr);
        }
        in = {in.next + (in.size - stream_.avail_in), stream_.avail_in};
        out = {stream_.next_out, stream_.avail_out};
        if (state == LZMA_STREAM_END) {
            Begin();
        }
        return state == LZMA_STREAM_END;
    }

private:
    void Begin()
    {
        constexpr std::uint64_t kMostMemory = std::uint64_t{1} << 30;
        Check(lzma_stream_decoder(&stream_, kMostMemory, 0) == LZMA_OK);
    }

    lzma_stream stream_ = LZMA_STREAM_INIT;
};

class ZstdDecoder : public Decoder {
public:
    ZstdDecoder() : stream_(ZSTD_createDStream()) { Check(stream_ != nullptr); }
    ~ZstdDecoder() override { ZSTD_freeDStream(stream_); }

    bool Step(Span& in, Span& out) override
    {
        ZSTD_inBuffer source = {in.next, in.size, 0};
        ZSTD_outBuffer target = {out.next, out.size, 0};
        const std::size_t state = ZSTD_decompressStream(stream_, &target, &source);
        if (ZSTD_isError(state) != 0) {
            DamagedData(ZSTD_getErrorName(state));
        }
        in = {in.next + source.pos, in.size - source.pos};
        out = {out.next + target.pos, out.size - target.pos};
        return state == 0;
    }

private:
    ZSTD_DStream* stream_;
};

std::unique_ptr<Decoder> DecoderOf(Packing packing)
{
    switch (packing) {
    case Packing::Gzip: return std::make_unique<GzipDecoder>();
    case Packing::Bzip2: return std::make_unique<Bzip2Decoder>();
    case Packing::Xz: return std::make_unique<XzDecoder>();
    default: return std::make_unique<ZstdDecoder>();
    }
}

/// The bytes of a packed file, in blocks.
class Source {
public:
    explicit Source(const std::string& path) : file_(Open(path, "rb")), block_(kBlock) {}

    Decoder::Span& Bytes() { return bytes_; }

    /// Reads on when all is taken; false at the end of the file.
    bool HasMore()
    {
        if (bytes_.size == 0) {
            bytes_ = {block_.data(), std::fread(block_.data(), 1, block_.size(), file_.get())};
            if (std::ferror(file_.get()) != 0) {
                DamagedData("it cannot be read to its end");
            }
        }
        return bytes_.size > 0;
    }

    /// gzip and xz allow zeros behind a member.
    void SkipZeros()
    {
        while (HasMore() && *bytes_.next == 0) {
            ++bytes_.next;
            --bytes_.size;
        }
    }

private:
    File file_;
    std::vector<std::uint8_t> block_;
    Decoder::Span bytes_ = {nullptr, 0};
};

/// One member, to its end.
void UnpackMember(Source& source, Decoder& decoder, Target& target)
{
    std::vector<std::uint8_t> block(kBlock);
    bool isAtEnd = false;
    while (!isAtEnd) {
        const bool hasInput = source.HasMore();
        Decoder::Span out = {block.data(), block.size()};
        isAtEnd = decoder.Step(source.Bytes(), out);
        const std::size_t written = block.size() - out.size;
        target.Write(block.data(), written);
        if (!isAtEnd && !hasInput && written == 0) {
            DamagedData("the data end too early");
        }
    }
}

} // namespace

const char* TextOf(Packing packing)
{
    const auto* const form =
        std::find_if(kForms.begin(), kForms.end(),
                     [packing](const Form& known) { return known.packing == packing; });
    return form == kForms.end() ? "" : form->ending;
}

Packing PackingOf(const std::string& path)
{
    const File file = Open(path, "rb");
    std::array<char, 8> bytes = {};
    const std::size_t size = std::fread(bytes.data(), 1, bytes.size(), file.get());
    if (std::ferror(file.get()) != 0) {
        throw Failure(fmt::format("{}: cannot be read: {}", path, std::strerror(errno)));
    }
    const std::string_view begin(bytes.data(), size);
    for (const Form& form : kForms) {
        if (begin.substr(0, form.magic.size()) == form.magic) {
            return form.packing;
        }
    }
    return Packing::None;
}

void RefusePacked(const std::string& path)
{
    std::error_code ignored;
    const Packing packing =
        std::filesystem::is_directory(path, ignored) ? Packing::None : PackingOf(path);
    if (packing != Packing::None) {
        throw Failure(
            fmt::format("{}: is packed ({}); expected a plain file, which pelgrin prepare "
                        "makes of it",
                        path, TextOf(packing)));
    }
}

std::string NameWithoutPacking(const std::string& path)
{
    std::string name = path.substr(path.rfind('/') + 1);
    const std::size_t dot = name.rfind('.');
    if (dot == std::string::npos || dot == 0) {
        return name;
    }
    std::string ending = name.substr(dot + 1);
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](unsigned char letter) { return std::tolower(letter); });
    const bool isPacking = std::any_of(kForms.begin(), kForms.end(), [&ending](const Form& form) {
        return ending == form.ending;
    });
    return isPacking ? name.substr(0, dot) : name;
}

void Unpack(const std::string& path, const std::string& target)
{
    const Packing packing = PackingOf(path);
    if (packing == Packing::None) {
        throw Failure(fmt::format("{}: is not packed with gzip, bzip2, xz or zstd", path));
    }
    Target unpacked(path, target);
    try {
        Source source(path);
        const std::unique_ptr<Decoder> decoder = DecoderOf(packing);
        while (source.HasMore()) {
            UnpackMember(source, *decoder, unpacked);
            if (packing == Packing::Gzip || packing == Packing::Xz) {
                source.SkipZeros();
            }
        }
    } catch (const Failure&) {
        throw;
    } catch (const std::runtime_error& error) {
        throw Failure(fmt::format("{}: cannot be unpacked: {}", path, error.what()));
    }
    unpacked.Close();
}

std::string Unpacked(const std::string& path, ScratchFolder& scratch)
{
    if (PackingOf(path) == Packing::None) {
        return path;
    }
    std::string plain = scratch.PathOf(NameWithoutPacking(path));
    Unpack(path, plain);
    return plain;
}

std::string WithGivenPath(std::string text, const std::string& unpacked, const std::string& given)
{
    for (std::size_t hit = text.find(unpacked); unpacked != given && hit != std::string::npos;
         hit = text.find(unpacked, hit + given.size())) {
        text.replace(hit, unpacked.size(), given);
    }
    return text;
}

} // namespace pelgrin
