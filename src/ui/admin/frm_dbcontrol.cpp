#include "ui/admin/frm_dbcontrol.h"

#include "database/db_handling.h"
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
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QShowEvent>
#include <QVBoxLayout>

namespace {

QRadioButton* make_option(QWidget* parent, const QString& name, const QString& caption)
{
    auto* option = new QRadioButton(caption, parent);
    option->setObjectName(name);
    return option;
}

QLabel* make_label(QWidget* parent, const QString& name, const QString& caption)
{
    auto* label = new QLabel(caption, parent);
    label->setObjectName(name);
    return label;
}

}  // namespace

frm_DBControl::frm_DBControl(QWidget* parent) : QWidget(parent, Qt::Window)
{
    setObjectName(QStringLiteral("frm_DBControl"));
    setWindowTitle(QStringLiteral("Database Control"));
    Screen_Setup(this, true, Glob_Form_Colour());
    build_controls();
    connect_commands();
    opt_refresh->setChecked(true);
    resize(minimumSizeHint().expandedTo(QSize(720, 0)));
}

// ---- Construction ----

void frm_DBControl::build_controls()
{
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(10);
    const ExitHelpMenu menu = add_exit_help_menu(this, layout, QStringLiteral("mnu_Exit"), QStringLiteral("cmd_Help"));
    menu_bar = menu.bar;
    mnu_Exit = menu.exit;
    cmd_Help = menu.help;

    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(8);
    grid->addWidget(new QLabel(QStringLiteral("Current Database Name :"), this), 0, 0);
    lbl_Current_DB_Name = make_label(this, QStringLiteral("lbl_Current_DB_Name"), QString());
    lbl_Current_DB_Name->setTextInteractionFlags(Qt::TextSelectableByMouse);
    QFont bold = lbl_Current_DB_Name->font();
    bold.setBold(true);
    lbl_Current_DB_Name->setFont(bold);
    grid->addWidget(lbl_Current_DB_Name, 0, 1, 1, 2);

    // The four commands, one of which is offered.
    auto* options = new QHBoxLayout;
    opt_refresh = make_option(this, QStringLiteral("opt_refresh"), QStringLiteral("Refresh"));
    opt_repair = make_option(this, QStringLiteral("opt_repair"), QStringLiteral("Repair"));
    opt_backup = make_option(this, QStringLiteral("opt_backup"), QStringLiteral("backup"));
    opt_Upgrade = make_option(this, QStringLiteral("opt_Upgrade"), QStringLiteral("Upgrade"));
    for (QRadioButton* option : {opt_refresh, opt_repair, opt_backup, opt_Upgrade})
        options->addWidget(option);
    options->addStretch(1);
    grid->addLayout(options, 1, 1, 1, 2);

    // The name the command works on: the database, or the file a backup goes to.
    lbl_working = make_label(this, QStringLiteral("lbl_working"), QStringLiteral("Working Database Name :"));
    lbl_backup = make_label(this, QStringLiteral("lbl_backup"), QStringLiteral("Backup Database to File :"));
    txt_New_DB_Name = new QLineEdit(this);
    txt_New_DB_Name->setObjectName(QStringLiteral("txt_New_DB_Name"));
    txt_New_DB_Name->setMinimumWidth(txt_New_DB_Name->fontMetrics().averageCharWidth() * 50);
    lbl_working->setBuddy(txt_New_DB_Name);
    lbl_backup->setBuddy(txt_New_DB_Name);
    auto* captions = new QVBoxLayout;
    captions->setContentsMargins(0, 0, 0, 0);
    captions->addWidget(lbl_working);
    captions->addWidget(lbl_backup);
    grid->addLayout(captions, 2, 0);
    grid->addWidget(txt_New_DB_Name, 2, 1);
    cmd_Select = make_button(this, QStringLiteral("cmd_Select"), QStringLiteral("Display &Files"));
    grid->addWidget(cmd_Select, 2, 2);

    // The command offered stands where lbl_posn is.
    auto* command_row = new QHBoxLayout;
    lbl_posn = make_label(this, QStringLiteral("lbl_posn"), QString());
    lbl_posn->hide();
    command_row->addWidget(lbl_posn);
    cmd_Refresh = make_button(this, QStringLiteral("cmd_Refresh"), QStringLiteral("Refresh &Queries"));
    cmd_Repair_DB = make_button(this, QStringLiteral("cmd_Repair_DB"), QStringLiteral("&Repair Database"));
    cmd_copy = make_button(this, QStringLiteral("cmd_copy"), QStringLiteral("Create &Backup"));
    cmd_upgrade = make_button(this, QStringLiteral("cmd_upgrade"), QStringLiteral("&Upgrade"));
    for (QPushButton* command : {cmd_Refresh, cmd_Repair_DB, cmd_copy, cmd_upgrade}) {
        command->setMinimumWidth(command->fontMetrics().averageCharWidth() * 20);
        command->setAutoDefault(true);
        command_row->addWidget(command);
    }
    command_row->addStretch(1);
    grid->addLayout(command_row, 3, 1, 1, 2);
    grid->setColumnStretch(1, 1);
    layout->addLayout(grid);
    layout->addStretch(1);

    const StatusLine status_line = add_status_line(this, layout);
    frame_status = status_line.frame;
    txt_Status = status_line.text;

    choices_ = {Choice{opt_refresh, cmd_Refresh, DatabaseControl::Command::Refresh},
                Choice{opt_repair, cmd_Repair_DB, DatabaseControl::Command::Repair},
                Choice{opt_backup, cmd_copy, DatabaseControl::Command::Backup},
                Choice{opt_Upgrade, cmd_upgrade, DatabaseControl::Command::Upgrade}};
    Enter_To_Tab(txt_New_DB_Name);
}

