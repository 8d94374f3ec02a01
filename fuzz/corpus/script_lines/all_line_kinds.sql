comment  Every kind of line a school's script may hold.
display Clearing the old holidays...
on error continue
DELETE * FROM Tmp_Holidays
  WHERE day_off < #01/05/2026#;
on error end
question Raise the term invoices now?
INSERT INTO Tmp_Terms (Term_id)
SELECT Term_id FROM Terms WHERE Term_Name = "Autumn 2026";UPDATE Families
SET Notes = Family_Name & " (" & Town & ")"
WHERE Family_id = 3;

Qry_Setup_Invoice_Terms_Temp;
DISPLAY Done.
