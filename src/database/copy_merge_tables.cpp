#include "database/copy_merge_tables.h"

#include "engine/database.h"
#include "engine/err.h"
#include "engine/recordset.h"

#include <QFileInfo>
#include <memory>

namespace copy_merge {

namespace {

QString quoted_text(const QString& text)
{
    return QLatin1Char('\'') + QString(text).replace(QLatin1Char('\''), QLatin1String("''")) + QLatin1Char('\'');
}

// The first column of each row; false when the query can't be run.
bool first_column(engine::Database& db, const QString& sql, QStringList& values)
{
    values.clear();
    std::unique_ptr<engine::Recordset> rows = db.OpenRecordset(sql);
    if (!rows)
        return false;
    for (rows->MoveFirst(); !rows->at_eof(); rows->MoveNext())
        values << rows->Fields(rows->field(0).name).toString();
    return true;
}

QString canonical(const QString& file)
{
    const QFileInfo info(file);
    return info.exists() ? info.canonicalFilePath() : info.absoluteFilePath();
}

// The columns of a table in one schema, in their order.
bool table_columns(engine::Database& db, const QString& schema, const QString& table, QStringList& columns)
{
    if (!first_column(db, QStringLiteral("SELECT name FROM pragma_table_info(%1, %2)").arg(quoted_text(table), quoted_text(schema)),
                      columns))
        return false;
    if (columns.isEmpty()) {
        engine::raise_engine_error(engine::jet::InputTableNotFound,
                                   QStringLiteral("The Microsoft Jet database engine cannot find the input table or "
                                                  "query '%1'. Make sure it exists and that its name is spelled correctly.")
                                       .arg(table));
        return false;
    }
    return true;
}

}  // namespace

bool is_same_file(engine::Database& db, const QString& file)
{
    return canonical(db.Name()) == canonical(file);
}

bool attach_other(engine::Database& db, const QString& file, QString& statement)
{
    statement = QStringLiteral("ATTACH DATABASE %1 AS %2").arg(quoted_text(file), other_file);
    QStringList attached;
    if (!first_column(db, QStringLiteral("SELECT file FROM pragma_database_list WHERE name = %1").arg(quoted_text(other_file)),
                      attached))
        return false;
    if (!attached.isEmpty()) {
        if (canonical(attached.first()) == canonical(file))
            return true;
        if (!db.execute_native(QStringLiteral("DETACH DATABASE ") + other_file))
            return false;
    }
    // SQLite would make a new, empty file of a name that isn't there.
    if (!QFileInfo::exists(file)) {
        engine::raise_engine_error(engine::jet::FileNotFound, QStringLiteral("Could not find file '%1'.").arg(file));
        return false;
    }
    return db.execute_native(statement);
}

bool transfer_statement(engine::Database& db, const QString& from_schema, const QString& into_schema,
                        const Transfer& transfer, QString& statement)
{
    QStringList columns;
    statement = QStringLiteral("INSERT INTO %1.%2 SELECT %3* FROM %4;")
                    .arg(into_schema, transfer.table, transfer.distinct ? QStringLiteral("DISTINCT ") : QString(),
                         transfer.from);
    if (!table_columns(db, from_schema, transfer.table, columns))
        return false;
    QStringList selected;
    for (const QString& column : columns)
        selected << transfer.table + QLatin1Char('.') + column;
    statement = QStringLiteral("INSERT INTO %1.%2 (%3) SELECT %4%5 FROM %6;")
                    .arg(into_schema, transfer.table, columns.join(QStringLiteral(", ")),
                         transfer.distinct ? QStringLiteral("DISTINCT ") : QString(), selected.join(QStringLiteral(", ")),
                         transfer.from);
    return true;
}

}  // namespace copy_merge
