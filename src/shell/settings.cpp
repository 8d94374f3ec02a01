#include "shell/settings.h"

#include "engine/err.h"
#include "engine/msg_box.h"
#include "engine/settings_store.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "shell/file_checks.h"
#include "shell/file_errors.h"

#include <cmath>
#include <functional>
#include <vector>

namespace {

QString get_setting(const char* key, const QString& default_value = QString())
{
    return engine::settings_store().GetSetting(QLatin1String(settings_key::Section), QLatin1String(key),
                                               default_value);
}

// Saves one value; a store that cannot be written becomes the run-time error,
// as it would for any failed statement.
bool save_setting(const char* key, const QString& value)
{
    if (engine::settings_store().SaveSetting(QLatin1String(settings_key::Section), QLatin1String(key), value))
        return true;
    engine::Err().Raise(file_errors::PathFileAccess, QStringLiteral("Path/File access error"));
    return false;
}

// The platform's conversion of text to a whole number: blanks around it
// allowed, fractions rounded half to even, out of [min, max] a failure.
bool to_whole_number(const QString& text, double min, double max, int& result)
{
    bool ok = false;
    const double value = text.trimmed().toDouble(&ok);
    if (!ok)
        return false;
    const double rounded = std::nearbyint(value);
    if (rounded < min || rounded > max)
        return false;
    result = static_cast<int>(rounded);
    return true;
}

quint8 byte_or_zero(const QString& text)
{
    int value = 0;
    return to_whole_number(text, 0, 255, value) ? static_cast<quint8>(value) : 0;
}

void default_when_empty(QString& value, const QString& default_value)
{
    if (value.isEmpty())
        value = default_value;
}

QString course_query_from(const QString& stored, const SettingsRecord& defaults)
{
    int value = 0;
    if (!to_whole_number(stored, -32768, 32767, value))
        return defaults.course_query;
    QString name;
    short number = static_cast<short>(value);
    DB_Convert_Course_Qry(name, number);
    return name;
}

SettingsRecord settings_as_stored(const SettingsRecord& defaults)
{
    SettingsRecord read;
    read.report_output_dir = get_setting(settings_key::GD);
    read.report_format_dir = get_setting(settings_key::XD);
    read.report_list = get_setting(settings_key::RL);
    read.script_dir = get_setting(settings_key::UD);
    read.default_database = get_setting(settings_key::DF);
    read.log_file = get_setting(settings_key::LF);
    read.term_script = get_setting(settings_key::CT);
    read.activity_script = get_setting(settings_key::CA);
    read.cost_script = get_setting(settings_key::CC);
    read.file_locations = byte_or_zero(get_setting(settings_key::FL));

    // Only these fall back on their defaults: an emptied log file name, for
    // one, deliberately means no logging.
    if (read.file_locations == 0)
        read.file_locations = defaults.file_locations;
    default_when_empty(read.term_script, defaults.term_script);
    default_when_empty(read.activity_script, defaults.activity_script);
    default_when_empty(read.cost_script, defaults.cost_script);
    default_when_empty(read.report_list, defaults.report_list);

    read.course_query = course_query_from(get_setting(settings_key::CQ, QStringLiteral("0")), defaults);
    return read;
}

void ask_about_first_run(const SettingsRecord& defaults)
{
    const QString question = QStringLiteral("Could not open the Registry, section for ") + App_Name() +
                             QStringLiteral("\nIs this the first time that you have run this program?");
    if (engine::MsgBox(question, engine::mb::YesNo | engine::mb::Question, App_Title()) != engine::answer::Yes) {
        Abort_Flag() = true;
        return;
    }
    const bool written =
        Replace_Defaults(true, defaults.report_output_dir, defaults.report_format_dir, defaults.report_list,
                         defaults.script_dir, defaults.log_file, defaults.term_script, defaults.activity_script,
                         defaults.cost_script, defaults.course_query, defaults.file_locations, Settings()) &&
        Set_Default_Database(defaults.default_database);
    Abort_Flag() = !written;
}

struct SettingToReplace {
    const char* key;
    const char* label;
    QString value;
    bool given;
    std::function<void(SettingsRecord&)> take;
};

SettingToReplace text_setting(const char* key, const char* label, const QString& value,
                              QString SettingsRecord::*field)
{
    return {key, label, value, !value.isEmpty(), [value, field](SettingsRecord& s) { s.*field = value; }};
}

SettingToReplace course_query_setting(const QString& name)
{
    QString mapped = name;
    short number = 0;
    DB_Convert_Course_Qry(mapped, number);
    return {settings_key::CQ, ", Course Order Query", QString::number(number), !name.isEmpty(),
            [mapped](SettingsRecord& s) { s.course_query = mapped; }};
}

SettingToReplace file_locations_setting(quint8 file_locations)
{
    return {settings_key::FL, ", File Locations", QString::number(file_locations), file_locations != 0,
            [file_locations](SettingsRecord& s) { s.file_locations = file_locations; }};
}

}  // namespace

