#pragma once
// The values formulas work on: null, yes/no, numbers, text and dates, with
// the comparisons and the truth the selections rely on. Text compares without
// regard to letter case, as the database's text columns do, so that a
// selection gives the same rows whether SQL or the evaluator applies it.

#include <QDateTime>
#include <QString>
#include <QVariant>
#include <optional>

namespace reportengine {

class Value {
public:
    enum class Kind { Null, Boolean, Number, Text, Date };

    Value() = default;
    static Value boolean(bool b);
    static Value number(double n);
    static Value text(QString t);
    static Value date(const QDateTime& d);
    // A value read from the database: null, bool, whole or real numbers,
    // money, dates, or text (text in the stored date form is a date).
    static Value from_variant(const QVariant& v);

    Kind kind() const { return kind_; }
    bool is_null() const { return kind_ == Kind::Null; }
    bool as_boolean() const { return boolean_; }
    double as_number() const { return number_; }
    const QString& as_text() const { return text_; }
    const QDateTime& as_date() const { return date_; }

    // The text of a value as ToText gives it with no format.
    QString to_display_text() const;

private:
    Kind kind_ = Kind::Null;
    bool boolean_ = false;
    double number_ = 0;
    QString text_;
    QDateTime date_;
};

// -1, 0 or 1; nothing when either side is null or the kinds can't be compared
// (type_clash is then set for kinds that differ).
std::optional<int> compare(const Value& a, const Value& b, bool& type_clash);

const char* kind_name(Value::Kind kind);

}  // namespace reportengine
