#pragma once
// The functions of Jet that stored queries and script files use, registered
// with SQLite: weekday, isnumeric, CDate, CDbl, DateAdd, format, Now; and the
// engine's own jet_date and jet_round that keep the storage conventions.

struct sqlite3;

namespace engine {
void install_sql_functions(sqlite3* db);
}  // namespace engine
