#pragma once
// A stored query call in a script: the query's name, then pairs of a
// parameter name and a value in double quotes, all separated by blanks:
//   Qry_Setup_Something par_Term_id "5" par_Name "Spring Term"
// There is no escape for a quote. A pair whose value has no opening or
// closing quote ends the scan: that parameter, and any after it, stay unset.

#include "engine/field_type.h"

#include <QString>
#include <QVariant>
#include <vector>

struct QueryCallParameter {
    QString name;
    QString value;
};

struct QueryCall {
    QString name;
    std::vector<QueryCallParameter> parameters;
};

// Reads a call whose ";" have already been blanked.
QueryCall parse_query_call(const QString& call);

// Converts a value's text to the parameter's type (text, memo and unknown
// types take it as it stands; dates are read by the locale's rules). False,
// with engine::Err() set, when the text doesn't convert.
bool parameter_value_from_text(const QString& text, engine::FieldType type, QVariant& value);
