// How long the term invoicing of a large school takes: the course costs
// script alone, the preparation of the temporary tables, and the whole term
// run (costs, check, term invoices) as the Automated Invoicing screen does it.
//
// The school: 10,000 families, 15,000 pupils each on two of 300 courses,
// 3 terms with their lesson counts. Each run of the term invoicing is undone
// afterwards, outside the timing, so that every iteration raises the same
// 10,000 invoices and 30,000 lines.

#include "billing/auto_invoicing.h"
#include "database/db_handling.h"
#include "database/schema.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "engine/settings_store.h"
#include "engine/workspace.h"
#include "script/global_run_sql.h"
#include "shell/selection_lists.h"
#include "shell/settings.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr int families = 10000;
constexpr int pupils = 15000;
constexpr int courses = 300;
constexpr int terms = 3;

QString scripts_folder()
{
    return QDir::cleanPath(QFileInfo(QStringLiteral(__FILE__)).absolutePath() + QStringLiteral("/../install/scripts"));
}

void must(bool done, const char* what)
{
    if (done)
        return;
    std::fprintf(stderr, "%s failed: %d %s\n", what, engine::Err().Number, qPrintable(engine::Err().Description));
    std::exit(1);
}

// A sequence 1..n for building rows in bulk.
QString numbers(int n)
{
    return QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) ").arg(n);
}

void build_school(engine::Database& db)
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

LargeSchool& school()
{
    static LargeSchool made;
    return made;
}

void BM_CourseCostsScript(benchmark::State& state)
{
    school();
    for (auto _ : state) {
        QString status;
        must(Global_Run_SQL(Settings().cost_script, status), "the course costs script");
    }
}
BENCHMARK(BM_CourseCostsScript)->Unit(benchmark::kMillisecond);

void BM_PrepareTemporaryTables(benchmark::State& state)
{
    school();
    for (auto _ : state) {
        AutoInvoicing screen;
        must(screen.prepare(), "preparing the run");
    }
}
BENCHMARK(BM_PrepareTemporaryTables)->Unit(benchmark::kMillisecond);

void BM_TermRun(benchmark::State& state)
{
    school();
    AutoInvoicing screen;
    must(screen.prepare(), "preparing the run");
    for (auto _ : state) {
        state.PauseTiming();
        must(Program_Workspace().BeginTrans(), "beginning the undo");
        state.ResumeTiming();
        must(screen.insert_term(), "the term run");
        state.PauseTiming();
        const int raised = Current_Db()->OpenRecordset(QStringLiteral("SELECT count(*) AS n FROM Invoices"))->Fields(QStringLiteral("n")).toInt();
        const int lines = Current_Db()->OpenRecordset(QStringLiteral("SELECT count(*) AS n FROM Invoice_Lines"))->Fields(QStringLiteral("n")).toInt();
        must(raised == families, "raising an invoice for every family");
        state.counters["lines"] = lines;
        must(Program_Workspace().Rollback(), "undoing the run");
        state.ResumeTiming();
    }
    state.counters["invoices"] = families;
}
BENCHMARK(BM_TermRun)->Unit(benchmark::kMillisecond);

// The term script's steps one by one, each timed on its own after the
// steps before it: where the time of the term run goes.
void run_query(const char* name)
{
    auto query = Current_Db()->QueryDefs(QString::fromLatin1(name));
    must(query && query->Execute(engine::dbopt::FailOnErrorConsistent), name);
}

void BM_TermScriptStep(benchmark::State& state)
{
    static const char* const steps[] = {"Qry_Setup_Invoice_Terms_Temp", "Qry_Setup_Invoice_Courses",
                                        "Qry_Update_Generation_to_Auto"};
    school();
    AutoInvoicing screen;
    must(screen.prepare(), "preparing the run");
    QString status;
    must(Global_Run_SQL(Settings().cost_script, status), "the course costs script");
    const int step = static_cast<int>(state.range(0));
    state.SetLabel(steps[step]);
    for (auto _ : state) {
        state.PauseTiming();
        must(Program_Workspace().BeginTrans(), "beginning the undo");
        for (int before = 0; before < step; ++before)
            run_query(steps[before]);
        state.ResumeTiming();
        run_query(steps[step]);
        state.PauseTiming();
        must(Program_Workspace().Rollback(), "undoing the step");
        state.ResumeTiming();
    }
}
BENCHMARK(BM_TermScriptStep)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);

}  // namespace
