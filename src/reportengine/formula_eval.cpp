// Evaluating a formula's tree against a row. Null follows SQL's rules, so
// that a selection gives the same rows here as in the database: a comparison
// with null is null, "and" and "or" are three-valued, and a selection takes
// only the rows for which it is yes.

#include "engine/jet_date.h"
#include "reportengine/formula_functions.h"
#include "reportengine/formula_node.h"

#include <cmath>

namespace reportengine {

std::optional<Value> FormulaContext::formula(const QString&) const
{
    return std::nullopt;
}

std::optional<Value> FormulaContext::summary(const QString&, const SummaryOf&, const QString&) const
{
    return std::nullopt;
}

std::optional<Value> FormulaContext::neighbour(const FieldName&, int) const
{
    return std::nullopt;
}

QString SummaryOf::written() const
{
    return field ? field->written() : QStringLiteral("{@") + formula + QLatin1Char('}');
}

QDateTime FormulaContext::print_date() const
{
    return engine::make_datetime(QDate::currentDate());
}

namespace {

class Evaluator {
public:
    Evaluator(const FormulaContext& context, QString& error) : context_(context), error_(error) {}

    bool eval(const FormulaNode& n, Value& out)
    {
        switch (n.kind) {
        case NodeKind::Literal: out = n.value; return true;
        case NodeKind::Field: return field(n, out);
        case NodeKind::FormulaRef: return formula(n, out);
        case NodeKind::Not: return negation(n, out);
        case NodeKind::Negate: return negate(n, out);
        case NodeKind::Chain: return chain(n, out);
        case NodeKind::Compare: return comparison(n, out);
        case NodeKind::In: return in_list(n, out);
        case NodeKind::If: return conditional(n, out);
        case NodeKind::Call: return call(n, out);
        }
        return fail(n, QStringLiteral("cannot be evaluated"));
    }

private:
    bool fail(const FormulaNode& n, const QString& what)
    {
        error_ = QStringLiteral("At position %1: %2").arg(n.position).arg(what);
        return false;
    }
    bool wrong_kind(const FormulaNode& n, const Value& v, const char* wanted)
    {
        return fail(n, QStringLiteral("%1 is needed here, not %2.").arg(QLatin1String(wanted), QLatin1String(kind_name(v.kind()))));
    }

    bool field(const FormulaNode& n, Value& out)
    {
        const auto value = context_.field(n.field);
        if (!value)
            return fail(n, QStringLiteral("the report has no field %1.").arg(n.field.written()));
        out = *value;
        return true;
    }

    bool formula(const FormulaNode& n, Value& out)
    {
        const auto value = context_.formula(n.name);
        if (!value)
            return fail(n, QStringLiteral("the report has no formula {@%1}.").arg(n.name));
        out = *value;
        return true;
    }

    // Yes, no or null; anything else is not a condition.
    bool condition(const FormulaNode& n, std::optional<bool>& truth)
    {
        Value v;
        if (!eval(n, v))
            return false;
        if (v.is_null()) {
            truth.reset();
            return true;
        }
        if (v.kind() != Value::Kind::Boolean)
            return wrong_kind(n, v, "A condition (yes or no)");
        truth = v.as_boolean();
        return true;
    }

    static Value truth_value(const std::optional<bool>& truth) { return truth ? Value::boolean(*truth) : Value(); }

    bool negation(const FormulaNode& n, Value& out)
    {
        std::optional<bool> truth;
        if (!condition(*n.operands[0], truth))
            return false;
        out = truth ? Value::boolean(!*truth) : Value();
        return true;
    }

    bool negate(const FormulaNode& n, Value& out)
    {
        Value v;
        if (!eval(*n.operands[0], v))
            return false;
        if (v.is_null()) {
            out = v;
            return true;
        }
        if (v.kind() != Value::Kind::Number)
            return wrong_kind(n, v, "A number");
        out = Value::number(-v.as_number());
        return true;
    }

    bool chain(const FormulaNode& n, Value& out)
    {
        const Op op = n.ops.front();
        if (op == Op::Or || op == Op::And)
            return logical(n, op == Op::Or, out);
        if (!eval(*n.operands[0], out))
            return false;
        for (size_t i = 1; i < n.operands.size(); ++i) {
            Value right;
            if (!eval(*n.operands[i], right) || !apply(*n.operands[i], n.ops[i - 1], out, right, out))
                return false;
        }
        return true;
    }

