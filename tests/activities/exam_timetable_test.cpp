// The exam timetable as the school's exam day: slots and breaks derived from
// the stored times, the clock worked out from the start time, pupils moved
// into the timetable, and what is stored read back the same.

#include "activities/timetable_grid.h"
#include "activities/timetable_store.h"

#include "support/school_made_current.h"
#include "support/scripted_boxes.h"

#include <gtest/gtest.h>

using testing_support::NewActivity;
using testing_support::ScriptedBoxes;

namespace {

const QDate exam_day(2027, 3, 13);

class ExamDay : public ::testing::Test {
protected:
    void SetUp() override
    {
        timetable.Initialise();
        school.title_date(exam_day, QStringLiteral("Spring Exams"));
        family = school.add_family(QStringLiteral("Ashdown"));
    }

    int exam(const QString& title, int minutes)
    {
        const int id = school.add_activity(NewActivity(title).at_level(++level));
        school.exec(QStringLiteral("UPDATE Exams SET Exam_Duration = %1 WHERE Exam_id = %2").arg(minutes).arg(id));
        return id;
    }
    // An entrant not yet marked, with a time or (blank) without one.
    int entrant(const QString& name, int exam_id, const QString& time = QString(), int order = 0)
    {
        const int pupil = school.add_pupil(family, name);
        return school.insert(QStringLiteral("Exam_Results"),
                             {{"Results_Pupil_id", pupil}, {"Results_Exam_id", exam_id}, {"Results_Date", exam_day},
                              {"Results_Time_txt", time}, {"Results_Order", order}, {"Results_Mark", 0}, {"Results_Grade", QString()}});
    }
    bool load() { return timetable.Setup_Grid(exam_day); }
    // One column of every row, joined by "|".
    QString column(short c) const
    {
        QStringList texts;
        for (short row = 1; row <= grid.record().last_row; ++row)
            texts << grid.row_texts(row)[c - 1];
        return texts.join(QLatin1Char('|'));
    }
    bool marked(short row) const { return grid.record().rows[row - 1].colours[0] == slot::Changed_Mark; }
    QString stored(int result) const
    {
        return school_scalar(QStringLiteral("SELECT Results_Time_txt || ' ' || Results_Order FROM Exam_Results WHERE Results_id = %1").arg(result));
    }
    QString school_scalar(const QString& sql) const { return const_cast<ExamDay*>(this)->school.scalar(sql).toString(); }
    // The pupils still without a time, all chosen.
    QList<engine::Bookmark> choose_waiting()
    {
        waiting = timetable::open_pupils_without_times(exam_day);
        timetable.set_register(waiting.get());
        QList<engine::Bookmark> marks;
        for (bool on = waiting->MoveFirst(); on && !waiting->at_eof(); on = waiting->MoveNext())
            marks << waiting->bookmark();
        return marks;
    }

