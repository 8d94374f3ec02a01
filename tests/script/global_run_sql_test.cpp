#include "database/db_handling.h"
#include "engine/msg_box.h"
#include "engine/workspace.h"
#include "script/global_run_sql.h"
#include "support/school_made_current.h"
#include "support/scripted_boxes.h"

#include <QFile>
#include <gtest/gtest.h>

namespace {

using engine::answer::No;
using engine::answer::Ok;
using engine::answer::Yes;
using testing_support::ScriptedBoxes;

const QString holiday_5th = QStringLiteral("INSERT INTO Holidays (Day_Off) VALUES (#01/05/2026#);");
const QString holiday_12th = QStringLiteral("INSERT INTO Holidays (Day_Off) VALUES (#01/12/2026#);");

class GlobalRunSqlTest : public ::testing::Test {
protected:
    // Runs a script of the given lines; the status starts as "old status".
    bool run(const QStringList& lines)
    {
        const QString path = school.write_file(QStringLiteral("test.sql"), lines.join(QLatin1Char('\n')));
        status = QStringLiteral("old status");
        const bool applied = Global_Run_SQL(path, status);
        EXPECT_EQ(Program_Workspace().transaction_depth(), 0);
        return applied;
    }
    int holidays() { return school.count(QStringLiteral("Holidays")); }

