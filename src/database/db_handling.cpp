#include "database/db_handling.h"

#include "database/upgrade.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "engine/workspace.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "shell/file_checks.h"
#include "shell/recycle.h"
#include "shell/selection_lists.h"
#include "shell/settings.h"

#include <QFile>
#include <QFileInfo>

namespace {

const QString tag_handling = QStringLiteral("globdbhand");
constexpr int current_version = 13;

engine::Database*& current_handle()
{
    static engine::Database* db = nullptr;
    return db;
}

QString text_of(const QVariant& value)
{
    return value.isNull() ? QString() : value.toString();
}

bool ask_to_upgrade()
{
    const QString question = QStringLiteral("This database is an old version. ") + QLatin1Char('\n') + QLatin1Char('\n')
                             + QStringLiteral("It can be upgraded, but you should take a backup of it first, just in case!")
                             + QLatin1Char('\n') + QStringLiteral("Do you want it upgraded?");
    return engine::MsgBox(question, engine::mb::YesNo + engine::mb::Question, App_Title()) == engine::answer::Yes;
}

void close_current()
{
    if (current_handle()) {
        Program_Workspace().close_database(current_handle());
        current_handle() = nullptr;
    }
}

// The version gate: true when the file may be used, upgraded if need be.
bool pass_version_gate(const QString& name)
{
    SystemRecord& record = Sys_Record();
    if (record.version > current_version) {
        Report_Error(report::RefusedDatabase,
                     QStringLiteral("This program cannot use this database version. ") + QLatin1Char('\n')
                         + QStringLiteral("Please contact your Supplier for a more  recent version of the software.")
                         + QLatin1Char('\n') + QStringLiteral("Couldn't open ") + name,
                     engine::mb::Critical, tag_handling);
        return false;
    }
    if (record.version < current_version) {
        if (!ask_to_upgrade() || !DB_Upgrade_Database(name, record))
            return false;
        record.version = current_version;
    }
    return true;
}

// Where the database and the settings disagree on where file locations are
// kept, the database's own names win for this session; the settings store
// itself isn't written.
void reconcile_file_locations()
{
    SystemRecord& record = Sys_Record();
    SettingsRecord& settings = Settings();
    if (record.style != 1 && settings.file_locations != 1)
        return;
    if (record.style != settings.file_locations) {
        engine::MsgBox(QStringLiteral("This database is out of sync with the registry. ") + QLatin1Char('\n')
                           + QStringLiteral("You should check the values in Change Defaults."),
                       engine::mb::OkOnly, App_Title());
        settings.file_locations = 1;
        if (record.style != 1) {
            settings.term_script = build_path(settings.script_dir, QStringLiteral("InTerms.sql"));
            settings.activity_script = build_path(settings.script_dir, QStringLiteral("InActDts.sql"));
            settings.cost_script = build_path(settings.script_dir, QStringLiteral("CrsCosts.sql"));
            settings.report_list = build_path(settings.report_format_dir, QStringLiteral("zrepfmt.lst"));
            record.report_list.clear();
            record.term_script.clear();
            record.activity_script.clear();
            record.cost_script.clear();
        }
    }
    if (!record.activity_script.trimmed().isEmpty())
        settings.activity_script = record.activity_script;
    if (!record.cost_script.trimmed().isEmpty())
        settings.cost_script = record.cost_script;
    if (!record.term_script.trimmed().isEmpty())
        settings.term_script = record.term_script;
    if (!record.report_list.trimmed().isEmpty())
        settings.report_list = record.report_list;
}

// When the system table can't be read, the engine's words say what failed
// but not what the secretary can do about it: say what the file is.
void explain_unreadable_system_table(engine::Database& db)
{
    const engine::ErrState cause = engine::Err();
    if (cause.Number == engine::jet::FileInUse || cause.Number == engine::jet::Damaged)
        return;  // already in words to act on
    if (db.TableDef_names().isEmpty()) {
        engine::raise_engine_error(engine::jet::UnrecognizedFormat,
                                   QStringLiteral("The file is empty: it is not a Quillary database."));
    } else if (!db.has_table(QStringLiteral("Sys_tab"))) {
        engine::raise_engine_error(engine::jet::UnrecognizedFormat,
                                   QStringLiteral("The file is a database, but not a Quillary database: it has no system "
                                                  "table (Sys_tab)."));
    } else if (!db.QueryDef_names().contains(QStringLiteral("Qry_Select_Sys"), Qt::CaseInsensitive)) {
        engine::raise_engine_error(engine::jet::InputTableNotFound,
                                   QStringLiteral("The database has lost its stored queries (Qry_Select_Sys is missing). "
                                                  "It was not made by Quillary, or it has been changed by another program."));
    } else {
        engine::Err() = cause;
    }
}

// The version is a number from 0 to 255; anything else was not written by
// the program, and asking to upgrade it would only fail.
bool read_version(const QVariant& stored, quint8& version)
{
    bool whole = false;
    const qlonglong number = stored.toLongLong(&whole);
    if (whole && stored.typeId() != QMetaType::QString && number >= 0 && number <= 255) {
        version = static_cast<quint8>(number);
        return true;
    }
    engine::raise_engine_error(engine::jet::DataTypeMismatch,
                               QStringLiteral("The database version in the system table is '%1', which is not a version "
                                              "number: this file was not made by Quillary, or it has been changed by hand.")
                                   .arg(stored.isNull() ? QStringLiteral("empty") : stored.toString()));
    return false;
}

// Deletes one file; true when it is gone or was never there.
bool remove_file(const QString& name, int& error)
{
    error = 0;
    if (!QFileInfo::exists(name)) {
        error = engine::vberr::FileNotFound;
        return true;
    }
    if (!QFile::remove(name)) {
        error = engine::vberr::PermissionDenied;
        engine::Err().Raise(error, QStringLiteral("Permission denied"));
        return false;
    }
    return true;
}

// SQLite's own side files, which stand where the engine's lock file stood.
void remove_side_files(const QString& name)
{
    for (const char* suffix : {"-journal", "-wal", "-shm"})
        QFile::remove(name + QLatin1String(suffix));
}

}  // namespace

