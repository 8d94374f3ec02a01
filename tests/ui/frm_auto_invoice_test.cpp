// The Automated Invoicing screen as the office uses it: the criteria it shows
// each time it comes to the front, the buttons that raise and delete invoices
// with their questions and status, the script frame and the file selector.
// What the runs put in the database is the invoicing's own business, tested
// without the screen; here the screen must pass the commands on and show
// what came of them.

#include "ui/billing/frm_auto_invoice.h"

#include "billing/invoicing_school.h"
#include "engine/msg_box.h"
#include "screen_driver.h"
#include "shell/selection_lists.h"
#include "shell/settings.h"
#include "support/scripted_boxes.h"
#include "toolkit/file_select.h"
#include "ui/shell/screen_catalogue.h"
#include "ui/toolkit/frm_select_file.h"
#include "ui/toolkit/screen_kit.h"

#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

#include <gtest/gtest.h>

using namespace screen_driver;
using engine::answer::No;
using engine::answer::Ok;
using engine::answer::Yes;
using testing_support::ScriptedBoxes;

namespace {

const QString no_term = QStringLiteral("There must be one specified term. \nPlease choose one by pressing 'Criteria'.");
const QString raised = QStringLiteral("Term invoices raised. Script successfully applied");
const QString abandoned = QStringLiteral("Script file abandoned and all changes undone");
const QString already_there = QStringLiteral("The data cannot be inserted because there are already records there.");

void wait_for(const std::function<bool()>& done)
{
    for (int wait = 0; wait < 200 && !done(); ++wait)
        QTest::qWait(10);
}

// The wait cursor as each box found it, while the boxes are answered as scripted.
class CursorAtBoxes {
public:
    CursorAtBoxes()
    {
        previous_ = engine::set_msgbox_responder([this](const QString& text, int style, const QString& title) {
            const QCursor* cursor = QApplication::overrideCursor();
            waiting << (cursor && cursor->shape() == Qt::WaitCursor);
            return previous_(text, style, title);
        });
    }
    ~CursorAtBoxes() { engine::set_msgbox_responder(previous_); }
    QList<bool> waiting;

private:
    engine::MsgBoxResponder previous_;
};

// The school of the invoicing tests, with the screen opened from a stand-in
// main menu as the program opens it.
class AutoInvoiceScreen : public ScreenTest<frm_Auto_Invoice, testing_support::InvoicingSchool> {
protected:
    void TearDown() override
    {
        if (QWidget* log = Loaded_Screen(QStringLiteral("frm_auditlog")))
            Unload(log);
        ScreenTest::TearDown();
    }

