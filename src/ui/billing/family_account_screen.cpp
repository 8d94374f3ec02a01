#include "ui/billing/family_account_screen.h"

#include "billing/family_account.h"
#include "database/db_handling.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "shell/report_numbers.h"
#include "shell/transfer_ids.h"
#include "ui/shell/switch_screen.h"
#include "ui/toolkit/bound_fields.h"
#include "ui/toolkit/form_rows.h"
#include "ui/toolkit/screen_kit.h"

#include <QAction>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShowEvent>
#include <QVBoxLayout>

namespace {

QLineEdit* read_only_box(QWidget* parent, const QString& name)
{
    auto* box = new QLineEdit(parent);
    box->setObjectName(name);
    box->setReadOnly(true);
    return box;
}

}  // namespace

FamilyAccountScreen::FamilyAccountScreen(FamilyAccountWords words, QWidget* parent)
    : QWidget(parent, Qt::Window),
      words_(std::move(words)),
      data_(QStringLiteral("data_Families"), QStringLiteral("Error accessing Family Control "), words_.module)
{
    setObjectName(words_.form_name);
    setWindowTitle(words_.caption);
    setAttribute(Qt::WA_DeleteOnClose, false);
    colours::Rgb colour;
    Screen_Setup(this, true, colour);
    build();
    data_.set_on_reposition([this] { on_reposition(); });
}

FamilyAccountScreen::~FamilyAccountScreen() = default;

void FamilyAccountScreen::build()
{
    auto* layout = new QVBoxLayout(this);
    const ExitHelpMenu menu = add_exit_help_menu(this, layout);
    menu_bar = menu.bar;
    mnu_Exit = menu.exit;
    mnu_Help = menu.help;

    const NavigationFrame navigation = add_navigation_frame(this, layout, QStringLiteral("cmb_Names"), 24);
    frame_Navigation = navigation.frame;
    navigation_row_ = navigation.row;
    cmb_Names = navigation.names;
    cmd_First = navigation.first;
    cmd_Prev = navigation.prev;
    cmd_Next = navigation.next;
    cmd_Last = navigation.last;
    navigation_row_->insertWidget(0, label_for(cmb_Names, QStringLiteral("Select a Family"), frame_Navigation));

    auto* family_row = new QHBoxLayout;
    family_row->setSpacing(24);
    family_row->addWidget(build_family_area(), 1);
    family_row->addWidget(build_invoice_list(), 1);
    layout->addLayout(family_row, 1);

    invoice_area_ = new QVBoxLayout;
    layout->addLayout(invoice_area_, 1);

    const StatusLine status_line = add_status_line(this, layout);
    frame_status = status_line.frame;
    txt_Status = status_line.text;

    connect(cmd_First, &QPushButton::clicked, this, &FamilyAccountScreen::cmd_First_Click);
    connect(cmd_Prev, &QPushButton::clicked, this, &FamilyAccountScreen::cmd_Prev_Click);
    connect(cmd_Next, &QPushButton::clicked, this, &FamilyAccountScreen::cmd_Next_Click);
    connect(cmd_Last, &QPushButton::clicked, this, &FamilyAccountScreen::cmd_Last_Click);
    connect(cmb_Names, &QComboBox::activated, this, &FamilyAccountScreen::cmb_Names_Click);
    connect(chk_Show_Outstanding, &QCheckBox::clicked, this, &FamilyAccountScreen::chk_Show_Outstanding_Click);
    connect(lst_Invoices, &QListWidget::itemClicked, this, &FamilyAccountScreen::lst_Invoices_Click);
    connect(mnu_Exit, &QAction::triggered, this, &FamilyAccountScreen::mnu_Exit_Click);
    connect(mnu_Help, &QAction::triggered, this, &FamilyAccountScreen::mnu_Help_Click);
}

