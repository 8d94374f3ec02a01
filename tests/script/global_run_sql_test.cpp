#include "database/db_handling.h"
#include "engine/msg_box.h"
#include "engine/workspace.h"
#include "script/global_run_sql.h"
#include "shell/app_globals.h"
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

// Scripts that stop to ask, or that fail: the boxes they show and the answers
// given, whether the run stands, its status, the holidays it leaves (a run
// that leaves none changes nothing at all) and what the log says.
TEST_F(GlobalRunSqlTest, AQuestionOrAFailureAsksAndTheAnswerDecidesWhetherTheRunStands)
{
    struct Case {
        const char* what;
        QStringList lines;
        QList<testing_support::ExpectedBox> boxes;
        bool applied;
        QString status;
        int holidays;
        QStringList logged;
    };
    const QString applied = QStringLiteral(" Script successfully applied");
    const QString undone = QStringLiteral("Script file abandoned and all changes undone");
    const QString reading = QStringLiteral("Error occurred while executing command while Reading command");
    const QString revert = QStringLiteral("revert to the pre-run database");
    const QString no_table = QStringLiteral("DELETE * FROM No_Such_Table;");
    const QList<Case> cases = {
        {"an unknown command skipped on Yes", {"SELECT * FROM Pupils;", holiday_5th},
         {{"Unknown Command in file. \nContinue reading the file? \n\nSELECT * FROM Pupils", Yes, 36}}, true, applied, 1, {}},
        {"an unknown command answered No", {holiday_5th, "Select Pupil_id FROM Pupils;", holiday_12th},
         {{"Unknown Command in file.", No}}, false, undone, 0,
         {"Error occurred while executing command ", "Obey_Command - Select Pupil_id FROM Pupils"}},
        // The call runs without par_Name and fails; No goes on with the file, and
        // the rest of the split line waits for a ";", taking the next line with it.
        {"a value with a semicolon splits the call",
         {"Qry_Add_Term par_Name \"Spring; Summer\" par_Start_date \"2026-01-05\" par_End_date \"2026-03-27\";", holiday_5th},
         {{"Error occurred while executing script file. ", Ok},
          {"Do you wish to cancel the updates and revert to the pre-run database? ", No, 36},
          {"\n\nSummer\" par_Start_date \"2026-01-05\" par_End_date \"2026-03-27\";INSERT INTO", Yes}},
         true, applied, 0, {"Obey_Command - Qry_Add_Term par_Name \"Spring"}},
        {"an unclosed quote leaves the parameter unset and the query still runs",
         {holiday_12th, "Qry_Insert_Holiday p_date \"2026-01-05;"},
         {{"Error occurred while executing script file. \n3061", Ok}, {revert, Yes}}, false, undone, 0, {}},
        {"on error continue logs the failures and commits what succeeded",
         {"On Error Continue", no_table, holiday_5th, "Qry_No_Such_Query;", holiday_12th},
         {{reading, Ok}, {"Error occurred while executing command while setting up querydef", Ok}}, true, applied, 2,
         {"Global_Run : ", "Obey_Command - DELETE * FROM No_Such_Table"}},
        {"on error end asks again", {"on error cont", no_table, holiday_5th, "on error end", no_table, holiday_12th},
         {{reading, Ok}, {reading, Ok}, {revert, Yes}}, false, undone, 0, {}},
        {"a duplicate key abandons the file even when errors are to be ignored",
         {"on error continue", "Qry_Insert_Holiday p_date \"2026-01-05\";", "Qry_Insert_Holiday p_date \"2026-01-05\";",
          holiday_12th},
         {{"The data cannot be inserted because there are already records there.\n"
           "Delete the old records first, then try again.", Ok, 0}},
         false, undone, 0, {}},
        {"a parameter that won't convert or isn't declared fails before the execution",
         {"on error cont", "Qry_Select_Number_Lessons p_Term_id \"many\";",
          "Qry_Insert_Holiday par_nothing \"1\" p_date \"2026-01-05\";"},
         {{"while setting up parameter called p_Term_id", Ok}, {"while setting up parameter called par_nothing", Ok}},
         true, applied, 0, {}},
        {"a question answered Yes goes on", {"question Add the holidays?", holiday_5th},
         {{"Add the holidays?\nContinue?", Yes, 36}}, true, applied, 1, {}},
        {"a question answered No stops, keeping the status",
         {"display half way", holiday_12th, "Question Carry on?", "DELETE * FROM Holidays;"},
         {{"Carry on?\nContinue?", No}}, false, "half way", 0, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        school.exec(QStringLiteral("DELETE FROM Holidays"));
        QFile::remove(Current_Log_File());
        const QString before = school.dump();
        {
            ScriptedBoxes boxes;
            for (const testing_support::ExpectedBox& box : c.boxes)
                boxes.expect(box.text_contains, box.answer, box.style);
            EXPECT_EQ(run(c.lines), c.applied);
        }
        EXPECT_EQ(status, c.status);
        EXPECT_EQ(holidays(), c.holidays);
        if (c.holidays == 0) {
            EXPECT_EQ(school.dump(), before);
        }
        for (const QString& words : c.logged)
            EXPECT_TRUE(school.log_text().contains(words)) << words.toStdString();
    }
}

TEST_F(GlobalRunSqlTest, ARunInsideTheCallersTransactionUndoesOnlyItself)
{
    ASSERT_TRUE(Program_Workspace().BeginTrans());
    school.exec(QStringLiteral("INSERT INTO Holidays (Day_Off) VALUES ('2026-02-02 00:00:00')"));
    const QString path = school.write_file(QStringLiteral("nested.sql"), holiday_5th + QStringLiteral("\nSELECT 1;\n"));
    ScriptedBoxes().expect(QStringLiteral("Unknown Command"), No).during([&] { EXPECT_FALSE(Global_Run_SQL(path, status)); });
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

// A file that can't be opened is reported and touches nothing; a line holding
// a NUL byte ends the run and undoes it.
TEST_F(GlobalRunSqlTest, AFileThatCantBeOpenedOrHoldsANulByteEndsTheRunAndLeavesNothing)
{
    const QString missing = school.file(QStringLiteral("missing.sql"));
    QString untouched = QStringLiteral("as before");
    ScriptedBoxes().expect(QStringLiteral("Cannot open file ") + missing, Ok).during([&] {
        EXPECT_FALSE(Global_Run_SQL(missing, untouched));
    });
    EXPECT_EQ(untouched, QStringLiteral("as before"));

    const QString before = school.dump();
    const QString path = write_bytes(school, QStringLiteral("nul.sql"),
                                     "display Working\n" + holiday_5th.toUtf8() + "\nDELETE FROM Holidays" + '\0'
                                         + " WHERE 1 = 1;\n");
    ScriptedBoxes().expect(QStringLiteral("Invalid line in file on line 3"), Ok)
        .during([&] { EXPECT_FALSE(Global_Run_SQL(path, status)); });
    EXPECT_EQ(status, QStringLiteral("Script file abandoned and all changes undone"));
    EXPECT_EQ(school.dump(), before);
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
