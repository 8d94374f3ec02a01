comment ------------------------------------------------------------------
comment  CrsCosts.sql - the cost of every course for every term.
comment
comment  Fills Tmp_CourseCosts with one row per course and term, which the
comment  term invoicing script then turns into invoice lines. A course that
comment  is suppressed or cancelled gets no row.
comment
comment  Tmp_CourseCosts refuses a second row for the same course and term,
comment  so the rows of an earlier run are cleared first.
comment ------------------------------------------------------------------
DELETE * FROM Tmp_CourseCosts;

comment  A course with a lesson price: the price times the lessons on its weekday.
Qry_Setup_Course_Costs;

comment  A course without a price: the default hourly rate times the lesson's
comment  minutes times the lessons, over 60.
Qry_Setup_Default_Course_Costs;

comment  No price and no default rate, but a course type: a row costing 0,
comment  for the next step to fill in.
Qry_Setup_Default_Zero_Course_Costs;

comment  A numeric course type is a flat price for the term. It overwrites the
comment  costs made above, so it must stay the last step.
Qry_Setup_Alternate_Course_Costs;

display Course costs worked out.
