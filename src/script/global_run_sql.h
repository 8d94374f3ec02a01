#pragma once
// Running a script file: the school's own SQL steps of invoicing, read line by
// line inside one transaction on the program's workspace.

#include <QString>

// Runs the script file at `path` on the current database. True only when the
// whole file was applied and committed; the status then reads the text of
// the last display line followed by " Script successfully applied".
//
// Anything else leaves the database as it was: a failed statement that the
// user (or the file's own rules) won't pass over undoes the run with the
// status "Script file abandoned and all changes undone"; a No to a question
// line undoes it and leaves the status as it stood. A file that can't be
// opened is reported and leaves the status untouched.
bool Global_Run_SQL(const QString& path, QString& status);
