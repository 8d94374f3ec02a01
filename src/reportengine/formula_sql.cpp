#include "reportengine/formula_sql.h"

#include "engine/jet_date.h"
#include "reportengine/formula_node.h"

namespace reportengine {

namespace {

using K = Value::Kind;

struct Sql {
    QString text;
    K kind;
};

QString quoted_text(const QString& text)
{
    return QLatin1Char('\'') + QString(text).replace(QLatin1Char('\''), QLatin1String("''")) + QLatin1Char('\'');
}

class Translator {
public:
    explicit Translator(const SqlFieldLookup& fields) : fields_(fields) {}

    std::optional<Sql> sql(const FormulaNode& n)
    {
        switch (n.kind) {
        case NodeKind::Literal: return literal(n.value);
        case NodeKind::Field: {
            const auto field = fields_(n.field);
            if (!field || field->kind == K::Null)
                return std::nullopt;
            return Sql{field->expression, field->kind};
        }
        case NodeKind::Not: {
            const auto inner = condition(*n.operands[0]);
            if (!inner)
                return std::nullopt;
            return Sql{QStringLiteral("(NOT ") + *inner + QLatin1Char(')'), K::Boolean};
        }
        case NodeKind::Negate: {
            const auto inner = sql(*n.operands[0]);
            if (!inner || inner->kind != K::Number)
                return std::nullopt;
            return Sql{QStringLiteral("(-") + inner->text + QLatin1Char(')'), K::Number};
        }
        case NodeKind::Chain: return chain(n);
        case NodeKind::Compare: return comparison(n);
        case NodeKind::In: return in_list(n);
        case NodeKind::Call: return call(n);
        case NodeKind::FormulaRef:
        case NodeKind::If:
            return std::nullopt;
        }
        return std::nullopt;
    }

    // A yes/no: a condition, or a yes/no column, which the database keeps as 0 and 1.
    std::optional<QString> condition(const FormulaNode& n)
    {
        const auto s = sql(n);
        if (!s || s->kind != K::Boolean)
            return std::nullopt;
        if (n.kind == NodeKind::Field)
            return QLatin1Char('(') + s->text + QStringLiteral(" <> 0)");
        return s->text;
    }

private:
    static std::optional<Sql> literal(const Value& v)
    {
        switch (v.kind()) {
        case K::Null: return Sql{QStringLiteral("NULL"), K::Null};
        case K::Boolean: return Sql{v.as_boolean() ? QStringLiteral("1") : QStringLiteral("0"), K::Boolean};
        case K::Number: return Sql{QString::number(v.as_number(), 'g', 17), K::Number};
        case K::Text: return Sql{quoted_text(v.as_text()), K::Text};
        case K::Date: return Sql{quoted_text(engine::date_to_storage(v.as_date())), K::Date};
        }
        return std::nullopt;
    }

    std::optional<Sql> chain(const FormulaNode& n)
    {
        const Op op = n.ops.front();
        if (op == Op::Or || op == Op::And) {
            QStringList parts;
            for (const auto& operand : n.operands) {
                const auto part = condition(*operand);
                if (!part)
                    return std::nullopt;
                parts << *part;
            }
            return Sql{QLatin1Char('(') + parts.join(op == Op::Or ? QLatin1String(" OR ") : QLatin1String(" AND ")) + QLatin1Char(')'),
                       K::Boolean};
        }
        // Text joined with text, or numbers added and multiplied; a division
        // only by a number written in the formula, which can't be zero.
        auto first = sql(*n.operands[0]);
        if (!first)
            return std::nullopt;
        const K kind = op == Op::Concat ? K::Text : K::Number;
        if (first->kind != kind)
            return std::nullopt;
        QString text = op == Op::Concat ? QStringLiteral("coalesce(%1, '')").arg(first->text) : first->text;
        for (size_t i = 1; i < n.operands.size(); ++i) {
            const auto next = sql(*n.operands[i]);
            const Op o = n.ops[i - 1];
            if (!next || next->kind != kind)
                return std::nullopt;
            if (o == Op::Divide && !(n.operands[i]->kind == NodeKind::Literal && n.operands[i]->value.as_number() != 0))
                return std::nullopt;
            if (o == Op::Concat)
                text += QStringLiteral(" || coalesce(%1, '')").arg(next->text);
            else if (o == Op::Divide)
                text += QStringLiteral(" * 1.0 / ") + next->text;  // never SQLite's whole-number division
            else
                text += QLatin1Char(' ') + QLatin1String(o == Op::Add ? "+" : o == Op::Subtract ? "-" : "*") + QLatin1Char(' ') + next->text;
        }
        return Sql{QLatin1Char('(') + text + QLatin1Char(')'), kind};
    }

