#include "shell/file_errors.h"

#include <QFileDevice>
#include <QFileInfo>

namespace {

engine::ErrState error_of(int number, const QString& description)
{
    engine::ErrState error;
    error.Raise(number, description);
    return error;
}

engine::ErrState permission_denied()
{
    return error_of(engine::vberr::PermissionDenied, QStringLiteral("Permission denied"));
}

engine::ErrState access_error(const QFileDevice& file)
{
    return error_of(file_errors::PathFileAccess, file.errorString());
}

engine::ErrState missing_file_failure(const QFileInfo& info, const QFileDevice& file, file_errors::Purpose purpose)
{
    const QFileInfo folder(info.absolutePath());
    if (!folder.isDir())
        return error_of(engine::vberr::PathNotFound, QStringLiteral("Path not found"));
    if (purpose == file_errors::Purpose::Reading)
        return error_of(engine::vberr::FileNotFound, QStringLiteral("File not found"));
    return folder.isWritable() ? access_error(file) : permission_denied();
}

}  // namespace

engine::ErrState open_failure(const QString& name, const QFileDevice& file, file_errors::Purpose purpose)
{
    if (name.trimmed().isEmpty())
        return error_of(file_errors::BadFileName, QStringLiteral("Bad file name or number"));
    const QFileInfo info(name);
    if (!info.exists())
        return missing_file_failure(info, file, purpose);
    if (info.isDir())
        return error_of(file_errors::PathFileAccess, QStringLiteral("Path/File access error"));
    const bool allowed = purpose == file_errors::Purpose::Reading ? info.isReadable() : info.isWritable();
    return allowed ? access_error(file) : permission_denied();
}

engine::ErrState read_failure(const QFileDevice& file)
{
    return access_error(file);
}
