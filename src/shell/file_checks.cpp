#include "shell/file_checks.h"

#include "engine/msg_box.h"
#include "shell/app_globals.h"
#include "shell/file_errors.h"

#include <QFile>

namespace {

int check_of_failure(const engine::ErrState& error, QString& error_text)
{
    switch (error.Number) {
    case engine::vberr::FileNotFound:
    case engine::vberr::PathNotFound:
        return 0;
    case engine::vberr::FileAlreadyOpen:
    case engine::vberr::FileAlreadyExists:
    case engine::vberr::PermissionDenied:
        return 1;  // the file is there
    default:
        error_text = QStringLiteral("Error Occurred, %1 : %2").arg(error.Number).arg(error.Description);
        return 2;
    }
}

QString last_component(const QString& full)
{
    QString path = full;
    while (path.size() > 1 && path.endsWith(QLatin1Char('/')))
        path.chop(1);
    return path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
}

QString parent_folder(const QString& full)
{
    QString path = full;
    while (path.size() > 1 && path.endsWith(QLatin1Char('/')))
        path.chop(1);
    const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
    if (slash < 0)
        return QString();
    return slash == 0 ? QStringLiteral("/") : path.left(slash);
}

// The text after the last point of the name, if that point is not its last character.
QString extension_of(const QString& file_name)
{
    const qsizetype point = file_name.lastIndexOf(QLatin1Char('.'));
    if (point < 0)
        return QString();
    return file_name.mid(point + 1);
}

bool refuse(TextBoxLike& box, const QString& message, int style)
{
    box.setFocus();
    engine::MsgBox(message, style, App_Title());
    return false;
}

}  // namespace

int Glob_File_Check(const QString& name, QString& error_text)
{
    error_text.clear();
    if (name.trimmed().isEmpty())
        return 0;
    QFile file(name);
    if (file.open(QIODevice::ReadOnly)) {
        file.close();
        return 1;
    }
    return check_of_failure(open_failure(name, file), error_text);
}

void Split_Path(const QString& full, QString& drive, QString& folder, QString& file, QString& extension)
{
    drive = full.startsWith(QLatin1Char('/')) ? QStringLiteral("/") : QString();
    const QString file_name = last_component(full);
    extension = extension_of(file_name);
    if (extension.isEmpty()) {
        folder = full;
        file.clear();
        return;
    }
    folder = parent_folder(full);
    file = file_name.left(file_name.size() - extension.size() - 1);
}

QString build_path(const QString& folder, const QString& name)
{
    if (folder.isEmpty())
        return name;
    if (name.isEmpty())
        return folder;
    QString joined = folder;
    while (joined.endsWith(QLatin1Char('/')))
        joined.chop(1);
    qsizetype start = 0;
    while (start < name.size() && name.at(start) == QLatin1Char('/'))
        ++start;
    return joined + QLatin1Char('/') + name.mid(start);
}

bool Check_New_Database_Name(TextBoxLike& box, bool must_not_exist)
{
    const QString typed = box.text().trimmed();
    box.setText(typed);
    if (typed.isEmpty())
        return refuse(box, QStringLiteral("Enter a New database name and try again."), engine::mb::Information);

    QString drive, folder, file, extension;
    Split_Path(typed, drive, folder, file, extension);
    if (drive.isEmpty())
        return refuse(box, QStringLiteral("Error: This must be a full file name,  including the drive."),
                      engine::mb::OkOnly);
    const QString name = extension.isEmpty() ? typed + QStringLiteral(".mdb") : typed;
    if (!must_not_exist)
        return true;

    QString error_text;
    switch (Glob_File_Check(name, error_text)) {
    case 1:
        return refuse(box, QStringLiteral("This filename already exists.\nEnter a new filename and try again."),
                      engine::mb::Information);
    case 2:
        return refuse(box,
                      QStringLiteral("Invalid directory or drive - ") + error_text +
                          QStringLiteral("\nEnter a new filename and try again."),
                      engine::mb::Information);
    default:
        return true;
    }
}