    testing_support::SchoolMadeCurrent school;
    TextBoxGrid grid{8, 112};
    ExamTimetable timetable{grid};
    std::unique_ptr<engine::Recordset> waiting;
    int family = 0;
    int level = 0;
};

TEST_F(ExamDay, PupilsOfOneExamAndTimeShareASlotAndTheGapAfterItBecomesExtraOrABreak)
{
    struct Case {
        const char* next_at;
        const char* extras;
        const char* exams;
    };
    // Three pupils of an exam of 15 minutes at 10:00; the next exam at these times.
    const Case cases[] = {{"10:15", "|", "Grade 1|Grade 2"},
                          {"10:20", "5|", "Grade 1|Grade 2"},
                          {"10:25", "|10|", "Grade 1|BREAK|Grade 2"},
                          {"10:10", "-5|", "Grade 1|Grade 2"}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.next_at);
        for (const char* table : {"Exam_Results", "Exams", "Pupils"})
            school.exec(QStringLiteral("DELETE FROM ") + QString::fromLatin1(table));
        const int first = exam(QStringLiteral("Grade 1"), 15);
        for (const char* name : {"Amy", "Bea", "Cat"})
            entrant(QString::fromLatin1(name), first, QStringLiteral("10:00"), 1);
        entrant(QStringLiteral("Dot"), exam(QStringLiteral("Grade 2"), 20), QString::fromLatin1(c.next_at), 1);
        ScriptedBoxes boxes;
        if (QString::fromLatin1(c.next_at) == QStringLiteral("10:10"))
            boxes.expect(QStringLiteral("There isn't enough time for the exam at 10:00"));
        boxes.during([&] { ASSERT_TRUE(load()); });

        EXPECT_EQ(column(slot::Exam), QString::fromLatin1(c.exams));
        EXPECT_EQ(column(slot::Extra), QString::fromLatin1(c.extras));
        EXPECT_EQ(grid.row_texts(1)[slot::Pupils - 1], QStringLiteral("3"));
        EXPECT_EQ(grid.row_texts(1)[slot::Names - 1], QStringLiteral("Amy Ashdown , Bea Ashdown , Cat Ashdown "));
        EXPECT_EQ(timetable.start, QStringLiteral("10:00"));
    }
    // The break starts when the exam ends and lasts the rest of the gap; the
    // timetable derived from the stored times agrees with them.
    EXPECT_TRUE(timetable.OK_TO_Exit());
    school.exec(QStringLiteral("UPDATE Exam_Results SET Results_Time_txt = '10:40' WHERE Results_Time_txt = '10:10'"));
    ASSERT_TRUE(load());
    EXPECT_EQ(grid.row_texts(2)[slot::Time - 1] + QLatin1Char(' ') + grid.row_texts(2)[slot::Extra - 1], QStringLiteral("10:15 25"));
    EXPECT_EQ(column(slot::Calculated), QStringLiteral("10:00|10:15|10:40"));
    EXPECT_TRUE(timetable.OK_TO_Exit());
}

TEST_F(ExamDay, ASessionCrossingNoonRunsOnAndExtraMinutesMoveTheLaterSlotsWhenStored)
{
    const int solo = exam(QStringLiteral("Solo"), 20);
    const int duet = exam(QStringLiteral("Duet"), 30);
    entrant(QStringLiteral("Amy"), solo, QStringLiteral("11:45"), 1);
    const int bea = entrant(QStringLiteral("Bea"), duet, QStringLiteral("12:05"), 1);
    const int cat = entrant(QStringLiteral("Cat"), duet, QStringLiteral("12:05"), 2);
    ASSERT_TRUE(load());
    EXPECT_EQ(column(slot::Calculated), QStringLiteral("11:45|12:05"));

    // Three extra minutes typed into the first slot's Extra (element 3).
    timetable.Element_Left(3, QStringLiteral("3"));
    EXPECT_EQ(column(slot::Calculated), QStringLiteral("11:45|12:08"));
    EXPECT_FALSE(marked(1));
    EXPECT_TRUE(marked(2));
    EXPECT_FALSE(timetable.OK_TO_Exit());

    ASSERT_TRUE(timetable.Handle_Update());
    EXPECT_EQ(timetable.status, QStringLiteral("Sucessfully Updated"));
    EXPECT_EQ(stored(bea), QStringLiteral("12:08 1"));
    EXPECT_EQ(stored(cat), QStringLiteral("12:08 2"));
    // Read back, the three minutes come back as the first slot's Extra.
    ASSERT_TRUE(load());
    EXPECT_EQ(column(slot::Extra), QStringLiteral("3|"));
    EXPECT_EQ(column(slot::Time), QStringLiteral("11:45|12:08"));
    EXPECT_TRUE(timetable.OK_TO_Exit());
}

