#include "files/Packed.h"

#include <cstdint>
#include <filesystem>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include <bzlib.h>
#include <gmock/gmock.h>
#include <lzma.h>
#include <zlib.h>
#include <zstd.h>

#include "common/Failure.h"
#include "support/Support.h"

using namespace pelgrin;
using testing::HasSubstr;

namespace {

std::string Gzip(const std::string& text)
{
    std::string bytes(compressBound(text.size()) + 64, '\0');
    z_stream stream = {};
    constexpr int kGzip = 16 + MAX_WBITS;
    deflateInit2(&stream, 9, Z_DEFLATED, kGzip, 8, Z_DEFAULT_STRATEGY);
    std::string source = text;
    stream.next_in = reinterpret_cast<Bytef*>(source.data());
    stream.avail_in = static_cast<uInt>(source.size());
    stream.next_out = reinterpret_cast<Bytef*>(bytes.data());
    stream.avail_out = static_cast<uInt>(bytes.size());
    EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
    bytes.resize(stream.total_out);
    deflateEnd(&stream);
    return bytes;
}

std::string Bzip2(const std::string& text)
{
    auto size = static_cast<unsigned>(text.size() * 2 + 1024);
    std::string bytes(size, '\0');
    std::string source = text;
    EXPECT_EQ(BZ2_bzBuffToBuffCompress(bytes.data(), &size, source.data(),
                                       static_cast<unsigned>(source.size()), 9, 0, 0),
              BZ_OK);
    bytes.resize(size);
    return bytes;
}

std::string Xz(const std::string& text)
{
    std::size_t size = 0;
    std::string bytes(lzma_stream_buffer_bound(text.size()), '\0');
    EXPECT_EQ(lzma_easy_buffer_encode(
                  6, LZMA_CHECK_CRC64, nullptr, reinterpret_cast<const std::uint8_t*>(text.data()),
                  text.size(), reinterpret_cast<std::uint8_t*>(bytes.data()), &size, bytes.size()),
              LZMA_OK);
    bytes.resize(size);
    return bytes;
}

std::string Zstd(const std::string& text)
{
    std::string bytes(ZSTD_compressBound(text.size()), '\0');
    ZSTD_CCtx* const context = ZSTD_createCCtx();
    ZSTD_CCtx_setParameter(context, ZSTD_c_checksumFlag, 1);
    bytes.resize(ZSTD_compress2(context, bytes.data(), bytes.size(), text.data(), text.size()));
    ZSTD_freeCCtx(context);
    return bytes;
}

struct Form {
    Packing packing;
    const char* ending;
    std::string (*pack)(const std::string& text);
};

void PrintTo(const Form& form, std::ostream* out)
{
    *out << form.ending;
}

std::string Packed(const Form& form, const std::string& text)
{
    return form.pack(text);
}

/// What Unpack writes, or the message of its failure behind "!".
std::string Unpacked(const std::string& bytes)
{
    const Vorlan::test::TempFolder folder;
    try {
        Unpack(folder.Write("packed", bytes), folder.PathOf("text"));
    } catch (const Failure& failure) {
        return std::string("!") + failure.what();
    }
    return Vorlan::test::ReadFile(folder.PathOf("text"));
}

std::string SomeText()
{
    std::string text;
    for (int i = 0; i < 40; ++i) {
        text += std::to_string(i * 7919 % 1000) + ".25 " + std::to_string(i) + "\n";
    }
    return text;
}

class Packed_test : public testing::TestWithParam<Form> {};

} // namespace

TEST_P(Packed_test, TextComesBack)
{
    for (const std::string& text : {std::string("a"), SomeText(), std::string(3'000'000, 'x')}) {
        EXPECT_EQ(Unpacked(Packed(GetParam(), text)), text);
    }
}

TEST_P(Packed_test, IsKnownByItsFirstBytes)
{
    const Vorlan::test::TempFolder folder;
    EXPECT_EQ(PackingOf(folder.Write("any.name", Packed(GetParam(), "text"))), GetParam().packing);
    EXPECT_STREQ(TextOf(GetParam().packing), GetParam().ending);
}

