#include "ui/admin/frm_change_defaults.h"

#include "engine/msg_box.h"
#include "shell/app_globals.h"
#include "toolkit/file_select.h"
#include "toolkit/help_pages.h"
#include "ui/shell/switch_screen.h"
#include "ui/toolkit/frm_select_file.h"
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
#include <QTimer>
#include <QVBoxLayout>

using namespace change_defaults;

namespace {

struct RowControls {
    const char* box;
    const char* old_value;
    const char* caption;
};

// By Row.
constexpr RowControls row_controls[Row_Count] = {
    {"txt_Report_dir", "lbl_old_report_dir", "Directory Name for Report Output :"},
    {"txt_Repfmt_dir", "lbl_old_Repfmt_dir", "Directory Name for Report Format Files :"},
    {"txt_RepLst_File", "lbl_old_RepLst_File", "Report Listing File :"},
    {"txt_user_dir", "lbl_old_user_dir", "Directory Name for Script files :"},
    {"txt_logfile", "lbl_old_logfile", "Log File :"},
    {"txt_CrTermInv_File", "lbl_old_CrTermInv_File", "File to Create Invoices for Terms:"},
    {"txt_CrActInv_File", "lbl_old_CrActInv_File", "File to Create Invoices for Activities :"},
    {"txt_CrCosts_File", "lbl_Old_CrCosts_File", "File to Calculate the Course Costs :"},
};

const QString shared_store = QStringLiteral("2");
const QString per_school_store = QStringLiteral("1");

}  // namespace

frm_Change_Defaults::frm_Change_Defaults(QWidget* parent) : QWidget(parent, Qt::Window)
{
    setObjectName(QStringLiteral("frm_Change_Defaults"));
    setWindowTitle(QStringLiteral("Change Default Filenames"));
    Screen_Setup(this, true, Glob_Form_Colour());
    build_controls();
    connect_commands();
    fill_from_settings();
    resize(minimumSizeHint().expandedTo(QSize(1000, 0)));
}

// ---- Construction ----

void frm_Change_Defaults::build_controls()
{
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(10);
    const ExitHelpMenu menu = add_exit_help_menu(this, layout);
    menu_bar = menu.bar;
    mnu_Exit = menu.exit;
    mnu_Help = menu.help;

    // One row a location: caption, value in force, new value, and its file selector.
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(6);
    QFont bold = font();
    bold.setBold(true);
    for (const auto& [column, heading] : {std::pair{1, "Current Values"}, std::pair{2, "New Values"}}) {
        auto* label = new QLabel(QString::fromLatin1(heading), this);
        label->setFont(bold);
        grid->addWidget(label, 0, column);
    }
    const int text_width = fontMetrics().averageCharWidth() * 36;
    for (int row = 0; row < Row_Count; ++row) {
        const RowControls& names = row_controls[row];
        auto* caption = new QLabel(QString::fromLatin1(names.caption), this);
        lbl_old[row] = new QLabel(this);
        lbl_old[row]->setObjectName(QString::fromLatin1(names.old_value));
        lbl_old[row]->setTextInteractionFlags(Qt::TextSelectableByMouse);
        lbl_old[row]->setMinimumWidth(text_width);
        lbl_old[row]->setAccessibleName(QStringLiteral("Current Values ") + caption->text());
        txt[row] = new QLineEdit(this);
        txt[row]->setObjectName(QString::fromLatin1(names.box));
        txt[row]->setMinimumWidth(text_width);
        txt[row]->setAccessibleName(QStringLiteral("New Values ") + caption->text());
        caption->setBuddy(txt[row]);
        cmd_Select[row] = make_button(this, QStringLiteral("cmd_Select"), QStringLiteral("Display Files"));
        cmd_Select[row]->setProperty("index", row);
        grid->addWidget(caption, row + 1, 0, Qt::AlignRight | Qt::AlignVCenter);
        grid->addWidget(lbl_old[row], row + 1, 1);
        grid->addWidget(txt[row], row + 1, 2);
        grid->addWidget(cmd_Select[row], row + 1, 3);
        txt[row]->installEventFilter(this);
        Enter_To_Tab(txt[row]);
    }
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(2, 1);
    layout->addLayout(grid);
    txt_Report_dir = txt[Report_dir];
    txt_Repfmt_dir = txt[Repfmt_dir];
    txt_RepLst_File = txt[RepLst_File];
    txt_user_dir = txt[user_dir];
    txt_logfile = txt[logfile];
    txt_CrTermInv_File = txt[CrTermInv_File];
    txt_CrActInv_File = txt[CrActInv_File];
    txt_CrCosts_File = txt[CrCosts_File];

    layout->addWidget(build_store_frame());
    layout->addStretch(1);

    auto* commands = new QHBoxLayout;
    commands->addStretch(1);
    cmd_Accept = make_button(this, QStringLiteral("cmd_Accept"), QStringLiteral("Use &New Values"));
    cmd_Reject = make_button(this, QStringLiteral("cmd_Reject"), QStringLiteral("Use Current &Values"));
    cmd_Reset = make_button(this, QStringLiteral("cmd_Reset"), QStringLiteral("&Reset Defaults"));
    cmd_Exit = make_button(this, QStringLiteral("cmd_Exit"), QStringLiteral("exit"));
    for (QPushButton* button : {cmd_Accept, cmd_Reject, cmd_Reset, cmd_Exit}) {
        button->setAutoDefault(true);
        commands->addWidget(button);
    }
    layout->addLayout(commands);
}

