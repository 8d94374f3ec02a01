// The data control: what bound fields show, what DataChanged means, and what
// an Update writes.

#include "toolkit/data_control.h"

#include "engine/err.h"
#include "engine/recordset.h"
#include "support/scripted_boxes.h"
#include "support/temp_database.h"

#include <gtest/gtest.h>

namespace {

// A text box without a screen: what it shows, and typing into it.
class FakeBox : public BoundField {
public:
    using BoundField::BoundField;
    void type(const QString& text)
    {
        shown = text;
        note_change();
    }
    QVariant value() const override { return shown.isEmpty() ? QVariant() : QVariant(shown); }
    QString trimmed_text() const override { return shown.trimmed(); }
    QString shown;

protected:
    void show_value(const QVariant& value) override
    {
        shown = text_of(value);
        note_change();  // as a real box does; filling mustn't count as a change
    }
};

class DataControlTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        school.native(QStringLiteral("CREATE TABLE Dancers (Dancer_id INTEGER PRIMARY KEY AUTOINCREMENT, "
                                     "Dancer_Name TEXT, Dancer_Style TEXT, Dancer_Notes TEXT)"));
        school.native(QStringLiteral("CREATE UNIQUE INDEX Dancer_Uniq ON Dancers (Dancer_Name)"));
        school.native(QStringLiteral("INSERT INTO Dancers (Dancer_Name, Dancer_Style) VALUES ('Ada', 'Ballet'), ('Bea', 'Tap')"));
        control.bind(&name);
        control.bind(&style);
        control.bind(&notes);
        control.set_on_reposition([this] { ++repositions; });
    }

    bool open() { return control.Refresh(&school.db(), QStringLiteral("SELECT * FROM Dancers ORDER BY Dancer_Name")); }

    testing_support::TempDatabase school;
    DataControl control{QStringLiteral("data_Dancers"), QStringLiteral("Error accessing Dancer Control "),
                        QStringLiteral("fDancer")};
    FakeBox name{QStringLiteral("Dancer_Name")};
    FakeBox style{QStringLiteral("Dancer_Style")};
    FakeBox notes{QStringLiteral("Dancer_Notes")};
    int repositions = 0;
};

TEST_F(DataControlTest, FillingTheFieldsIsNoChange)
{
    ASSERT_TRUE(open());
    EXPECT_EQ(name.shown, QStringLiteral("Ada"));
    EXPECT_EQ(style.shown, QStringLiteral("Ballet"));
    EXPECT_FALSE(name.DataChanged());
    name.type(QStringLiteral("Adele"));
    EXPECT_TRUE(name.DataChanged());
    control.UpdateControls();
    EXPECT_EQ(name.shown, QStringLiteral("Ada"));
    EXPECT_FALSE(name.DataChanged());
}

TEST_F(DataControlTest, EveryMoveRefillsTheFieldsAndReportsTheReposition)
{
    ASSERT_TRUE(open());
    const int after_open = repositions;
    ASSERT_TRUE(control.MoveNext());
    EXPECT_EQ(name.shown, QStringLiteral("Bea"));
    ASSERT_TRUE(control.MoveNext());
    EXPECT_TRUE(control.Recordset()->at_eof());
    EXPECT_EQ(name.shown, QString());
    ASSERT_TRUE(control.FindFirst(QStringLiteral("Dancer_Name = \"Ada\"")));
    EXPECT_EQ(name.shown, QStringLiteral("Ada"));
    EXPECT_EQ(repositions, after_open + 3);
    // A search that finds nothing leaves everything where it was.
    ASSERT_TRUE(control.FindFirst(QStringLiteral("Dancer_Name = \"Zoe\"")));
    EXPECT_TRUE(control.NoMatch());
    EXPECT_EQ(repositions, after_open + 3);
}

TEST_F(DataControlTest, AnEditWritesOnlyTheFieldsTheUserChanged)
{
    ASSERT_TRUE(open());
    style.type(QStringLiteral("Modern"));
    ASSERT_TRUE(control.Edit());
    // A box whose text was put there without being marked changed is left alone.
    notes.shown = QStringLiteral("not typed");
    ASSERT_TRUE(control.Update());
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT Dancer_Style FROM Dancers WHERE Dancer_Name = 'Ada'")).toString(),
              QStringLiteral("Modern"));
    EXPECT_TRUE(school.scalar(QStringLiteral("SELECT Dancer_Notes FROM Dancers WHERE Dancer_Name = 'Ada'")).isNull());
}

TEST_F(DataControlTest, AnAdditionWritesWhatEveryFieldShowsAndBlankIsNull)
{
    ASSERT_TRUE(open());
    ASSERT_TRUE(control.AddNew());
    name.type(QStringLiteral("Cy"));
    style.type(QString());
    notes.shown = QStringLiteral("kept from before");
    ASSERT_TRUE(control.Update());
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT Dancer_Notes FROM Dancers WHERE Dancer_Name = 'Cy'")).toString(),
              QStringLiteral("kept from before"));
    EXPECT_TRUE(school.scalar(QStringLiteral("SELECT Dancer_Style FROM Dancers WHERE Dancer_Name = 'Cy'")).isNull());
}

TEST_F(DataControlTest, AFailedUpdateLeavesTheEditInProgressWithTheEnginesNumber)
{
    ASSERT_TRUE(open());
    name.type(QStringLiteral("Bea"));
    ASSERT_TRUE(control.Edit());
    EXPECT_FALSE(control.Update());
    EXPECT_EQ(engine::Err().Number, engine::jet::DuplicateKey);
    EXPECT_EQ(control.EditMode(), engine::editmode::InProgress);
    control.CancelUpdate();
}

TEST_F(DataControlTest, AReadOnlyFieldIsShownButNeverWritten)
{
    FakeBox key{QStringLiteral("Dancer_id")};
    key.set_read_only(true);
    control.bind(&key);
    ASSERT_TRUE(open());
    EXPECT_EQ(key.shown, QStringLiteral("1"));
    ASSERT_TRUE(control.AddNew());
    key.type(QStringLiteral("1"));
    name.type(QStringLiteral("Dot"));
    EXPECT_TRUE(control.Update());
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT Dancer_id FROM Dancers WHERE Dancer_Name = 'Dot'")).toInt(), 3);
}

TEST_F(DataControlTest, AFailureOfTheControlItselfIsReportedWithItsWords)
{
    testing_support::ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Error accessing Dancer Control Number = 3078"));
    EXPECT_FALSE(control.Refresh(&school.db(), QStringLiteral("SELECT * FROM Nowhere")));
    EXPECT_EQ(control.Recordset(), nullptr);
    EXPECT_TRUE(control.is_empty());
}

}  // namespace
