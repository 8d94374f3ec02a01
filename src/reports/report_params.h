#pragma once
// What a report of the list asks of the request: the selections its bytes
// call for, built from the selection lists into the request's record or group
// selection, with a row of words per kind for the screen; its formula; and
// the notice text chosen for it.

#include "reports/report_list.h"

#include <QString>
#include <array>

// A parameter byte: a level (0 unknown, 1 not used, 2 optional, 3 mandatory)
// with flags added: +16 the selection goes into the record selection (else
// the group selection), +8 it uses the invoice tables' fields, +4 pupils are
// taken as their whole families.
struct ParamNeed {
    enum Level { Unknown = 0, Not_Used = 1, Optional = 2, Mandatory = 3 };
    int level = Unknown;
    bool record_selection = false;
    bool invoice_form = false;
    bool families = false;
};
ParamNeed decode_param_byte(quint8 byte);

// One row of "Selected Criteria": hidden for a kind the report doesn't use;
// otherwise "Mandatory", "Optional" or "Unknown", how many are chosen ("All",
// "One", "Some") and what they are.
struct ParamRow {
    bool visible = false;
    QString requirement;
    QString amount;
    QString shown;
};
using ParamRows = std::array<ParamRow, Param_Count>;

// The captions of the rows: "Terms", "Courses", ... "Changed Pupils".
QString param_caption(int kind);

// Sets GCR_Record_Selection and GCR_Group_Selection to the entry's own and
// adds the selection of each kind the entry uses. A mandatory kind with
// nothing selected shows "This report needs a Term." (and the like) and
// gives false, leaving the rows of the kinds after it as they were.
bool Report_Params(const ReportEntry& entry, ParamRows& rows);

// All rows hidden: no report, or one whose file isn't chosen yet.
void hide_rows(ParamRows& rows);

// The entry's formula name and value into the request.
void Report_Formulae(const ReportEntry& entry);

// The notice text for the report: for an entry that takes notices, the
// chosen kind (1 Course to 6 Spare; 0 for none chosen) as text; else empty.
void Report_Notices(const ReportEntry& entry, int chosen);

// The invoices that invoicing has just raised (Tmp_Invoices), when there are
// any, go before the request's group selection. Each list serves one report.
void Add_Invoice_Selection();
