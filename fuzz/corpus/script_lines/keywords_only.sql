displayX
question?
comment
on error cont
ON ERROR END
;;;
SELECT 1
