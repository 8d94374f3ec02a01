#include "shell/app_globals.h"

QString App_Title()
{
    return QStringLiteral("Quillary %1.%2").arg(QUILLARY_VERSION_MAJOR).arg(QUILLARY_VERSION_PATCH);
}

QString App_Name()
{
    return QStringLiteral("quillary");
}

bool& Abort_Flag()
{
    static bool abort = false;
    return abort;
}

QString& Current_Log_File()
{
    static QString log_file;
    return log_file;
}
