#pragma once
// The per-user key-value store that stands in for the registry:
// GetSetting/SaveSetting on a section and key, all values text.

#include <QString>
#include <memory>

class QSettings;

namespace engine {

class SettingsStore {
public:
    // Uses QSettings for organisation and application "Quillary" in the
    // user's configuration folder.
    SettingsStore();
    // Uses an INI file of the caller's choosing (tests, tools).
    explicit SettingsStore(const QString& ini_file);
    ~SettingsStore();

    QString GetSetting(const QString& section, const QString& key, const QString& default_value) const;
    // Returns false when the store could not be written.
    bool SaveSetting(const QString& section, const QString& key, const QString& value);
    // True when the section holds no value at all: the sign of a first run.
    bool section_is_empty(const QString& section) const;
    QString file_name() const;

private:
    std::unique_ptr<QSettings> settings_;
};

// The store in use. Created on first use unless one was installed.
SettingsStore& settings_store();
// Installs a store (owned from then on); nullptr goes back to the default on next use.
void set_settings_store(std::unique_ptr<SettingsStore> store);

}  // namespace engine