// The family as it stands in its record, not to be changed here.
QWidget* FamilyAccountScreen::build_family_area()
{
    auto* area = new QWidget(this);
    auto* grid = new QGridLayout(area);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setColumnStretch(1, 1);
    txt_Family_Name = read_only_box(area, QStringLiteral("txt_Family_Name"));
    txt_Address = read_only_box(area, QStringLiteral("txt_Address"));
    txt_Post_Code = read_only_box(area, QStringLiteral("txt_Post_Code"));
    txt_Notes = new QPlainTextEdit(area);
    txt_Notes->setObjectName(QStringLiteral("txt_Notes"));
    txt_Notes->setReadOnly(true);
    txt_Notes->setMaximumHeight(txt_Notes->fontMetrics().lineSpacing() * 4);
    txt_Pupils = read_only_box(area, QStringLiteral("txt_Pupils"));
    txt_Family_id = read_only_box(area, QStringLiteral("txt_Family_id"));
    txt_Family_id->hide();
    const std::pair<QWidget*, QString> rows[] = {
        {txt_Family_Name, QStringLiteral("Family Name :")}, {txt_Address, QStringLiteral("Address :")},
        {txt_Post_Code, QStringLiteral("Post Code :")},     {txt_Notes, QStringLiteral("Notes  :")},
        {txt_Pupils, QStringLiteral("Pupils :")},
    };
    for (const auto& [field, caption] : rows) {
        const int row = grid->rowCount();
        grid->addWidget(label_for(field, caption, area), row, 0, Qt::AlignRight | Qt::AlignTop);
        grid->addWidget(field, row, 1);
    }
    grid->setRowStretch(grid->rowCount(), 1);

    const std::pair<QWidget*, QString> bound[] = {
        {txt_Family_Name, QStringLiteral("Family_Name")}, {txt_Address, QStringLiteral("Family_Address")},
        {txt_Post_Code, QStringLiteral("Family_PostCode")}, {txt_Notes, QStringLiteral("Family_Notes")},
        {txt_Family_id, QStringLiteral("Family_id")},
    };
    for (const auto& [control, column] : bound) {
        bound_.push_back(make_bound_field(control, column));
        bound_.back()->set_read_only(true);
        data_.bind(bound_.back().get());
    }
    return area;
}

QWidget* FamilyAccountScreen::build_invoice_list()
{
    auto* area = new QWidget(this);
    auto* column = new QVBoxLayout(area);
    column->setContentsMargins(0, 0, 0, 0);
    chk_Show_Outstanding = new QCheckBox(QStringLiteral("Only Show Outstanding Invoices"), area);
    chk_Show_Outstanding->setObjectName(QStringLiteral("chk_Show_Outstanding"));
    column->addWidget(chk_Show_Outstanding);
    lst_Invoices = new QListWidget(area);
    lst_Invoices->setObjectName(QStringLiteral("lst_Invoices"));
    lst_Invoices->setAccessibleName(words_.invoices_label);
    column->addWidget(label_for(lst_Invoices, words_.invoices_label, area));
    column->addWidget(lst_Invoices, 1);
    auto* position = new QHBoxLayout;
    txt_Overall_Posn = read_only_box(area, QStringLiteral("txt_Overall_Posn"));
    txt_Overall_Posn->setAlignment(Qt::AlignRight);
    position->addWidget(label_for(txt_Overall_Posn, QStringLiteral("Overall Position :"), area));
    position->addWidget(txt_Overall_Posn, 1);
    column->addLayout(position);
    return area;
}

QAction* FamilyAccountScreen::add_menu(const QString& name, const QString& caption)
{
    return add_menu_before_help({menu_bar, mnu_Exit, mnu_Help}, name, caption);
}

QPushButton* FamilyAccountScreen::add_navigation(const QString& name, const QString& caption)
{
    QPushButton* button = make_button(frame_Navigation, name, caption);
    navigation_row_->addWidget(button);
    return button;
}

void FamilyAccountScreen::Setup_Controls()
{
    HourGlass hour_glass;
    if (!data_.Refresh(Current_Db(), QStringLiteral("Qry_Select_Family_Details")))
        return;
    Setup_List();
    after_move();
}

// ---- Events ----

