#include "ui/billing/frm_auto_invoice.h"

#include "engine/msg_box.h"
#include "shell/app_globals.h"
#include "shell/settings.h"
#include "toolkit/file_select.h"
#include "toolkit/help_pages.h"
#include "ui/shell/screen_catalogue.h"
#include "ui/shell/switch_screen.h"
#include "ui/toolkit/frm_select_file.h"
#include "ui/toolkit/screen_kit.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QShowEvent>
#include <QVBoxLayout>

namespace {

constexpr colours::Rgb invoicing_green{0, 128, 0};
constexpr colours::Rgb deleting_pink = colours::Owing;
constexpr colours::Rgb scripts_yellow = colours::Pale_Yellow;

QGroupBox* make_frame(QWidget* parent, const QString& name, const QString& caption, const colours::Rgb& colour)
{
    auto* frame = new QGroupBox(caption, parent);
    frame->setObjectName(name);
    set_frame_colour(frame, colour);
    return frame;
}

QPushButton* command_button(QWidget* parent, const QString& name, const QString& caption)
{
    QPushButton* button = make_button(parent, name, caption);
    // Enter presses the command that has the focus.
    button->setAutoDefault(true);
    button->setMinimumHeight(30);
    return button;
}

// A frame of two commands side by side.
void two_commands(QGroupBox* frame, QPushButton* first, QPushButton* second)
{
    auto* layout = new QHBoxLayout(frame);
    layout->setSpacing(10);
    layout->addWidget(first, 1);
    layout->addWidget(second, 1);
}

QLabel* make_label(QWidget* parent, const QString& name, const QString& caption = QString())
{
    auto* label = new QLabel(caption, parent);
    label->setObjectName(name);
    return label;
}

}  // namespace

frm_Auto_Invoice::frm_Auto_Invoice(QWidget* parent) : QWidget(parent, Qt::Window)
{
    setObjectName(QStringLiteral("frm_Auto_Invoice"));
    setWindowTitle(QStringLiteral("Automated Invoicing"));
    Screen_Setup(this, true, Glob_Form_Colour());
    build_controls();
    connect_commands();
    show_state();
}

frm_Auto_Invoice::~frm_Auto_Invoice() = default;

// ---- Construction ----

