#include "billing/auto_invoicing.h"
#include "database/db_handling.h"
#include "engine/msg_box.h"
#include "engine/workspace.h"
#include "invoicing_school.h"
#include "shell/selection_lists.h"
#include "shell/settings.h"
#include "support/scripted_boxes.h"

#include <gtest/gtest.h>

namespace {

// A dump without one table's section: the costs a committed cost script
// leaves in its temporary table stay there until the screen clears them.
QString without_table(const QString& dump, const QString& table)
{
    QStringList sections = dump.split(QStringLiteral("== "));
    sections.erase(std::remove_if(sections.begin(), sections.end(),
                                  [&](const QString& s) { return s.startsWith(table + QLatin1Char('\n')); }),
                   sections.end());
    return sections.join(QStringLiteral("== "));
}

using engine::answer::No;
using engine::answer::Ok;
using engine::answer::Yes;
using testing_support::NewCourse;
using testing_support::ScriptedBoxes;

const QString raised = QStringLiteral("Term invoices raised. Script successfully applied");
const QString abandoned = QStringLiteral("Script file abandoned and all changes undone");

class TermInvoicingTest : public ::testing::Test {
protected:
    bool run_term()
    {
        screen.prepare();
        const bool done = screen.insert_term();
        EXPECT_EQ(Program_Workspace().transaction_depth(), 0);
        return done;
    }

