#include "toolkit/file_select.h"

#include "engine/msg_box.h"
#include "shell/app_globals.h"
#include "shell/file_checks.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

FileSelectRecord& Glob_File_Select()
{
    static FileSelectRecord record;
    return record;
}

namespace file_select {

Mode mode_of(const FileSelectRecord& record)
{
    if (record.Select_Directory)
        return Mode::Directory;
    return record.Select_New_File ? Mode::New_File : Mode::Existing_File;
}

QString caption_of(const FileSelectRecord& record)
{
    switch (mode_of(record)) {
    case Mode::Directory: return QStringLiteral("Select a Directory");
    case Mode::New_File: return QStringLiteral("Select a New File");
    case Mode::Existing_File: break;
    }
    return QStringLiteral("Select an Existing File");
}

QString start_folder(const QString& start_path)
{
    const QString path = start_path.trimmed();
    if (path.isEmpty())
        return QCoreApplication::instance() ? QCoreApplication::applicationDirPath() : QDir::currentPath();
    QString drive, folder, file, extension;
    Split_Path(path, drive, folder, file, extension);
    // A name without an extension counts as a folder, as Split_Path says;
    // a folder that happens to have a point in its name is still a folder.
    if (QFileInfo(path).isDir())
        return path;
    return folder;
}

QStringList name_filters(const FileSelectRecord& record)
{
    QStringList filters;
    for (const auto& [text, pattern] : record.Filters) {
        if (text.trimmed().isEmpty())
            break;
        // "*.*" has always meant every file, with an extension or without.
        const QString given = pattern.trimmed();
        const QString wanted = given.isEmpty() || given == QLatin1String("*.*") ? QStringLiteral("*") : given;
        filters << (text.contains(QLatin1Char('(')) ? text : text + QStringLiteral(" (") + wanted + QLatin1Char(')'));
    }
    if (filters.isEmpty())
        filters << QStringLiteral("All Files (*)");
    return filters;
}

bool Check_New_File(QString& name, const QString& folder, const QString& extension)
{
    name = name.trimmed();
    if (QFileInfo(name).suffix().isEmpty() && !extension.isEmpty())
        name += QLatin1Char('.') + extension;
    const QString path = out_path(folder, name);
    if (QFileInfo::exists(path)) {
        engine::MsgBox(QStringLiteral("The file ") + path + QStringLiteral(" already exists. Type another name."),
                       engine::mb::OkOnly, App_Title());
        return false;
    }
    return true;
}

QString out_path(const QString& folder, const QString& file)
{
    return folder.endsWith(QLatin1Char('/')) ? folder + file : folder + QLatin1Char('/') + file;
}

}  // namespace file_select
