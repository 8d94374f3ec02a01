#include "shell/locale_formats.h"

#include "engine/msg_box.h"
#include "shell/app_globals.h"
#include "support/fake_locale_source.h"
#include "support/scripted_boxes.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using engine::lctype::IDATE;
using engine::lctype::ILDATE;
using engine::lctype::SDATE;
using engine::lctype::STIME;
using testing_support::FakeLocaleSource;
using testing_support::LocaleScope;
using testing_support::ScriptedBoxes;

// Runs Setup_Formats on the given settings.
void setup_with(const FakeLocaleSource& source)
{
    LocaleScope scope(source);
    Setup_Formats();
}

void expect_defaults()
{
    EXPECT_EQ(Glob_Date_Order(), 1);
    EXPECT_EQ(Glob_Date_Sep(), " ");
    EXPECT_EQ(Glob_Time_Sep(), ":");
    EXPECT_EQ(Glob_Date_Format(), "dd mmm yyyy");
    EXPECT_EQ(Glob_Day_Month_Format(), "dd-mmm");
    EXPECT_EQ(Glob_Entry_Date_Format(), "dd mmm yyyy");
    EXPECT_EQ(Glob_Time_Format(), "hh:nn");
    EXPECT_EQ(Glob_Time_AMPM_Format(), "hh:nn ampm");
    EXPECT_FALSE(Glob_Standard_Formats());
}

class SetupFormatsTest : public ::testing::Test {
protected:
    void TearDown() override { setup_with(FakeLocaleSource()); }
};

TEST_F(SetupFormatsTest, DefaultSettingsAreTheStandardFormats)
{
    setup_with(FakeLocaleSource());
    EXPECT_EQ(Glob_Date_Format(), "dd mmm yyyy");
    EXPECT_EQ(Glob_Day_Month_Format(), "dd mmm");
    EXPECT_EQ(Glob_Time_Format(), "hh:nn");
    EXPECT_TRUE(Glob_Standard_Formats());
}

TEST_F(SetupFormatsTest, DayFirstWithSlashKeepsTheDayFirstAndTheMonthInLetters)
{
    setup_with(FakeLocaleSource().dates("/", 1));
    EXPECT_EQ(Glob_Date_Order(), 1);
    EXPECT_EQ(Glob_Date_Sep(), "/");
    EXPECT_EQ(Glob_Date_Format(), "dd/mmm/yyyy");
    EXPECT_EQ(Glob_Entry_Date_Format(), "dd/mmm/yyyy");
    EXPECT_EQ(Glob_Day_Month_Format(), "dd/mmm");
    EXPECT_FALSE(Glob_Standard_Formats());
}

TEST_F(SetupFormatsTest, YearFirstPutsTheYearFirstAndTheMonthBeforeTheDay)
{
    setup_with(FakeLocaleSource().dates("-", 2));
    EXPECT_EQ(Glob_Date_Order(), 2);
    EXPECT_EQ(Glob_Date_Format(), "yyyy-mmm-dd");
    EXPECT_EQ(Glob_Entry_Date_Format(), "yyyy-mmm-dd");
    EXPECT_EQ(Glob_Day_Month_Format(), "mmm-dd");
}

TEST_F(SetupFormatsTest, MonthFirstPutsTheMonthFirst)
{
    setup_with(FakeLocaleSource().dates("/", 0));
    EXPECT_EQ(Glob_Date_Order(), 0);
    EXPECT_EQ(Glob_Date_Format(), "mmm/dd/yyyy");
    EXPECT_EQ(Glob_Day_Month_Format(), "mmm/dd");
}

TEST_F(SetupFormatsTest, AnUnknownOrderIsTreatedAsDayFirst)
{
    setup_with(FakeLocaleSource().dates(".", 7));
    EXPECT_EQ(Glob_Date_Order(), 7);
    EXPECT_EQ(Glob_Date_Format(), "dd.mmm.yyyy");
    EXPECT_EQ(Glob_Day_Month_Format(), "dd.mmm");
    EXPECT_FALSE(Glob_Standard_Formats());
}

TEST_F(SetupFormatsTest, ShortAndLongOrdersThatDisagreeGiveDayFirstAndNoDayMonthPicture)
{
    setup_with(FakeLocaleSource().dates("/", 1).set(IDATE, "0"));
    EXPECT_EQ(Glob_Date_Format(), "dd/mmm/yyyy");
    EXPECT_EQ(Glob_Entry_Date_Format(), "dd/mmm/yyyy");
    EXPECT_EQ(Glob_Day_Month_Format(), "");
    EXPECT_EQ(Glob_Date_Order(), 0);
}

