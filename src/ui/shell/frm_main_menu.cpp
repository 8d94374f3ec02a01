#include "ui/shell/frm_main_menu.h"

#include "database/db_handling.h"
#include "engine/msg_box.h"
#include "shell/app_globals.h"
#include "shell/file_checks.h"
#include "shell/selection_lists.h"
#include "shell/settings.h"
#include "toolkit/help_pages.h"
#include "ui/shell/screen_catalogue.h"
#include "ui/toolkit/screen_kit.h"
#include "ui/shell/switch_screen.h"

#include <QAction>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QShowEvent>
#include <QTimer>
#include <QVBoxLayout>

namespace {

QAction* add_entry(QMenu* menu, const QString& name, const QString& caption)
{
    QAction* action = menu->addAction(caption);
    action->setObjectName(name);
    return action;
}

// A frame of commands, one above the other.
QGroupBox* command_frame(QWidget* parent, const QString& name, const QString& caption)
{
    auto* frame = new QGroupBox(caption, parent);
    frame->setObjectName(name);
    auto* layout = new QVBoxLayout(frame);
    layout->setSpacing(6);
    return frame;
}

QPushButton* add_command(QGroupBox* frame, const QString& name, const QString& caption)
{
    auto* button = new QPushButton(caption, frame);
    button->setObjectName(name);
    // Enter presses the command that has the focus.
    button->setAutoDefault(true);
    button->setMinimumHeight(30);
    static_cast<QVBoxLayout*>(frame->layout())->addWidget(button);
    return button;
}

void end_frame(QGroupBox* frame)
{
    static_cast<QVBoxLayout*>(frame->layout())->addStretch(1);
}

}  // namespace

frm_Main_Menu::frm_Main_Menu(QWidget* parent) : QWidget(parent, Qt::Window)
{
    setObjectName(QStringLiteral("frm_Main_Menu"));
    setWindowTitle(QStringLiteral("QUILLARY Main Menu"));
    // Load: the screen's colours, its menu and commands, and the frames take the colour too.
    Screen_Setup(this, true, Glob_Form_Colour());
    build_menu_bar();
    build_commands();
    for (QGroupBox* frame : {frame_Pupils, frame_Courses, Frame_Activities, Frame_Invoicing, Frame_Reports, Frame_Changes})
        set_frame_colour(frame, Glob_Form_Colour());
    connect_commands();
    set_main_menu(this);
    // The layout keeps the window at least as large as the commands need.
    resize(minimumSizeHint().expandedTo(QSize(720, 480)));
}

frm_Main_Menu::~frm_Main_Menu()
{
    if (Main_Menu() == this)
        set_main_menu(nullptr);
}

void frm_Main_Menu::build_menu_bar()
{
    menu_bar = new QMenuBar(this);
    mnu_options = menu_bar->addMenu(QStringLiteral("&Options"));
    mnu_options->setObjectName(QStringLiteral("mnu_options"));
    mnu_Change_Defaults = add_entry(mnu_options, QStringLiteral("mnu_Change_Defaults"), QStringLiteral("Change &Defaults"));
    mnu_Preferences = add_entry(mnu_options, QStringLiteral("mnu_Preferences"), QStringLiteral("&Preferences"));
    mnu_options->addSeparator();
    mnu_Change_database = add_entry(mnu_options, QStringLiteral("mnu_Change_database"), QStringLiteral("&Change Database"));
    mnu_Refresh_db = add_entry(mnu_options, QStringLiteral("mnu_Refresh_db"), QStringLiteral("Re&fresh Database"));
    mnu_repair_db = add_entry(mnu_options, QStringLiteral("mnu_repair_db"), QStringLiteral("&Repair Database"));
    mnu_Backup_db = add_entry(mnu_options, QStringLiteral("mnu_Backup_db"), QStringLiteral("&Backup Database"));
    mnu_UpgradeDB = add_entry(mnu_options, QStringLiteral("mnu_UpgradeDB"), QStringLiteral("&Upgrade Database"));
    mnu_db_stats = add_entry(mnu_options, QStringLiteral("mnu_db_stats"), QStringLiteral("Database &Statistics"));
    mnu_options->addSeparator();
    mnu_View_Auditlog = add_entry(mnu_options, QStringLiteral("mnu_View_Auditlog"), QStringLiteral("&View Log"));

    mnu_Help_Head = menu_bar->addMenu(QStringLiteral("&Help"));
    mnu_Help_Head->setObjectName(QStringLiteral("mnu_Help_Head"));
    const QString help_captions[] = {QStringLiteral("How to &Get Help"), QStringLiteral("About This &Screen"),
                                     QStringLiteral("Help on &Quillary"), QStringLiteral("Windows &Help on Help")};
    for (int index = 1; index <= 4; ++index) {
        mnu_Help[index] = add_entry(mnu_Help_Head, QStringLiteral("mnu_Help"), help_captions[index - 1]);
        mnu_Help[index]->setProperty("index", index);
    }

    mnu_About = menu_bar->addAction(QStringLiteral("&About"));
    mnu_About->setObjectName(QStringLiteral("mnu_About"));
}

