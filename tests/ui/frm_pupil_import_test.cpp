// The Import Pupil Details screen passes the chosen file to the import and
// shows what came of it: the first line whole while it asks about headings,
// a refusal with its line, the status, a cancel and an exit refused while
// the import runs. What the import stores is tested without the screen.

#include "ui/people/frm_pupil_import.h"

#include "screen_driver.h"
#include "support/fake_locale_source.h"
#include "support/scripted_boxes.h"
#include "toolkit/file_select.h"
#include "ui/toolkit/frm_select_file.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

#include <functional>
#include <gtest/gtest.h>

using namespace screen_driver;
using engine::answer::No;
using engine::answer::Yes;
using testing_support::ScriptedBoxes;

namespace {

QString line(const QString& first, const QString& family, const QString& gender = QStringLiteral("F"))
{
    QStringList fields(27);
    fields[0] = first;
    fields[1] = family;
    fields[3] = QStringLiteral("14/03/2015");
    fields[4] = gender;
    fields[15] = QStringLiteral("01/09/2021");
    fields[17] = QStringLiteral("1 High Street");
    fields[26] = QStringLiteral("Mother");
    return fields.join(QLatin1Char(','));
}

// Something the screen shows when a box comes up, noted before the box is answered as scripted.
class ScreenAtBoxes {
public:
    explicit ScreenAtBoxes(std::function<QString()> look) : look_(std::move(look))
    {
        previous_ = engine::set_msgbox_responder([this](const QString& text, int style, const QString& title) {
            seen << look_();
            return previous_(text, style, title);
        });
    }
    ~ScreenAtBoxes() { engine::set_msgbox_responder(previous_); }
    QStringList seen;

private:
    std::function<QString()> look_;
    engine::MsgBoxResponder previous_;
};

class PupilImportScreen : public ScreenTest<frm_Pupil_Import> {
protected:
    QString file(const QStringList& lines)
    {
        return school.write_file(QStringLiteral("pupils.csv"), lines.join(QLatin1Char('\n')) + QLatin1Char('\n'));
    }
    void add_pupils_from(const QString& path)
    {
        retype(screen->txt_File_Name, path);
        click(screen->cmd_Add);
    }
    int pupils() { return school.count(QStringLiteral("Pupils")); }

    testing_support::FakeLocaleSource locale{QLocale::c()};
    testing_support::LocaleScope locale_scope{locale.dates(QStringLiteral("/"), 1)};
};

TEST_F(PupilImportScreen, AtRestOnlyTheFourProgressFieldsShow)
{
    open();
    QStringList shown;
    for (QLineEdit* box : screen->findChildren<QLineEdit*>())
        if (box->isVisibleTo(screen) && box != screen->txt_File_Name && box != screen->txt_Status)
            shown << box->objectName();
    shown.sort();
    EXPECT_EQ(shown, QStringList({"txt_BirthDate", "txt_Family_Name", "txt_First_Name", "txt_StartDate"}));
    EXPECT_EQ(screen->windowTitle(), QStringLiteral("Import Pupil Details"));
    EXPECT_TRUE(screen->txt_Status->text().isEmpty());
}

TEST_F(PupilImportScreen, AGoodFileIsImportedAfterTheFirstLineIsShownWholeForTheHeaderQuestion)
{
    const QString path = file({line(QStringLiteral("Amy"), QStringLiteral("Archer")),
                               line(QStringLiteral("Ben"), QStringLiteral("Brook"), QStringLiteral("M"))});
    open();
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Is this the header record?"), No, engine::mb::YesNoCancel);
    ScreenAtBoxes at_question([this] {
        return screen->txt_Status->text() + QLatin1Char('|') + screen->txt_Correspondence->text() + QLatin1Char('|')
               + (screen->txt_Correspondence->isVisibleTo(screen) ? QStringLiteral("shown") : QStringLiteral("hidden"));
    });
    add_pupils_from(path);
    EXPECT_EQ(at_question.seen, QStringList(QStringLiteral("Check that the record has been read correctly|Mother|shown")));
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("File ") + path + QStringLiteral(" processed"));
    EXPECT_EQ(pupils(), 2);
    // The progress fields show the last pupil read; the others are hidden again.
    EXPECT_EQ(screen->txt_First_Name->text(), QStringLiteral("Ben"));
    EXPECT_EQ(screen->txt_Family_Name->text(), QStringLiteral("Brook"));
    EXPECT_FALSE(screen->txt_Correspondence->isVisibleTo(screen));
    EXPECT_TRUE(screen->cmd_Add->isEnabled());
    EXPECT_FALSE(screen->import_state().Import_Running);
}

