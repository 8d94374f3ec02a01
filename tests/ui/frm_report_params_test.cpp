// The Select Report Criteria screen as a secretary uses it: the selections as
// they stand when it opens, choosing rows, All forgetting a list, Finished
// with its refusals, the exit question, and going back to the screen that
// opened it.

#include "ui/reports/frm_report_params.h"

#include "engine/msg_box.h"
#include "screen_driver.h"
#include "shell/selection_lists.h"
#include "support/scripted_boxes.h"
#include "ui/toolkit/data_grid.h"

#include <QAction>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <gtest/gtest.h>

using namespace screen_driver;
using engine::answer::No;
using engine::answer::Yes;
using testing_support::NewActivity;
using testing_support::NewCourse;
using testing_support::ScriptedBoxes;

namespace {

const QDate show_day(2026, 6, 20);
const QDate exam_day(2026, 3, 14);

class ReportCriteriaScreen : public ScreenTest<frm_Report_Params> {
protected:
    void SetUp() override
    {
        ScreenTest::SetUp();
        autumn = school.add_term(QStringLiteral("Autumn 2025"), QDate(2025, 9, 1), QDate(2025, 12, 12));
        spring = school.add_term(QStringLiteral("Spring 2026"), QDate(2026, 1, 5), QDate(2026, 3, 27));
        ballet = school.add_course(NewCourse(QStringLiteral("Ballet Grade 1")));
        tap = school.add_course(NewCourse(QStringLiteral("Tap Seniors")));
        grade1 = school.add_activity(NewActivity(QStringLiteral("Ballet Exam Grade 1")));
        summer_show = school.add_activity(NewActivity(QStringLiteral("Summer Show")).of_kind(code::exam_type::Show));
        school.title_date(exam_day, QStringLiteral("Spring exams"));
        school.title_date(show_day, QStringLiteral("Summer show"));
        const int ashdown = school.add_family(QStringLiteral("Ashdown"));
        amy = school.add_pupil(ashdown, QStringLiteral("Amy"));
        ben = school.add_pupil(ashdown, QStringLiteral("Ben"), 'M');
        school.add_pupil(ashdown, QStringLiteral("Hidden"), 'g');
    }

    // The texts of the grid's chosen rows in `column`, sorted.
    static QStringList chosen(DataGrid* grid, int column = 0)
    {
        QStringList texts;
        const QModelIndexList rows = grid->selectionModel()->selectedRows(column);
        for (const QModelIndex& row : rows)
            texts << row.data().toString();
        texts.sort();
        return texts;
    }

    bool closed()
    {
        settle();
        return screen.isNull() && menu.isVisible();
    }

