#pragma once
// An invoice and its lines made or changed by hand. The screen holds what the
// secretary typed and chose; these routines turn it into the values the
// stored queries take, work out the kind of each line, store the invoice and
// its lines, read them back, and fill the lists the screen chooses from.
//
// Refusals come back as words for the screen to show. Failures of the
// database are reported here, as the screen's own (module "fInvLine" for the
// saves, "fInvLines" for the lists, "fInvoices" for the reads).

#include "engine/currency.h"

#include <QDate>
#include <QDateTime>
#include <QString>
#include <optional>
#include <vector>

// A list's choice as the screen holds it: the item data of the chosen entry,
// or nothing when no entry at all is chosen (which differs from choosing
// "(Blank)", whose item data is 0).
using ListChoice = std::optional<int>;

// ---- The lists ----

struct ListEntry {
    QString text;
    int item_data = 0;
};
using ListEntries = std::vector<ListEntry>;

// The entries every list shares.
QString Blank_Entry();           // "(Blank)": choosing nothing
QString None_Entry();            // "(None)": the database gave no rows
QString Not_Applicable_Entry();  // "(Not Applicable)": courses and activities of the "(Blank)" pupil

// Every term, newest first: "(Blank)" then the terms, or "(None)" alone.
bool Invoice_Term_Entries(ListEntries& entries);
// Every activity date, newest first, as the date in the long date format, a
// blank and its title: "(Blank)" then the dates, or "(None)" alone.
bool Invoice_Activity_Date_Entries(ListEntries& entries);
// The text of an activity date's entry, and the date that begins such a
// text; nothing for "(Blank)", "(None)" or any text that doesn't begin with a date.
QString Activity_Date_Entry_Text(QDate day, const QString& title);
std::optional<QDate> Activity_Date_At_Head(const QString& entry_text);

// The family's pupils by first name, item data the pupil's id.
bool Family_Pupil_Entries(int family_id, ListEntries& entries);

// Which pupil the course and activity lists are for.
enum class PupilFor {
    No_Invoice,  // the invoice isn't stored yet: "(None)"
    No_Pupil,    // no entry chosen in the pupils' list: an empty list
    Blank,       // "(Blank)" chosen, a line for the family: "(Not Applicable)"
    Pupil,       // a pupil: the rows of the database
};
// The pupil's courses, item data the course's id.
bool Pupil_Course_Entries(PupilFor pupil_for, int pupil_id, ListEntries& entries);
// The pupil's activities on the invoice's activity date, as the title, " on "
// and the date; item data the activity's id. Without a date there are none.
bool Pupil_Activity_Entries(PupilFor pupil_for, int pupil_id, std::optional<QDate> activity_date,
                            ListEntries& entries);

// ---- The invoice ----

// The invoice's half of the screen, as typed and chosen.
struct InvoiceTyped {
    QString date;
    QString reason;
    QString notes;
    ListChoice term;                              // item data of the chosen term
    std::optional<QString> activity_date_entry;   // text of the chosen activity date's entry
};

// What Qry_Insert_Invoice and Qry_Update_Invoice are given.
struct InvoiceHeader {
    int family_id = 0;
    QDateTime invoice_date;  // the day typed, at the time of day it was stored
    QString reason;
    QString notes;
    std::optional<int> term_id;
    std::optional<QDate> activity_date;
};

enum class InvoiceField { None, Date, Reason, Term };

struct EntryRefusal {
    int field = 0;      // the field to go back to: an InvoiceField or a LineField
    QString message;    // empty when all is well
    bool refused() const { return !message.isEmpty(); }
};

// The invoice's rules, in the order the secretary meets them. The invoice
// date is the day typed at `time_of_day`, so that two invoices raised on one
// day differ. An invoice may be for a term, for an activity date, or, with
// "(Blank)" chosen, for neither; one chosen in neither list is refused.
EntryRefusal Check_Invoice_Entry(const InvoiceTyped& typed, int family_id, QTime time_of_day,
                                 InvoiceHeader& header);

enum class SaveOutcome {
    Saved,
    Duplicate,  // the family has an invoice with this reason for the term or date: nothing stored, nothing reported
    Failed,     // reported, nothing stored
};

struct InvoiceSave {
    SaveOutcome outcome = SaveOutcome::Failed;
    int invoice_id = 0;
    QString status;  // what the status line says; empty for a duplicate
};

// Stores a new invoice entered by hand, in one transaction, and finds its id
// again by its family, reason, date and its term or activity date (the
// engine gives no id back).
InvoiceSave DB_Insert_Manual_Invoice(const InvoiceHeader& header);
// Writes an invoice's header.
InvoiceSave DB_Update_Manual_Invoice(int invoice_id, const InvoiceHeader& header);

// An invoice as stored.
struct InvoiceRecord {
    int invoice_id = 0;
    int family_id = 0;
    QDateTime invoice_date;
    QString reason;
    QString notes;
    std::optional<int> term_id;
    std::optional<QDate> activity_date;
    int generated = 0;
};
// Reads an invoice; `found` is false when there is none of that id.
bool DB_Read_Invoice(int invoice_id, InvoiceRecord& invoice, bool& found);

// ---- The lines ----

// The kind of line (Inv_Line_Type) that the choices make: a pupil's line
// (7) or the family's (8, for "(Blank)" or no pupil), a course's (3) or an
// activity's (1) when one is chosen; a line with no entry at all chosen in
// either list and an amount above 0 is a manual amount (4). Later rules
// replace earlier ones, so a discount for a pupil stays a pupil's line.
struct LineChoices {
    ListChoice pupil;
    ListChoice course;
    ListChoice activity;
    engine::Currency amount;
};
int Invoice_Line_Type(const LineChoices& choices);

// The line's half of the screen, as typed and chosen.
struct LineTyped {
    QString amount;
    QString invoice_id;  // the Current Invoice box
    ListChoice pupil;
    ListChoice course;
    ListChoice activity;
    QString description;
};

// What Qry_Insert_Invoice_Line and Qry_Update_Invoice_Line are given.
struct LineValues {
    int invoice_id = 0;
    std::optional<int> pupil_id;
    std::optional<int> course_id;
    std::optional<int> activity_id;
    int type = 0;
    engine::Currency amount;
    QString description;
};

enum class LineField { None, Amount, Invoice, Pupil };

// The line's rules. A negative amount is a discount and is allowed; a line
// needs no description.
EntryRefusal Check_Line_Entry(const LineTyped& typed, LineValues& line);

struct LineSave {
    bool ran = false;     // false: the database failed, and that was reported
    bool stored = false;  // exactly one line written
    QString status;       // what the status line says when it ran
};
// Adds the line (line_id 0) or writes it.
LineSave DB_Save_Invoice_Line(int line_id, const LineValues& line);

// A line as stored.
struct LineRecord {
    int line_id = 0;
    int invoice_id = 0;
    std::optional<int> pupil_id;
    std::optional<int> course_id;
    std::optional<int> activity_id;
    int type = 0;
    QString description;
    engine::Currency amount;
};
bool DB_Read_Invoice_Line(int line_id, LineRecord& line, bool& found);
