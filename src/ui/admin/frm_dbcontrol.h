#pragma once
// The Database Control screen: one of four commands on a database file
// (refresh its queries, repair it, back the current database up, upgrade
// it), chosen by the option buttons, which the main menu sets as it opens
// the screen. The commands live in database/database_control.

#include "database/database_control.h"

#include <QWidget>
#include <array>

class QAction;
class QGroupBox;
class QLabel;
class QLineEdit;
class QMenuBar;
class QPushButton;
class QRadioButton;

class frm_DBControl : public QWidget {
    Q_OBJECT
public:
    explicit frm_DBControl(QWidget* parent = nullptr);

    QMenuBar* menu_bar = nullptr;
    QAction* mnu_Exit = nullptr;
    QAction* cmd_Help = nullptr;

    QLabel* lbl_Current_DB_Name = nullptr;
    QRadioButton* opt_refresh = nullptr;
    QRadioButton* opt_repair = nullptr;
    QRadioButton* opt_backup = nullptr;
    QRadioButton* opt_Upgrade = nullptr;
    QLabel* lbl_working = nullptr;
    QLabel* lbl_backup = nullptr;
    QLineEdit* txt_New_DB_Name = nullptr;
    QPushButton* cmd_Select = nullptr;
    QLabel* lbl_posn = nullptr;  // hidden: where the command offered stands
    QPushButton* cmd_Refresh = nullptr;
    QPushButton* cmd_Repair_DB = nullptr;
    QPushButton* cmd_copy = nullptr;
    QPushButton* cmd_upgrade = nullptr;
    QGroupBox* frame_status = nullptr;
    QLineEdit* txt_Status = nullptr;

    // What the commands do, so that they can be pressed by program.
    void cmd_Refresh_Click();
    void cmd_Repair_DB_Click();
    void cmd_copy_Click();
    void cmd_upgrade_Click();
    void cmd_Select_Click();
    void mnu_Exit_Click();

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void build_controls();
    void connect_commands();
    void Form_Activate();
    // Offers the command of the option that is set, and only that one.
    void show_chosen_command();
    void run(DatabaseControl::Command command);

    // The options with their commands, in the order they are offered.
    struct Choice {
        QRadioButton* option;
        QPushButton* command;
        DatabaseControl::Command what;
    };
    std::array<Choice, 4> choices_{};
    DatabaseControl control_;
};
