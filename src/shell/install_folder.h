#pragma once
// The install folder F: where the default database, report formats, scripts
// and log live.

#include <QString>

// The executable's folder when it holds database/, repfmts/ and scripts/ (the
// build tree, an unpacked copy); otherwise the user's data folder.
QString Install_Folder();

// Fixes the install folder; an empty name goes back to finding it.
void set_install_folder_for_tests(const QString& folder);
