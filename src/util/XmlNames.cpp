#include "util/XmlNames.h"

#include <memory>
#include <utility>

namespace Vorlan {

XmlNames::Name* XmlNames::Of(std::string_view name)
{
    if (name.empty()) {
        return nullptr;
    }
    const std::size_t hash = name.size() + std::size_t{7} * static_cast<unsigned char>(name.back())
                             + std::size_t{3} * static_cast<unsigned char>(name[name.size() / 2]);
    Name*& recent = recent_[hash % recent_.size()];
    if (recent != nullptr && recent->Get().text == name) {
        return recent;
    }
    auto known = names_.find(name);
    if (known == names_.end()) {
        auto value = std::make_unique<XmlBuilder::Value>(name);
        const std::string_view key = value->text;
        known = names_.try_emplace(key, std::move(value)).first;
    }
    return recent = &known->second;
}

} // namespace Vorlan
