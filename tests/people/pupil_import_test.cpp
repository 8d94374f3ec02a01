// Pupils imported from a comma-separated file: the reading of the file
// (quotes, commas, line ends, encodings), the refusals with their line
// numbers, new families and pupils against existing ones brought up to date,
// and the one transaction that leaves the database as it was when the
// import does not finish.

#include "people/csv_records.h"
#include "people/pupil_import.h"

#include "database/db_handling.h"
#include "engine/msg_box.h"
#include "engine/workspace.h"
#include "reportengine/text_exports.h"
#include "support/fake_locale_source.h"
#include "support/school_made_current.h"
#include "support/scripted_boxes.h"

#include <QDate>
#include <QFile>
#include <QStringList>
#include <gtest/gtest.h>

namespace {

using namespace pupil_import;
using testing_support::FakeLocaleSource;
using testing_support::LocaleScope;
using testing_support::ScriptedBoxes;

// ---- Reading the lines ----

struct CsvCase {
    const char* story;
    QString text;
    QList<QStringList> fields;
    QList<int> lines;
    bool last_complete = true;
};

TEST(CsvReader, ReadsRecordsAsSpreadsheetsWriteThem)
{
    const CsvCase cases[] = {
        {"plain fields", "a,b,c\n", {{"a", "b", "c"}}, {1}},
        {"no line end after the last line", "a,b\nc,d", {{"a", "b"}, {"c", "d"}}, {1, 2}},
        {"Windows line ends", "a,b\r\nc,d\r\n", {{"a", "b"}, {"c", "d"}}, {1, 2}},
        {"old Macintosh line ends", "a\rb\r", {{"a"}, {"b"}}, {1, 2}},
        {"a comma inside quotes", "\"Smith, Jr\",b", {{"Smith, Jr", "b"}}, {1}},
        {"quotes written twice", "\"He said \"\"hi\"\"\",x", {{"He said \"hi\"", "x"}}, {1}},
        {"a line end inside quotes", "\"1 High St\nLeeds\",x\ny", {{"1 High St\nLeeds", "x"}, {"y"}}, {1, 3}},
        {"blanks around unquoted fields go", "  a  ,\tb\t", {{"a", "b"}}, {1}},
        {"blanks inside quotes stay", " \" a \" ,b", {{" a ", "b"}}, {1}},
        {"text after the closing quote stays", "\"Bo\" Smith,x", {{"Bo Smith", "x"}}, {1}},
        {"a quote inside an unquoted field is a character", "O\"Neil,x", {{"O\"Neil", "x"}}, {1}},
        {"an apostrophe is a character", "O'Brien,x", {{"O'Brien", "x"}}, {1}},
        {"empty fields, the last one too", ",a,,", {{"", "a", "", ""}}, {1}},
        {"blank lines are passed over, still counted", "a\n\n   \nb\n\n", {{"a"}, {"b"}}, {1, 4}},
        {"a quote left open takes the rest", "a,\"bc\nd,e", {{"a", "bc\nd,e"}}, {1}, false},
        {"nothing at all", "", {}, {}},
    };
    for (const CsvCase& c : cases) {
        SCOPED_TRACE(c.story);
        CsvReader reader(c.text);
        CsvRecord record;
        QList<QStringList> fields;
        QList<int> lines;
        bool complete = true;
        while (reader.next(record)) {
            fields << record.fields;
            lines << record.line;
            complete = record.complete;
        }
        EXPECT_EQ(fields, c.fields);
        EXPECT_EQ(lines, c.lines);
        EXPECT_EQ(complete, c.last_complete);
    }
}

TEST(CsvReader, GivesBackWhatTheReportExportQuoted)
{
    const QStringList values = {"plain", "with, comma", "with \"quotes\"", "two\nlines", "", "O'Brien", "Zoë"};
    QStringList cells;
    for (const QString& value : values)
        cells << reportengine::csv_quoted(value);
    CsvReader reader(cells.join(QLatin1Char(',')) + QStringLiteral("\r\n"));
    CsvRecord record;
    ASSERT_TRUE(reader.next(record));
    EXPECT_EQ(record.fields, values);
    EXPECT_FALSE(reader.next(record));
}

// ---- Importing ----

Record pupil(const QString& first, const QString& family, const QString& gender = QStringLiteral("F"))
{
    Record record;
    record[First_Name] = first;
    record[Family_Name] = family;
    record[Gender] = gender;
    record[Address1] = QStringLiteral("1 High Street");
    return record;
}

Record with(Record record, Field field, const QString& value)
{
    record[field] = value;
    return record;
}

QString line_of(const Record& record)
{
    QStringList cells;
    for (const QString& field : record)
        cells << reportengine::csv_quoted(field);
    return cells.join(QLatin1Char(','));
}

QString file_text(const QList<Record>& records)
{
    QString text;
    for (const Record& record : records)
        text += line_of(record) + QLatin1Char('\n');
    return text;
}

// What a run asked and told.
struct ImportRun {
    ImportOutcome outcome;
    QStringList refusals;
    int shown = 0;
};

class PupilImportTest : public ::testing::Test {
protected:
    // Day first, as in Britain.
    FakeLocaleSource locale{QLocale::c()};
    LocaleScope locale_scope{locale.dates(QStringLiteral("/"), 1)};
    testing_support::SchoolMadeCurrent school;

