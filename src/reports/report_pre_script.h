#pragma once
// The script a report of the list may need run first, such as the course
// costs script before the course costs report. "?CrsCosts", "?InTerms" and
// "?InActDts" stand for the scripts the settings name; any other name is a
// file in the script folder.

#include <QString>

// The path of the script `pre_script` names; false for a "?" name that
// stands for none of the three.
bool resolve_pre_script(const QString& pre_script, QString& path);

// Runs the script `pre_script` names before the report at `report_path`.
// True when there is none or it was applied. A failure is reported and left
// in `status`: "Error occurred in script <name> before the report <report>
// could be run."
bool Run_Pre_Script(const QString& pre_script, const QString& report_path, QString& status);
