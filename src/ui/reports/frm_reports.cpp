#include "ui/reports/frm_reports.h"

#include "engine/msg_box.h"
#include "reports/personal_header.h"
#include "reports/report_outputs.h"
#include "reports/report_pre_script.h"
#include "reports/report_runner.h"
#include "shell/app_globals.h"
#include "shell/settings.h"
#include "toolkit/file_select.h"
#include "toolkit/help_pages.h"
#include "ui/reports/frm_view_report.h"
#include "ui/reports/report_printing.h"
#include "ui/shell/screen_catalogue.h"
#include "ui/shell/switch_screen.h"
#include "ui/toolkit/app_boxes.h"
#include "ui/toolkit/frm_select_file.h"
#include "ui/toolkit/screen_kit.h"

#include <QAction>
#include <QCloseEvent>
#include <QFileInfo>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QShowEvent>
#include <algorithm>

namespace {

constexpr int heading = -1;  // the item data of a heading in lst_Reports

// "Choose myself": the report whose file the user picks.
bool is_own_choice(const ReportEntry* entry)
{
    return entry && entry->report_file.trimmed().isEmpty();
}

void clear_request()
{
    for (QString* global : {&GCR_Report_File(), &GCR_Output_Type(), &GCR_Export_File(), &GCR_Invoice_Type_Value(),
                            &GCR_Formula_Name(), &GCR_Formula_Value(), &GCR_Group_Selection(), &GCR_Record_Selection()})
        global->clear();
}

}  // namespace

frm_Reports::frm_Reports(QWidget* parent) : QWidget(parent, Qt::Window)
{
    setObjectName(QStringLiteral("frm_Reports"));
    setWindowTitle(QStringLiteral("Reports"));
    Screen_Setup(this, true, Glob_Form_Colour());
    build_controls();
    connect_controls();
    opt_Screen->setChecked(true);
    show_output_controls();
    frame_messages->hide();
    show_rows();
    Form_Load();
    Determine_Printer_Settings();
    resize(minimumSizeHint().expandedTo(QSize(900, 620)));
}

frm_Reports::~frm_Reports() = default;

void frm_Reports::connect_controls()
{
    // A change of report, by keyboard or mouse, takes the report over; a
    // second click on the same one takes it over afresh. Only a click (or
    // Enter) on "Choose myself" asks for a file: the list taking the focus
    // makes its first entry current, and that mustn't open the file selector.
    // A click on a heading leaves no report chosen.
    connect(lst_Reports, &QListWidget::currentRowChanged, this, [this] {
        take_over_report(false);
        just_chosen_ = true;
    });
    connect(lst_Reports, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) {
        const bool again = !just_chosen_;
        just_chosen_ = false;
        if (item->data(Qt::UserRole).toInt() == heading)
            lst_Reports->setCurrentRow(-1);
        else if (again || is_own_choice(chosen_report()))
            lst_Reports_Click();
    });
    connect(lst_Reports, &QListWidget::itemActivated, this, [this] {
        if (is_own_choice(chosen_report()))
            lst_Reports_Click();
    });
    connect(lst_OutputFileType, &QListWidget::itemClicked, this, &frm_Reports::lst_OutputFileType_Click);
    connect(lst_OutputFileType, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row >= 0)
            lst_OutputFileType_Click();
    });
    connect(opt_Screen, &QRadioButton::clicked, this, &frm_Reports::opt_Screen_Click);
    connect(opt_Printer, &QRadioButton::clicked, this, &frm_Reports::opt_Printer_Click);
    connect(opt_File, &QRadioButton::clicked, this, &frm_Reports::opt_File_Click);
    connect(cmd_Select, &QPushButton::clicked, this, &frm_Reports::cmd_Select_Click);
    connect(cmd_Printer, &QPushButton::clicked, this, &frm_Reports::cmd_Printer_Click);
    connect(cmd_Do, &QPushButton::clicked, this, &frm_Reports::cmd_Do_Click);
    connect(mnu_Exit, &QAction::triggered, this, &frm_Reports::mnu_Exit_Click);
    connect(mnu_Criteria, &QAction::triggered, this, &frm_Reports::mnu_Criteria_Click);
    connect(mnu_Help, &QAction::triggered, this, &frm_Reports::mnu_Help_Click);
}

