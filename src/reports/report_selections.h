#pragma once
// The selections chosen on the Select Report Criteria screen, turned into what
// a report run needs: a record or group selection formula for the report
// engine ("({Term_Dates.Term_id} = 7 OR {Term_Dates.Term_id} = 9)") and a
// text that tells the user what was chosen ("Spring 2026, Summer 2026, ").
//
// Each routine reads one of the selection lists (shell/selection_lists.h) and
// the current database. `invoice_form` (the +8 flag of a report's parameter
// byte) picks the invoice tables' field instead of the master table's.
// `status` is 1 when a selection was made, 0 when nothing was selected or the
// names couldn't be read. A failure to read them is reported (module
// "freports") and gives false with status 0 and both texts empty.

#include <QString>

namespace selections {

// Sel_Terms: {invoices.invoice_term_id} or {Term_Dates.Term_id}; term names.
bool Setup_Terms(bool invoice_form, QString& selection, QString& shown, int& status);
// Sel_Courses: {Invoice_Lines.Inv_Line_Course_id} or {Courses.Course_id}; course titles.
bool Setup_courses(bool invoice_form, QString& selection, QString& shown, int& status);
// Sel_Pupils: {Invoice_Lines.Inv_Line_Pupil_id} or {pupils.pupil_id}; first
// name and family name of each pupil.
bool Setup_pupils(bool invoice_form, QString& selection, QString& shown, int& status);
// Sel_Activities: {Invoice_Lines.Inv_Line_Exam_id} or {exams.exam_id}; activity titles.
bool Setup_exams(bool invoice_form, QString& selection, QString& shown, int& status);
// Sel_Pupils, as the families they belong to: {invoices.invoice_family_id} or
// {families.family_id} of each distinct family; family names.
bool Setup_Pupil_Families(bool invoice_form, QString& selection, QString& shown, int& status);
// Changed_Pupils, as Setup_pupils. Its query of the pupils' names names the
// table "Pupil", which doesn't exist, so any non-empty list fails here and is
// reported; the failure is kept as the program has always had it.
bool Setup_Changed_Pupils(bool invoice_form, QString& selection, QString& shown, int& status);
// Changed_Pupils, as Setup_Pupil_Families.
bool Setup_Changed_Families(bool invoice_form, QString& selection, QString& shown, int& status);
// Sel_Activity_Dates: {invoices.invoice_Activity_Date} or
// {Exam_Results.Results_Date} in the report engine's form Date(2005,3,14);
// the dates in the long date format, joined by ", ".
bool Setup_Dates(bool invoice_form, QString& selection, QString& shown, int& status);

// The invoices that the billing side left in Tmp_Invoices, as
// ({Invoices.Invoice_id} = 12 OR ...); Tmp_Invoices is emptied afterwards, so
// that each list of invoices serves one report.
bool Setup_Invoices(QString& selection, int& status);

}  // namespace selections
