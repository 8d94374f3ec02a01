#include "ui/admin/frm_dbchange.h"

#include "shell/app_globals.h"
#include "toolkit/help_pages.h"
#include "ui/admin/database_file_choice.h"
#include "ui/shell/switch_screen.h"
#include "ui/toolkit/line_edit_box.h"
#include "ui/toolkit/screen_kit.h"

#include <QAction>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QShowEvent>
#include <QVBoxLayout>

namespace {

QGroupBox* command_frame(QWidget* parent, const QString& caption)
{
    auto* frame = new QGroupBox(caption, parent);
    set_frame_colour(frame, Glob_Form_Colour());
    new QVBoxLayout(frame);
    return frame;
}

QPushButton* add_command(QGroupBox* frame, const QString& name, const QString& caption)
{
    QPushButton* button = make_button(frame, name, caption);
    button->setAutoDefault(true);
    frame->layout()->addWidget(button);
    return button;
}

}  // namespace

frm_DBChange::frm_DBChange(QWidget* parent) : QWidget(parent, Qt::Window)
{
    setObjectName(QStringLiteral("frm_DBChange"));
    setWindowTitle(QStringLiteral("Change Current Database"));
    Screen_Setup(this, true, Glob_Form_Colour());
    build_controls();
    connect_commands();
    resize(minimumSizeHint().expandedTo(QSize(760, 0)));
}

// ---- Construction ----

void frm_DBChange::build_controls()
{
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(10);

    const ExitHelpMenu menu = add_exit_help_menu(this, layout, QStringLiteral("mnu_Exit"), QStringLiteral("cmd_Help"));
    menu_bar = menu.bar;
    mnu_Exit = menu.exit;
    cmd_Help = menu.help;
    mnu_Delete = new QMenu(QStringLiteral("&Delete"), menu_bar);
    mnu_Delete->setObjectName(QStringLiteral("mnu_Delete"));
    mnu_Delete_Current = mnu_Delete->addAction(QStringLiteral("&Delete Current Database"));
    mnu_Delete_Current->setObjectName(QStringLiteral("mnu_Delete_Current"));
    mnu_Delete_New = mnu_Delete->addAction(QStringLiteral("Delete &New Database"));
    mnu_Delete_New->setObjectName(QStringLiteral("mnu_Delete_New"));
    menu_bar->insertMenu(cmd_Help, mnu_Delete);

    // The two names: the database in use, and the one to create, choose, copy to or merge into.
    auto* names = new QGridLayout;
    names->setHorizontalSpacing(8);
    auto* current_caption = new QLabel(QStringLiteral("Current Database Name :"), this);
    lbl_Current_DB_Name = new QLabel(this);
    lbl_Current_DB_Name->setObjectName(QStringLiteral("lbl_Current_DB_Name"));
    lbl_Current_DB_Name->setTextInteractionFlags(Qt::TextSelectableByMouse);
    QFont bold = lbl_Current_DB_Name->font();
    bold.setBold(true);
    lbl_Current_DB_Name->setFont(bold);
    auto* new_caption = new QLabel(QStringLiteral("New Database Name :"), this);
    txt_New_DB_Name = new QLineEdit(this);
    txt_New_DB_Name->setObjectName(QStringLiteral("txt_New_DB_Name"));
    txt_New_DB_Name->setMinimumWidth(txt_New_DB_Name->fontMetrics().averageCharWidth() * 50);
    new_caption->setBuddy(txt_New_DB_Name);
    cmd_Select = make_button(this, QStringLiteral("cmd_Select"), QStringLiteral("Display &Files"));
    names->addWidget(current_caption, 0, 0);
    names->addWidget(lbl_Current_DB_Name, 0, 1, 1, 2);
    names->addWidget(new_caption, 1, 0);
    names->addWidget(txt_New_DB_Name, 1, 1);
    names->addWidget(cmd_Select, 1, 2);
    names->setColumnStretch(1, 1);
    layout->addLayout(names);

    auto* frames = new QHBoxLayout;
    frames->setSpacing(12);
    frames->addWidget(build_leaving_frame(), 1);
    frames->addWidget(build_making_frame(), 1);
    frames->addWidget(build_deleting_frame(), 1);
    layout->addLayout(frames);
    layout->addStretch(1);

    const StatusLine status_line = add_status_line(this, layout);
    frame_status = status_line.frame;
    txt_Status = status_line.text;

    Enter_To_Tab(txt_New_DB_Name);
    txt_New_DB_Name->installEventFilter(this);
}

