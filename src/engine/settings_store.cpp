#include "engine/settings_store.h"

#include <QSettings>

namespace engine {

namespace {
// QSettings treats '$' as an ordinary character, but '/' and '\' separate groups.
QString path_of(const QString& section, const QString& key)
{
    return section + QLatin1Char('/') + key;
}
}  // namespace

SettingsStore::SettingsStore()
    : settings_(std::make_unique<QSettings>(QSettings::NativeFormat, QSettings::UserScope,
                                            QStringLiteral("Quillary"), QStringLiteral("Quillary")))
{
}

SettingsStore::SettingsStore(const QString& ini_file)
    : settings_(std::make_unique<QSettings>(ini_file, QSettings::IniFormat))
{
}

SettingsStore::~SettingsStore() = default;

QString SettingsStore::GetSetting(const QString& section, const QString& key, const QString& default_value) const
{
    const QVariant value = settings_->value(path_of(section, key));
    return value.isValid() ? value.toString() : default_value;
}

bool SettingsStore::SaveSetting(const QString& section, const QString& key, const QString& value)
{
    settings_->setValue(path_of(section, key), value);
    settings_->sync();
    return settings_->status() == QSettings::NoError && settings_->isWritable();
}

bool SettingsStore::section_is_empty(const QString& section) const
{
    settings_->beginGroup(section);
    const bool empty = settings_->childKeys().isEmpty();
    settings_->endGroup();
    return empty;
}

QString SettingsStore::file_name() const
{
    return settings_->fileName();
}

namespace {
std::unique_ptr<SettingsStore>& installed()
{
    static std::unique_ptr<SettingsStore> store;
    return store;
}
}  // namespace

SettingsStore& settings_store()
{
    if (!installed())
        installed() = std::make_unique<SettingsStore>();
    return *installed();
}

void set_settings_store(std::unique_ptr<SettingsStore> store)
{
    installed() = std::move(store);
}

}  // namespace engine
