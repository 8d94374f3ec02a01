#include "reports/report_pre_script.h"

#include "engine/msg_box.h"
#include "script/global_run_sql.h"
#include "shell/error_log.h"
#include "shell/file_checks.h"
#include "shell/settings.h"

bool resolve_pre_script(const QString& pre_script, QString& path)
{
    path.clear();
    const QString name = pre_script.trimmed();
    if (!name.contains(QLatin1Char('?'))) {
        path = build_path(Settings().script_dir, name);
        return true;
    }
    const std::pair<const char*, const QString*> configured[] = {{"?CrsCosts", &Settings().cost_script},
                                                                 {"?InTerms", &Settings().term_script},
                                                                 {"?InActDts", &Settings().activity_script}};
    for (const auto& [stands_for, script] : configured)
        if (name.compare(QLatin1String(stands_for), Qt::CaseInsensitive) == 0) {
            path = *script;
            return true;
        }
    return false;
}

bool Run_Pre_Script(const QString& pre_script, const QString& report_path, QString& status)
{
    const QString name = pre_script.trimmed();
    if (name.isEmpty())
        return true;
    QString path;
    if (resolve_pre_script(name, path) && Global_Run_SQL(path, status))
        return true;
    status = QStringLiteral("Error occurred in script ") + (path.isEmpty() ? name : path)
             + QStringLiteral(" before the report ") + report_path + QStringLiteral(" could be run.");
    Report_Error(report::Detected, status, engine::mb::Information, QStringLiteral("freport"), QStringLiteral("cmd_Do_Click"));
    return false;
}
