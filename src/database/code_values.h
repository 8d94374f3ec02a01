#pragma once
// The stored codes, in one place. The program builds these numbers and
// letters into SQL and compares rows with them; every subsystem uses these
// names rather than numbers of its own.

#include <QString>

namespace code {

// Sys_tab.s_DB_Type: below this is an old (upgradable) file, above it is refused.
inline constexpr int Current_DB_Version = 13;

// The one row of Standard_Values has this stndrd_id; every query selects it.
inline constexpr int Standard_Values_Row = 1;

// Sys_tab.s_Style_Type, and the setting $FL: where the file locations are kept.
namespace style_type {
inline constexpr int Locations_In_Database = 1;
inline constexpr int Locations_In_Settings = 2;  // the default
}  // namespace style_type

// Exams.Exam_Type: the kind of activity.
namespace exam_type {
inline constexpr int Unknown = 0;
inline constexpr int Exam = 1;         // timetabled, marked, graded
inline constexpr int Show = 2;         // Show_Cost_per_Pupil applies
inline constexpr int Outing = 3;
inline constexpr int Competition = 4;  // festival results
inline constexpr int Spare = 5;        // left for the school's own use
inline constexpr int Count = 6;

// The type list's texts, indexed by code.
inline QString text(int type)
{
    static const char* const texts[Count] = {"Unknown", "Exam", "Show", "Outing", "Competition", "Spare"};
    return type >= 0 && type < Count ? QString::fromLatin1(texts[type]) : QString();
}
}  // namespace exam_type

// Invoices.Invoice_Generated: how an invoice arose.
namespace invoice_generated {
inline constexpr int Automatic = 0;    // raised by a run, final
inline constexpr int Manual = 1;       // entered on the invoice lines screen
inline constexpr int Provisional = 2;  // raised by a run, not yet final
}  // namespace invoice_generated

// Invoice_Lines.Inv_Line_Type; lines are shown sorted by it. 5 is unused.
namespace inv_line_type {
inline constexpr int Activity = 1;            // price of an activity for a pupil
inline constexpr int Activity_Expenses = 2;   // described "... Expenses"
inline constexpr int Course = 3;              // a course for a pupil
inline constexpr int Manual_Amount = 4;       // no course or activity chosen
inline constexpr int Show_Cost_Per_Pupil = 6; // family-level "Cost per Pupil Expenses"
inline constexpr int Pupil_Only = 7;          // neither course nor activity (or it was deleted)
inline constexpr int No_Pupil = 8;
inline constexpr int Written_Off = 9;         // "Amount written off"
}  // namespace inv_line_type

// Standard_Values.VAT_Type.
namespace vat_type {
inline constexpr int None = 1;      // the value of a new database
inline constexpr int In_Total = 2;
inline constexpr int By_Script = 3;

inline QString text(int type)
{
    switch (type) {
    case None: return QStringLiteral("Not VAT Registered");
    case In_Total: return QStringLiteral("VAT included in all prices");
    case By_Script: return QStringLiteral("VAT calculated using script");
    default: return QString();
    }
}
}  // namespace vat_type

// Pupils.Pupil_Gender. The lower-case letters hide a pupil from the working
// lists without deleting it; hiding and showing swaps the letter.
namespace gender {
inline constexpr char Male = 'M';
inline constexpr char Female = 'F';
inline constexpr char Hidden_Male = 'b';
inline constexpr char Hidden_Female = 'g';
}  // namespace gender

// Courses.Day_of_Week and Number_Lessons.Day_Number, numbered as the SQL
// function weekday() numbers them. Screens index the same days 0 to 6.
namespace weekday {
inline constexpr int Sunday = 1;
inline constexpr int Monday = 2;
inline constexpr int Tuesday = 3;
inline constexpr int Wednesday = 4;
inline constexpr int Thursday = 5;
inline constexpr int Friday = 6;
inline constexpr int Saturday = 7;
}  // namespace weekday

}  // namespace code