QGroupBox* frm_DBChange::build_leaving_frame()
{
    QGroupBox* frame = command_frame(this, QStringLiteral("Back to the menu"));
    cmd_Use_New = add_command(frame, QStringLiteral("cmd_Use_New"), QStringLiteral("Exit Using &New database"));
    cmd_Exit_Current =
        add_command(frame, QStringLiteral("cmd_Exit_Current"), QStringLiteral("E&xit using Current database"));
    static_cast<QVBoxLayout*>(frame->layout())->addStretch(1);
    return frame;
}

QGroupBox* frm_DBChange::build_making_frame()
{
    QGroupBox* frame = command_frame(this, QStringLiteral("Create, copy and merge"));
    cmd_CreateDB = add_command(frame, QStringLiteral("cmd_CreateDB"), QStringLiteral("Create &Empty Database"));
    cmd_copy = add_command(frame, QStringLiteral("cmd_copy"), QStringLiteral("Copy &All of Current Database"));
    cmd_Selected_Copy =
        add_command(frame, QStringLiteral("cmd_Selected_Copy"), QStringLiteral("Copy &Selection of Current Database"));
    // What a selective copy takes.
    Frame_Copy = new QGroupBox(frame);
    Frame_Copy->setObjectName(QStringLiteral("Frame_Copy"));
    set_frame_colour(Frame_Copy, Glob_Form_Colour());
    auto* choices = new QVBoxLayout(Frame_Copy);
    opt_All = new QRadioButton(QStringLiteral("All data"), Frame_Copy);
    opt_All->setObjectName(QStringLiteral("opt_All"));
    opt_Some = new QRadioButton(QStringLiteral("Pupil, course and Exam data only"), Frame_Copy);
    opt_Some->setObjectName(QStringLiteral("opt_Some"));
    opt_All->setChecked(true);
    choices->addWidget(opt_All);
    choices->addWidget(opt_Some);
    frame->layout()->addWidget(Frame_Copy);
    Cmd_Merge = add_command(frame, QStringLiteral("Cmd_Merge"), QStringLiteral("&Merge Databases"));
    static_cast<QVBoxLayout*>(frame->layout())->addStretch(1);
    return frame;
}

QGroupBox* frm_DBChange::build_deleting_frame()
{
    QGroupBox* frame = command_frame(this, QStringLiteral("Delete"));
    cmd_Delete_Current_DB =
        add_command(frame, QStringLiteral("cmd_Delete_Current_DB"), QStringLiteral("&Delete Current Database"));
    cmd_delete_new_DB = add_command(frame, QStringLiteral("cmd_delete_new_DB"), QStringLiteral("Delete Ne&w Database"));
    static_cast<QVBoxLayout*>(frame->layout())->addStretch(1);
    return frame;
}

