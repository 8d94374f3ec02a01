#include "reportengine/formula_functions.h"

#include "engine/jet_date.h"

#include <QRegularExpression>
#include <algorithm>
#include <cmath>

namespace reportengine {

namespace {

bool arity(const QString& name, const std::vector<Value>& args, size_t wanted, QString& why)
{
    if (args.size() == wanted)
        return true;
    why = QStringLiteral("%1 takes %2 argument(s).").arg(name).arg(wanted);
    return false;
}

bool any_null(const std::vector<Value>& args)
{
    return std::any_of(args.begin(), args.end(), [](const Value& v) { return v.is_null(); });
}

bool instr(const std::vector<Value>& args, Value& out, QString& why)
{
    if (args[0].kind() != Value::Kind::Text || args[1].kind() != Value::Kind::Text) {
        why = QStringLiteral("InStr takes two texts.");
        return false;
    }
    out = Value::number(static_cast<double>(args[0].as_text().indexOf(args[1].as_text(), 0, Qt::CaseInsensitive) + 1));
    return true;
}

bool replace(const std::vector<Value>& args, Value& out, QString& why)
{
    for (const Value& a : args)
        if (a.kind() != Value::Kind::Text) {
            why = QStringLiteral("Replace takes three texts.");
            return false;
        }
    out = Value::text(args[1].as_text().isEmpty() ? args[0].as_text()
                                                   : QString(args[0].as_text()).replace(args[1].as_text(), args[2].as_text(), Qt::CaseInsensitive));
    return true;
}

// A time of day on the zero date, the form a time alone is kept in.
bool time_of(const Value& v, Value& out, QString& why)
{
    if (v.kind() == Value::Kind::Date) {
        out = Value::date(engine::make_datetime(engine::zero_date(), v.as_date().time()));
        return true;
    }
    static const QRegularExpression clock(QStringLiteral("^\\s*(\\d{1,2})\\D(\\d{2})(?:\\D(\\d{2}))?\\s*$"));
    const QRegularExpressionMatch m = v.kind() == Value::Kind::Text ? clock.match(v.as_text()) : QRegularExpressionMatch();
    const QTime t = m.hasMatch() ? QTime(m.captured(1).toInt(), m.captured(2).toInt(), m.captured(3).toInt()) : QTime();
    if (!t.isValid()) {
        why = QStringLiteral("Time takes a time of day such as \"09:30\", not %1.").arg(v.to_display_text());
        return false;
    }
    out = Value::date(engine::make_datetime(engine::zero_date(), t));
    return true;
}

// How many seconds, days or months one step of an interval is.
struct Step {
    enum class Unit { Seconds, Days, Months } unit;
    qint64 size;
};

bool step_of(const Value& v, Step& step, QString& why)
{
    const QString word = v.kind() == Value::Kind::Text ? v.as_text().toLower() : QString();
    if (word == QLatin1String("n"))
        step = {Step::Unit::Seconds, 60};
    else if (word == QLatin1String("h"))
        step = {Step::Unit::Seconds, 3600};
    else if (word == QLatin1String("d"))
        step = {Step::Unit::Days, 1};
    else if (word == QLatin1String("ww"))
        step = {Step::Unit::Days, 7};
    else if (word == QLatin1String("m"))
        step = {Step::Unit::Months, 1};
    else if (word == QLatin1String("yyyy"))
        step = {Step::Unit::Months, 12};
    else {
        why = QStringLiteral("The interval must be \"n\", \"h\", \"d\", \"ww\", \"m\" or \"yyyy\", not %1.").arg(v.to_display_text());
        return false;
    }
    return true;
}

bool date_add(const std::vector<Value>& args, Value& out, QString& why)
{
    Step step;
    if (!step_of(args[0], step, why))
        return false;
    if (args[1].kind() != Value::Kind::Number || args[2].kind() != Value::Kind::Date) {
        why = QStringLiteral("DateAdd takes an interval, a number and a date.");
        return false;
    }
    const qint64 n = std::llround(args[1].as_number()) * step.size;
    const QDateTime& d = args[2].as_date();
    out = Value::date(step.unit == Step::Unit::Seconds ? d.addSecs(n) : step.unit == Step::Unit::Days ? d.addDays(n) : d.addMonths(static_cast<int>(n)));
    return true;
}

bool date_diff(const std::vector<Value>& args, Value& out, QString& why)
{
    Step step;
    if (!step_of(args[0], step, why))
        return false;
    if (args[1].kind() != Value::Kind::Date || args[2].kind() != Value::Kind::Date) {
        why = QStringLiteral("DateDiff takes an interval and two dates.");
        return false;
    }
    const QDateTime& a = args[1].as_date();
    const QDateTime& b = args[2].as_date();
    qint64 steps = 0;
    if (step.unit == Step::Unit::Seconds)
        steps = a.secsTo(b) / step.size;
    else if (step.unit == Step::Unit::Days)
        steps = a.date().daysTo(b.date()) / step.size;
    else
        steps = ((b.date().year() - a.date().year()) * 12 + b.date().month() - a.date().month()) / step.size;
    out = Value::number(static_cast<double>(steps));
    return true;
}

}  // namespace

bool is_text_or_time_function(const QString& name)
{
    return name == QLatin1String("instr") || name == QLatin1String("replace") || name == QLatin1String("time")
           || name == QLatin1String("dateadd") || name == QLatin1String("datediff");
}

bool text_or_time_function(const QString& name, const std::vector<Value>& args, Value& out, QString& why)
{
    const size_t wanted = name == QLatin1String("instr") ? 2 : name == QLatin1String("time") ? 1 : 3;
    if (!arity(name, args, wanted, why))
        return false;
    if (any_null(args)) {
        out = Value();
        return true;
    }
    if (name == QLatin1String("instr"))
        return instr(args, out, why);
    if (name == QLatin1String("replace"))
        return replace(args, out, why);
    if (name == QLatin1String("time"))
        return time_of(args[0], out, why);
    return name == QLatin1String("dateadd") ? date_add(args, out, why) : date_diff(args, out, why);
}

}  // namespace reportengine
