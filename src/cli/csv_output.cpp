#include "cli/csv_output.h"

#include "engine/currency.h"
#include "engine/recordset.h"
#include "reportengine/text_exports.h"

#include <QDateTime>
#include <QStringList>

namespace cli {

QString printable(const QVariant& value)
{
    if (!value.isValid() || value.isNull())
        return QString();
    if (value.userType() == qMetaTypeId<engine::Currency>())
        return value.value<engine::Currency>().to_string();
    switch (value.typeId()) {
    case QMetaType::QDateTime: {
        const QDateTime dt = value.toDateTime();
        return dt.time() == QTime(0, 0) ? dt.toString(QStringLiteral("yyyy-MM-dd"))
                                         : dt.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    }
    case QMetaType::Bool: return value.toBool() ? QStringLiteral("True") : QStringLiteral("False");
    case QMetaType::Double: return QString::number(value.toDouble(), 'g', 15);
    default: return value.toString();
    }
}

void print_csv(engine::Recordset& rows, QTextStream& stream)
{
    QStringList header;
    for (const QString& name : rows.field_names())
        header << reportengine::csv_quoted(name);
    stream << header.join(QLatin1Char(',')) << '\n';
    if (rows.RecordCount() == 0)
        return;
    rows.MoveFirst();
    while (!rows.at_eof()) {
        QStringList line;
        for (const QString& name : rows.field_names())
            line << reportengine::csv_quoted(printable(rows.Fields(name)));
        stream << line.join(QLatin1Char(',')) << '\n';
        rows.MoveNext();
    }
}

}  // namespace cli
