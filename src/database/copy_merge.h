#pragma once
// Starting a new database file from the current one (the roll-forward to a
// new term), and merging two files. All of it is table-by-table SQL from one
// open file into another reached by ATTACH, parents before children as the
// foreign keys demand, ids copied as they stand. There is no transaction
// over a copy or a merge: a failure deletes the new or target file.

#include <QString>

// Copies the people, teachers, courses and registers of old_name into
// new_name, which must exist already as an empty database without the
// Standard_Values row; then the exams only, or with copy_all every activity,
// term, holiday, invoice and receipt. Everything is closed afterwards.
bool DB_Copy_DB_For_NewTerm(const QString& old_name, const QString& new_name, bool copy_all);

// The steps of the copy, from the open database into new_name.
bool DB_Copy_DB_Pupils_and_Courses(const QString& old_name, const QString& new_name);
bool DB_Copy_Exams_Of_Type(const QString& old_name, const QString& new_name, int exam_type);
bool DB_Copy_Exams_All(const QString& old_name, const QString& new_name);
bool DB_Copy_Invoices_All(const QString& old_name, const QString& new_name);

// Adds to target_name the rows of source_name whose ids it lacks. Meant for
// two files grown from a common copy: a row whose id the target holds is
// taken to be the same row. Everything is closed afterwards.
bool DB_Merge_Databases(const QString& source_name, const QString& target_name);

// The table steps of the merge, from source_name into the open database.
bool DB_Merge_ALL(const QString& source_name, const QString& target_name);