void frm_Auto_Invoice::build_controls()
{
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(10);

    const ExitHelpMenu menu = add_exit_help_menu(this, layout);
    menu_bar = menu.bar;
    mnu_Exit = menu.exit;
    mnu_Help = menu.help;
    mnu_Criteria = add_menu_before_help(menu, QStringLiteral("mnu_Criteria"), QStringLiteral("&Criteria"));
    mnu_Script = add_menu_before_help(menu, QStringLiteral("mnu_Script"), QStringLiteral("&Script"));
    mnu_View_Errors = add_menu_before_help(menu, QStringLiteral("mnu_View_Errors"), QStringLiteral("&Errors"));

    // The left column: whom to invoice, then the commands, the deleting ones last.
    Frame_Which_Pupils = make_frame(this, QStringLiteral("Frame_Which_Pupils"), QStringLiteral("Which set of Pupils?"),
                                    Glob_Form_Colour());
    auto* which = new QVBoxLayout(Frame_Which_Pupils);
    Opt_Saved_List = new QRadioButton(QStringLiteral("Changed course/activity"), Frame_Which_Pupils);
    Opt_Saved_List->setObjectName(QStringLiteral("Opt_Saved_List"));
    Opt_Selected = new QRadioButton(QStringLiteral("Selected in Criteria"), Frame_Which_Pupils);
    Opt_Selected->setObjectName(QStringLiteral("Opt_Selected"));
    which->addWidget(Opt_Saved_List);
    which->addWidget(Opt_Selected);

    frame_Inserts = make_frame(this, QStringLiteral("frame_Inserts"), QStringLiteral("Invoice Families"), invoicing_green);
    {
        // The frame's caption stays readable on the dark green.
        QPalette palette = frame_Inserts->palette();
        palette.setColor(QPalette::WindowText, Qt::white);
        frame_Inserts->setPalette(palette);
        QFont bold = frame_Inserts->font();
        bold.setBold(true);
        frame_Inserts->setFont(bold);
    }
    cmd_Insert_Term = command_button(frame_Inserts, QStringLiteral("cmd_Insert_Term"), QStringLiteral("Term Dates"));
    cmd_Insert_Activities =
        command_button(frame_Inserts, QStringLiteral("cmd_Insert_Activities"), QStringLiteral("Activity Dates"));
    for (QPushButton* button : {cmd_Insert_Term, cmd_Insert_Activities}) {
        QFont normal = button->font();
        normal.setBold(false);
        button->setFont(normal);
    }
    two_commands(frame_Inserts, cmd_Insert_Term, cmd_Insert_Activities);

    frame_Delete_Selected = make_frame(this, QStringLiteral("frame_Delete_Selected"),
                                       QStringLiteral("Delete Selected Family Invoices Only"), deleting_pink);
    cmd_Del_Sel_Terms = command_button(frame_Delete_Selected, QStringLiteral("cmd_Del_Sel_Terms"), QStringLiteral("Term Dates"));
    cmd_Del_Sel_Activities =
        command_button(frame_Delete_Selected, QStringLiteral("cmd_Del_Sel_Activities"), QStringLiteral("Activity Dates"));
    two_commands(frame_Delete_Selected, cmd_Del_Sel_Terms, cmd_Del_Sel_Activities);

    frame_Deletes =
        make_frame(this, QStringLiteral("frame_Deletes"), QStringLiteral("Delete Invoices and Receipts :"), deleting_pink);
    cmd_Del_All = command_button(frame_Deletes, QStringLiteral("cmd_Del_All"), QStringLiteral("All"));
    cmd_Del_Paid_All = command_button(frame_Deletes, QStringLiteral("cmd_Del_Paid_All"), QStringLiteral("All Paid"));
    two_commands(frame_Deletes, cmd_Del_All, cmd_Del_Paid_All);

    auto* left = new QVBoxLayout;
    left->setSpacing(10);
    left->addWidget(Frame_Which_Pupils);
    left->addWidget(frame_Inserts);
    left->addWidget(frame_Delete_Selected);
    left->addWidget(frame_Deletes);
    left->addStretch(1);

    // The right column: what the criteria chose, and the pupils they name.
    frame_Params =
        make_frame(this, QStringLiteral("frame_Params"), QStringLiteral("Selected Criteria"), Glob_Form_Colour());
    auto* params = new QGridLayout(frame_Params);
    params->setHorizontalSpacing(12);
    params->setVerticalSpacing(6);
    const std::array<QString, AutoInvoicing::Criteria_Count> captions = {
        QStringLiteral("Term Dates"), QStringLiteral("Courses"), QStringLiteral("Activities"), QStringLiteral("Pupils"),
        QStringLiteral("Activity Dates")};
    for (int index = 0; index < AutoInvoicing::Criteria_Count; ++index) {
        lbl_Reqmnt[index] = make_label(frame_Params, QStringLiteral("lbl_Reqmnt_%1").arg(index), captions[index]);
        lbl_All[index] = make_label(frame_Params, QStringLiteral("lbl_All_%1").arg(index));
        QFont bold = lbl_All[index]->font();
        bold.setBold(true);
        lbl_All[index]->setFont(bold);
        lbl_All[index]->setMinimumWidth(lbl_All[index]->fontMetrics().horizontalAdvance(QStringLiteral("Some")) + 4);
        lbl_All[index]->setAccessibleName(captions[index]);
    }
    lbl_Term_Name = make_label(frame_Params, QStringLiteral("lbl_Term_Name"));
    lbl_Activity_Date = make_label(frame_Params, QStringLiteral("lbl_Activity_Date"));
    // On the screen the terms come first and the pupils second, as a run reads them.
    const int shown_order[] = {AutoInvoicing::Terms, AutoInvoicing::Pupils, AutoInvoicing::Courses,
                               AutoInvoicing::Activities, AutoInvoicing::Activity_Dates};
    int row = 0;
    for (int index : shown_order) {
        params->addWidget(lbl_Reqmnt[index], row, 0);
        params->addWidget(lbl_All[index], row, 1);
        if (index == AutoInvoicing::Terms)
            params->addWidget(lbl_Term_Name, row, 2);
        else if (index == AutoInvoicing::Activity_Dates)
            params->addWidget(lbl_Activity_Date, row, 2);
        ++row;
    }
    params->setColumnStretch(2, 1);

    frame_Changed = make_frame(this, QStringLiteral("frame_Changed"), QStringLiteral("Pupil List"), Glob_Form_Colour());
    auto* changed = new QVBoxLayout(frame_Changed);
    lst_Selected_Pupils = new QListWidget(frame_Changed);
    lst_Selected_Pupils->setObjectName(QStringLiteral("lst_Selected_Pupils"));
    lst_Selected_Pupils->setAccessibleName(frame_Changed->title());
    lst_Selected_Pupils->setSelectionMode(QAbstractItemView::NoSelection);
    lst_Selected_Pupils->setMinimumHeight(lst_Selected_Pupils->fontMetrics().height() * 6);
    changed->addWidget(lst_Selected_Pupils);

    auto* right = new QVBoxLayout;
    right->setSpacing(10);
    right->addWidget(frame_Params);
    right->addWidget(frame_Changed, 1);

    auto* columns = new QHBoxLayout;
    columns->setSpacing(12);
    columns->addLayout(left, 1);
    columns->addLayout(right, 1);
    layout->addLayout(columns, 1);

    // Any script of the user's choosing, out of sight until asked for.
    frame_Scripts = make_frame(this, QStringLiteral("frame_Scripts"), QStringLiteral("Scripts"), scripts_yellow);
    auto* scripts = new QHBoxLayout(frame_Scripts);
    txt_Filename = new QLineEdit(frame_Scripts);
    txt_Filename->setObjectName(QStringLiteral("txt_Filename"));
    txt_Filename->setMinimumWidth(txt_Filename->fontMetrics().averageCharWidth() * 30);
    auto* file_label = new QLabel(QStringLiteral("File Name :"), frame_Scripts);
    file_label->setBuddy(txt_Filename);
    cmd_Script_Select = command_button(frame_Scripts, QStringLiteral("cmd_Script_Select"), QStringLiteral("&View Files"));
    cmd_Do = command_button(frame_Scripts, QStringLiteral("cmd_Do"), QStringLiteral("&Run Script"));
    scripts->addWidget(file_label);
    scripts->addWidget(txt_Filename, 1);
    scripts->addWidget(cmd_Script_Select);
    scripts->addWidget(cmd_Do);
    frame_Scripts->hide();
    layout->addWidget(frame_Scripts);

    const StatusLine status_line = add_status_line(this, layout);
    frame_status = status_line.frame;
    txt_Status = status_line.text;

    resize(minimumSizeHint().expandedTo(QSize(760, 500)));
}