TEST_F(ExamDay, PupilsMovedToTheEndAndIntoTheFirstSlotAreStoredAtOnce)
{
    const int grade1 = exam(QStringLiteral("Grade 1"), 15);
    const int grade2 = exam(QStringLiteral("Grade 2"), 20);
    const int amy = entrant(QStringLiteral("Amy"), grade1);
    const int dot = entrant(QStringLiteral("Dot"), grade2);
    ASSERT_TRUE(load());
    timetable.start = QStringLiteral("9:30");

    QList<engine::Bookmark> pupils = choose_waiting();  // Amy, then Dot: one exam at a time
    ASSERT_TRUE(timetable.Handle_Add_Pupil({pupils[0]}));
    EXPECT_EQ(timetable.status, QStringLiteral("Pupil added to the end"));
    EXPECT_EQ(grid.record().highlight_row, -1);
    ASSERT_TRUE(timetable.Handle_Add_Pupil({choose_waiting()[0]}));
    EXPECT_EQ(column(slot::Time), QStringLiteral("09:30|09:45"));
    EXPECT_EQ(stored(dot), QStringLiteral("09:45 1"));
    EXPECT_EQ(waiting->RecordCount(), 0);  // both have left the list

    // A latecomer for Grade 1 joins the first slot, next in its order.
    const int eve = entrant(QStringLiteral("Eve"), grade1);
    grid.txg_highlight(1);
    ASSERT_TRUE(timetable.Handle_Add_Pupil(choose_waiting()));
    EXPECT_EQ(timetable.status, QStringLiteral("Pupil added to the exam"));
    EXPECT_EQ(grid.row_texts(1)[slot::Pupils - 1], QStringLiteral("2"));
    EXPECT_EQ(grid.row_texts(1)[slot::Ids - 1], QStringLiteral("%1, %2").arg(amy).arg(eve));
    EXPECT_EQ(stored(eve), QStringLiteral("09:30 2"));

    // Grade 2 can't join the Grade 1 slot.
    entrant(QStringLiteral("Fay"), grade2);
    ScriptedBoxes().expect(QStringLiteral("The current position is not for the selected exams. ")).during([&] {
        timetable.Handle_Add_Pupil(choose_waiting());
    });
    EXPECT_EQ(waiting->RecordCount(), 1);

    // Deleting the first slot gives its pupils back to the list.
    ASSERT_TRUE(timetable.Handle_Delete_Slot());
    EXPECT_EQ(timetable.status, QStringLiteral("Pupil(s) removed"));
    EXPECT_EQ(stored(amy), QStringLiteral(" 0"));
    EXPECT_EQ(waiting->RecordCount(), 3);
}

TEST_F(ExamDay, APupilIntoABreakTakesItsTimeAndLeavesTheRestOfTheBreak)
{
    const int grade1 = exam(QStringLiteral("Grade 1"), 15);
    const int grade2 = exam(QStringLiteral("Grade 2"), 8);
    entrant(QStringLiteral("Amy"), grade1, QStringLiteral("10:00"), 1);
    entrant(QStringLiteral("Bea"), grade1, QStringLiteral("10:35"), 1);
    const int cat = entrant(QStringLiteral("Cat"), grade2);
    ASSERT_TRUE(load());
    ASSERT_EQ(column(slot::Exam), QStringLiteral("Grade 1|BREAK|Grade 1"));  // 10:15, 20 minutes
    grid.txg_highlight(2);
    ASSERT_TRUE(timetable.Handle_Add_Pupil(choose_waiting()));
    EXPECT_EQ(timetable.status, QStringLiteral("Pupil inserted, break changed"));
    EXPECT_EQ(column(slot::Exam), QStringLiteral("Grade 1|Grade 2|BREAK|Grade 1"));
    EXPECT_EQ(grid.row_texts(3)[slot::Time - 1] + QLatin1Char(' ') + grid.row_texts(3)[slot::Extra - 1], QStringLiteral("10:23 12"));
    EXPECT_EQ(stored(cat), QStringLiteral("10:15 1"));
}

