#include "util/XmlNames.h"

#include <memory>

namespace Vorlan {

XmlNames::~XmlNames()
{
    for (const auto& [name, value] : values_) {
        UserCount<Value>::Leave(value);
    }
}

XmlNames::Value* XmlNames::Of(std::string_view name)
{
    if (name.empty()) {
        return nullptr;
    }
    const std::size_t hash = name.size() + 7U * static_cast<unsigned char>(name.back())
                             + 3U * static_cast<unsigned char>(name[name.size() / 2]);
    Value*& recent = recent_[hash % recent_.size()];
    if (recent != nullptr && recent->text == name) {
        return recent;
    }
    const auto known = values_.find(name);
    if (known != values_.end()) {
        return recent = known->second;
    }
    auto value = std::make_unique<Value>(name);
    values_.emplace(value->text, value.get());
    return recent = value.release();
}

} // namespace Vorlan
