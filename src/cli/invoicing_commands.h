#pragma once
// The command-line tool's commands for scripts, term dates and invoicing.

#include <QString>
#include <QStringList>

namespace cli {

// Runs one of:
//   run-script DB FILE [--yes|--no]
//   term save DB --name NAME --start YYYY-MM-DD --end YYYY-MM-DD [--id ID]
//   holiday add|remove DB YYYY-MM-DD
//   invoice terms DB [--term ID]... [--course ID]... [--pupil ID]...
//   invoice activities DB [--date YYYY-MM-DD]... [--activity ID]... [--pupil ID]...
//   invoice delete DB all|paid
//   invoice delete DB terms|activities [the selection options above]
// The invoice commands take [--yes|--no] and [--scripts DIR], a folder of
// CrsCosts.sql, InTerms.sql and InActDts.sql in place of the settings' scripts.
// Gives -1 when the command isn't one of these, else the exit status: 0 done,
// 1 failed, refused or cancelled, 2 wrong arguments.
int run_invoicing_command(const QString& command, QStringList args);
QString invoicing_usage();

}  // namespace cli
