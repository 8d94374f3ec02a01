#include "reports/report_outputs.h"

#include "reportengine/report_definition.h"
#include "shell/file_checks.h"
#include "shell/settings.h"

#include <QFileInfo>

const QVector<OutputKind>& output_kinds()
{
    static const QVector<OutputKind> kinds = {
        {QStringLiteral("WORD Format"), 1, QStringLiteral("doc")},
        {QStringLiteral("EXCEL 97"), 2, QStringLiteral("xls")},
        {QStringLiteral("EXCEL without Headers/Footers"), 3, QStringLiteral("xls")},
        {QStringLiteral("Comma separated(CSV)"), 4, QStringLiteral("csv")},
        {QStringLiteral("Text"), 5, QStringLiteral("txt")},
        {QStringLiteral("Rich Text Format"), 6, QStringLiteral("rtf")},
    };
    return kinds;
}

QString extension_of(int type)
{
    if (type == 7)
        return QStringLiteral("htm");
    for (const OutputKind& kind : output_kinds())
        if (kind.type == type)
            return kind.extension;
    return QString();
}

QString proposed_output_file(const QString& report_file, const QString& extension)
{
    return build_path(Settings().report_output_dir,
                      QFileInfo(report_file).completeBaseName() + QLatin1Char('.') + extension);
}

QString printer_paper_words(int paper_size, int orientation)
{
    using namespace reportengine;
    QString paper_word = QStringLiteral("Unknown");
    switch (paper_size) {
    case paper::A4: paper_word = QStringLiteral("A4"); break;
    case paper::A5: paper_word = QStringLiteral("A5"); break;
    case paper::DL_Envelope: paper_word = QStringLiteral("DL Envelope"); break;
    default: break;
    }
    QString orientation_word = QStringLiteral("Unknown");
    if (orientation == orientation::Portrait)
        orientation_word = QStringLiteral("Portrait");
    else if (orientation == orientation::Landscape)
        orientation_word = QStringLiteral("Landscape");
    return paper_word + QStringLiteral(" - ") + orientation_word;
}