TEST_F(ExamDay, BreaksGoBeforeTheHighlightedRowOrAtTheEndAndAreDeletedWithoutTouchingTheDatabase)
{
    const int grade1 = exam(QStringLiteral("Grade 1"), 15);
    entrant(QStringLiteral("Amy"), grade1, QStringLiteral("10:00"), 1);
    ASSERT_TRUE(load());
    EXPECT_TRUE(timetable.OK_TO_Exit());  // a grid of one row never counts as changed

    // With one row and no highlight the break takes the start time, as it always has.
    timetable.cmd_Add_Break();
    EXPECT_EQ(column(slot::Time), QStringLiteral("10:00|10:00"));
    EXPECT_EQ(column(slot::Calculated), QStringLiteral("10:00|10:15"));
    EXPECT_FALSE(timetable.OK_TO_Exit());
    // With more rows it follows the last one; with a highlight it goes before it, taking its time.
    timetable.cmd_Add_Break();
    EXPECT_EQ(grid.row_texts(3)[slot::Time - 1], QStringLiteral("10:10"));
    grid.txg_highlight(1);
    timetable.cmd_Add_Break();
    EXPECT_EQ(column(slot::Exam), QStringLiteral("BREAK|Grade 1|BREAK|BREAK"));
    EXPECT_EQ(column(slot::Calculated), QStringLiteral("10:00|10:10|10:25|10:35"));

    const QString before = school.dump();
    ASSERT_TRUE(timetable.Handle_Delete_Slot());
    EXPECT_EQ(timetable.status, QStringLiteral("Break deleted"));
    EXPECT_EQ(column(slot::Exam), QStringLiteral("Grade 1|BREAK|BREAK"));
    EXPECT_EQ(school.dump(), before);
}

TEST_F(ExamDay, ADayWithMorePupilsThanCellsScrolls)
{
    const int grade1 = exam(QStringLiteral("Grade 1"), 15);
    for (int n = 0; n < 20; ++n)
        entrant(QStringLiteral("Pupil %1").arg(n), grade1, QTime(9, 0).addSecs(n * 15 * 60).toString(QStringLiteral("HH:mm")), 1);
    ASSERT_TRUE(load());
    EXPECT_EQ(grid.record().last_row, 20);
    EXPECT_EQ(grid.vscroll().max, 20);
    EXPECT_EQ(grid.elements()[13 * 8 + 1].text, QStringLiteral("12:15"));  // the 14th row, the last on view
    grid.txg_vscroll_change(7);
    EXPECT_EQ(grid.elements()[1].text, QStringLiteral("10:30"));
    EXPECT_EQ(grid.elements()[13 * 8 + 1].text, QStringLiteral("13:45"));
    EXPECT_TRUE(timetable.OK_TO_Exit());
}

TEST_F(ExamDay, AFailedStoreLeavesEveryTimeAsItWas)
{
    const int grade1 = exam(QStringLiteral("Grade 1"), 15);
    const int amy = entrant(QStringLiteral("Amy"), grade1, QStringLiteral("10:00"), 1);
    const int bea = entrant(QStringLiteral("Bea"), exam(QStringLiteral("Grade 2"), 15), QStringLiteral("10:15"), 1);
    ASSERT_TRUE(load());
    timetable.start = QStringLiteral("09:00");
    timetable.Calculate_Times();
    school.exec(QStringLiteral("CREATE TRIGGER refuse BEFORE UPDATE ON Exam_Results WHEN NEW.Results_id = %1 "
                               "BEGIN SELECT RAISE(ABORT, 'refused'); END").arg(bea));
    ScriptedBoxes().expect(QStringLiteral("Unexpected error")).during([&] { EXPECT_FALSE(timetable.Handle_Update()); });
    EXPECT_EQ(stored(amy), QStringLiteral("10:00 1"));
}

TEST(ResultIds, AreReadFromTheSlotsListOfUpToTwenty)
{
    QVector<qint32> ids;
    ASSERT_TRUE(Extract_Result_ids(3, QStringLiteral("12, 7,31"), ids));
    EXPECT_EQ(ids.mid(1), (QVector<qint32>{12, 7, 31}));
    ASSERT_TRUE(Extract_Result_ids(1, QStringLiteral(" 9 "), ids));
    EXPECT_EQ(ids.mid(1), QVector<qint32>{9});
    ScriptedBoxes().expect(QStringLiteral("Programming error - no result_id")).during([&] {
        ASSERT_TRUE(Extract_Result_ids(2, QStringLiteral("x, 4"), ids));
    });
    EXPECT_EQ(ids.mid(1), (QVector<qint32>{-1, 4}));
    EXPECT_FALSE(Extract_Result_ids(21, QStringLiteral("1"), ids));
}

}  // namespace