    testing_support::InvoicingSchool school;
    AutoInvoicing screen;
};

TEST_F(TermInvoicingTest, TheDefaultScriptsInvoiceEveryFamilyOnACourseWithItsLines)
{
    Sel_Terms().append(school.spring);
    EXPECT_TRUE(run_term());
    EXPECT_EQ(screen.status, raised);
    EXPECT_EQ(screen.filename, Settings().term_script);
    EXPECT_EQ(screen.term_name, QStringLiteral("- Spring 2026"));

    // Cole's only course is cancelled: an invoice without lines. Dyer has no course: no invoice.
    EXPECT_EQ(school.invoices(), QStringList({QStringLiteral("Ashby|Invoice for Spring 2026|0"),
                                              QStringLiteral("Brook|Invoice for Spring 2026|0"),
                                              QStringLiteral("Cole|Invoice for Spring 2026|0")}));
    EXPECT_EQ(school.lines(), QStringList({QStringLiteral("Ashby|Amy's Ballet Grade 1|3|120"),
                                           QStringLiteral("Ashby|Amy's Tap Beginners|3|150"),
                                           QStringLiteral("Ashby|Ben's Jazz Seniors|3|150"),
                                           QStringLiteral("Brook|Cara's Ballet Grade 1|3|120")}));
    EXPECT_EQ(school.count(QStringLiteral("Invoices WHERE Invoice_Term_Id = %1").arg(school.spring)), 3);
}

TEST_F(TermInvoicingTest, ASecondRunForTheSameFamiliesFailsAndChangesNothing)
{
    Sel_Terms().append(school.spring);
    ASSERT_TRUE(run_term());
    screen.prepare();
    const QString before = school.dump();

    ScriptedBoxes()
        .expect(QStringLiteral("The data cannot be inserted because there are already records there."), Ok, 0)
        .during([&] { EXPECT_FALSE(screen.insert_term()); });
    EXPECT_EQ(screen.status, abandoned);
    EXPECT_EQ(without_table(school.dump(), QStringLiteral("Tmp_CourseCosts")),
              without_table(before, QStringLiteral("Tmp_CourseCosts")));
}

// A changed pupil's whole family is invoiced; an emptied list raises nothing.
TEST_F(TermInvoicingTest, AChangedPupilsWholeFamilyIsInvoicedAndAnEmptyChangedListRaisesNothing)
{
    Glob_Keep_Changed_List() = true;
    Glob_Add_Changed_Pupil(school.ben);
    Sel_Terms().append(school.spring);
    screen.prepare();
    EXPECT_EQ(screen.pupil_set, AutoInvoicing::PupilSet::ChangedList);
    EXPECT_EQ(screen.pupil_list, QStringList{QStringLiteral("Ben Ashby ")});
    Changed_Pupils().reset();
    screen.choose_changed_list();
    EXPECT_EQ(screen.pupil_list, QStringList{QStringLiteral("None Stored")});
    EXPECT_TRUE(screen.insert_term());
    EXPECT_EQ(school.count(QStringLiteral("Invoices")), 0);

    Glob_Add_Changed_Pupil(school.ben);
    screen.prepare();
    EXPECT_TRUE(screen.insert_term());
    EXPECT_EQ(school.invoices(), QStringList{QStringLiteral("Ashby|Invoice for Spring 2026|0")});
    EXPECT_EQ(school.lines().size(), 3);  // Amy's two courses as well as Ben's
}

TEST_F(TermInvoicingTest, ChosenPupilsAndCoursesNarrowTheRun)
{
    Sel_Terms().append(school.spring);
    Sel_Pupils().append(school.cara);
    Sel_Pupils().append(school.amy);
    Sel_Courses().append(school.ballet);
    screen.prepare();
    EXPECT_EQ(screen.amounts[AutoInvoicing::Pupils], QStringLiteral("Some"));
    EXPECT_EQ(screen.amounts[AutoInvoicing::Courses], QStringLiteral("One"));
    EXPECT_EQ(screen.amounts[AutoInvoicing::Activities], QStringLiteral("All"));
    EXPECT_EQ(screen.pupil_list.size(), 2);
    EXPECT_TRUE(screen.insert_term());
    EXPECT_EQ(school.lines(), QStringList({QStringLiteral("Ashby|Amy's Ballet Grade 1|3|120"),
                                           QStringLiteral("Brook|Cara's Ballet Grade 1|3|120")}));
}

TEST_F(TermInvoicingTest, TwoTermsChosenAreInvoicedTogether)
{
    const int summer = school.add_term(QStringLiteral("Summer 2026"), QDate(2026, 4, 13), QDate(2026, 7, 18));
    school.set_lessons(summer, code::weekday::Monday, 13);
    school.set_lessons(summer, code::weekday::Tuesday, 14);
    school.set_lessons(summer, code::weekday::Saturday, 14);
    Sel_Terms().append(school.spring);
    Sel_Terms().append(summer);
    EXPECT_TRUE(run_term());
    EXPECT_EQ(screen.term_name, QString());
    EXPECT_EQ(school.invoices().size(), 6);
    EXPECT_TRUE(school.lines().contains(QStringLiteral("Brook|Cara's Ballet Grade 1|3|130")));
    EXPECT_TRUE(school.lines().contains(QStringLiteral("Brook|Cara's Ballet Grade 1|3|120")));
    // The run's invoices, and only they, are listed for the invoice report.
    EXPECT_EQ(school.count(QStringLiteral("Tmp_Invoices T INNER JOIN Invoices I ON I.Invoice_id = T.tmp_Invoice_id")), 6);
}

TEST_F(TermInvoicingTest, CancellingAtTheCostCheckLeavesEverythingAsItWas)
{
    school.add_course(NewCourse(QStringLiteral("Hip Hop")).on(code::weekday::Wednesday));  // no lessons that day
    Sel_Terms().append(school.spring);
    screen.prepare();
    const QString before = school.dump();

    ScriptedBoxes()
        .expect(QStringLiteral("There are no costs set up for Hip Hop, \nDo you want to cancel the invoice run?"), Yes, 36)
        .during([&] { EXPECT_FALSE(screen.insert_term()); });
    EXPECT_EQ(screen.status, QStringLiteral("Insert Invoices abandoned"));
    EXPECT_EQ(without_table(school.dump(), QStringLiteral("Tmp_CourseCosts")),
              without_table(before, QStringLiteral("Tmp_CourseCosts")));
    EXPECT_GT(school.count(QStringLiteral("Tmp_CourseCosts")), 0);
}

TEST_F(TermInvoicingTest, GoingOnPastTheCostCheckInvoicesTheCostedCourses)
{
    const int hip_hop = school.add_course(NewCourse(QStringLiteral("Hip Hop")).on(code::weekday::Wednesday));
    school.put_on_course(school.eve, hip_hop);
    Sel_Terms().append(school.spring);
    ScriptedBoxes().expect(QStringLiteral("There are no costs set up for Hip Hop, "), No)
        .during([&] { EXPECT_TRUE(run_term()); });
    EXPECT_EQ(school.invoices().size(), 4);  // Dyer's without lines
    EXPECT_EQ(school.lines().size(), 4);
}

// Without a term the run is refused; a missing cost script is reported; either way nothing changes.
TEST_F(TermInvoicingTest, WithNoTermOrWithoutItsCostScriptTheRunIsRefusedAndChangesNothing)
{
    ScriptedBoxes()
        .expect(QStringLiteral("There must be one specified term. \nPlease choose one by pressing 'Criteria'."), Ok, 0)
        .during([&] { EXPECT_FALSE(run_term()); });
    EXPECT_EQ(school.count(QStringLiteral("Invoices")), 0);

    Settings().cost_script = school.file(QStringLiteral("NoSuchCosts.sql"));
    Sel_Terms().append(school.spring);
    screen.prepare();
    const QString before = school.dump();
    ScriptedBoxes().expect(QStringLiteral("Cannot open file ") + Settings().cost_script, Ok)
        .during([&] { EXPECT_FALSE(screen.insert_term()); });
    EXPECT_EQ(screen.status, QString());
    EXPECT_EQ(school.dump(), before);
}

TEST_F(TermInvoicingTest, APersonalisedScriptAddsASiblingDiscountBeforeTheInvoicesBecomeFinal)
{
    Settings().term_script = testing_support::install_scripts_folder() + QStringLiteral("/InTermsSiblingDiscount.sql");
    const int earlier = school.add_invoice(school.brook, QStringLiteral("Uniform"));
    school.add_line(earlier, 30);
    school.exec(QStringLiteral("UPDATE Invoices SET Invoice_Generated = 0"));
    Sel_Terms().append(school.spring);
    EXPECT_TRUE(run_term());
    EXPECT_EQ(screen.status, QStringLiteral("Term invoices raised, with sibling discounts. Script successfully applied"));
    EXPECT_TRUE(school.lines().contains(QStringLiteral("Ashby|Sibling discount 10%|8|-42")));
    EXPECT_EQ(school.count(QStringLiteral("Invoice_Lines WHERE Description LIKE 'Sibling%'")), 1);
    EXPECT_EQ(school.count(QStringLiteral("Invoices WHERE Invoice_Generated <> 0")), 0);
}

}  // namespace
