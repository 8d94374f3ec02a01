#include "shell/app_globals.h"
#include "shell/file_checks.h"
#include "support/scripted_boxes.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using testing_support::ScriptedBoxes;

class FileCheckTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(dir.isValid()); }

    QString make_file(const QString& name)
    {
        QFile file(dir.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("x");
        return file.fileName();
    }

    int check(const QString& name)
    {
        error_text = QStringLiteral("left over");
        return Glob_File_Check(name, error_text);
    }

    QTemporaryDir dir;
    QString error_text;
};

TEST_F(FileCheckTest, ExistingFileIsThere)
{
    EXPECT_EQ(check(make_file(QStringLiteral("school.mdb"))), 1);
    EXPECT_TRUE(error_text.isEmpty());
}

TEST_F(FileCheckTest, BlankNameMissingFileAndMissingFolderAreNotThere)
{
    EXPECT_EQ(check(QStringLiteral("   ")), 0);
    EXPECT_EQ(check(dir.filePath(QStringLiteral("missing.mdb"))), 0);
    EXPECT_EQ(check(dir.filePath(QStringLiteral("no-folder/missing.mdb"))), 0);
    EXPECT_TRUE(error_text.isEmpty());
}

TEST_F(FileCheckTest, FileThatCannotBeReadIsStillThere)
{
    const QString name = make_file(QStringLiteral("locked.mdb"));
    QFile::setPermissions(name, QFileDevice::WriteOwner);

    EXPECT_EQ(check(name), 1);
    EXPECT_TRUE(error_text.isEmpty());
}

TEST_F(FileCheckTest, FolderIsAFailureOfTheTest)
{
    ASSERT_TRUE(QDir(dir.path()).mkdir(QStringLiteral("archive.mdb")));

    EXPECT_EQ(check(dir.filePath(QStringLiteral("archive.mdb"))), 2);
    EXPECT_EQ(error_text, QStringLiteral("Error Occurred, 75 : Path/File access error"));
}

// ---- path splitting -------------------------------------------------------------

struct SplitParts {
    QString drive, folder, file, extension;
    bool operator==(const SplitParts&) const = default;
};

void PrintTo(const SplitParts& p, std::ostream* os)
{
    *os << "{" << p.drive.toStdString() << " | " << p.folder.toStdString() << " | " << p.file.toStdString()
        << " | " << p.extension.toStdString() << "}";
}

SplitParts split(const QString& full)
{
    SplitParts p;
    Split_Path(full, p.drive, p.folder, p.file, p.extension);
    return p;
}

TEST(SplitPath, FullFileNameGivesAllFourParts)
{
    EXPECT_EQ(split(QStringLiteral("/home/school/Term 3.mdb")),
              (SplitParts{QStringLiteral("/"), QStringLiteral("/home/school"), QStringLiteral("Term 3"),
                          QStringLiteral("mdb")}));
    EXPECT_EQ(split(QStringLiteral("/backup.tar.gz")),
              (SplitParts{QStringLiteral("/"), QStringLiteral("/"), QStringLiteral("backup.tar"),
                          QStringLiteral("gz")}));
}

TEST(SplitPath, NameWithoutExtensionIsTakenToBeAFolder)
{
    EXPECT_EQ(split(QStringLiteral("/home/school.d/new")),
              (SplitParts{QStringLiteral("/"), QStringLiteral("/home/school.d/new"), QString(), QString()}));
}

TEST(SplitPath, RelativeNameHasNoDrive)
{
    EXPECT_EQ(split(QStringLiteral("data/school.mdb")),
              (SplitParts{QString(), QStringLiteral("data"), QStringLiteral("school"), QStringLiteral("mdb")}));
    EXPECT_EQ(split(QStringLiteral("school.mdb")),
              (SplitParts{QString(), QString(), QStringLiteral("school"), QStringLiteral("mdb")}));
}

TEST(BuildPath, JoinsWithExactlyOneSlash)
{
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

class NewDatabaseNameTest : public FileCheckTest {};

TEST_F(NewDatabaseNameTest, BlankNameIsRefused)
{
    FakeTextBox box(QStringLiteral("   "));
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Enter a New database name and try again."), engine::answer::Ok, 64);

    EXPECT_FALSE(Check_New_Database_Name(box, true));

    EXPECT_EQ(box.typed, QString());
    EXPECT_EQ(box.focus_count, 1);
    EXPECT_EQ(boxes.titles().value(0), App_Title());
}

TEST_F(NewDatabaseNameTest, RelativeNameIsRefused)
{
    FakeTextBox box(QStringLiteral("school.mdb"));
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Error: This must be a full file name,  including the drive."), engine::answer::Ok, 0);

    EXPECT_FALSE(Check_New_Database_Name(box, false));
    EXPECT_EQ(box.focus_count, 1);
}

TEST_F(NewDatabaseNameTest, NameIsTrimmedAndAcceptedWhenItMayExist)
{
    const QString existing = make_file(QStringLiteral("school.mdb"));
    FakeTextBox box(QStringLiteral("  ") + existing + QStringLiteral("  "));
    ScriptedBoxes boxes;

    EXPECT_TRUE(Check_New_Database_Name(box, false));

    EXPECT_EQ(box.typed, existing);
    EXPECT_EQ(box.focus_count, 0);
}

TEST_F(NewDatabaseNameTest, ExistingFileIsRefusedWhenItMustNotExist)
{
    FakeTextBox box(make_file(QStringLiteral("school.mdb")));
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("This filename already exists.\nEnter a new filename and try again."),
                 engine::answer::Ok, 64);

    EXPECT_FALSE(Check_New_Database_Name(box, true));
    EXPECT_EQ(box.focus_count, 1);
}

TEST_F(NewDatabaseNameTest, NameWithoutExtensionIsTestedWithMdbAndLeftAsTyped)
{
    make_file(QStringLiteral("school.mdb"));
    const QString typed = dir.filePath(QStringLiteral("school"));
    FakeTextBox box(typed);
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("This filename already exists."), engine::answer::Ok, 64);

    EXPECT_FALSE(Check_New_Database_Name(box, true));
    EXPECT_EQ(box.typed, typed);

    FakeTextBox fresh(dir.filePath(QStringLiteral("autumn")));
    EXPECT_TRUE(Check_New_Database_Name(fresh, true));
    EXPECT_EQ(fresh.typed, dir.filePath(QStringLiteral("autumn")));
}

TEST_F(NewDatabaseNameTest, FailingFileTestIsShownWithItsText)
{
    ASSERT_TRUE(QDir(dir.path()).mkdir(QStringLiteral("folder.mdb")));
    FakeTextBox box(dir.filePath(QStringLiteral("folder.mdb")));
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Invalid directory or drive - Error Occurred, 75 : Path/File access error\n"
                                "Enter a new filename and try again."),
                 engine::answer::Ok, 64);

    EXPECT_FALSE(Check_New_Database_Name(box, true));
}

}  // namespace
