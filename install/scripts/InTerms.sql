comment ------------------------------------------------------------------
comment  InTerms.sql - term invoices for the chosen families and terms.
comment
comment  Runs after CrsCosts.sql, on the families in Tmp_Pupils and the terms
comment  in Tmp_Terms. Each step below is one stored query; a failure undoes
comment  the whole file. Running it twice for the same families and terms
comment  fails on the invoices already there, and changes nothing.
comment ------------------------------------------------------------------

comment  One invoice per family and term, marked provisional (2) for now.
Qry_Setup_Invoice_Terms_Temp;

comment  A line for every pupil of those families on a chosen course, at the
comment  course's cost for the term.
Qry_Setup_Invoice_Courses;

comment  A school's own steps for the new invoices alone - discounts, tax -
comment  go here, working on the invoices whose Invoice_Generated is still 2.
comment  InTermsSiblingDiscount.sql shows one.

comment  The new invoices are listed for printing: the invoice report on the
comment  Reports screen prints these, and only these, the next time it runs.
INSERT INTO Tmp_Invoices SELECT Invoice_id AS tmp_Invoice_id FROM Invoices WHERE Invoice_Generated = 2;

comment  Last, the provisional invoices become automatic (0).
Qry_Update_Generation_to_Auto;

comment  A family whose pupils are only on cancelled or uncosted courses has an
comment  invoice without lines. To remove such invoices (and any other invoice
comment  with neither lines nor receipts), put this step back in:
comment  Qry_Delete_Lone_Invoices;

display Term invoices raised.
