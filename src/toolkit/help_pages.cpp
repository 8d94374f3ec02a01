#include "toolkit/help_pages.h"

#include "shell/install_folder.h"

#include <QDir>
#include <QFileInfo>

namespace help {

QString manual_folder()
{
    const QString folder = QDir(Install_Folder()).filePath(QStringLiteral("manual"));
    return QFileInfo(folder).isDir() ? folder : QString();
}

Request resolve(int command, int context)
{
    const QString folder = manual_folder();
    if (folder.isEmpty())
        return {};
    if (command == Context && context == 0)
        return {};
    if (command == Quit)
        return {help_is_open(), QString()};
    QString page;
    switch (command) {
    case Context: page = QString::number(context) + QStringLiteral(".html"); break;
    case Contents: page = QStringLiteral("index.html"); break;
    case Help_On_Help: page = QStringLiteral("help_on_help.html"); break;
    default: return {};
    }
    const QString path = QDir(folder).filePath(page);
    if (!QFileInfo::exists(path))
        return {};
    return {true, path};
}

bool& help_is_open()
{
    static bool open = false;
    return open;
}

}  // namespace help
