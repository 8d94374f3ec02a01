#include "engine/err.h"
#include "engine/msg_box.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "support/scripted_boxes.h"
#include "support/test_folder.h"

#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace {

using testing_support::ScriptedBoxes;

class ReportErrorTest : public ::testing::Test {
protected:
    // The log with each entry's time stamp checked and taken off.
    QStringList entries_without_stamps() const
    {
        static const QRegularExpression stamp(QStringLiteral("^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d -- "),
                                              QRegularExpression::MultilineOption);
        QString text = folder.log_text();
        const int stamps = static_cast<int>(text.count(stamp));
        text.replace(stamp, QStringLiteral("@"));
        QStringList entries = text.split(QLatin1Char('@'), Qt::SkipEmptyParts);
        EXPECT_EQ(stamps, entries.size()) << text.toStdString();
        return entries;
    }

    testing_support::TestFolder folder;
};

// An unexpected failure shows and logs the run-time error's number and text
// (a bound control's number reads it alike); a detected one ignores any
// error pending. Either way the error is cleared once reported, and the
// box's answer is left in Glob_Msg_Result.
TEST_F(ReportErrorTest, EachKindOfFailureIsShownAndLoggedWithTheErrorItOwns)
{
    struct Case {
        int number;
        QString message;
        int style;
        QString module, routine;
        int error;  // the run-time error pending, 0 for none
        QString box, logged;
        bool engine_errors_too = false;
        int answer = engine::answer::Ok;  // left in Glob_Msg_Result
    };
    const QList<Case> cases = {
        {report::Unexpected, "Could not load", 0, "globals", "", 0, "Could not load", "globals    : Could not load .\n"},
        {report::Unexpected, "Unexpected error ", 16, "fpupils", "Load_Pupil", 53, "Unexpected error \n53 : File not found",
         "fpupils    : 53 : File not found : Unexpected error \n        Load_Pupil .\n"},
        {report::BoundControl, "Data error", 0, "ffamily", "", 3022, "Data error\n3022 : Duplicate",
         "ffamily    : 3022 : Duplicate : Data error .\n"},
        {report::UpgradeFailed, "Could not upgrade the database", 16, "globdbhand", "", 3022,
         "Could not upgrade the database", "globdbhand : Could not upgrade the database .\n", true},
        {report::Detected, "Go on?", 36, "globals", "", 0, "Go on?", "globals    : Go on? .\n", false, engine::answer::No},
    };
    const QHash<int, QString> descriptions = {{53, "File not found"}, {3022, "Duplicate"}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.message.toStdString());
        QFile::remove(Current_Log_File());
        if (c.engine_errors_too) {
            engine::raise_engine_error(c.error, descriptions[c.error]);
            engine::DBEngine_Errors().append({3058, QStringLiteral("Null in index")});
        } else if (c.error) {
            engine::Err().Raise(c.error, descriptions[c.error]);
        }
        ScriptedBoxes boxes;
        boxes.expect(c.message, c.answer, c.style);
        Report_Error(c.number, c.message, c.style, c.module, c.routine);
        EXPECT_EQ(engine::Glob_Msg_Result(), c.answer);
        EXPECT_EQ(boxes.shown().value(0), c.box);
        EXPECT_EQ(boxes.titles().value(0), App_Title());
        EXPECT_EQ(entries_without_stamps(), QStringList{c.logged});
        EXPECT_EQ(engine::Err().Number, 0);
        EXPECT_TRUE(engine::Err().Description.isEmpty());
        engine::DBEngine_Errors().clear();
    }
}

// ---- engine errors ---------------------------------------------------------