QGroupBox* frm_Change_Defaults::build_store_frame()
{
    auto* frame = new QGroupBox(QStringLiteral("Where the files are kept"), this);
    set_frame_colour(frame, Glob_Form_Colour());
    auto* row = new QHBoxLayout(frame);
    Opt_Store_DB = new QRadioButton(QStringLiteral("Different values for each school"), frame);
    Opt_Store_DB->setObjectName(QStringLiteral("Opt_Store_DB"));
    Opt_Store_Registry = new QRadioButton(QStringLiteral("Same values for all schools"), frame);
    Opt_Store_Registry->setObjectName(QStringLiteral("Opt_Store_Registry"));
    txt_Store = new QLineEdit(frame);
    txt_Store->setObjectName(QStringLiteral("txt_Store"));
    txt_Store->hide();
    lbl_Old_Store = new QLabel(frame);
    lbl_Old_Store->setObjectName(QStringLiteral("lbl_Old_Store"));
    lbl_Old_Store->hide();
    row->addWidget(Opt_Store_DB);
    row->addWidget(Opt_Store_Registry);
    row->addStretch(1);
    return frame;
}

void frm_Change_Defaults::connect_commands()
{
    for (int row = 0; row < Row_Count; ++row) {
        const auto which = static_cast<Row>(row);
        connect(txt[row], &QLineEdit::textChanged, this, [this, which] { show_highlight(which); });
        connect(cmd_Select[row], &QPushButton::clicked, this, [this, which] { cmd_Select_Click(which); });
    }
    connect(Opt_Store_DB, &QRadioButton::clicked, this, [this] { txt_Store->setText(per_school_store); });
    connect(Opt_Store_Registry, &QRadioButton::clicked, this, [this] { txt_Store->setText(shared_store); });
    connect(cmd_Accept, &QPushButton::clicked, this, &frm_Change_Defaults::cmd_Accept_Click);
    connect(cmd_Reject, &QPushButton::clicked, this, &frm_Change_Defaults::cmd_Reject_Click);
    connect(cmd_Reset, &QPushButton::clicked, this, &frm_Change_Defaults::cmd_Reset_Click);
    connect(cmd_Exit, &QPushButton::clicked, this, &frm_Change_Defaults::cmd_Exit_Click);
    connect(mnu_Exit, &QAction::triggered, this, &frm_Change_Defaults::cmd_Exit_Click);
    connect(mnu_Help, &QAction::triggered, this, [this] { Show_Help(this, help::Context, help::context::Change_Defaults); });
}

void frm_Change_Defaults::fill_from_settings()
{
    in_force_ = In_Force();
    for (int row = 0; row < Row_Count; ++row) {
        lbl_old[row]->setText(in_force_.values[row]);
        lbl_old[row]->setToolTip(in_force_.values[row]);
        txt[row]->setText(in_force_.values[row]);
    }
    lbl_Old_Store->setText(QString::number(in_force_.store));
    txt_Store->setText(QString::number(in_force_.store));
}

// ---- Events ----

