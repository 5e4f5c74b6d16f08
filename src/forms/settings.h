#pragma once

#include <map>
#include <optional>
#include <string>
#include <tuple>

// The per-user settings store: text values by application, section and key.
class SettingsStore {
  public:
    virtual ~SettingsStore() = default;
    virtual std::optional<std::string> Read(const std::string& app, const std::string& section,
                                            const std::string& key) const = 0;
    virtual void Write(const std::string& app, const std::string& section, const std::string& key,
                       const std::string& value) = 0;
    virtual void Remove(const std::string& app, const std::string& section,
                        const std::string& key) = 0;
};

// Settings held in memory for the life of the process: the headless program's store.
class MemorySettings : public SettingsStore {
  public:
    std::optional<std::string> Read(const std::string& app, const std::string& section,
                                    const std::string& key) const override;
    void Write(const std::string& app, const std::string& section, const std::string& key,
               const std::string& value) override;
    void Remove(const std::string& app, const std::string& section,
                const std::string& key) override;

  private:
    std::map<std::tuple<std::string, std::string, std::string>, std::string> values_;
};
