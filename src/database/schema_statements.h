#pragma once
// Every table and index of a current database, as data: one step per
// definition, in the order in which a new file gets them. The upgrade of old
// files runs some of the same steps, so each can be found by what it creates.

#include <QString>
#include <vector>

namespace engine {
class Database;
}

namespace schema {

struct SchemaStep {
    QString label;   // what a failure report names
    QString object;  // the table or index that it creates
    QString table;   // the table whose storage conventions follow; empty for an index
    QString sql;     // SQLite text, one or more statements
};

// Sys_tab to Standard_Values, with their indexes.
const std::vector<SchemaStep>& core_table_steps();
// Invoices to Tmp_CourseCosts, with their indexes.
const std::vector<SchemaStep>& invoicing_table_steps();

// The step that creates the table or index of that name (any letter case); null if none.
const SchemaStep* step_creating(const QString& object);

// Runs one step, then (re)installs its table's storage conventions. The
// engine's error is left in engine::Err(): 3010 when the table exists, 3375
// when the index exists.
bool run_step(engine::Database& db, const SchemaStep& step);

// Column types as the file declares them: plain TEXT is TEXT(255), and every
// TEXT(n) compares without regard to case.
QString with_text_collation(const QString& definition);

}  // namespace schema
