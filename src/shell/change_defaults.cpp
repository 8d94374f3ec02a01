#include "shell/change_defaults.h"

#include "database/code_values.h"
#include "database/db_handling.h"
#include "engine/database.h"
#include "engine/msg_box.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "shell/file_checks.h"
#include "shell/settings.h"

#include <QFile>
#include <QFileInfo>

namespace change_defaults {

namespace {

const QString tag = QStringLiteral("fchdflt");

bool refuse(const QString& text, int style = engine::mb::Critical)
{
    engine::MsgBox(text, style, App_Title());
    return false;
}

bool check_directory(const QString& text)
{
    if (QFileInfo(text).isDir())
        return true;
    return refuse(QStringLiteral("This is not a valid directory."));
}

// The label a failure of the file test is reported under, for each file row.
QString check_label(Row row)
{
    switch (row) {
    case CrTermInv_File: return QStringLiteral("frm_Change_Defaults - txt_crTermInv");
    case CrActInv_File: return QStringLiteral("frm_Change_Defaults - txt_crActInv");
    case CrCosts_File: return QStringLiteral("frm_Change_Defaults - txt_crCosts");
    default: return QStringLiteral("frm_Change_Defaults - txt_replst");
    }
}

bool check_file(Row row, const QString& text)
{
    QString error_text;
    switch (Glob_File_Check(text, error_text)) {
    case 0: return false;  // not there: the focus stays, nothing more is said
    case 1: return true;
    case 2:
        return refuse((row == RepLst_File ? QStringLiteral("Unexpected error on replst file:")
                                          : QStringLiteral("Unexpected error on term file:"))
                      + text);
    default:
        Report_Error(report::Unexpected, QStringLiteral("Unexpected error"), engine::mb::Critical, tag, check_label(row));
        return false;
    }
}

// The log is never moved onto a file that is there, even a log of ours. The
// trial file is removed again: the log starts when the first entry is written.
bool check_log(const QString& text)
{
    if (QFileInfo::exists(text))
        return refuse(QStringLiteral("This file already exists."));
    QFile trial(text);
    if (!trial.open(QIODevice::WriteOnly))
        return refuse(QStringLiteral("This file cannot be opened."), engine::mb::OkOnly);
    trial.close();
    trial.remove();
    return true;
}

bool store_in_database(const Locations& wanted)
{
    engine::Database* db = Current_Db();
    auto query = db ? db->QueryDefs(QStringLiteral("Qry_Update_Sys_Locations")) : nullptr;
    const bool stored = query && query->set_parameter(QStringLiteral("ss_Style_Type"), wanted.store)
                        && query->set_parameter(QStringLiteral("ss_Filename_zrepfmt"), wanted.values[RepLst_File])
                        && query->set_parameter(QStringLiteral("ss_Filename_InvTerm"), wanted.values[CrTermInv_File])
                        && query->set_parameter(QStringLiteral("ss_Filename_InvAct"), wanted.values[CrActInv_File])
                        && query->set_parameter(QStringLiteral("ss_Filename_CrsCost"), wanted.values[CrCosts_File])
                        && query->Execute(engine::dbopt::FailOnErrorConsistent);
    if (!stored) {
        Report_Error(report::Unexpected, QStringLiteral("Could not set up sys table"), engine::mb::Critical,
                     QStringLiteral("frmChangeDefaults"));
        return false;
    }
    // This session goes on with what the database now holds, as it would
    // after opening it again. The course costs file is not among it.
    SystemRecord& record = Sys_Record();
    record.style = wanted.store;
    SettingsRecord& settings = Settings();
    settings.report_list = record.report_list = wanted.values[RepLst_File];
    settings.term_script = record.term_script = wanted.values[CrTermInv_File];
    settings.activity_script = record.activity_script = wanted.values[CrActInv_File];
    return true;
}

}  // namespace

Kind kind_of(Row row)
{
    switch (row) {
    case Report_dir:
    case Repfmt_dir:
    case user_dir: return Kind::Directory;
    case logfile: return Kind::Log;
    default: return Kind::File;
    }
}

Locations In_Force()
{
    const SettingsRecord& settings = Settings();
    Locations in_force;
    in_force.values = {settings.report_output_dir, settings.report_format_dir, settings.report_list,
                       settings.script_dir,        settings.log_file,          settings.term_script,
                       settings.activity_script,   settings.cost_script};
    in_force.store = settings.file_locations;
    return in_force;
}

Locations Program_Defaults()
{
    SettingsRecord defaults;
    Default_Settings(defaults);
    Locations locations;
    locations.values = {defaults.report_output_dir, defaults.report_format_dir, defaults.report_list,
                        defaults.script_dir,        defaults.log_file,          defaults.term_script,
                        defaults.activity_script,   defaults.cost_script};
    locations.store = defaults.file_locations;
    return locations;
}

bool Check_New_Value(Row row, const QString& text, const QString& in_force)
{
    if (text == in_force)
        return true;
    switch (kind_of(row)) {
    case Kind::Directory: return check_directory(text);
    case Kind::Log: return check_log(text);
    case Kind::File: break;
    }
    return check_file(row, text);
}

bool Apply_New_Values(const Locations& in_force, const Locations& wanted)
{
    if (wanted == in_force)
        return true;
    const auto& v = wanted.values;
    const bool per_school = wanted.store == code::style_type::Locations_In_Database;
    // Per school, the four files are left out here: they go into the database.
    const auto file = [per_school](const QString& value) { return per_school ? QString() : value; };
    if (!Replace_Defaults(false, v[Report_dir], v[Repfmt_dir], file(v[RepLst_File]), v[user_dir], v[logfile],
                          file(v[CrTermInv_File]), file(v[CrActInv_File]), file(v[CrCosts_File]), QString(),
                          wanted.store, Settings()))
        return false;
    if (per_school && !store_in_database(wanted))
        return false;
    if (v[logfile] != in_force.values[logfile])
        Report_Error(report::Trace, QStringLiteral("Logfile changed to ") + v[logfile], engine::mb::OkOnly, tag);
    Report_Error(report::Trace, QStringLiteral("Default values replaced"), engine::mb::OkOnly, tag);
    return true;
}

std::pair<QString, QString> Select_Filter(Row row)
{
    const auto filter = [](const char* kind, const char* extension) {
        const QString ext = QString::fromLatin1(extension);
        return std::pair{QString::fromLatin1(kind) + QStringLiteral(" Files (*.") + ext + QLatin1Char(')'),
                         QStringLiteral("*.") + ext};
    };
    switch (row) {
    case logfile: return filter("Log", "log");
    case Report_dir:
    case Repfmt_dir: return filter("Report", "rpt");
    case RepLst_File: return filter("list", "lst");
    default: return filter("Script", "sql");
    }
}

}  // namespace change_defaults
