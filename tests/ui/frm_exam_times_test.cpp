// The results screen wired to results entry: a mark typed out of range is
// refused in the screen's words, Enter moves on to the next cell, and a
// grade typed is stored by Update.

#include "ui/exams/frm_exam_times.h"

#include "screen_driver.h"
#include "support/scripted_boxes.h"
#include "ui/toolkit/screen_kit.h"
#include "ui/toolkit/text_box_grid_widget.h"

#include <QLineEdit>
#include <QPushButton>

#include <gtest/gtest.h>

using namespace screen_driver;
using testing_support::NewActivity;
using testing_support::ScriptedBoxes;

namespace {

class ResultsScreen : public ScreenTest<frm_ExamTimes> {
protected:
    void SetUp() override
    {
        ScreenTest::SetUp();
        const QDate day(2026, 3, 14);
        school.title_date(day, QStringLiteral("Spring Exams"));
        const int exam = school.add_activity(NewActivity(QStringLiteral("Grade 1")));
        const int pupil = school.add_pupil(school.add_family(QStringLiteral("Ashdown")), QStringLiteral("Amy"));
        result = school.insert(QStringLiteral("Exam_Results"), {{"Results_Pupil_id", pupil}, {"Results_Exam_id", exam},
                                                                 {"Results_Date", day}, {"Results_Time_txt", QStringLiteral("10:00")}});
    }
    QLineEdit* cell(int element) const { return screen->txg->txg_Element[element]; }
    void enter(QLineEdit* field) { QTest::keyClick(field, Qt::Key_Return); settle(); }

    int result = 0;
};

TEST_F(ResultsScreen, AMarkOutOfRangeIsRefusedAGradeIsKeptAndEnterMovesOn)
{
    open();
    ASSERT_EQ(cell(0)->text(), QStringLiteral("Amy Ashdown "));
    QLineEdit* mark = cell(5);
    QLineEdit* grade = cell(6);

    retype(mark, QStringLiteral("101"));
    ScriptedBoxes().expect(QStringLiteral("The mark must be a whole number,  less than 100")).during([&] { enter(mark); });
    EXPECT_EQ(mark->text(), QString());
    EXPECT_EQ(QApplication::focusWidget(), mark);

    retype(mark, QStringLiteral("64"));
    enter(mark);
    EXPECT_EQ(QApplication::focusWidget(), grade);
    QTest::keyClicks(grade, QStringLiteral("Merit"));
    enter(grade);
    EXPECT_EQ(field_colour(grade), (colours::Rgb{192, 192, 255}));

    click(screen->cmd_Update);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Update successful"));
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT Results_Mark || ' ' || Results_Grade FROM Exam_Results WHERE Results_id = %1")
                                .arg(result)),
              QStringLiteral("64 Merit"));
    EXPECT_EQ(field_colour(grade), (colours::Rgb{255, 255, 192}));
}

}  // namespace
