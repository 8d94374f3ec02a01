// The selections chosen for reports, as the formula text that a report run
// adds to its selection and the names that show the user what was chosen:
// every kind with and without the invoice tables' fields, the skipped empty
// entries, whole families, dates in the report engine's Date form, the
// changed-pupils query that has always failed, and the invoices of one run.

#include "reports/report_selections.h"

#include "shell/locale_formats.h"
#include "shell/selection_lists.h"
#include "support/school_made_current.h"
#include "support/scripted_boxes.h"

#include <QDate>
#include <functional>
#include <gtest/gtest.h>

namespace {

using testing_support::ScriptedBoxes;
using SetupRoutine = bool (*)(bool, QString&, QString&, int&);

struct Outcome {
    bool ok = false;
    QString selection;
    QString shown;
    int status = -1;
};

Outcome run(SetupRoutine routine, bool invoice_form)
{
    Outcome outcome;
    outcome.selection = QStringLiteral("left over");
    outcome.shown = QStringLiteral("left over");
    outcome.ok = routine(invoice_form, outcome.selection, outcome.shown, outcome.status);
    return outcome;
}

QString n(int id)
{
    return QString::number(id);
}

class ReportSelections : public ::testing::Test {
protected:
    ReportSelections()
    {
        ashdown = school.add_family(QStringLiteral("Ashdown"));
        brook = school.add_family(QStringLiteral("Brook"));
        amy = school.add_pupil(ashdown, QStringLiteral("Amy"));
        ben = school.add_pupil(ashdown, QStringLiteral("Ben"), 'M');
        cara = school.add_pupil(brook, QStringLiteral("Cara"));
        autumn = school.insert(QStringLiteral("Term_Dates"), {{"Term_Id", 7},
                                                              {"Term_Name", QStringLiteral("Autumn 2025")},
                                                              {"Term_Start", QDate(2025, 9, 1)},
                                                              {"Term_End", QDate(2025, 12, 12)}});
        spring = school.add_term(QStringLiteral("Spring 2026"), QDate(2026, 1, 5), QDate(2026, 3, 27));
        ballet = school.add_course(testing_support::NewCourse(QStringLiteral("Ballet Grade 1")));
        tap = school.add_course(testing_support::NewCourse(QStringLiteral("Tap Seniors")));
        grade1 = school.add_activity(testing_support::NewActivity(QStringLiteral("Ballet Exam Grade 1")));
        show = school.add_activity(testing_support::NewActivity(QStringLiteral("Summer Show")).of_kind(code::exam_type::Show));
    }
    ~ReportSelections() override { Glob_Date_Format() = QStringLiteral("dd mmm yyyy"); }

    testing_support::SchoolMadeCurrent school;
    int ashdown = 0, brook = 0, amy = 0, ben = 0, cara = 0;
    int autumn = 0, spring = 0, ballet = 0, tap = 0, grade1 = 0, show = 0;
};

// ---- One list, each kind ----

struct IdCase {
    const char* name;
    SetupRoutine routine;
    IdList& (*list)();
    bool invoice_form;
    QString field;  // the formula's field, before the id
};

TEST_F(ReportSelections, EachKindMakesOneTermPerIdWithItsFieldAndListsTheNames)
{
    struct Chosen {
        IdCase kind;
        QVector<int> ids;
        QString shown;
    };
    const std::vector<Chosen> cases = {
        {{"terms, invoices", &selections::Setup_Terms, Sel_Terms, true, "{invoices.invoice_term_id} = "},
         {spring, autumn}, "Autumn 2025, Spring 2026, "},
        {{"terms", &selections::Setup_Terms, Sel_Terms, false, "{Term_Dates.Term_id} = "}, {autumn}, "Autumn 2025, "},
        {{"courses, invoices", &selections::Setup_courses, Sel_Courses, true, "{Invoice_Lines.Inv_Line_Course_id} = "},
         {ballet}, "Ballet Grade 1, "},
        // Entries not above nought are skipped.
        {{"courses", &selections::Setup_courses, Sel_Courses, false, "{Courses.Course_id} = "},
         {0, ballet, -3, tap}, "Ballet Grade 1, Tap Seniors, "},
        {{"pupils, invoices", &selections::Setup_pupils, Sel_Pupils, true, "{Invoice_Lines.Inv_Line_Pupil_id} = "},
         {cara}, "Cara Brook, "},
        {{"pupils", &selections::Setup_pupils, Sel_Pupils, false, "{pupils.pupil_id} = "},
         {amy, cara}, "Amy Ashdown, Cara Brook, "},
        {{"activities, invoices", &selections::Setup_exams, Sel_Activities, true, "{Invoice_Lines.Inv_Line_Exam_id} = "},
         {show}, "Summer Show, "},
        {{"activities", &selections::Setup_exams, Sel_Activities, false, "{exams.exam_id} = "},
         {grade1, show}, "Ballet Exam Grade 1, Summer Show, "},
    };
    for (const Chosen& chosen : cases) {
        SCOPED_TRACE(chosen.kind.name);
        Reset_Changed_Lists();
        QStringList terms;
        for (int id : chosen.ids) {
            chosen.kind.list().append(id);
            if (id > 0)
                terms << chosen.kind.field + n(id);
        }
        const Outcome outcome = run(chosen.kind.routine, chosen.kind.invoice_form);
        EXPECT_TRUE(outcome.ok);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.selection, QLatin1Char('(') + terms.join(QStringLiteral(" OR ")) + QLatin1Char(')'));
        EXPECT_EQ(outcome.shown, chosen.shown);
    }
}

