#include "shell/locale_formats.h"

#include "engine/msg_box.h"
#include "shell/app_globals.h"
#include "support/fake_locale_source.h"
#include "support/scripted_boxes.h"
#include "support/test_folder.h"

#include <gtest/gtest.h>

namespace {

using engine::lctype::IDATE;
using engine::lctype::ILDATE;
using engine::lctype::SDATE;
using engine::lctype::STIME;
using testing_support::FakeLocaleSource;
using testing_support::LocaleScope;
using testing_support::ScriptedBoxes;

// The globals Setup_Formats leaves, as one line to compare:
// "order|date sep|time sep|date|day-month|entry date|time|time am/pm|standard".
QString formats_after(const FakeLocaleSource& source)
{
    LocaleScope scope(source);
    Setup_Formats();
    return QStringList{QString::number(Glob_Date_Order()), Glob_Date_Sep(), Glob_Time_Sep(), Glob_Date_Format(),
                       Glob_Day_Month_Format(), Glob_Entry_Date_Format(), Glob_Time_Format(), Glob_Time_AMPM_Format(),
                       Glob_Standard_Formats() ? QStringLiteral("standard") : QStringLiteral("own")}
        .join(QLatin1Char('|'));
}

// What every global falls back to when a regional value can't be read.
const QString fallback = QStringLiteral("1| |:|dd mmm yyyy|dd-mmm|dd mmm yyyy|hh:nn|hh:nn ampm|own");

class SetupFormatsTest : public ::testing::Test {
protected:
    ~SetupFormatsTest() override { formats_after(FakeLocaleSource()); }
};

TEST_F(SetupFormatsTest, TheRegionalSettingsBuildThePicturesWithTheMonthAlwaysInLetters)
{
    struct Case {
        const char* what;
        FakeLocaleSource source;
        QString formats;
    };
    const QList<Case> cases = {
        {"the program's defaults are the standard formats", FakeLocaleSource(),
         "1| |:|dd mmm yyyy|dd mmm|dd mmm yyyy|hh:nn|hh:nn ampm|standard"},
        {"day first with a slash", FakeLocaleSource().dates("/", 1),
         "1|/|:|dd/mmm/yyyy|dd/mmm|dd/mmm/yyyy|hh:nn|hh:nn ampm|own"},
        {"year first puts the month before the day", FakeLocaleSource().dates("-", 2),
         "2|-|:|yyyy-mmm-dd|mmm-dd|yyyy-mmm-dd|hh:nn|hh:nn ampm|own"},
        {"month first", FakeLocaleSource().dates("/", 0), "0|/|:|mmm/dd/yyyy|mmm/dd|mmm/dd/yyyy|hh:nn|hh:nn ampm|own"},
        {"an unknown order is taken as day first", FakeLocaleSource().dates(".", 7),
         "7|.|:|dd.mmm.yyyy|dd.mmm|dd.mmm.yyyy|hh:nn|hh:nn ampm|own"},
        {"short and long orders that disagree give day first and no day-month picture",
         FakeLocaleSource().dates("/", 1).set(IDATE, "0"), "0|/|:|dd/mmm/yyyy||dd/mmm/yyyy|hh:nn|hh:nn ampm|own"},
        {"disagreeing orders are never standard, even with the standard separators", FakeLocaleSource().set(IDATE, "0"),
         "0| |:|dd mmm yyyy||dd mmm yyyy|hh:nn|hh:nn ampm|own"},
        {"the time separator builds both time pictures", FakeLocaleSource().set(STIME, "."),
         "1| |.|dd mmm yyyy|dd mmm|dd mmm yyyy|hh.nn|hh.nn ampm|own"},
        {"a blank time separator means a colon", FakeLocaleSource().set(STIME, "  "),
         "1| |:|dd mmm yyyy|dd mmm|dd mmm yyyy|hh:nn|hh:nn ampm|standard"},
        {"a closing zero is not part of the value",
         FakeLocaleSource().set(SDATE, QStringLiteral("/") + QChar(0)).set(STIME, QStringLiteral(".") + QChar(0)),
         "1|/|.|dd/mmm/yyyy|dd/mmm|dd/mmm/yyyy|hh.nn|hh.nn ampm|own"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(formats_after(c.source), c.formats);
    }
}

// A value that can't be read is reported, its reason on the routine line of
// the log entry (the flags in hexadecimal), and every global falls back to
// its default, whatever an earlier run left.
TEST_F(SetupFormatsTest, EveryFailedValueIsReportedWithItsReasonAndEveryGlobalFallsBack)
{
    struct Case {
        const char* what;
        FakeLocaleSource source;
        QStringList logged;
    };
    const QString headline = QStringLiteral("Unexpected error Finding Date and Time formats");
    const QList<Case> cases = {
        {"one failed row", FakeLocaleSource().dates("/", 2).set(STIME, ".").fail(ILDATE, 1004),
         {"globLib    : Unexpected error Finding Date and Time formats\n        Invalid Flags 22 .\n"}},
        {"three failed rows", FakeLocaleSource().fail(SDATE, 87).fail(IDATE, 122).fail(STIME, 5),
         {"        Invalid Parameter  .\n", "        Insufficient Buffer .\n", "        ?? .\n"}},
        {"a value too long for its eight-character buffer", FakeLocaleSource().set(SDATE, "12345678"),
         {"Insufficient Buffer"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        testing_support::TestFolder folder;
        ASSERT_NE(formats_after(FakeLocaleSource().dates("/", 2).set(STIME, ".")), fallback);
        ScriptedBoxes boxes;
        for (int i = 0; i < c.logged.size(); ++i)
            boxes.expect(headline, engine::answer::Ok, 0);
        EXPECT_EQ(formats_after(c.source), fallback);
        EXPECT_EQ(boxes.shown().value(0), headline);
        EXPECT_EQ(boxes.titles().value(0), App_Title());
        for (const QString& line : c.logged)
            EXPECT_TRUE(folder.log_text().contains(line)) << folder.log_text().toStdString();
    }
}

}  // namespace
