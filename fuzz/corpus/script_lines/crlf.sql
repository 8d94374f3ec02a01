comment windows line ends
display	Tabbed status
UPDATE Courses SET Cost = 10
;  trailing; text
question
