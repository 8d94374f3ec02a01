// The stored queries of the system table, families, pupils, teachers'
// entries, courses and their registers, activities and their results,
// terms, lessons and holidays.
//
// Tests against NULL with "=" are kept as they stand: they never hold, and
// the screens are written around what these queries give.

#include "database/code_values.h"
#include "database/query_pieces.h"
#include "database/stored_queries.h"

namespace {

using namespace query_piece;
namespace exam = code::exam_type;

const QString exams_and_competitions =
    "(E.Exam_Type = " + num(exam::Exam) + " OR E.Exam_Type = " + num(exam::Competition) + ")";

const QString pupil_parameters =
    "P_FirstName TEXT, P_Surname TEXT, P_Birthdate Date, P_Startdate Date, P_Gender TEXT, P_Marker TEXT, "
    "P_Ref1 TEXT, P_Ref2 TEXT, P_Ref3 TEXT, P_Ref4 TEXT, P_Medical TEXT, P_E_Mail TEXT, P_Special TEXT, "
    "P_Notes TEXT, P_Regn_Fee TEXT, P_Ethn TEXT, P_Family_id LONG";

const QString family_parameters =
    "F_Name TEXT, F_Address TEXT, F_Address2 TEXT, F_Address3 TEXT, F_Address4 TEXT, F_Postcode Text, "
    "F_Phone_1 Text, F_Phone_2 Text, F_Notes Text, F_Marker Text, F_Correspondence Text";

// The entrants of an activity on a date, narrowed by more tables and tests.
QString pupils_doing_exam(const QString& parameters, const QString& more_tables, const QString& more_tests)
{
    return "PARAMETERS " + parameters + "; SELECT " + display_name
           + " AS DisplayName, E.Exam_Title AS Title, R.Results_Date AS EDate, R.Results_Pupil_id AS Pid, "
             "R.Results_Exam_id AS Exam_id FROM Exam_Results R, Pupils P, Families F, Exams E" + more_tables
           + " WHERE R.Results_Exam_id = par_exam_id AND R.Results_Date = par_Date" + more_tests
           + " AND R.Results_Pupil_id = P.Pupil_id AND P.Pupil_Family_id = F.Family_id AND R.Results_Exam_id = E.Exam_id "
             "ORDER BY F.Family_Name, P.Pupil_FirstName;";
}

// Exam entrants of a date not yet marked or graded. The "= NULL" tests never
// hold: only an empty text, a mark of 0 and an empty grade count as "not yet",
// and the timetabled list, which negates such a test, takes it as false, so
// that it lists the entrants with a real time.
QString timetable_entrants(const QString& columns, const QString& time_test, const QString& order)
{
    return "PARAMETERS par_date DATE; SELECT " + display_name + " AS DisplayName, " + columns
           + " FROM Exam_Results R, Exams E, Pupils P, Families F WHERE R.Results_Date = par_Date "
             "AND R.Results_Exam_id = E.Exam_id AND E.Exam_Type = " + num(exam::Exam) + " AND " + time_test
           + " AND (R.Results_Mark = NULL OR R.Results_Mark = 0) AND (R.Results_Grade = NULL OR R.Results_Grade = '') "
             "AND R.Results_Pupil_id = P.Pupil_id AND P.Pupil_Family_id = F.Family_id ORDER BY " + order + ";";
}

// An entry's start time. An entry not yet timetabled has none, rather than
// failing the whole list.
const QString entry_start =
    "(CASE WHEN Exam_Results.Results_Time_txt <> '' THEN CDate(Exam_Results.Results_Time_txt) END)";
const QString entry_end = "DateAdd('n', Exams.Exam_Duration, " + entry_start + ")";

QString count_on_date(const QString& from_where)
{
    return "PARAMETERS p_date DATE; SELECT count(*) AS tmpNum FROM " + from_where + ";";
}

std::vector<StoredQueryText> make_texts()
{
    return {
        // The system table.
        {"Qry_Insert_Sys",
         "PARAMETERS ss_DB_Type byte, ss_Creation_date date, ss_Backup_date date, ss_Backup_filename text; "
         "INSERT INTO Sys_tab (s_DB_Type, s_Creation_Date, s_Backup_Date, s_Backup_filename) "
         "VALUES (ss_DB_Type, ss_Creation_date, ss_Backup_date, ss_Backup_filename);"},
        {"Qry_Update_Sys",
         "PARAMETERS ss_Backup_date date, ss_Backup_filename text; "
         "UPDATE Sys_tab SET s_Backup_Date = ss_Backup_date, s_Backup_filename = ss_Backup_filename;"},
        // The course costs file is set to itself: this query never stores it.
        {"Qry_Update_Sys_Locations",
         "PARAMETERS ss_Style_Type byte, ss_Filename_zrepfmt TEXT, ss_Filename_InvTerm Text, ss_Filename_InvAct Text, "
         "ss_Filename_CrsCost Text; UPDATE Sys_tab SET s_Style_Type = ss_Style_Type, "
         "s_Filename_zrepfmt = ss_Filename_zrepfmt, s_Filename_InvTerm = ss_Filename_InvTerm, "
         "s_Filename_InvAct = ss_Filename_InvAct, s_Filename_CrsCost = s_Filename_CrsCost;"},
        {"Qry_Select_Sys", "SELECT * FROM Sys_tab;"},

        // The four orders of the course list.
        {"Qry_Order_Courses_Title", "SELECT * FROM Courses ORDER BY Course_Title;"},
        {"Qry_Order_Courses_Day", "SELECT * FROM Courses ORDER BY Day_of_Week, Course_Time;"},
        {"Qry_Order_Courses_Location", "SELECT * FROM Courses ORDER BY Course_Location, Course_Title;"},
        {"Qry_Order_Courses_Location_Day",
         "SELECT * FROM Courses ORDER BY Course_Location, Day_of_Week, Course_Time;"},

        // Pupils and families.
        {"Qry_Select_Pupil_Details",
         "SELECT *, " + display_name
             + " AS DisplayName FROM Families F, Pupils P WHERE P.Pupil_Family_id = F.Family_id "
               "ORDER BY F.Family_Name, P.Pupil_FirstName;"},
        // Activity_Titles stands in the FROM list unjoined, and HAVING tests the highest level as a truth.
        {"Qry_Select_Pupil_Exam_Details",
         "PARAMETERS par_Pupil_Id Long; SELECT R.Results_Pupil_id AS Pupil_id, E.Exam_Title AS Exam_Title, "
         "R.Results_Date AS Results_Date, R.Results_Mark AS Results_Mark FROM Exam_Results R, Exams E, Activity_Titles T "
         "WHERE R.Results_Pupil_id = par_pupil_id AND R.Results_Exam_id = E.Exam_id AND E.Exam_Type = " + num(exam::Exam)
             + " GROUP BY R.Results_Pupil_id, E.Exam_Dance, E.Exam_Level, R.Results_Date, R.Results_Mark, E.Exam_Title "
               "HAVING max(E.Exam_Level) ORDER BY E.Exam_Dance;"},
        {"Qry_Select_Pupil_Festival_Details",
         "PARAMETERS par_Pupil_Id Long; SELECT R.Results_Pupil_id AS Pupil_id, T.ActT_Title AS Activity_Title, "
         "R.Results_Date AS Results_Date, E.Exam_Title AS Exam_Title, R.Results_Mark AS Results_Mark "
         "FROM Exam_Results R, Exams E, Activity_Titles T WHERE R.Results_Pupil_id = par_pupil_id "
         "AND R.Results_Exam_id = E.Exam_id AND R.Results_Date = T.ActT_Date AND E.Exam_Type = " + num(exam::Competition)
             + " ORDER BY R.Results_Date DESC;"},
        // Replaces the invoicing query of the same name.
        {"Qry_Select_Pupil_Courses",
         "PARAMETERS par_Pupil_id long; SELECT R.Pupil_id AS Pupil_id, R.Course_id AS Course_id, "
         "C.Course_Title AS Course_Title, C.Course_Location AS Location, C.Day_of_Week AS Day_of_Week "
         "FROM Register_Courses R, Courses C WHERE R.Pupil_id = par_Pupil_id AND R.Course_id = C.Course_id "
         "ORDER BY C.Course_Title;"},
        {"Qry_Delete_Pupil", "PARAMETERS p_Pupil_Id Long; DELETE FROM Pupils WHERE Pupil_id = p_Pupil_Id;"},
        {"Qry_Select_Family_Details_By_id",
         "PARAMETERS par_Family_id long; SELECT * FROM Families WHERE Family_id = par_Family_id;"},
        {"Qry_Update_Pupil",
         "PARAMETERS P_id LONG, " + pupil_parameters
             + "; UPDATE Pupils SET Pupil_FirstName = P_FirstName, Pupil_SurName = P_SurName, "
               "Pupil_Birthdate = P_Birthdate, Pupil_Startdate = P_Startdate, Pupil_Gender = P_Gender, "
               "Pupil_Marker = P_Marker, Pupil_Ref_Num = P_Ref1, Pupil_Ref_Num2 = P_Ref2, Pupil_Ref_Num3 = P_Ref3, "
               "Pupil_Ref_Num4 = P_Ref4, Pupil_Medical = P_Medical, Pupil_E_Mail = P_E_Mail, "
               "Pupil_Special_Needs = P_Special, Pupil_Notes = P_Notes, Pupil_Regn_Fee = P_Regn_Fee, "
               "Pupil_Ethnicity = P_Ethn, Pupil_Family_id = P_Family_id WHERE Pupil_id = P_id;"},
        {"Qry_Select_Pupil_In_Family",
         "PARAMETERS P_Family_id Long, P_FirstName text; SELECT Pupil_id FROM Pupils "
         "WHERE Pupil_Family_id = P_Family_Id AND Pupil_FirstName = P_FirstName;"},
        {"Qry_Insert_Pupil",
         "PARAMETERS " + pupil_parameters
             + "; INSERT INTO Pupils (Pupil_FirstName, Pupil_SurName, Pupil_Birthdate, Pupil_Startdate, Pupil_Gender, "
               "Pupil_Marker, Pupil_Ref_Num, Pupil_Ref_Num2, Pupil_Ref_Num3, Pupil_Ref_Num4, Pupil_Medical, "
               "Pupil_E_Mail, Pupil_Special_Needs, Pupil_Notes, Pupil_Regn_Fee, Pupil_Ethnicity, Pupil_Family_id) "
               "VALUES (P_FirstName, P_SurName, P_Birthdate, P_Startdate, P_Gender, P_Marker, P_Ref1, P_Ref2, P_Ref3, "
               "P_Ref4, P_Medical, P_E_Mail, P_Special, P_Notes, P_Regn_Fee, P_Ethn, P_Family_id)"},
        {"Qry_Insert_Family",
         "PARAMETERS " + family_parameters
             + "; INSERT INTO Families (Family_Name, Family_Address, Family_Address2, Family_Address3, Family_Address4, "
               "Family_Postcode, Family_Phone_1, Family_Phone_2, Family_Notes, Family_Marker, Family_Correspondence) "
               "VALUES (F_Name, F_Address, F_Address2, F_Address3, F_Address4, F_Postcode, F_Phone_1, F_Phone_2, "
               "F_Notes, F_Marker, F_Correspondence);"},
        {"Qry_Update_Family",
         "PARAMETERS F_id LONG, " + family_parameters
             + "; UPDATE Families SET Family_Name = F_Name, Family_Address = F_Address, Family_Address2 = F_Address2, "
               "Family_Address3 = F_Address3, Family_Address4 = F_Address4, Family_Postcode = F_Postcode, "
               "Family_Phone_1 = F_Phone_1, Family_Phone_2 = F_Phone_2, Family_Notes = F_Notes, "
               "Family_Marker = F_Marker, Family_Correspondence = F_Correspondence WHERE Family_id = F_id;"},
        {"Qry_Select_Family_id",
         "PARAMETERS F_Name TEXT, F_Address TEXT; SELECT Family_id FROM Families "
         "WHERE Family_Name = F_Name AND Family_Address = F_Address;"},
        {"Qry_Select_Family_Details", "SELECT * FROM Families ORDER BY Family_Name, Family_id;"},
        {"Qry_Select_Pupil_Names",
         "PARAMETERS par_fid long; SELECT Pupil_FirstName, Pupil_id FROM Pupils WHERE Pupil_Family_id = par_fid;"},
        {"Qry_Select_Pupils",
         "SELECT P.Pupil_id AS Pid, " + display_name
             + " AS DisplayName FROM Pupils P, Families F WHERE P.Pupil_Family_id = F.Family_id "
               "ORDER BY F.Family_Name, P.Pupil_FirstName;"},
        // Only the capital letters: a hidden pupil has the lower-case one.
        {"Qry_Select_Pupils_Not_Hidden",
         "SELECT P.Pupil_id AS Pid, " + display_name
             + " AS DisplayName FROM Pupils P, Families F WHERE P.Pupil_Family_id = F.Family_id "
               "AND (P.Pupil_Gender = " + letter(code::gender::Male) + " OR P.Pupil_Gender = " + letter(code::gender::Female)
             + ") ORDER BY F.Family_Name, P.Pupil_FirstName;"},

        // Course registers.
        {"Qry_Select_Pupil_on_Course",
         "PARAMETERS par_Course_id long; SELECT P.Pupil_FirstName AS FirstName, P.Pupil_Surname AS Surname, "
         "F.Family_Name AS FamilyName, " + display_name
             + " AS DisplayName, P.Pupil_id AS Pid, R.Course_id AS Cid FROM Register_Courses R, Pupils P, Families F "
               "WHERE R.Course_id = par_course_id AND R.Pupil_id = P.Pupil_id AND P.Pupil_Family_id = F.Family_id "
               "ORDER BY F.Family_Name, P.Pupil_FirstName;"},
        {"Qry_Insert_Pupil_on_Course",
         "PARAMETERS p_Pupil_id long, p_Course_id long; "
         "INSERT INTO Register_Courses (Pupil_id, Course_id) VALUES (p_Pupil_id, p_Course_id);"},
        {"Qry_Delete_Pupil_on_Course",
         "PARAMETERS p_Pupil_id long, p_Course_id long; "
         "DELETE FROM Register_Courses WHERE Pupil_id = p_Pupil_id AND Course_id = p_Course_id;"},
        {"Qry_Delete_Pupil_from_Courses",
         "PARAMETERS p_Pupil_id long; DELETE FROM Register_Courses WHERE Pupil_id = p_Pupil_id;"},
        {"Qry_Delete_All_Pupils_from_Course",
         "PARAMETERS p_Course_id long; DELETE FROM Register_Courses WHERE Course_id = p_Course_id;"},

        // Activities, entries and results.
        {"Qry_Select_Exam_Dance_Styles", "SELECT DISTINCT Exam_Dance FROM Exams ORDER BY Exam_Dance;"},
        {"Qry_Select_All_Pupil_doing_Exam", pupils_doing_exam("par_exam_id long, par_Date date", "", "")},
        {"Qry_Select_Course_Pupil_doing_Exam",
         pupils_doing_exam("par_exam_id long, par_Date date, par_Course_id long", ", Register_Courses C",
                           " AND R.Results_Pupil_id = C.Pupil_id AND C.Course_id = par_Course_id")},
        // The teacher comes from the catalogue row.
        {"Qry_Insert_Pupil_doing_Activity",
         "PARAMETERS p_Pupil_id long, p_Exam_id long, p_Exam_Date DATE; "
         "INSERT INTO Exam_Results (Results_Pupil_id, Results_Exam_id, Results_Teacher_id, Results_Date) "
         "SELECT p_Pupil_id AS Results_Pupil_id, p_Exam_id AS Results_Exam_id, Exam_Teacher AS Results_Teacher_id, "
         "p_Exam_Date AS Results_Date FROM Exams WHERE Exam_id = p_Exam_id;"},
        {"Qry_Delete_Pupil_doing_Exam",
         "PARAMETERS p_Pupil_id long, p_Exam_id long, p_Date Date; DELETE FROM Exam_Results "
         "WHERE Results_Pupil_id = p_Pupil_id AND Results_Exam_id = p_Exam_id AND Results_Date = p_Date;"},
        {"Qry_Delete_Pupil_from_Exams",
         "PARAMETERS p_Pupil_id long; DELETE FROM Exam_Results WHERE Results_Pupil_id = p_Pupil_id;"},
        {"Qry_Delete_All_Pupils_from_Activity",
         "PARAMETERS p_Activity_id long; DELETE FROM Exam_Results WHERE Results_Exam_id = p_Activity_id;"},
        {"Qry_Select_Exam_Date",
         "PARAMETERS par_startdate DATE; SELECT " + display_name
             + " AS DisplayName, E.Exam_Title AS Title, R.Results_Mark AS Mark, R.Results_Grade AS Grade, "
               "R.Results_Date AS EDay, R.Results_Time_txt AS ETime, R.Results_Order AS EOrder, R.Results_Pupil_id AS Pid, "
               "R.Results_Exam_id AS Exam_id, R.Results_Teacher_id AS Teacher_id, R.Results_id AS Results_id "
               "FROM Exam_Results R, Pupils P, Exams E, Families F WHERE R.Results_Exam_id = E.Exam_id "
               "AND R.Results_Pupil_id = P.Pupil_id AND P.Pupil_Family_id = F.Family_id AND R.Results_Date = par_startDate "
               "AND " + exams_and_competitions + " ORDER BY R.Results_Date, R.Results_Time_txt, R.Results_Order;"},
        {"Qry_Select_Dates_Of_Exam",
         "SELECT DISTINCT T.ActT_Date AS ActT_Date, T.ActT_Title AS ActT_Title FROM Exam_Results R, Exams E, "
         "Activity_Titles T WHERE R.Results_Date = T.ActT_Date AND R.Results_Exam_id = E.Exam_id AND "
             + exams_and_competitions + " ORDER BY T.ActT_Date DESC"},
        {"Qry_Select_Activity_Dates",
         "SELECT DISTINCT ActT_Date AS Activity_Date, ActT_Title AS Activity_Title FROM Activity_Titles "
         "ORDER BY ActT_Date DESC"},
        {"Qry_Update_Exam_Results",
         "PARAMETERS par_Result_id LONG, par_date DATE, par_time TEXT, par_Order SHORT, par_Mark SHORT, par_Grade TEXT; "
         "UPDATE Exam_Results SET Results_Date = par_Date, Results_Time_txt = par_time, Results_Order = par_Order, "
         "Results_Mark = par_Mark, Results_Grade = par_Grade WHERE Results_id = par_Result_id;"},
        {"Qry_Update_Exam_Teachers",
         "PARAMETERS par_startdate DATE; UPDATE Exam_Results SET Results_Teacher_id = Exams.Exam_Teacher FROM Exams "
         "WHERE Exam_Results.Results_Exam_id = Exams.Exam_id AND Results_Date = par_startdate;"},
        {"Qry_Exam_Results_Formats",
         "SELECT Exam_Results.Results_id, Exam_Results.Results_Time_txt, Exams.Exam_Duration, " + entry_start
             + " AS Results_start_date, " + entry_end + " AS Results_end_date, " + date_number(entry_start)
             + " AS Results_start_dbl, " + date_number(entry_end) + " AS Results_end_dbl, "
             + date_number("CDate('12:05:00 AM')") + " AS Five_Min_Break_dbl, format(" + entry_end
             + ", 'hh:mm') AS Results_end_txt FROM Exams INNER JOIN Exam_Results ON Exams.Exam_id = Exam_Results.Results_Exam_id;"},
        {"Qry_Exam_Timetable_Pupils_Without_Times",
         timetable_entrants("R.Results_Pupil_id AS Pupil_id, E.Exam_Title AS Exam_Title, R.Results_id AS Results_id, "
                            "E.Exam_Duration AS Exam_Duration",
                            "(R.Results_Time_txt = NULL OR R.Results_Time_txt = '')",
                            "R.Results_Date, E.Exam_Dance, E.Exam_Level, E.Exam_Teacher, F.Family_Name, P.Pupil_FirstName")},
        {"Qry_Exam_Timetable_Pupils_Times",
         timetable_entrants("E.Exam_Title, E.Exam_Duration, R.Results_id, R.Results_Time_txt",
                            "NOT (ifnull(R.Results_Time_txt = NULL, 0) OR R.Results_Time_txt = '')",
                            "R.Results_Date, R.Results_Time_txt")},
        {"Qry_Select_Dates_Of_Exams_Only",
         "SELECT DISTINCT T.ActT_Date AS ActT_Date, T.ActT_Title AS ActT_Title FROM Exam_Results R, Exams E, "
         "Activity_Titles T WHERE R.Results_Date = T.ActT_Date AND R.Results_Exam_id = E.Exam_id "
         "AND E.Exam_Type = " + num(exam::Exam) + " ORDER BY T.ActT_Date DESC"},
        {"Qry_Update_Exam_Results_Time",
         "PARAMETERS par_Result_id LONG, par_time TEXT, par_Order SHORT; UPDATE Exam_Results "
         "SET Results_Time_txt = par_time, Results_Order = par_Order WHERE Results_id = par_Result_id;"},

        // Terms, lessons and holidays.
        {"Qry_Add_Term",
         "PARAMETERS par_Name text, par_Start_date date, par_End_date date; "
         "INSERT INTO Term_Dates (Term_Name, Term_Start, Term_End) VALUES (par_Name, par_Start_date, par_End_date);"},
        {"Qry_Update_Term",
         "PARAMETERS par_id long, par_Name text, par_Start_date datetime, par_End_date datetime; "
         "UPDATE Term_Dates SET Term_Name = par_Name, Term_Start = par_Start_date, Term_End = par_End_date "
         "WHERE Term_id = par_id;"},
        {"Qry_Insert_Number_Lessons",
         "PARAMETERS p_Term_id LONG, p_Day_Number SHORT, p_Num_Lessons SHORT, p_First DATETIME, p_Last DATETIME, "
         "p_Hols_Str TEXT; INSERT INTO Number_Lessons (Term_id, Day_Number, Num_Lessons, First_Date, Last_Date, Hols_Str) "
         "VALUES (p_Term_id, p_Day_Number, p_Num_Lessons, p_First, p_Last, p_Hols_Str);"},
        {"Qry_Select_Number_Lessons",
         "PARAMETERS p_Term_id LONG; SELECT Day_Number, Num_Lessons, First_Date, Last_Date FROM Number_Lessons "
         "WHERE Term_id = p_Term_id ORDER BY Day_Number;"},
        {"Qry_Select_Terms", "SELECT * FROM Term_Dates ORDER BY Term_Start DESC;"},
        {"Qry_Select_Term_Id",
         "PARAMETERS par_Name Text; SELECT Term_id FROM Term_Dates WHERE Term_Name = par_Name ORDER BY Term_Start DESC;"},
        {"Qry_Select_Holidays",
         "PARAMETERS p_start_date DATE, p_end_date DATE; SELECT Day_Off FROM Holidays "
         "WHERE Day_Off >= p_Start_Date AND Day_Off <= p_End_Date ORDER BY Day_Off;"},
        {"Qry_Select_Holidays_per_Course",
         "SELECT D.Term_id, C.Course_id, H.Day_Off FROM Holidays H, Term_Dates D, Courses C "
         "WHERE H.Day_Off >= D.Term_Start AND H.Day_Off <= D.Term_End AND weekday(H.Day_Off) = C.Day_of_Week "
         "ORDER BY H.Day_Off;"},
        {"Qry_Insert_Holiday", "PARAMETERS p_date DATE; INSERT INTO Holidays (Day_Off) VALUES (p_date);"},
        {"Qry_Delete_Holiday", "PARAMETERS p_date DATE; DELETE FROM Holidays WHERE Holidays.Day_Off = p_date;"},

        // What hangs on an activity date.
        {"Qry_Count_Exam_Results_Activity", count_on_date("Exam_Results WHERE Results_Date = p_Date")},
        {"Qry_Count_Invoices_Activity", count_on_date("Invoices WHERE Invoice_Activity_Date = p_Date")},
        {"Qry_Count_Receipts_Activity",
         count_on_date("Receipts, Invoices WHERE Invoice_id = Receipt_Invoice_id AND Invoice_Activity_Date = p_Date")},
        {"Qry_Delete_Invoice_Lines_Activity",
         "PARAMETERS p_date DATE; DELETE FROM Invoice_Lines WHERE Inv_Line_Inv_id IN "
         "(SELECT Invoice_id FROM Invoices WHERE Invoice_Activity_Date = p_Date);"},
        {"Qry_Delete_Invoices_Activity",
         "PARAMETERS p_date DATE; DELETE FROM Invoices WHERE Invoice_Activity_Date = p_Date;"},
        {"Qry_Update_Exam_Results_Activity",
         "PARAMETERS p_date DATE, p_New_Date DATE; UPDATE Exam_Results SET Results_Date = p_New_Date "
         "WHERE Results_Date = p_Date;"},
    };
}

}  // namespace

const std::vector<StoredQueryText>& people_query_texts()
{
    static const std::vector<StoredQueryText> texts = make_texts();
    return texts;
}
