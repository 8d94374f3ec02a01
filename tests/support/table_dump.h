#pragma once
// Every table of a database, every row, as text in a stable order, so that a
// test can show that a refused or failed run left nothing behind.

#include <QString>

namespace engine {
class Database;
}

namespace testing_support {

// "== Table" and then a line "Column=value | ..." per row in rowid order;
// money as plain text, an empty field as "null".
QString dump_tables(engine::Database& db);

}  // namespace testing_support
