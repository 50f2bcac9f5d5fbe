#include "pepident/ReaderSteps.h"

#include <algorithm>
#include <vector>

#include <OpenMS/CONCEPT/Constants.h>

#include "datastructures/FieldNames.h"
#include "pepident/PeptideIdentificationErrors.h"
#include "platform/InputFile.h"
#include "util/ComposedPath.h"
#include "util/Numbers.h"

namespace Vorlan {

namespace {

/// From feed to feed: lines are long, and a search passes over them far quicker than a
/// comparison of every character.
std::uint64_t FeedsIn(std::string_view text)
{
    std::uint64_t feeds = 0;
    for (std::size_t hit = text.find('\n'); hit != std::string_view::npos;
         hit = text.find('\n', hit + 1)) {
        ++feeds;
    }
    return feeds;
}

} // namespace

OpenMS::String ResultPathOf(const PepIdentSource& source)
{
    return WithOneBackslash(FolderOf(source)) + FileNameOf(source);
}

OpenMS::String SecondPathOf(const PepIdentSource& source)
{
    return WithOneBackslash(SecondFolderOf(source)) + SecondFileNameOf(source);
}

std::uint64_t CountResultRows(const std::string& path, const char* label)
{
    platform::InputFile file;
    if (!file.Open(path)) {
        errors::NotReadable(label, path);
    }
    std::vector<char> block(std::size_t{256} * 1024);
    std::uint64_t feeds = 0;
    std::uint64_t offset = 0;
    while (const std::size_t got = file.ReadAt(offset, block.data(), block.size())) {
        feeds += FeedsIn({block.data(), got});
        offset += got;
    }
    return feeds - 1; // Deliberate: B-21. Without any line feed this wraps around.
}

void CloseOutput(std::ofstream& output)
{
    output.close();
}

std::int32_t IntOf(std::string_view cell)
{
    std::int32_t value = 0;
    return numbers::ReadPlainInt(cell, value) ? value : OpenMS::String(std::string(cell)).toInt();
}

double DoubleOf(std::string_view cell)
{
    double value = 0.0;
    return numbers::ReadPlainDouble(cell, value) ? value
                                                 : OpenMS::String(std::string(cell)).toDouble();
}

std::string WithAnyTerm(std::string_view name)
{
    std::string result(name);
    for (const char* const term : {" (N-term", " (C-term"}) {
        const std::size_t hit = result.find(term);
        if (hit != std::string::npos) {
            result.insert(hit + 2, "Any ");
        }
    }
    return result;
}

double MzOf(double mh, std::int32_t charge)
{
    return charge > 0 ? (mh + (charge - 1) * OpenMS::Constants::PROTON_MASS_U) / charge : 0.0;
}

double MhOf(double mz, std::int32_t charge)
{
    return charge > 0 ? mz * charge - (charge - 1) * OpenMS::Constants::PROTON_MASS_U : 0.0;
}

} // namespace Vorlan
