#include "people/pupil_name.h"

#include "engine/recordset.h"

QString Format_Name(const QString& family_name, const QString& first_name, const QString& alt_surname)
{
    QString name = family_name.toUpper() + QLatin1Char(' ') + first_name;
    if (!alt_surname.trimmed().isEmpty())
        name += QStringLiteral(" (") + alt_surname + QLatin1Char(')');
    return name;
}

QString Format_Name(const engine::Recordset& record)
{
    return Format_Name(record.Fields(QStringLiteral("Family_Name")).toString(),
                       record.Fields(QStringLiteral("Pupil_FirstName")).toString(),
                       record.Fields(QStringLiteral("Pupil_Surname")).toString());
}
