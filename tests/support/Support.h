// What the tests of all rooms share: temporary folders, files, the real files.
#ifndef VORLAN_TESTS_SUPPORT_H
#define VORLAN_TESTS_SUPPORT_H

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace Vorlan::test {

/// A new folder below the system's temporary one, removed with its contents.
class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    /// The path of the folder, without a separator at its end.
    const std::string& Path() const { return path_; }
    /// The path of an entry of the folder.
    std::string PathOf(std::string_view name) const;
    /// Writes a file, bytes as given, and gives its path.
    std::string Write(std::string_view name, std::string_view bytes) const;

private:
    std::string path_;
};

std::string ReadFile(const std::string& path);

/// The folder of the real files: the variable PELGRIN_TEST_DATA, else
/// ../shared/data beside the sources. Empty when it does not exist.
std::string RealDataFolder();

/// A file of the data that OpenMS brings, such as "CHEMISTRY/unimod.xml"; empty when
/// it is not found.
std::string OpenMSFile(const std::string& name);

/// What a call prints on standard output, through std::cout.
template <typename Call>
std::string OutputOf(Call call)
{
    testing::internal::CaptureStdout();
    call();
    return testing::internal::GetCapturedStdout();
}

/// Text of count copies of part.
std::string Repeat(std::string_view part, std::size_t count);

} // namespace Vorlan::test

/// Skips the test, with a message that .ci/run looks for, where the real files
/// are missing.
#define PELGRIN_NEEDS_REAL_DATA()                                                                  \
    if (Vorlan::test::RealDataFolder().empty())                                                    \
    GTEST_SKIP() << "no real files: set PELGRIN_TEST_DATA to their folder"

#endif // VORLAN_TESTS_SUPPORT_H
