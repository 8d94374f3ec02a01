#pragma once
// The text and time functions of the formula language, apart from the
// evaluator's walk of the tree:
//
//   InStr(text, part)          where part first stands in text, from 1; 0 when it doesn't
//   Replace(text, part, by)    every part in text replaced by `by`
//   Time(text)                 "9:30" or "09.30" as a time of day; a date's own time
//   DateAdd(interval, n, date) n days ("d"), weeks ("ww"), months ("m"), years ("yyyy"),
//                              hours ("h") or minutes ("n") later
//   DateDiff(interval, a, b)   whole such steps from a to b
//
// A null argument gives null, as elsewhere in the language.

#include "reportengine/formula_value.h"

#include <vector>

namespace reportengine {

bool is_text_or_time_function(const QString& lower_name);
// False with the reason when the arguments don't suit the function.
bool text_or_time_function(const QString& lower_name, const std::vector<Value>& args, Value& out, QString& why);

}  // namespace reportengine
