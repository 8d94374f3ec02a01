#include "database/database_file_name.h"

#include "shell/file_checks.h"

#include <QDir>
#include <QFileInfo>

QString database_file_name(const QString& typed)
{
    const QString name = typed.trimmed();
    QString drive, folder, file, extension;
    Split_Path(name, drive, folder, file, extension);
    return extension.isEmpty() && !name.isEmpty() ? name + QStringLiteral(".mdb") : name;
}

bool same_database_file(const QString& one, const QString& other)
{
    const QString first = database_file_name(one);
    const QString second = database_file_name(other);
    if (first.isEmpty() || second.isEmpty())
        return false;
    if (QFileInfo(first) == QFileInfo(second))
        return true;
    return QDir::cleanPath(first).compare(QDir::cleanPath(second), Qt::CaseInsensitive) == 0;
}