void frm_Auto_Invoice::connect_commands()
{
    connect(cmd_Insert_Term, &QPushButton::clicked, this, &frm_Auto_Invoice::cmd_Insert_Term_Click);
    connect(cmd_Insert_Activities, &QPushButton::clicked, this, &frm_Auto_Invoice::cmd_Insert_Activities_Click);
    connect(cmd_Del_Sel_Terms, &QPushButton::clicked, this, &frm_Auto_Invoice::cmd_Del_Sel_Terms_Click);
    connect(cmd_Del_Sel_Activities, &QPushButton::clicked, this, &frm_Auto_Invoice::cmd_Del_Sel_Activities_Click);
    connect(cmd_Del_All, &QPushButton::clicked, this, &frm_Auto_Invoice::cmd_Del_All_Click);
    connect(cmd_Del_Paid_All, &QPushButton::clicked, this, &frm_Auto_Invoice::cmd_Del_Paid_All_Click);
    connect(cmd_Do, &QPushButton::clicked, this, &frm_Auto_Invoice::cmd_Do_Click);
    connect(cmd_Script_Select, &QPushButton::clicked, this, &frm_Auto_Invoice::cmd_Script_Select_Click);
    // Only the user's click changes the set of pupils; the screen setting an option doesn't.
    connect(Opt_Saved_List, &QRadioButton::clicked, this, &frm_Auto_Invoice::Opt_Saved_List_Click);
    connect(Opt_Selected, &QRadioButton::clicked, this, &frm_Auto_Invoice::Opt_Selected_Click);
    connect(mnu_Exit, &QAction::triggered, this, &frm_Auto_Invoice::mnu_Exit_Click);
    connect(mnu_Criteria, &QAction::triggered, this, &frm_Auto_Invoice::mnu_Criteria_Click);
    connect(mnu_Script, &QAction::triggered, this, &frm_Auto_Invoice::mnu_Script_Click);
    connect(mnu_View_Errors, &QAction::triggered, this, &frm_Auto_Invoice::mnu_View_Errors_Click);
    connect(mnu_Help, &QAction::triggered, this, &frm_Auto_Invoice::mnu_Help_Click);
}

// ---- Events ----