// ---- Load and Activate ----

void frm_Reports::Form_Load()
{
    HourGlass wait;
    const QString standard = standard_list_path();
    Load_Report_List(reports_, standard);
    QString status;
    Load_Personal_List(reports_, standard, personal_list_path(), status);
    QString header;
    GCR_Find_Personal_Header(personal_dir_, header);
    txt_Status->setText(status);
    Setup_Report_List();
}

void frm_Reports::Setup_Report_List()
{
    const QSignalBlocker quiet(lst_Reports);
    lst_Reports->clear();
    for (int position = 0; position < reports_.size(); ++position) {
        const ReportEntry& entry = reports_[position];
        if (entry.is_comment())
            continue;
        auto* item = new QListWidgetItem(entry.report_name, lst_Reports);
        item->setData(Qt::UserRole, entry.is_heading() ? heading : position);
        if (entry.is_heading()) {
            QFont bold = item->font();
            bold.setBold(true);
            item->setFont(bold);
        }
    }
}

void frm_Reports::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous())
        Activate_When_Shown(this, [this] { Form_Activate(); });
}

void frm_Reports::closeEvent(QCloseEvent* event)
{
    if (Close_Box_Is_Exit(this, event, [this] { mnu_Exit_Click(); }))
        return;
    event->accept();
}

void frm_Reports::Form_Activate()
{
    if (viewer_run_) {
        viewer_run_ = false;
        const QString report = GCR_Report_File();
        switch (View_Report_State()) {
        case view_state::Finished: txt_Status->setText(QStringLiteral("report finished OK - ") + report); break;
        case view_state::Failed: txt_Status->setText(QStringLiteral("Error during run - ") + report); break;
        default: txt_Status->setText(QStringLiteral("Run Abandoned")); break;
        }
        lst_Reports->setFocus(Qt::OtherFocusReason);
        return;
    }
    if (criteria_open_) {
        // The criteria may have changed: the rows show them afresh.
        criteria_open_ = false;
        const ReportEntry* entry = chosen_report();
        if (entry && !GCR_Report_File().trimmed().isEmpty()) {
            Report_Params(*entry, rows_);
            show_rows();
        }
    }
}

// ---- The chosen report ----

const ReportEntry* frm_Reports::chosen_report() const
{
    const QListWidgetItem* item = lst_Reports->currentItem();
    if (!item)
        return nullptr;
    const int position = item->data(Qt::UserRole).toInt();
    return position >= 0 && position < reports_.size() ? &reports_[position] : nullptr;
}

void frm_Reports::lst_Reports_Click()
{
    take_over_report(true);
}

void frm_Reports::take_over_report(bool may_ask_for_file)
{
    clear_request();
    hide_rows(rows_);
    lbl_Report_Paper->clear();
    const ReportEntry* entry = chosen_report();
    if (entry) {
        bool file_chosen = true;
        if (!is_own_choice(entry))
            GCR_Report_File() = report_file_path(entry->report_file, personal_dir_);
        else
            file_chosen = may_ask_for_file && choose_own_report();
        if (file_chosen) {
            Report_Params(*entry, rows_);
            Report_Formulae(*entry);
            show_report_page_setup();
        }
    }
    show_rows();
    frame_messages->setVisible(entry && entry->notices == 3);
}

bool frm_Reports::choose_own_report()
{
    FileSelectRecord& request = Glob_File_Select();
    request = FileSelectRecord{};
    request.Start_Path = Settings().report_format_dir;
    request.Filters[0] = {QStringLiteral("Reports"), QStringLiteral("*.rpt")};
    request.Filters[1] = {QStringLiteral("All Files"), QStringLiteral("*.*")};
    request.Extension = QStringLiteral("rpt");
    if (!frm_Select_File::Select(this))
        return false;
    GCR_Report_File() = request.Out_Path;
    return true;
}

