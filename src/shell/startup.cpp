#include "shell/startup.h"

#include "database/db_handling.h"
#include "engine/msg_box.h"
#include "engine/workspace.h"
#include "shell/app_globals.h"
#include "shell/file_checks.h"
#include "shell/locale_formats.h"
#include "shell/selection_lists.h"
#include "shell/settings.h"
#include "shell/single_instance.h"

namespace {

// No message is shown for a default database that is simply not there.
void open_default_database()
{
    const QString name = Settings().default_database.trimmed();
    QString error_text;
    if (name.isEmpty() || Glob_File_Check(name, error_text) != 1 || !DB_Open(name))
        Current_Db_Name().clear();
}

}  // namespace

bool Main_Start(SingleInstance& instance)
{
    Abort_Flag() = false;
    Settings() = SettingsRecord();
    Reset_Changed_Lists();
    if (!instance.acquire()) {
        engine::MsgBox(QStringLiteral("Cannot run more than one instance of this program. ") + QLatin1Char('\n')
                           + QStringLiteral("Ending this instance."),
                       engine::mb::Critical, App_Title());
        return false;
    }
    Program_Workspace();  // the engine's default workspace, held for the program's life
    Read_Settings();
    if (Abort_Flag())
        return false;
    Current_Log_File() = Settings().log_file;
    Setup_Formats();
    open_default_database();
    return true;
}

void Main_End_Prog_Close()
{
    DB_Close_All();
    Program_Workspace().Close();
}

QString Main_End_Message()
{
    return QStringLiteral("Thank you for using ") + App_Name();
}
