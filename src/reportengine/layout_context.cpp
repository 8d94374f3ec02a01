#include "reportengine/layout_context.h"

#include "engine/currency.h"

#include <algorithm>

namespace reportengine {

namespace {

Value exact_sum(const Value& a, const Value& b)
{
    return Value::number((engine::Currency::from_double(a.as_number()) + engine::Currency::from_double(b.as_number())).to_double());
}

}  // namespace

LayoutContext::LayoutContext(const ReportDefinition& report, const ReportData& data, const ReportFormulas& formulas,
                             const std::vector<std::vector<int>>& group_starts, const QDateTime& print_date)
    : RowContext(data, formulas), report_(report), data_(data), group_starts_(group_starts), print_date_(print_date)
{
}

void LayoutContext::range_of(int level, int row, int& first, int& last) const
{
    const std::vector<int>& starts = group_starts_[level];
    auto next = std::upper_bound(starts.begin(), starts.end(), row);
    first = *(next - 1);
    last = next == starts.end() ? static_cast<int>(data_.rows.size()) : *next;
}

int LayoutContext::level_of(const QString& group) const
{
    for (size_t g = 0; g < report_.groups.size(); ++g)
        if (report_.groups[g].field.trimmed().compare(group, Qt::CaseInsensitive) == 0)
            return static_cast<int>(g);
    return -1;
}

bool LayoutContext::value_at(const SummaryOf& of, int row, Value& value) const
{
    if (of.field) {
        const int column = data_.index_of(*of.field);
        if (column < 0)
            return false;
        value = data_.rows[row][column];
        return true;
    }
    move_to(row);
    const auto v = formula(of.formula);
    if (!v)
        return false;
    value = *v;
    return true;
}

std::optional<Value> LayoutContext::summary(const QString& function, const SummaryOf& of, const QString& group) const
{
    if (data_.rows.empty())
        return function == QLatin1String("count") || function.endsWith(QLatin1String("sum")) ? Value::number(0) : Value();
    int first = 0;
    int last = static_cast<int>(data_.rows.size());
    if (!group.isEmpty()) {
        const int level = level_of(group);
        if (level < 0)
            return std::nullopt;
        range_of(level, row(), first, last);
    }
    const int here = row();
    if (function == QLatin1String("runningsum")) {
        const auto value = running_sum(of, group, first);
        move_to(here);
        return value;
    }
    const QString key = QStringList{function, of.written(), group, QString::number(first)}.join(QLatin1Char(' '));
    if (const auto found = summaries_.find(key); found != summaries_.end())
        return found->second;
    const auto value = summarise(function, of, first, last);
    move_to(here);
    if (value)
        summaries_[key] = *value;
    return value;
}

std::optional<Value> LayoutContext::running_sum(const SummaryOf& of, const QString& group, int first) const
{
    const int upto = row();
    Running& run = running_[of.written() + QLatin1Char(' ') + group];
    if (run.first != first || run.row > upto)
        run = Running{first, first - 1, Value::number(0)};
    for (int r = run.row + 1; r <= upto; ++r) {
        Value v;
        if (!value_at(of, r, v))
            return std::nullopt;
        if (v.kind() == Value::Kind::Number)
            run.total = exact_sum(run.total, v);
        run.row = r;
    }
    return run.total;
}

std::optional<Value> LayoutContext::summarise(const QString& function, const SummaryOf& of, int first, int last) const
{
    int count = 0;
    Value sum = Value::number(0);
    Value best;
    for (int r = first; r < last; ++r) {
        Value v;
        if (!value_at(of, r, v))
            return std::nullopt;
        if (v.is_null())
            continue;
        ++count;
        if (v.kind() == Value::Kind::Number)
            sum = exact_sum(sum, v);
        bool clash = false;
        const auto order = best.is_null() ? std::optional<int>() : compare(v, best, clash);
        if (best.is_null() || (order && ((function == QLatin1String("maximum") && *order > 0)
                                         || (function == QLatin1String("minimum") && *order < 0))))
            best = v;
    }
    if (function == QLatin1String("count"))
        return Value::number(count);
    if (function == QLatin1String("sum"))
        return sum;
    if (function == QLatin1String("average"))
        return count == 0 ? Value() : Value::number(sum.as_number() / count);
    return best;
}

}  // namespace reportengine