TEST_F(ReportSelections, NothingSelectedGivesStatusNoughtAndEmptyTextsForEveryKind)
{
    const std::vector<std::pair<const char*, SetupRoutine>> routines = {
        {"Setup_Terms", &selections::Setup_Terms}, {"Setup_courses", &selections::Setup_courses},
        {"Setup_pupils", &selections::Setup_pupils}, {"Setup_exams", &selections::Setup_exams},
        {"Setup_Pupil_Families", &selections::Setup_Pupil_Families},
        {"Setup_Changed_Pupils", &selections::Setup_Changed_Pupils},
        {"Setup_Changed_Families", &selections::Setup_Changed_Families}, {"Setup_Dates", &selections::Setup_Dates},
    };
    for (const bool only_noughts : {false, true}) {
        Reset_Changed_Lists();
        if (only_noughts) {
            // Lists whose entries are all empty select nothing either.
            for (IdList* list : {&Sel_Terms(), &Sel_Courses(), &Sel_Pupils(), &Sel_Activities(), &Changed_Pupils()})
                list->append(0);
            Sel_Activity_Dates().append(QDate(1899, 12, 30));
        }
        for (const auto& [name, routine] : routines) {
            SCOPED_TRACE(std::string(name) + (only_noughts ? " with only empty entries" : " with an empty list"));
            for (const bool invoice_form : {false, true}) {
                const Outcome outcome = run(routine, invoice_form);
                EXPECT_TRUE(outcome.ok);
                EXPECT_EQ(outcome.status, 0);
                EXPECT_EQ(outcome.selection, QString());
                EXPECT_EQ(outcome.shown, QString());
            }
        }
    }
}

// ---- Dates ----

TEST_F(ReportSelections, DatesEnterTheFormulaInTheDateFormAndShowInTheLongDateFormat)
{
    for (const QDate& day : {QDate(2005, 3, 14), QDate(2026, 11, 2), QDate(2026, 12, 25)})
        Sel_Activity_Dates().append(day);

    const Outcome exams = run(&selections::Setup_Dates, false);
    EXPECT_EQ(exams.selection, QStringLiteral("({Exam_Results.Results_Date} = Date(2005,3,14)"
                                              " OR {Exam_Results.Results_Date} = Date(2026,11,2)"
                                              " OR {Exam_Results.Results_Date} = Date(2026,12,25))"));
    EXPECT_EQ(exams.selection.count(QStringLiteral(" Date(")), 3);
    EXPECT_EQ(exams.shown, QStringLiteral("14 Mar 2005, 02 Nov 2026, 25 Dec 2026"));
    EXPECT_EQ(exams.status, 1);

    // The invoice field has its own trailing blank before the " Date(".
    Glob_Date_Format() = QStringLiteral("yyyy-mmm-dd");
    const Outcome invoices = run(&selections::Setup_Dates, true);
    EXPECT_TRUE(invoices.selection.startsWith(QStringLiteral("({invoices.invoice_Activity_Date} =  Date(2005,3,14) OR ")));
    EXPECT_EQ(invoices.shown, QStringLiteral("2005-Mar-14, 2026-Nov-02, 2026-Dec-25"));
}

// ---- Whole families ----

