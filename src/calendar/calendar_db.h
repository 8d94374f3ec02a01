#pragma once
// The calendar's database operations: holidays, the deletion of a term, and
// the count of invoices that hang on a term. Each reports its own failure.

#include <QDate>

// Makes a day a holiday (Qry_Insert_Holiday). Committed at once: a holiday
// belongs to no term.
bool DB_Insert_Holiday(QDate day);
// Makes a day a school day again (Qry_Delete_Holiday).
bool DB_Delete_Holiday(QDate day);

// Removes the holidays before the oldest term's start; all of them when no
// term is left. Holidays beyond the last term stay.
bool DB_Tidy_Holidays();

// Deletes a term, its lesson counts and its course costs, and tidies the
// holidays, in one transaction. Refused (with a message) while invoices
// reference the term. True when the term is gone.
bool DB_Delete_Term(int term_id);

// The number of invoices of a term; below 0 when it couldn't be counted.
int DB_Term_Invoice_Count(int term_id);
