// Where the file selector opens, what it offers, and how it checks a new name.

#include "toolkit/file_select.h"

#include "support/scripted_boxes.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

void touch(const QString& path)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
}

TEST(FileSelect, OpensInTheFolderOfAFileInAFolderItselfOrInTheApplicationsFolder)
{
    QTemporaryDir folder;
    touch(folder.filePath(QStringLiteral("school.mdb")));
    EXPECT_EQ(file_select::start_folder(folder.filePath(QStringLiteral("school.mdb"))), folder.path());
    EXPECT_EQ(file_select::start_folder(folder.path()), folder.path());
    EXPECT_EQ(file_select::start_folder(QStringLiteral("  ")), QCoreApplication::applicationDirPath());
}

TEST(FileSelect, CaptionFollowsTheMode)
{
    FileSelectRecord request;
    EXPECT_EQ(file_select::caption_of(request), QStringLiteral("Select an Existing File"));
    request.Select_New_File = true;
    EXPECT_EQ(file_select::caption_of(request), QStringLiteral("Select a New File"));
    request.Select_Directory = true;
    EXPECT_EQ(file_select::caption_of(request), QStringLiteral("Select a Directory"));
}

TEST(FileSelect, FiltersStopAtTheFirstBlankText)
{
    FileSelectRecord request;
    request.Filters[0] = {QStringLiteral("Databases"), QStringLiteral("*.mdb")};
    request.Filters[1] = {QStringLiteral("Scripts (*.sql)"), QStringLiteral("*.sql")};
    request.Filters[2] = {QString(), QStringLiteral("*.txt")};
    request.Filters[3] = {QStringLiteral("Text"), QStringLiteral("*.txt")};
    EXPECT_EQ(file_select::name_filters(request),
              (QStringList{QStringLiteral("Databases (*.mdb)"), QStringLiteral("Scripts (*.sql)")}));
    EXPECT_EQ(file_select::name_filters(FileSelectRecord{}), QStringList{QStringLiteral("All Files (*)")});
}

TEST(FileSelect, StarDotStarShowsFilesWithoutAnExtensionToo)
{
    FileSelectRecord request;
    request.Filters[0] = {QStringLiteral("All Files"), QStringLiteral("*.*")};
    EXPECT_EQ(file_select::name_filters(request), QStringList{QStringLiteral("All Files (*)")});
}

TEST(FileSelect, ANewNameGetsTheDefaultExtensionAndAnExistingOneIsRefused)
{
    QTemporaryDir folder;
    touch(folder.filePath(QStringLiteral("old.mdb")));
    QString name = QStringLiteral("  new ");
    EXPECT_TRUE(file_select::Check_New_File(name, folder.path(), QStringLiteral("mdb")));
    EXPECT_EQ(name, QStringLiteral("new.mdb"));

    testing_support::ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("The file ") + folder.filePath(QStringLiteral("old.mdb"))
                     + QStringLiteral(" already exists. Type another name."),
                 engine::answer::Ok, engine::mb::OkOnly);
    name = QStringLiteral("old");
    EXPECT_FALSE(file_select::Check_New_File(name, folder.path(), QStringLiteral("mdb")));
}

TEST(FileSelect, TheResultPathHasOneSlashBetweenFolderAndFile)
{
    EXPECT_EQ(file_select::out_path(QStringLiteral("/school"), QStringLiteral("a.mdb")), QStringLiteral("/school/a.mdb"));
    EXPECT_EQ(file_select::out_path(QStringLiteral("/"), QStringLiteral("a.mdb")), QStringLiteral("/a.mdb"));
}

}  // namespace
