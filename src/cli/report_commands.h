#pragma once
// quillary-cli report: a report file run against a database into a file, as
// the Reports screen exports it.

#include <QString>
#include <QStringList>

namespace cli {

QString report_usage();
// -1 when the command isn't this module's; 2 for wrong arguments; 0 done; 1 failed.
int run_report_command(const QString& command, QStringList args);

}  // namespace cli
