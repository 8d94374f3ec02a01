#pragma once
// Putting a pupil on a course register and taking one off, on the current
// database. Each change is added to the list of changed pupils, so that
// invoicing can take it up.

#include <QString>
#include <QtGlobal>

// False, after one message, when the pupil is on the register already.
bool DB_Add_Pupil_To_Course(qint32 course_id, qint32 pupil_id, const QString& pupil_name);
bool DB_Delete_Pupil_From_Course(qint32 course_id, qint32 pupil_id);
