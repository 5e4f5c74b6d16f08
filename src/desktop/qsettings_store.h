#pragma once

#include <QString>

#include "forms/settings.h"

// The per-user settings store on QSettings: one settings file per application name (the
// program's title), under no organisation; sections are groups, keys stay as given.
class QSettingsStore : public SettingsStore {
  public:
    // folder empty: the user's standard place; otherwise an INI file of that folder (tests).
    explicit QSettingsStore(QString folder = {});

    std::optional<std::string> Read(const std::string& app, const std::string& section,
                                    const std::string& key) const override;
    void Write(const std::string& app, const std::string& section, const std::string& key,
               const std::string& value) override;
    void Remove(const std::string& app, const std::string& section,
                const std::string& key) override;

  private:
    QString folder_;
};
