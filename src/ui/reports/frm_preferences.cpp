#include "ui/reports/frm_preferences.h"

#include "engine/currency.h"
#include "engine/msg_box.h"
#include "engine/vb_values.h"
#include "reports/personal_header.h"
#include "reports/report_generation.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "shell/locale_formats.h"
#include "shell/preferences.h"
#include "toolkit/help_pages.h"
#include "ui/shell/switch_screen.h"
#include "ui/toolkit/screen_kit.h"

#include <QAction>
#include <QCloseEvent>
#include <QDateTime>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

const QString module = QStringLiteral("fpref");

// An amount to show the machine's money format with.
const engine::Currency example_amount = engine::Currency::from_units(12345000);

QLabel* value_label(QWidget* parent, const QString& name)
{
    auto* label = new QLabel(parent);
    label->setObjectName(name);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

}  // namespace

frm_Preferences::frm_Preferences(QWidget* parent) : QWidget(parent, Qt::Window)
{
    setObjectName(QStringLiteral("frm_Preferences"));
    setWindowTitle(QStringLiteral("Preferences"));
    Screen_Setup(this, true, Glob_Form_Colour());

    // The menu; the course order beside what the machine's settings give;
    // the school's discount scripts; the commands; the status line.
    auto* layout = new QVBoxLayout(this);
    const ExitHelpMenu menu = add_exit_help_menu(this, layout);
    menu_bar = menu.bar;
    mnu_Exit = menu.exit;
    mnu_Help = menu.help;

    auto* top = new QHBoxLayout;
    top->addWidget(build_course_order());
    top->addWidget(build_locale(), 1);
    layout->addLayout(top);

    frame_Discount = new QGroupBox(QStringLiteral("Discount Schemes"), this);
    frame_Discount->setObjectName(QStringLiteral("frame_Discount"));
    auto* discount = new QVBoxLayout(frame_Discount);
    lbl_Discount = value_label(frame_Discount, QStringLiteral("lbl_Discount"));
    discount->addWidget(lbl_Discount);
    set_frame_colour(frame_Discount, Glob_Form_Colour());
    layout->addWidget(frame_Discount);

    lbl_Persnl_Header = new QLabel(QStringLiteral("There is a personalised Header available."), this);
    lbl_Persnl_Header->setObjectName(QStringLiteral("lbl_Persnl_Header"));
    layout->addWidget(lbl_Persnl_Header);
    layout->addStretch(1);

    auto* commands = new QHBoxLayout;
    cmd_Update = make_button(this, QStringLiteral("cmd_Update"), QStringLiteral("&Update"));
    cmd_Generate = make_button(this, QStringLiteral("cmd_Generate"), QStringLiteral("&Generate Reports"));
    cmd_Cancel_Generate = make_button(this, QStringLiteral("cmd_Cancel_Generate"), QStringLiteral("Cancel Generation"));
    commands->addWidget(cmd_Update);
    commands->addStretch(1);
    commands->addWidget(cmd_Generate);
    commands->addWidget(cmd_Cancel_Generate);
    layout->addLayout(commands);

    const StatusLine status = add_status_line(this, layout);
    frame_status = status.frame;
    txt_Status = status.text;

    connect(cmd_Update, &QPushButton::clicked, this, &frm_Preferences::cmd_Update_Click);
    connect(cmd_Generate, &QPushButton::clicked, this, &frm_Preferences::cmd_Generate_Click);
    connect(cmd_Cancel_Generate, &QPushButton::clicked, this, &frm_Preferences::cmd_Cancel_Generate_Click);
    connect(mnu_Exit, &QAction::triggered, this, &frm_Preferences::mnu_Exit_Click);
    connect(mnu_Help, &QAction::triggered, this, [this] { Show_Help(this, help::Context, help::context::Preferences); });

    show_settings_in_force();
    GCR_Generate_State() = generate_state::Idle;
    // Room for the commands to stand apart, and for a long discount text.
    resize(sizeHint().expandedTo(QSize(560, 0)));
}

QGroupBox* frm_Preferences::build_course_order()
{
    frame_Course_Order = new QGroupBox(QStringLiteral("Order for Courses"), this);
    frame_Course_Order->setObjectName(QStringLiteral("frame_Course_Order"));
    set_frame_colour(frame_Course_Order, Glob_Form_Colour());
    auto* options = new QVBoxLayout(frame_Course_Order);
    const QString captions[] = {QStringLiteral("List by Title"), QStringLiteral("List by Day and Time"),
                                QStringLiteral("List by Location and Title"), QStringLiteral("List by Location and Day")};
    for (int i = 0; i < static_cast<int>(opt_Course_Order.size()); ++i) {
        opt_Course_Order[i] = new QRadioButton(captions[i], frame_Course_Order);
        opt_Course_Order[i]->setObjectName(QStringLiteral("opt_Course_Order_%1").arg(i));
        options->addWidget(opt_Course_Order[i]);
    }
    return frame_Course_Order;
}

