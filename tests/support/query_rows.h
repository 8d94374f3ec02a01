#pragma once
// Rows read back from a school database, and the parameters of a stored query.

#include <QString>
#include <QVariant>
#include <QVariantMap>
#include <utility>
#include <vector>

namespace testing_support {

// A stored query's parameters by name, in the order they are set.
using Params = std::vector<std::pair<QString, QVariant>>;

// One row read back; its columns are named in any letter case, as the engine
// names them. Asking for a column the row hasn't got fails the test.
class Row {
public:
    void insert(const QString& column, const QVariant& value);
    QVariant operator[](const QString& column) const;

private:
    QVariantMap by_lower_case_;
};
using Rows = std::vector<Row>;

}  // namespace testing_support
