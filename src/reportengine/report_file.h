#pragma once
// Report files: the XML text format documented in docs/report-format.md,
// read strictly (anything the format does not know is refused with the
// file's name, the line and what was wrong) and written back in the same form.

#include "reportengine/report_definition.h"

#include <QString>

namespace reportengine {

struct ReportFileError {
    QString file;
    int line = 0;
    QString message;
    QString text() const;  // "<file>, line <n>: <message>"
};

// Reads a report file; false with the error when it can't.
bool read_report_file(const QString& path, ReportDefinition& report, ReportFileError& error);
// The same from text already in memory; `path` only names it in errors.
bool read_report_text(const QByteArray& xml, const QString& path, ReportDefinition& report, ReportFileError& error);

// Writes a report back; false with the error when the file can't be written.
bool write_report_file(const ReportDefinition& report, const QString& path, ReportFileError& error);
QByteArray report_text(const ReportDefinition& report);

}  // namespace reportengine
