SELECT DISTINCT `Family Name`, 'O''Brien' & (a & (b & "c")) AS x, .5e-3, T.5, 0x1F /* note */ FROM [Families] WHERE d = #13:45# OR d <> #12/30/1899 01:02:03 AM# AND flag = True; DELETE t.* FROM t