    // "or" is yes when any side is, "and" no when any side is; otherwise a
    // null on either side makes it null.
    bool logical(const FormulaNode& n, bool is_or, Value& out)
    {
        bool unknown = false;
        for (const auto& operand : n.operands) {
            std::optional<bool> truth;
            if (!condition(*operand, truth))
                return false;
            if (!truth)
                unknown = true;
            else if (*truth == is_or) {
                out = Value::boolean(is_or);
                return true;
            }
        }
        out = unknown ? Value() : Value::boolean(!is_or);
        return true;
    }

    bool apply(const FormulaNode& at, Op op, const Value& a, const Value& b, Value& out)
    {
        if (op == Op::Concat) {
            out = Value::text(a.to_display_text() + b.to_display_text());
            return true;
        }
        if (a.is_null() || b.is_null()) {
            out = Value();
            return true;
        }
        using K = Value::Kind;
        if (a.kind() == K::Number && b.kind() == K::Number)
            return arithmetic(at, op, a.as_number(), b.as_number(), out);
        if (op == Op::Add && a.kind() == K::Text && b.kind() == K::Text) {
            out = Value::text(a.as_text() + b.as_text());
            return true;
        }
        if (a.kind() == K::Date && b.kind() == K::Number && (op == Op::Add || op == Op::Subtract)) {
            const qint64 days = std::llround(b.as_number());
            out = Value::date(a.as_date().addDays(op == Op::Add ? days : -days));
            return true;
        }
        if (a.kind() == K::Date && b.kind() == K::Date && op == Op::Subtract) {
            out = Value::number(static_cast<double>(b.as_date().daysTo(a.as_date())));
            return true;
        }
        return fail(at, QStringLiteral("%1 and %2 cannot be worked together so.")
                            .arg(QLatin1String(kind_name(a.kind())), QLatin1String(kind_name(b.kind()))));
    }

    bool arithmetic(const FormulaNode& at, Op op, double a, double b, Value& out)
    {
        switch (op) {
        case Op::Add: out = Value::number(a + b); return true;
        case Op::Subtract: out = Value::number(a - b); return true;
        case Op::Multiply: out = Value::number(a * b); return true;
        case Op::Divide:
            if (b == 0)
                return fail(at, QStringLiteral("division by zero."));
            out = Value::number(a / b);
            return true;
        default: return fail(at, QStringLiteral("cannot be evaluated"));
        }
    }

    bool comparison(const FormulaNode& n, Value& out)
    {
        Value a;
        Value b;
        if (!eval(*n.operands[0], a) || !eval(*n.operands[1], b))
            return false;
        bool clash = false;
        const std::optional<int> order = compare(a, b, clash);
        if (clash)
            return fail(n, QStringLiteral("%1 cannot be compared with %2.")
                               .arg(QLatin1String(kind_name(a.kind())), QLatin1String(kind_name(b.kind()))));
        if (!order) {
            out = Value();
            return true;
        }
        const int c = *order;
        bool result = false;
        switch (n.ops.front()) {
        case Op::Equal: result = c == 0; break;
        case Op::NotEqual: result = c != 0; break;
        case Op::Less: result = c < 0; break;
        case Op::Greater: result = c > 0; break;
        case Op::LessEqual: result = c <= 0; break;
        case Op::GreaterEqual: result = c >= 0; break;
        default: break;
        }
        out = Value::boolean(result);
        return true;
    }

    // As SQL's IN: yes on a match, null when there is none but a null in the list.
    bool in_list(const FormulaNode& n, Value& out)
    {
        Value subject;
        if (!eval(*n.operands[0], subject))
            return false;
        bool saw_null = subject.is_null();
        for (size_t i = 1; i < n.operands.size() && !subject.is_null(); ++i) {
            Value item;
            if (!eval(*n.operands[i], item))
                return false;
            bool clash = false;
            const std::optional<int> order = compare(subject, item, clash);
            if (clash)
                return fail(*n.operands[i], QStringLiteral("%1 cannot be compared with %2.")
                                                .arg(QLatin1String(kind_name(subject.kind())), QLatin1String(kind_name(item.kind()))));
            if (!order)
                saw_null = true;
            else if (*order == 0) {
                out = Value::boolean(true);
                return true;
            }
        }
        out = saw_null ? Value() : Value::boolean(false);
        return true;
    }

