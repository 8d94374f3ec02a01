comment ------------------------------------------------------------------
comment  InActDts.sql - invoices for activity dates.
comment
comment  Runs on the activities and dates in Tmp_Activities and the pupils in
comment  Tmp_Pupils: one invoice per family and date for the pupils entered
comment  on those dates, then its lines. A failure undoes the whole file.
comment ------------------------------------------------------------------

comment  One invoice per family and activity date.
Qry_Setup_Invoice_ActivityDates;

comment  The new invoices, which have no lines yet, are listed for printing:
comment  the invoice report on the Reports screen prints these the next time
comment  it runs. (An older invoice of the same dates left without lines is
comment  listed with them.)
INSERT INTO Tmp_Invoices SELECT I.Invoice_id AS tmp_Invoice_id FROM Invoices I
  WHERE I.Invoice_Activity_Date IN (SELECT Tmp_Date FROM Tmp_Activities)
  AND I.Invoice_id NOT IN (SELECT Inv_Line_Inv_id FROM Invoice_Lines WHERE Inv_Line_Inv_id IS NOT NULL);

comment  The price of each activity for each pupil entered.
Qry_Setup_Invoice_Activities;

comment  The default exam rate, for activities without a price of their own.
Qry_Setup_Invoice_Default_Exam;

comment  Each activity's expenses, where it has any.
Qry_Insert_Invoice_Activity_Expenses;

comment  For shows, the cost per pupil times the family's pupils in the show.
Qry_Setup_Invoice_Show_Expenses;

display Activity invoices raised.
