#include "database/upgrade.h"

#include "database/code_values.h"
#include "database/db_handling.h"
#include "database/schema.h"
#include "database/schema_statements.h"
#include "database/stored_queries.h"
#include "database/upgrade_steps.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "engine/workspace.h"
#include "shell/error_log.h"

#include <QDate>

namespace {

const QString tag = QStringLiteral("globdbhand");

using upgrade::Change;
using upgrade::ChangeKind;
using upgrade::Step;

bool raise_not_found()
{
    engine::raise_engine_error(engine::jet::ItemNotFound, QStringLiteral("Item not found in this collection."));
    return false;
}

// Makes one change. `label` is what a failure report will name: the
// change's own, or for the invoicing tables the label that came back.
bool apply(engine::Database& db, const Change& change, QString& label)
{
    label = change.label;
    switch (change.kind) {
    case ChangeKind::Statement:
        return db.Execute(change.text, engine::dbopt::FailOnErrorConsistent);
    case ChangeKind::SchemaObject: {
        const schema::SchemaStep* definition = schema::step_creating(change.text);
        return definition ? schema::run_step(db, *definition) : raise_not_found();
    }
    case ChangeKind::InvoiceTables: {
        const QString failed = DB_Create_Invoice_Tables(db);
        if (!failed.isEmpty())
            label = failed;
        return failed.isEmpty();
    }
    case ChangeKind::RequireTable:
        return db.has_table(change.text) || raise_not_found();
    }
    return false;
}

// What exists already is passed over, so that a partly upgraded file can be
// upgraded again: a column always, an index from the step 7 to 8 on.
bool passed_over(const Step& step, const Change& change)
{
    if (change.kind == ChangeKind::InvoiceTables)
        return false;
    const int number = engine::Err().Number;
    const bool existing = number == engine::jet::FieldExists
                          || (step.passes_over_existing_index && number == engine::jet::IndexExists);
    if (existing) {
        engine::Err().Clear();
        engine::DBEngine_Errors().clear();
    }
    return existing;
}

bool apply_all(engine::Database& db, const Step& step, const std::vector<Change>& changes, QString& label)
{
    for (const Change& change : changes)
        if (!apply(db, change, label) && !passed_over(step, change))
            return false;
    return true;
}

// The first step's routine text has a blank before "in"; the later ones don't.
// `began` says whether the step's own transaction is open: only that is
// undone, never a caller's.
bool fail_step(const Step& step, const QString& label, bool began = true)
{
    const QString joint = step.from == 1 ? QStringLiteral(" in ") : QStringLiteral("in ");
    Report_Error(report::Unexpected,
                 QStringLiteral("Could not upgrade the database from %1 to %2").arg(step.from).arg(step.to),
                 engine::mb::OkOnly, tag, label + joint + step.routine);
    if (began)
        Program_Workspace().Rollback();
    return false;
}

// The record mirrors what the version statement (and the last step) wrote.
void mirror_step(SystemRecord& record, const Step& step)
{
    record.version = static_cast<quint8>(step.to);
    record.creation_date = QDateTime(QDate::currentDate(), QTime(0, 0));
    record.backup_date = record.creation_date;
    record.backup_filename = QStringLiteral(" ");
    if (step.to == code::Current_DB_Version)
        record.style = code::style_type::Locations_In_Database;
}

bool run_upgrade_step(int from, SystemRecord& record)
{
    const Step* step = upgrade::step_from(from);
    engine::Database* db = Current_Db();
    QString label = QStringLiteral("begin transaction");
    if (!step || !db) {
        raise_not_found();
        return step ? fail_step(*step, label, false) : false;
    }
    engine::Workspace& workspace = Program_Workspace();
    if (!workspace.BeginTrans())
        return fail_step(*step, label, false);

    const Change version{QStringLiteral("sys_tab"), ChangeKind::Statement, upgrade::version_statement(step->to)};
    if (!apply_all(*db, *step, step->changes, label) || !apply_all(*db, *step, {version}, label)
        || !apply_all(*db, *step, step->conversions, label))
        return fail_step(*step, label);
    if (!workspace.CommitTrans())
        return fail_step(*step, QStringLiteral("commit transaction"));

    mirror_step(record, *step);
    Report_Error(report::Trace, QStringLiteral("Upgraded the database from %1 to %2").arg(step->from).arg(step->to),
                 engine::mb::OkOnly, tag, step->routine);
    return true;
}

using StepRoutine = bool (*)(SystemRecord&);

// The step that a file of this version takes; null for one without.
StepRoutine step_routine(int version)
{
    switch (version) {
    case 1: return DB_Upgrade_1_to_2;
    case 2: return DB_Upgrade_2_to_3;
    case 3: return DB_Upgrade_3_to_4;
    case 4: return DB_Upgrade_4_to_5;
    case 5: return DB_Upgrade_5_to_6;
    case 6: return DB_Upgrade_6_to_7;
    case 7: return DB_Upgrade_7_to_8;
    case 8: return DB_Upgrade_8_to_9;
    case 9: return DB_Upgrade_9_to_10;
    case 10:
    case 11: return DB_Upgrade_10_to_12;
    case 12: return DB_Upgrade_12_to_13;
    default: return nullptr;
    }
}

void report_upgrade_failure(int number, int style)
{
    Report_Error(number, QStringLiteral("Could not upgrade the database"), style, tag,
                 QStringLiteral("DB_Upgrade_Database"));
}

}  // namespace

bool DB_Upgrade_1_to_2(SystemRecord& record) { return run_upgrade_step(1, record); }
bool DB_Upgrade_2_to_3(SystemRecord& record) { return run_upgrade_step(2, record); }
bool DB_Upgrade_3_to_4(SystemRecord& record) { return run_upgrade_step(3, record); }
bool DB_Upgrade_4_to_5(SystemRecord& record) { return run_upgrade_step(4, record); }
bool DB_Upgrade_5_to_6(SystemRecord& record) { return run_upgrade_step(5, record); }
bool DB_Upgrade_6_to_7(SystemRecord& record) { return run_upgrade_step(6, record); }
bool DB_Upgrade_7_to_8(SystemRecord& record) { return run_upgrade_step(7, record); }
bool DB_Upgrade_8_to_9(SystemRecord& record) { return run_upgrade_step(8, record); }
bool DB_Upgrade_9_to_10(SystemRecord& record) { return run_upgrade_step(9, record); }
bool DB_Upgrade_10_to_12(SystemRecord& record) { return run_upgrade_step(10, record); }
bool DB_Upgrade_12_to_13(SystemRecord& record) { return run_upgrade_step(12, record); }

bool DB_Upgrade_Database(const QString&, SystemRecord& system_record)
{
    if (!Current_Db()) {
        raise_not_found();
        report_upgrade_failure(report::Unexpected, engine::mb::OkOnly);
        return false;
    }
    bool result = true;
    while (system_record.version < code::Current_DB_Version && result) {
        const StepRoutine step = step_routine(system_record.version);
        if (!step) {
            report_upgrade_failure(report::UpgradeFailed, engine::mb::Critical);
            return false;
        }
        result = step(system_record);
    }
    return result && DB_Create_Queries(*Current_Db());
}
