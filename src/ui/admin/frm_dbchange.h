#pragma once
// The Change Current Database screen: choosing the database to work on,
// creating, deleting, copying and merging database files. The commands live
// in database/database_change; this screen passes its name box to them and
// shows the outcome.

#include "database/database_change.h"

#include <QWidget>
#include <functional>

class QAction;
class QGroupBox;
class QLabel;
class QLineEdit;
class QMenu;
class QMenuBar;
class QPushButton;
class QRadioButton;

class frm_DBChange : public QWidget {
    Q_OBJECT
public:
    explicit frm_DBChange(QWidget* parent = nullptr);

    QMenuBar* menu_bar = nullptr;
    QAction* mnu_Exit = nullptr;
    QMenu* mnu_Delete = nullptr;
    QAction* mnu_Delete_Current = nullptr;
    QAction* mnu_Delete_New = nullptr;
    QAction* cmd_Help = nullptr;

    QLabel* lbl_Current_DB_Name = nullptr;
    QLineEdit* txt_New_DB_Name = nullptr;
    QPushButton* cmd_Select = nullptr;
    QPushButton* cmd_Use_New = nullptr;
    QPushButton* cmd_Exit_Current = nullptr;
    QPushButton* cmd_CreateDB = nullptr;
    QPushButton* cmd_copy = nullptr;
    QPushButton* cmd_Selected_Copy = nullptr;
    QGroupBox* Frame_Copy = nullptr;
    QRadioButton* opt_All = nullptr;
    QRadioButton* opt_Some = nullptr;
    QPushButton* Cmd_Merge = nullptr;
    QPushButton* cmd_Delete_Current_DB = nullptr;
    QPushButton* cmd_delete_new_DB = nullptr;
    QGroupBox* frame_status = nullptr;
    QLineEdit* txt_Status = nullptr;

    // What the commands do, so that they can be pressed by program.
    void cmd_CreateDB_Click();
    void cmd_Select_Click();
    void cmd_Use_New_Click();
    void cmd_Exit_Current_Click();
    void cmd_Delete_Current_DB_Click();
    void cmd_delete_new_DB_Click();
    void cmd_copy_Click();
    void cmd_Selected_Copy_Click();
    void Cmd_Merge_Click();
    void mnu_Exit_Click();

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void build_controls();
    QGroupBox* build_leaving_frame();
    QGroupBox* build_making_frame();
    QGroupBox* build_deleting_frame();
    void connect_commands();
    void Form_Activate();
    // Runs a command under the hourglass and shows what it left.
    void run(const std::function<void()>& command);
    // The same for a way out: back to the menu when it says so.
    void leave_if(const std::function<bool()>& command);
    void show_state();

    DatabaseChange change_;
};
