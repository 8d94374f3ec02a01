#include "ui/admin/database_file_choice.h"

#include "toolkit/file_select.h"
#include "ui/toolkit/frm_select_file.h"

#include <QDir>
#include <QLineEdit>

void Choose_Database_File(QWidget* screen, QLineEdit* name_box, const QString& start_name)
{
    FileSelectRecord& request = Glob_File_Select();
    request = FileSelectRecord{};
    const QString typed = name_box->text().trimmed();
    const QString start = typed.isEmpty() ? start_name.trimmed() : typed;
    request.Start_Path = start.isEmpty() ? QDir::homePath() : start;
    // An existing database may be chosen, or a new one named.
    request.Select_New_File = true;
    request.Filters[0] = {QStringLiteral("Database Files (*.") + QStringLiteral("mdb") + QLatin1Char(')'),
                          QStringLiteral("*.") + QStringLiteral("mdb")};
    // Shown as "All Files (*)": every file, those without an extension too.
    request.Filters[1] = {QStringLiteral("All Files"), QStringLiteral("*.*")};
    request.Extension = QStringLiteral("mdb");
    if (frm_Select_File::Select(screen))
        name_box->setText(request.Out_Path);
}
