#include "support/query_rows.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace testing_support {

void Row::insert(const QString& column, const QVariant& value)
{
    const QString key = column.toLower();
    if (!by_lower_case_.contains(key))
        by_lower_case_.insert(key, value);
}

QVariant Row::operator[](const QString& column) const
{
    const auto found = by_lower_case_.constFind(column.toLower());
    if (found == by_lower_case_.constEnd()) {
        ADD_FAILURE() << "No column " << column.toStdString() << " among "
                      << by_lower_case_.keys().join(QStringLiteral(", ")).toStdString();
        return QVariant();
    }
    return *found;
}

}  // namespace testing_support
