// The stored queries of invoicing and accounts: course costs for a term, the
// invoices and lines of automated runs, receipts, and what is paid and owed.
// All the arithmetic of invoicing is here; the script files choose which of
// these run, and in what order.
//
// Jet's append queries matched the selected columns to the table's by name;
// here the target columns are listed in the same order instead. A boolean
// test "= False" is "= 0". Money that is summed is rounded to four places, so
// that sums compare as the amounts do.

#include "database/code_values.h"
#include "database/query_pieces.h"
#include "database/stored_queries.h"

namespace {

using namespace query_piece;
namespace line = code::inv_line_type;
namespace generated = code::invoice_generated;

const QString standard_row = num(code::Standard_Values_Row);

// Term invoices of the picked families and terms. Now() is taken after the
// DISTINCT, so that a clock ticking over mid-run can't give a family two.
QString term_invoices(int generation)
{
    return "INSERT INTO Invoices (Invoice_Family_id, Invoice_Term_id, Invoice_Date, Invoice_Reason, Invoice_Generated) "
           "SELECT Picked.Invoice_Family_id, Picked.Invoice_Term_id, Now() AS Invoice_Date, Picked.Invoice_Reason, "
           + num(generation) + " AS Invoice_Generated "
           "FROM (SELECT DISTINCT P.Tmp_Family_id AS Invoice_Family_id, T.Tmp_Term_id AS Invoice_Term_id, "
           "'Invoice for ' || ifnull(D.Term_Name, '') AS Invoice_Reason "
           "FROM Register_Courses R INNER JOIN Tmp_Pupils AS P ON R.Pupil_id = P.Tmp_Pupil_id, "
           "Tmp_Terms AS T INNER JOIN Term_Dates AS D ON T.Tmp_Term_id = D.Term_Id "
           "WHERE T.Tmp_Term_id = D.Term_id) AS Picked;";
}

// The entries of picked pupils in picked activities, each with the family's
// invoice for that date: what every activity line is made from.
QString activity_entries(const QString& more_tables = QString())
{
    return "FROM Invoices I, Tmp_Activities A, Tmp_Pupils TP, Pupils P, Exams E, Exam_Results R" + more_tables + " "
           "WHERE A.Tmp_Activity_id = E.Exam_id AND R.Results_Exam_id = A.Tmp_Activity_id "
           "AND R.Results_Pupil_id = TP.Tmp_Pupil_id AND I.Invoice_Activity_Date = A.Tmp_Date "
           "AND I.Invoice_Activity_Date = R.Results_Date AND I.Invoice_Family_id = TP.Tmp_Family_id "
           "AND TP.Tmp_Pupil_id = P.Pupil_id";
}

const QString activity_line_columns =
    "INSERT INTO Invoice_Lines (Inv_Line_Inv_id, Inv_Line_Pupil_id, Inv_Line_Exam_id, Inv_Line_Type, Description, Amount) "
    "SELECT DISTINCT I.Invoice_id AS Inv_Line_Inv_id, R.Results_Pupil_id AS Inv_Line_Pupil_id, "
    "R.Results_Exam_id AS Inv_Line_Exam_id, ";

// A family's invoices joined with what each is owed and has been paid.
const QString family_invoice_balances =
    "SELECT I.*, L.Inv_Line_Inv_id AS Invoice_id, L.Owed AS Owed, R.Paid AS Paid "
    "FROM Invoices AS I LEFT JOIN Qry_Select_Amounts_Receipt AS R ON I.Invoice_id = R.Receipt_Invoice_id "
    "INNER JOIN Qry_Select_Amounts_Line AS L ON I.Invoice_id = L.Inv_Line_Inv_id "
    "WHERE I.Invoice_Family_id = par_Family_id ";

const QString inserted_invoice_parameters = "PARAMETERS par_Invoice_Family_Id LONG, ";

std::vector<StoredQueryText> make_texts()
{
    return {
        {"Qry_Delete_Lone_Invoices",
         "DELETE FROM Invoices WHERE Invoice_id IN (SELECT I.Invoice_id "
         "FROM (Invoices AS I LEFT JOIN Invoice_Lines ON I.Invoice_id = Invoice_Lines.Inv_Line_Inv_id) "
         "INNER JOIN (Invoices AS J LEFT JOIN Receipts ON J.Invoice_id = Receipts.Receipt_Invoice_id) "
         "ON I.Invoice_id = J.Invoice_id "
         "GROUP BY I.Invoice_id, J.Invoice_id, Receipts.Receipt_Invoice_id, Invoice_Lines.Inv_Line_Inv_id "
         "HAVING Receipts.Receipt_Invoice_id IS NULL AND Invoice_Lines.Inv_Line_Inv_id IS NULL);"},

        // Course costs, into Tmp_CourseCosts, whose key refuses a second row for a course and term.
        {"Qry_Setup_Course_Costs",
         "INSERT INTO Tmp_CourseCosts (Tmp_Course_id, Tmp_Term_id, Tmp_Cost) "
         "SELECT C.Course_id AS Tmp_Course_id, D.Term_id AS Tmp_Term_id, C.Course_LessonPrice * N.Num_Lessons AS Tmp_Cost "
         "FROM Term_Dates D, Courses C, Number_Lessons N "
         "WHERE D.Term_id = N.Term_Id AND N.Day_Number = C.Day_of_Week "
         "AND C.Course_Suppressed = 0 AND C.Course_Cancelled = 0 AND C.Course_LessonPrice > 0;"},
        // Division as Jet divides: never by whole numbers.
        {"Qry_Setup_Default_Course_Costs",
         "INSERT INTO Tmp_CourseCosts (Tmp_Course_id, Tmp_Term_id, Tmp_Cost) "
         "SELECT C.Course_id AS Tmp_Course_id, D.Term_id AS Tmp_Term_id, "
         "(V.Deflt_Course_Hourly_Rate * C.Lesson_Duration * N.Num_Lessons) / 60.0 AS Tmp_Cost "
         "FROM Term_Dates D, Courses C, Number_Lessons N, Standard_Values V "
         "WHERE D.Term_id = N.Term_Id AND N.Day_Number = C.Day_of_Week AND V.stndrd_id = " + standard_row + " "
         "AND C.Course_Suppressed = 0 AND C.Course_Cancelled = 0 "
         "AND (C.Course_LessonPrice = 0 OR C.Course_LessonPrice IS NULL) "
         "AND V.Deflt_Course_Hourly_Rate <> 0 AND NOT V.Deflt_Course_Hourly_Rate IS NULL;"},
        {"Qry_Setup_Default_Zero_Course_Costs",
         "INSERT INTO Tmp_CourseCosts (Tmp_Course_id, Tmp_Term_id, Tmp_Cost) "
         "SELECT C.Course_id AS Tmp_Course_id, D.Term_id AS Tmp_Term_id, 0 AS Tmp_Cost "
         "FROM Term_Dates D, Courses C, Standard_Values V "
         "WHERE (C.Course_Type IS NOT NULL AND C.Course_Type <> '') "
         "AND (C.Course_LessonPrice IS NULL OR C.Course_LessonPrice = 0) "
         "AND (V.Deflt_Course_Hourly_Rate = 0 OR V.Deflt_Course_Hourly_Rate IS NULL) "
         "AND C.Course_Suppressed = 0 AND C.Course_Cancelled = 0 AND V.stndrd_id = " + standard_row + ";"},
        // The numeric text is read as Jet reads it into money: by the locale's rules.
        {"Qry_Setup_Alternate_Course_Costs",
         "UPDATE Tmp_CourseCosts SET Tmp_Cost = CDbl(Courses.Course_Type) FROM Courses "
         "WHERE Courses.Course_id = Tmp_CourseCosts.Tmp_Course_id "
         "AND Courses.Course_Type IS NOT NULL AND Courses.Course_Type <> '' AND isnumeric(Courses.Course_Type) "
         "AND Courses.Course_Suppressed = 0 AND Courses.Course_Cancelled = 0;"},
        // Names Courses.Course_Type though Courses is aliased C: made, and fails when run.
        {"Qry_Setup_Alternate_Costs_Insert",
         "INSERT INTO Tmp_CourseCosts (Tmp_Course_id, Tmp_Term_id, Tmp_Cost) "
         "SELECT C.Course_id AS Tmp_Course_id, D.Term_id AS Tmp_Term_id, C.Course_Type AS Tmp_Cost "
         "FROM Term_Dates D, Tmp_Terms T, Courses C, Standard_Values V "
         "WHERE D.Term_id = T.Tmp_Term_id AND V.stndrd_id = " + standard_row + " "
         "AND C.Course_Suppressed = 0 AND C.Course_Cancelled = 0 "
         "AND (C.Course_LessonPrice = 0 OR C.Course_LessonPrice IS NULL) "
         "AND (V.Deflt_Course_Hourly_Rate = 0 OR V.Deflt_Course_Hourly_Rate IS NULL) "
         "AND isnumeric(Courses.Course_Type);"},
        {"Qry_Find_Lesson_Data",
         "SELECT Number_Lessons.Term_Id, Courses.Course_id, Number_Lessons.Day_Number, Number_Lessons.First_Date, "
         "Number_Lessons.Last_Date, Number_Lessons.Hols_Str, Number_Lessons.Num_Lessons "
         "FROM Courses INNER JOIN Number_Lessons ON Courses.Day_of_Week = Number_Lessons.Day_Number "
         "WHERE Courses.Course_Cancelled = 0;"},
        {"Qry_Print_Course_Costs",
         "SELECT Qry_Find_Lesson_Data.*, Tmp_CourseCosts.Tmp_Cost "
         "FROM Qry_Find_Lesson_Data LEFT JOIN Tmp_CourseCosts "
         "ON (Qry_Find_Lesson_Data.Term_Id = Tmp_CourseCosts.Tmp_Term_id) "
         "AND (Qry_Find_Lesson_Data.Course_id = Tmp_CourseCosts.Tmp_Course_id);"},

        // Term invoices and their lines.
        {"Qry_Setup_Invoice_Terms", term_invoices(generated::Automatic)},
        {"Qry_Setup_Invoice_Terms_Temp", term_invoices(generated::Provisional)},
        {"Qry_Update_Generation_to_Auto",
         "UPDATE Invoices SET Invoice_Generated = " + num(generated::Automatic)
             + " WHERE Invoice_Generated = " + num(generated::Provisional) + ";"},
        // Every pupil of a picked family who is on a picked course, on that family's invoice for the term.
        {"Qry_Setup_Invoice_Courses",
         "INSERT INTO Invoice_Lines (Inv_Line_Inv_id, Inv_Line_Pupil_id, Inv_Line_Course_id, Inv_Line_Type, Description, Amount) "
         "SELECT DISTINCT I.Invoice_id AS Inv_Line_Inv_id, R.Pupil_id AS Inv_Line_Pupil_id, R.Course_id AS Inv_Line_Course_id, "
             + num(line::Course) + " AS Inv_Line_Type, " + pupils("P.Pupil_FirstName", "C.Course_Title")
             + " AS Description, TCC.Tmp_Cost AS Amount "
         "FROM Tmp_Pupils AS TP INNER JOIN Pupils AS P ON TP.Tmp_Family_id = P.Pupil_Family_Id "
         "INNER JOIN Register_Courses AS R ON P.Pupil_id = R.Pupil_id "
         "INNER JOIN Courses AS C ON C.Course_id = R.Course_id "
         "INNER JOIN Tmp_CourseCosts AS TCC ON TCC.Tmp_Course_id = C.Course_id "
         "INNER JOIN Tmp_Courses ON Tmp_Courses.Tmp_Course_id = TCC.Tmp_Course_id "
         "INNER JOIN Tmp_Terms AS D ON TCC.Tmp_Term_id = D.Tmp_Term_id "
         "INNER JOIN Invoices AS I ON (TP.Tmp_Family_id = I.Invoice_Family_Id) AND (D.Tmp_Term_id = I.Invoice_Term_Id);"},

        // What is paid and owed.
        {"Qry_Select_Amounts_Receipt",
         "SELECT Receipt_Invoice_id, " + money_sum("Receipt_Amount") + " AS Paid FROM Receipts GROUP BY Receipt_Invoice_id;"},
        {"Qry_Select_Amounts_Line",
         "SELECT Inv_Line_Inv_id, " + money_sum("Amount") + " AS Owed FROM Invoice_Lines GROUP BY Inv_Line_Inv_id;"},
        {"Qry_Select_Paid_Invoices",
         "SELECT Qry_Select_Amounts_Line.Inv_Line_Inv_id AS Invoice_id "
         "FROM Qry_Select_Amounts_Receipt INNER JOIN Qry_Select_Amounts_Line "
         "ON Qry_Select_Amounts_Receipt.Receipt_Invoice_id = Qry_Select_Amounts_Line.Inv_Line_Inv_id "
         "WHERE Qry_Select_Amounts_Line.Owed = Qry_Select_Amounts_Receipt.Paid;"},
        // "R.Paid = NULL" never holds: an invoice without receipts isn't listed.
        {"Qry_Select_Unpaid_Invoices",
         "SELECT L.Inv_Line_Inv_id AS Invoice_id, L.Owed AS Owed, R.Paid AS Paid "
         "FROM Qry_Select_Amounts_Line L LEFT JOIN Qry_Select_Amounts_Receipt R ON R.Receipt_Invoice_id = L.Inv_Line_Inv_id "
         "WHERE R.Paid = NULL OR L.Owed <> R.Paid;"},
        {"Qry_Select_Invoices_Balance_Zero",
         "SELECT I.Invoice_Family_Id AS Family_id, " + money_sum("Q.Owed") + " AS SumOwed, " + money_sum("Q.Paid")
             + " AS SumPaid FROM Qry_Select_Unpaid_Invoices Q INNER JOIN Invoices I ON Q.Invoice_id = I.Invoice_id "
               "GROUP BY I.Invoice_Family_Id HAVING " + money_sum("Q.Paid") + " = " + money_sum("Q.Owed") + ";"},
        {"Qry_Select_Family_Paid",
         "PARAMETERS par_Family_id LONG; SELECT Invoice_Family_id, " + money_sum("Receipt_Amount")
             + " AS Paid FROM Receipts, Invoices WHERE Invoices.Invoice_id = Receipts.Receipt_Invoice_id "
               "AND Invoices.Invoice_Family_id = par_Family_id GROUP BY Invoice_Family_id;"},
        {"Qry_Select_Family_Owes",
         "PARAMETERS par_Family_id LONG; SELECT I.Invoice_Family_id, " + money_sum("L.Amount")
             + " AS Owes FROM Invoices I, Invoice_Lines L WHERE I.Invoice_id = L.Inv_Line_Inv_id "
               "AND I.Invoice_Family_id = par_Family_id GROUP BY I.Invoice_Family_id;"},
        // "Is Null" here: an invoice without receipts is listed, unlike Qry_Select_Unpaid_Invoices.
        {"Qry_Select_Family_Invoices_Unpaid",
         "PARAMETERS par_Family_id LONG; " + family_invoice_balances
             + "AND (R.Paid IS NULL OR L.Owed <> R.Paid) ORDER BY I.Invoice_Date DESC;"},
        {"Qry_Select_Family_Invoices_All",
         "PARAMETERS par_Family_id LONG; " + family_invoice_balances + "ORDER BY I.Invoice_Date DESC;"},
        // The three-way join multiplies rows: right only for one line and one receipt per invoice.
        {"Qry_Find_Family_Paid_and_Owed",
         "PARAMETERS par_Family_id LONG; SELECT Invoices.Invoice_Family_id AS Family_id, " + money_sum("Receipt_Amount")
             + " AS Paid, " + money_sum("Invoice_Lines.Amount")
             + " AS Owed FROM Invoices, Invoice_Lines, Receipts WHERE Invoices.Invoice_Family_id = par_Family_id "
               "AND Invoice_Lines.Inv_Line_Inv_id = Invoices.Invoice_id AND Receipts.Receipt_Invoice_id = Invoices.Invoice_id "
               "GROUP BY Invoices.Invoice_Family_id;"},
        {"Qry_Check_Courses_Invoiced",
         "SELECT Register_Courses.Pupil_id, Register_Courses.Course_id, Invoice_Lines.Invoice_Line_id "
         "FROM Register_Courses INNER JOIN Courses ON Courses.Course_id = Register_Courses.Course_id "
         "LEFT JOIN Invoice_Lines ON (Register_Courses.Pupil_id = Invoice_Lines.Inv_Line_Pupil_id) "
         "AND (Register_Courses.Course_id = Invoice_Lines.Inv_Line_Course_id) "
         "WHERE Courses.Course_Suppressed = 0 AND Courses.Course_Cancelled = 0;"},

        // Activity invoices and their lines.
        {"Qry_Setup_Invoice_ActivityDates",
         "INSERT INTO Invoices (Invoice_Family_id, Invoice_Date, Invoice_Activity_Date, Invoice_Reason, Invoice_Generated) "
         "SELECT Picked.Invoice_Family_id, Now() AS Invoice_Date, Picked.Invoice_Activity_Date, Picked.Invoice_Reason, "
             + num(generated::Automatic) + " AS Invoice_Generated "
         "FROM (SELECT DISTINCT P.Tmp_Family_id AS Invoice_Family_id, A.Tmp_Date AS Invoice_Activity_Date, "
         "'Invoice for ' || ifnull(T.ActT_Title, '') AS Invoice_Reason "
         "FROM Tmp_Activities A, Tmp_Pupils P, Activity_Titles T, Exam_Results R "
         "WHERE A.Tmp_Date = R.Results_Date AND A.Tmp_Date = T.ActT_Date "
         "AND R.Results_Exam_id = A.Tmp_Activity_id AND R.Results_Pupil_id = P.Tmp_Pupil_id) AS Picked;"},
        {"Qry_Setup_Invoice_Activities",
         activity_line_columns + num(line::Activity) + " AS Inv_Line_Type, " + pupils("P.Pupil_FirstName", "E.Exam_Title")
             + " AS Description, E.Exam_Price AS Amount " + activity_entries() + ";"},
        // "E.Exam_Price = NULL" and "S.Deflt_Exam_Hourly_Rate <> NULL" never hold, so this adds no line.
        {"Qry_Setup_Invoice_Default_Exam",
         activity_line_columns + num(line::Activity) + " AS Inv_Line_Type, " + pupils("P.Pupil_FirstName", "E.Exam_Title")
             + " AS Description, S.Deflt_Exam_Hourly_Rate AS Amount "
             + activity_entries(", Standard_Values S")
             + " AND (E.Exam_Price = 0 OR E.Exam_Price = NULL) "
               "AND (S.Deflt_Exam_Hourly_Rate <> 0 AND S.Deflt_Exam_Hourly_Rate <> NULL) AND S.stndrd_id = "
             + standard_row + ";"},
        {"Qry_Insert_Invoice_Activity_Expenses",
         activity_line_columns + num(line::Activity_Expenses) + " AS Inv_Line_Type, "
             + pupils("P.Pupil_FirstName", "E.Exam_Title") + " || ' Expenses' AS Description, E.Exam_Expenses AS Amount "
             + activity_entries() + " AND E.Exam_Expenses <> 0;"},
        {"Qry_Select_Invoices_Show",
         "SELECT DISTINCT S.Show_Cost_per_Pupil, I.Invoice_id, I.Invoice_Family_id, I.Invoice_Activity_Date "
         "FROM Standard_Values AS S, Tmp_Activities AS A INNER JOIN Exams AS E ON A.Tmp_Activity_id = E.Exam_id "
         "INNER JOIN Invoices AS I ON A.Tmp_Date = I.Invoice_Activity_Date "
         "WHERE E.Exam_Type = " + num(code::exam_type::Show) + " AND S.stndrd_id = " + standard_row + " "
         "AND S.Show_Cost_per_Pupil IS NOT NULL AND Show_Cost_per_Pupil <> 0;"},
        {"Qry_Select_Pupil_Count_Show",
         "SELECT DISTINCT Exam_Results.Results_Date, Families.Family_id, Pupils.Pupil_id "
         "FROM Families INNER JOIN Pupils ON Families.Family_id = Pupils.Pupil_Family_Id "
         "INNER JOIN Exam_Results ON Pupils.Pupil_id = Exam_Results.Results_Pupil_id "
         "INNER JOIN Exams ON Exams.Exam_id = Exam_Results.Results_Exam_id "
         "WHERE Exams.Exam_Type = " + num(code::exam_type::Show) + " "
         "GROUP BY Exam_Results.Results_Date, Families.Family_id, Pupils.Pupil_id;"},
        {"Qry_Setup_Invoice_Show_Expenses",
         "INSERT INTO Invoice_Lines (Inv_Line_Inv_id, Inv_Line_Type, Description, Amount) "
         "SELECT DISTINCT Q1.Invoice_id AS Inv_Line_Inv_id, " + num(line::Show_Cost_Per_Pupil)
             + " AS Inv_Line_Type, 'Cost per Pupil Expenses' AS Description, "
               "(Q1.Show_Cost_per_Pupil * Count(Q2.Pupil_id)) AS Amount "
               "FROM Qry_Select_Invoices_Show AS Q1 INNER JOIN Qry_Select_Pupil_Count_Show AS Q2 "
               "ON (Q2.Family_id = Q1.Invoice_Family_id) AND (Q1.Invoice_Activity_Date = Q2.Results_Date) "
               "GROUP BY Q1.Show_Cost_per_Pupil, Q1.Invoice_id, Q1.Invoice_Family_id;"},
        {"Qry_Check_Exams_Invoiced",
         "SELECT Exam_Results.Results_Pupil_id, Exam_Results.Results_Exam_id, Exam_Results.Results_id, "
         "Invoice_Lines.Invoice_Line_id FROM Exam_Results LEFT JOIN Invoice_Lines "
         "ON (Exam_Results.Results_Pupil_id = Invoice_Lines.Inv_Line_Pupil_id) "
         "AND (Exam_Results.Results_Exam_id = Invoice_Lines.Inv_Line_Exam_id);"},
        // Replaced by the query of the same name among the people queries, made later.
        {"Qry_Select_Pupil_Courses",
         "PARAMETERS par_Pupil_id LONG; SELECT C.Course_Title AS Course_Title, C.Course_id AS Course_id "
         "FROM Courses C, Register_Courses R WHERE R.Pupil_id = par_Pupil_id AND R.Course_id = C.Course_id "
         "ORDER BY C.Course_Title;"},
        {"Qry_Select_Pupil_Activities",
         "PARAMETERS par_Pupil_id LONG, par_Date DATE; SELECT E.Exam_Title AS Activity_Title, E.Exam_id AS Activity_id, "
         "R.Results_Date AS Activity_Date FROM Exams E, Exam_Results R WHERE R.Results_Pupil_id = par_Pupil_id "
         "AND R.Results_Exam_id = E.Exam_id AND R.Results_Date = par_Date ORDER BY R.Results_Date DESC;"},

        // Receipts.
        {"Qry_Insert_Receipt",
         "PARAMETERS p_invoice_id LONG, p_Amount CURRENCY, p_Method TEXT, p_date DATE, p_notes TEXT; "
         "INSERT INTO Receipts (Receipt_Invoice_id, Receipt_Date, Receipt_Amount, Receipt_Method, Receipt_Notes) "
         "VALUES (p_Invoice_id, p_date, p_Amount, p_Method, p_notes);"},
        {"Qry_Update_Receipt",
         "PARAMETERS p_Receipt_id LONG, p_invoice_id LONG, p_Amount CURRENCY, p_Method TEXT, p_date DATE, p_notes TEXT; "
         "UPDATE Receipts SET Receipt_Date = p_date, Receipt_Amount = p_Amount, Receipt_Method = p_Method, "
         "Receipt_Notes = p_notes WHERE p_Receipt_id = Receipt_id AND Receipt_Invoice_id = p_invoice_id;"},
        {"Qry_Delete_Receipt",
         "PARAMETERS par_receipt_id LONG; DELETE FROM Receipts WHERE Receipt_id = par_receipt_id;"},
        {"Qry_Select_Receipt",
         "PARAMETERS par_receipt_id LONG; SELECT * FROM Receipts WHERE Receipt_id = par_receipt_id;"},
        {"Qry_Select_Invoice_Receipts",
         "PARAMETERS par_invoice_id LONG; SELECT * FROM Receipts WHERE Receipt_Invoice_id = par_invoice_id;"},

        // Invoices by hand.
        {"Qry_Delete_Invoice",
         "PARAMETERS par_Invoice_id LONG; DELETE FROM Invoices WHERE Invoice_id = par_Invoice_id;"},
        {"Qry_Insert_Invoice",
         "PARAMETERS par_Invoice_Family_Id LONG, par_Invoice_Term_id LONG, par_Invoice_Activity_Date DATE, "
         "par_Invoice_Date DATE, par_Invoice_Reason TEXT, par_Invoice_Generated BYTE, par_Invoice_Notes TEXT; "
         "INSERT INTO Invoices (Invoice_Family_Id, Invoice_Term_id, Invoice_Activity_Date, Invoice_Date, Invoice_Reason, "
         "Invoice_Notes, Invoice_Generated) VALUES (par_Invoice_Family_Id, par_Invoice_Term_id, par_Invoice_Activity_Date, "
         "par_Invoice_Date, par_Invoice_Reason, par_Invoice_Notes, par_Invoice_Generated);"},
        {"Qry_Select_Inserted_Invoice_Term",
         inserted_invoice_parameters + "par_Invoice_Term_id Long, par_Invoice_Date DATE, par_Invoice_Reason TEXT; "
         "SELECT Invoice_id FROM Invoices WHERE Invoice_Family_id = par_Invoice_Family_id "
         "AND Invoice_Term_id = par_Invoice_Term_id AND Invoice_Date = par_Invoice_Date "
         "AND Invoice_Reason = par_Invoice_Reason;"},
        {"Qry_Select_Inserted_Invoice_Date",
         inserted_invoice_parameters + "par_Invoice_Activity_Date DATE, par_Invoice_Date DATE, par_Invoice_Reason TEXT; "
         "SELECT Invoice_id FROM Invoices WHERE Invoice_Family_id = par_Invoice_Family_id "
         "AND Invoice_Activity_Date = par_Invoice_Activity_Date AND Invoice_Date = par_Invoice_Date "
         "AND Invoice_Reason = par_Invoice_Reason;"},
        {"Qry_Select_Inserted_Invoice_Neither",
         inserted_invoice_parameters + "par_Invoice_Date DATE, par_Invoice_Reason TEXT; "
         "SELECT Invoice_id FROM Invoices WHERE Invoice_Family_id = par_Invoice_Family_id "
         "AND Invoice_Date = par_Invoice_Date AND Invoice_Reason = par_Invoice_Reason;"},
        {"Qry_Update_Invoice",
         "PARAMETERS par_Invoice_id LONG, par_Invoice_Family_Id LONG, par_Invoice_Date DATE, "
         "par_Invoice_Activity_Date DATE, par_Invoice_Term_id LONG, par_Invoice_Reason TEXT, "
         "par_Invoice_Generated BYTE, par_Invoice_Notes TEXT; "
         "UPDATE Invoices SET Invoice_Family_id = par_Invoice_Family_Id, Invoice_Date = par_Invoice_Date, "
         "Invoice_Activity_Date = par_Invoice_Activity_Date, Invoice_Term_id = par_Invoice_Term_id, "
         "Invoice_Reason = par_Invoice_Reason, Invoice_Generated = par_Invoice_Generated, "
         "Invoice_Notes = par_Invoice_Notes WHERE Invoice_id = par_Invoice_id;"},
        {"Qry_Select_Invoice",
         "PARAMETERS par_Invoice_id LONG; SELECT * FROM Invoices WHERE Invoice_id = par_Invoice_id;"},
        {"Qry_Select_Family_Invoices",
         "PARAMETERS par_Family_id LONG; SELECT * FROM Invoices WHERE Invoice_Family_id = par_Family_id "
         "ORDER BY Invoice_Date DESC;"},

        // Invoice lines.
        {"Qry_Delete_Invoice_Line",
         "PARAMETERS par_Line_id LONG, par_Invoice_id LONG; DELETE FROM Invoice_Lines "
         "WHERE Invoice_Line_id = par_Line_id AND Inv_Line_Inv_id = par_Invoice_id;"},
        {"Qry_Delete_All_Invoice_Lines",
         "PARAMETERS par_Invoice_id LONG; DELETE FROM Invoice_Lines WHERE Inv_Line_Inv_id = par_Invoice_id;"},
        {"Qry_Insert_Invoice_Line",
         "PARAMETERS par_Invoice_id LONG, par_Pupil_id LONG, par_Course_id LONG, par_Activity_id LONG, par_Type BYTE, "
         "par_Amount CURRENCY, par_Description TEXT; "
         "INSERT INTO Invoice_Lines (Inv_Line_Inv_id, Inv_Line_Pupil_id, Inv_Line_Course_id, Inv_Line_Exam_id, "
         "Inv_Line_Type, Description, Amount) VALUES (par_Invoice_id, par_Pupil_id, par_Course_id, par_Activity_id, "
         "par_Type, par_Description, par_Amount);"},
        {"Qry_Update_Invoice_Line",
         "PARAMETERS par_Line_id LONG, par_Invoice_id LONG, par_Pupil_id LONG, par_Course_id LONG, par_Activity_id LONG, "
         "par_Type BYTE, par_Amount CURRENCY, par_Description TEXT; "
         "UPDATE Invoice_Lines SET Inv_Line_Inv_id = par_Invoice_id, Inv_Line_Pupil_id = par_Pupil_id, "
         "Inv_Line_Course_id = par_Course_id, Inv_Line_Exam_id = par_Activity_id, Inv_Line_Type = par_Type, "
         "Description = par_Description, Amount = par_Amount WHERE Invoice_Line_id = par_Line_id;"},
        {"Qry_Update_Invoice_Line_Null_Course",
         "PARAMETERS par_Course_id LONG; UPDATE Invoice_Lines SET Inv_Line_Type = " + num(line::Pupil_Only)
             + ", Inv_Line_Course_id = NULL WHERE Inv_Line_Course_id = par_Course_id;"},
        // Names Inv_Line_Activity_id, which the table doesn't have: made, and fails when run.
        {"Qry_Update_Invoice_Line_Null_Activity",
         "PARAMETERS p_Activity_id LONG; UPDATE Invoice_Lines SET Inv_Line_Type = " + num(line::Pupil_Only)
             + ", Inv_Line_Activity_id = NULL WHERE Inv_Line_Activity_id = p_Activity_id;"},
        {"Qry_Select_Invoice_Lines_Display",
         "PARAMETERS par_Invoice_id LONG; SELECT P.Pupil_FirstName AS Pupil_Name, L.Description AS Description, "
         "L.Amount AS Amount, L.Invoice_Line_id AS Line_id FROM Invoice_Lines L, Pupils P "
         "WHERE L.Inv_Line_Inv_id = par_Invoice_id AND P.Pupil_id = L.Inv_Line_Pupil_id "
         "ORDER BY P.Pupil_FirstName, L.Inv_Line_Type, L.Invoice_Line_id;"},
        // "Inv_Line_Pupil_id = NULL" never holds: this lists nothing.
        {"Qry_Select_Invoice_Lines_NP_Display",
         "PARAMETERS par_Invoice_id LONG; SELECT Description, Amount, Invoice_Line_id AS Line_id FROM Invoice_Lines "
         "WHERE Inv_Line_Inv_id = par_Invoice_id AND Inv_Line_Pupil_id = NULL ORDER BY Amount;"},
        {"Qry_Select_Invoice_Line",
         "PARAMETERS par_Line_id LONG; SELECT * FROM Invoice_Lines WHERE Invoice_Line_id = par_Line_id;"},
        {"Qry_Select_Invoice_Amount",
         "PARAMETERS par_Invoice_id LONG; SELECT " + money_sum("Amount")
             + " AS total FROM Invoice_Lines WHERE Inv_Line_Inv_id = par_Invoice_id;"},
        {"Qry_Select_A_Pupil_Name",
         "PARAMETERS par_Pupil_id LONG; SELECT " + display_name
             + " AS DisplayName FROM Pupils P, Families F WHERE P.Pupil_id = par_Pupil_id "
               "AND P.Pupil_Family_id = F.Family_id;"},
        {"Qry_Select_tmp_Pupil_Names",
         "SELECT " + display_name
             + " AS DisplayName FROM Pupils P, Families F, Tmp_Pupils T WHERE T.Tmp_Pupil_id = P.Pupil_id "
               "AND P.Pupil_Family_id = F.Family_id;"},
    };
}

}  // namespace

const std::vector<StoredQueryText>& invoicing_query_texts()
{
    static const std::vector<StoredQueryText> texts = make_texts();
    return texts;
}
