#include "ui/billing/frm_invoices.h"

#include "billing/family_account.h"
#include "billing/invoice_removal.h"
#include "engine/msg_box.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "shell/report_numbers.h"
#include "shell/transfer_ids.h"
#include "toolkit/help_pages.h"
#include "ui/billing/frm_invoice_lines.h"
#include "ui/shell/screen_catalogue.h"
#include "ui/shell/switch_screen.h"
#include "ui/toolkit/app_boxes.h"
#include "ui/toolkit/screen_kit.h"

#include <QAction>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

FamilyAccountWords invoices_words()
{
    FamilyAccountWords words;
    words.form_name = QStringLiteral("frm_Invoices");
    words.caption = QStringLiteral("Invoices for Families");
    words.module = invoices_tag();
    words.invoices_label = QStringLiteral("Current Invoices :");
    words.no_more_families = QStringLiteral("There are no more families");
    words.help_context = help::context::Invoices;
    return words;
}

}  // namespace

frm_Invoices::frm_Invoices(QWidget* parent) : FamilyAccountScreen(invoices_words(), parent)
{
    mnu_Receipts = add_menu(QStringLiteral("mnu_Receipts"), QStringLiteral("&Receipts"));
    mnu_Pupils = add_menu(QStringLiteral("mnu_Pupils"), QStringLiteral("&Pupil"));

    lst_Lines = new QListWidget(this);
    lst_Lines->setObjectName(QStringLiteral("lst_Lines"));
    lst_Lines->setAccessibleName(QStringLiteral("Lines on the Selected Invoice:"));
    auto* label = new QLabel(QStringLiteral("Lines on the Selected Invoice:"), this);
    label->setBuddy(lst_Lines);
    txt_Invoice_id = new QLineEdit(this);
    txt_Invoice_id->setObjectName(QStringLiteral("txt_Invoice_id"));
    txt_Invoice_id->hide();
    invoice_area()->addWidget(label);
    invoice_area()->addWidget(lst_Lines, 1);

    // The invoice's commands above the line's, each in a row of its own.
    auto* commands = new QGridLayout;
    cmd_Add_Invoice = make_button(this, QStringLiteral("cmd_Add_Invoice"), QStringLiteral("&Add New Invoice"));
    cmd_Change_Invoice = make_button(this, QStringLiteral("cmd_Change_Invoice"), QStringLiteral("&Change Invoice"));
    cmd_Delete_Invoice = make_button(this, QStringLiteral("cmd_Delete_Invoice"), QStringLiteral("&Delete Invoice"));
    cmd_Add_Line = make_button(this, QStringLiteral("cmd_Add_Line"), QStringLiteral("Add New Line"));
    cmd_Change_Line = make_button(this, QStringLiteral("cmd_Change_Line"), QStringLiteral("Change Line"));
    cmd_Delete_Line = make_button(this, QStringLiteral("cmd_Delete_Line"), QStringLiteral("Delete &Line "));
    commands->setColumnStretch(0, 1);
    int column = 1;
    for (QPushButton* button : {cmd_Add_Invoice, cmd_Change_Invoice, cmd_Delete_Invoice})
        commands->addWidget(button, 0, column++);
    column = 1;
    for (QPushButton* button : {cmd_Add_Line, cmd_Change_Line, cmd_Delete_Line})
        commands->addWidget(button, 1, column++);
    invoice_area()->addLayout(commands);

    connect(cmd_Add_Invoice, &QPushButton::clicked, this, [this] { cmd_Setup_Lines_Screen(Add_Invoice); });
    connect(cmd_Add_Line, &QPushButton::clicked, this, [this] { cmd_Setup_Lines_Screen(Add_Line); });
    connect(cmd_Change_Invoice, &QPushButton::clicked, this, [this] { cmd_Setup_Lines_Screen(Change_Invoice); });
    connect(cmd_Change_Line, &QPushButton::clicked, this, [this] { cmd_Setup_Lines_Screen(Change_Line); });
    connect(cmd_Delete_Invoice, &QPushButton::clicked, this, &frm_Invoices::cmd_Delete_Invoice_Click);
    connect(cmd_Delete_Line, &QPushButton::clicked, this, &frm_Invoices::cmd_Delete_Line_Click);
    connect(mnu_Receipts, &QAction::triggered, this, [this] { Setup_Next_Screen(QStringLiteral("frm_Receipts")); });
    connect(mnu_Pupils, &QAction::triggered, this, [this] { Setup_Next_Screen(QStringLiteral("frm_Pupil")); });

    Setup_Controls();
    resize(900, 680);
}

// ---- The chosen invoice's lines ----

void frm_Invoices::invoice_chosen()
{
    if (lst_Invoices->currentRow() >= 0)
        txt_Invoice_id->setText(QString::number(chosen_invoice_id()));
    Get_Invoice_Lines();
}

void frm_Invoices::Clear_screen()
{
    txt_Invoice_id->clear();
}

void frm_Invoices::Get_Invoice_Lines()
{
    lst_Lines->clear();
    const int invoice = chosen_invoice_id();
    if (invoice <= 0) {
        show_only(lst_Lines, QStringLiteral("(None)"));
        return;
    }
    QVector<AccountEntry> lines;
    if (!Account_Invoice_Lines(invoice, lines, words().module))
        return;
    if (lines.isEmpty())
        // An invoice without lines is taken as a fault worth pointing at.
        show_only(lst_Lines, QStringLiteral("**** (None) - Why are there no lines for this invoice?"));
    else
        fill_list(lst_Lines, lines);
}