void frm_DBControl::connect_commands()
{
    for (const Choice& choice : choices_) {
        connect(choice.option, &QRadioButton::toggled, this, [this](bool on) {
            if (on)
                show_chosen_command();
        });
        connect(choice.command, &QPushButton::clicked, this, [this, what = choice.what] { run(what); });
    }
    connect(cmd_Select, &QPushButton::clicked, this, &frm_DBControl::cmd_Select_Click);
    connect(mnu_Exit, &QAction::triggered, this, &frm_DBControl::mnu_Exit_Click);
    connect(cmd_Help, &QAction::triggered, this, [this] { Show_Help(this, help::Context, help::context::Database_Control); });
}

// ---- Events ----

void frm_DBControl::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous())
        Activate_When_Shown(this, [this] { Form_Activate(); });
}

void frm_DBControl::closeEvent(QCloseEvent* event)
{
    if (Close_Box_Is_Exit(this, event, [this] { mnu_Exit_Click(); }))
        return;
    event->accept();
}

void frm_DBControl::Form_Activate()
{
    show_chosen_command();
    lbl_Current_DB_Name->setText(Current_Db_Name());
    txt_New_DB_Name->clear();
    txt_Status->clear();
}

void frm_DBControl::show_chosen_command()
{
    for (const Choice& choice : choices_) {
        choice.command->setVisible(choice.option->isChecked());
        choice.command->setDefault(choice.option->isChecked());
    }
    lbl_backup->setVisible(opt_backup->isChecked());
    lbl_working->setVisible(!opt_backup->isChecked());
}

// ---- The commands ----

void frm_DBControl::run(DatabaseControl::Command command)
{
    LineEditBox name(txt_New_DB_Name);
    {
        HourGlass wait;
        control_.run(command, name, lbl_Current_DB_Name->text());
    }
    txt_Status->setText(control_.status);
    lbl_Current_DB_Name->setText(Current_Db_Name());
}

void frm_DBControl::cmd_Refresh_Click() { run(DatabaseControl::Command::Refresh); }
void frm_DBControl::cmd_Repair_DB_Click() { run(DatabaseControl::Command::Repair); }
void frm_DBControl::cmd_copy_Click() { run(DatabaseControl::Command::Backup); }
void frm_DBControl::cmd_upgrade_Click() { run(DatabaseControl::Command::Upgrade); }

void frm_DBControl::cmd_Select_Click()
{
    Choose_Database_File(this, txt_New_DB_Name, lbl_Current_DB_Name->text());
}

void frm_DBControl::mnu_Exit_Click()
{
    Switch_Screen(this, nullptr, false);
}