SettingsRecord& Settings()
{
    static SettingsRecord settings;
    return settings;
}

void Default_Settings(SettingsRecord& settings)
{
    const QString folder = Install_Folder();
    settings.default_database = build_path(folder, QStringLiteral("database/Demo.mdb"));
    settings.log_file = build_path(folder, App_Name() + QStringLiteral(".log"));
    settings.report_output_dir = folder;
    settings.report_format_dir = build_path(folder, QStringLiteral("repfmts"));
    settings.report_list = build_path(settings.report_format_dir, QStringLiteral("zrepfmt.lst"));
    settings.script_dir = build_path(folder, QStringLiteral("scripts"));
    settings.term_script = build_path(settings.script_dir, QStringLiteral("InTerms.sql"));
    settings.activity_script = build_path(settings.script_dir, QStringLiteral("InActDts.sql"));
    settings.cost_script = build_path(settings.script_dir, QStringLiteral("CrsCosts.sql"));
    settings.file_locations = 2;
    QString course_query;
    short number = 0;
    DB_Convert_Course_Qry(course_query, number);
    settings.course_query = course_query;
}

void Read_Settings()
{
    SettingsRecord defaults;
    Default_Settings(defaults);
    Settings() = settings_as_stored(defaults);
    if (engine::settings_store().section_is_empty(QLatin1String(settings_key::Section)))
        ask_about_first_run(defaults);
}

bool Replace_Defaults(bool allow_empty, const QString& report_output_dir, const QString& report_format_dir,
                      const QString& report_list, const QString& script_dir, const QString& log_file,
                      const QString& term_script, const QString& activity_script, const QString& cost_script,
                      const QString& course_query, quint8 file_locations, SettingsRecord& settings)
{
    const std::vector<SettingToReplace> pending = {
        text_setting(settings_key::GD, ", Report Output directory", report_output_dir,
                     &SettingsRecord::report_output_dir),
        text_setting(settings_key::XD, ", Report Format directory", report_format_dir,
                     &SettingsRecord::report_format_dir),
        text_setting(settings_key::RL, ", Report List File", report_list, &SettingsRecord::report_list),
        text_setting(settings_key::UD, ", Scripting directory", script_dir, &SettingsRecord::script_dir),
        text_setting(settings_key::LF, ", Error Log File", log_file, &SettingsRecord::log_file),
        text_setting(settings_key::CT, ", Term Invoicing script file", term_script, &SettingsRecord::term_script),
        text_setting(settings_key::CA, ", Activity Invoicing script file", activity_script,
                     &SettingsRecord::activity_script),
        text_setting(settings_key::CC, ", Course Costs script file", cost_script, &SettingsRecord::cost_script),
        file_locations_setting(file_locations),
        course_query_setting(course_query),
    };

    for (const SettingToReplace& setting : pending) {
        if (!allow_empty && !setting.given)
            continue;
        if (!save_setting(setting.key, setting.value)) {
            // The failing key's label goes on the routine line, for whoever reads the log.
            Report_Error(report::Unexpected, QStringLiteral("Could NOT replace default values "),
                         engine::mb::Critical, QStringLiteral("globals"),
                         QStringLiteral("Replace_Defaults") + QLatin1String(setting.label));
            return false;
        }
        setting.take(settings);
    }
    return true;
}

bool Set_Default_Database(const QString& name)
{
    if (!save_setting(settings_key::DF, name)) {
        Report_Error(report::Unexpected, QStringLiteral("Could NOT replace database key "), engine::mb::Critical,
                     QStringLiteral("globals"), QStringLiteral("Set_Default_Database"));
        return false;
    }
    Settings().default_database = name;
    Report_Error(report::Detected, QStringLiteral("The default database has been changed to ") + name,
                 engine::mb::Information, QStringLiteral("globmain"));
    return true;
}