    testing_support::SchoolForRuns school;
    QString status;
};

// Scripts that run through: the holidays they leave and the status, which the
// last display line leads.
TEST_F(GlobalRunSqlTest, AScriptIsReadLineByLineAndStatementByStatement)
{
    struct Case {
        const char* what;
        QStringList lines;
        int holidays;
        QString status;
    };
    const QString applied = QStringLiteral(" Script successfully applied");
    const QList<Case> cases = {
        {"an empty file", {}, 0, applied},
        {"two display lines", {"display Working out costs", "  DISPLAY Costs worked out.  "}, 0,
         "Costs worked out." + applied},
        {"a statement spread over lines obeys keyword lines on the way",
         {"INSERT INTO Holidays (Day_Off)", "comment half way", "", "display inserting", "VALUES (#01/05/2026#);"}, 1,
         "inserting" + applied},
        // The second keeps its ";" and reaches the engine together with the third.
        {"two direct statements on one line", {holiday_5th + " " + holiday_12th, "INSERT INTO Holidays (Day_Off) VALUES (#01/19/2026#);"},
         3, applied},
        // The second call swallows the next statement as a parameter-less word.
        {"two query calls on one line",
         {"Qry_Insert_Holiday p_date \"2026-01-05\"; Qry_Insert_Holiday p_date \"2026-01-12\";", "DELETE * FROM Holidays;"}, 2,
         applied},
        {"a statement left without its semicolon at the end is dropped",
         {holiday_5th, "INSERT INTO Holidays (Day_Off) VALUES (#01/12/2026#)"}, 1, applied},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        school.exec(QStringLiteral("DELETE FROM Holidays"));
        EXPECT_TRUE(run(c.lines));
        EXPECT_EQ(holidays(), c.holidays);
        EXPECT_EQ(status, c.status);
    }
}

TEST_F(GlobalRunSqlTest, AnUnknownCommandIsSkippedOnYes)
{
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Unknown Command in file. \nContinue reading the file? \n\nSELECT * FROM Pupils"), Yes, 36);
    EXPECT_TRUE(run({QStringLiteral("SELECT * FROM Pupils;"), holiday_5th}));
    EXPECT_EQ(holidays(), 1);
}

TEST_F(GlobalRunSqlTest, AnUnknownCommandAnsweredNoUndoesTheRun)
{
    const QString before = school.dump();
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Unknown Command in file."), No);
    EXPECT_FALSE(run({holiday_5th, QStringLiteral("Select Pupil_id FROM Pupils;"), holiday_12th}));
    EXPECT_EQ(status, QStringLiteral("Script file abandoned and all changes undone"));
    EXPECT_EQ(school.dump(), before);
    EXPECT_TRUE(school.log_text().contains(QStringLiteral("Error occurred while executing command ")));
    EXPECT_TRUE(school.log_text().contains(QStringLiteral("Obey_Command - Select Pupil_id FROM Pupils")));
}

TEST_F(GlobalRunSqlTest, AValueWithASemicolonSplitsTheCallLeavingItsParameterUnset)
{
    ScriptedBoxes boxes;
    // The call runs without par_Name and fails; No goes on with the file.
    boxes.expect(QStringLiteral("Error occurred while executing script file. "), Ok);
    boxes.expect(QStringLiteral("Do you wish to cancel the updates and revert to the pre-run database? "), No, 36);
    boxes.expect(QStringLiteral("\n\nSummer\" par_Start_date \"2026-01-05\" par_End_date \"2026-03-27\";INSERT INTO"), Yes);
    EXPECT_TRUE(run({QStringLiteral("Qry_Add_Term par_Name \"Spring; Summer\" par_Start_date \"2026-01-05\" "
                                    "par_End_date \"2026-03-27\";"),
                     holiday_5th}));
    EXPECT_EQ(school.count(QStringLiteral("Term_Dates")), 0);
    // The rest of the split line waited for a ";" and took the next line with it.
    EXPECT_EQ(holidays(), 0);
    EXPECT_TRUE(school.log_text().contains(QStringLiteral("Obey_Command - Qry_Add_Term par_Name \"Spring")));
}

TEST_F(GlobalRunSqlTest, AnUnclosedQuoteLeavesTheParameterUnsetAndTheQueryStillRuns)
{
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Error occurred while executing script file. \n3061"), Ok);
    boxes.expect(QStringLiteral("revert to the pre-run database"), Yes);
    EXPECT_FALSE(run({holiday_12th, QStringLiteral("Qry_Insert_Holiday p_date \"2026-01-05;")}));
    EXPECT_EQ(status, QStringLiteral("Script file abandoned and all changes undone"));
    EXPECT_EQ(holidays(), 0);
}

TEST_F(GlobalRunSqlTest, ContinueOnErrorLogsFailuresAndCommitsWhatSucceeded)
{
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Error occurred while executing command while Reading command"), Ok);
    boxes.expect(QStringLiteral("Error occurred while executing command while setting up querydef"), Ok);
    EXPECT_TRUE(run({QStringLiteral("On Error Continue"), QStringLiteral("DELETE * FROM No_Such_Table;"), holiday_5th,
                     QStringLiteral("Qry_No_Such_Query;"), holiday_12th}));
    EXPECT_EQ(holidays(), 2);
    EXPECT_EQ(status, QStringLiteral(" Script successfully applied"));
    const QString log = school.log_text();
    EXPECT_TRUE(log.contains(QStringLiteral("Global_Run : ")));
    EXPECT_TRUE(log.contains(QStringLiteral("Obey_Command - DELETE * FROM No_Such_Table")));
}

TEST_F(GlobalRunSqlTest, OnErrorEndAsksAgain)
{
    const QString before = school.dump();
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Error occurred while executing command while Reading command"), Ok);
    boxes.expect(QStringLiteral("Error occurred while executing command while Reading command"), Ok);
    boxes.expect(QStringLiteral("revert to the pre-run database"), Yes);
    EXPECT_FALSE(run({QStringLiteral("on error cont"), QStringLiteral("DELETE * FROM No_Such_Table;"), holiday_5th,
                      QStringLiteral("on error end"), QStringLiteral("DELETE * FROM No_Such_Table;"), holiday_12th}));
    EXPECT_EQ(status, QStringLiteral("Script file abandoned and all changes undone"));
    EXPECT_EQ(school.dump(), before);
}

TEST_F(GlobalRunSqlTest, ADuplicateKeyAbandonsTheFileEvenWhenErrorsAreToBeIgnored)
{
    const QString before = school.dump();
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("The data cannot be inserted because there are already records there.\n"
                                "Delete the old records first, then try again."),
                 Ok, 0);
    EXPECT_FALSE(run({QStringLiteral("on error continue"), QStringLiteral("Qry_Insert_Holiday p_date \"2026-01-05\";"),
                      QStringLiteral("Qry_Insert_Holiday p_date \"2026-01-05\";"), holiday_12th}));
    EXPECT_EQ(status, QStringLiteral("Script file abandoned and all changes undone"));
    EXPECT_EQ(school.dump(), before);
}

TEST_F(GlobalRunSqlTest, AParameterThatWontConvertOrIsntDeclaredFailsBeforeTheExecution)
{
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("while setting up parameter called p_Term_id"), Ok);
    boxes.expect(QStringLiteral("while setting up parameter called par_nothing"), Ok);
    EXPECT_TRUE(run({QStringLiteral("on error cont"), QStringLiteral("Qry_Select_Number_Lessons p_Term_id \"many\";"),
                     QStringLiteral("Qry_Insert_Holiday par_nothing \"1\" p_date \"2026-01-05\";")}));
    EXPECT_EQ(holidays(), 0);
}

