// Where the file selector opens, what it offers, and how it checks a new name.

#include "toolkit/file_select.h"

#include "support/scripted_boxes.h"
#include "support/test_folder.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <gtest/gtest.h>

namespace {

TEST(FileSelect, OpensInTheFolderOfAFileInAFolderItselfOrInTheApplicationsFolder)
{
    testing_support::TestFolder folder;
    const QString school = folder.write_file(QStringLiteral("school.mdb"), QString());
    const QString here = QFileInfo(school).absolutePath();
    EXPECT_EQ(file_select::start_folder(school), here);
    EXPECT_EQ(file_select::start_folder(here), here);
    EXPECT_EQ(file_select::start_folder(QStringLiteral("  ")), QCoreApplication::applicationDirPath());
}

// The caption follows the mode; the filters stop at the first blank text.
TEST(FileSelect, WhatTheSelectorOffers)
{
    FileSelectRecord request;
    EXPECT_EQ(file_select::caption_of(request), QStringLiteral("Select an Existing File"));
    request.Select_New_File = true;
    EXPECT_EQ(file_select::caption_of(request), QStringLiteral("Select a New File"));
    request.Select_Directory = true;
    EXPECT_EQ(file_select::caption_of(request), QStringLiteral("Select a Directory"));

    request.Filters[0] = {QStringLiteral("Databases"), QStringLiteral("*.mdb")};
    request.Filters[1] = {QStringLiteral("Scripts (*.sql)"), QStringLiteral("*.sql")};
    request.Filters[2] = {QString(), QStringLiteral("*.txt")};
    request.Filters[3] = {QStringLiteral("Text"), QStringLiteral("*.txt")};
    EXPECT_EQ(file_select::name_filters(request),
              (QStringList{QStringLiteral("Databases (*.mdb)"), QStringLiteral("Scripts (*.sql)")}));
    EXPECT_EQ(file_select::name_filters(FileSelectRecord{}), QStringList{QStringLiteral("All Files (*)")});
    // "*.*" shows files without an extension too.
    request.Filters[0] = {QStringLiteral("All Files"), QStringLiteral("*.*")};
    request.Filters[1] = {};
    EXPECT_EQ(file_select::name_filters(request), QStringList{QStringLiteral("All Files (*)")});
}

TEST(FileSelect, ANewNameGetsTheDefaultExtensionAndAnExistingOneIsRefused)
{
    testing_support::TestFolder folder;
    const QString old = folder.write_file(QStringLiteral("old.mdb"), QString());
    const QString path = QFileInfo(old).absolutePath();
    QString name = QStringLiteral("  new ");
    EXPECT_TRUE(file_select::Check_New_File(name, path, QStringLiteral("mdb")));
    EXPECT_EQ(name, QStringLiteral("new.mdb"));

    testing_support::ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("The file ") + old + QStringLiteral(" already exists. Type another name."),
                 engine::answer::Ok, engine::mb::OkOnly);
    name = QStringLiteral("old");
    EXPECT_FALSE(file_select::Check_New_File(name, path, QStringLiteral("mdb")));
}

TEST(FileSelect, TheResultPathHasOneSlashBetweenFolderAndFile)
{
    EXPECT_EQ(file_select::out_path(QStringLiteral("/school"), QStringLiteral("a.mdb")), QStringLiteral("/school/a.mdb"));
    EXPECT_EQ(file_select::out_path(QStringLiteral("/"), QStringLiteral("a.mdb")), QStringLiteral("/a.mdb"));
}

}  // namespace
