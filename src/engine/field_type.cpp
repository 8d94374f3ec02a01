#include "engine/field_type.h"

#include <QRegularExpression>

namespace engine {

FieldType field_type_of_declared(const QString& declared)
{
    const QString type = declared.trimmed().toUpper().section(QLatin1Char('('), 0, 0).trimmed();
    if (type == QLatin1String("COUNTER") || type == QLatin1String("LONG") || type == QLatin1String("INTEGER")
        || type == QLatin1String("AUTOINCREMENT") || type == QLatin1String("INT"))
        return FieldType::Long;
    if (type == QLatin1String("SHORT") || type == QLatin1String("SMALLINT"))
        return FieldType::Integer;
    if (type == QLatin1String("BYTE") || type == QLatin1String("TINYINT"))
        return FieldType::Byte;
    if (type == QLatin1String("BIT") || type == QLatin1String("BOOLEAN") || type == QLatin1String("YESNO"))
        return FieldType::Boolean;
    if (type == QLatin1String("CURRENCY") || type == QLatin1String("MONEY"))
        return FieldType::Currency;
    if (type == QLatin1String("SINGLE") || type == QLatin1String("FLOAT4"))
        return FieldType::Single;
    if (type == QLatin1String("DOUBLE") || type == QLatin1String("REAL") || type == QLatin1String("FLOAT"))
        return FieldType::Double;
    if (type == QLatin1String("DATE") || type == QLatin1String("DATETIME") || type == QLatin1String("TIME"))
        return FieldType::Date;
    if (type == QLatin1String("TEXT") || type == QLatin1String("VARCHAR") || type == QLatin1String("CHAR"))
        return FieldType::Text;
    if (type == QLatin1String("MEMO") || type == QLatin1String("LONGTEXT"))
        return FieldType::Memo;
    return FieldType::Unknown;
}

int text_length_of_declared(const QString& declared)
{
    if (field_type_of_declared(declared) != FieldType::Text)
        return 0;
    static const QRegularExpression length(QStringLiteral(R"(\(\s*(\d+)\s*\))"));
    const auto match = length.match(declared);
    return match.hasMatch() ? match.captured(1).toInt() : 255;
}

}  // namespace engine
