#pragma once
#include <QString>
#include <QStringList>

namespace cli {

// upgrade DB, copy SRC DST [--all], backup SRC DST, merge SRC DST and
// repair DB: the database administration commands. Returns -1 when the
// command isn't one of these, 2 when its arguments are wrong, otherwise the
// exit status. Each prints the status words the administration screens show.
int run_admin_command(const QString& command, QStringList args);

// Their lines of the usage text.
QString admin_usage();

}  // namespace cli