    // Opens the screen and waits for it to have prepared the run.
    frm_Auto_Invoice* open()
    {
        screen = new frm_Auto_Invoice;
        Switch_Screen(&menu, screen, false);
        bring_to_front(screen);
        wait_for_preparation();
        return screen;
    }
    void wait_for_preparation()
    {
        wait_for([this] { return screen && !screen->lbl_All[AutoInvoicing::Terms]->text().isEmpty(); });
        ASSERT_FALSE(screen->lbl_All[AutoInvoicing::Terms]->text().isEmpty()) << "the screen never prepared the run";
    }
    QString amount(AutoInvoicing::Criterion criterion) const { return screen->lbl_All[criterion]->text(); }
};

TEST_F(AutoInvoiceScreen, TheTermButtonWantsATermChosenThoughTermsShowAll)
{
    open();
    EXPECT_EQ(amount(AutoInvoicing::Terms), QStringLiteral("All"));
    EXPECT_EQ(entries(screen->lst_Selected_Pupils), QStringList{QStringLiteral("All Pupils selected")});

    ScriptedBoxes boxes;
    boxes.expect(no_term, Ok, engine::mb::OkOnly);
    click(screen->cmd_Insert_Term);
    EXPECT_TRUE(boxes.all_shown());
    EXPECT_EQ(school.count(QStringLiteral("Invoices")), 0);
    EXPECT_EQ(screen->txt_Status->text(), QString());
}

TEST_F(AutoInvoiceScreen, ASecondTermRunForTheSameFamiliesIsAbandonedAndChangesNothing)
{
    Sel_Terms().append(school.spring);
    open();
    click(screen->cmd_Insert_Term);
    EXPECT_EQ(screen->txt_Status->text(), raised);
    EXPECT_EQ(screen->txt_Filename->text(), Settings().term_script);
    EXPECT_EQ(school.invoices().size(), 3);

    // That nothing changes is the run's own business; here the screen shows it.
    ScriptedBoxes boxes;
    boxes.expect(already_there, Ok);
    CursorAtBoxes cursor;
    click(screen->cmd_Insert_Term);
    EXPECT_TRUE(boxes.all_shown());
    EXPECT_EQ(screen->txt_Status->text(), abandoned);
    EXPECT_EQ(school.invoices().size(), 3);
    // The run kept the wait cursor up, and left none behind.
    EXPECT_EQ(cursor.waiting, QList<bool>{true});
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(AutoInvoiceScreen, ComingBackFromAnotherScreenShowsTheCriteriaChosenMeanwhile)
{
    open();
    EXPECT_EQ(amount(AutoInvoicing::Pupils), QStringLiteral("All"));

    // Away to the log; meanwhile the criteria change as the criteria screen changes them.
    screen->mnu_View_Errors->trigger();
    settle();
    QWidget* log = Loaded_Screen(QStringLiteral("frm_auditlog"));
    ASSERT_NE(log, nullptr);
    EXPECT_TRUE(log->isVisible());
    EXPECT_FALSE(screen->isVisible());
    Sel_Terms().append(school.spring);
    Sel_Pupils().append(school.cara);
    Sel_Pupils().append(school.amy);
    Sel_Activities().append(school.add_activity(testing_support::NewActivity(QStringLiteral("Grade 1 Exam"))));

    for (QLabel* label : screen->lbl_All)
        label->clear();
    Switch_Screen(log, nullptr, false);
    bring_to_front(screen);
    wait_for_preparation();
    EXPECT_EQ(amount(AutoInvoicing::Terms), QStringLiteral("One"));
    EXPECT_EQ(screen->lbl_Term_Name->text(), QStringLiteral("- Spring 2026"));
    EXPECT_EQ(amount(AutoInvoicing::Pupils), QStringLiteral("Some"));
    EXPECT_EQ(amount(AutoInvoicing::Activities), QStringLiteral("One"));
    EXPECT_EQ(amount(AutoInvoicing::Courses), QStringLiteral("All"));
    EXPECT_EQ(amount(AutoInvoicing::Activity_Dates), QStringLiteral("All"));
    QStringList pupils = entries(screen->lst_Selected_Pupils);
    pupils.sort();
    EXPECT_EQ(pupils, QStringList({QStringLiteral("Amy Ashby "), QStringLiteral("Cara Brook ")}));
    EXPECT_TRUE(screen->Opt_Selected->isChecked());
    EXPECT_FALSE(screen->Opt_Saved_List->isEnabled());
}

TEST_F(AutoInvoiceScreen, TheOptionsSwitchBetweenTheChangedPupilsAndTheChosenOnes)
{
    Glob_Keep_Changed_List() = true;
    Glob_Add_Changed_Pupil(school.ben);
    open();
    EXPECT_TRUE(screen->Opt_Saved_List->isEnabled());
    EXPECT_TRUE(screen->Opt_Saved_List->isChecked());
    EXPECT_EQ(entries(screen->lst_Selected_Pupils), QStringList{QStringLiteral("Ben Ashby ")});

    click(screen->Opt_Selected);
    EXPECT_EQ(entries(screen->lst_Selected_Pupils), QStringList{QStringLiteral("All Pupils selected")});
    EXPECT_EQ(school.count(QStringLiteral("Tmp_Pupils")), 5);
    click(screen->Opt_Saved_List);
    EXPECT_EQ(entries(screen->lst_Selected_Pupils), QStringList{QStringLiteral("Ben Ashby ")});
    EXPECT_EQ(school.count(QStringLiteral("Tmp_Pupils")), 1);
}

TEST_F(AutoInvoiceScreen, TheScriptFrameComesOutOfHidingRunsTheNamedScriptAndOffersTheScripts)
{
    open();
    EXPECT_FALSE(screen->frame_Scripts->isVisible());
    screen->mnu_Script->trigger();
    settle();
    ASSERT_TRUE(screen->frame_Scripts->isVisible());
    EXPECT_EQ(frame_colour(screen->frame_Scripts), (colours::Rgb{255, 255, 192}));

    // The course costs script fills only the temporary costs: harmless to run by hand.
    type_into(screen->txt_Filename, Settings().cost_script);
    click(screen->cmd_Do);
    EXPECT_TRUE(screen->txt_Status->text().endsWith(QStringLiteral(" Script successfully applied")))
        << screen->txt_Status->text().toStdString();
    EXPECT_GT(school.count(QStringLiteral("Tmp_CourseCosts")), 0);
    EXPECT_EQ(screen->txt_Filename->text(), Settings().cost_script);

    // View Files offers the scripts and puts the chosen one in the box.
    QStringList offered;
    QTimer::singleShot(0, [&] {
        auto* selector = qobject_cast<frm_Select_File*>(QApplication::activeModalWidget());
        ASSERT_NE(selector, nullptr);
        offered = entries(selector->cmb_file_type);
        selector->selectFile(Settings().activity_script);
        selector->cmd_Select_Click();
    });
    click(screen->cmd_Script_Select);
    EXPECT_EQ(offered, QStringList({QStringLiteral("SQL scripts (*.sql)"), QStringLiteral("All Files (*)")}));
    EXPECT_EQ(Glob_File_Select().Extension, QStringLiteral("sql"));
    EXPECT_EQ(screen->txt_Filename->text(), Settings().activity_script);
}

// Each deletion button asks first, then deletes and says how many, or says
// why it can't; what a No keeps and what each deletion takes are the
// deletions' own business.
struct BulkDeletion {
    const char* button;
    const char* question;
    const char* done;
    int invoices_left;
    const char* refusal = nullptr;  // the box that says why nothing was deleted
};

void PrintTo(const BulkDeletion& deletion, std::ostream* out)
{
    *out << deletion.button;
}

class AutoInvoiceDeletion : public AutoInvoiceScreen, public ::testing::WithParamInterface<BulkDeletion> {};

TEST_P(AutoInvoiceDeletion, AsksAndShowsItsOutcome)
{
    const BulkDeletion& deletion = GetParam();
    // The Spring invoices of Ashby, Brook and Cole; Brook's is paid in full.
    Sel_Terms().append(school.spring);
    open();
    click(screen->cmd_Insert_Term);
    ASSERT_EQ(screen->txt_Status->text(), raised);
    school.add_receipt(
        school.scalar(QStringLiteral("SELECT Invoice_id FROM Invoices WHERE Invoice_Family_id = %1").arg(school.brook)).toInt(),
        120);
    auto* button = screen->findChild<QPushButton*>(QString::fromLatin1(deletion.button));
    ASSERT_NE(button, nullptr);

    ScriptedBoxes boxes;
    boxes.expect(QString::fromLatin1(deletion.question), Yes, engine::mb::YesNo | engine::mb::Question);
    if (deletion.refusal)
        boxes.expect(QString::fromLatin1(deletion.refusal), Ok, engine::mb::Critical);
    boxes.during([&] { click(button); });
    EXPECT_EQ(screen->txt_Status->text(), QString::fromLatin1(deletion.done));
    EXPECT_EQ(school.count(QStringLiteral("Invoices")), deletion.invoices_left);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(
    AutoInvoiceScreen, AutoInvoiceDeletion,
    ::testing::Values(
        BulkDeletion{"cmd_Del_All", "Do you REALLY want to delete EVERY invoice and receipt in the database?",
                     "All (3) Invoices and Receipts successfully Deleted", 0},
        BulkDeletion{"cmd_Del_Paid_All", "Do you want to delete all the paid invoices and receipts?",
                     "Deletion of Paid Invoices (1) successful", 2},
        BulkDeletion{"cmd_Del_Sel_Terms", "Do you want to delete invoices for the given term dates and families?",
                     "Error during Deletion of selected invoices", 3,
                     "Cannot delete the Invoices because there are 1 receipts for them"}),
    [](const ::testing::TestParamInfo<BulkDeletion>& deletion) { return std::string(deletion.param.button); });

TEST_F(AutoInvoiceScreen, TheFramesKeepTheirColoursWithReadableCaptions)
{
    open();
    const auto lightness = [](const QColor& colour) { return colour.lightness(); };
    const std::pair<QGroupBox*, colours::Rgb> frames[] = {
        {screen->frame_Inserts, {0, 128, 0}},
        {screen->frame_Delete_Selected, {255, 192, 255}},
        {screen->frame_Deletes, {255, 192, 255}},
    };
    for (const auto& [frame, colour] : frames) {
        EXPECT_EQ(frame_colour(frame), colour) << frame->objectName().toStdString();
        const QPalette palette = frame->palette();
        EXPECT_GT(std::abs(lightness(palette.color(QPalette::WindowText)) - lightness(palette.color(QPalette::Window))), 100)
            << frame->objectName().toStdString() << ": its caption would not stand out";
    }
}

TEST_F(AutoInvoiceScreen, ExitGoesBackToTheMenuAndEmptiesTheTemporaryTables)
{
    open();
    EXPECT_EQ(school.count(QStringLiteral("Tmp_Pupils")), 5);
    screen->mnu_Exit->trigger();
    settle();
    EXPECT_TRUE(menu.isVisible());
    EXPECT_TRUE(screen.isNull());
    EXPECT_EQ(school.count(QStringLiteral("Tmp_Pupils")), 0);
    EXPECT_EQ(school.count(QStringLiteral("Tmp_Terms")), 0);
}

}  // namespace
