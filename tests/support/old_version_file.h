#pragma once
// Database files of the old versions, as the upgrade finds them: a current
// file with a small school in it, taken back one step at a time by removing
// what each upgrade step adds. Every file of version 2 on holds courses with
// free-text teachers, and every file holds entries on three dates.

#include <QString>
#include <QStringList>

namespace upgrade_testing {

// Writes a file of `version` (0 to 13) at `path`. Version 0 is a version 1
// file whose Sys_tab says 0. An old file keeps only the stored query that
// opening needs (Qry_Select_Sys); its creation and backup dates lie in 2001
// and its backup file name is "old.bak".
void make_old_version_file(const QString& path, int version);

// The tables, columns (with declared types), indexes and triggers of a file,
// one line each, sorted: two files of the same schema give the same list.
QStringList schema_outline(const QString& path);

}  // namespace upgrade_testing
