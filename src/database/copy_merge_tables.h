#pragma once
// Reaching a second database file from the open one, and the statements that
// move a table's rows between the two. Jet names the other file with its IN
// clause; here it is attached to the same connection under one name.

#include <QString>
#include <QStringList>

namespace engine {
class Database;
}

namespace copy_merge {

// The schema name of the attached file.
inline const QString other_file = QStringLiteral("other_file");

// Attaches `file` to the open database as other_file, unless it is attached
// already. A file that isn't there is refused (3024) rather than created.
// The statement run is left in `statement` for a failure report.
bool attach_other(engine::Database& db, const QString& file, QString& statement);

// True when `file` is the open database's own file.
bool is_same_file(engine::Database& db, const QString& file);

// What one statement moves: the rows of `table` that `from` (the text after
// FROM, naming the schemas) selects, into the same table of the other schema.
struct Transfer {
    QString label;   // what a failure report names
    QString table;
    QString from;
    bool distinct = false;
};

// "INSERT INTO <into>.<table> (<columns>) SELECT [DISTINCT] <table>.<columns> FROM <from>;", with
// the columns of the source's table, so that files whose columns stand in
// another order (an upgraded file) match by name as Jet does.
bool transfer_statement(engine::Database& db, const QString& from_schema, const QString& into_schema,
                        const Transfer& transfer, QString& statement);

}  // namespace copy_merge
