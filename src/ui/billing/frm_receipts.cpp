#include "ui/billing/frm_receipts.h"

#include "billing/family_account.h"
#include "billing/receipts.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "engine/vb_values.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "shell/locale_formats.h"
#include "shell/report_numbers.h"
#include "shell/transfer_ids.h"
#include "toolkit/data_control.h"
#include "toolkit/help_pages.h"
#include "ui/shell/screen_catalogue.h"
#include "ui/shell/switch_screen.h"
#include "ui/toolkit/app_boxes.h"
#include "ui/toolkit/form_rows.h"
#include "ui/toolkit/screen_kit.h"

#include <QAction>
#include <QComboBox>
#include <QCoreApplication>
#include <QDateTime>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

FamilyAccountWords receipts_words()
{
    FamilyAccountWords words;
    words.form_name = QStringLiteral("frm_Receipts");
    words.caption = QStringLiteral("Money Received");
    words.module = receipts_tag();
    words.invoices_label = QStringLiteral("Select Invoice :");
    words.no_more_families = QStringLiteral("There are no more families. ");
    words.help_context = help::context::Receipts;
    return words;
}

QLineEdit* figure_box(QWidget* parent, const QString& name)
{
    auto* box = new QLineEdit(parent);
    box->setObjectName(name);
    box->setReadOnly(true);
    box->setAlignment(Qt::AlignRight);
    return box;
}

// Money typed or shown: blank counts as nothing; false for text that is no amount.
bool money_of(const QString& text, engine::Currency& money)
{
    money = engine::Currency();
    if (text.trimmed().isEmpty())
        return true;
    const bool ok = vb::IsNumeric(text) && vb::CCur(text, money);
    engine::Err().Clear();
    return ok;
}

QString long_date(const QDateTime& date)
{
    return vb::Format(date, Glob_Date_Format());
}

}  // namespace

frm_Receipts::frm_Receipts(QWidget* parent) : FamilyAccountScreen(receipts_words(), parent)
{
    mnu_Invoices = add_menu(QStringLiteral("mnu_Invoices"), QStringLiteral("&Invoices"));
    mnu_Pupils = add_menu(QStringLiteral("mnu_Pupils"), QStringLiteral("&Pupils"));
    cmd_Prev_Owing = add_navigation(QStringLiteral("cmd_Prev_Owing"), QStringLiteral("Prev O&wing"));
    cmd_Next_Owing = add_navigation(QStringLiteral("cmd_Next_Owing"), QStringLiteral("Next &Owing"));

    auto* row = new QHBoxLayout;
    row->setSpacing(24);
    row->addWidget(build_invoice_figures(), 1);
    row->addWidget(build_receipt_fields(), 1);
    invoice_area()->addLayout(row);

    auto* commands = new QHBoxLayout;
    commands->addStretch(1);
    cmd_Add = make_button(this, QStringLiteral("cmd_Add"), QStringLiteral("&Add New"));
    cmd_Update = make_button(this, QStringLiteral("cmd_Update"), QStringLiteral("&Update"));
    cmd_Delete = make_button(this, QStringLiteral("cmd_Delete"), QStringLiteral("&Delete"));
    cmd_Cancel = make_button(this, QStringLiteral("cmd_Cancel"), QStringLiteral("&Cancel"));
    cmd_Bad_Debt = make_button(this, QStringLiteral("cmd_Bad_Debt"), QStringLiteral("Write Off"));
    for (QPushButton* button : {cmd_Add, cmd_Update, cmd_Delete, cmd_Cancel, cmd_Bad_Debt})
        commands->addWidget(button);
    invoice_area()->addLayout(commands);

    connect(cmd_Add, &QPushButton::clicked, this, &frm_Receipts::cmd_Add_Click);
    connect(cmd_Update, &QPushButton::clicked, this, &frm_Receipts::cmd_Update_Click);
    connect(cmd_Delete, &QPushButton::clicked, this, &frm_Receipts::cmd_Delete_Click);
    connect(cmd_Cancel, &QPushButton::clicked, this, &frm_Receipts::cmd_Cancel_Click);
    connect(cmd_Bad_Debt, &QPushButton::clicked, this, &frm_Receipts::cmd_Bad_Debt_Click);
    connect(cmd_Next_Owing, &QPushButton::clicked, this, &frm_Receipts::cmd_Next_Owing_Click);
    connect(cmd_Prev_Owing, &QPushButton::clicked, this, &frm_Receipts::cmd_Prev_Owing_Click);
    connect(lst_Receipts, &QListWidget::itemClicked, this, [this] {
        if (!Check_Progress())
            Display_Receipt();
    });
    connect(cmb_Method, &QComboBox::activated, this, [this] { Last_Method = cmb_Method->currentText(); });
    connect(mnu_Invoices, &QAction::triggered, this, [this] { Setup_Next_Screen(QStringLiteral("frm_Invoices")); });
    connect(mnu_Pupils, &QAction::triggered, this, [this] { Setup_Next_Screen(QStringLiteral("frm_Pupil")); });

    Last_Method = cmb_Method->itemText(0);
    Setup_Controls();
    resize(900, 680);
}