TEST_F(SetupFormatsTest, DisagreeingOrdersAreNeverStandardEvenWithTheStandardSeparators)
{
    setup_with(FakeLocaleSource().set(IDATE, "0"));
    EXPECT_EQ(Glob_Date_Format(), "dd mmm yyyy");
    EXPECT_FALSE(Glob_Standard_Formats());
}

TEST_F(SetupFormatsTest, TheTimeSeparatorBuildsBothTimePictures)
{
    setup_with(FakeLocaleSource().set(STIME, "."));
    EXPECT_EQ(Glob_Time_Sep(), ".");
    EXPECT_EQ(Glob_Time_Format(), "hh.nn");
    EXPECT_EQ(Glob_Time_AMPM_Format(), "hh.nn ampm");
    EXPECT_FALSE(Glob_Standard_Formats());
}

TEST_F(SetupFormatsTest, ABlankTimeSeparatorMeansColon)
{
    setup_with(FakeLocaleSource().set(STIME, "  "));
    EXPECT_EQ(Glob_Time_Sep(), ":");
    EXPECT_EQ(Glob_Time_Format(), "hh:nn");
    EXPECT_TRUE(Glob_Standard_Formats());
}

TEST_F(SetupFormatsTest, AClosingZeroIsNotPartOfTheValue)
{
    setup_with(FakeLocaleSource().set(SDATE, QStringLiteral("/") + QChar(0)).set(STIME, QStringLiteral(".") + QChar(0)));
    EXPECT_EQ(Glob_Date_Format(), "dd/mmm/yyyy");
    EXPECT_EQ(Glob_Time_Format(), "hh.nn");
}

class SetupFormatsFailureTest : public SetupFormatsTest {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        Current_Log_File() = dir.filePath(QStringLiteral("quillary.log"));
    }
    void TearDown() override
    {
        Current_Log_File().clear();
        SetupFormatsTest::TearDown();
    }
    QString log_text() const
    {
        QFile file(Current_Log_File());
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }
    QTemporaryDir dir;
};

TEST_F(SetupFormatsFailureTest, OneFailedRowLeavesEveryGlobalAtItsDefaultAfterReportingIt)
{
    // Values from an earlier run must not survive either.
    setup_with(FakeLocaleSource().dates("/", 2).set(STIME, "."));
    ASSERT_EQ(Glob_Date_Format(), "yyyy/mmm/dd");

    ScriptedBoxes boxes;
    boxes.expect("Unexpected error Finding Date and Time formats", engine::answer::Ok, 0);
    setup_with(FakeLocaleSource().dates("/", 2).set(STIME, ".").fail(ILDATE, 1004));
    expect_defaults();
    EXPECT_EQ(boxes.shown(), QStringList{"Unexpected error Finding Date and Time formats"});
    EXPECT_EQ(boxes.titles().value(0), App_Title());

    // The reason stands on the routine line of the log entry, in hexadecimal for the flags.
    const QString log = log_text();
    EXPECT_TRUE(log.contains("globLib    : Unexpected error Finding Date and Time formats\n        Invalid Flags 22 .\n"))
        << log.toStdString();
}

TEST_F(SetupFormatsFailureTest, EveryFailedRowIsReportedWithItsOwnReason)
{
    ScriptedBoxes boxes;
    for (int i = 0; i < 3; ++i)
        boxes.expect("Unexpected error Finding Date and Time formats", engine::answer::Ok, 0);
    setup_with(FakeLocaleSource().fail(SDATE, 87).fail(IDATE, 122).fail(STIME, 5));
    expect_defaults();
    const QString log = log_text();
    EXPECT_TRUE(log.contains("        Invalid Parameter  .\n")) << log.toStdString();
    EXPECT_TRUE(log.contains("        Insufficient Buffer .\n")) << log.toStdString();
    EXPECT_TRUE(log.contains("        ?? .\n")) << log.toStdString();
}

TEST_F(SetupFormatsFailureTest, AValueTooLongForItsEightCharacterBufferFails)
{
    ScriptedBoxes boxes;
    boxes.expect("Unexpected error Finding Date and Time formats");
    setup_with(FakeLocaleSource().set(SDATE, "12345678"));
    expect_defaults();
    EXPECT_TRUE(log_text().contains("Insufficient Buffer"));
}

}  // namespace
