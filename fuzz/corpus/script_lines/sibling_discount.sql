comment ------------------------------------------------------------------
comment  InTermsSiblingDiscount.sql - term invoices with a sibling discount.
comment
comment  An example of a school's own term invoicing script. It is InTerms.sql
comment  with one step added: every family with two or more pupils on its new
comment  invoice gets 10% off that invoice, as a line of its own.
comment
comment  To use it, choose it as the term invoicing script in Change Defaults
comment  (the Preferences screen then says that personalised course discounts
comment  are in use). To change the rate, change both 0.10 and the words of
comment  the description below.
comment
comment  How it works: Qry_Setup_Invoice_Terms_Temp marks the new invoices as
comment  provisional (Invoice_Generated = 2), so a step placed before
comment  Qry_Update_Generation_to_Auto can tell them from every invoice raised
comment  before. The discount line has no pupil, course or activity (line type
comment  8), and a negative amount, rounded to the penny.
comment
comment  Rules of the file: a statement may run over several lines and ends at
comment  the first ";". Text values stand between double quotes and must not
comment  hold a ";". A failure in any step undoes the whole file.
comment ------------------------------------------------------------------

Qry_Setup_Invoice_Terms_Temp;
Qry_Setup_Invoice_Courses;

comment  The sibling discount, on the provisional invoices only.
INSERT INTO Invoice_Lines (Inv_Line_Inv_id, Inv_Line_Type, Description, Amount)
    SELECT I.Invoice_id, 8, "Sibling discount 10%", -round(SUM(L.Amount) * 0.10, 2)
    FROM Invoices I INNER JOIN Invoice_Lines L ON L.Inv_Line_Inv_id = I.Invoice_id
    WHERE I.Invoice_Generated = 2
    GROUP BY I.Invoice_id
    HAVING COUNT(DISTINCT L.Inv_Line_Pupil_id) >= 2;

Qry_Update_Generation_to_Auto;

display Term invoices raised, with sibling discounts.
