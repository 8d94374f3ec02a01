#include "toolkit/help_pages.h"

#include "shell/install_folder.h"

#include <QDir>
#include <QFileInfo>

namespace help {

QString expected_manual_folder()
{
    return QDir(Install_Folder()).filePath(QStringLiteral("manual"));
}

QString manual_folder()
{
    const QString folder = expected_manual_folder();
    return QFileInfo(folder).isDir() ? folder : QString();
}

Request resolve(int command, int context)
{
    if (command == Quit)
        return {help_is_open(), QString()};
    if (command == Context && context == 0)
        return {};
    if (command != Context && command != Contents && command != Help_On_Help)
        return {};
    const QString folder = manual_folder();
    if (folder.isEmpty())
        return {false, QString(), Missing::Manual, expected_manual_folder()};
    QString page;
    switch (command) {
    case Context: page = QString::number(context) + QStringLiteral(".html"); break;
    case Contents: page = QStringLiteral("index.html"); break;
    case Help_On_Help: page = QStringLiteral("help_on_help.html"); break;
    default: return {};
    }
    const QString path = QDir(folder).filePath(page);
    if (!QFileInfo::exists(path))
        return {false, QString(), Missing::Page, path};
    return {true, path};
}

QString missing_words(const Request& request)
{
    switch (request.missing) {
    case Missing::Nothing:
        return QString();
    case Missing::Manual:
        return QStringLiteral("The help pages cannot be found.") + QLatin1Char('\n')
               + QStringLiteral("They belong in the folder ") + QDir::toNativeSeparators(request.missing_path)
               + QStringLiteral(", which is not there. Installing Quillary again puts them back.");
    case Missing::Page:
        return QStringLiteral("The help page for this screen cannot be found.") + QLatin1Char('\n')
               + QStringLiteral("It belongs at ") + QDir::toNativeSeparators(request.missing_path) + QLatin1Char('.');
    }
    return QString();
}

bool& help_is_open()
{
    static bool open = false;
    return open;
}

}  // namespace help
