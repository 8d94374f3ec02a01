#pragma once
// The stored queries that live inside every database file: their texts, as
// data in order of creation, and the routines that (re)create them. Screens,
// script files and reports call them by name and set their parameters by
// name, so names, parameter names and result columns must not change.

#include <QString>
#include <vector>

namespace engine {
class Database;
}

struct StoredQueryText {
    QString name;
    QString sql;  // SQLite text, after a PARAMETERS clause when it has parameters
};

// Invoices, lines, receipts, course costs and balances.
const std::vector<StoredQueryText>& invoicing_query_texts();
// The system table, people, courses, activities and the calendar.
const std::vector<StoredQueryText>& people_query_texts();

// Deletes and re-creates each query in turn. A query that can't be made is
// reported as `report_text` followed by "querydef " and its name, and the
// others still go ahead. True when none failed.
bool create_stored_queries(engine::Database& db, const std::vector<StoredQueryText>& texts,
                           const QString& report_text);

// The invoicing queries; true when none failed.
bool DB_Create_Invoice_Queries(engine::Database& db);

// All queries: the invoicing ones first, so that a query of the same name
// here replaces the invoicing one. True when none failed.
bool DB_Create_Queries(engine::Database& db);
