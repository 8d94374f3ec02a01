// The exam timetable screen wired to the timetable: a pupil moved from the
// list into the timetable is stored at once and is there again when the
// screen is opened anew.

#include "ui/exams/frm_exam_list.h"

#include "screen_driver.h"
#include "ui/exams/register_drag_grid.h"
#include "ui/toolkit/text_box_grid_widget.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <gtest/gtest.h>

using namespace screen_driver;
using testing_support::NewActivity;

namespace {

class TimetableScreen : public ScreenTest<frm_ExamList> {
protected:
    void SetUp() override
    {
        ScreenTest::SetUp();
        school.title_date(day, QStringLiteral("Spring Exams"));
        const int exam = school.add_activity(NewActivity(QStringLiteral("Grade 1")));
        const int family = school.add_family(QStringLiteral("Ashdown"));
        for (const char* name : {"Amy", "Bea"})
            results << school.insert(QStringLiteral("Exam_Results"),
                                     {{"Results_Pupil_id", school.add_pupil(family, QString::fromLatin1(name))},
                                      {"Results_Exam_id", exam}, {"Results_Date", day}, {"Results_Time_txt", QString()},
                                      {"Results_Mark", 0}, {"Results_Grade", QString()}});
    }
    QString element(int i) const { return screen->txg->txg_Element[i]->text(); }

    const QDate day{2027, 3, 13};
    QList<int> results;
};

TEST_F(TimetableScreen, APupilMovedIntoTheTimetableIsStoredAndShownAgainOnReopening)
{
    open();
    EXPECT_EQ(screen->dbg_Register_Caption->text(), QStringLiteral("Pupils without times on 13 Mar 2027"));
    ASSERT_EQ(entries(screen->dbg_Register).size(), 2);

    retype(screen->txt_Start, QStringLiteral("9:30"));
    tab_out(screen->txt_Start);
    click_row(screen->dbg_Register, QStringLiteral("Amy Ashdown "), false, 1);
    click(screen->cmd_Add_Pupil);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Pupil added to the end"));
    EXPECT_EQ(element(1) + QLatin1Char(' ') + element(5), QStringLiteral("09:30 Grade 1"));
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT Results_Time_txt || ' ' || Results_Order FROM Exam_Results WHERE Results_id = %1")
                                .arg(results[0])),
              QStringLiteral("09:30 1"));

    screen->mnu_Exit->trigger();
    settle();
    ASSERT_TRUE(screen.isNull());
    open();
    EXPECT_EQ(screen->txt_Start->text(), QStringLiteral("09:30"));
    EXPECT_EQ(element(0) + QLatin1Char(' ') + element(6), QStringLiteral("09:30 Amy Ashdown "));
    EXPECT_EQ(entries(screen->dbg_Register).size(), 1);
}

}  // namespace