TEST_P(Packed_test, MembersOneBehindTheOtherAreAllUnpacked)
{
    const std::string first = Packed(GetParam(), "first\n");
    EXPECT_EQ(Unpacked(first + Packed(GetParam(), "second\n") + first), "first\nsecond\nfirst\n");
}

TEST_P(Packed_test, PackedEmptyFileIsEmpty)
{
    EXPECT_EQ(Unpacked(Packed(GetParam(), "")), "");
}

TEST_P(Packed_test, FileCutOffAtAnyPlaceFails)
{
    const std::string whole = Packed(GetParam(), SomeText());
    for (std::size_t length = 6; length < whole.size(); ++length) {
        EXPECT_THAT(Unpacked(whole.substr(0, length)), HasSubstr("packed: cannot be unpacked: "))
            << length << " of " << whole.size();
    }
}

TEST_P(Packed_test, SecondMemberCutOffFails)
{
    const std::string first = Packed(GetParam(), "first\n");
    for (std::size_t length = 1; length < first.size(); ++length) {
        EXPECT_THAT(Unpacked(first + first.substr(0, length)), HasSubstr("cannot be unpacked"))
            << length << " of " << first.size();
    }
}

TEST_P(Packed_test, TextBehindTheLastMemberFails)
{
    EXPECT_THAT(Unpacked(Packed(GetParam(), "first\n") + "BEGIN IONS\n"),
                HasSubstr("cannot be unpacked"));
}

TEST_P(Packed_test, ByteThatIsDamagedNeverGivesOtherText)
{
    const std::string text = SomeText();
    const std::string whole = Packed(GetParam(), text);
    for (std::size_t i = 6; i < whole.size(); ++i) {
        std::string damaged = whole;
        damaged[i] = static_cast<char>(damaged[i] ^ 0x41);
        const std::string unpacked = Unpacked(damaged);
        EXPECT_TRUE(unpacked == text || unpacked.substr(0, 1) == "!") << "byte " << i;
    }
}

TEST_P(Packed_test, FullDiskIsTold)
{
    const Vorlan::test::TempFolder folder;
    const std::string path = folder.Write("packed", Packed(GetParam(), SomeText()));
    if (!std::filesystem::exists("/dev/full")) {
        GTEST_SKIP() << "no /dev/full here";
    }
    try {
        Unpack(path, "/dev/full");
        FAIL() << "nothing was told";
    } catch (const Failure& failure) {
        EXPECT_THAT(failure.what(), HasSubstr("/dev/full cannot be written to its end: "));
    }
}

INSTANTIATE_TEST_SUITE_P(Forms, Packed_test,
                         testing::Values(Form{Packing::Gzip, "gz", Gzip},
                                         Form{Packing::Bzip2, "bz2", Bzip2},
                                         Form{Packing::Xz, "xz", Xz},
                                         Form{Packing::Zstd, "zst", Zstd}),
                         [](const auto& form) { return std::string(form.param.ending); });

TEST(Packed, ZerosBehindGzipArePadding)
{
    EXPECT_EQ(Unpacked(Gzip("text") + std::string(100, '\0')), "text");
}

TEST(Packed, FileThatIsNotPackedIsRefused)
{
    const Vorlan::test::TempFolder folder;
    for (const std::string& bytes : {std::string(), std::string("\x1f"), std::string("BZ"),
                                     std::string("\xfd\x37zX"), std::string("BEGIN IONS\n")}) {
        EXPECT_EQ(PackingOf(folder.Write("packed", bytes)), Packing::None);
        EXPECT_THAT(Unpacked(bytes), HasSubstr("is not packed"));
    }
}

TEST(Packed, NameLosesTheEndingOfAPacking)
{
    const std::vector<std::pair<const char*, const char*>> names = {
        {"run.mgf.gz", "run.mgf"}, {"dir/run.mgf.BZ2", "run.mgf"},
        {"a.b/run.xz", "run"},     {"run.zst", "run"},
        {"run.mgf", "run.mgf"},    {"dir.gz/run", "run"},
        {"run.gz.gz", "run.gz"},   {".gz", ".gz"},
    };
    for (const auto& [path, name] : names) {
        EXPECT_EQ(NameWithoutPacking(path), name) << path;
    }
}
