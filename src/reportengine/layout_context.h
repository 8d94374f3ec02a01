#pragma once
// The formula context while a report is laid out: the row, the page and the
// page count, and summaries (Sum, Count, Average, Maximum, Minimum,
// RunningSum) of a field or formula over the group instance the row is in.
// Money is added up exactly, to the fourth decimal place, as the database
// keeps it.

#include "reportengine/report_data.h"
#include "reportengine/report_definition.h"

#include <QDateTime>
#include <map>
#include <vector>

namespace reportengine {

class LayoutContext : public RowContext {
public:
    // `group_starts[level]`: the rows where an instance of group `level` (0 outermost) starts.
    LayoutContext(const ReportDefinition& report, const ReportData& data, const ReportFormulas& formulas,
                  const std::vector<std::vector<int>>& group_starts, const QDateTime& print_date);

    int page = 1;
    int pages = 1;

    std::optional<Value> summary(const QString& function, const SummaryOf& of, const QString& group) const override;
    int page_number() const override { return page; }
    int total_page_count() const override { return pages; }
    QDateTime print_date() const override { return print_date_; }

    // The rows [first, last) of the instance of group `level` that holds `row`.
    void range_of(int level, int row, int& first, int& last) const;

private:
    int level_of(const QString& group) const;
    bool value_at(const SummaryOf& of, int row, Value& value) const;
    std::optional<Value> summarise(const QString& function, const SummaryOf& of, int first, int last) const;
    std::optional<Value> running_sum(const SummaryOf& of, const QString& group, int first) const;

    const ReportDefinition& report_;
    const ReportData& data_;
    const std::vector<std::vector<int>>& group_starts_;
    QDateTime print_date_;
    // A group's summary is worked out once; a running sum goes on from the row before.
    mutable std::map<QString, Value> summaries_;
    struct Running {
        int first = -1;
        int row = -1;
        Value total;
    };
    mutable std::map<QString, Running> running_;
};

}  // namespace reportengine
