#include "desktop/qsettings_store.h"

#include <QDir>
#include <QSettings>
#include <memory>

#include "shell/program_folder.h"

namespace {

QString text(const std::string& s) {
    return QString::fromStdString(s);
}

// QSettings reads "/" in a key as a group separator and "\" as its own; both stay text.
QString keyOf(const std::string& section, const std::string& key) {
    QString k = text(key);
    k.replace('/', QStringLiteral("%2F")).replace('\\', QStringLiteral("%5C"));
    QString s = text(section);
    s.replace('/', QStringLiteral("%2F")).replace('\\', QStringLiteral("%5C"));
    return s + '/' + k;
}

}  // namespace

QSettingsStore::QSettingsStore(QString folder) : folder_(std::move(folder)) {}

namespace {
std::unique_ptr<QSettings> open(const QString& folder, const std::string& app) {
    // The user's settings: ~/.config/catalogue-manager/ and the program's title.
    if (folder.isEmpty()) return std::make_unique<QSettings>(QString(UserFolderName), text(app));
    return std::make_unique<QSettings>(QDir(folder).filePath(text(app) + ".ini"),
                                       QSettings::IniFormat);
}
}  // namespace

std::optional<std::string> QSettingsStore::Read(const std::string& app, const std::string& section,
                                                const std::string& key) const {
    auto settings = open(folder_, app);
    QVariant v = settings->value(keyOf(section, key));
    if (!v.isValid()) return std::nullopt;
    return v.toString().toStdString();
}

void QSettingsStore::Write(const std::string& app, const std::string& section,
                           const std::string& key, const std::string& value) {
    auto settings = open(folder_, app);
    settings->setValue(keyOf(section, key), text(value));
    // The program may end at once after a write: every write reaches the disk.
    settings->sync();
}

void QSettingsStore::Remove(const std::string& app, const std::string& section,
                            const std::string& key) {
    auto settings = open(folder_, app);
    settings->remove(keyOf(section, key));
    settings->sync();
}
