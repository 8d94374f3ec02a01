#include "database/database_control.h"

#include "database/database_file_name.h"
#include "database/db_handling.h"
#include "database/stored_queries.h"
#include "database/upgrade.h"
#include "engine/jet_date.h"
#include "engine/msg_box.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "shell/file_checks.h"
#include "shell/settings.h"

namespace {

const QString tag = QStringLiteral("frm_DBControl");

void tell(const QString& text)
{
    Report_Error(report::Detected, text, engine::mb::OkOnly, tag);
}

// Every command ends with the default database open, or none when it can't
// be; a blank default is simply not opened, as at start.
void reopen_default_database()
{
    DB_Close_All();
    const QString name = Settings().default_database.trimmed();
    if (!name.isEmpty())
        DB_Open(name);
}

}  // namespace

void DatabaseControl::run(Command command, TextBoxLike& name, const QString& current_name)
{
    if (!Check_New_Database_Name(name, command == Command::Backup))
        return;
    status.clear();
    const QString file = database_file_name(name.text());
    switch (command) {
    case Command::Refresh: refresh(file); break;
    case Command::Backup: backup(current_name.trimmed(), file); break;
    case Command::Repair: repair(file); break;
    case Command::Upgrade: upgrade(file); break;
    }
}

void DatabaseControl::refresh(const QString& name)
{
    DB_Close_All();
    if (DB_Open(name) && DB_Create_Queries(*Current_Db())) {
        status = QStringLiteral("The Queries have been refreshed.");
        tell(QStringLiteral("The Queries on database ") + name + QStringLiteral(" have been refreshed."));
    }
    reopen_default_database();
}

void DatabaseControl::backup(const QString& current_name, const QString& backup_name)
{
    DB_Close_All();
    const bool copied = DB_Compact_Database(current_name, backup_name);
    status = copied ? QStringLiteral("Successfully Copied. ") + QStringLiteral("Please keep it in a safe place!")
                    : QStringLiteral("copy failed");
    reopen_default_database();
    if (!copied || !Current_Db())
        return;
    SystemRecord& record = Sys_Record();
    record.backup_filename = backup_name;
    record.backup_date = engine::now();
    if (!DB_Update_Sys(record))
        engine::MsgBox(QStringLiteral("Couldn't update the backup ") + QStringLiteral("info in the current database."),
                       engine::mb::OkOnly, App_Title());
}

void DatabaseControl::repair(const QString& name)
{
    DB_Close_All();
    status = DB_Repair(name) ? QStringLiteral("Successfully Repaired. ") : QStringLiteral("repair failed");
    reopen_default_database();
}

void DatabaseControl::upgrade(const QString& name)
{
    DB_Close_All();
    if (!DB_Open_Raw(name)) {
        tell(QStringLiteral("The database ") + name + QStringLiteral(" could NOT be initialised, so the upgrade failed."));
    } else {
        SystemRecord record;
        if (DB_Read_Sys(record) && DB_Upgrade_Database(name, record)) {
            status = QStringLiteral("The database has been upgraded.");
            tell(status);
        } else {
            status = QStringLiteral("Unsuccessful");
        }
    }
    reopen_default_database();
}