    int autumn = 0, spring = 0, ballet = 0, tap = 0, grade1 = 0, summer_show = 0, amy = 0, ben = 0;
};

TEST_F(ReportCriteriaScreen, WithNothingSelectedEveryFrameOpensOnAllWithItsGridHiddenAndTheRatesShown)
{
    school.set_standard(QStringLiteral("Deflt_Course_Hourly_Rate"), 12.5);
    school.set_standard(QStringLiteral("Deflt_Exam_Hourly_Rate"), 30);
    open();

    EXPECT_EQ(screen->objectName(), QStringLiteral("frm_Report_Params"));
    EXPECT_EQ(screen->windowTitle(), QStringLiteral("Select Report Criteria"));
    for (QRadioButton* all : {screen->opt_All_Terms, screen->opt_All_Courses, screen->opt_All_Exams, screen->opt_All_Pupils})
        EXPECT_TRUE(all->isChecked()) << all->objectName().toStdString();
    for (DataGrid* grid : {screen->dbg_Term, screen->dbg_Course, screen->dbg_Exam, screen->dbg_Activity_Dates, screen->dbg_Pupil})
        EXPECT_FALSE(grid->isVisible()) << grid->objectName().toStdString();

    EXPECT_EQ(screen->dbg_Term->model()->rowCount(), 2);
    EXPECT_EQ(row_showing(screen->dbg_Term, QStringLiteral("Spring 2026")), 0);  // newest first
    EXPECT_EQ(screen->dbg_Course->model()->rowCount(), 2);
    EXPECT_EQ(screen->dbg_Exam->model()->rowCount(), 2);
    EXPECT_EQ(screen->dbg_Activity_Dates->model()->rowCount(), 2);
    EXPECT_EQ(screen->dbg_Pupil->model()->rowCount(), 2);  // the hidden pupil isn't listed
    EXPECT_EQ(screen->txt_Course_Hourly_Rate->text(), QStringLiteral("12.50"));
    EXPECT_EQ(screen->txt_Exam_Hourly_Rate->text(), QStringLiteral("30.00"));
    EXPECT_TRUE(screen->txt_Course_Hourly_Rate->isReadOnly());
    EXPECT_TRUE(screen->txt_Exam_Hourly_Rate->isReadOnly());
}

TEST_F(ReportCriteriaScreen, ASelectionMadeBeforeShowsAgainWhenTheScreenOpens)
{
    Sel_Terms().append(spring);
    Sel_Activity_Dates().append(show_day);
    Sel_Pupils().append(amy);
    Sel_Pupils().append(ben);
    open();

    EXPECT_TRUE(screen->opt_Specific_Terms->isChecked());
    EXPECT_TRUE(screen->dbg_Term->isVisible());
    EXPECT_EQ(chosen(screen->dbg_Term), QStringList{QStringLiteral("Spring 2026")});
    EXPECT_TRUE(screen->opt_All_Courses->isChecked());
    EXPECT_FALSE(screen->dbg_Course->isVisible());
    EXPECT_TRUE(screen->opt_Specific_Exams->isChecked());
    EXPECT_TRUE(screen->dbg_Exam->isVisible());
    EXPECT_TRUE(chosen(screen->dbg_Exam).isEmpty());
    EXPECT_EQ(chosen(screen->dbg_Activity_Dates, 1), QStringList{QStringLiteral("Summer show")});
    EXPECT_EQ(chosen(screen->dbg_Pupil), (QStringList{QStringLiteral("Amy Ashdown "), QStringLiteral("Ben Ashdown ")}));

    // Finished without a change leaves the lists as they were.
    click(screen->cmd_Go);
    EXPECT_TRUE(closed());
    EXPECT_EQ(Sel_Terms().chosen(), QVector<qint32>{spring});
    EXPECT_EQ(Sel_Activity_Dates().chosen(), QVector<QDate>{show_day});
    EXPECT_TRUE(Sel_Activities().is_empty());
    EXPECT_EQ(Sel_Pupils().chosen(), (QVector<qint32>{amy, ben}));
}

// Finished refuses each specific frame with no row chosen, in its order, then
// fills the lists and goes back to the screen that opened it.
TEST_F(ReportCriteriaScreen, FinishedRefusesEachSpecificFrameWithNoRowChosenInItsOrderThenFillsTheLists)
{
    QWidget auto_invoice;
    auto_invoice.setObjectName(QStringLiteral("frm_Auto_Invoice"));
    Glob_Return_Form() = &auto_invoice;
    open();
    for (QRadioButton* specific : {screen->opt_Specific_Terms, screen->opt_Specific_Courses, screen->opt_Specific_Exams,
                                   screen->opt_Specific_Pupils})
        click(specific);
    for (DataGrid* grid : {screen->dbg_Term, screen->dbg_Course, screen->dbg_Exam, screen->dbg_Activity_Dates, screen->dbg_Pupil})
        EXPECT_TRUE(grid->isVisible()) << grid->objectName().toStdString();

    // Each refusal names the first frame still without a choice; choosing
    // rows there, with Ctrl for more than one, moves on to the next.
    struct Choice {
        DataGrid* grid;
        const char* row;
        int column;
        bool add;
    };
    const struct {
        const char* refusal;
        std::vector<Choice> choices;
    } steps[] = {
        {"Please select a course", {{screen->dbg_Course, "Ballet Grade 1", 0, false}, {screen->dbg_Course, "Tap Seniors", 0, true}}},
        {"Please select an Activity and/or Date",
         {{screen->dbg_Exam, "Summer Show", 0, false},
          {screen->dbg_Activity_Dates, "Spring exams", 1, false},
          {screen->dbg_Activity_Dates, "Summer show", 1, true}}},
        {"Please select a pupil", {{screen->dbg_Pupil, "Ben Ashdown ", 0, false}}},
        {"Please select a term", {{screen->dbg_Term, "Autumn 2025", 0, false}}},
    };
    for (const auto& step : steps) {
        SCOPED_TRACE(step.refusal);
        ScriptedBoxes().expect(QString::fromLatin1(step.refusal), engine::answer::Ok, engine::mb::OkOnly)
            .during([&] { click(screen->cmd_Go); });
        ASSERT_FALSE(screen.isNull());
        for (const Choice& choice : step.choices)
            click_row(choice.grid, QString::fromLatin1(choice.row), choice.add, choice.column);
    }
    click(screen->cmd_Go);
    settle();
    EXPECT_TRUE(screen.isNull());
    EXPECT_TRUE(auto_invoice.isVisible());
    EXPECT_FALSE(menu.isVisible());
    EXPECT_EQ(Sel_Courses().chosen(), (QVector<qint32>{ballet, tap}));
    EXPECT_EQ(Sel_Activities().chosen(), QVector<qint32>{summer_show});
    EXPECT_EQ(Sel_Activity_Dates().chosen(), (QVector<QDate>{show_day, exam_day}));  // newest first, as listed
    EXPECT_EQ(Sel_Pupils().chosen(), QVector<qint32>{ben});
    EXPECT_EQ(Sel_Terms().chosen(), QVector<qint32>{autumn});
}

TEST_F(ReportCriteriaScreen, AllForgetsItsListAtOnceAndHidesItsGridWhileSpecificShowsIt)
{
    Sel_Courses().append(ballet);
    Sel_Activities().append(grade1);
    Sel_Activity_Dates().append(exam_day);
    open();
    ASSERT_TRUE(screen->dbg_Course->isVisible());

    click(screen->opt_All_Courses);
    EXPECT_TRUE(Sel_Courses().is_empty());
    EXPECT_FALSE(screen->dbg_Course->isVisible());
    click(screen->opt_All_Exams);
    EXPECT_TRUE(Sel_Activities().is_empty());
    EXPECT_TRUE(Sel_Activity_Dates().is_empty());
    EXPECT_FALSE(screen->dbg_Exam->isVisible());
    EXPECT_FALSE(screen->dbg_Activity_Dates->isVisible());

    click(screen->opt_Specific_Courses);
    EXPECT_TRUE(screen->dbg_Course->isVisible());
    EXPECT_TRUE(chosen(screen->dbg_Course).isEmpty());
}

TEST_F(ReportCriteriaScreen, AHeadingClickChoosesEveryActivityOrEveryDate)
{
    open();
    click(screen->opt_Specific_Exams);
    for (DataGrid* grid : {screen->dbg_Exam, screen->dbg_Activity_Dates}) {
        QHeaderView* header = grid->horizontalHeader();
        QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier,
                          QPoint(header->sectionViewportPosition(0) + 5, header->height() / 2));
        settle();
        EXPECT_EQ(grid->SelBookmarks().size(), 2) << grid->objectName().toStdString();
    }
}

TEST_F(ReportCriteriaScreen, ExitAsksToSaveASpecificChoiceAndYesIsFinishedWhileNoLeavesTheListsAlone)
{
    const struct {
        const char* name;
        bool specific;
        int answer;  // 0: no question
        bool saved;
    } cases[] = {
        {"everything All", false, 0, false},
        {"a course chosen, not saved", true, No, false},
        {"a course chosen, saved", true, Yes, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Reset_Changed_Lists();
        menu.hide();
        open();
        if (c.specific) {
            click(screen->opt_Specific_Courses);
            click_row(screen->dbg_Course, QStringLiteral("Tap Seniors"));
        }
        {
            ScriptedBoxes boxes;
            if (c.answer)
                boxes.expect(QStringLiteral("You have not set up your selections. \nDo you wish to save them? "), c.answer,
                             engine::mb::YesNo | engine::mb::Question);
            screen->mnu_Exit->trigger();
            settle();
        }
        EXPECT_TRUE(closed());
        EXPECT_EQ(Sel_Courses().chosen(), c.saved ? QVector<qint32>{tap} : QVector<qint32>{});
    }
}

}  // namespace
