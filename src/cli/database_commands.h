#pragma once
#include <QStringList>

namespace cli {
// create, refresh-queries, query and sql. Returns -1 when the command isn't one of these.
int run_database_command(const QString& command, QStringList args);
QString database_usage();
}  // namespace cli
