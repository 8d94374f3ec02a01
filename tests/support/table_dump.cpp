#include "support/table_dump.h"

#include "engine/currency.h"
#include "engine/database.h"
#include "engine/recordset.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace testing_support {

namespace {

QString shown(const QVariant& value)
{
    if (value.isNull())
        return QStringLiteral("null");
    if (value.userType() == qMetaTypeId<engine::Currency>())
        return value.value<engine::Currency>().to_string();
    return value.toString();
}

}  // namespace

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
            for (const QString& name : rows->field_names())
                values << name + QLatin1Char('=') + shown(rows->Fields(name));
            text += values.join(QStringLiteral(" | ")) + QLatin1Char('\n');
        }
    }
    return text;
}

}  // namespace testing_support
