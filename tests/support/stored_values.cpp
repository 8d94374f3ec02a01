#include "support/stored_values.h"

#include "engine/currency.h"

#include <QDate>

namespace testing_support {

QString sql_literal(const QVariant& value)
{
    if (!value.isValid() || value.isNull())
        return QStringLiteral("NULL");
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Double:
        return value.toString();
    case QMetaType::QDate:
        return QStringLiteral("'%1 00:00:00'").arg(value.toDate().toString(QStringLiteral("yyyy-MM-dd")));
    default:
        return QLatin1Char('\'') + value.toString().replace(QLatin1Char('\''), QLatin1String("''")) + QLatin1Char('\'');
    }
}

QString money_text(const QVariant& value)
{
    if (value.userType() == qMetaTypeId<engine::Currency>())
        return value.value<engine::Currency>().to_string();
    return value.isNull() ? QStringLiteral("null") : engine::Currency::from_double(value.toDouble()).to_string();
}

}  // namespace testing_support
