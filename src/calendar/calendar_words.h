#pragma once
// Words the term calendar's routines share.

#include <QString>

// The module tag of the Term Dates screen and its routines.
inline QString calendar_tag()
{
    return QStringLiteral("fDates");
}
