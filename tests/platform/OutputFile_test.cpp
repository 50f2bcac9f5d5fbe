#include "platform/OutputFile.h"

#include "support/Support.h"

namespace Vorlan {
namespace {

using platform::OpenOutput;
using std::string_literals::operator""s;
using test::ReadFile;
using test::TempFolder;

TEST(OutputFile, IsEmptiedAndWritten)
{
    const TempFolder folder;
    const std::string path = folder.Write("file", "former");
    std::ofstream output;
    OpenOutput(output, folder.Path() + "\\file");
    EXPECT_EQ(ReadFile(path), "");
    output << "new";
    output.close();
    EXPECT_EQ(ReadFile(path), "new");
}

TEST(OutputFile, WhatCannotBeOpenedFailsTheStream)
{
    const TempFolder folder;
    const std::string file = folder.Write("file", "former");
    for (const std::string& path : {""s, "\0"s, folder.Path(), folder.PathOf("missing/file"),
                                    file + '\0', file + "\0.bak"s}) {
        std::ofstream output;
        OpenOutput(output, path);
        EXPECT_TRUE(output.fail());
        EXPECT_FALSE(output.is_open());
    }
    EXPECT_EQ(ReadFile(file), "former") << "in front of a NUL";
}

TEST(OutputFile, AnOpenStreamStaysOnItsFileAndFails)
{
    const TempFolder folder;
    std::ofstream output;
    OpenOutput(output, folder.PathOf("first"));
    EXPECT_TRUE(output.good());
    OpenOutput(output, folder.PathOf("second"));
    EXPECT_TRUE(output.fail());
    EXPECT_TRUE(output.is_open());
    EXPECT_FALSE(std::filesystem::exists(folder.PathOf("second")));
}

} // namespace
} // namespace Vorlan