void FamilyAccountScreen::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous())
        Activate_When_Shown(this, [this] { Form_Activate(); });
}

void FamilyAccountScreen::closeEvent(QCloseEvent* event)
{
    if (Close_Box_Is_Exit(this, event, [this] { mnu_Exit_Click(); }))
        return;
    data_.Close();
    event->accept();
}

void FamilyAccountScreen::Form_Activate()
{
    if (Glob_Xfer_Family_id() == -1 || data_.is_empty())
        return;
    const short index = Glob_Search_Combo(cmb_Names, Glob_Xfer_Family_id());
    if (index < 0)
        return;
    cmb_Names->setCurrentIndex(index);
    cmb_Names_Click();
}

// ---- The families ----

void FamilyAccountScreen::Setup_List()
{
    cmb_Names->clear();
    engine::Recordset* records = data_.Recordset();
    if (!records || records->RecordCount() == 0)
        return;
    std::unique_ptr<engine::Recordset> clone = records->Clone();
    if (!clone || !clone->MoveFirst())
        return;
    for (; !clone->at_eof(); clone->MoveNext()) {
        const QVariant name = clone->Fields(QStringLiteral("Family_Name"));
        if (!name.isNull())
            cmb_Names->addItem(name.toString(), clone->Fields(QStringLiteral("Family_id")).toInt());
    }
    engine::Err().Clear();
    show_list_at_current();
}

void FamilyAccountScreen::on_reposition()
{
    engine::Recordset* records = data_.Recordset();
    if (!records || records->at_bof() || records->at_eof())
        return;
    show_list_at_current();
    Get_Pupils();
    Get_Invoices();
    Calculate_Overall_Posn();
}

void FamilyAccountScreen::show_list_at_current()
{
    engine::Recordset* records = data_.Recordset();
    if (!records || records->at_bof() || records->at_eof()) {
        cmb_Names->setCurrentIndex(-1);
        return;
    }
    cmb_Names->setCurrentIndex(Glob_Search_Combo(cmb_Names, records->Fields(QStringLiteral("Family_id")).toInt()));
}

void FamilyAccountScreen::Move_Selected_Family()
{
    const int index = cmb_Names->currentIndex();
    if (data_.is_empty() || index < 0) {
        Report_Error(report::Detected, QStringLiteral("Unexpected error - titles are out of date"),
                     engine::mb::Information, words_.module, QStringLiteral("Move_Selected_Family"));
        return;
    }
    const int key = cmb_Names->itemData(index).toInt();
    if (!data_.FindFirst(QStringLiteral("Family_id = ") + QString::number(key)) || data_.NoMatch()) {
        Report_Error(report::Detected, QStringLiteral("Unexpected error - selected title could not be found"),
                     engine::mb::Information, words_.module, QStringLiteral("Move_Selected_Family"));
        return;
    }
    select_invoice(key == Glob_Xfer_Family_id() ? Glob_Xfer_Invoice_id() : -1);
}

void FamilyAccountScreen::cmb_Names_Click()
{
    if (Check_Progress()) {
        show_list_at_current();
        return;
    }
    if (data_.is_empty())
        return;
    Move_Selected_Family();
    Calculate_Overall_Posn();
    Show_Selected_Invoice();
}

bool FamilyAccountScreen::navigation_allowed()
{
    if (Check_Progress())
        return false;
    if (data_.is_empty()) {
        engine::MsgBox(QStringLiteral("There are no families"), engine::mb::OkOnly, App_Title());
        return false;
    }
    return true;
}

void FamilyAccountScreen::after_move()
{
    select_invoice(-1);
    Show_Selected_Invoice();
}

void FamilyAccountScreen::cmd_First_Click()
{
    if (!navigation_allowed())
        return;
    data_.MoveFirst();
    after_move();
}

void FamilyAccountScreen::cmd_Last_Click()
{
    if (!navigation_allowed())
        return;
    data_.MoveLast();
    after_move();
}