void frm_DBChange::connect_commands()
{
    const std::pair<QPushButton*, void (frm_DBChange::*)()> commands[] = {
        {cmd_CreateDB, &frm_DBChange::cmd_CreateDB_Click},
        {cmd_Select, &frm_DBChange::cmd_Select_Click},
        {cmd_Use_New, &frm_DBChange::cmd_Use_New_Click},
        {cmd_Exit_Current, &frm_DBChange::cmd_Exit_Current_Click},
        {cmd_Delete_Current_DB, &frm_DBChange::cmd_Delete_Current_DB_Click},
        {cmd_delete_new_DB, &frm_DBChange::cmd_delete_new_DB_Click},
        {cmd_copy, &frm_DBChange::cmd_copy_Click},
        {cmd_Selected_Copy, &frm_DBChange::cmd_Selected_Copy_Click},
        {Cmd_Merge, &frm_DBChange::Cmd_Merge_Click},
    };
    for (const auto& [button, command] : commands)
        connect(button, &QPushButton::clicked, this, command);
    connect(mnu_Exit, &QAction::triggered, this, &frm_DBChange::mnu_Exit_Click);
    connect(mnu_Delete_Current, &QAction::triggered, this, &frm_DBChange::cmd_Delete_Current_DB_Click);
    connect(mnu_Delete_New, &QAction::triggered, this, &frm_DBChange::cmd_delete_new_DB_Click);
    connect(cmd_Help, &QAction::triggered, this, [this] { Show_Help(this, help::Context, help::context::Change_Database); });
}

// ---- Events ----

void frm_DBChange::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous())
        Activate_When_Shown(this, [this] { Form_Activate(); });
}

void frm_DBChange::closeEvent(QCloseEvent* event)
{
    if (Close_Box_Is_Exit(this, event, [this] { mnu_Exit_Click(); }))
        return;
    event->accept();
}

bool frm_DBChange::eventFilter(QObject* watched, QEvent* event)
{
    // A name left with blanks around it is shown as it will be used.
    if (watched == txt_New_DB_Name && Is_Field_Left(event)) {
        const QString trimmed = txt_New_DB_Name->text().trimmed();
        if (trimmed != txt_New_DB_Name->text())
            txt_New_DB_Name->setText(trimmed);
    }
    return QWidget::eventFilter(watched, event);
}

void frm_DBChange::Form_Activate()
{
    change_.show_current();
    show_state();
}

// ---- The commands ----

void frm_DBChange::run(const std::function<void()>& command)
{
    {
        HourGlass wait;
        command();
    }
    show_state();
}

void frm_DBChange::leave_if(const std::function<bool()>& command)
{
    bool leaving = false;
    run([&] { leaving = command(); });
    if (leaving)
        Switch_Screen(this, nullptr, false);
}

void frm_DBChange::show_state()
{
    txt_Status->setText(change_.status);
    lbl_Current_DB_Name->setText(change_.current_name);
}

void frm_DBChange::cmd_CreateDB_Click()
{
    LineEditBox name(txt_New_DB_Name);
    run([&] { change_.create_empty(name); });
}

void frm_DBChange::cmd_Select_Click()
{
    Choose_Database_File(this, txt_New_DB_Name, change_.current_name);
}

void frm_DBChange::cmd_Use_New_Click()
{
    LineEditBox name(txt_New_DB_Name);
    leave_if([&] { return change_.use_new(name); });
}

void frm_DBChange::cmd_Exit_Current_Click()
{
    leave_if([&] { return change_.exit_current(); });
}

void frm_DBChange::cmd_Delete_Current_DB_Click()
{
    run([&] { change_.delete_current(); });
}

void frm_DBChange::cmd_delete_new_DB_Click()
{
    LineEditBox name(txt_New_DB_Name);
    run([&] { change_.delete_new(name); });
}

void frm_DBChange::cmd_copy_Click()
{
    LineEditBox name(txt_New_DB_Name);
    run([&] { change_.copy_all(name); });
}

void frm_DBChange::cmd_Selected_Copy_Click()
{
    LineEditBox name(txt_New_DB_Name);
    run([&] { change_.copy_selection(name, opt_All->isChecked()); });
}

void frm_DBChange::Cmd_Merge_Click()
{
    LineEditBox name(txt_New_DB_Name);
    run([&] { change_.merge(name); });
}

void frm_DBChange::mnu_Exit_Click()
{
    leave_if([&] { return change_.quit(windowTitle()); });
}
