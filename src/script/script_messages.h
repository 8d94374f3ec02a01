#pragma once
// The words the script engine shares between its reader and its commands.

#include <QString>

// The module tag of the script engine's log entries.
inline QString script_tag()
{
    return QStringLiteral("Global_Run_SQL");
}

// The status after a statement failed and the run was undone.
inline QString script_abandoned_status()
{
    return QStringLiteral("Script file abandoned and all changes undone");
}

// Appended to the status (the last display line's text) when the whole file committed.
inline QString script_applied_suffix()
{
    return QStringLiteral(" Script successfully applied");
}