TEST_F(ReportSelections, FamilyFormsSelectEachDistinctFamilyOfThePupilsOnce)
{
    struct FamilyCase {
        const char* name;
        SetupRoutine routine;
        IdList& (*list)();
        bool invoice_form;
        QString field;
    };
    const std::vector<FamilyCase> cases = {
        {"selected pupils, invoices", &selections::Setup_Pupil_Families, Sel_Pupils, true, "{invoices.invoice_family_id} = "},
        {"selected pupils", &selections::Setup_Pupil_Families, Sel_Pupils, false, "{families.family_id} = "},
        {"changed pupils, invoices", &selections::Setup_Changed_Families, Changed_Pupils, true, "{invoices.invoice_family_id} = "},
        {"changed pupils", &selections::Setup_Changed_Families, Changed_Pupils, false, "{families.family_id} = "},
    };
    for (const FamilyCase& c : cases) {
        SCOPED_TRACE(c.name);
        Reset_Changed_Lists();
        for (int pupil : {amy, cara, ben})  // Amy and Ben are of one family
            c.list().append(pupil);
        const Outcome outcome = run(c.routine, c.invoice_form);
        EXPECT_TRUE(outcome.ok);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.selection, QLatin1Char('(') + c.field + n(ashdown) + QStringLiteral(" OR ") + c.field + n(brook)
                                         + QLatin1Char(')'));
        EXPECT_EQ(outcome.shown, QStringLiteral("Ashdown, Brook, "));
    }
    // Pupils no longer there select no family.
    Reset_Changed_Lists();
    Sel_Pupils().append(9999);
    const Outcome gone = run(&selections::Setup_Pupil_Families, false);
    EXPECT_TRUE(gone.ok);
    EXPECT_EQ(QStringLiteral("%1|%2|%3").arg(gone.status).arg(gone.selection, gone.shown), QStringLiteral("0||"));
}

// ---- Failures ----

// A names query that fails, as the changed pupils' by name always does, is
// reported with its routine and leaves nothing behind.
TEST_F(ReportSelections, ANamesQueryThatFailsIsReportedWithTheRoutineAndLeavesNothingBehind)
{
    school.exec(QStringLiteral("ALTER TABLE Courses RENAME COLUMN Course_Title TO Course_Name"));
    Changed_Pupils().append(amy);
    Sel_Courses().append(ballet);
    const struct {
        SetupRoutine routine;
        const char* name;
        const char* box;
    } cases[] = {
        {&selections::Setup_Changed_Pupils, "Setup_Changed_Pupils", "Unexpected error selecting a pupil's family"},
        {&selections::Setup_courses, "Setup_courses", "Unexpected error selecting a course"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Outcome outcome;
        ScriptedBoxes().expect(QString::fromUtf8(c.box)).during([&] { outcome = run(c.routine, false); });
        EXPECT_FALSE(outcome.ok);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.selection, QString());
        EXPECT_EQ(outcome.shown, QString());
        const QString log = school.log_text();
        EXPECT_TRUE(log.contains(QStringLiteral("freports")) && log.contains(QLatin1String(c.name))) << log.toStdString();
    }
}

// ---- The invoices of one run ----

TEST_F(ReportSelections, InvoicesLeftByTheBillingSideServeOneReportOnly)
{
    const int first = school.add_invoice(ashdown, QStringLiteral("Spring fees"), spring);
    const int second = school.add_invoice(brook, QStringLiteral("Spring fees"), spring);
    school.add_invoice(brook, QStringLiteral("Autumn fees"), autumn);  // not in this run
    for (int invoice : {first, second})
        school.insert(QStringLiteral("Tmp_Invoices"), {{"Tmp_Invoice_id", invoice}});

    QString selection;
    int status = -1;
    ASSERT_TRUE(selections::Setup_Invoices(selection, status));
    EXPECT_EQ(status, 1);
    EXPECT_EQ(selection, QStringLiteral("({Invoices.Invoice_id} = ") + n(first) + QStringLiteral(" OR {Invoices.Invoice_id} = ")
                             + n(second) + QLatin1Char(')'));
    EXPECT_EQ(school.count(QStringLiteral("Tmp_Invoices")), 0);
    EXPECT_EQ(school.count(QStringLiteral("Invoices")), 3);

    // The same report run again finds no invoices of its own.
    ASSERT_TRUE(selections::Setup_Invoices(selection, status));
    EXPECT_EQ(status, 0);
    EXPECT_EQ(selection, QString());
}

}  // namespace