TEST_F(PupilImportScreen, ABadFileShowsItsRefusalWithTheLineAndLeavesNothing)
{
    const QString path = file({line(QStringLiteral("Amy"), QStringLiteral("Archer")),
                               line(QStringLiteral("Ben"), QStringLiteral("Brook"), QStringLiteral("f"))});
    open();
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Is this the header record?"), No);
    boxes.expect(QStringLiteral("Error detected in Import File ") + path + QStringLiteral(" at line 2\ninvalid gender\nContine?"),
                 No, 68);
    add_pupils_from(path);
    EXPECT_TRUE(boxes.all_shown());
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Import Cancelled"));
    EXPECT_EQ(pupils(), 0);
    EXPECT_EQ(school.count(QStringLiteral("Families")), 0);
}

TEST_F(PupilImportScreen, CancelAtTheHeaderQuestionImportsNothingAndNoFileIsRefused)
{
    open();
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Please choose a file to read pupils from"));
    click(screen->cmd_Add);

    boxes.expect(QStringLiteral("Is this the header record?"), engine::answer::Cancel);
    add_pupils_from(file({line(QStringLiteral("Amy"), QStringLiteral("Archer"))}));
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Import Cancelled"));
    EXPECT_EQ(pupils(), 0);
}

TEST_F(PupilImportScreen, WhileTheImportRunsExitIsRefusedAndCancelStopsItWithNothingKept)
{
    const QString path = file({line(QStringLiteral("Amy"), QStringLiteral("Archer")), line(QStringLiteral("Ben"), QStringLiteral("Brook")),
                               line(QStringLiteral("Cara"), QStringLiteral("Cole"))});
    open();
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Is this the header record?"), No);
    boxes.expect(QStringLiteral("Cannot exit yet, still processing a file\nPress Cancel to stop"));
    boxes.expect(QStringLiteral("Do you wish to stop processing?"), Yes, 36);
    // Pressed while the import lets the screen's events run, after its first pupil.
    bool cancel_enabled = false;
    QTimer during;
    during.setInterval(0);
    QObject::connect(&during, &QTimer::timeout, [&] {
        if (!screen->import_state().Import_Running)
            return;
        during.stop();
        screen->mnu_Exit->trigger();
        cancel_enabled = screen->cmd_Cancel->isEnabled();
        screen->cmd_Cancel->click();
    });
    during.start();
    add_pupils_from(path);
    during.stop();
    EXPECT_TRUE(boxes.all_shown());
    EXPECT_TRUE(cancel_enabled);
    EXPECT_TRUE(screen->isVisible());
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Import Cancelled"));
    EXPECT_EQ(pupils(), 0);
    EXPECT_FALSE(screen->cmd_Cancel->isEnabled());

    // Once it has stopped, Exit leaves.
    screen->mnu_Exit->trigger();
    settle();
    EXPECT_FALSE(screen && screen->isVisible());
}

TEST_F(PupilImportScreen, DisplayFilesOffersImportFilesAndACancelledChoiceEmptiesTheBox)
{
    const QString path = file({line(QStringLiteral("Amy"), QStringLiteral("Archer"))});
    open();
    QStringList offered;
    QTimer::singleShot(0, [&] {
        auto* selector = qobject_cast<frm_Select_File*>(QApplication::activeModalWidget());
        ASSERT_NE(selector, nullptr);
        for (int index = 0; index < selector->cmb_file_type->count(); ++index)
            offered << selector->cmb_file_type->itemText(index);
        selector->selectFile(path);
        selector->cmd_Select_Click();
    });
    click(screen->cmd_Select);
    EXPECT_EQ(offered, QStringList({QStringLiteral("Pupil Import Files (*.csv)"), QStringLiteral("All Files (*)")}));
    EXPECT_EQ(Glob_File_Select().Extension, QStringLiteral("csv"));
    EXPECT_EQ(screen->txt_File_Name->text(), path);

    QTimer::singleShot(0, [] {
        auto* selector = qobject_cast<frm_Select_File*>(QApplication::activeModalWidget());
        ASSERT_NE(selector, nullptr);
        selector->cmd_Cancel_Click();
    });
    click(screen->cmd_Select);
    EXPECT_TRUE(screen->txt_File_Name->text().isEmpty());
}

}  // namespace
