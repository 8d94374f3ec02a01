#pragma once
// Making a new database file: every table in one transaction, the stored
// queries, the Sys_tab row and the starting values. A failed creation leaves
// no file behind.

#include <QString>

namespace engine {
class Database;
}

// Creates the database file `name` (a full path) and closes it again; it
// doesn't become the current database. With insert_blank_row the one
// Standard_Values row is added; a copy of an existing database passes false
// and copies that row instead.
bool DB_Create_Database(const QString& name, bool insert_blank_row);

// Creates the invoicing tables Invoices to Tmp_CourseCosts. A table that
// already exists is passed over. Gives the label of the step that failed,
// or an empty text. Also a step of the upgrade of old files.
QString DB_Create_Invoice_Tables(engine::Database& db);

// Style 2 (locations kept in the settings), or, when the setting $FL is 1,
// style 1 with the current file names. A failure is reported and passed over.
bool DB_Init_Empty_Db(engine::Database& db);

// The one Standard_Values row: stndrd_id 1, a blank School_Name, VAT_Type 1.
// A failure is reported and passed over.
bool DB_Init_Blank_Db(engine::Database& db);