QWidget* frm_Receipts::build_invoice_figures()
{
    auto* area = new QWidget(this);
    auto* column = new QVBoxLayout(area);
    column->setContentsMargins(0, 0, 0, 0);
    lst_Receipts = new QListWidget(area);
    lst_Receipts->setObjectName(QStringLiteral("lst_Receipts"));
    lst_Receipts->setAccessibleName(QStringLiteral("Receipts for selected Invoice :"));
    auto* label = new QLabel(QStringLiteral("Receipts for selected Invoice :"), area);
    label->setBuddy(lst_Receipts);
    column->addWidget(label);
    column->addWidget(lst_Receipts, 1);
    auto* figures = new QGridLayout;
    figures->setColumnStretch(1, 1);
    txt_Invoice_Total = figure_box(area, QStringLiteral("txt_Invoice_Total"));
    txt_Receipt_Total = figure_box(area, QStringLiteral("txt_Receipt_Total"));
    txt_Outstanding = figure_box(area, QStringLiteral("txt_Outstanding"));
    add_field_row(figures, txt_Invoice_Total, QStringLiteral("Selected Invoice Total :"));
    add_field_row(figures, txt_Receipt_Total, QStringLiteral("Total Receipts :"));
    add_field_row(figures, txt_Outstanding, QStringLiteral("Outstanding :"));
    column->addLayout(figures);
    return area;
}

QWidget* frm_Receipts::build_receipt_fields()
{
    auto* area = new QGroupBox(QStringLiteral("Receipt"), this);
    area->setObjectName(QStringLiteral("frame_Receipt"));
    auto* grid = new QGridLayout(area);
    grid->setColumnStretch(1, 1);
    txt_Amount = new QLineEdit(area);
    txt_Amount->setObjectName(QStringLiteral("txt_Amount"));
    txt_Amount->setAlignment(Qt::AlignRight);
    txt_Date = new QLineEdit(area);
    txt_Date->setObjectName(QStringLiteral("txt_Date"));
    txt_Pay_Notes = new QLineEdit(area);
    txt_Pay_Notes->setObjectName(QStringLiteral("txt_Pay_Notes"));
    cmb_Method = new QComboBox(area);
    cmb_Method->setObjectName(QStringLiteral("cmb_Method"));
    cmb_Method->setEditable(true);
    cmb_Method->setInsertPolicy(QComboBox::NoInsert);
    cmb_Method->addItems({QStringLiteral("Cash"), QStringLiteral("Cheque"), QStringLiteral("Credit Card"),
                          QStringLiteral("Debit Card")});
    cmb_Method->setCurrentIndex(-1);
    add_field_row(grid, txt_Amount, QStringLiteral("Amount Paid :"));
    add_field_row(grid, txt_Date, QStringLiteral("Payment Date :"));
    add_field_row(grid, cmb_Method, QStringLiteral("Method :"));
    add_field_row(grid, txt_Pay_Notes, QStringLiteral("Notes :"));
    txt_Receipt_id = new QLineEdit(area);
    txt_Receipt_id->setObjectName(QStringLiteral("txt_Receipt_id"));
    txt_Receipt_id->hide();
    set_field_colour(txt_Receipt_id, colours::At_Rest);
    grid->setRowStretch(grid->rowCount(), 1);
    for (QWidget* field : {static_cast<QWidget*>(txt_Amount), static_cast<QWidget*>(txt_Date),
                           static_cast<QWidget*>(txt_Pay_Notes), static_cast<QWidget*>(cmb_Method)}) {
        Enter_To_Tab(field);
        field->installEventFilter(this);
        set_field_colour(field, colours::At_Rest);
    }
    return area;
}

