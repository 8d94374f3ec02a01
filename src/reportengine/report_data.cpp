#include "reportengine/report_data.h"

#include "engine/database.h"
#include "engine/err.h"
#include "engine/recordset.h"
#include "reportengine/formula_sql.h"

#include <QSet>
#include <algorithm>

namespace reportengine {

namespace {

QString key_of(const FieldName& f)
{
    return (f.table + QLatin1Char('.') + f.column).toLower();
}

// Names in brackets: the engine reads a double-quoted word as text, and
// finds the stored queries a statement names only among its identifiers.
QString quoted(const QString& name)
{
    return QLatin1Char('[') + QString(name).remove(QLatin1Char(']')) + QLatin1Char(']');
}

QString column_sql(const FieldName& f)
{
    return quoted(f.table) + QLatin1Char('.') + quoted(f.column);
}

Value::Kind kind_of(engine::FieldType type)
{
    using T = engine::FieldType;
    switch (type) {
    case T::Boolean: return Value::Kind::Boolean;
    case T::Byte:
    case T::Integer:
    case T::Long:
    case T::Currency:
    case T::Single:
    case T::Double: return Value::Kind::Number;
    case T::Date: return Value::Kind::Date;
    case T::Text:
    case T::Memo: return Value::Kind::Text;
    case T::Unknown: return Value::Kind::Null;
    }
    return Value::Kind::Null;
}

// The tables joined by the report's links, the first table first; tables no
// link reaches stand beside them, every row with every row.
bool from_clause(const ReportDefinition& report, QString& from, QString& error)
{
    if (report.tables.empty()) {
        error = QStringLiteral("The report names no table.");
        return false;
    }
    QSet<QString> joined = {report.tables.front().name.toLower()};
    from = quoted(report.tables.front().name);
    std::vector<bool> used(report.links.size(), false);
    for (bool progress = true; progress;) {
        progress = false;
        for (size_t i = 0; i < report.links.size(); ++i) {
            if (used[i])
                continue;
            const ReportLink& link = report.links[i];
            const QString from_table = link.from.section(QLatin1Char('.'), 0, 0);
            const QString to_table = link.to.section(QLatin1Char('.'), 0, 0);
            if (!joined.contains(from_table.toLower()))
                continue;
            const auto column = [](const QString& end) {
                return quoted(end.section(QLatin1Char('.'), 0, 0)) + QLatin1Char('.') + quoted(end.section(QLatin1Char('.'), 1));
            };
            from += (link.left_outer ? QStringLiteral(" LEFT JOIN ") : QStringLiteral(" INNER JOIN ")) + quoted(to_table)
                    + QStringLiteral(" ON ") + column(link.from) + QStringLiteral(" = ") + column(link.to);
            joined.insert(to_table.toLower());
            used[i] = progress = true;
        }
    }
    for (size_t i = 0; i < report.links.size(); ++i) {
        if (!used[i]) {
            error = QStringLiteral("The link from %1 to %2 joins no table of the report.").arg(report.links[i].from, report.links[i].to);
            return false;
        }
    }
    for (const ReportTable& t : report.tables)
        if (!joined.contains(t.name.toLower())) {
            from += QStringLiteral(", ") + quoted(t.name);
            joined.insert(t.name.toLower());
        }
    return true;
}

// Every field that any formula of the report names, each once.
bool needed_fields(const ReportDefinition& report, QList<FieldName>& fields, QString& error)
{
    QSet<QString> tables;
    for (const ReportTable& t : report.tables)
        tables.insert(t.name.toLower());
    QSet<QString> seen;
    for (const QString& text : all_formula_texts(report)) {
        Formula formula;
        if (!formula.parse(text, QStringLiteral("formula"), error))
            return false;
        for (const FieldName& f : formula.fields()) {
            if (!tables.contains(f.table.toLower())) {
                error = QStringLiteral("The field %1 is not in a table of the report.").arg(f.written());
                return false;
            }
            if (!seen.contains(key_of(f))) {
                seen.insert(key_of(f));
                fields.append(f);
            }
        }
    }
    return true;
}

// Each column under a name of its own: two tables may share a column's name.
QString select_list(const QList<FieldName>& fields)
{
    QStringList columns;
    for (int i = 0; i < fields.size(); ++i)
        columns << column_sql(fields[i]) + QStringLiteral(" AS f%1").arg(i);
    return columns.isEmpty() ? QStringLiteral("1") : columns.join(QStringLiteral(", "));
}

bool engine_failure(QString& error)
{
    error = QStringLiteral("%1 : %2").arg(engine::Err().Number).arg(engine::Err().Description);
    return false;
}

// Rows in the order of the groups and then the sorts; rows that compare
// equal keep the database's order.
bool sort_rows(const ReportDefinition& report, const ReportFormulas& formulas, ReportData& data, QString& error)
{
    struct Key {
        Formula formula;
        bool descending;
    };
    std::vector<std::pair<QString, bool>> orders;
    for (const ReportGroup& g : report.groups)
        orders.emplace_back(g.field, g.descending);
    for (const SortField& s : report.sorts)
        orders.emplace_back(s.field, s.descending);
    std::vector<Key> keys(orders.size());
    for (size_t i = 0; i < orders.size(); ++i) {
        keys[i].descending = orders[i].second;
        if (!keys[i].formula.parse(orders[i].first, QStringLiteral("sort field"), error))
            return false;
    }
    if (keys.empty())
        return true;
    std::vector<std::vector<Value>> values(data.rows.size(), std::vector<Value>(keys.size()));
    RowContext context(data, formulas);
    for (size_t r = 0; r < data.rows.size(); ++r) {
        context.set_row(static_cast<int>(r));
        for (size_t i = 0; i < keys.size(); ++i)
            if (!keys[i].formula.evaluate(context, values[r][i], error))
                return false;
    }
    std::vector<size_t> order(data.rows.size());
    for (size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    std::stable_sort(order.begin(), order.end(), [&](size_t a, size_t b) {
        for (size_t i = 0; i < keys.size(); ++i) {
            const Value& x = values[a][i];
            const Value& y = values[b][i];
            bool clash = false;
            int c = 0;
            if (x.is_null() != y.is_null())
                c = x.is_null() ? -1 : 1;  // nulls first
            else if (const auto o = compare(x, y, clash))
                c = *o;
            if (c != 0)
                return keys[i].descending ? c > 0 : c < 0;
        }
        return false;
    });
    std::vector<std::vector<Value>> sorted;
    sorted.reserve(order.size());
    for (size_t i : order)
        sorted.push_back(std::move(data.rows[i]));
    data.rows = std::move(sorted);
    return true;
}

}  // namespace

int ReportData::index_of(const FieldName& field) const
{
    if (columns_.size() != fields.size()) {
        columns_.clear();
        for (int i = 0; i < fields.size(); ++i)
            columns_.insert(key_of(fields[i]), i);
    }
    return columns_.value(key_of(field), -1);
}

bool ReportFormulas::parse(const ReportDefinition& report, QString& error)
{
    formulas_.clear();
    for (const ReportFormula& f : report.formulas) {
        Formula formula;
        if (!formula.parse(f.text, QStringLiteral("formula {@%1} of %2:").arg(f.name, report.file), error))
            return false;
        formulas_.emplace(f.name.toLower(), std::move(formula));
    }
    return true;
}

const Formula* ReportFormulas::find(const QString& name) const
{
    const auto it = formulas_.find(name.toLower());
    return it == formulas_.end() ? nullptr : &it->second;
}

// A report with no rows still prints its headers and footers: their fields are then null.
std::optional<Value> RowContext::field(const FieldName& name) const
{
    const int i = data_.index_of(name);
    if (i < 0)
        return std::nullopt;
    if (row_ < 0 || row_ >= static_cast<int>(data_.rows.size()))
        return Value();
    return data_.rows[row_][i];
}

std::optional<Value> RowContext::neighbour(const FieldName& name, int offset) const
{
    const int i = data_.index_of(name);
    if (i < 0)
        return std::nullopt;
    const int r = row_ + offset;
    if (r < 0 || r >= static_cast<int>(data_.rows.size()))
        return Value();
    return data_.rows[r][i];
}

std::optional<Value> RowContext::formula(const QString& name) const
{
    const Formula* f = formulas_.find(name);
    if (!f || depth_ > 32)
        return std::nullopt;
    ++depth_;
    Value value;
    QString error;
    const bool ok = f->evaluate(*this, value, error);
    --depth_;
    if (!ok)
        return std::nullopt;
    return value;
}

QStringList all_formula_texts(const ReportDefinition& report)
{
    QStringList texts = {report.record_selection, report.group_selection};
    for (const ReportFormula& f : report.formulas)
        texts << f.text;
    for (const SortField& s : report.sorts)
        texts << s.field;
    for (const ReportGroup& g : report.groups)
        texts << g.field;
    for (const ReportAlert& a : report.alerts)
        texts << a.condition;
    for (const ReportArea& area : report.areas)
        for (const ReportSection& section : area.sections) {
            texts << section.suppress_if;
            for (const ReportObject& o : section.objects)
                texts << o.source << o.suppress_if;
        }
    texts.removeAll(QString());
    return texts;
}

bool read_report_data(engine::Database& db, const ReportDefinition& report, const ReportFormulas& formulas,
                      ReportData& data, QString& error)
{
    data = ReportData();
    QString from;
    if (!needed_fields(report, data.fields, error) || !from_clause(report, from, error))
        return false;
    const QString select = QStringLiteral("SELECT ") + select_list(data.fields) + QStringLiteral(" FROM ") + from;

    // The kinds of the columns, for turning the selection into SQL.
    auto shape = db.OpenRecordset(select + QStringLiteral(" LIMIT 0"));
    if (!shape)
        return engine_failure(error);
    std::vector<Value::Kind> kinds;
    for (int i = 0; i < data.fields.size(); ++i)
        kinds.push_back(kind_of(shape->field(i).type));

    Formula selection;
    if (!selection.parse(report.record_selection, QStringLiteral("record selection"), error))
        return false;
    const auto where = selection_to_sql(selection, [&](const FieldName& f) -> std::optional<SqlField> {
        const int i = data.index_of(f);
        if (i < 0)
            return std::nullopt;
        return SqlField{column_sql(f), kinds[i]};
    });
    data.selected_by_database = where.has_value();
    auto rows = db.OpenRecordset(select + (where ? QStringLiteral(" WHERE ") + *where : QString()));
    if (!rows)
        return engine_failure(error);
    const bool any = rows->RecordCount() > 0;
    for (rows->MoveFirst(); any && !rows->at_eof(); rows->MoveNext()) {
        std::vector<Value> row;
        row.reserve(data.fields.size());
        for (int i = 0; i < data.fields.size(); ++i) {
            QVariant v;
            rows->get(QStringLiteral("f%1").arg(i), v);
            row.push_back(Value::from_variant(v));
        }
        data.rows.push_back(std::move(row));
    }
    if (!where) {
        RowContext context(data, formulas);
        std::vector<std::vector<Value>> kept;
        for (size_t r = 0; r < data.rows.size(); ++r) {
            context.set_row(static_cast<int>(r));
            bool selected = false;
            if (!selection.selects(context, selected, error)) {
                error = QStringLiteral("The record selection %1 fails: %2").arg(report.record_selection, error);
                return false;
            }
            if (selected)
                kept.push_back(data.rows[r]);
        }
        data.rows = std::move(kept);
    }
    return sort_rows(report, formulas, data, error);
}

}  // namespace reportengine