    QString write(const QString& text, const QString& name = QStringLiteral("pupils.csv"))
    {
        return school.write_file(name, text);
    }
    QString write_bytes(const QByteArray& bytes, const QString& name = QStringLiteral("pupils.csv"))
    {
        QFile file(school.file(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(bytes);
        return file.fileName();
    }

    // Imports the file; refused lines are passed over or stop the import.
    ImportRun run_import(const QString& path, bool pass_over_refusals = false, HeaderAnswer header = HeaderAnswer::Data)
    {
        ImportRun run;
        ImportHooks hooks;
        hooks.first_record = [header](const Record&) { return header; };
        hooks.refused = [&run, pass_over_refusals](const QString& message) {
            run.refusals << message;
            return pass_over_refusals;
        };
        hooks.processing = [&run](const Record&) { ++run.shown; };
        PupilImport importer;
        run.outcome = importer.run(path, hooks);
        EXPECT_FALSE(importer.Import_Running);
        EXPECT_EQ(Program_Workspace().transaction_depth(), 0);
        return run;
    }

    int pupils() { return school.count(QStringLiteral("Pupils")); }
    int families() { return school.count(QStringLiteral("Families")); }

    // The pupil's row joined to its family's, by first name.
    testing_support::Row stored(const QString& first_name)
    {
        const testing_support::Rows rows = school.rows(
            QStringLiteral("SELECT * FROM Pupils P, Families F WHERE P.Pupil_Family_id = F.Family_id AND P.Pupil_FirstName = '%1'")
                .arg(QString(first_name).replace(QLatin1Char('\''), QLatin1String("''"))));
        EXPECT_EQ(rows.size(), 1u) << first_name.toStdString();
        return rows.empty() ? testing_support::Row() : rows.front();
    }
};

TEST_F(PupilImportTest, ANewPupilComesInWithANewFamilyEveryFieldInItsColumn)
{
    Record amy;
    const QStringList values = {"Amy", "Archer", "Smythe", "14/03/2015", "F", "Gold", "Asthma", "Glasses",
                                "amy@example.org", "White British", "Keen", "R1", "R2", "R3", "R4", "01/09/2021",
                                "Paid", "1 High Street", "Flat 2", "Leeds", "Yorkshire", "LS1 1AA", "0113 111111",
                                "07700 900000", "Two cats", "Blue", "Mother"};
    for (int field = 0; field < Field_Count; ++field)
        amy[field] = values[field];
    const QString path = write(file_text({amy}));
    const ImportRun run = run_import(path);
    EXPECT_EQ(run.outcome.end, ImportEnd::Processed);
    EXPECT_EQ(run.outcome.status, QStringLiteral("File ") + path + QStringLiteral(" processed"));
    EXPECT_EQ(run.outcome.added, 1);
    EXPECT_TRUE(run.refusals.isEmpty()) << run.refusals.join(QLatin1Char('|')).toStdString();

    const testing_support::Row row = stored(QStringLiteral("Amy"));
    const std::pair<const char*, QString> columns[] = {
        {"Family_Name", "Archer"}, {"Pupil_SurName", "Smythe"}, {"Pupil_Gender", "F"}, {"Pupil_Marker", "Gold"},
        {"Pupil_Medical", "Asthma"}, {"Pupil_Special_Needs", "Glasses"}, {"Pupil_E_Mail", "amy@example.org"},
        {"Pupil_Ethnicity", "White British"}, {"Pupil_Notes", "Keen"}, {"Pupil_Ref_Num", "R1"}, {"Pupil_Ref_Num2", "R2"},
        {"Pupil_Ref_Num3", "R3"}, {"Pupil_Ref_Num4", "R4"}, {"Pupil_Regn_Fee", "Paid"},
        {"Family_Address", "1 High Street"}, {"Family_Address2", "Flat 2"}, {"Family_Address3", "Leeds"},
        {"Family_Address4", "Yorkshire"}, {"Family_PostCode", "LS1 1AA"}, {"Family_Phone_1", "0113 111111"},
        {"Family_Phone_2", "07700 900000"}, {"Family_Notes", "Two cats"}, {"Family_Marker", "Blue"},
        {"Family_Correspondence", "Mother"},
    };
    for (const auto& [column, value] : columns)
        EXPECT_EQ(row[QString::fromLatin1(column)].toString(), value) << column;
    EXPECT_EQ(row[QStringLiteral("Pupil_Birthdate")].toDateTime().date(), QDate(2015, 3, 14));
    EXPECT_EQ(row[QStringLiteral("Pupil_Startdate")].toDateTime().date(), QDate(2021, 9, 1));
}

TEST_F(PupilImportTest, NamesWithApostrophesAccentsAndQuotedNotesComeInAndAreFoundAgain)
{
    const QList<Record> records = {
        pupil(QStringLiteral("Siobhán"), QStringLiteral("O'Brien")),
        pupil(QStringLiteral("D'Arcy"), QStringLiteral("Müller-Lüdenscheidt"), QStringLiteral("M")),
        pupil(QStringLiteral("Zoë"), QStringLiteral("Ó Briain")),
        with(pupil(QStringLiteral("Ffion"), QStringLiteral("Price")), Pupil_Notes,
             QStringLiteral("Likes \"Swan Lake\", and tap; doesn't like jazz")),
        with(pupil(QStringLiteral("Bo"), QStringLiteral("Smith")), Address1, QStringLiteral("Flat 3, \"The Maltings\"")),
    };
    const QString path = write(file_text(records));
    const ImportRun first = run_import(path);
    EXPECT_EQ(first.outcome.added, 5) << first.refusals.join(QLatin1Char('|')).toStdString();
    for (const Record& record : records) {
        SCOPED_TRACE(record[First_Name].toStdString());
        const testing_support::Row row = stored(record[First_Name]);
        EXPECT_EQ(row[QStringLiteral("Family_Name")].toString(), record[Family_Name]);
        EXPECT_EQ(row[QStringLiteral("Family_Address")].toString(), record[Address1]);
        EXPECT_EQ(row[QStringLiteral("Pupil_Notes")].toString(), record[Pupil_Notes].isEmpty() ? QString() : record[Pupil_Notes]);
    }
    // The same names match the pupils now stored: nothing new, every line an update.
    const ImportRun again = run_import(path);
    EXPECT_EQ(again.outcome.added, 0);
    EXPECT_EQ(again.outcome.updated, 5) << again.refusals.join(QLatin1Char('|')).toStdString();
    EXPECT_EQ(pupils(), 5);
    EXPECT_EQ(families(), 5);
}

struct RefusalCase {
    const char* story;
    QString line;  // the second line of the file, after a good one
    const char* reason;
};

TEST_F(PupilImportTest, ARefusedLineIsNamedWithItsLineAndStoppingThereLeavesTheDatabaseAsItWas)
{
    school.add_pupil(school.add_family(QStringLiteral("Archer")), QStringLiteral("Amy"));
    const QString before = school.dump();
    const Record ben = pupil(QStringLiteral("Ben"), QStringLiteral("Brook"), QStringLiteral("M"));
    QStringList short_line = line_of(ben).split(QLatin1Char(','));
    short_line.removeLast();
    const RefusalCase cases[] = {
        {"no family name", line_of(pupil(QStringLiteral("Ben"), QStringLiteral("  "))), "Invalid family name"},
        {"quotes in the family name", line_of(pupil(QStringLiteral("Ben"), QStringLiteral("Brook \"Jr\""))),
         "The family name cannot include quotes"},
        {"no first name", line_of(pupil(QString(), QStringLiteral("Brook"))), "invalid first name"},
        {"quotes in the first name", line_of(pupil(QStringLiteral("\"Bo\""), QStringLiteral("Smith"))),
         "The first name cannot include quotes"},
        {"a birthdate that is no day", line_of(with(ben, Birth_Date, QStringLiteral("30/02/2015"))), "invalid birthdate"},
        {"a birthdate in words", line_of(with(ben, Birth_Date, QStringLiteral("last spring"))), "invalid birthdate"},
        {"a birthdate to come", line_of(with(ben, Birth_Date, QStringLiteral("01/01/2999"))), "birthdate is in the future"},
        {"a start date that is no day", line_of(with(ben, Start_Date, QStringLiteral("32/01/2021"))), "invalid start date"},
        {"a lower-case gender", line_of(with(ben, Gender, QStringLiteral("f"))), "invalid gender"},
        {"a hidden boy's letter", line_of(with(ben, Gender, QStringLiteral("b"))), "invalid gender"},
        {"a gender in words", line_of(with(ben, Gender, QStringLiteral("Male"))), "invalid gender"},
        {"no gender", line_of(with(ben, Gender, QString())), "invalid gender"},
        {"a field short", short_line.join(QLatin1Char(',')), "Couldn't read a full line of data in file"},
        {"a field too many", line_of(ben) + QStringLiteral(",extra"), "The line has 28 fields; a pupil's line has 27"},
        {"a marker too long for its column", line_of(with(ben, Pupil_Marker, QStringLiteral("Much too long a marker"))),
         "Unexpected error on execute query for pupil Ben Brook\n3163 : "},
    };
    const QString good = line_of(pupil(QStringLiteral("Cara"), QStringLiteral("Cole")));
    const QString after = line_of(pupil(QStringLiteral("Dan"), QStringLiteral("Dole"), QStringLiteral("M")));
    for (const RefusalCase& c : cases) {
        SCOPED_TRACE(c.story);
        const QString path = write(good + QLatin1Char('\n') + c.line + QLatin1Char('\n') + after + QLatin1Char('\n'));
        const ImportRun run = run_import(path);
        ASSERT_EQ(run.refusals.size(), 1);
        EXPECT_TRUE(run.refusals[0].startsWith(QStringLiteral("Error detected in Import File ") + path
                                               + QStringLiteral(" at line 2\n") + QString::fromUtf8(c.reason)))
            << run.refusals[0].toStdString();
        EXPECT_EQ(run.outcome.stopped_by, run.refusals[0]);
        EXPECT_NE(run.outcome.end, ImportEnd::Processed);
        EXPECT_EQ(run.outcome.added, 0);
        EXPECT_EQ(school.dump(), before);
    }
}

TEST_F(PupilImportTest, RefusedLinesPassedOverLeaveTheOthersStored)
{
    const QString path = write(file_text({pupil(QStringLiteral("Amy"), QStringLiteral("Archer")),
                                          with(pupil(QStringLiteral("Ben"), QStringLiteral("Brook")), Gender, QStringLiteral("m")),
                                          pupil(QStringLiteral("Cara"), QStringLiteral("Cole"))}));
    const ImportRun run = run_import(path, true);
    EXPECT_EQ(run.outcome.end, ImportEnd::Processed);
    EXPECT_EQ(run.outcome.added, 2);
    EXPECT_EQ(run.outcome.skipped, 1);
    EXPECT_EQ(run.refusals, QStringList(QStringLiteral("Error detected in Import File ") + path
                                        + QStringLiteral(" at line 2\ninvalid gender")));
    EXPECT_EQ(pupils(), 2);
    EXPECT_EQ(families(), 2);
}

TEST_F(PupilImportTest, AStoredPupilIsMatchedByFirstAndFamilyNameAndOnlyFieldsGivenAreWritten)
{
    const int archer = school.insert(QStringLiteral("Families"), {{"Family_Name", "Archer"}, {"Family_Address", "1 Old Road"},
                                                                  {"Family_Phone_1", "111"}, {"Family_Notes", "Old notes"}});
    school.insert(QStringLiteral("Pupils"), {{"Pupil_FirstName", "Amy"}, {"Pupil_Family_Id", archer}, {"Pupil_Gender", "F"},
                                             {"Pupil_SurName", "Smythe"}, {"Pupil_Medical", "Asthma"},
                                             {"Pupil_Birthdate", "2015-03-14 00:00:00"}, {"Pupil_Marker", "Gold"}});
    Record amy = pupil(QStringLiteral("AMY"), QStringLiteral("archer"));
    amy[Address1] = QStringLiteral("2 New Road");
    amy[Alt_Surname] = QStringLiteral("Jones");    // the alternative surname is never changed
    amy[Birth_Date] = QStringLiteral("15/03/2015");
    amy[Pupil_Marker] = QStringLiteral("  ");      // blank: left alone
    amy[Phone_2] = QStringLiteral("222");
    const ImportRun run = run_import(write(file_text({amy})));
    EXPECT_EQ(run.outcome.updated, 1) << run.refusals.join(QLatin1Char('|')).toStdString();
    EXPECT_EQ(run.outcome.added, 0);
    EXPECT_EQ(pupils(), 1);
    EXPECT_EQ(families(), 1);
    const testing_support::Row row = stored(QStringLiteral("Amy"));
    EXPECT_EQ(row[QStringLiteral("Family_Name")].toString(), QStringLiteral("Archer"));
    EXPECT_EQ(row[QStringLiteral("Family_Address")].toString(), QStringLiteral("2 New Road"));
    EXPECT_EQ(row[QStringLiteral("Family_Phone_1")].toString(), QStringLiteral("111"));
    EXPECT_EQ(row[QStringLiteral("Family_Phone_2")].toString(), QStringLiteral("222"));
    EXPECT_EQ(row[QStringLiteral("Family_Notes")].toString(), QStringLiteral("Old notes"));
    EXPECT_EQ(row[QStringLiteral("Pupil_SurName")].toString(), QStringLiteral("Smythe"));
    EXPECT_EQ(row[QStringLiteral("Pupil_Medical")].toString(), QStringLiteral("Asthma"));
    EXPECT_EQ(row[QStringLiteral("Pupil_Marker")].toString(), QStringLiteral("Gold"));
    EXPECT_EQ(row[QStringLiteral("Pupil_Birthdate")].toDateTime().date(), QDate(2015, 3, 15));
}

TEST_F(PupilImportTest, ReimportingAFileChangesNothing)
{
    const QString path = write(file_text({with(pupil(QStringLiteral("Amy"), QStringLiteral("Archer")), Birth_Date, QStringLiteral("14/03/2015")),
                                          with(pupil(QStringLiteral("Ben"), QStringLiteral("Brook"), QStringLiteral("M")), Family_Notes,
                                               QStringLiteral("Pays by card"))}));
    ASSERT_EQ(run_import(path).outcome.added, 2);
    const QString after_first = school.dump();
    const ImportRun again = run_import(path);
    EXPECT_EQ(again.outcome.updated, 2);
    EXPECT_EQ(school.dump(), after_first);
}

TEST_F(PupilImportTest, ABrotherOfAPupilInANewFamilyIsRefusedAtTheFamilysUniqueKey)
{
    // A pupil joins a family only through a pupil of it already matched.
    const QString path = write(file_text({pupil(QStringLiteral("Amy"), QStringLiteral("Archer")),
                                          pupil(QStringLiteral("Ben"), QStringLiteral("Archer"), QStringLiteral("M"))}));
    const ImportRun run = run_import(path, true);
    EXPECT_EQ(run.outcome.added, 1);
    ASSERT_EQ(run.refusals.size(), 1);
    EXPECT_TRUE(run.refusals[0].contains(QStringLiteral(" at line 2\nUnexpected error on execute query\n3022 : ")))
        << run.refusals[0].toStdString();
    EXPECT_EQ(pupils(), 1);
    EXPECT_EQ(families(), 1);
}

TEST_F(PupilImportTest, AHeaderLineIsPassedOverAndStillCountsAsALine)
{
    Record header;
    const QStringList titles = {"First Name", "Family Name", "Surname", "Born", "Gender"};
    for (int field = 0; field < titles.size(); ++field)
        header[field] = titles[field];
    const QString path = write(file_text({header, pupil(QStringLiteral("Amy"), QStringLiteral("Archer")),
                                          with(pupil(QStringLiteral("Ben"), QStringLiteral("Brook")), Gender, QStringLiteral("X"))}));
    const ImportRun run = run_import(path, true, HeaderAnswer::Header);
    EXPECT_EQ(run.outcome.added, 1);
    EXPECT_EQ(run.shown, 2);
    EXPECT_EQ(run.refusals, QStringList(QStringLiteral("Error detected in Import File ") + path
                                        + QStringLiteral(" at line 3\ninvalid gender")));

    // Taken as data, the header is refused: "Born" is no date.
    const ImportRun as_data = run_import(path, true, HeaderAnswer::Data);
    EXPECT_TRUE(as_data.refusals.value(0).endsWith(QStringLiteral(" at line 1\ninvalid birthdate")));
}

TEST_F(PupilImportTest, StoppingAtTheHeaderQuestionImportsNothing)
{
    const QString path = write(file_text({pupil(QStringLiteral("Amy"), QStringLiteral("Archer"))}));
    const ImportRun run = run_import(path, false, HeaderAnswer::Stop);
    EXPECT_EQ(run.outcome.end, ImportEnd::Cancelled);
    EXPECT_EQ(run.outcome.status, QStringLiteral("Import Cancelled"));
    EXPECT_EQ(pupils(), 0);
}

TEST_F(PupilImportTest, ACancelUndoesTheLinesAlreadyStoredUnlessItCameWithTheLastLine)
{
    const QString path = write(file_text({pupil(QStringLiteral("Amy"), QStringLiteral("Archer")),
                                          pupil(QStringLiteral("Ben"), QStringLiteral("Brook")),
                                          pupil(QStringLiteral("Cara"), QStringLiteral("Cole"))}));
    for (int cancelled_after : {1, 2, 3}) {
        SCOPED_TRACE(cancelled_after);
        PupilImport importer;
        int lines = 0;
        ImportHooks hooks;
        hooks.between_records = [&] {
            if (++lines == cancelled_after)
                importer.Import_Stop = true;
        };
        const ImportOutcome outcome = importer.run(path, hooks);
        const bool last = cancelled_after == 3;
        EXPECT_EQ(outcome.status, last ? QStringLiteral("File ") + path + QStringLiteral(" processed") : QStringLiteral("Import Cancelled"));
        EXPECT_EQ(pupils(), last ? 3 : 0);
        EXPECT_EQ(Program_Workspace().transaction_depth(), 0);
    }
}

TEST_F(PupilImportTest, FilesFromWindowsAndFromSpreadsheetsReadAlike)
{
    const QString zoe = QStringLiteral("Zoë");
    const QString line = line_of(pupil(zoe, QStringLiteral("Müller")));
    struct Case {
        const char* story;
        QByteArray bytes;
    };
    QByteArray windows_1252 = line.toLatin1() + "\r\n";  // the same bytes as Windows-1252 for these letters
    const Case cases[] = {
        {"UTF-8 with a byte-order mark and Windows line ends", QByteArray("\xEF\xBB\xBF") + line.toUtf8() + "\r\n"},
        {"Windows-1252", windows_1252},
        {"no line end after the last line", line.toUtf8()},
        {"blank lines and a line of empty fields around it", "\n" + line.toUtf8() + "\n,,,,,,,,,,,,,,,,,,,,,,,,,,\n\n"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.story);
        school.exec(QStringLiteral("DELETE FROM Pupils"));
        school.exec(QStringLiteral("DELETE FROM Families"));
        const ImportRun run = run_import(write_bytes(c.bytes));
        EXPECT_EQ(run.outcome.added, 1) << run.refusals.join(QLatin1Char('|')).toStdString();
        EXPECT_EQ(school.scalar(QStringLiteral("SELECT Pupil_FirstName FROM Pupils")).toString(), zoe);
        EXPECT_EQ(school.scalar(QStringLiteral("SELECT Family_Name FROM Families")).toString(), QStringLiteral("Müller"));
    }
}

TEST_F(PupilImportTest, DatesAreReadInTheLocalesOrder)
{
    struct Case {
        int order;  // 0 month first, 1 day first
        const char* text;
        QDate day;  // invalid: refused
    };
    const Case cases[] = {
        {1, "05/04/2015", QDate(2015, 4, 5)},  {0, "05/04/2015", QDate(2015, 5, 4)},
        {1, "25/12/2015", QDate(2015, 12, 25)}, {0, "12/25/2015", QDate(2015, 12, 25)},
        {1, "5 Apr 2015", QDate(2015, 4, 5)},  {0, "2015-04-05", QDate(2015, 4, 5)},
        {1, "31/31/2015", QDate()},            {0, "13/13/2015", QDate()},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.text) + (c.order ? " day first" : " month first"));
        FakeLocaleSource this_locale{QLocale::c()};
        LocaleScope scope{this_locale.dates(QStringLiteral("/"), c.order)};
        school.exec(QStringLiteral("DELETE FROM Pupils"));
        school.exec(QStringLiteral("DELETE FROM Families"));
        const ImportRun run = run_import(write(file_text({with(pupil(QStringLiteral("Amy"), QStringLiteral("Archer")), Birth_Date,
                                                     QString::fromLatin1(c.text))})),
                               true);
        if (c.day.isValid()) {
            EXPECT_EQ(school.scalar(QStringLiteral("SELECT Pupil_Birthdate FROM Pupils")).toString().left(10),
                      c.day.toString(Qt::ISODate));
        } else {
            EXPECT_TRUE(run.refusals.value(0).endsWith(QStringLiteral("\ninvalid birthdate")));
            EXPECT_EQ(pupils(), 0);
        }
    }
}

TEST_F(PupilImportTest, AFileThatCannotBeReadToItsEndIsAbandonedWithNothingKept)
{
    const QString good = line_of(pupil(QStringLiteral("Amy"), QStringLiteral("Archer")));
    // A quote opened and never closed takes the rest of the file.
    const QString path = write(good + QStringLiteral("\nBen,\"Brook,") + QStringLiteral(",x").repeated(25) + QLatin1Char('\n') + good);
    const QString message = QStringLiteral("Error detected in Import File ") + path
                            + QStringLiteral(" at line 2\nCouldn't read a full line of data in file");
    ScriptedBoxes boxes;
    boxes.expect(message, engine::answer::Ok, engine::mb::OkOnly);
    const ImportRun run = run_import(path, true);
    EXPECT_EQ(run.outcome.end, ImportEnd::Abandoned);
    EXPECT_EQ(run.outcome.status, QStringLiteral("File ") + path + QStringLiteral(" abandoned"));
    EXPECT_EQ(run.outcome.stopped_by, message);
    EXPECT_TRUE(run.refusals.isEmpty());
    EXPECT_EQ(pupils(), 0);
    EXPECT_TRUE(school.log_text().contains(message));

    boxes.expect(QStringLiteral("Cannot open file ") + school.file(QStringLiteral("missing.csv")));
    const ImportRun missing = run_import(school.file(QStringLiteral("missing.csv")));
    EXPECT_EQ(missing.outcome.end, ImportEnd::Abandoned);
    EXPECT_TRUE(boxes.all_shown());
}

TEST_F(PupilImportTest, TheBoxesAskAndAPassedOverLineIsWrittenToTheLog)
{
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Is this the header record?\nOr Press Cancel to Stop processing"), engine::answer::Yes,
                 engine::mb::YesNoCancel);
    boxes.expect(QStringLiteral("Is this the header record?"), engine::answer::No);
    boxes.expect(QStringLiteral("Is this the header record?"), engine::answer::Cancel);
    EXPECT_EQ(Ask_Header_Question(), HeaderAnswer::Header);
    EXPECT_EQ(Ask_Header_Question(), HeaderAnswer::Data);
    EXPECT_EQ(Ask_Header_Question(), HeaderAnswer::Stop);

