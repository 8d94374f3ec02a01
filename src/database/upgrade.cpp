#include "database/upgrade.h"

#include "database/db_handling.h"
#include "engine/msg_box.h"
#include "shell/error_log.h"

// The upgrade steps from the old formats are not written yet: refusing the
// upgrade keeps an old file exactly as it was.
bool DB_Upgrade_Database(const QString& name, SystemRecord&)
{
    Report_Error(report::UpgradeFailed, QStringLiteral("Could not upgrade the database"), engine::mb::Critical,
                 QStringLiteral("globdbhand"), QStringLiteral("DB_Upgrade_Database"));
    Q_UNUSED(name);
    return false;
}
