#include "database/schema.h"

#include "database/code_values.h"
#include "database/db_handling.h"
#include "database/schema_statements.h"
#include "database/stored_queries.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/jet_date.h"
#include "engine/msg_box.h"
#include "engine/workspace.h"
#include "shell/error_log.h"
#include "shell/settings.h"

namespace {

const QString tag_handling = QStringLiteral("globdbhand");
const QString tag_definitions = QStringLiteral("gendbde");
const QString routine_create = QStringLiteral("DB_Create_Database");

// Every table of Sys_tab to Standard_Values; empty text, or the label of the
// step that failed.
QString create_core_tables(engine::Database& db)
{
    for (const schema::SchemaStep& step : schema::core_table_steps())
        if (!schema::run_step(db, step))
            return step.label;
    return QString();
}

// All tables in one transaction. A failure is reported with the engine's
// error and undone.
bool create_all_tables(engine::Workspace& workspace, engine::Database& db)
{
    QString failed = create_core_tables(db);
    if (failed.isEmpty())
        failed = DB_Create_Invoice_Tables(db);
    if (failed.isEmpty())
        return true;
    Report_Error(report::Unexpected, QStringLiteral("Cannot create database table ") + failed, engine::mb::Critical,
                 tag_handling, routine_create);
    workspace.Rollback();
    return false;
}

bool insert_sys_row(engine::Database& db)
{
    auto query = db.QueryDefs(QStringLiteral("Qry_Insert_Sys"));
    const bool ok = query && query->set_parameter(QStringLiteral("ss_DB_Type"), code::Current_DB_Version)
                    && query->set_parameter(QStringLiteral("ss_Creation_Date"), engine::now())
                    && query->set_parameter(QStringLiteral("ss_Backup_Date"), 0)
                    && query->set_parameter(QStringLiteral("ss_Backup_Filename"), QString(""))
                    && query->Execute(engine::dbopt::FailOnErrorConsistent);
    if (!ok)
        Report_Error(report::Unexpected, QStringLiteral("Could not set up sys table"), engine::mb::OkOnly, tag_handling,
                     routine_create);
    return ok;
}

// Closes a new file that can't be finished and removes it, so that nothing
// half-made is left behind. The caller has reported.
void discard_new_file(engine::Workspace& workspace, engine::Database* db, const QString& name)
{
    workspace.close_database(db);
    DB_Delete_Files(name);
}

// A failure once the tables are committed: `label` says which step.
bool abandon_creation(engine::Workspace& workspace, engine::Database* db, const QString& name, const QString& label)
{
    Report_Error(report::Unexpected, QStringLiteral("Cannot create database ") + name, engine::mb::Critical,
                 tag_definitions, label);
    discard_new_file(workspace, db, name);
    return false;
}

bool store_file_locations(engine::Database& db)
{
    const SettingsRecord& settings = Settings();
    auto query = db.QueryDefs(QStringLiteral("Qry_Update_Sys_Locations"));
    return query
           && query->set_parameter(QStringLiteral("ss_Style_Type"), code::style_type::Locations_In_Database)
           && query->set_parameter(QStringLiteral("ss_Filename_zrepfmt"), settings.report_list.trimmed())
           && query->set_parameter(QStringLiteral("ss_Filename_InvTerm"), settings.term_script.trimmed())
           && query->set_parameter(QStringLiteral("ss_Filename_InvAct"), settings.activity_script.trimmed())
           && query->set_parameter(QStringLiteral("ss_Filename_CrsCost"), settings.cost_script.trimmed())
           && query->Execute(engine::dbopt::FailOnErrorConsistent);
}

}  // namespace

QString DB_Create_Invoice_Tables(engine::Database& db)
{
    for (const schema::SchemaStep& step : schema::invoicing_table_steps()) {
        // An existing table is passed over, so that a partly upgraded file can go on.
        if (schema::run_step(db, step) || engine::Err().Number == engine::jet::TableExists)
            continue;
        Report_Error(report::Unexpected, QStringLiteral("Cannot create invoice tables "), engine::mb::OkOnly,
                     tag_definitions, step.label);
        return step.label;
    }
    return QString();
}

bool DB_Init_Empty_Db(engine::Database& db)
{
    bool ok = db.Execute(QStringLiteral("UPDATE sys_tab SET  s_Style_Type = %1 ; ").arg(code::style_type::Locations_In_Settings),
                         engine::dbopt::FailOnErrorConsistent);
    if (ok && Settings().file_locations == code::style_type::Locations_In_Database)
        ok = store_file_locations(db);
    if (!ok)
        Report_Error(report::Unexpected, QStringLiteral("Unexpected error inserting blank report messages"),
                     engine::mb::OkOnly, tag_definitions, QStringLiteral("DB_Init_Empty_Db"));
    return ok;
}

bool DB_Init_Blank_Db(engine::Database& db)
{
    const bool ok =
        db.Execute(QStringLiteral("INSERT INTO Standard_Values (stndrd_id, School_Name) VALUES (%1, \" \")")
                       .arg(code::Standard_Values_Row),
                   engine::dbopt::FailOnError)
        && db.Execute(QStringLiteral("UPDATE Standard_Values SET  VAT_Type = %1 ; ").arg(code::vat_type::None),
                      engine::dbopt::FailOnErrorConsistent);
    if (!ok)
        Report_Error(report::Unexpected, QStringLiteral("Unexpected error inserting blank report messages"),
                     engine::mb::OkOnly, tag_definitions, QStringLiteral("DB_Init_Blank_Db"));
    return ok;
}

bool DB_Create_Database(const QString& name, bool insert_blank_row)
{
    engine::Workspace& workspace = Program_Workspace();
    engine::Database* db = workspace.CreateDatabase(name);
    if (!db) {
        Report_Error(report::Unexpected, QStringLiteral("Cannot create database ") + name, engine::mb::OkOnly,
                     tag_handling, routine_create);
        return false;
    }

    if (!workspace.BeginTrans())
        return abandon_creation(workspace, db, name, QStringLiteral("begin transaction"));
    if (!create_all_tables(workspace, *db)) {
        discard_new_file(workspace, db, name);
        return false;
    }
    if (!workspace.CommitTrans()) {
        workspace.Rollback();
        return abandon_creation(workspace, db, name, QStringLiteral("commit transaction"));
    }

    if (!DB_Create_Queries(*db))
        return abandon_creation(workspace, db, name, QStringLiteral("error creating queries"));
    if (!insert_sys_row(*db))
        return abandon_creation(workspace, db, name, QStringLiteral("error setting up system table"));

    // What follows leaves a usable file even when it fails.
    DB_Init_Empty_Db(*db);
    if (insert_blank_row)
        DB_Init_Blank_Db(*db);

    workspace.close_database(db);
    Report_Error(report::Trace, QStringLiteral("The database ") + name + QStringLiteral(" has been created."),
                 engine::mb::OkOnly, tag_handling);
    return true;
}
