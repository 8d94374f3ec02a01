#pragma once
// What a typed cell of the results grid must hold before it is kept: a date
// that is on the list of activity dates, a time, a mark from 0 to 100. The
// order and the grade take anything.

#include "engine/recordset.h"

#include <QString>

namespace result {
inline constexpr short Pupil_Name = 1;
inline constexpr short Activity_Title = 2;
inline constexpr short Date = 3;
inline constexpr short Time = 4;
inline constexpr short Order = 5;
inline constexpr short Mark = 6;
inline constexpr short Grade = 7;
inline constexpr short Teacher = 8;
inline constexpr short Result_id = 9;
inline constexpr short Columns = 9;
}  // namespace result

// True when `date` is one of the dates of `dates` (a record set with
// ActT_Date), searched on a clone so that the list doesn't move. False, with
// the engine error set, when the search itself fails.
bool Check_Date_on_List(const engine::Recordset& dates, const QString& date, bool& on_list);

// The words that refuse `text` typed into `column`; empty when it is kept.
QString Cell_Refusal(short column, const QString& text, const engine::Recordset& dates);