void frm_Main_Menu::build_commands()
{
    auto* layout = new QVBoxLayout(this);
    layout->setMenuBar(menu_bar);

    frame_Pupils = command_frame(this, QStringLiteral("frame_Pupils"), QStringLiteral("People"));
    cmd_Families = add_command(frame_Pupils, QStringLiteral("cmd_Families"), QStringLiteral("&Families"));
    cmd_Pupils = add_command(frame_Pupils, QStringLiteral("cmd_Pupils"), QStringLiteral("&Pupils"));
    cmd_Import = add_command(frame_Pupils, QStringLiteral("cmd_Import"), QStringLiteral("&Import Pupils"));
    cmd_Teachers = add_command(frame_Pupils, QStringLiteral("cmd_Teachers"), QStringLiteral("&Teachers"));
    end_frame(frame_Pupils);

    frame_Courses = command_frame(this, QStringLiteral("frame_Courses"), QStringLiteral("Courses"));
    cmd_Courses = add_command(frame_Courses, QStringLiteral("cmd_Courses"), QStringLiteral("&Courses"));
    cmd_Reg_Course = add_command(frame_Courses, QStringLiteral("cmd_Reg_Course"), QStringLiteral("Course Re&gister"));
    cmd_Dates = add_command(frame_Courses, QStringLiteral("cmd_Dates"), QStringLiteral("Term &Dates"));
    end_frame(frame_Courses);

    Frame_Activities = command_frame(this, QStringLiteral("Frame_Activities"), QStringLiteral("Activities"));
    cmd_Exam = add_command(Frame_Activities, QStringLiteral("cmd_Exam"), QStringLiteral("&Activities"));
    cmd_Exam_Dates = add_command(Frame_Activities, QStringLiteral("cmd_Exam_Dates"), QStringLiteral("Activity Dates"));
    cmd_Exam_Register =
        add_command(Frame_Activities, QStringLiteral("cmd_Exam_Register"), QStringLiteral("Activity Register"));
    cmd_Exam_Times = add_command(Frame_Activities, QStringLiteral("cmd_Exam_Times"), QStringLiteral("&Exam Times"));
    cmd_Exam_Results = add_command(Frame_Activities, QStringLiteral("cmd_Exam_Results"), QStringLiteral("Results"));
    end_frame(Frame_Activities);

    Frame_Invoicing = command_frame(this, QStringLiteral("Frame_Invoicing"), QStringLiteral("Invoicing"));
    cmd_Auto_Invoice =
        add_command(Frame_Invoicing, QStringLiteral("cmd_Auto_Invoice"), QStringLiteral("A&utomated Invoices"));
    cmd_Invoices = add_command(Frame_Invoicing, QStringLiteral("cmd_Invoices"), QStringLiteral("Ma&nual  Invoices"));
    cmd_Receipts = add_command(Frame_Invoicing, QStringLiteral("cmd_Receipts"), QStringLiteral("Mone&y Received"));
    end_frame(Frame_Invoicing);

    Frame_Reports = command_frame(this, QStringLiteral("Frame_Reports"), QStringLiteral("Reports and Database"));
    cmd_Reports = add_command(Frame_Reports, QStringLiteral("cmd_Reports"), QStringLiteral("&Run Reports"));
    cmd_Select_Parameters =
        add_command(Frame_Reports, QStringLiteral("cmd_Select_Parameters"), QStringLiteral("Report   &Selections"));
    cmd_Standard_Text = add_command(Frame_Reports, QStringLiteral("cmd_Standard_Text"), QStringLiteral("Report &Messages"));
    cmd_Change_Database =
        add_command(Frame_Reports, QStringLiteral("cmd_Change_Database"), QStringLiteral("Change Data&base"));
    cmd_exit = add_command(Frame_Reports, QStringLiteral("cmd_exit"), QStringLiteral("E&xit"));
    end_frame(Frame_Reports);

    Frame_Changes = new QGroupBox(QStringLiteral("Changes to Registers"), this);
    Frame_Changes->setObjectName(QStringLiteral("Frame_Changes"));
    auto* changes = new QVBoxLayout(Frame_Changes);
    Opt_No_List = new QRadioButton(QStringLiteral("Ignore"), Frame_Changes);
    Opt_No_List->setObjectName(QStringLiteral("Opt_No_List"));
    Opt_Save_List = new QRadioButton(QStringLiteral("make a list of pupils"), Frame_Changes);
    Opt_Save_List->setObjectName(QStringLiteral("Opt_Save_List"));
    changes->addWidget(Opt_No_List);
    changes->addWidget(Opt_Save_List);
    changes->addStretch(1);

    auto* grid = new QGridLayout;
    grid->setSpacing(12);
    grid->addWidget(frame_Pupils, 0, 0);
    grid->addWidget(frame_Courses, 0, 1);
    grid->addWidget(Frame_Activities, 0, 2);
    grid->addWidget(Frame_Invoicing, 1, 0);
    grid->addWidget(Frame_Reports, 1, 1);
    grid->addWidget(Frame_Changes, 1, 2);
    for (int column = 0; column < 3; ++column)
        grid->setColumnStretch(column, 1);
    layout->addLayout(grid, 1);

    auto* database = new QHBoxLayout;
    lbl_Current_DB = new QLabel(QStringLiteral("Current Database Name :"), this);
    lbl_Current_DB->setObjectName(QStringLiteral("lbl_Current_DB"));
    lbl_Current_DB_Name = new QLabel(this);
    lbl_Current_DB_Name->setObjectName(QStringLiteral("lbl_Current_DB_Name"));
    QFont bold = lbl_Current_DB_Name->font();
    bold.setBold(true);
    lbl_Current_DB_Name->setFont(bold);
    database->addWidget(lbl_Current_DB);
    database->addWidget(lbl_Current_DB_Name, 1);
    layout->addLayout(database);
}