TEST_F(GlobalRunSqlTest, AQuestionGoesOnWithYesAndStopsWithNoKeepingTheStatus)
{
    {
        ScriptedBoxes boxes;
        boxes.expect(QStringLiteral("Add the holidays?\nContinue?"), Yes, 36);
        EXPECT_TRUE(run({QStringLiteral("question Add the holidays?"), holiday_5th}));
        EXPECT_EQ(holidays(), 1);
    }
    const QString before = school.dump();
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Carry on?\nContinue?"), No);
    EXPECT_FALSE(run({QStringLiteral("display half way"), holiday_12th, QStringLiteral("Question Carry on?"),
                      QStringLiteral("DELETE * FROM Holidays;")}));
    EXPECT_EQ(status, QStringLiteral("half way"));
    EXPECT_EQ(school.dump(), before);
}

TEST_F(GlobalRunSqlTest, AFileThatCantBeOpenedIsReportedAndTouchesNothing)
{
    ScriptedBoxes boxes;
    const QString missing = school.file(QStringLiteral("missing.sql"));
    boxes.expect(QStringLiteral("Cannot open file ") + missing, Ok);
    QString untouched = QStringLiteral("as before");
    EXPECT_FALSE(Global_Run_SQL(missing, untouched));
    EXPECT_EQ(untouched, QStringLiteral("as before"));
    EXPECT_EQ(Program_Workspace().transaction_depth(), 0);
}

TEST_F(GlobalRunSqlTest, ARunInsideTheCallersTransactionUndoesOnlyItself)
{
    ASSERT_TRUE(Program_Workspace().BeginTrans());
    school.exec(QStringLiteral("INSERT INTO Holidays (Day_Off) VALUES ('2026-02-02 00:00:00')"));
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Unknown Command"), No);
    const QString path = school.write_file(QStringLiteral("nested.sql"), holiday_5th + QStringLiteral("\nSELECT 1;\n"));
    EXPECT_FALSE(Global_Run_SQL(path, status));
    EXPECT_EQ(Program_Workspace().transaction_depth(), 1);
    ASSERT_TRUE(Program_Workspace().CommitTrans());
    EXPECT_EQ(holidays(), 1);
}

// Files as they come from other machines: their bytes, not text.
QString write_bytes(const testing_support::SchoolForRuns& school, const QString& name, const QByteArray& bytes)
{
    QFile file(school.file(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    return file.fileName();
}

TEST_F(GlobalRunSqlTest, ALineHoldingANulByteEndsTheRunAndUndoesIt)
{
    const QString before = school.dump();
    const QString path = write_bytes(school, QStringLiteral("nul.sql"),
                                     "display Working\n" + holiday_5th.toUtf8() + "\nDELETE FROM Holidays" + '\0'
                                         + " WHERE 1 = 1;\n");
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Invalid line in file on line 3"), Ok);
    EXPECT_FALSE(Global_Run_SQL(path, status));
    EXPECT_EQ(status, QStringLiteral("Script file abandoned and all changes undone"));
    EXPECT_EQ(school.dump(), before);
    EXPECT_EQ(Program_Workspace().transaction_depth(), 0);
}

TEST_F(GlobalRunSqlTest, WindowsFilesAreReadInTheirCodePageAndTheLogSaysSo)
{
    // "Müller’s" in Windows-1252, with Windows line ends: ü is 0xFC, the
    // typographic apostrophe 0x92.
    const QString path = write_bytes(school, QStringLiteral("cp1252.sql"),
                                     "INSERT INTO Families (Family_Name) VALUES (\"M\xFCller\x92s\");\r\n");
    EXPECT_TRUE(Global_Run_SQL(path, status));
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT Family_Name FROM Families")).toString(), QStringLiteral("Müller’s"));
    EXPECT_TRUE(school.log_text().contains(QStringLiteral("read as Windows-1252")));

    // UTF-8, with its byte-order mark, is read as it stands and not logged.
    const QString utf8 = write_bytes(school, QStringLiteral("utf8.sql"),
                                     "\xEF\xBB\xBFUPDATE Families SET Family_Name = \"Ørsted\";\n");
    EXPECT_TRUE(Global_Run_SQL(utf8, status));
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT Family_Name FROM Families")).toString(), QStringLiteral("Ørsted"));
    EXPECT_EQ(school.log_text().count(QStringLiteral("Windows-1252")), 1);
}

}  // namespace
