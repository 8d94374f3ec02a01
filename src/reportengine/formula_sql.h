#pragma once
// A selection formula as an SQL condition, where it can be one: that is what
// lets a statement for ten thousand families read only the rows it prints.
// A formula is translated only where the database is sure to give exactly the
// rows the evaluator would (the same nulls, text compared without regard to
// letter case, no division that could fail); otherwise nothing comes back and
// the selection is evaluated row by row.

#include "reportengine/formula.h"

#include <functional>
#include <optional>

namespace reportengine {

// How a field of the report is reached in SQL, and what kind of value it holds.
struct SqlField {
    QString expression;  // e.g. "[Invoices].[Invoice_Term_id]"
    Value::Kind kind = Value::Kind::Null;
};
using SqlFieldLookup = std::function<std::optional<SqlField>(const FieldName&)>;

// The WHERE condition for a selection formula; nothing when it can't be one.
// An empty formula gives "1".
std::optional<QString> selection_to_sql(const Formula& selection, const SqlFieldLookup& fields);

}  // namespace reportengine