    const QString message = QStringLiteral("Error detected in Import File x.csv at line 7\ninvalid gender");
    boxes.expect(message + QStringLiteral("\nContine?"), engine::answer::No, 68);
    EXPECT_FALSE(Import_Error(message));
    EXPECT_FALSE(school.log_text().contains(QStringLiteral("at line 7")));
    boxes.expect(message + QStringLiteral("\nContine?"), engine::answer::Yes, 68);
    EXPECT_TRUE(Import_Error(message));
    EXPECT_TRUE(school.log_text().contains(QStringLiteral("fpupimp    : ") + message)) << school.log_text().toStdString();
}

TEST_F(PupilImportTest, TenThousandPupilsComeInInOneRun)
{
    constexpr int count = 10000;
    QString text;
    text.reserve(count * 80);
    for (int n = 1; n <= count; ++n)
        text += line_of(with(pupil(QStringLiteral("Pupil %1").arg(n), QStringLiteral("Family %1").arg(n)), Birth_Date,
                             QStringLiteral("%1/%2/2015").arg(1 + n % 28).arg(1 + n % 12)))
                + QLatin1Char('\n');
    const ImportRun run = run_import(write(text));
    EXPECT_EQ(run.outcome.end, ImportEnd::Processed);
    EXPECT_EQ(run.outcome.added, count);
    EXPECT_EQ(pupils(), count);
    EXPECT_EQ(families(), count);
}

}  // namespace
