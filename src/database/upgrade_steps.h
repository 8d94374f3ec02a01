#pragma once
// The changes that bring an old database file up one version, as data: what
// each step adds, under the label that a failure report names, in the order
// in which a file of that age lacks them.

#include <QString>
#include <vector>

namespace upgrade {

enum class ChangeKind {
    Statement,      // SQL in the engine's dialect, run with Execute
    SchemaObject,   // the table or index of that name, as a new file has it
    InvoiceTables,  // the invoicing tables of a new file; a label coming back fails
    RequireTable,   // the table must be there before columns are added to it
};

struct Change {
    QString label;
    ChangeKind kind = ChangeKind::Statement;
    QString text;  // the statement, or the name of the object or table
};

struct Step {
    int from = 0;
    int to = 0;
    QString routine;                 // "DB_Upgrade_1_to_2"
    bool passes_over_existing_index; // an index that exists already is no failure
    std::vector<Change> changes;     // before the version statement
    std::vector<Change> conversions; // of the rows, after it
};

// The steps in order, from 1 to 2 up to 12 to 13.
const std::vector<Step>& steps();

// The step that a file of this version takes next; null for a version that
// has none (0, or the current one and above). 10 and 11 share a step, since
// 11 was never a format of its own.
const Step* step_from(int version);

// The statement that ends every step: the new version, today as the creation
// and backup date, and a blank as the backup file name, so that an upgraded
// file counts as new and as not backed up.
QString version_statement(int version);

}  // namespace upgrade
