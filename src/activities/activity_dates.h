#pragma once
// What hangs on an activity date, and what changing one does to it. The date
// is the key of the activity side: entries (Exam_Results.Results_Date) and
// activity invoices (Invoices.Invoice_Activity_Date) belong to it, and
// follow it or go when it changes.

#include <QDateTime>
#include <functional>

// The entries, invoices and receipts of a date; -1 where the count could not
// be read, which counts as not in use.
struct DateUses {
    int results = -1;
    int invoices = -1;
    int receipts = -1;
};

// The three counts, in the order entries, invoices, receipts. A count that
// comes back without a row is told to the user, once for each, and stays -1.
DateUses Count_Date_Uses(const QDateTime& date);

// A date with entries, invoices or receipts is not deleted.
bool Date_In_Use(const DateUses& uses);

// Before a date's record is changed: money received blocks any change (told
// to the user), and the invoices of the date, which the change deletes, go
// only when the user agrees. False: the change is not to be made.
bool Date_Change_Allowed(const DateUses& uses);

// The change, in one transaction: the entries of the old date move to the
// new one, the invoices of the old date and their lines are deleted (the
// user must invoice again), and `write_record` stores the date's own record.
// On any failure everything is rolled back and false comes with the engine's
// error still set (3022 when the record's date is another's).
bool Change_Activity_Date(const DateUses& uses, const QDateTime& old_date, const QDateTime& new_date,
                          const std::function<bool()>& write_record);

// A date field's text after it is left: a text that reads as the date before
// the zero date is written in the long date format; any other date stays as
// typed. False (error 13 set) for a text that is no date.
bool Date_Text_After_Leaving(QString& text);
