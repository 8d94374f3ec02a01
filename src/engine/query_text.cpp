#include "engine/database_core.h"

#include "engine/err.h"

#include <QRegularExpression>

namespace engine::query_text {

namespace {

bool is_identifier_start(QChar c) { return c.isLetter() || c == QLatin1Char('_'); }
bool is_identifier_char(QChar c) { return c.isLetterOrNumber() || c == QLatin1Char('_'); }

// Walks the text, calling `on_identifier(start, length, name, bracketed)` for
// each identifier outside strings and comments.
template <typename F>
void for_each_identifier(const QString& text, F on_identifier)
{
    const qsizetype n = text.size();
    qsizetype i = 0;
    while (i < n) {
        const QChar c = text[i];
        if (c == QLatin1Char('\'') || c == QLatin1Char('"')) {
            const QChar quote = c;
            ++i;
            while (i < n) {
                if (text[i] == quote) {
                    if (i + 1 < n && text[i + 1] == quote) {
                        i += 2;
                        continue;
                    }
                    break;
                }
                ++i;
            }
            ++i;
        } else if (c == QLatin1Char('-') && i + 1 < n && text[i + 1] == QLatin1Char('-')) {
            while (i < n && text[i] != QLatin1Char('\n'))
                ++i;
        } else if (c == QLatin1Char('[')) {
            const qsizetype close = text.indexOf(QLatin1Char(']'), i);
            const qsizetype end = close < 0 ? n : close + 1;
            on_identifier(i, end - i, text.mid(i + 1, end - i - 2), true);
            i = end;
        } else if (c == QLatin1Char(':') || c == QLatin1Char('@') || c == QLatin1Char('$')) {
            // Already a bound parameter.
            ++i;
            while (i < n && is_identifier_char(text[i]))
                ++i;
        } else if (is_identifier_start(c)) {
            const qsizetype start = i;
            while (i < n && is_identifier_char(text[i]))
                ++i;
            // A name after a dot is a column of a table, never a parameter or query.
            const bool qualified = start > 0 && text[start - 1] == QLatin1Char('.');
            if (!qualified)
                on_identifier(start, i - start, text.mid(start, i - start), false);
        } else if (c.isDigit()) {
            while (i < n && (text[i].isLetterOrNumber() || text[i] == QLatin1Char('.')))
                ++i;
        } else {
            ++i;
        }
    }
}

FieldType parameter_type(const QString& word)
{
    const QString w = word.trimmed().toUpper();
    if (w == QLatin1String("DATETIME"))
        return FieldType::Date;
    if (w == QLatin1String("IEEESINGLE"))
        return FieldType::Single;
    if (w == QLatin1String("IEEEDOUBLE"))
        return FieldType::Double;
    if (w == QLatin1String("LONGTEXT") || w == QLatin1String("MEMO"))
        return FieldType::Memo;
    if (w == QLatin1String("VALUE"))
        return FieldType::Unknown;
    return field_type_of_declared(w);
}

}  // namespace

bool split_parameters(const QString& sql, QVector<QueryParameter>& parameters, QString& body)
{
    parameters.clear();
    static const QRegularExpression head(QStringLiteral(R"(^\s*PARAMETERS\s+)"), QRegularExpression::CaseInsensitiveOption);
    const auto match = head.match(sql);
    if (!match.hasMatch()) {
        body = sql;
        return true;
    }
    const qsizetype end = sql.indexOf(QLatin1Char(';'), match.capturedEnd());
    if (end < 0) {
        raise_engine_error(jet::SyntaxError, QStringLiteral("Syntax error in PARAMETERS clause."));
        return false;
    }
    const QString clause = sql.mid(match.capturedEnd(), end - match.capturedEnd());
    static const QRegularExpression one(QStringLiteral(R"(^\s*(\[[^\]]+\]|[A-Za-z_]\w*)\s+([A-Za-z]+)(\s*\(\s*\d+\s*\))?\s*$)"));
    for (const QString& part : clause.split(QLatin1Char(','))) {
        const auto p = one.match(part);
        if (!p.hasMatch()) {
            raise_engine_error(jet::SyntaxError, QStringLiteral("Syntax error in PARAMETERS clause."));
            return false;
        }
        QString name = p.captured(1);
        if (name.startsWith(QLatin1Char('[')))
            name = name.mid(1, name.size() - 2);
        parameters.append(QueryParameter{name, parameter_type(p.captured(2)), QVariant(), false});
    }
    body = sql.mid(end + 1).trimmed();
    return true;
}

QString mark_parameters(const QString& body, const QVector<QueryParameter>& parameters)
{
    if (parameters.isEmpty())
        return body;
    QString result;
    qsizetype copied = 0;
    for_each_identifier(body, [&](qsizetype start, qsizetype length, const QString& name, bool) {
        for (const QueryParameter& p : parameters) {
            if (p.Name.compare(name, Qt::CaseInsensitive) == 0) {
                result += body.mid(copied, start - copied);
                result += QLatin1Char(':') + p.Name;
                copied = start + length;
                break;
            }
        }
    });
    result += body.mid(copied);
    return result;
}

QStringList identifiers(const QString& body)
{
    QStringList names;
    for_each_identifier(body, [&](qsizetype, qsizetype, const QString& name, bool) { names << name; });
    return names;
}

}  // namespace engine::query_text
