#include "engine/err.h"
#include "engine/msg_box.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "support/scripted_boxes.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using testing_support::ScriptedBoxes;

class ReportErrorTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        Current_Log_File() = dir.filePath(QStringLiteral("quillary.log"));
        engine::Err().Clear();
        engine::DBEngine_Errors().clear();
    }
    void TearDown() override
    {
        Current_Log_File().clear();
        engine::Err().Clear();
        engine::DBEngine_Errors().clear();
    }

    QString log_text() const
    {
        QFile file(Current_Log_File());
        if (!file.open(QIODevice::ReadOnly))
            return QString();
        return QString::fromUtf8(file.readAll());
    }

    // The log with each entry's time stamp checked and taken off.
    QStringList entries_without_stamps() const
    {
        static const QRegularExpression stamp(QStringLiteral("^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d -- "),
                                              QRegularExpression::MultilineOption);
        QString text = log_text();
        const int stamps = static_cast<int>(text.count(stamp));
        text.replace(stamp, QStringLiteral("@"));
        QStringList entries = text.split(QLatin1Char('@'), Qt::SkipEmptyParts);
        EXPECT_EQ(stamps, entries.size()) << text.toStdString();
        return entries;
    }

    QTemporaryDir dir;
};

TEST_F(ReportErrorTest, UnexpectedFailureWithoutErrorStateLogsAndShowsTheMessageAlone)
{
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Could not load"), engine::answer::Ok, 0);

    Report_Error(report::Unexpected, QStringLiteral("Could not load"), 0, QStringLiteral("globals"));

    EXPECT_EQ(boxes.shown().value(0), QStringLiteral("Could not load"));
    EXPECT_EQ(boxes.titles().value(0), App_Title());
    EXPECT_EQ(entries_without_stamps(), QStringList{QStringLiteral("globals    : Could not load .\n")});
}

TEST_F(ReportErrorTest, UnexpectedFailureWritesTheErrorStateIntoLogAndBox)
{
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Unexpected error "), engine::answer::Ok, 16);
    engine::Err().Raise(53, QStringLiteral("File not found"));

    Report_Error(report::Unexpected, QStringLiteral("Unexpected error "), 16, QStringLiteral("fpupils"),
                 QStringLiteral("Load_Pupil"));

    EXPECT_EQ(boxes.shown().value(0), QStringLiteral("Unexpected error \n53 : File not found"));
    EXPECT_EQ(entries_without_stamps(),
              QStringList{QStringLiteral("fpupils    : 53 : File not found : Unexpected error \n        Load_Pupil .\n")});
}

TEST_F(ReportErrorTest, BoundControlNumberReadsTheErrorStateLikeZero)
{
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Data error"));
    engine::Err().Raise(3022, QStringLiteral("Duplicate"));

    Report_Error(report::BoundControl, QStringLiteral("Data error"), 0, QStringLiteral("ffamily"));

    EXPECT_EQ(boxes.shown().value(0), QStringLiteral("Data error\n3022 : Duplicate"));
    EXPECT_TRUE(log_text().contains(QStringLiteral("ffamily    : 3022 : Duplicate : Data error .")));
}

TEST_F(ReportErrorTest, ReportingClearsTheErrorState)
{
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("x"));
    engine::Err().Raise(70, QStringLiteral("Permission denied"));

    Report_Error(report::Unexpected, QStringLiteral("x"), 0, QStringLiteral("globals"));

    EXPECT_EQ(engine::Err().Number, 0);
    EXPECT_TRUE(engine::Err().Description.isEmpty());
}

TEST_F(ReportErrorTest, DetectedFailureIgnoresThePendingErrorState)
{
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Could not upgrade the database"), engine::answer::Ok, 16);
    engine::raise_engine_error(3022, QStringLiteral("Duplicate"));
    engine::DBEngine_Errors().append({3058, QStringLiteral("Null in index")});

    Report_Error(report::UpgradeFailed, QStringLiteral("Could not upgrade the database"), 16,
                 QStringLiteral("globdbhand"));

    EXPECT_EQ(boxes.shown().value(0), QStringLiteral("Could not upgrade the database"));
    EXPECT_EQ(entries_without_stamps(),
              QStringList{QStringLiteral("globdbhand : Could not upgrade the database .\n")});
}

TEST_F(ReportErrorTest, AnswerOfTheBoxIsLeftInGlobMsgResult)
{
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Go on?"), engine::answer::No, 36);

    Report_Error(report::Detected, QStringLiteral("Go on?"), 36, QStringLiteral("globals"));

    EXPECT_EQ(engine::Glob_Msg_Result(), engine::answer::No);
}

// ---- engine errors ---------------------------------------------------------

class ReportErrorEngineErrorsTest : public ReportErrorTest {
protected:
    QString logged_for_report()
    {
        ScriptedBoxes boxes;
        boxes.expect(QStringLiteral("Update failed"));
        Report_Error(report::Unexpected, QStringLiteral("Update failed"), 0, QStringLiteral("gendbde"));
        return log_text();
    }
};