// ---- State ----

colours::Rgb frm_Receipts::state() const
{
    return field_colour(txt_Receipt_id);
}

void frm_Receipts::set_state(const colours::Rgb& colour)
{
    set_field_colour(txt_Receipt_id, colour);
}

frm_Receipts::LoadedValues frm_Receipts::shown_values() const
{
    return {txt_Amount->text(), txt_Date->text(), txt_Pay_Notes->text(), cmb_Method->currentText()};
}

void frm_Receipts::show_loaded(const LoadedValues& values)
{
    txt_Amount->setText(values.amount);
    txt_Date->setText(values.date);
    txt_Pay_Notes->setText(values.notes);
    cmb_Method->setCurrentText(values.method);
    loaded_ = values;
}

void frm_Receipts::Clear_highlights()
{
    for (QWidget* field : {static_cast<QWidget*>(txt_Amount), static_cast<QWidget*>(txt_Date),
                           static_cast<QWidget*>(txt_Pay_Notes), static_cast<QWidget*>(cmb_Method)})
        set_field_colour(field, colours::At_Rest);
    set_state(colours::At_Rest);
}

void frm_Receipts::Clear_screen()
{
    show_loaded({});
    Clear_highlights();
}

bool frm_Receipts::Check_Progress()
{
    const colours::Rgb now = state();
    if (now == colours::At_Rest) {
        set_status(QString());
        return false;
    }
    if (now == colours::Proposed) {
        set_status(QStringLiteral("Automatic receipt addition cancelled"));
        set_state(colours::At_Rest);
        Clear_screen();
        return false;
    }
    App_Box(QStringLiteral("There are changes already in progress"));
    return true;
}

// ---- The chosen invoice ----

void frm_Receipts::invoice_chosen()
{
    const int invoice = chosen_invoice_id();
    invoice_total_ = engine::Currency();
    if (invoice >= 0)
        Account_Invoice_Total(invoice, invoice_total_, words().module);
    txt_Invoice_Total->setText(invoice < 0 ? QStringLiteral("0") : Money_Shown(invoice_total_));
    Get_Receipts();
}

void frm_Receipts::Get_Receipts()
{
    lst_Receipts->clear();
    txt_Receipt_id->setText(QStringLiteral("0"));
    txt_Receipt_Total->setText(QStringLiteral("0"));
    txt_Outstanding->setText(QStringLiteral("0"));
    set_field_colour(txt_Outstanding, colours::At_Rest);
    receipt_total_ = engine::Currency();
    outstanding_ = engine::Currency();
    const int invoice = chosen_invoice_id();
    if (invoice <= 0) {
        show_only(lst_Receipts, QStringLiteral("(None)"));
        lst_Receipts->setCurrentRow(0);
        return;
    }
    QVector<AccountEntry> receipts;
    if (!Account_Invoice_Receipts(invoice, receipts, receipt_total_, words().module))
        return;
    if (receipts.isEmpty()) {
        show_only(lst_Receipts, QStringLiteral("(None)"));
        lst_Receipts->setCurrentRow(0);
    } else {
        fill_list(lst_Receipts, receipts);
    }
    txt_Receipt_Total->setText(Money_Shown(receipt_total_));
    Calculate_Outstanding();
}

void frm_Receipts::Calculate_Outstanding()
{
    outstanding_ = invoice_total_ - receipt_total_;
    txt_Outstanding->setText(Money_Shown(outstanding_));
    set_field_colour(txt_Outstanding, colours::At_Rest);
    if (outstanding_ > engine::Currency())
        set_field_colour(txt_Outstanding, colours::Owing);
}

void frm_Receipts::Show_Selected_Invoice()
{
    if (chosen_invoice_id() <= 0 || lst_Invoices->count() == 0)
        return;
    if (lst_Receipts->currentRow() < 0)
        lst_Receipts->setCurrentRow(0);
    if (entry_id(lst_Receipts, lst_Receipts->currentRow()) == 0) {
        Setup_Add();
        txt_Amount->setFocus(Qt::OtherFocusReason);
    } else {
        Display_Receipt();
    }
}

