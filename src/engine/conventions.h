#pragma once
// The storage conventions every table follows, whatever wrote the row:
// text compared case-insensitively (Unicode-aware), TEXT(n) lengths and
// integer ranges enforced, dates kept in one text form, money rounded to four
// places, booleans kept as 0 and 1.

#include <QString>

struct sqlite3;

namespace engine {

class Connection;

// Replaces SQLite's ASCII-only NOCASE by a Unicode-aware one on this
// connection. Text columns are declared COLLATE NOCASE, so a file stays
// readable by other SQLite tools.
void install_collations(sqlite3* db);

// (Re)creates the triggers that enforce the conventions on one table, from
// the declared types of its columns. Call after creating a table or adding a
// column.
bool apply_conventions(Connection& connection, const QString& table);

}  // namespace engine
