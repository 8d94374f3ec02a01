INSERT INTO Tmp_Costs SELECT c.Course_id AS Course_id, Cost * 2 AS [Full Cost], T.Term_id FROM Courses AS c, Tmp_Terms AS T WHERE c.Start_Date >= #9/7/26# -- autumn
