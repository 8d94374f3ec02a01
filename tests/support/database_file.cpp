#include "support/database_file.h"

#include "engine/currency.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/recordset.h"
#include "engine/workspace.h"
#include "support/stored_values.h"

#include <QCryptographicHash>
#include <QFile>

#include <gtest/gtest.h>

namespace testing_support {

namespace {

// Opens the file in a workspace of its own for the length of `work`.
template <typename Work>
void in_file(const QString& path, Work work)
{
    engine::Workspace workspace;
    engine::Database* db = workspace.OpenDatabase(path);
    EXPECT_NE(db, nullptr) << path.toStdString() << "\n" << engine::Err().Description.toStdString();
    if (db)
        work(*db);
    workspace.Close();
}

}  // namespace

QVariant scalar_of(engine::Database& db, const QString& sql)
{
    auto rows = db.OpenRecordset(sql);
    EXPECT_NE(rows, nullptr) << sql.toStdString() << "\n" << engine::Err().Description.toStdString();
    return rows && !rows->at_eof() ? rows->Fields(rows->field(0).name) : QVariant();
}

QStringList values_of(engine::Database& db, const QString& sql)
{
    QStringList found;
    auto rows = db.OpenRecordset(sql);
    EXPECT_NE(rows, nullptr) << sql.toStdString() << "\n" << engine::Err().Description.toStdString();
    for (; rows && !rows->at_eof(); rows->MoveNext())
        found << rows->Fields(rows->field(0).name).toString();
    return found;
}

QString dump_tables(engine::Database& db)
{
    QString text;
    for (const QString& table : db.TableDef_names()) {
        text += QStringLiteral("== ") + table + QLatin1Char('\n');
        auto rows = db.OpenRecordset(QStringLiteral("SELECT * FROM \"%1\" ORDER BY rowid").arg(table));
        EXPECT_NE(rows, nullptr) << table.toStdString();
        if (!rows)
            continue;
        for (rows->MoveFirst(); !rows->at_eof(); rows->MoveNext()) {
            QStringList values;
            for (const QString& name : rows->field_names()) {
                const QVariant value = rows->Fields(name);
                values << name + QLatin1Char('=') + (value.userType() == qMetaTypeId<engine::Currency>() ? money_text(value)
                                                     : value.isNull() ? QStringLiteral("null") : value.toString());
            }
            text += values.join(QStringLiteral(" | ")) + QLatin1Char('\n');
        }
    }
    return text;
}

QString dump_of(const QString& path)
{
    QString text;
    in_file(path, [&](engine::Database& db) { text = dump_tables(db); });
    return text;
}

QStringList values_in(const QString& path, const QString& sql)
{
    QStringList found;
    in_file(path, [&](engine::Database& db) { found = values_of(db, sql); });
    return found;
}

QString value_in(const QString& path, const QString& sql)
{
    return values_in(path, sql).value(0);
}

QString change_in(const QString& path, const QString& sql)
{
    in_file(path, [&](engine::Database& db) {
        EXPECT_TRUE(db.execute_native(sql)) << sql.toStdString() << "\n" << engine::Err().Description.toStdString();
    });
    return path;
}

QByteArray digest_of(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha256);
}

}  // namespace testing_support
