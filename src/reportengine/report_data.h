#pragma once
// The rows a report prints: every field its formulas name, read from its
// tables joined by its links, the record selection applied (by the database
// where the selection can be SQL, row by row otherwise), in the order of its
// groups and then its sorts.

#include "reportengine/formula.h"
#include "reportengine/report_definition.h"

#include <QHash>
#include <map>
#include <vector>

namespace engine {
class Database;
}

namespace reportengine {

struct ReportData {
    QList<FieldName> fields;              // the columns of every row
    std::vector<std::vector<Value>> rows;
    bool selected_by_database = false;    // the record selection ran as SQL

    // The column of a field, -1 when the report reads no such field.
    int index_of(const FieldName& field) const;

private:
    mutable QHash<QString, int> columns_;  // by "table.column" in lower case; built at the first look-up
};

// The report's named formulas, read once; a formula that cannot be read is
// an error naming the report, the formula and the position.
class ReportFormulas {
public:
    bool parse(const ReportDefinition& report, QString& error);
    const Formula* find(const QString& name) const;

private:
    std::map<QString, Formula> formulas_;  // by lower-case name
};

// The formula context of one row of the data.
class RowContext : public FormulaContext {
public:
    RowContext(const ReportData& data, const ReportFormulas& formulas) : data_(data), formulas_(formulas) {}
    void set_row(int row) { row_ = row; }
    int row() const { return row_; }

    std::optional<Value> field(const FieldName& name) const override;
    std::optional<Value> formula(const QString& name) const override;
    std::optional<Value> neighbour(const FieldName& name, int offset) const override;

protected:
    // Summaries evaluate a formula on other rows of the group and come back.
    void move_to(int row) const { row_ = row; }

private:
    const ReportData& data_;
    const ReportFormulas& formulas_;
    mutable int row_ = 0;
    mutable int depth_ = 0;  // formulas naming formulas, stopped when they name themselves
};

// Reads the rows; false with words for the user when it can't (a field of a
// table the report doesn't have, a selection that can't be read, the database's error).
bool read_report_data(engine::Database& db, const ReportDefinition& report, const ReportFormulas& formulas,
                      ReportData& data, QString& error);

// Every formula text of the report: selections, formulas, sorts, groups,
// alerts, field sources and suppression conditions.
QStringList all_formula_texts(const ReportDefinition& report);

}  // namespace reportengine
