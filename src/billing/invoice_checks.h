#pragma once
// What a run checks before it raises invoices.

// Warns of courses that run (neither suppressed nor cancelled) without a
// cost, or at a cost of 0, in some term of Tmp_CourseCosts, and asks whether
// to cancel. False when the user cancels the run.
bool Check_Course_Costs();

// The invoices already raised for the dates in Tmp_Activities; below 0 when
// they couldn't be counted.
int DB_Activity_Invoice_Count();
