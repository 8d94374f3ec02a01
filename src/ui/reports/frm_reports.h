#pragma once
// The Reports screen: the school's list of reports, the criteria the chosen
// one will use, where it goes (the screen, the printer or a file) and the
// run. The list, the criteria and the run's preparation live in reports/;
// this screen shows them and passes the commands on.

#include "reports/report_list.h"
#include "reports/report_params.h"

#include <QPrinter>
#include <QWidget>
#include <array>

class QAction;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QMenuBar;
class QPushButton;
class QRadioButton;

class frm_Reports : public QWidget {
    Q_OBJECT
public:
    explicit frm_Reports(QWidget* parent = nullptr);
    ~frm_Reports() override;

    QMenuBar* menu_bar = nullptr;
    QAction* mnu_Exit = nullptr;
    QAction* mnu_Criteria = nullptr;
    QAction* mnu_Help = nullptr;

    QListWidget* lst_Reports = nullptr;

    // "Selected Criteria": a row per kind of selection.
    QGroupBox* frame_Params = nullptr;
    std::array<QLabel*, Param_Count> lbl_Reqmnt{};   // "Terms" ... "Changed Pupils"
    std::array<QLabel*, Param_Count> lbl_Optional{}; // "Mandatory", "Optional", "Unknown"
    std::array<QLabel*, Param_Count> lbl_All{};      // "All", "One", "Some"
    std::array<QLineEdit*, Param_Count> txt_Value{}; // what is chosen

    QGroupBox* frame_Output = nullptr;
    QRadioButton* opt_Screen = nullptr;
    QRadioButton* opt_Printer = nullptr;
    QRadioButton* opt_File = nullptr;
    QLabel* lbl_File_Type = nullptr;
    QListWidget* lst_OutputFileType = nullptr;
    QLabel* lbl_FileName = nullptr;
    QLineEdit* txt_Filename = nullptr;
    QPushButton* cmd_Select = nullptr;
    QPushButton* cmd_Printer = nullptr;
    QLabel* lbl_Report_Paper = nullptr;   // the chosen report's page set-up
    QLabel* lbl_Printer_Paper = nullptr;  // the printer's paper

    QGroupBox* frame_messages = nullptr;
    QRadioButton* opt_Course = nullptr;
    QRadioButton* opt_Exam = nullptr;
    QRadioButton* opt_Show = nullptr;
    QRadioButton* opt_Outing = nullptr;
    QRadioButton* opt_Festival = nullptr;
    QRadioButton* opt_Spare = nullptr;

    QPushButton* cmd_Do = nullptr;
    QGroupBox* frame_status = nullptr;
    QLineEdit* txt_Status = nullptr;

    // The list as loaded, the built-in "Choose myself" first.
    const ReportsList& Reports_List() const { return reports_; }
    // The printer a printed report goes to.
    QPrinter& printer() { return printer_; }

    // What the controls do, so that they can be worked by program.
    void lst_Reports_Click();
    void lst_OutputFileType_Click();
    void cmd_Do_Click();
    void cmd_Select_Click();
    void cmd_Printer_Click();
    void opt_Screen_Click();
    void opt_Printer_Click();
    void opt_File_Click();
    void mnu_Criteria_Click();
    void mnu_Exit_Click();
    void mnu_Help_Click();

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    // Construction, one frame at a time (frm_reports_layout.cpp).
    void build_controls();
    QGroupBox* build_params_frame();
    QGroupBox* build_output_frame();
    QGroupBox* build_messages_frame();
    void connect_controls();

    // The list, read at Load.
    void Form_Load();
    void Setup_Report_List();
    // Coming back from the viewer or from the criteria.
    void Form_Activate();

    // Takes over the chosen report: the request, its criteria, its paper and
    // notices. "Choose myself" asks for the file only when `may_ask_for_file`.
    void take_over_report(bool may_ask_for_file);
    // The chosen report: its entry, or null for none or a heading.
    const ReportEntry* chosen_report() const;
    // Asks for a report file of the user's own; false when none was chosen.
    bool choose_own_report();
    void show_rows();
    void show_output_controls();
    void Determine_Printer_Settings();
    void show_report_page_setup();
    // 1 Course to 6 Spare for the notice option set; 0 for none.
    int chosen_notice() const;
    void Produce_Report(const ReportEntry& entry);
    void view_report(const ReportEntry& entry);

    ReportsList reports_;
    ParamRows rows_{};
    QString personal_dir_;
    QPrinter printer_;
    bool viewer_run_ = false;     // the viewer was opened: its state is read on coming back
    bool criteria_open_ = false;  // the criteria were opened: the rows are built afresh on coming back
    bool just_chosen_ = false;    // the report was taken over as the list's choice changed
};
