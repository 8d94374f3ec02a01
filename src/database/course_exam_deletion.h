#pragma once
// The guards before a course or an activity is deleted. Each counts the
// register entries and the invoice lines that refer to the record, asks
// before removing the entries and before turning the lines into lines
// without a course or activity, and does it all in one transaction on the
// current database. True means the caller may delete the record itself;
// a No, a failure or a count that doesn't match what was changed rolls
// everything back and gives false.

#include <QtGlobal>

bool Check_Course_Deletion(qint32 course_id);
bool Check_Exam_Deletion(qint32 activity_id);
