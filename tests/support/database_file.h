#pragma once
// A database looked at or changed in SQLite text: one value or one column of
// a query, every table dumped as text; and a database file that isn't open,
// looked at, changed, or taken by its bytes.

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace engine {
class Database;
}

namespace testing_support {

// The first column of the first row of SQLite text on an open database; null
// when there is no row. Fails the test when the text can't be run.
QVariant scalar_of(engine::Database& db, const QString& sql);
// The first column of each row, as text.
QStringList values_of(engine::Database& db, const QString& sql);

// "== Table" and then a line "Column=value | ..." per row in rowid order;
// money as plain text, an empty field as "null".
QString dump_tables(engine::Database& db);

// The same, of a file that isn't open: opened for the look and closed again.
QString dump_of(const QString& path);
// The first column of each row of SQLite text run on a file that isn't open.
QStringList values_in(const QString& path, const QString& sql);
// The first column of the first row; empty when there is none.
QString value_in(const QString& path, const QString& sql);
// Runs SQLite text on a file that isn't open; fails the test on error. Gives the path.
QString change_in(const QString& path, const QString& sql);
// A digest of the file's bytes, to show that nothing wrote to it.
QByteArray digest_of(const QString& path);

}  // namespace testing_support