engine::Workspace& Program_Workspace()
{
    return engine::DBEngine::Workspaces0();
}

engine::Database* Current_Db()
{
    return current_handle();
}

QString& Current_Db_Name()
{
    static QString name;
    return name;
}

SystemRecord& Sys_Record()
{
    static SystemRecord record;
    return record;
}

QString lock_file_name(const QString& name)
{
    return name.left(name.size() - 3) + QStringLiteral("ldb");
}

bool DB_Open(const QString& name)
{
    if (engine::Database* open = current_handle()) {
        if (open->Name().toUpper() == name.toUpper())
            return true;
        Report_Error(report::RefusedDatabase,
                     QStringLiteral("There is already a database open - ") + open->Name() + QLatin1Char('\n')
                         + QStringLiteral("Couldn't open ") + name,
                     engine::mb::Critical, tag_handling);
        return false;
    }
    if (!DB_Open_Raw(name))
        return false;
    if (!DB_Read_Sys(Sys_Record()) || !pass_version_gate(name)) {
        close_current();
        return false;
    }
    Current_Db_Name() = name;
    Reset_Changed_Lists();
    reconcile_file_locations();
    return true;
}

bool DB_Open_Raw(const QString& name)
{
    engine::Database* db = Program_Workspace().OpenDatabase(name);
    if (!db) {
        Report_Error(report::Unexpected, QStringLiteral("Could not open the database") + QLatin1Char('\n') + name,
                     engine::mb::Critical, tag_handling, QStringLiteral("DB_Open_Raw"));
        return false;
    }
    current_handle() = db;
    return true;
}

bool DB_Read_Sys(SystemRecord& record)
{
    engine::Database* db = current_handle();
    std::unique_ptr<engine::Recordset> rows = db ? db->OpenRecordset(QStringLiteral("Qry_Select_Sys")) : nullptr;
    if (!rows) {
        if (db)
            explain_unreadable_system_table(*db);
        Report_Error(report::Unexpected, QStringLiteral("Unexpected error reading Sys table."), engine::mb::Critical,
                     QStringLiteral("gendbde"), QStringLiteral("DB_Read_Sys"));
        return false;
    }
    if (rows->at_eof()) {
        record.backup_filename.clear();
        Report_Error(report::Detected,
                     QStringLiteral("The System Table has been deleted, so this database cannot be used. "),
                     engine::mb::Critical, tag_handling);
        return false;
    }
    if (!read_version(rows->Fields(QStringLiteral("s_DB_Type")), record.version)) {
        Report_Error(report::Unexpected, QStringLiteral("Unexpected error reading Sys table."), engine::mb::Critical,
                     QStringLiteral("gendbde"), QStringLiteral("DB_Read_Sys"));
        return false;
    }
    if (const QVariant created = rows->Fields(QStringLiteral("s_Creation_Date")); !created.isNull())
        record.creation_date = created.toDateTime();
    if (const QVariant backup = rows->Fields(QStringLiteral("s_Backup_Date")); !backup.isNull())
        record.backup_date = backup.toDateTime();
    record.backup_filename = text_of(rows->Fields(QStringLiteral("s_Backup_filename")));
    if (record.version < current_version) {
        record.report_list.clear();
        record.term_script.clear();
        record.activity_script.clear();
        record.cost_script.clear();
        return true;
    }
    if (const QVariant style = rows->Fields(QStringLiteral("s_Style_Type")); !style.isNull())
        record.style = static_cast<quint8>(style.toInt());
    record.cost_script = text_of(rows->Fields(QStringLiteral("s_Filename_CrsCost")));
    record.activity_script = text_of(rows->Fields(QStringLiteral("s_Filename_InvAct")));
    record.term_script = text_of(rows->Fields(QStringLiteral("s_Filename_InvTerm")));
    record.report_list = text_of(rows->Fields(QStringLiteral("s_Filename_zrepfmt")));
    return true;
}

