#pragma once
// Database files of the old versions, as the upgrade finds them: a current
// file with a small school in it, taken back one step at a time by removing
// what each upgrade step adds. Every file of version 2 on holds courses with
// free-text teachers, and every file holds entries on three dates.

#include <QDate>
#include <QString>
#include <QStringList>

namespace upgrade_testing {

// The school in every fixture file.
namespace school {
inline const QDate exam_day(2026, 3, 14);
inline const QDate second_exam_day(2026, 3, 21);
inline const QDate show_day(2026, 7, 4);
inline constexpr int anna = 1;      // on the exam and the show
inline constexpr int exam_id = 1;   // "Grade 1 Ballet", type 1
inline constexpr int show_id = 2;   // "Summer Show", type 2
// Course_Teacher of the five courses: "Miss Jones" twice, "Mr Brown", an
// empty text and a null.
inline constexpr int course_count = 5;
}  // namespace school

// Writes a file of `version` (0 to 13) at `path`. Version 0 is a version 1
// file whose Sys_tab says 0. An old file keeps only the stored query that
// opening needs (Qry_Select_Sys); its creation and backup dates lie in 2001
// and its backup file name is "old.bak".
void make_old_version_file(const QString& path, int version);

// The tables, columns (with declared types), indexes and triggers of a file,
// one line each, sorted: two files of the same schema give the same list.
QStringList schema_outline(const QString& path);

}  // namespace upgrade_testing