void frm_Reports::show_rows()
{
    // A report that uses no criteria, or none chosen yet, shows no empty frame.
    frame_Params->setVisible(std::any_of(rows_.begin(), rows_.end(), [](const ParamRow& row) { return row.visible; }));
    for (int kind = 0; kind < Param_Count; ++kind) {
        const ParamRow& row = rows_[kind];
        for (QWidget* control : {static_cast<QWidget*>(lbl_Reqmnt[kind]), static_cast<QWidget*>(lbl_Optional[kind]),
                                 static_cast<QWidget*>(lbl_All[kind]), static_cast<QWidget*>(txt_Value[kind])})
            control->setVisible(row.visible);
        lbl_Optional[kind]->setText(row.requirement);
        lbl_All[kind]->setText(row.amount);
        txt_Value[kind]->setText(row.shown);
        txt_Value[kind]->setCursorPosition(0);
    }
}

void frm_Reports::show_report_page_setup()
{
    const PrinterState printer = printer_state(printer_);
    qint16 size = 0;
    qint16 orientation = 0;
    QString text;
    GCR_Get_Report_Page_Setup(size, orientation, text, printer.paper_size, printer.orientation);
    lbl_Report_Paper->setText(text);
}

void frm_Reports::Determine_Printer_Settings()
{
    const PrinterState printer = printer_state(printer_);
    lbl_Printer_Paper->setText(printer_paper_words(printer.paper_size, printer.orientation));
}

// ---- Where the report goes ----

void frm_Reports::show_output_controls()
{
    const bool to_file = opt_File->isChecked();
    for (QWidget* control : {static_cast<QWidget*>(txt_Filename), static_cast<QWidget*>(lbl_FileName),
                             static_cast<QWidget*>(lst_OutputFileType), static_cast<QWidget*>(lbl_File_Type),
                             static_cast<QWidget*>(cmd_Select)})
        control->setVisible(to_file);
    cmd_Printer->setVisible(opt_Printer->isChecked());
}

void frm_Reports::opt_Screen_Click()
{
    show_output_controls();
}

void frm_Reports::opt_Printer_Click()
{
    show_output_controls();
}

void frm_Reports::opt_File_Click()
{
    show_output_controls();
}

void frm_Reports::cmd_Printer_Click()
{
    // The printer is chosen in the print dialog that printing brings up.
}

void frm_Reports::lst_OutputFileType_Click()
{
    const QListWidgetItem* item = lst_OutputFileType->currentItem();
    if (!item) {
        App_Box(QStringLiteral("Please choose an output type"));
        return;
    }
    txt_Filename->setText(proposed_output_file(GCR_Report_File(), extension_of(item->data(Qt::UserRole).toInt())));
}

void frm_Reports::cmd_Select_Click()
{
    FileSelectRecord& request = Glob_File_Select();
    request = FileSelectRecord{};
    const QString shown = txt_Filename->text().trimmed();
    request.Start_Path = shown.isEmpty() ? Settings().report_output_dir : shown;
    request.Select_New_File = true;
    request.Filters[0] = {QStringLiteral("All Files"), QStringLiteral("*.*")};
    request.Filters[1] = {QStringLiteral("Word document"), QStringLiteral("*.doc")};
    request.Filters[2] = {QStringLiteral("Rich Text Format"), QStringLiteral("*.rtf")};
    request.Filters[3] = {QStringLiteral("Excel Files"), QStringLiteral("*.xls")};
    if (const QListWidgetItem* item = lst_OutputFileType->currentItem())
        request.Extension = extension_of(item->data(Qt::UserRole).toInt());
    if (frm_Select_File::Select(this))
        txt_Filename->setText(request.Out_Path);
}

