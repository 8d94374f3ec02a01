#pragma once
// A school's own page heading: a PrtHead.rpt standing beside its personalised
// report list. Both the Reports screen and report generation look for it.

#include <QString>

// The personalised list's folder and the header in it. Both come back empty
// when no personalised list is in force (no list set, or the standard one);
// the header alone is empty when the folder has no PrtHead.rpt.
void GCR_Find_Personal_Header(QString& personal_dir, QString& header_path);
