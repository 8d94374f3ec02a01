UPDATE Families SET Notes = Family_Name & ", " & [Town] & " " & Left(Post_Code, 4) WHERE Cancelled = False AND Title = "Mr ""Big"""
