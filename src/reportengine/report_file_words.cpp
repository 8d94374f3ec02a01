#include "reportengine/report_file_words.h"

namespace reportengine::file_words {

const QHash<QString, int>& paper_words()
{
    static const QHash<QString, int> words = {{QStringLiteral("default"), paper::Default},
                                              {QStringLiteral("A4"), paper::A4},
                                              {QStringLiteral("A5"), paper::A5},
                                              {QStringLiteral("DL"), paper::DL_Envelope}};
    return words;
}

const QHash<QString, int>& orientation_words()
{
    static const QHash<QString, int> words = {{QStringLiteral("default"), orientation::Default},
                                              {QStringLiteral("portrait"), orientation::Portrait},
                                              {QStringLiteral("landscape"), orientation::Landscape}};
    return words;
}

const QHash<QString, FieldFormat::Type>& format_words()
{
    using T = FieldFormat::Type;
    static const QHash<QString, T> words = {
        {QStringLiteral("general"), T::General}, {QStringLiteral("text"), T::Text},   {QStringLiteral("number"), T::Number},
        {QStringLiteral("currency"), T::Currency}, {QStringLiteral("date"), T::Date}, {QStringLiteral("time"), T::Time},
        {QStringLiteral("datetime"), T::DateTime}, {QStringLiteral("boolean"), T::Boolean}};
    return words;
}

const QHash<QString, AreaKind>& area_words()
{
    static const QHash<QString, AreaKind> words = {
        {QStringLiteral("reportHeader"), AreaKind::ReportHeader}, {QStringLiteral("pageHeader"), AreaKind::PageHeader},
        {QStringLiteral("groupHeader"), AreaKind::GroupHeader},   {QStringLiteral("details"), AreaKind::Details},
        {QStringLiteral("groupFooter"), AreaKind::GroupFooter},   {QStringLiteral("pageFooter"), AreaKind::PageFooter},
        {QStringLiteral("reportFooter"), AreaKind::ReportFooter}};
    return words;
}

const QHash<QString, ObjectKind>& object_words()
{
    static const QHash<QString, ObjectKind> words = {{QStringLiteral("field"), ObjectKind::Field},
                                                     {QStringLiteral("text"), ObjectKind::Text},
                                                     {QStringLiteral("line"), ObjectKind::Line},
                                                     {QStringLiteral("box"), ObjectKind::Box},
                                                     {QStringLiteral("subreport"), ObjectKind::Subreport}};
    return words;
}

QString align_word(Qt::Alignment align)
{
    if (align & Qt::AlignRight)
        return QStringLiteral("right");
    if (align & Qt::AlignHCenter)
        return QStringLiteral("center");
    return QStringLiteral("left");
}

}  // namespace reportengine::file_words
