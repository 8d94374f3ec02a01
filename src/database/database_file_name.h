#pragma once
// The file behind a database name typed on the administration screens.

#include <QString>

// The name the engine is given for a typed name: trimmed, with ".mdb" added
// when it has no extension, since that is the file the engine would make or
// look for.
QString database_file_name(const QString& typed);

// True when the two names lead to one file (letter case and "." or ".."
// steps included, on a file that exists).
bool same_database_file(const QString& one, const QString& other);
