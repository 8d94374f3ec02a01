#pragma once
// The help behind Show_Help: the user manual is a folder of pages, "manual"
// in the install folder, one page per help context named by its number
// ("1610.html"), with "index.html" for the contents and "help_on_help.html"
// for help on using the help. This side decides which page a request means
// and keeps whether help is open; the screen side shows the page in the
// program's own help window.

#include <QString>

namespace help {

// The commands of a help request.
inline constexpr int Context = 1;
inline constexpr int Quit = 2;
inline constexpr int Contents = 3;
inline constexpr int Help_On_Help = 4;

// The help context of each screen: a fixed number, and so the name of its page.
namespace context {
inline constexpr int How_To_Get_Help = 1000;
inline constexpr int Main_Menu = 1010;
inline constexpr int Audit_Log = 1020;
inline constexpr int About = 1030;
inline constexpr int Select_File = 1040;
inline constexpr int Change_Defaults = 1050;
inline constexpr int Preferences = 1060;
inline constexpr int Change_Database = 1210;
inline constexpr int Database_Control = 1220;
inline constexpr int Database_Statistics = 1230;
inline constexpr int Term_Dates = 1410;
inline constexpr int Automated_Invoices = 1510;
inline constexpr int Invoices = 1520;
inline constexpr int Invoice_Lines = 1530;
inline constexpr int Receipts = 1540;
inline constexpr int Families = 1610;
inline constexpr int Pupils = 1620;
inline constexpr int Pupil_Import = 1630;
inline constexpr int Teachers = 1640;
inline constexpr int Courses = 1710;
inline constexpr int Course_Register = 1720;
inline constexpr int Activities = 1810;
inline constexpr int Activity_Dates = 1820;
inline constexpr int Activity_Register = 1830;
inline constexpr int Exam_Timetable = 1840;
inline constexpr int Activity_Results = 1850;
inline constexpr int Reports = 1910;
inline constexpr int Report_Selections = 1920;
inline constexpr int Report_Messages = 1930;
}  // namespace context

// The manual's folder; empty when it isn't there, which means "no help file".
QString manual_folder();
// Where the manual belongs: the folder "manual" in the install folder.
QString expected_manual_folder();

// What is missing when a page can't be opened.
enum class Missing { Nothing, Manual, Page };

// What a request asks for.
struct Request {
    bool act = false;                 // false: nothing to do, Show_Help gives false
    QString page;                     // the page to open; empty for Quit
    Missing missing = Missing::Nothing;  // why a page asked for can't be opened
    QString missing_path;             // the folder or page that isn't there
};
Request resolve(int command, int context);

// The words that tell the user what is missing; empty when nothing is.
QString missing_words(const Request& request);

// Whether a page was opened and not closed by a Quit since.
bool& help_is_open();

}  // namespace help