bool DB_Update_Sys(const SystemRecord& record)
{
    engine::Database* db = current_handle();
    auto query = db ? db->QueryDefs(QStringLiteral("Qry_Update_Sys")) : nullptr;
    if (!query || !query->set_parameter(QStringLiteral("ss_Backup_Date"), record.backup_date)
        || !query->set_parameter(QStringLiteral("ss_Backup_Filename"), record.backup_filename) || !query->Execute()) {
        Report_Error(report::Unexpected, QStringLiteral("Could not update sys table"), engine::mb::Critical, tag_handling,
                     QStringLiteral("DB_Update_Sys"));
        return false;
    }
    return true;
}

void DB_Close_All()
{
    engine::DBEngine::Idle();
    engine::Workspace& workspace = Program_Workspace();
    // A transaction that a failed routine left open is undone here, as the
    // engine undoes it when a workspace closes, so that the next database
    // opened does not join it.
    if (workspace.transaction_depth() > 0) {
        Report_Error(report::Trace, QStringLiteral("Changes never committed were undone on closing"), engine::mb::OkOnly,
                     tag_handling);
        while (workspace.transaction_depth() > 0)
            workspace.Rollback();
        engine::Err().Clear();
    }
    const auto open = workspace.Databases();
    for (auto it = open.rbegin(); it != open.rend(); ++it) {
        workspace.close_database(*it);
        engine::DBEngine::Idle();
    }
    current_handle() = nullptr;
    Current_Db_Name().clear();
}

bool DB_Compact_Database(const QString& old_name, const QString& new_name)
{
    if (!engine::DBEngine::CompactDatabase(old_name, new_name)) {
        Report_Error(report::Unexpected,
                     QStringLiteral("Error compacting database.") + QLatin1Char('\n')
                         + QStringLiteral("The new version will be destroyed."),
                     engine::mb::Information, tag_handling, QStringLiteral("DB_Compact_Database"));
        DB_Delete_Files(new_name.trimmed());
        return false;
    }
    return true;
}

bool DB_Repair(const QString& name)
{
    if (!engine::DBEngine::RepairDatabase(name)) {
        Report_Error(report::Unexpected, QStringLiteral("Could not repair this database."), engine::mb::Critical,
                     tag_handling, QStringLiteral("DB_Repair"));
        return false;
    }
    Report_Error(report::Trace, QStringLiteral("Successfully repaired database ") + name, engine::mb::OkOnly, tag_handling);
    return true;
}

bool DB_Delete_Files(const QString& name)
{
    int error = 0;
    bool ok = true;
    if (!remove_file(name, error)) {
        Report_Error(report::Unexpected, QStringLiteral("Error trying to delete the database ") + name,
                     engine::mb::OkOnly, tag_handling, QStringLiteral("DB_Delete_Files"));
        ok = false;
    }
    remove_side_files(name);
    if (remove_file(lock_file_name(name), error)) {
        Report_Error(report::Trace, QStringLiteral("The database ") + name + QStringLiteral(" has been deleted."),
                     engine::mb::OkOnly, tag_handling);
    } else {
        Report_Error(report::Unexpected, QStringLiteral("Error trying to delete the database ldb ") + name,
                     engine::mb::OkOnly, tag_handling, QStringLiteral("DB_Delete_Files"));
        ok = false;
    }
    return ok;
}

bool DB_Recycle_Files(const QString& name)
{
    const auto good_state = [] {
        const int number = engine::Err().Number;
        return number == 0 || number == engine::vberr::FileNotFound;
    };
    engine::Err().Clear();
    Delete_To_Recycle({name});
    bool ok = good_state();
    if (ok)
        Report_Error(report::Trace, QStringLiteral("The database ") + name + QStringLiteral(" has been deleted."),
                     engine::mb::OkOnly, tag_handling);
    remove_side_files(name);
    if (ok) {
        engine::Err().Clear();
        Delete_To_Recycle({lock_file_name(name)});
        ok = good_state();
    }
    if (!ok) {
        Report_Error(report::Unexpected, QStringLiteral("Error trying to delete the database ldb ") + name,
                     engine::mb::OkOnly, tag_handling, QStringLiteral("DB_Recycle_Files"));
        return false;
    }
    return true;
}
