#pragma once
// Pieces that several stored query texts share. Texts are joined from these
// and from the stored codes, written in as numbers.

#include "database/code_values.h"

#include <QString>

namespace query_piece {

// A code as the number the text compares with.
inline QString num(int code)
{
    return QString::number(code);
}

// A letter code as a quoted text.
inline QString letter(char code)
{
    return QStringLiteral("'%1'").arg(QLatin1Char(code));
}

// A sum of money, exact to the four places that money has, so that sums
// compare equal when their amounts do (0.10 + 0.20 against 0.30).
inline QString money_sum(const QString& column)
{
    return QStringLiteral("round(SUM(%1), 4)").arg(column);
}

// Text is joined as the program always joins it: a null part joins as nothing.

// "First Family Surname" of pupil P in family F.
inline const QString display_name = QStringLiteral(
    "ifnull(P.Pupil_FirstName, '') || ' ' || ifnull(F.Family_Name, '') || ' ' || ifnull(P.Pupil_Surname, '')");

// "<first name>'s <title>", the description of a pupil's line.
inline QString pupils(const QString& first_name, const QString& title)
{
    return QStringLiteral("ifnull(%1, '') || '''s ' || ifnull(%2, '')").arg(first_name, title);
}

// A date as the platform's date number (days since 1899-12-30, the time as a
// fraction of a day worked out from the clock time itself, so that five
// minutes is exactly 5/1440); null stays null.
inline QString date_number(const QString& date)
{
    return QStringLiteral("jet_date_serial(%1)").arg(date);
}

}  // namespace query_piece