void frm_Auto_Invoice::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    // Each time the screen comes back, from the menu or from the criteria.
    if (!event->spontaneous())
        Activate_When_Shown(this, [this] { Form_Activate(); });
}

void frm_Auto_Invoice::closeEvent(QCloseEvent* event)
{
    if (Close_Box_Is_Exit(this, event, [this] { mnu_Exit_Click(); }))
        return;
    invoicing_.unload();
    event->accept();
}

void frm_Auto_Invoice::Form_Activate()
{
    {
        HourGlass wait;
        invoicing_.prepare();
    }
    show_state();
}

// ---- Between the screen and the invoicing ----

void frm_Auto_Invoice::show_state()
{
    txt_Status->setText(invoicing_.status);
    txt_Filename->setText(invoicing_.filename);
    lst_Selected_Pupils->clear();
    lst_Selected_Pupils->addItems(invoicing_.pupil_list);
    for (int index = 0; index < AutoInvoicing::Criteria_Count; ++index)
        lbl_All[index]->setText(invoicing_.amounts[index]);
    lbl_Term_Name->setText(invoicing_.term_name);
    lbl_Activity_Date->setText(invoicing_.activity_date);
    Opt_Saved_List->setEnabled(invoicing_.changed_list_enabled);
    const bool changed_list = invoicing_.pupil_set == AutoInvoicing::PupilSet::ChangedList;
    Opt_Saved_List->setChecked(changed_list);
    Opt_Selected->setChecked(!changed_list);
}

template <typename Command>
void frm_Auto_Invoice::run(Command command)
{
    // A file name typed into the box is the one a script run uses.
    invoicing_.filename = txt_Filename->text();
    {
        HourGlass wait;
        command();
    }
    show_state();
}

void frm_Auto_Invoice::cmd_Insert_Term_Click()
{
    run([this] { invoicing_.insert_term(); });
}

void frm_Auto_Invoice::cmd_Insert_Activities_Click()
{
    run([this] { invoicing_.insert_activities(); });
}

void frm_Auto_Invoice::cmd_Del_Sel_Terms_Click()
{
    run([this] { invoicing_.delete_selected_terms(); });
}

void frm_Auto_Invoice::cmd_Del_Sel_Activities_Click()
{
    run([this] { invoicing_.delete_selected_activities(); });
}

void frm_Auto_Invoice::cmd_Del_All_Click()
{
    run([this] { invoicing_.delete_all(); });
}

void frm_Auto_Invoice::cmd_Del_Paid_All_Click()
{
    run([this] { invoicing_.delete_paid(); });
}

void frm_Auto_Invoice::cmd_Do_Click()
{
    run([this] { invoicing_.run_script(); });
}

void frm_Auto_Invoice::cmd_Script_Select_Click()
{
    FileSelectRecord& request = Glob_File_Select();
    request = FileSelectRecord{};
    // Open where the script on show lies, else among the school's scripts.
    const QString shown = txt_Filename->text().trimmed();
    request.Start_Path = shown.isEmpty() ? Settings().script_dir : shown;
    request.Filters[0] = {QStringLiteral("SQL scripts"), QStringLiteral("*.") + QStringLiteral("sql")};
    request.Filters[1] = {QStringLiteral("All Files"), QStringLiteral("*.*")};
    request.Extension = QStringLiteral("sql");
    if (frm_Select_File::Select(this))
        txt_Filename->setText(request.Out_Path);
}

void frm_Auto_Invoice::Opt_Saved_List_Click()
{
    invoicing_.choose_changed_list();
    show_state();
}

void frm_Auto_Invoice::Opt_Selected_Click()
{
    invoicing_.choose_selected();
    show_state();
}

void frm_Auto_Invoice::mnu_Exit_Click()
{
    Switch_Screen(this, nullptr, false);
}

void frm_Auto_Invoice::open(const QString& form_name)
{
    Go_To_Screen(this, form_name);
}

void frm_Auto_Invoice::mnu_Criteria_Click()
{
    // The criteria screen fills the selection lists; coming back here prepares afresh from them.
    open(QStringLiteral("frm_Report_Params"));
}

void frm_Auto_Invoice::mnu_Script_Click()
{
    frame_Scripts->show();
    txt_Filename->setFocus(Qt::OtherFocusReason);
}

void frm_Auto_Invoice::mnu_View_Errors_Click()
{
    open(QStringLiteral("frm_auditlog"));
}

void frm_Auto_Invoice::mnu_Help_Click()
{
    Show_Help(this, help::Context, help::context::Automated_Invoices);
}
