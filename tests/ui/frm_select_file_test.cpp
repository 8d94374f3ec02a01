// The file selector as callers use it: fill Glob_File_Select, show the
// screen, read the choice back.

#include "ui/toolkit/frm_select_file.h"

#include "engine/msg_box.h"
#include "screen_driver.h"
#include "support/scripted_boxes.h"
#include "toolkit/file_select.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace screen_driver;
using testing_support::ScriptedBoxes;

namespace {

class SelectFile : public ::testing::Test {
protected:
    void SetUp() override
    {
        for (const char* name : {"old.mdb", "notes.txt"})
            EXPECT_TRUE(QFile(folder.filePath(QString::fromLatin1(name))).open(QIODevice::WriteOnly));
        QDir(folder.path()).mkdir(QStringLiteral("backups"));
        Glob_File_Select() = FileSelectRecord{};
        Glob_File_Select().Start_Path = folder.path();
        Glob_File_Select().Filters[0] = {QStringLiteral("Databases"), QStringLiteral("*.mdb")};
        Glob_File_Select().Filters[1] = {QStringLiteral("All files"), QStringLiteral("*")};
        Glob_File_Select().Extension = QStringLiteral("mdb");
    }
    void TearDown() override
    {
        delete selector;
        settle();
    }

    frm_Select_File* open()
    {
        selector = new frm_Select_File;
        bring_to_front(selector);
        return selector;
    }

    QTemporaryDir folder;
    QPointer<frm_Select_File> selector;
};

TEST_F(SelectFile, ARequiredNewNameMustBeTypedAndWithoutExtensionTakesTheDefaultOne)
{
    Glob_File_Select().Select_New_File = true;
    Glob_File_Select().Name_Required = true;
    open();
    EXPECT_EQ(selector->windowTitle(), file_select::caption_of(Glob_File_Select()));
    EXPECT_TRUE(selector->txt_New_File->isVisible());
    ScriptedBoxes().expect(QStringLiteral("Please enter a new file"), engine::answer::Ok, engine::mb::Information)
        .during([&] { selector->cmd_Select_Click(); });
    EXPECT_TRUE(selector->isVisible());
    type_into(selector->txt_New_File, QStringLiteral("spring"));
    click(selector->cmd_Select);
    EXPECT_EQ(selector->txt_New_File->text(), QStringLiteral("spring.mdb"));
    EXPECT_EQ(selector->result(), QDialog::Accepted);
    const FileSelectRecord& chosen = Glob_File_Select();
    EXPECT_FALSE(chosen.Cancelled);
    EXPECT_EQ(chosen.Out_Directory, folder.path());
    EXPECT_EQ(chosen.Out_File, QStringLiteral("spring.mdb"));
    EXPECT_EQ(chosen.Out_Path, folder.filePath(QStringLiteral("spring.mdb")));
    EXPECT_EQ(chosen.Out_Drive, QStringLiteral("/"));
}

TEST_F(SelectFile, CancelLeavesNoPathButTheFolderOnShow)
{
    Glob_File_Select().Select_New_File = true;
    open();
    click(selector->cmd_Cancel);
    EXPECT_FALSE(selector->isVisible());
    const FileSelectRecord& chosen = Glob_File_Select();
    EXPECT_TRUE(chosen.Cancelled);
    EXPECT_EQ(chosen.Out_Path, QString());
    EXPECT_EQ(chosen.Out_File, QString());
    EXPECT_EQ(chosen.Out_Directory, folder.path());
}

TEST_F(SelectFile, AnExistingFileIsChosenFromTheListAndNothingChosenIsRefused)
{
    Glob_File_Select().Start_Path = folder.filePath(QStringLiteral("old.mdb"));
    open();
    EXPECT_FALSE(selector->txt_New_File->isVisible());
    EXPECT_EQ(selector->directory().absolutePath(), folder.path());
    EXPECT_EQ(selector->cmb_file_type->count(), 2);
    ScriptedBoxes().expect(QStringLiteral("Please select a file"), engine::answer::Ok, engine::mb::Information)
        .during([&] { selector->cmd_Select_Click(); });
    selector->selectFile(folder.filePath(QStringLiteral("old.mdb")));
    selector->cmd_Select_Click();
    EXPECT_EQ(selector->result(), QDialog::Accepted);
    EXPECT_EQ(Glob_File_Select().Out_File, QStringLiteral("old.mdb"));
    EXPECT_EQ(Glob_File_Select().Out_Path, folder.filePath(QStringLiteral("old.mdb")));
}

TEST_F(SelectFile, AFolderIsTheOneHighlightedOrElseTheOneOnShow)
{
    Glob_File_Select().Select_Directory = true;
    open();
    selector->cmd_Select_Click();
    EXPECT_EQ(Glob_File_Select().Out_Directory, folder.path());
    EXPECT_EQ(Glob_File_Select().Out_File, QString());

    delete selector;
    open();
    selector->selectFile(folder.filePath(QStringLiteral("backups")));
    selector->cmd_Select_Click();
    EXPECT_EQ(Glob_File_Select().Out_Directory, folder.filePath(QStringLiteral("backups")));
}

}  // namespace
