#include "engine/trash.h"

#include "engine/err.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QUrl>

namespace engine {

namespace {

// The user's trash of the freedesktop.org convention, which file managers show.
QString trash_folder()
{
    QString data = qEnvironmentVariable("XDG_DATA_HOME");
    if (data.isEmpty())
        data = QDir::homePath() + QStringLiteral("/.local/share");
    return data + QStringLiteral("/Trash");
}

// A name not yet used in the trash: "name", then "name.2", "name.3" ...
QString free_name(const QDir& files, const QDir& info, const QString& name)
{
    QString candidate = name;
    for (int n = 2; files.exists(candidate) || info.exists(candidate + QStringLiteral(".trashinfo")); ++n)
        candidate = name + QLatin1Char('.') + QString::number(n);
    return candidate;
}

bool write_info(const QString& path, const QString& original)
{
    QFile info(path);
    if (!info.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        return false;
    const QByteArray text = "[Trash Info]\nPath=" + QUrl::toPercentEncoding(original, "/") + "\nDeletionDate="
                            + QDateTime::currentDateTime().toString(Qt::ISODate).toUtf8() + "\n";
    return info.write(text) == text.size();
}

bool fail(int number, const QString& description)
{
    Err().Raise(number, description);
    return false;
}

}  // namespace

bool move_to_trash(const QString& path)
{
    const QFileInfo source(path);
    if (!source.exists())
        return fail(vberr::FileNotFound, QStringLiteral("File not found"));
    const QString trash = trash_folder();
    if (!QDir().mkpath(trash + QStringLiteral("/files")) || !QDir().mkpath(trash + QStringLiteral("/info")))
        return fail(vberr::PathNotFound, QStringLiteral("Path not found: ") + trash);
    const QDir files(trash + QStringLiteral("/files"));
    const QDir info(trash + QStringLiteral("/info"));
    const QString name = free_name(files, info, source.fileName());
    const QString info_path = info.filePath(name + QStringLiteral(".trashinfo"));
    if (!write_info(info_path, source.absoluteFilePath()))
        return fail(vberr::PermissionDenied, QStringLiteral("Permission denied: ") + info_path);
    const QString target = files.filePath(name);
    // A rename keeps it quick; across file systems the file is copied, then removed.
    if (QFile::rename(path, target) || (QFile::copy(path, target) && QFile::remove(path)))
        return true;
    QFile::remove(info_path);
    return fail(vberr::PermissionDenied, QStringLiteral("Permission denied: ") + path);
}

}  // namespace engine