void frm_Main_Menu::connect_commands()
{
    const std::pair<QPushButton*, const char*> commands[] = {
        {cmd_Pupils, "frm_Pupil"},
        {cmd_Import, "frm_Pupil_Import"},
        {cmd_Teachers, "frm_Teachers"},
        {cmd_Courses, "frm_Courses"},
        {cmd_Reg_Course, "frm_Register"},
        {cmd_Dates, "frm_Dates"},
        {cmd_Exam, "frm_Exam"},
        {cmd_Exam_Dates, "frm_Activity_Dates"},
        {cmd_Exam_Register, "frm_ExamRegister"},
        {cmd_Exam_Times, "frm_ExamList"},
        {cmd_Exam_Results, "frm_ExamTimes"},
        {cmd_Auto_Invoice, "frm_Auto_Invoice"},
        {cmd_Invoices, "frm_Invoices"},
        {cmd_Receipts, "frm_Receipts"},
        {cmd_Reports, "frm_Reports"},
        {cmd_Select_Parameters, "frm_Report_Params"},
        {cmd_Standard_Text, "frm_Standard_Text"},
        {cmd_Change_Database, "frm_DBChange"},
    };
    for (const auto& [button, form] : commands)
        connect(button, &QPushButton::clicked, this, [this, form = QString::fromLatin1(form)] { open(form); });
    connect(cmd_Families, &QPushButton::clicked, this, &frm_Main_Menu::cmd_Families_Click);
    connect(cmd_exit, &QPushButton::clicked, this, &frm_Main_Menu::cmd_exit_Click);

    const std::tuple<QAction*, const char*, const char*> entries[] = {
        {mnu_Change_Defaults, "frm_Change_Defaults", ""},
        {mnu_Preferences, "frm_Preferences", ""},
        {mnu_Change_database, "frm_DBChange", ""},
        {mnu_Refresh_db, "frm_DBControl", "opt_refresh"},
        {mnu_repair_db, "frm_DBControl", "opt_repair"},
        {mnu_Backup_db, "frm_DBControl", "opt_backup"},
        {mnu_UpgradeDB, "frm_DBControl", "opt_Upgrade"},
        {mnu_db_stats, "frm_db_stats", ""},
        {mnu_View_Auditlog, "frm_auditlog", ""},
        {mnu_About, "frm_About", ""},
    };
    for (const auto& [action, form, option] : entries)
        connect(action, &QAction::triggered, this, [this, form = QString::fromLatin1(form), option = QString::fromLatin1(option)] {
            open(form, option);
        });

    connect(mnu_Help[1], &QAction::triggered, this, [this] { Show_Help(this, help::Context, help::context::How_To_Get_Help); });
    connect(mnu_Help[2], &QAction::triggered, this, [this] { Show_Help(this, help::Context, help::context::Main_Menu); });
    connect(mnu_Help[3], &QAction::triggered, this, [this] { Show_Help(this, help::Contents, 0); });
    connect(mnu_Help[4], &QAction::triggered, this, [this] { Show_Help(this, help::Help_On_Help, 0); });

    // Programmatic checks don't click, so setting the options at Activate runs neither.
    connect(Opt_No_List, &QRadioButton::clicked, this, [] { Glob_Keep_Changed_List() = false; });
    connect(Opt_Save_List, &QRadioButton::clicked, this, [] {
        Glob_Keep_Changed_List() = true;
        Changed_Pupils().reset();
    });
}