// ---- The Invoice Lines screen ----

void frm_Invoices::cmd_Setup_Lines_Screen(LinesCommand command)
{
    if (!family_id_is_numeric() || txt_Family_id->text().trimmed().isEmpty())
        return;
    const int invoice_row = lst_Invoices->currentRow() >= 0 ? lst_Invoices->currentRow() : (lst_Invoices->count() > 0 ? 0 : -1);
    const int invoice = invoice_row < 0 ? 0 : entry_id(lst_Invoices, invoice_row);
    const int line_row = lst_Lines->currentRow() >= 0 ? lst_Lines->currentRow() : (lst_Lines->count() > 0 ? 0 : -1);
    const int line = line_row < 0 ? -1 : entry_id(lst_Lines, line_row);

    HourGlass hour_glass;
    auto* lines_screen = qobject_cast<frm_Invoice_Lines*>(Load_Screen(QStringLiteral("frm_Invoice_Lines")));
    bool shown = false;
    if (lines_screen) {
        switch (command) {
        case Add_Invoice: shown = lines_screen->fIL_Display_Invoice(txt_Family_Name->text(), txt_Address->text(), family_id(), 0, -1); break;
        case Add_Line: shown = lines_screen->fIL_Display_Invoice(txt_Family_Name->text(), txt_Address->text(), family_id(), invoice, 0); break;
        case Change_Invoice:
        case Change_Line:
            shown = lines_screen->fIL_Display_Invoice(txt_Family_Name->text(), txt_Address->text(), family_id(), invoice, line);
            break;
        }
    }
    if (!shown) {
        Report_Error(report::Unexpected, QStringLiteral("Unexpected error "), engine::mb::Critical, words().module,
                     QStringLiteral("cmd_Setup_Lines_Screen"));
        if (lines_screen)
            Unload(lines_screen);
        return;
    }
    row_before_lines_ = std::max(invoice_row, 0);
    Switch_Screen(this, lines_screen, false);
}

void frm_Invoices::Form_Activate()
{
    if (row_before_lines_ >= 0) {
        back_from_lines();
        return;
    }
    FamilyAccountScreen::Form_Activate();
}

void frm_Invoices::back_from_lines()
{
    const int row = row_before_lines_;
    row_before_lines_ = -1;
    Get_Invoices();
    if (lst_Invoices->count() > 0) {
        lst_Invoices->setCurrentRow(std::min(row, lst_Invoices->count() - 1));
        invoice_chosen();
    }
    Calculate_Overall_Posn();
}

// ---- Deletions ----

void frm_Invoices::cmd_Delete_Invoice_Click()
{
    const int row = lst_Invoices->currentRow();
    if (row < 0) {
        set_status(QStringLiteral("There are no Invoice selected for deletion"));
        return;
    }
    const int invoice = entry_id(lst_Invoices, row);
    if (invoice <= 0) {
        set_status(QStringLiteral("There are no Invoices to select"));
        return;
    }
    int receipts = 0;
    if (!Count_Invoice_Receipts(invoice, receipts))
        return;
    if (receipts > 0) {
        App_Box(QStringLiteral("There are ") + QString::number(receipts) + QStringLiteral(" Receipts on this invoice.")
            + QLatin1Char('\n') + QStringLiteral("Please delete them and try again. "));
        return;
    }
    if (App_Box(QStringLiteral("Do you really want to delete this Invoice?"), engine::mb::YesNo | engine::mb::Question)
        != engine::answer::Yes) {
        set_status(QStringLiteral("Deletion cancelled"));
        return;
    }
    switch (Delete_Invoice(invoice)) {
    case InvoiceDeletion::Deleted: set_status(QStringLiteral("Deletion successful")); break;
    case InvoiceDeletion::Not_Deleted: set_status(QStringLiteral("COULD NOT DELETE")); break;
    case InvoiceDeletion::Failed: return;
    }
    Get_Invoices();
    Calculate_Overall_Posn();
}

void frm_Invoices::cmd_Delete_Line_Click()
{
    const int row = lst_Lines->currentRow();
    if (row < 0) {
        set_status(QStringLiteral("There are no Lines selected for deletion"));
        return;
    }
    const int line = entry_id(lst_Lines, row);
    if (line <= 0) {
        App_Box(QStringLiteral("There are no Lines to select"));
        return;
    }
    if (App_Box(QStringLiteral("Do you really want to delete this Line?"), engine::mb::YesNo | engine::mb::Question)
        != engine::answer::Yes) {
        set_status(QStringLiteral("Deletion cancelled"));
        return;
    }
    long long affected = 0;
    if (!Delete_Invoice_Line(line, chosen_invoice_id(), affected))
        return;
    if (affected != 1) {
        set_status(QStringLiteral("COULD NOT DELETE"));
        return;
    }
    set_status(QStringLiteral("Deletion successful"));
    Get_Invoice_Lines();
    Calculate_Overall_Posn();
}

// ---- Leaving ----

void frm_Invoices::Setup_Next_Screen(const QString& form_name)
{
    if (!family_id_is_numeric())
        return;
    Glob_Xfer_Family_id() = family_id();
    Glob_Xfer_Invoice_id() = lst_Invoices->currentRow() < 0 ? -1 : chosen_invoice_id();
    Go_To_Screen(this, form_name);
}

void frm_Invoices::mnu_Exit_Click()
{
    Switch_Screen(this, nullptr, false);
}
