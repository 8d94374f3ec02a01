#pragma once
// The Pupil Details screen's own words and small helpers, shared by the
// files that make up the screen.

#include "engine/err.h"
#include "engine/vb_values.h"
#include "shell/locale_formats.h"

#include <QString>
#include <QVariant>

namespace pupil_screen {

inline const QString module = QStringLiteral("fpupils");

// The words of each Data control's and grid's own failures.
inline const QString navigation_error = QStringLiteral("Error accessing Navigation Control ");
inline const QString courses_error = QStringLiteral("Error accessing Courses Taken Control ");
inline const QString exams_error = QStringLiteral("Error accessing Exams Taken Control ");
inline const QString festivals_error = QStringLiteral("Error accessing Festivals Control ");
inline const QString accounts_error = QStringLiteral("Error accessing Accounts Control ");
inline const QString courses_grid_error = QStringLiteral("Error using Data Grid Courses Taken Control ");
inline const QString accounts_grid_error = QStringLiteral("Error using Data Grid Accounts Control ");

// The grids' date picture: the platform's medium date, day, month's three
// letters and the year's last two digits.
inline const QString medium_date = QStringLiteral("dd-mmm-yy");

inline const QString exit_question = QStringLiteral("You have made changes that have not been stored in the database.")
                                     + QLatin1Char('\n') + QStringLiteral("Do you wish to save the changes?");

inline bool is_numeric_text(const QString& text)
{
    const bool numeric = vb::IsNumeric(text.trimmed());
    engine::Err().Clear();
    return numeric;
}

// A date of the record in the locale's long date format; empty for Null.
inline QVariant date_shown(const QVariant& value)
{
    if (value.isNull() || !value.isValid())
        return QVariant();
    return vb::Format(value, Glob_Date_Format());
}

}  // namespace pupil_screen
