#include "support/test_folder.h"

#include "database/code_values.h"
#include "engine/err.h"
#include "engine/settings_store.h"
#include "shell/app_globals.h"
#include "shell/settings.h"

#include <QFile>

#include <gtest/gtest.h>

namespace testing_support {

namespace {

const QString log_name = QStringLiteral("quillary.log");

}  // namespace

TestFolder::TestFolder(StartingSettings settings)
{
    EXPECT_TRUE(dir_.isValid());
    engine::set_settings_store(std::make_unique<engine::SettingsStore>(file(QStringLiteral("s.ini"))));
    Settings() = SettingsRecord{};
    if (settings == StartingSettings::ProgramDefaults)
        Default_Settings(Settings());
    Settings().file_locations = code::style_type::Locations_In_Settings;
    Current_Log_File() = file(log_name);
    engine::Err().Clear();
    engine::DBEngine_Errors().clear();
}

TestFolder::~TestFolder()
{
    Current_Log_File().clear();
    Settings() = SettingsRecord{};
    engine::set_settings_store(nullptr);
    engine::Err().Clear();
    engine::DBEngine_Errors().clear();
}

QString TestFolder::log_text() const
{
    QFile log(file(log_name));
    return log.open(QIODevice::ReadOnly) ? QString::fromUtf8(log.readAll()) : QString();
}

QString TestFolder::write_file(const QString& name, const QString& text) const
{
    QFile out(file(name));
    EXPECT_TRUE(out.open(QIODevice::WriteOnly | QIODevice::Truncate));
    out.write(text.toUtf8());
    return out.fileName();
}

}  // namespace testing_support