int frm_Reports::chosen_notice() const
{
    const QRadioButton* in_order[] = {opt_Course, opt_Exam, opt_Show, opt_Outing, opt_Festival, opt_Spare};
    for (int index = 0; index < 6; ++index)
        if (in_order[index]->isChecked())
            return index + 1;
    return 0;
}

// ---- The run ----

void frm_Reports::cmd_Do_Click()
{
    Determine_Printer_Settings();
    const ReportEntry* entry = chosen_report();
    if (!entry || GCR_Report_File().trimmed().isEmpty()) {
        App_Box(QStringLiteral("Please select a report"));
        txt_Status->setText(QStringLiteral("No report selected"));
        return;
    }
    const bool criteria_met = Report_Params(*entry, rows_);
    show_rows();
    if (!criteria_met)
        return;
    if (opt_File->isChecked()) {
        if (txt_Filename->text().trimmed().isEmpty()) {
            App_Box(QStringLiteral("Please enter a filename for the output"));
            txt_Status->setText(QStringLiteral("No output file selected"));
            txt_Filename->setFocus(Qt::OtherFocusReason);
            return;
        }
        // A file of no kind would come out as a web page whatever its name says.
        if (!lst_OutputFileType->currentItem()) {
            App_Box(QStringLiteral("Please choose an output type"));
            return;
        }
    }
    {
        HourGlass wait;
        QString status = txt_Status->text();
        if (!Run_Pre_Script(entry->pre_script, GCR_Report_File(), status)) {
            txt_Status->setText(status);
            return;
        }
        Add_Invoice_Selection();
        Report_Notices(*entry, chosen_notice());
        txt_Status->setText(QStringLiteral("Running report ") + GCR_Report_File());
    }
    Produce_Report(*entry);
}

void frm_Reports::Produce_Report(const ReportEntry& entry)
{
    const QString report = GCR_Report_File();
    if (opt_Screen->isChecked()) {
        view_report(entry);
        return;
    }
    if (opt_Printer->isChecked()) {
        GCR_Output_Type() = QStringLiteral("0");
        GCR_Export_File().clear();
        const bool printed = GCR_Run_Printer(printer_);
        txt_Status->setText(printed ? QStringLiteral("report finished OK - ") + report : QStringLiteral("run cancelled"));
        return;
    }
    GCR_Export_File() = txt_Filename->text().trimmed();
    GCR_Output_Type() = QString::number(lst_OutputFileType->currentItem()->data(Qt::UserRole).toInt());
    bool exported = false;
    {
        HourGlass wait;
        exported = GCR_Run_Export();
    }
    txt_Status->setText(exported ? QStringLiteral("report finished OK - ") + report
                                 : QStringLiteral("error occurred during run of ") + report);
}

void frm_Reports::view_report(const ReportEntry& entry)
{
    GCR_Output_Type() = QStringLiteral("0");
    GCR_Export_File().clear();
    bool ready = false;
    {
        HourGlass wait;
        ready = Init_Report();
    }
    if (!ready) {
        txt_Status->setText(QStringLiteral("error occurred during set up of ") + GCR_Report_File());
        return;
    }
    View_Report_State() = view_state::Started;
    viewer_run_ = true;
    // A report of the user's own choosing goes by its file's name.
    const QString name =
        is_own_choice(&entry) ? QFileInfo(GCR_Report_File()).completeBaseName() : entry.report_name;
    Switch_Screen(this, new frm_View_Report(name), false);
}

// ---- Menus ----

void frm_Reports::mnu_Criteria_Click()
{
    criteria_open_ = true;
    if (!Go_To_Screen(this, QStringLiteral("frm_Report_Params")))
        criteria_open_ = false;
}

void frm_Reports::mnu_Exit_Click()
{
    Switch_Screen(this, nullptr, false);
}

void frm_Reports::mnu_Help_Click()
{
    Show_Help(this, help::Context, help::context::Reports);
}
