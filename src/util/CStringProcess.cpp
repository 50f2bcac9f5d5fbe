#include "CStringProcess.h"

#include <cstdint>

namespace Vorlan {

bool CStringProcess::bIsNoUse(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

void CStringProcess::Trim(const char*& pBegin, const char*& pEnd)
{
    while (pBegin < pEnd && bIsNoUse(*pBegin)) {
        ++pBegin;
    }
    while (pBegin < pEnd && bIsNoUse(*(pEnd - 1))) {
        --pEnd;
    }
}

void CStringProcess::Trim(std::string& s)
{
    const auto length = static_cast<std::int32_t>(s.size());
    if (length <= 0) {
        return;
    }
    // Deliberate: B-01. The last character is never counted as leading.
    const char* pBegin = s.data();
    const char* pEnd = pBegin + length;
    while (pBegin < pEnd - 1 && bIsNoUse(*pBegin)) {
        ++pBegin;
    }
    while (pEnd > pBegin + 1 && bIsNoUse(*(pEnd - 1))) {
        --pEnd;
    }
    s = std::string(pBegin, pEnd);
}

std::vector<std::string> CStringProcess::split(const std::string& s, const std::string& sep)
{
    std::vector<std::string> fields;
    if (s.empty()) {
        return fields;
    }
    const std::size_t end = s.back() == '\n' ? s.size() - 1 : s.size();
    if (sep.empty()) {
        for (std::size_t i = 0; i < end; ++i) {
            fields.emplace_back(1, s[i]);
        }
        return fields;
    }
    std::size_t begin = 0;
    for (std::size_t hit = s.find(sep); hit != std::string::npos && hit + sep.size() <= end;
         hit = s.find(sep, begin)) {
        fields.emplace_back(s, begin, hit - begin);
        begin = hit + sep.size();
    }
    fields.emplace_back(s, begin, end - begin);
    return fields;
}

void CStringProcess::GetAttributesFromFirstRow(const std::string& row,
                                               std::map<std::string, int>& columns,
                                               const std::string& sep)
{
    const std::vector<std::string> fields = split(row, sep);
    for (std::size_t i = fields.size(); i-- > 0;) {
        columns[fields[i]] = static_cast<int>(i);
    }
}

void CStringProcess::replace_all(std::string& s, const std::string& from, const std::string& to)
{
    if (from.empty()) {
        return;
    }
    std::string result;
    std::size_t begin = 0;
    for (std::size_t hit = s.find(from); hit != std::string::npos; hit = s.find(from, begin)) {
        result.append(s, begin, hit - begin).append(to);
        begin = hit + from.size();
    }
    if (begin > 0) {
        result.append(s, begin, std::string::npos);
        s.swap(result);
    }
}

} // namespace Vorlan
