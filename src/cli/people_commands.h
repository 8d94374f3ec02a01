#pragma once
// quillary-cli import-pupils: a file of pupils read into a school, as the
// Import Pupil Details screen reads it.

#include <QString>
#include <QStringList>

namespace cli {

// import-pupils FILE [--database DB] [--header] [--skip-refused]
// Without --database the school is the default database of the settings.
// --header: the first line holds the column headings. A refused line stops
// the import and nothing is kept, unless --skip-refused passes over it.
// Gives -1 when the command isn't this one, else the exit status: 0 done,
// 1 refused or failed (the reason on standard error), 2 wrong arguments.
int run_people_command(const QString& command, QStringList args);
QString people_usage();

}  // namespace cli