// The outstanding amount proposed as the next receipt, dated today.
void frm_Receipts::Setup_Add()
{
    if (lst_Invoices->count() == 0 || entry_id(lst_Invoices, 0) == 0)
        return;
    set_status(QStringLiteral("Adding a new Receipt"));
    if (txt_Invoice_Total->text().trimmed().isEmpty())
        txt_Invoice_Total->setText(QStringLiteral("0"));
    if (txt_Receipt_Total->text().trimmed().isEmpty())
        txt_Receipt_Total->setText(QStringLiteral("0"));
    // The proposal is what is owed to the last of the four places money
    // keeps, so that paying it leaves nothing owed.
    show_loaded({Money_Text(QVariant::fromValue(invoice_total_ - receipt_total_)),
                 long_date(QDateTime::currentDateTime()), QString(), Last_Method});
    for (QWidget* field : {static_cast<QWidget*>(txt_Receipt_id), static_cast<QWidget*>(txt_Amount),
                           static_cast<QWidget*>(txt_Date)})
        set_field_colour(field, colours::Proposed);
}

void frm_Receipts::Select_Receipt()
{
    Get_Receipts();
    if (lst_Receipts->count() == 0) {
        Report_Error(report::Unexpected, QStringLiteral("Unexpected error while selecting a receipt"),
                     engine::mb::Critical, words().module, QStringLiteral("Select_Receipt"));
        return;
    }
    lst_Receipts->setCurrentRow(0);
    Display_Receipt();
}

void frm_Receipts::Display_Receipt()
{
    const int row = lst_Receipts->currentRow();
    if (row < 0) {
        set_status(QStringLiteral("No Receipt selected"));
        return;
    }
    const int receipt_id = entry_id(lst_Receipts, row);
    if (receipt_id == 0) {
        Clear_screen();
        return;
    }
    ReceiptValues receipt;
    bool found = false;
    if (!Read_Receipt(receipt_id, receipt, found))
        return;
    if (!found) {
        Report_Error(report::Detected, QStringLiteral("Could not find selected Receipt"), engine::mb::Information,
                     words().module, QStringLiteral("Display_Receipt"));
        set_status(QStringLiteral("No Receipt found"));
        return;
    }
    show_loaded({Money_Shown(receipt.amount), long_date(receipt.date), receipt.notes, receipt.method});
    txt_Receipt_id->setText(QString::number(receipt_id));
    Clear_highlights();
}

// ---- Editing ----

bool frm_Receipts::eventFilter(QObject* watched, QEvent* event)
{
    if (Is_Field_Left(event))
        field_left(static_cast<QWidget*>(watched));
    return FamilyAccountScreen::eventFilter(watched, event);
}

void frm_Receipts::field_left(QWidget* field)
{
    if (checking_field_)
        return;
    checking_field_ = true;
    const LoadedValues now = shown_values();
    const bool changed = (field == txt_Amount && now.amount != loaded_.amount)
                         || (field == txt_Date && now.date != loaded_.date)
                         || (field == txt_Pay_Notes && now.notes != loaded_.notes)
                         || (field == cmb_Method && now.method != loaded_.method);
    if (changed) {
        engine::Currency amount;
        QDateTime date;
        if (field == txt_Amount && !money_of(now.amount, amount)) {
            App_Box(QStringLiteral("This is not a valid currency"));
            txt_Amount->setFocus(Qt::OtherFocusReason);
        } else if (field == txt_Date && !vb::CDate(now.date, date)) {
            App_Box(QStringLiteral("This is not a valid date"));
            txt_Amount->setFocus(Qt::OtherFocusReason);
        } else {
            Check_LostFocus(field);
        }
        engine::Err().Clear();
    }
    checking_field_ = false;
}

void frm_Receipts::Check_LostFocus(QWidget* field)
{
    if (state() == colours::At_Rest && txt_Receipt_id->text().trimmed() == QStringLiteral("0")) {
        App_Box(QStringLiteral("There is no record to edit. ") + QLatin1Char('\n') + QStringLiteral("Choose a Receipt to edit, or ")
            + QStringLiteral("press Add New"));
        return;
    }
    const QString text = field == cmb_Method ? cmb_Method->currentText() : qobject_cast<QLineEdit*>(field)->text();
    if (text.trimmed().isEmpty())
        return;
    set_field_colour(field, colours::Highlight);
    set_state(colours::Highlight);
}