    bool conditional(const FormulaNode& n, Value& out)
    {
        std::optional<bool> truth;
        if (!condition(*n.operands[0], truth))
            return false;
        return eval(*n.operands[truth.value_or(false) ? 1 : 2], out);
    }

    bool arguments(const FormulaNode& n, size_t low, size_t high, std::vector<Value>& values)
    {
        if (n.operands.size() < low || n.operands.size() > high)
            return fail(n, low == high ? QStringLiteral("%1 takes %2 argument(s).").arg(n.name).arg(low)
                                       : QStringLiteral("%1 takes %2 to %3 arguments.").arg(n.name).arg(low).arg(high));
        values.resize(n.operands.size());
        for (size_t i = 0; i < n.operands.size(); ++i)
            if (!eval(*n.operands[i], values[i]))
                return false;
        return true;
    }

    bool call(const FormulaNode& n, Value& out);
    bool summary(const FormulaNode& n, Value& out);
    bool neighbour(const FormulaNode& n, Value& out);
    bool to_text(const FormulaNode& n, const std::vector<Value>& args, Value& out);

    const FormulaContext& context_;
    QString& error_;
};

// The operand of a summary or of its group: a field or a formula, written as the report writes it.
std::optional<SummaryOf> summary_operand(const FormulaNode& n)
{
    if (n.kind == NodeKind::Field)
        return SummaryOf{n.field, QString()};
    if (n.kind == NodeKind::FormulaRef)
        return SummaryOf{std::nullopt, n.name};
    return std::nullopt;
}

bool Evaluator::summary(const FormulaNode& n, Value& out)
{
    const auto of = n.operands.empty() ? std::optional<SummaryOf>() : summary_operand(*n.operands[0]);
    const auto group = n.operands.size() == 2 ? summary_operand(*n.operands[1]) : std::optional<SummaryOf>();
    if (!of || n.operands.size() > 2 || (n.operands.size() == 2 && !group))
        return fail(n, QStringLiteral("%1 takes a field or formula, and the field of a group.").arg(n.name));
    const auto value = context_.summary(n.name, *of, group ? group->written() : QString());
    if (!value)
        return fail(n, QStringLiteral("%1 of %2 cannot be worked out here.").arg(n.name, of->written()));
    out = *value;
    return true;
}

bool Evaluator::neighbour(const FormulaNode& n, Value& out)
{
    if (n.operands.size() != 1 || n.operands[0]->kind != NodeKind::Field)
        return fail(n, QStringLiteral("%1 takes a field.").arg(n.name));
    const auto value = context_.neighbour(n.operands[0]->field, n.name == QLatin1String("previous") ? -1 : 1);
    if (!value)
        return fail(n, QStringLiteral("the report has no field %1.").arg(n.operands[0]->field.written()));
    out = *value;
    return true;
}

bool Evaluator::to_text(const FormulaNode& n, const std::vector<Value>& args, Value& out)
{
    const Value& v = args[0];
    if (v.is_null()) {
        out = Value::text(QString());
        return true;
    }
    if (args.size() == 1) {
        out = Value::text(v.to_display_text());
        return true;
    }
    const Value& format = args[1];
    if (v.kind() == Value::Kind::Number && format.kind() == Value::Kind::Number) {
        out = Value::text(QString::number(v.as_number(), 'f', std::clamp(static_cast<int>(format.as_number()), 0, 10)));
        return true;
    }
    if (v.kind() == Value::Kind::Date && format.kind() == Value::Kind::Text) {
        out = Value::text(v.as_date().toString(format.as_text()));
        return true;
    }
    return fail(n, QStringLiteral("ToText takes a number and its decimals, or a date and its picture."));
}

bool Evaluator::call(const FormulaNode& n, Value& out)
{
    const QString& f = n.name;
    static const QStringList summaries = {QStringLiteral("sum"), QStringLiteral("count"), QStringLiteral("average"),
                                          QStringLiteral("maximum"), QStringLiteral("minimum"), QStringLiteral("runningsum")};
    if (summaries.contains(f))
        return summary(n, out);
    if (f == QLatin1String("previous") || f == QLatin1String("next"))
        return neighbour(n, out);
    std::vector<Value> args;
    if (is_text_or_time_function(f)) {
        QString why;
        if (arguments(n, 1, 3, args) && text_or_time_function(f, args, out, why))
            return true;
        return why.isEmpty() ? false : fail(n, why);
    }
    if (f == QLatin1String("pagenumber") || f == QLatin1String("totalpagecount") || f == QLatin1String("printdate")
        || f == QLatin1String("currentdate")) {
        if (!arguments(n, 0, 0, args))
            return false;
        if (f == QLatin1String("pagenumber"))
            out = Value::number(context_.page_number());
        else if (f == QLatin1String("totalpagecount"))
            out = Value::number(context_.total_page_count());
        else
            out = Value::date(engine::make_datetime(context_.print_date().date()));
        return true;
    }
    if (f == QLatin1String("date")) {
        if (!arguments(n, 3, 3, args))
            return false;
        for (const Value& a : args)
            if (a.kind() != Value::Kind::Number)
                return wrong_kind(n, a, "A number");
        const QDate day(static_cast<int>(args[0].as_number()), static_cast<int>(args[1].as_number()),
                        static_cast<int>(args[2].as_number()));
        if (!day.isValid())
            return fail(n, QStringLiteral("Date(%1,%2,%3) is no day of the calendar.")
                               .arg(args[0].as_number())
                               .arg(args[1].as_number())
                               .arg(args[2].as_number()));
        out = Value::date(engine::make_datetime(day));
        return true;
    }
    if (f == QLatin1String("isnull")) {
        if (!arguments(n, 1, 1, args))
            return false;
        out = Value::boolean(args[0].is_null());
        return true;
    }
    if (f == QLatin1String("totext")) {
        return arguments(n, 1, 2, args) && to_text(n, args, out);
    }
    if (f == QLatin1String("year") || f == QLatin1String("month") || f == QLatin1String("day")) {
        if (!arguments(n, 1, 1, args))
            return false;
        if (args[0].is_null()) {
            out = Value();
            return true;
        }
        if (args[0].kind() != Value::Kind::Date)
            return wrong_kind(n, args[0], "A date");
        const QDate d = args[0].as_date().date();
        out = Value::number(f == QLatin1String("year") ? d.year() : f == QLatin1String("month") ? d.month() : d.day());
        return true;
    }
    if (f == QLatin1String("trim") || f == QLatin1String("uppercase") || f == QLatin1String("lowercase")
        || f == QLatin1String("length")) {
        if (!arguments(n, 1, 1, args))
            return false;
        if (args[0].is_null()) {
            out = Value();
            return true;
        }
        if (args[0].kind() != Value::Kind::Text)
            return wrong_kind(n, args[0], "Text");
        const QString& t = args[0].as_text();
        if (f == QLatin1String("length"))
            out = Value::number(static_cast<double>(t.size()));
        else
            out = Value::text(f == QLatin1String("trim") ? t.trimmed() : f == QLatin1String("uppercase") ? t.toUpper() : t.toLower());
        return true;
    }
    if (f == QLatin1String("round")) {
        if (!arguments(n, 1, 2, args))
            return false;
        if (args[0].is_null()) {
            out = Value();
            return true;
        }
        if (args[0].kind() != Value::Kind::Number || (args.size() == 2 && args[1].kind() != Value::Kind::Number))
            return wrong_kind(n, args[0], "A number");
        const double scale = std::pow(10.0, args.size() == 2 ? args[1].as_number() : 0.0);
        out = Value::number(std::round(args[0].as_number() * scale) / scale);
        return true;
    }
    return fail(n, QStringLiteral("there is no function '%1'.").arg(f));
}

}  // namespace

bool Formula::evaluate(const FormulaContext& context, Value& result, QString& error) const
{
    error.clear();
    result = Value();
    if (!root_)
        return true;
    return Evaluator(context, error).eval(*root_, result);
}

bool Formula::selects(const FormulaContext& context, bool& selected, QString& error) const
{
    selected = true;
    if (!root_)
        return true;
    Value result;
    if (!evaluate(context, result, error))
        return false;
    if (!result.is_null() && result.kind() != Value::Kind::Boolean) {
        error = QStringLiteral("A selection must be a condition (yes or no), not %1.").arg(QLatin1String(kind_name(result.kind())));
        return false;
    }
    selected = !result.is_null() && result.as_boolean();
    return true;
}

}  // namespace reportengine