TEST_F(ReportErrorEngineErrorsTest, EngineFailureThatIsTheRunTimeErrorIsNotRepeated)
{
    engine::raise_engine_error(3022, QStringLiteral("Duplicate key"));

    const QString logged = logged_for_report();

    EXPECT_TRUE(logged.contains(QStringLiteral("gendbde    : 3022 : Duplicate key : Update failed .")));
    EXPECT_FALSE(logged.contains(QStringLiteral(" Num:")));
}

TEST_F(ReportErrorEngineErrorsTest, AllEntriesArePrintedWhenTheLastDiffersFromTheRunTimeError)
{
    engine::Err().Raise(3022, QStringLiteral("Duplicate key"));
    engine::DBEngine_Errors() = {{3022, QStringLiteral("Duplicate key")}, {3146, QStringLiteral("ODBC failed")}};

    EXPECT_TRUE(logged_for_report().contains(QStringLiteral(
        "gendbde    : 3022 : Duplicate key : Update failed Num:3022 Descr: Duplicate key Num:3146 Descr: ODBC failed .")));
}

TEST_F(ReportErrorEngineErrorsTest, StaleEngineErrorsArePrintedWhenNoRunTimeErrorIsSet)
{
    engine::DBEngine_Errors() = {{3265, QStringLiteral("Item not found")}};

    EXPECT_TRUE(logged_for_report().contains(
        QStringLiteral("gendbde    : Update failed Num:3265 Descr: Item not found .")));
}

// ---- module tags -----------------------------------------------------------

TEST_F(ReportErrorTest, ModuleTagIsCutOrPaddedToTenCharacters)
{
    Report_Error(report::Trace, QStringLiteral("long"), 0, QStringLiteral("abcdefghijkl"));
    Report_Error(report::Trace, QStringLiteral("short"), 0, QStringLiteral("gentxg7"));
    Report_Error(report::Trace, QStringLiteral("none"), 0, QString());

    EXPECT_EQ(entries_without_stamps(), (QStringList{QStringLiteral("abcdefghij : long .\n"),
                                                     QStringLiteral("gentxg7    : short .\n"),
                                                     QStringLiteral("           : none .\n")}));
}

// ---- traces and logging off -------------------------------------------------

TEST_F(ReportErrorTest, TraceIsLoggedAndNeverShown)
{
    ScriptedBoxes boxes;  // any box fails the test

    Report_Error(report::Trace, QStringLiteral(" records affected = 3"), 0, QStringLiteral("gendbde"),
                 QStringLiteral("DB_Copy"));

    EXPECT_EQ(entries_without_stamps(),
              QStringList{QStringLiteral("gendbde    :  records affected = 3\n        DB_Copy .\n")});
}

TEST_F(ReportErrorTest, EntriesAreAppendedOnePerReport)
{
    Report_Error(report::Trace, QStringLiteral("begin transaction"), 0, QStringLiteral("gendbde"));
    Report_Error(report::Trace, QStringLiteral("commit"), 0, QStringLiteral("gendbde"));

    EXPECT_EQ(entries_without_stamps().size(), 2);
}

TEST_F(ReportErrorTest, BlankLogFileNameLogsNothingButStillShows)
{
    Current_Log_File() = QStringLiteral("   ");
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Shown anyway"));

    Report_Error(report::Detected, QStringLiteral("Shown anyway"), 0, QStringLiteral("globals"));

    EXPECT_TRUE(QDir(dir.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).isEmpty());
}

TEST_F(ReportErrorTest, UnwritableLogFileFailsSilently)
{
    QFile blocker(dir.filePath(QStringLiteral("not-a-folder")));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    Current_Log_File() = dir.filePath(QStringLiteral("not-a-folder/quillary.log"));
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Still reported"), engine::answer::Ok, 16);

    Report_Error(report::Trace, QStringLiteral("nobody hears this"), 0, QStringLiteral("gendbde"));
    Report_Error(report::Detected, QStringLiteral("Still reported"), 16, QStringLiteral("globals"));

    EXPECT_EQ(boxes.shown().size(), 1);
    EXPECT_EQ(engine::Err().Number, 0);
}

TEST_F(ReportErrorTest, WriteLogStampsEachEntryWithLocalDateAndTime)
{
    const QDateTime before = QDateTime::currentDateTime().addSecs(-1);
    Write_Log(QStringLiteral("Logfile changed to /tmp/x.log"));
    const QDateTime after = QDateTime::currentDateTime().addSecs(1);

    const QString text = log_text();
    const QDateTime stamp = QDateTime::fromString(text.left(19), QStringLiteral("yyyy-MM-dd hh:mm:ss"));
    ASSERT_TRUE(stamp.isValid()) << text.toStdString();
    EXPECT_GE(stamp, before.addMSecs(-before.time().msec()));
    EXPECT_LE(stamp, after);
    EXPECT_EQ(text.mid(19), QStringLiteral(" -- Logfile changed to /tmp/x.log\n"));
}

}  // namespace
