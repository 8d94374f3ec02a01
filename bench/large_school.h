#pragma once
// The large school the benchmarks time the program on: 10,000 families,
// 15,000 pupils each on two of 300 courses, 3 terms with their lesson counts,
// in a new database made current as the program has it. The default scripts
// are the program's own.

#include "database/db_handling.h"
#include "database/schema.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "engine/settings_store.h"
#include "engine/workspace.h"
#include "shell/selection_lists.h"
#include "shell/settings.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

namespace bench_school {


inline constexpr int families = 10000;
inline constexpr int pupils = 15000;
inline constexpr int courses = 300;
inline constexpr int terms = 3;

inline QString scripts_folder()
{
    return QDir::cleanPath(QFileInfo(QStringLiteral(__FILE__)).absolutePath() + QStringLiteral("/../install/scripts"));
}

inline void must(bool done, const char* what)
{
    if (done)
        return;
    std::fprintf(stderr, "%s failed: %d %s\n", what, engine::Err().Number, qPrintable(engine::Err().Description));
    std::exit(1);
}

// A sequence 1..n for building rows in bulk.
inline QString numbers(int n)
{
    return QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) ").arg(n);
}

inline void build_school(engine::Database& db)
{
    const QStringList statements = {
        QStringLiteral("UPDATE Standard_Values SET Deflt_Course_Hourly_Rate = 20"),
        numbers(families) + QStringLiteral("INSERT INTO Families (Family_Name, Family_Address) "
                                           "SELECT 'Family ' || i, i || ' High Street' FROM n"),
        // Every family has a pupil; every other family a second one.
        numbers(pupils) + QStringLiteral("INSERT INTO Pupils (Pupil_FirstName, Pupil_Family_Id, Pupil_Gender) "
                                         "SELECT 'Pupil ' || i, CASE WHEN i <= %1 THEN i ELSE (i - %1) * 2 END, 'F' FROM n")
                              .arg(families),
        // A third priced by the lesson, a third at the hourly rate, a third at a flat price; Monday to Saturday.
        numbers(courses) + QStringLiteral("INSERT INTO Courses (Course_Title, Day_of_Week, Course_LessonPrice, Lesson_Duration, "
                                          "Course_Type, Course_Suppressed, Course_Cancelled) "
                                          "SELECT 'Course ' || i, 2 + i % 6, CASE WHEN i % 3 = 0 THEN 8.5 END, 45, "
                                          "CASE WHEN i % 3 = 2 THEN '150' END, 0, 0 FROM n"),
        numbers(pupils) + QStringLiteral("INSERT INTO Register_Courses (Pupil_id, Course_id) "
                                         "SELECT i, 1 + i % %1 FROM n UNION ALL SELECT i, 1 + (i * 7 + 3) % %1 FROM n "
                                         "WHERE (i * 7 + 3) % %1 <> i % %1")
                              .arg(courses),
        numbers(terms) + QStringLiteral("INSERT INTO Term_Dates (Term_Name, Term_Start, Term_End) "
                                        "SELECT 'Term ' || i, date('2026-01-05', '+' || ((i - 1) * 16) || ' weeks') || ' 00:00:00', "
                                        "date('2026-01-05', '+' || ((i - 1) * 16 + 12) || ' weeks') || ' 00:00:00' FROM n"),
        numbers(7) + QStringLiteral("INSERT INTO Number_Lessons (Term_Id, Day_Number, Num_Lessons) "
                                    "SELECT T.Term_Id, n.i, CASE WHEN n.i = 1 THEN 0 ELSE 11 + T.Term_Id END FROM n, Term_Dates T"),
    };
    for (const QString& sql : statements)
        must(db.execute_native(sql), "building the school");
}

// One school for the whole program, made current as the program has it.
class LargeSchool {
public:
    LargeSchool()
    {
        engine::set_settings_store(std::make_unique<engine::SettingsStore>(folder_.filePath(QStringLiteral("s.ini"))));
        Settings().file_locations = 2;
        const QString scripts = scripts_folder();
        Settings().cost_script = scripts + QStringLiteral("/CrsCosts.sql");
        Settings().term_script = scripts + QStringLiteral("/InTerms.sql");
        // Nobody answers: a question would take its default button, so none may come.
        engine::set_msgbox_responder([](const QString& text, int style, const QString& title) {
            std::fprintf(stderr, "unexpected box: %s\n", qPrintable(text));
            return engine::stderr_responder(text, style, title);
        });
        const QString path = folder_.filePath(QStringLiteral("large.qdb"));
        must(DB_Create_Database(path, true), "creating the database");
        must(DB_Open(path), "opening the database");
        build_school(*Current_Db());
        Sel_Terms().append(2);
    }
    ~LargeSchool() { DB_Close_All(); }

private:
    QTemporaryDir folder_;
};

inline LargeSchool& school()
{
    static LargeSchool made;
    return made;
}

}  // namespace bench_school
