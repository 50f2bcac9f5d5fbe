#include "InitFile.h"

#include <algorithm>
#include <fstream>
#include <string_view>

#include "platform/OutputFile.h"
#include "util/Console.h"
#include "util/InitFileErrors.h"
#include "util/LineReader.h"

namespace Vorlan {

namespace {

/// line up to the comment, if there is one.
std::string_view WithoutComment(std::string_view line, const std::string& symbols)
{
    for (const char symbol : symbols) {
        const std::size_t place = line.find(symbol);
        if (place != std::string_view::npos) {
            return line.substr(0, place); // Deliberate: B-25. The other symbols stay.
        }
    }
    return line;
}

OpenMS::String Trimmed(std::string_view text)
{
    OpenMS::String trimmed{std::string(text)};
    trimmed.trim();
    return trimmed;
}

bool IsHeader(const std::string& text)
{
    return text.size() >= 2 && text.front() == '[' && text.back() == ']';
}

} // namespace

Section::Section(const OpenMS::String& name) : strName(name) {}

void InitFile::Load(const OpenMS::String& path)
{
    strFilename = path; // which may lie in a section that goes now
    Clear();
    vSections.reserve(8);
    LineReader reader;
    if (!reader.Open(strFilename, LineReader::Mode::Text)) {
        console::Print(console::Stream::Out, "Error when reading \"" + strFilename + "\".\n");
        errors::ParameterFileNotFound(strFilename);
    }
    std::string_view line;
    for (std::size_t number = 1; reader.Next(line); ++number) {
        ReadLine_(line, number);
    }
}

void InitFile::ReadLine_(std::string_view line, std::size_t number)
{
    const OpenMS::String text = Trimmed(WithoutComment(line, strSymbol));
    if (text.empty()) {
        return;
    }
    if (IsHeader(text)) {
        OpenSection_(Trimmed(std::string_view(text).substr(1, text.size() - 2)));
        return;
    }
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos || text.find('=', equals + 1) != std::string::npos
        || nCurrent_ == kNone) {
        errors::NotAPair(number, std::string(line));
    }
    const std::string_view pair = text;
    vSections[nCurrent_].mapValues[Trimmed(pair.substr(0, equals))] =
        Trimmed(pair.substr(equals + 1));
}

void InitFile::OpenSection_(const OpenMS::String& name)
{
    const auto [place, isNew] = mapSectionIndex.emplace(name, vSections.size());
    if (isNew) {
        vSections.emplace_back(name);
    }
    nCurrent_ = place->second;
}

void InitFile::Save(const OpenMS::String& path) const
{
    const std::string text = Text_();
    std::ofstream file;
    platform::OpenOutput(file, path);
    file.write(text.data(), static_cast<std::streamsize>(text.size()));
    file.close();
    if (!file) {
        errors::ParameterFileNotWritable(path);
    }
}

OpenMS::String InitFile::Get(const OpenMS::String& section, const OpenMS::String& key) const
{
    if (const Section* const found = pGetSection(section)) {
        const auto pair = found->mapValues.find(key);
        if (pair != found->mapValues.end()) {
            return pair->second;
        }
    }
    return {};
}

void InitFile::Set(const OpenMS::String& section, const OpenMS::String& key,
                   const OpenMS::String& value)
{
    Section* const found = pGetSection(section);
    if (found == nullptr) {
        return; // Deliberate: B-26
    }
    nCurrent_ = static_cast<std::size_t>(found - vSections.data());
    found->mapValues[key] = value;
}

Section* InitFile::pGetSection(const OpenMS::String& name)
{
    const auto place = mapSectionIndex.find(name);
    // The host can reach both lists, so the index may be stale.
    const bool isThere = place != mapSectionIndex.end() && place->second < vSections.size();
    return isThere ? &vSections[place->second] : nullptr;
}

const Section* InitFile::pGetSection(const OpenMS::String& name) const
{
    return const_cast<InitFile*>(this)->pGetSection(name);
}

void InitFile::SetFilename(const OpenMS::String& path)
{
    strFilename = path;
}

void InitFile::SetSymbol(const OpenMS::String& symbols)
{
    strSymbol = symbols;
}

void InitFile::Display() const
{
    console::Print(console::Stream::Out, Text_());
}

void InitFile::Clear()
{
    vSections.clear();
    mapSectionIndex.clear();
    nCurrent_ = kNone;
}

std::string InitFile::Text_() const
{
    std::string text;
    for (const Section& section : vSections) {
        text.append("[").append(section.strName).append("]\n");
        for (const auto& [key, value] : section.mapValues) {
            text.append(key).append("=").append(value).append("\n");
        }
    }
    return text;
}

} // namespace Vorlan
