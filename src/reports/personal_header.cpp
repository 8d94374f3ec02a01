#include "reports/personal_header.h"

#include "shell/file_checks.h"
#include "shell/settings.h"

#include <QFileInfo>

void GCR_Find_Personal_Header(QString& personal_dir, QString& header_path)
{
    personal_dir.clear();
    header_path.clear();
    const QString standard_list = build_path(Settings().report_format_dir, QStringLiteral("zrepfmt.lst"));
    const QString& list = Settings().report_list;
    if (Settings().report_format_dir.trimmed().isEmpty() || list.trimmed().isEmpty() || list == standard_list)
        return;
    personal_dir = QFileInfo(list).absolutePath();
    const QString header = build_path(personal_dir, QStringLiteral("PrtHead.rpt"));
    if (QFileInfo(header).isFile())
        header_path = header;
}