void frm_Main_Menu::open(const QString& form_name, const QString& option)
{
    Go_To_Screen(this, form_name, [&option](QWidget* screen) {
        if (option.isEmpty())
            return;
        if (auto* choice = screen->findChild<QRadioButton*>(option))
            choice->setChecked(true);
    });
}

void frm_Main_Menu::cmd_Families_Click()
{
    // The families screen always opens at its first record from here.
    if (QWidget* families = Load_Screen(QStringLiteral("frm_Family")))
        if (auto* xfer = families->findChild<QLineEdit*>(QStringLiteral("txt_Xfer_Id")))
            xfer->clear();
    open(QStringLiteral("frm_Family"));
}

void frm_Main_Menu::Open_Screen(int which)
{
    switch (which) {
    case 0: open(QStringLiteral("frm_Invoices")); break;
    case 1: open(QStringLiteral("frm_Receipts")); break;
    case 2: open(QStringLiteral("frm_Pupil")); break;
    default: break;
    }
}

void frm_Main_Menu::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous())
        Activate_When_Shown(this, [this] { Form_Activate(); });
}

void frm_Main_Menu::Form_Activate()
{
    if (Abort_Flag()) {
        QTimer::singleShot(0, this, [this] { Main_End_Prog(this); });
        return;
    }
    const QString default_database = Settings().default_database.trimmed();
    if (!Current_Db_Name().isEmpty() && !default_database.isEmpty()) {
        QString drive, folder, file, extension;
        Split_Path(default_database, drive, folder, file, extension);
        lbl_Current_DB_Name->setText(file);
        cmd_Change_Database->setDefault(false);
    } else {
        // Without a database, Enter leads the user to choose one.
        lbl_Current_DB_Name->clear();
        cmd_Change_Database->setDefault(true);
        cmd_Change_Database->setFocus(Qt::OtherFocusReason);
    }
    Frame_Changes->setVisible(true);
    Frame_Invoicing->setVisible(true);
    Opt_No_List->setChecked(!Glob_Keep_Changed_List());
    Opt_Save_List->setChecked(Glob_Keep_Changed_List());
}

void frm_Main_Menu::keyPressEvent(QKeyEvent* event)
{
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && cmd_Change_Database->isDefault()) {
        cmd_Change_Database->click();
        return;
    }
    QWidget::keyPressEvent(event);
}

void frm_Main_Menu::cmd_exit_Click()
{
    exit_requested_ = true;
    close();
    exit_requested_ = false;
}

void frm_Main_Menu::closeEvent(QCloseEvent* event)
{
    if (is_unloading(this)) {
        event->accept();
        return;
    }
    Show_Help(this, help::Quit, 0);
    if (exit_requested_ && !Abort_Flag()
        && engine::MsgBox(QStringLiteral("Have you finished working with QUILLARY?"),
                          engine::mb::YesNo | engine::mb::Question, App_Title())
               != engine::answer::Yes) {
        event->ignore();
        return;
    }
    event->accept();
    Main_End_Prog(this);
}