// The engine's error list follows the message unless its last entry is the
// run-time error itself.
TEST_F(ReportErrorTest, EngineErrorsAreLoggedWhenTheyAddToTheRunTimeError)
{
    struct Case {
        int error;  // the run-time error, 0 for none
        QList<engine::EngineError> engine_errors;
        QString logged;
    };
    const QList<Case> cases = {
        {3022, {{3022, "Duplicate key"}}, "gendbde    : 3022 : Duplicate key : Update failed .\n"},
        {3022, {{3022, "Duplicate key"}, {3146, "ODBC failed"}},
         "gendbde    : 3022 : Duplicate key : Update failed Num:3022 Descr: Duplicate key Num:3146 Descr: ODBC failed .\n"},
        {0, {{3265, "Item not found"}}, "gendbde    : Update failed Num:3265 Descr: Item not found .\n"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.logged.toStdString());
        QFile::remove(Current_Log_File());
        if (c.error)
            engine::Err().Raise(c.error, c.engine_errors.first().Description);
        engine::DBEngine_Errors() = c.engine_errors;
        ScriptedBoxes().expect(QStringLiteral("Update failed"))
            .during([&] { Report_Error(report::Unexpected, QStringLiteral("Update failed"), 0, QStringLiteral("gendbde")); });
        EXPECT_EQ(entries_without_stamps(), QStringList{c.logged});
    }
}

// ---- traces and module tags --------------------------------------------------

// One entry a report, appended, its module tag cut or padded to ten characters.
TEST_F(ReportErrorTest, TracesAreLoggedAndNeverShownUnderTheirModuleTag)
{
    ScriptedBoxes boxes;  // any box fails the test
    Report_Error(report::Trace, QStringLiteral("long"), 0, QStringLiteral("abcdefghijkl"));
    Report_Error(report::Trace, QStringLiteral("short"), 0, QStringLiteral("gentxg7"));
    Report_Error(report::Trace, QStringLiteral("none"), 0, QString());
    Report_Error(report::Trace, QStringLiteral(" records affected = 3"), 0, QStringLiteral("gendbde"),
                 QStringLiteral("DB_Copy"));

    EXPECT_EQ(entries_without_stamps(), (QStringList{QStringLiteral("abcdefghij : long .\n"),
                                                     QStringLiteral("gentxg7    : short .\n"),
                                                     QStringLiteral("           : none .\n"),
                                                     QStringLiteral("gendbde    :  records affected = 3\n        DB_Copy .\n")}));
}

// ---- logging off -------------------------------------------------------------

TEST_F(ReportErrorTest, WithoutAWritableLogNothingIsLoggedButBoxesStillShow)
{
    Current_Log_File() = QStringLiteral("   ");
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Shown anyway"));

    Report_Error(report::Detected, QStringLiteral("Shown anyway"), 0, QStringLiteral("globals"));

    EXPECT_FALSE(QFile::exists(folder.file(QStringLiteral("quillary.log"))));

    // A log that can't be written fails silently.
    Current_Log_File() = folder.write_file(QStringLiteral("not-a-folder"), QString()) + QStringLiteral("/quillary.log");
    boxes.expect(QStringLiteral("Still reported"), engine::answer::Ok, 16);

    Report_Error(report::Trace, QStringLiteral("nobody hears this"), 0, QStringLiteral("gendbde"));
    Report_Error(report::Detected, QStringLiteral("Still reported"), 16, QStringLiteral("globals"));

    EXPECT_EQ(boxes.shown().size(), 2);
    EXPECT_EQ(engine::Err().Number, 0);
}

TEST_F(ReportErrorTest, WriteLogStampsEachEntryWithLocalDateAndTime)
{
    const QDateTime before = QDateTime::currentDateTime().addSecs(-1);
    Write_Log(QStringLiteral("Logfile changed to /tmp/x.log"));
    const QDateTime after = QDateTime::currentDateTime().addSecs(1);

    const QString text = folder.log_text();
    const QDateTime stamp = QDateTime::fromString(text.left(19), QStringLiteral("yyyy-MM-dd hh:mm:ss"));
    ASSERT_TRUE(stamp.isValid()) << text.toStdString();
    EXPECT_GE(stamp, before.addMSecs(-before.time().msec()));
    EXPECT_LE(stamp, after);
    EXPECT_EQ(text.mid(19), QStringLiteral(" -- Logfile changed to /tmp/x.log\n"));
}

}  // namespace