void frm_Receipts::cmd_Add_Click()
{
    set_status(QString());
    if (Check_Progress())
        return;
    if (lst_Invoices->count() == 0 || entry_id(lst_Invoices, 0) == 0) {
        set_status(QStringLiteral("There must be an Invoice before you can add a receipt"));
        return;
    }
    Setup_Add();
    set_state(colours::Highlight);
    txt_Receipt_id->setText(QStringLiteral("0"));
    txt_Amount->setFocus(Qt::OtherFocusReason);
}

bool frm_Receipts::Validate_Data(ReceiptValues& receipt)
{
    const auto refuse = [this](const QString& reason, QWidget* field) {
        set_status(reason);
        field->setFocus(Qt::OtherFocusReason);
        return false;
    };
    const int row = lst_Invoices->currentRow();
    if (row < 0)
        return refuse(QStringLiteral("No Invoice selected"), lst_Invoices);
    receipt.invoice_id = entry_id(lst_Invoices, row);
    if (receipt.invoice_id == 0)
        return refuse(QStringLiteral("Invalid Invoice Selected"), lst_Invoices);
    if (txt_Amount->text().trimmed().isEmpty() || !money_of(txt_Amount->text(), receipt.amount))
        return refuse(QStringLiteral("Invalid Amount"), txt_Amount);
    receipt.method = cmb_Method->currentText();
    receipt.notes = txt_Pay_Notes->text();
    const bool is_date = vb::CDate(txt_Date->text(), receipt.date);
    engine::Err().Clear();
    if (!is_date)
        return refuse(QStringLiteral("Invalid Date"), txt_Date);
    return true;
}

void frm_Receipts::cmd_Update_Click()
{
    if (state() == colours::At_Rest) {
        set_status(QStringLiteral("No changes to update"));
        return;
    }
    ReceiptValues receipt;
    const int receipt_id = txt_Receipt_id->text().trimmed().toInt();
    if (receipt_id != 0) {
        const int row = lst_Receipts->currentRow();
        if (row < 0) {
            set_status(QStringLiteral("No Receipt selected"));
            return;
        }
        if (!Validate_Data(receipt) || !Update_Receipt(entry_id(lst_Receipts, row), receipt))
            return;
        set_status(QStringLiteral("Receipt updated successfully"));
    } else {
        if (!Validate_Data(receipt) || !Insert_Receipt(receipt))
            return;
        set_status(QStringLiteral("Receipt added successfully"));
    }
    Select_Receipt();
    Calculate_Overall_Posn();
}

void frm_Receipts::cmd_Delete_Click()
{
    if (Check_Progress())
        return;
    const int row = lst_Receipts->currentRow();
    if (row < 0) {
        set_status(QStringLiteral("No Receipt selected"));
        return;
    }
    const int receipt_id = entry_id(lst_Receipts, row);
    if (receipt_id <= 0) {
        App_Box(QStringLiteral("There are no receipts to select"));
        return;
    }
    if (!App_Yes(QStringLiteral("Do you really want to delete this receipt?"))) {
        set_status(QStringLiteral("Deletion cancelled"));
        return;
    }
    if (!Delete_Receipt(receipt_id))
        return;
    set_status(QStringLiteral("Deletion successful"));
    Select_Receipt();
    Calculate_Overall_Posn();
}

void frm_Receipts::cmd_Cancel_Click()
{
    if (state() == colours::At_Rest) {
        set_status(QStringLiteral("Nothing to cancel"));
        return;
    }
    if (txt_Receipt_id->text().trimmed().toInt() == 0) {
        Clear_screen();
        set_status(QStringLiteral("Addition cancelled"));
    } else {
        set_status(QStringLiteral("Change cancelled"));
        Display_Receipt();
    }
    set_state(colours::At_Rest);
    txt_Amount->setFocus(Qt::OtherFocusReason);
}

// ---- Writing off ----

