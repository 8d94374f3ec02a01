#include "shell/app_globals.h"
#include "shell/file_checks.h"
#include "support/scripted_boxes.h"
#include "support/test_folder.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace {

using testing_support::ScriptedBoxes;

// A folder holding school.mdb, a file nobody may read (locked.mdb) and a
// folder whose name looks like a database (archive.mdb).
class FileCheckTest : public ::testing::Test {
protected:
    FileCheckTest()
    {
        QFile::setPermissions(folder.write_file(QStringLiteral("locked.mdb"), QStringLiteral("x")), QFileDevice::WriteOwner);
        QDir(folder.file(QString())).mkdir(QStringLiteral("archive.mdb"));
    }

    testing_support::TestFolder folder;
    const QString school = folder.write_file(QStringLiteral("school.mdb"), QStringLiteral("x"));
};

TEST_F(FileCheckTest, AFileIsThereOrNotAndAFolderIsAFailureOfTheTest)
{
    struct Case {
        QString name;
        int result;  // 0 not there, 1 there, 2 failure
        QString error_text;
    };
    const QList<Case> cases = {
        {school, 1, QString()},
        {folder.file(QStringLiteral("locked.mdb")), 1, QString()},  // unreadable, but there
        {QStringLiteral("   "), 0, QString()},
        {folder.file(QStringLiteral("missing.mdb")), 0, QString()},
        {folder.file(QStringLiteral("no-folder/missing.mdb")), 0, QString()},
        {folder.file(QStringLiteral("archive.mdb")), 2, QStringLiteral("Error Occurred, 75 : Path/File access error")},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name.toStdString());
        QString error_text = QStringLiteral("left over");
        EXPECT_EQ(Glob_File_Check(c.name, error_text), c.result);
        EXPECT_EQ(error_text, c.error_text);
    }
}

// ---- path splitting -------------------------------------------------------------

TEST(SplitPath, AFileNameGivesDriveFolderFileAndExtensionAndJoiningTakesOneSlash)
{
    struct Case {
        QString full;
        QString parts;  // "drive|folder|file|extension"
    };
    const QList<Case> cases = {
        {"/home/school/Term 3.mdb", "/|/home/school|Term 3|mdb"},
        {"/backup.tar.gz", "/|/|backup.tar|gz"},
        {"/home/school.d/new", "/|/home/school.d/new||"},  // without extension: a folder
        {"data/school.mdb", "|data|school|mdb"},            // relative: no drive
        {"school.mdb", "||school|mdb"},
    };
    for (const Case& c : cases) {
        QString drive, folder, file, extension;
        Split_Path(c.full, drive, folder, file, extension);
        EXPECT_EQ(QStringList({drive, folder, file, extension}).join(QLatin1Char('|')), c.parts) << c.full.toStdString();
    }
    // Joining puts exactly one slash between.
    EXPECT_EQ(build_path(QStringLiteral("/opt/q"), QStringLiteral("scripts")), QStringLiteral("/opt/q/scripts"));
    EXPECT_EQ(build_path(QStringLiteral("/opt/q/"), QStringLiteral("/zrepfmt.lst")),
              QStringLiteral("/opt/q/zrepfmt.lst"));
    EXPECT_EQ(build_path(QStringLiteral("/"), QStringLiteral("x.log")), QStringLiteral("/x.log"));
    EXPECT_EQ(build_path(QString(), QStringLiteral("x.log")), QStringLiteral("x.log"));
}

// ---- new database names -----------------------------------------------------------

struct FakeTextBox : TextBoxLike {
    explicit FakeTextBox(QString t) : typed(std::move(t)) {}
    QString text() const override { return typed; }
    void setText(const QString& t) override { typed = t; }
    void setFocus() override { ++focus_count; }
    QString typed;
    int focus_count = 0;
};

// A name is trimmed and put back; a refused one is said why, in a box of the
// program's title, and the box gets the focus again.
TEST_F(FileCheckTest, ANewDatabaseNameMustBeGivenWholeAndNewWhenAskedFor)
{
    struct Case {
        QString typed;
        bool must_not_exist;
        QString refusal;  // empty: accepted
        int style = -1;
        QString left;  // the box's text afterwards
    };
    const QString exists = QStringLiteral("This filename already exists.\nEnter a new filename and try again.");
    const QString without_extension = folder.file(QStringLiteral("school"));
    const QList<Case> cases = {
        {"   ", true, "Enter a New database name and try again.", 64, ""},
        {"school.mdb", false, "Error: This must be a full file name,  including the drive.", 0, "school.mdb"},
        {"  " + school + "  ", false, "", -1, school},
        {school, true, exists, 64, school},
        // A name without extension is tested with .mdb added, and left as typed.
        {without_extension, true, exists, 64, without_extension},
        {folder.file(QStringLiteral("autumn")), true, "", -1, folder.file(QStringLiteral("autumn"))},
        {folder.file(QStringLiteral("archive.mdb")), true,
         "Invalid directory or drive - Error Occurred, 75 : Path/File access error\nEnter a new filename and try again.", 64,
         folder.file(QStringLiteral("archive.mdb"))},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.typed.toStdString());
        FakeTextBox box(c.typed);
        ScriptedBoxes boxes;
        if (!c.refusal.isEmpty())
            boxes.expect(c.refusal, engine::answer::Ok, c.style);
        EXPECT_EQ(Check_New_Database_Name(box, c.must_not_exist), c.refusal.isEmpty());
        EXPECT_EQ(box.typed, c.left);
        EXPECT_EQ(box.focus_count, c.refusal.isEmpty() ? 0 : 1);
        EXPECT_EQ(boxes.titles().value(0, App_Title()), App_Title());
    }
}

}  // namespace
