// FindFirst criteria: read against a fixed set of fields, then tried on a few
// rows that hold every way a value can arrive, Null included.

#include "engine/criteria.h"
#include "engine/currency.h"
#include "engine/err.h"
#include "fuzz_check.h"

#include <QDateTime>

namespace {

using engine::FieldType;

const QList<engine::CriteriaField>& fields()
{
    static const QList<engine::CriteriaField> list = {
        {QStringLiteral("Family_Name"), FieldType::Text}, {QStringLiteral("Term_id"), FieldType::Long},
        {QStringLiteral("day_off"), FieldType::Date},     {QStringLiteral("Price"), FieldType::Currency},
        {QStringLiteral("Cancelled"), FieldType::Boolean},
    };
    return list;
}

const QList<QVector<QVariant>>& rows()
{
    static const QList<QVector<QVariant>> list = {
        // As the database gives them: dates as stored text, yes/no as 0 and 1.
        {QStringLiteral("Smith"), qlonglong(5), QStringLiteral("2026-01-05 00:00:00"),
         QVariant::fromValue(engine::Currency::from_units(125000)), qlonglong(1)},
        // As a program sets them, with text where numbers are expected.
        {QStringLiteral("Ølund-Ärmel *?#["), QStringLiteral(" 12 "),
         QDateTime(QDate(1899, 12, 30), QTime(13, 45), Qt::UTC),
         QVariant::fromValue(engine::Currency::from_units(-1)), false},
        // Null everywhere, and a row that ends early.
        {QVariant(), QVariant(), QVariant(), QVariant(), QVariant()},
        {QString()},
    };
    return list;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString text = fuzz_text(data, size);
    engine::Err().Clear();
    engine::Criteria criteria;
    const bool parsed = criteria.parse(text, fields());
    FUZZ_CHECK(parsed == criteria.is_parsed(), "parse tells whether the criteria are parsed");
    if (!parsed) {
        const int number = engine::Err().Number;
        FUZZ_CHECK(number == 3077 || number == 3070 || number == 3464, "a failed parse raises one of its errors");
        for (const QVector<QVariant>& row : rows())
            FUZZ_CHECK(!criteria.matches(row), "unparsed criteria match nothing");
        return 0;
    }
    FUZZ_CHECK(engine::Err().Number == 0, "a parse that succeeds raises nothing");
    for (const QVector<QVariant>& row : rows())
        (void)criteria.matches(row);
    return 0;
}
