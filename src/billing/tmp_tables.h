#pragma once
// The temporary tables that carry the user's choices into the stored queries
// of the invoicing scripts: filled from the selection lists each time the
// Automated Invoicing screen comes to the front, emptied when it goes.
// Each setup empties its own table first; "nothing selected" means all
// terms, all courses, all pupils, all activities - but an empty list of
// changed pupils means nobody.

#include <QString>

// Empties Tmp_Courses, Tmp_Pupils, Tmp_Terms, Tmp_Activities, Tmp_Invoices
// and Tmp_CourseCosts, in that order.
bool DB_Clear_Tmp_Tables();

// Tmp_Terms from Sel_Terms. With exactly one term chosen, `term_label`
// becomes "- " and its name; otherwise it is left as it is.
bool Setup_Terms(QString& term_label);
// Tmp_Courses from Sel_Courses.
bool Setup_Courses();
// Tmp_Pupils, each pupil with its family, from Sel_Pupils.
bool Setup_Pupils();
// Tmp_Pupils from the changed-pupils list.
bool DB_Setup_Changed_Pupils();
// Tmp_Activities from Sel_Activities and Sel_Activity_Dates. When a chosen
// date has a title, `date_label` becomes "- " and the title.
bool Setup_exams(QString& date_label);