QWidget* frm_Preferences::build_locale()
{
    auto* area = new QWidget(this);
    auto* grid = new QGridLayout(area);
    grid->setColumnStretch(1, 1);
    grid->setHorizontalSpacing(16);
    lbl_Date_Order = value_label(area, QStringLiteral("lbl_Date_Order"));
    Lbl_Time = value_label(area, QStringLiteral("Lbl_Time"));
    lbl_Currency = value_label(area, QStringLiteral("lbl_Currency"));
    const std::pair<QString, QLabel*> rows[] = {{QStringLiteral("Date Order"), lbl_Date_Order},
                                                {QStringLiteral("Example time"), Lbl_Time},
                                                {QStringLiteral("Example Currency"), lbl_Currency}};
    int row = 0;
    for (const auto& [caption, value] : rows) {
        auto* label = new QLabel(caption, area);
        label->setBuddy(value);
        value->setAccessibleName(caption);
        grid->addWidget(label, row, 0);
        grid->addWidget(value, row++, 1);
    }
    grid->setRowStretch(row, 1);
    return area;
}

// Load: the course order in force, what the machine's settings give, the
// school's scripts and whether it has its own page heading.
void frm_Preferences::show_settings_in_force()
{
    const int order = Course_Order_Number();
    if (order >= 1 && order <= static_cast<int>(opt_Course_Order.size()))
        opt_Course_Order[order - 1]->setChecked(true);

    lbl_Date_Order->setText(Date_Order_Text(Glob_Date_Order()));
    lbl_Currency->setText(vb::Format(QVariant::fromValue(example_amount), QStringLiteral("currency")));
    Lbl_Time->setText(vb::Format(QDateTime::currentDateTime(), QStringLiteral("hh:nn ampm")));
    lbl_Discount->setText(Discount_Schemes_Text());

    QString personal_dir;
    QString header_path;
    GCR_Find_Personal_Header(personal_dir, header_path);
    lbl_Persnl_Header->setVisible(!header_path.isEmpty());
}

void frm_Preferences::cmd_Update_Click()
{
    short number = 0;
    for (int i = 0; i < static_cast<int>(opt_Course_Order.size()); ++i)
        if (opt_Course_Order[i]->isChecked())
            number = static_cast<short>(i + 1);
    if (!Store_Course_Order(number)) {
        Report_Error(report::Unexpected, QStringLiteral("Could NOT replace default values "), engine::mb::Critical,
                     module, QStringLiteral("cmd_Update_Click"));
        return;
    }
    Switch_Screen(this, nullptr, false);
}

void frm_Preferences::cmd_Generate_Click()
{
    if (GCR_Generate_State() != generate_state::Idle) {
        txt_Status->setText(QStringLiteral("Generation already in progress"));
        return;
    }
    txt_Status->setText(QStringLiteral("Generating report format files"));
    // The run lets events happen between files: the screen may be closed meanwhile.
    const QPointer<frm_Preferences> self(this);
    QString new_report_dir;
    QString new_list_file;
    const bool generated = GCR_Generate_Reports(new_report_dir, new_list_file);
    if (!generated) {
        GCR_Generate_State() = generate_state::Idle;
        if (self)
            txt_Status->setText(QStringLiteral("Generation failed"));
        return;
    }
    QString status = QStringLiteral("Customised reports generated successfully");
    if (Use_Generated_Folders(new_report_dir, new_list_file)) {
        Report_Error(report::Trace, QStringLiteral("Default values replaced"), engine::mb::OkOnly,
                     QStringLiteral("freports"));
        status += QStringLiteral(" and default values changed");
    } else {
        // One line of status: the parts of the advice follow one another.
        status += QStringLiteral(" ") + QStringLiteral("The default values for the report list file and")
                  + QStringLiteral(" ") + QStringLiteral("report format directory need to be changed in ")
                  + QStringLiteral("Main Menu/Options/Change Defaults");
    }
    GCR_Generate_State() = generate_state::Idle;
    if (self)
        txt_Status->setText(status);
}

void frm_Preferences::cmd_Cancel_Generate_Click()
{
    GCR_Generate_State() = generate_state::Cancelled;
}

void frm_Preferences::mnu_Exit_Click()
{
    Switch_Screen(this, nullptr, false);
}

void frm_Preferences::closeEvent(QCloseEvent* event)
{
    if (Close_Box_Is_Exit(this, event, [this] { mnu_Exit_Click(); }))
        return;
    event->accept();
}
