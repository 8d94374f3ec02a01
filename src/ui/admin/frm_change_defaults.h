#pragma once
// The Change Default Filenames screen: where the program finds its report
// files, scripts and log, shown as the values in force beside the new ones,
// and whether they are kept per school or shared. The checks and the
// applying live in shell/change_defaults.

#include "shell/change_defaults.h"

#include <QWidget>
#include <array>

class QAction;
class QGroupBox;
class QLabel;
class QLineEdit;
class QMenuBar;
class QPushButton;
class QRadioButton;

class frm_Change_Defaults : public QWidget {
    Q_OBJECT
public:
    using Row = change_defaults::Row;

    explicit frm_Change_Defaults(QWidget* parent = nullptr);

    QMenuBar* menu_bar = nullptr;
    QAction* mnu_Exit = nullptr;
    QAction* mnu_Help = nullptr;

    // By row (change_defaults::Row): the new value, the value in force, and
    // the file selector's button (the control array cmd_Select).
    std::array<QLineEdit*, change_defaults::Row_Count> txt{};
    std::array<QLabel*, change_defaults::Row_Count> lbl_old{};
    std::array<QPushButton*, change_defaults::Row_Count> cmd_Select{};
    QLineEdit* txt_Report_dir = nullptr;
    QLineEdit* txt_Repfmt_dir = nullptr;
    QLineEdit* txt_RepLst_File = nullptr;
    QLineEdit* txt_user_dir = nullptr;
    QLineEdit* txt_logfile = nullptr;
    QLineEdit* txt_CrTermInv_File = nullptr;
    QLineEdit* txt_CrActInv_File = nullptr;
    QLineEdit* txt_CrCosts_File = nullptr;

    QRadioButton* Opt_Store_DB = nullptr;
    QRadioButton* Opt_Store_Registry = nullptr;
    QLineEdit* txt_Store = nullptr;   // hidden: 1 or 2
    QLabel* lbl_Old_Store = nullptr;  // hidden: the choice in force

    QPushButton* cmd_Accept = nullptr;
    QPushButton* cmd_Reject = nullptr;
    QPushButton* cmd_Reset = nullptr;
    QPushButton* cmd_Exit = nullptr;

    // What the commands do, so that they can be pressed by program.
    void cmd_Accept_Click();
    void cmd_Reject_Click();
    void cmd_Reset_Click();
    void cmd_Exit_Click();
    void cmd_Select_Click(Row row);

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void build_controls();
    QGroupBox* build_store_frame();
    void connect_commands();
    // Load: both columns from the settings in force.
    void fill_from_settings();
    void Form_Activate();
    void show_highlight(Row row);
    // The new column as the values to apply.
    change_defaults::Locations wanted() const;
    // Checks the box that was left; a refusal gives it the focus back.
    void value_left(Row row);
    void focus_back(QLineEdit* box);
    void close_screen();

    change_defaults::Locations in_force_;
    bool returning_focus_ = false;
};