void frm_Receipts::cmd_Bad_Debt_Click()
{
    if (state() != colours::At_Rest) {
        set_status(QStringLiteral("Cannot write off while changes in progress"));
        return;
    }
    if (lst_Invoices->currentRow() < 0) {
        set_status(QStringLiteral("No Invoice selected"));
        lst_Invoices->setFocus(Qt::OtherFocusReason);
        return;
    }
    engine::Currency shown;
    if (txt_Outstanding->text().trimmed().isEmpty() || !money_of(txt_Outstanding->text(), shown)) {
        set_status(QStringLiteral("Invalid Amount Outstanding"));
        return;
    }
    if (outstanding_ == engine::Currency()) {
        set_status(QStringLiteral("cannot write off a zero amount"));
        return;
    }
    if (App_Question(QStringLiteral("Do You wish to have ") + txt_Outstanding->text()
            + QStringLiteral(" Written off, by raising a discount line for the amount?"))
        != engine::answer::Yes) {
        set_status(QStringLiteral("Write off cancelled"));
        return;
    }
    const int invoice = chosen_invoice_id();
    App_Box(Insert_Bad_Debt() ? QStringLiteral("Outstanding amount written off")
                          : QStringLiteral("Write off cancelled due to error"));
    Get_Invoices();
    select_invoice(invoice);
    Calculate_Overall_Posn();
}

bool frm_Receipts::Insert_Bad_Debt()
{
    const int invoice = chosen_invoice_id();
    if (invoice <= 0) {
        set_status(QStringLiteral("Invalid Invoice Selected"));
        return false;
    }
    long long affected = 0;
    if (!::Insert_Bad_Debt(invoice, txt_Pay_Notes->text(), outstanding_, affected))
        return false;
    set_status(affected == 1 ? QStringLiteral("Line added successfully") : QStringLiteral("COULD NOT ADD LINE"));
    return affected == 1;
}

// ---- Looking for families that owe ----

void frm_Receipts::cmd_Next_Owing_Click()
{
    seek_owing(true);
}

void frm_Receipts::cmd_Prev_Owing_Click()
{
    seek_owing(false);
}

// Moves family by family, each showing its overall position, until one
// shows as owing or the end is reached.
void frm_Receipts::seek_owing(bool forwards)
{
    if (Check_Progress())
        return;
    set_status(QString());
    if (data().is_empty()) {
        App_Box(QStringLiteral("There are no families"));
        return;
    }
    HourGlass hour_glass;
    engine::Recordset* families = data().Recordset();
    bool at_end = false;
    while (!at_end) {
        forwards ? data().MoveNext() : data().MovePrevious();
        at_end = forwards ? families->at_eof() : families->at_bof();
        if (!at_end && field_colour(txt_Overall_Posn) == colours::Owing)
            break;
    }
    QString prefix;
    if (at_end) {
        prefix = words().no_more_families;
        forwards ? data().MoveLast() : data().MoveFirst();
    }
    after_move();
    set_status(prefix + txt_Status->text());
}

// ---- Leaving ----

void frm_Receipts::Setup_Next_Screen(const QString& form_name)
{
    if (!family_id_is_numeric())
        return;
    Glob_Xfer_Family_id() = family_id();
    if (!leave_allowed())
        return;
    Glob_Xfer_Invoice_id() = lst_Invoices->currentRow() < 0 ? -1 : chosen_invoice_id();
    set_state(colours::At_Rest);
    Go_To_Screen(this, form_name);
}

// Changes in progress are saved first when the user wants; then the screen
// stays, so that the outcome of the save can be seen.
bool frm_Receipts::leave_allowed()
{
    cmd_Update->setFocus(Qt::OtherFocusReason);
    QCoreApplication::processEvents();
    if (state() != colours::Highlight)
        return true;
    if (App_Question(QStringLiteral("You have made changes that") + QStringLiteral(" have not been stored in the database.")
            + QLatin1Char('\n') + QStringLiteral("Do you wish to save the changes?"))
        == engine::answer::Yes) {
        cmd_Update_Click();
        return false;
    }
    return true;
}

void frm_Receipts::mnu_Exit_Click()
{
    if (!leave_allowed())
        return;
    set_state(colours::At_Rest);
    Switch_Screen(this, nullptr, false);
}
