#pragma once
// The current database: opening it through the version gate, the system
// table, closing, compacting, repairing and deleting database files.

#include <QDateTime>
#include <QString>

namespace engine {
class Database;
class Workspace;
}  // namespace engine

// The mirror of the one row of Sys_tab.
struct SystemRecord {
    quint8 version = 0;            // s_DB_Type
    QDateTime creation_date;       // s_Creation_Date
    QDateTime backup_date;         // s_Backup_Date
    QString backup_filename;       // s_Backup_filename
    quint8 style = 0;              // s_Style_Type
    QString report_list;           // s_Filename_zrepfmt
    QString term_script;           // s_Filename_InvTerm
    QString activity_script;       // s_Filename_InvAct
    QString cost_script;           // s_Filename_CrsCost
};

// The program's one workspace, taken at start.
engine::Workspace& Program_Workspace();
// The open database, or null.
engine::Database* Current_Db();
// The name of the current database; empty when none is current.
QString& Current_Db_Name();
// The system record of the current database.
SystemRecord& Sys_Record();

bool DB_Open(const QString& name);
bool DB_Open_Raw(const QString& name);
bool DB_Read_Sys(SystemRecord& record);
bool DB_Update_Sys(const SystemRecord& record);
void DB_Close_All();
bool DB_Compact_Database(const QString& old_name, const QString& new_name);
bool DB_Repair(const QString& name);
bool DB_Delete_Files(const QString& name);
bool DB_Recycle_Files(const QString& name);

// The name of the engine's side file beside a database: the name with its
// last three characters replaced by "ldb". SQLite's own side files go with it.
QString lock_file_name(const QString& name);
