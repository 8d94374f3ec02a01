#pragma once
// Laying a report's rows onto pages: the report header first, a page header
// at the top and a page footer at the foot of every page, group headers and
// footers where the groups change, details in between, the report footer at
// the end. A group marked to keep together starts on a new page when it
// would not fit where it stands but fits on a page. Page numbers and the
// page count are known to every formula ("Page 2 of 5").

#include "reportengine/page_model.h"
#include "reportengine/report_data.h"

#include <QDateTime>
#include <QLocale>
#include <functional>

namespace reportengine {

// A subreport ready to print: its definition, formulas and rows.
struct Subreport {
    ReportDefinition definition;
    ReportFormulas formulas;
    ReportData data;
};
// Finds a subreport by the file name its object gives; null, with the error,
// when it can't be read.
using SubreportLoader = std::function<const Subreport*(const QString& file, QString& error)>;

struct LayoutSettings {
    QDateTime print_date = QDateTime::currentDateTime();
    QLocale locale;  // the currency sign and its place
};

bool lay_out_report(const ReportDefinition& report, const ReportFormulas& formulas, const ReportData& data,
                    const SubreportLoader& subreports, const LayoutSettings& settings, PageModel& model, QString& error);

// A value as a field of this format shows it.
QString formatted(const Value& value, const FieldFormat& format, const QLocale& locale);

}  // namespace reportengine
