#pragma once
// Deletions guarded by counts. Before a screen deletes a record, its guard
// counts what refers to it, asks or refuses, and makes the references safe.
// True means that the caller may go on and delete its record (the guards
// leave the record itself in place; DB_Delete_Pupil deletes the pupil).
// They run on the current database and the program's workspace.

#include <QtGlobal>

// Deletes a pupil with its registers and results, in a transaction of its
// own; refused while any invoice line names the pupil.
bool DB_Delete_Pupil(qint32 pupil_id);

// A family with invoices is refused. Otherwise its pupils are deleted, each
// in a transaction nested in the family's; at the first pupil that can't be
// deleted the answer is false and the family's transaction is left open.
bool Check_Family_Deletion(qint32 family_id);

// Refuses a teacher who teaches a course, is an activity's teacher, or is
// named in results, with the count; changes nothing.
bool Check_Teacher_Deletion(qint32 teacher_id);