    // Both sides of one kind, so that the database compares as the evaluator does.
    std::optional<Sql> comparison(const FormulaNode& n)
    {
        const auto a = sql(*n.operands[0]);
        const auto b = sql(*n.operands[1]);
        if (!a || !b || a->kind != b->kind || a->kind == K::Null)
            return std::nullopt;
        static const char* symbols[] = {"", "", "", "", "", "", "", "=", "<>", "<", ">", "<=", ">="};
        const QString collate = a->kind == K::Text ? QStringLiteral(" COLLATE NOCASE") : QString();
        return Sql{QStringLiteral("(%1 %2 %3%4)").arg(a->text, QLatin1String(symbols[static_cast<int>(n.ops.front())]), b->text, collate),
                   K::Boolean};
    }

    std::optional<Sql> in_list(const FormulaNode& n)
    {
        const auto subject = sql(*n.operands[0]);
        if (!subject || subject->kind == K::Null)
            return std::nullopt;
        QStringList items;
        for (size_t i = 1; i < n.operands.size(); ++i) {
            const auto item = sql(*n.operands[i]);
            if (!item || (item->kind != subject->kind && item->kind != K::Null))
                return std::nullopt;
            items << item->text;
        }
        const QString collate = subject->kind == K::Text ? QStringLiteral(" COLLATE NOCASE") : QString();
        return Sql{QStringLiteral("((%1%2) IN (%3))").arg(subject->text, collate, items.join(QStringLiteral(", "))), K::Boolean};
    }

    std::optional<Sql> call(const FormulaNode& n)
    {
        if (n.name == QLatin1String("isnull") && n.operands.size() == 1) {
            const auto inner = sql(*n.operands[0]);
            if (!inner)
                return std::nullopt;
            return Sql{QStringLiteral("(%1 IS NULL)").arg(inner->text), K::Boolean};
        }
        if ((n.name == QLatin1String("year") || n.name == QLatin1String("month") || n.name == QLatin1String("day"))
            && n.operands.size() == 1) {
            const auto inner = sql(*n.operands[0]);
            if (!inner || inner->kind != K::Date)
                return std::nullopt;
            const char* part = n.name == QLatin1String("year") ? "%Y" : n.name == QLatin1String("month") ? "%m" : "%d";
            return Sql{QStringLiteral("CAST(strftime('%1', %2) AS INTEGER)").arg(QLatin1String(part), inner->text), K::Number};
        }
        if (n.name == QLatin1String("date") && n.operands.size() == 3) {
            for (const auto& operand : n.operands)
                if (operand->kind != NodeKind::Literal || operand->value.kind() != K::Number)
                    return std::nullopt;
            const QDate day(static_cast<int>(n.operands[0]->value.as_number()), static_cast<int>(n.operands[1]->value.as_number()),
                            static_cast<int>(n.operands[2]->value.as_number()));
            if (!day.isValid())
                return std::nullopt;
            return literal(Value::date(engine::make_datetime(day)));
        }
        return std::nullopt;
    }

    const SqlFieldLookup& fields_;
};

}  // namespace

std::optional<QString> selection_to_sql(const Formula& selection, const SqlFieldLookup& fields)
{
    if (selection.is_empty())
        return QStringLiteral("1");
    return Translator(fields).condition(*selection.root());
}

}  // namespace reportengine
