#pragma once
// Words the automated invoicing routines share.

#include <QString>

// The module tag of the Automated Invoicing screen and its routines.
inline QString billing_tag()
{
    return QStringLiteral("fInvAuto");
}
