// The data control: what bound fields show, what DataChanged means, and what
// an Update writes.

#include "toolkit/data_control.h"

#include "engine/currency.h"
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

// A check box without a screen.
class FakeCheck : public BoundField {
public:
    using BoundField::BoundField;
    void tick(bool ticked)
    {
        checked = ticked;
        note_change();
    }
    QVariant value() const override { return checked; }
    bool is_check_box() const override { return true; }
    bool checked = false;

protected:
    void show_value(const QVariant& value) override { checked = !value.isNull() && value.toBool(); }
};

// A box that remembers the limit the control gave it.
class LimitedBox : public FakeBox {
public:
    using FakeBox::FakeBox;
    int applied = -1;

protected:
    void apply_max_length(int characters) override { applied = characters; }
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

TEST_F(DataControlTest, FillingTheFieldsIsNoChangeEveryMoveFillsThemAgainAndAFailureIsReported)
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

    // Every move fills the fields again and reports the reposition.
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

    // A failure of the control itself is reported with its words.
    testing_support::ScriptedBoxes().expect(QStringLiteral("Error accessing Dancer Control Number = 3078")).during([&] {
        EXPECT_FALSE(control.Refresh(&school.db(), QStringLiteral("SELECT * FROM Nowhere")));
    });
    EXPECT_EQ(control.Recordset(), nullptr);
    EXPECT_TRUE(control.is_empty());
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

    // A failed update leaves the edit in progress, with the engine's number.
    name.type(QStringLiteral("Bea"));
    ASSERT_TRUE(control.Edit());
    EXPECT_FALSE(control.Update());
    EXPECT_EQ(engine::Err().Number, engine::jet::DuplicateKey);
    EXPECT_EQ(control.EditMode(), engine::editmode::InProgress);
    control.CancelUpdate();
}

// An addition writes what every field shows, blank as null, but never a
// read-only field.
TEST_F(DataControlTest, AnAdditionWritesWhatEveryFieldShowsAndBlankIsNullButNoReadOnlyField)
{
    FakeBox key{QStringLiteral("Dancer_id")};
    key.set_read_only(true);
    control.bind(&key);
    ASSERT_TRUE(open());
    EXPECT_EQ(key.shown, QStringLiteral("1"));
    ASSERT_TRUE(control.AddNew());
    key.type(QStringLiteral("1"));
    name.type(QStringLiteral("Cy"));
    style.type(QString());
    notes.shown = QStringLiteral("kept from before");
    ASSERT_TRUE(control.Update());
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT Dancer_id || '|' || Dancer_Notes || '|' || ifnull(Dancer_Style, 'null') "
                                           "FROM Dancers WHERE Dancer_Name = 'Cy'")).toString(),
              QStringLiteral("3|kept from before|null"));
}

TEST_F(DataControlTest, ANewRecordStartsFromItsOwnValuesInEveryFieldButThoseKept)
{
    school.native(QStringLiteral("CREATE TABLE Classes (Class_id INTEGER PRIMARY KEY AUTOINCREMENT, "
                                 "Class_Title TEXT, Class_Note TEXT, Class_Full BIT DEFAULT 0)"));
    school.native(QStringLiteral("INSERT INTO Classes (Class_Title, Class_Note, Class_Full) VALUES ('Ballet', 'Barre', 1)"));
    DataControl classes{QStringLiteral("data_Classes"), QStringLiteral("Error accessing Class Control "),
                        QStringLiteral("fClass")};
    FakeBox title{QStringLiteral("Class_Title")};
    FakeBox note{QStringLiteral("Class_Note")};
    FakeCheck full{QStringLiteral("Class_Full")};
    for (BoundField* field : std::initializer_list<BoundField*>{&title, &note, &full})
        classes.bind(field);
    ASSERT_TRUE(classes.Refresh(&school.db(), QStringLiteral("Classes")));
    ASSERT_TRUE(full.checked);

    ASSERT_TRUE(classes.AddNew());
    classes.fill_new_record([&note](const BoundField& field) { return &field == &note; });
    EXPECT_EQ(title.shown, QString());
    EXPECT_FALSE(full.checked) << "a ticked box of the record shown before isn't carried into a new one";
    EXPECT_EQ(note.shown, QStringLiteral("Barre")) << "a field the screen keeps stays as it was";
    EXPECT_FALSE(title.DataChanged());
    EXPECT_FALSE(full.DataChanged());

    title.type(QStringLiteral("Tap"));
    ASSERT_TRUE(classes.Update());
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT Class_Full FROM Classes WHERE Class_Title = 'Tap'")).toInt(), 0);
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT Class_Note FROM Classes WHERE Class_Title = 'Tap'")).toString(),
              QStringLiteral("Barre"));

    // Outside an addition there is no new record to fill from.
    full.tick(true);
    classes.fill_new_record(nullptr);
    EXPECT_TRUE(full.checked);
}