void frm_Change_Defaults::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous())
        Activate_When_Shown(this, [this] { Form_Activate(); });
}

void frm_Change_Defaults::closeEvent(QCloseEvent* event)
{
    if (Close_Box_Is_Exit(this, event, [this] { cmd_Exit_Click(); }))
        return;
    event->accept();
}

bool frm_Change_Defaults::eventFilter(QObject* watched, QEvent* event)
{
    if (!returning_focus_ && Is_Field_Left(event))
        for (int row = 0; row < Row_Count; ++row)
            if (watched == txt[row])
                value_left(static_cast<Row>(row));
    return QWidget::eventFilter(watched, event);
}

void frm_Change_Defaults::Form_Activate()
{
    Opt_Store_DB->setChecked(txt_Store->text() == per_school_store);
    Opt_Store_Registry->setChecked(txt_Store->text() == shared_store);
}

// ---- Between the widgets and the values ----

void frm_Change_Defaults::show_highlight(Row row)
{
    const bool changed = txt[row]->text() != in_force_.values[row];
    set_field_colour(txt[row], changed ? colours::Highlight : colours::At_Rest);
}

Locations frm_Change_Defaults::wanted() const
{
    Locations values;
    for (int row = 0; row < Row_Count; ++row)
        values.values[row] = txt[row]->text();
    values.store = static_cast<quint8>(txt_Store->text().toUInt());
    return values;
}

void frm_Change_Defaults::value_left(Row row)
{
    if (!Check_New_Value(row, txt[row]->text(), in_force_.values[row]))
        focus_back(txt[row]);
}

void frm_Change_Defaults::focus_back(QLineEdit* box)
{
    returning_focus_ = true;
    QTimer::singleShot(0, this, [this, box] {
        box->setFocus(Qt::OtherFocusReason);
        returning_focus_ = false;
    });
}

void frm_Change_Defaults::close_screen()
{
    Switch_Screen(this, nullptr, false);
}

// ---- The commands ----

void frm_Change_Defaults::cmd_Accept_Click()
{
    // A value can reach here unchecked (picked, or typed and the button
    // clicked at once): each changed one is checked before anything is written.
    for (int row = 0; row < Row_Count; ++row)
        if (!Check_New_Value(static_cast<Row>(row), txt[row]->text(), in_force_.values[row])) {
            focus_back(txt[row]);
            return;
        }
    bool applied = false;
    {
        HourGlass wait;
        applied = Apply_New_Values(in_force_, wanted());
    }
    if (applied)
        close_screen();
}

void frm_Change_Defaults::cmd_Reject_Click()
{
    close_screen();
}

void frm_Change_Defaults::cmd_Reset_Click()
{
    const Locations defaults = Program_Defaults();
    for (int row = 0; row < Row_Count; ++row)
        txt[row]->setText(defaults.values[row]);
}

void frm_Change_Defaults::cmd_Exit_Click()
{
    if (!(wanted() == in_force_)) {
        const int answer = engine::MsgBox(QStringLiteral("There are unsaved changes.") + QLatin1Char('\n')
                                              + QStringLiteral("Do you still wish to Exit?"),
                                          engine::mb::YesNo | engine::mb::Question, App_Title());
        if (answer != engine::answer::Yes)
            return;
    }
    close_screen();
}

void frm_Change_Defaults::cmd_Select_Click(Row row)
{
    FileSelectRecord& request = Glob_File_Select();
    request = FileSelectRecord{};
    const QString value = txt[row]->text().trimmed();
    request.Start_Path = value.isEmpty() ? in_force_.values[row] : value;
    const Kind kind = kind_of(row);
    request.Select_Directory = kind == Kind::Directory;
    request.Select_New_File = kind == Kind::Log;
    const auto [text, pattern] = Select_Filter(row);
    request.Filters[0] = {text, pattern};
    // Shown as "All Files (*)": every file, those without an extension too.
    request.Filters[1] = {QStringLiteral("All Files"), QStringLiteral("*.*")};
    request.Extension = pattern.mid(2);
    if (!frm_Select_File::Select(this))
        return;
    txt[row]->setText(kind == Kind::Directory ? request.Out_Directory : request.Out_Path);
    txt[row]->setFocus(Qt::OtherFocusReason);
}
