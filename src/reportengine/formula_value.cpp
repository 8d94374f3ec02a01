#include "reportengine/formula_value.h"

#include "engine/currency.h"
#include "engine/jet_date.h"

namespace reportengine {

Value Value::boolean(bool b)
{
    Value v;
    v.kind_ = Kind::Boolean;
    v.boolean_ = b;
    return v;
}

Value Value::number(double n)
{
    Value v;
    v.kind_ = Kind::Number;
    v.number_ = n;
    return v;
}

Value Value::text(QString t)
{
    Value v;
    v.kind_ = Kind::Text;
    v.text_ = std::move(t);
    return v;
}

Value Value::date(const QDateTime& d)
{
    Value v;
    v.kind_ = Kind::Date;
    v.date_ = d;
    return v;
}

Value Value::from_variant(const QVariant& v)
{
    if (!v.isValid() || v.isNull())
        return {};
    if (v.userType() == qMetaTypeId<engine::Currency>())
        return number(v.value<engine::Currency>().to_double());
    switch (v.typeId()) {
    case QMetaType::Bool:
        return boolean(v.toBool());
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::Float:
        return number(v.toDouble());
    case QMetaType::QDate:
        return date(engine::make_datetime(v.toDate()));
    case QMetaType::QDateTime:
        return date(v.toDateTime());
    default:
        break;
    }
    const QString t = v.toString();
    if (auto stored = engine::storage_to_date(t))
        return date(*stored);
    return text(t);
}

QString Value::to_display_text() const
{
    switch (kind_) {
    case Kind::Null: return QString();
    case Kind::Boolean: return boolean_ ? QStringLiteral("True") : QStringLiteral("False");
    case Kind::Number: return QString::number(number_, 'f', 2);
    case Kind::Text: return text_;
    case Kind::Date:
        return date_.time() == QTime(0, 0) ? date_.toString(QStringLiteral("dd/MM/yyyy"))
                                           : date_.toString(QStringLiteral("dd/MM/yyyy HH:mm:ss"));
    }
    return QString();
}

std::optional<int> compare(const Value& a, const Value& b, bool& type_clash)
{
    type_clash = false;
    if (a.is_null() || b.is_null())
        return std::nullopt;
    if (a.kind() != b.kind()) {
        type_clash = true;
        return std::nullopt;
    }
    const auto order = [](auto x, auto y) { return x < y ? -1 : (y < x ? 1 : 0); };
    switch (a.kind()) {
    case Value::Kind::Boolean: return order(a.as_boolean(), b.as_boolean());
    case Value::Kind::Number: return order(a.as_number(), b.as_number());
    case Value::Kind::Date: return order(a.as_date(), b.as_date());
    case Value::Kind::Text: {
        const int c = QString::compare(a.as_text(), b.as_text(), Qt::CaseInsensitive);
        return c < 0 ? -1 : (c > 0 ? 1 : 0);
    }
    case Value::Kind::Null: break;
    }
    return std::nullopt;
}

const char* kind_name(Value::Kind kind)
{
    switch (kind) {
    case Value::Kind::Null: return "null";
    case Value::Kind::Boolean: return "a yes/no value";
    case Value::Kind::Number: return "a number";
    case Value::Kind::Text: return "text";
    case Value::Kind::Date: return "a date";
    }
    return "";
}

}  // namespace reportengine