TEST_F(DataControlTest, EachFieldLearnsItsColumnsLimitAndWhetherItHoldsMoney)
{
    school.native(QStringLiteral("CREATE TABLE Halls (Hall_id INTEGER PRIMARY KEY AUTOINCREMENT, Hall_Code TEXT(6), "
                                 "Hall_Name TEXT, Hall_Notes MEMO, Hall_Seats SHORT, Hall_Rent CURRENCY, "
                                 "Hall_Size SINGLE)"));
    school.native(QStringLiteral("INSERT INTO Halls (Hall_Code, Hall_Rent, Hall_Size) VALUES ('H1', 5.5, 5.5)"));
    struct Expected {
        const char* column;
        int max_length;
        bool money;
        const char* shown;
    };
    const Expected expected[] = {
        {"Hall_Code", 6, false, "H1"},  {"Hall_Name", 255, false, ""}, {"Hall_Notes", 0, false, ""},
        {"Hall_Seats", 0, false, ""},   {"Hall_Rent", 0, true, "5.50"}, {"Hall_Size", 0, false, "5.5"},
    };
    DataControl halls{QStringLiteral("data_Halls"), QStringLiteral("Error accessing Hall Control "), QStringLiteral("fHall")};
    std::vector<std::unique_ptr<LimitedBox>> boxes;
    for (const Expected& row : expected) {
        boxes.push_back(std::make_unique<LimitedBox>(QString::fromUtf8(row.column)));
        halls.bind(boxes.back().get());
    }
    ASSERT_TRUE(halls.Refresh(&school.db(), QStringLiteral("SELECT * FROM Halls")));
    for (size_t i = 0; i < boxes.size(); ++i) {
        EXPECT_EQ(boxes[i]->max_length(), expected[i].max_length) << expected[i].column;
        EXPECT_EQ(boxes[i]->applied, expected[i].max_length) << expected[i].column;
        EXPECT_EQ(boxes[i]->is_money(), expected[i].money) << expected[i].column;
        EXPECT_EQ(boxes[i]->shown, QString::fromUtf8(expected[i].shown)) << expected[i].column;
    }
}

TEST(MoneyText, MoneyShowsTwoDecimalsAtLeastAndNoMoreThanItKeeps)
{
    struct Case {
        QVariant value;
        const char* shown;
    };
    const Case cases[] = {
        {5.5, "5.50"}, {5, "5.00"}, {QStringLiteral("5.5"), "5.50"}, {0.1 + 0.2, "0.30"}, {12.125, "12.125"},
        {3.14159, "3.1416"}, {-2.5, "-2.50"}, {QVariant::fromValue(engine::Currency::from_units(123456)), "12.3456"},
        {QVariant(5.5f), "5.50"},
        {QVariant(4.1f), "4.10"},  // a single holds 4.0999999...
        {QVariant(), ""}, {QStringLiteral("ten"), "ten"},
    };
    for (const Case& row : cases)
        EXPECT_EQ(Money_Text(row.value), QString::fromUtf8(row.shown)) << row.value.toString().toStdString();
    EXPECT_EQ(engine::Err().Number, 0);
}

}  // namespace
