#include "shell/install_folder.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>

namespace {

QString& fixed_folder()
{
    static QString folder;
    return folder;
}

bool holds_install_layout(const QString& folder)
{
    const QDir dir(folder);
    return dir.exists(QStringLiteral("database")) && dir.exists(QStringLiteral("repfmts")) &&
           dir.exists(QStringLiteral("scripts"));
}

QString executable_folder()
{
    // applicationDirPath() needs the application object.
    return QCoreApplication::instance() ? QCoreApplication::applicationDirPath() : QString();
}

}  // namespace

QString Install_Folder()
{
    if (!fixed_folder().isEmpty())
        return fixed_folder();
    const QString beside_executable = executable_folder();
    if (!beside_executable.isEmpty() && holds_install_layout(beside_executable))
        return beside_executable;
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}

void set_install_folder_for_tests(const QString& folder)
{
    fixed_folder() = folder;
}