void FamilyAccountScreen::cmd_Next_Click()
{
    if (!navigation_allowed())
        return;
    data_.MoveNext();
    if (data_.Recordset()->at_eof()) {
        data_.MoveLast();
        after_move();
        set_status(words_.no_more_families + txt_Status->text());
        return;
    }
    after_move();
}

void FamilyAccountScreen::cmd_Prev_Click()
{
    if (!navigation_allowed())
        return;
    data_.MovePrevious();
    if (data_.Recordset()->at_bof()) {
        data_.MoveFirst();
        after_move();
        set_status(words_.no_more_families + txt_Status->text());
        return;
    }
    after_move();
}

int FamilyAccountScreen::family_id() const
{
    return txt_Family_id->text().trimmed().toInt();
}

bool FamilyAccountScreen::family_id_is_numeric() const
{
    bool numeric = false;
    txt_Family_id->text().trimmed().toInt(&numeric);
    return numeric;
}

// ---- The family's figures ----

void FamilyAccountScreen::Get_Pupils()
{
    QString names;
    if (family_id_is_numeric())
        Account_Pupil_Names(family_id(), names, words_.module);
    txt_Pupils->setText(names);
}

void FamilyAccountScreen::Get_Invoices()
{
    lst_Invoices->clear();
    QVector<AccountEntry> invoices;
    if (family_id_is_numeric())
        Account_Family_Invoices(family_id(), chk_Show_Outstanding->isChecked(), invoices, words_.module);
    if (invoices.isEmpty()) {
        show_only(lst_Invoices, QStringLiteral("(None)"));
        lst_Invoices->setCurrentRow(0);
        Clear_screen();
    } else {
        fill_list(lst_Invoices, invoices);
    }
    invoice_chosen();
}

void FamilyAccountScreen::Calculate_Overall_Posn()
{
    if (!family_id_is_numeric())
        return;
    engine::Currency position;
    if (!Account_Overall_Position(family_id(), position, words_.module))
        return;
    txt_Overall_Posn->setText(Money_Shown(position));
    set_field_colour(txt_Overall_Posn, position > engine::Currency() ? colours::Owing : colours::Pale_Yellow);
}

void FamilyAccountScreen::chk_Show_Outstanding_Click()
{
    if (Check_Progress()) {
        chk_Show_Outstanding->setChecked(!chk_Show_Outstanding->isChecked());
        return;
    }
    Get_Invoices();
    if (lst_Invoices->count() > 0) {
        select_invoice(Glob_Xfer_Invoice_id());
        Show_Selected_Invoice();
    }
}

void FamilyAccountScreen::select_invoice(int invoice_id)
{
    if (lst_Invoices->count() == 0)
        return;
    const short row = invoice_id == -1 ? short(-1) : Glob_Search_List(lst_Invoices, invoice_id);
    lst_Invoices->setCurrentRow(row < 0 ? 0 : row);
    invoice_chosen();
}

void FamilyAccountScreen::lst_Invoices_Click()
{
    if (Check_Progress())
        return;
    invoice_chosen();
    Show_Selected_Invoice();
}

int FamilyAccountScreen::chosen_invoice_id() const
{
    const int row = lst_Invoices->currentRow();
    return row < 0 ? -1 : entry_id(lst_Invoices, row);
}

// ---- Lists ----

void FamilyAccountScreen::fill_list(QListWidget* list, const QVector<AccountEntry>& entries)
{
    list->clear();
    for (const AccountEntry& entry : entries) {
        auto* item = new QListWidgetItem(entry.text, list);
        item->setData(Qt::UserRole, entry.id);
    }
}

void FamilyAccountScreen::show_only(QListWidget* list, const QString& text, int id)
{
    fill_list(list, {AccountEntry{text, id}});
}

int FamilyAccountScreen::entry_id(const QListWidget* list, int row)
{
    const QListWidgetItem* item = list->item(row);
    return item ? item->data(Qt::UserRole).toInt() : 0;
}

void FamilyAccountScreen::set_status(const QString& text)
{
    txt_Status->setText(text);
}

void FamilyAccountScreen::mnu_Help_Click()
{
    Show_Help(this, 1, words_.help_context);
}
