#include "forms/settings.h"

std::optional<std::string> MemorySettings::Read(const std::string& app, const std::string& section,
                                                const std::string& key) const {
    auto it = values_.find({app, section, key});
    if (it == values_.end()) return std::nullopt;
    return it->second;
}

void MemorySettings::Write(const std::string& app, const std::string& section,
                           const std::string& key, const std::string& value) {
    values_[{app, section, key}] = value;
}

void MemorySettings::Remove(const std::string& app, const std::string& section,
                            const std::string& key) {
    values_.erase({app, section, key});
}
