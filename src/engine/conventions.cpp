#include "engine/conventions.h"

#include "engine/field_type.h"
#include "engine/sqlite_connection.h"

#include <QStringList>
#include <sqlite3.h>

namespace engine {

namespace {

bool is_ascii(const char* text, int length)
{
    for (int i = 0; i < length; ++i)
        if (static_cast<unsigned char>(text[i]) >= 0x80)
            return false;
    return true;
}

int compare_nocase(void*, int length_a, const void* a, int length_b, const void* b)
{
    const char* text_a = static_cast<const char*>(a);
    const char* text_b = static_cast<const char*>(b);
    if (is_ascii(text_a, length_a) && is_ascii(text_b, length_b)) {
        const int common = std::min(length_a, length_b);
        for (int i = 0; i < common; ++i) {
            const int ca = std::tolower(static_cast<unsigned char>(text_a[i]));
            const int cb = std::tolower(static_cast<unsigned char>(text_b[i]));
            if (ca != cb)
                return ca < cb ? -1 : 1;
        }
        return length_a == length_b ? 0 : (length_a < length_b ? -1 : 1);
    }
    const QString qa = QString::fromUtf8(text_a, length_a);
    const QString qb = QString::fromUtf8(text_b, length_b);
    const int result = QString::compare(qa, qb, Qt::CaseInsensitive);
    return result < 0 ? -1 : result > 0 ? 1 : 0;
}

QString quoted(const QString& identifier)
{
    return QLatin1Char('"') + QString(identifier).replace(QLatin1Char('"'), QLatin1String("\"\"")) + QLatin1Char('"');
}

QString raise(int number, const QString& description)
{
    return QStringLiteral("RAISE(ABORT, 'jet:%1:%2')").arg(number).arg(QString(description).replace(QLatin1Char('\''), QLatin1String("''")));
}

struct Column {
    QString name;
    QString declared;
    FieldType type;
    bool is_key;
};

struct Rules {
    QStringList checks;          // "condition|raise" pairs, built as CASE arms
    QStringList normalize_when;  // conditions under which a row needs rewriting
    QStringList assignments;     // col = normalized value
};

void add_integer_range(Rules& rules, const Column& c, long long low, long long high)
{
    const QString col = QStringLiteral("NEW.") + quoted(c.name);
    rules.checks << QStringLiteral("WHEN typeof(%1) = 'text' THEN %2").arg(col, raise(3464, QStringLiteral("Data type mismatch in criteria expression.")));
    rules.checks << QStringLiteral("WHEN %1 IS NOT NULL AND jet_round(%1) NOT BETWEEN %2 AND %3 THEN %4")
                        .arg(col).arg(low).arg(high).arg(raise(3349, QStringLiteral("Numeric field overflow.")));
    rules.normalize_when << QStringLiteral("typeof(%1) = 'real'").arg(col);
    rules.assignments << QStringLiteral("%1 = jet_round(%1)").arg(quoted(c.name));
}

Rules rules_for(const QList<Column>& columns)
{
    Rules rules;
    for (const Column& c : columns) {
        const QString col = QStringLiteral("NEW.") + quoted(c.name);
        switch (c.type) {
        case FieldType::Text: {
            const int limit = text_length_of_declared(c.declared);
            rules.checks << QStringLiteral("WHEN length(%1) > %2 THEN %3")
                                .arg(col)
                                .arg(limit)
                                .arg(raise(3163, QStringLiteral("The field is too small to accept the amount of data you attempted to add. (%1)").arg(c.name)));
            break;
        }
        case FieldType::Integer:
            add_integer_range(rules, c, -32768, 32767);
            break;
        case FieldType::Byte:
            add_integer_range(rules, c, 0, 255);
            break;
        case FieldType::Long:
            if (!c.is_key)
                add_integer_range(rules, c, -2147483648LL, 2147483647LL);
            break;
        case FieldType::Currency:
            rules.checks << QStringLiteral("WHEN typeof(%1) = 'text' THEN %2").arg(col, raise(3464, QStringLiteral("Data type mismatch in criteria expression.")));
            // A half goes to even, as the platform's conversion to currency
            // rounds; SQLite's round() would take it away from zero.
            rules.normalize_when << QStringLiteral("%1 IS NOT jet_currency(%1)").arg(col);
            rules.assignments << QStringLiteral("%1 = jet_currency(%1)").arg(quoted(c.name));
            break;
        case FieldType::Single:
            // jet_single raises for text and for numbers beyond single range.
            rules.normalize_when << QStringLiteral("%1 IS NOT jet_single(%1)").arg(col);
            rules.assignments << QStringLiteral("%1 = jet_single(%1)").arg(quoted(c.name));
            break;
        case FieldType::Date:
            // jet_date raises for text that is no date.
            rules.normalize_when << QStringLiteral("%1 IS NOT jet_date(%1)").arg(col);
            rules.assignments << QStringLiteral("%1 = jet_date(%1)").arg(quoted(c.name));
            break;
        case FieldType::Boolean:
            rules.normalize_when << QStringLiteral("%1 IS NOT NULL AND %1 NOT IN (0, 1)").arg(col);
            rules.assignments << QStringLiteral("%1 = CASE WHEN %1 THEN 1 ELSE 0 END").arg(quoted(c.name));
            break;
        default:
            break;
        }
    }
    return rules;
}

bool read_columns(Connection& connection, const QString& table, QList<Column>& columns)
{
    Statement stmt;
    if (!connection.prepare(QStringLiteral("PRAGMA table_info(%1)").arg(quoted(table)), stmt))
        return false;
    while (sqlite3_step(stmt.get()) == SQLITE_ROW) {
        Column c;
        c.name = column_value(stmt.get(), 1).toString();
        c.declared = column_value(stmt.get(), 2).toString();
        c.type = field_type_of_declared(c.declared);
        c.is_key = column_value(stmt.get(), 5).toInt() > 0;
        columns << c;
    }
    return true;
}

QString trigger_name(const QString& table, const char* what)
{
    return quoted(QStringLiteral("qy_%1_%2").arg(table, QLatin1String(what)));
}

}  // namespace

void install_collations(sqlite3* db)
{
    sqlite3_create_collation_v2(db, "NOCASE", SQLITE_UTF8, nullptr, compare_nocase, nullptr);
}

bool apply_conventions(Connection& connection, const QString& table)
{
    QList<Column> columns;
    if (!read_columns(connection, table, columns))
        return false;
    const Rules rules = rules_for(columns);
    const QString t = quoted(table);

    QString sql;
    for (const char* what : {"check_insert", "check_update", "normalize_insert", "normalize_update"})
        sql += QStringLiteral("DROP TRIGGER IF EXISTS %1;\n").arg(trigger_name(table, what));

    if (!rules.checks.isEmpty()) {
        const QString body = QStringLiteral("SELECT CASE %1 END;").arg(rules.checks.join(QLatin1Char(' ')));
        sql += QStringLiteral("CREATE TRIGGER %1 BEFORE INSERT ON %2 BEGIN %3 END;\n").arg(trigger_name(table, "check_insert"), t, body);
        sql += QStringLiteral("CREATE TRIGGER %1 BEFORE UPDATE ON %2 BEGIN %3 END;\n").arg(trigger_name(table, "check_update"), t, body);
    }
    if (!rules.assignments.isEmpty()) {
        const QString when = rules.normalize_when.join(QLatin1String(" OR "));
        const QString body = QStringLiteral("UPDATE %1 SET %2 WHERE rowid = NEW.rowid;").arg(t, rules.assignments.join(QLatin1String(", ")));
        sql += QStringLiteral("CREATE TRIGGER %1 AFTER INSERT ON %2 WHEN %3 BEGIN %4 END;\n").arg(trigger_name(table, "normalize_insert"), t, when, body);
        sql += QStringLiteral("CREATE TRIGGER %1 AFTER UPDATE ON %2 WHEN %3 BEGIN %4 END;\n").arg(trigger_name(table, "normalize_update"), t, when, body);
    }
    return connection.exec(sql);
}

}  // namespace engine
