#include "cli/cli_support.h"

#include "database/db_handling.h"
#include "engine/settings_store.h"
#include "engine/workspace.h"
#include "shell/app_globals.h"
#include "shell/locale_formats.h"
#include "shell/settings.h"

namespace cli {

QTextStream& out()
{
    static QTextStream stream(stdout);
    return stream;
}

QTextStream& err()
{
    static QTextStream stream(stderr);
    return stream;
}

void load_settings()
{
    Default_Settings(Settings());
    // The tool never asks the first-run question: without stored settings it
    // runs on the defaults and writes nothing.
    if (!engine::settings_store().section_is_empty(QLatin1String(settings_key::Section)))
        Read_Settings();
    Abort_Flag() = false;
    Current_Log_File() = Settings().log_file;
    Setup_Formats();
}

bool open_database(const QString& name)
{
    return DB_Open(name);
}

void close_all()
{
    DB_Close_All();
    Program_Workspace().Close();
    out().flush();
    err().flush();
}

QStringList take_option(QStringList& args, const QString& name)
{
    QStringList values;
    for (int i = 0; i < args.size();) {
        if (args[i] == name && i + 1 < args.size()) {
            values << args[i + 1];
            args.remove(i, 2);
        } else {
            ++i;
        }
    }
    return values;
}

bool take_flag(QStringList& args, const QString& name)
{
    return args.removeAll(name) > 0;
}

}  // namespace cli
