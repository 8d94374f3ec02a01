#pragma once
// The hub of the program: every screen is reached from here, one at a time,
// and the program ends when the menu goes. It also holds the user's choice of
// keeping a list of pupils whose registers changed.

#include <QWidget>

class QAction;
class QGroupBox;
class QLabel;
class QMenu;
class QMenuBar;
class QPushButton;
class QRadioButton;

class frm_Main_Menu : public QWidget {
    Q_OBJECT
public:
    explicit frm_Main_Menu(QWidget* parent = nullptr);
    ~frm_Main_Menu() override;

    // Opens another screen: 0 frm_Invoices, 1 frm_Receipts, 2 frm_Pupil; other values do nothing.
    void Open_Screen(int which);

    // Each time the menu comes to the front.
    void Form_Activate();

    QMenuBar* menu_bar = nullptr;
    QMenu* mnu_options = nullptr;
    QAction* mnu_Change_Defaults = nullptr;
    QAction* mnu_Preferences = nullptr;
    QAction* mnu_Change_database = nullptr;
    QAction* mnu_Refresh_db = nullptr;
    QAction* mnu_repair_db = nullptr;
    QAction* mnu_Backup_db = nullptr;
    QAction* mnu_UpgradeDB = nullptr;
    QAction* mnu_db_stats = nullptr;
    QAction* mnu_View_Auditlog = nullptr;
    QMenu* mnu_Help_Head = nullptr;
    QAction* mnu_Help[5] = {};  // indexes 1 to 4
    QAction* mnu_About = nullptr;

    QGroupBox* frame_Pupils = nullptr;
    QPushButton* cmd_Families = nullptr;
    QPushButton* cmd_Pupils = nullptr;
    QPushButton* cmd_Import = nullptr;
    QPushButton* cmd_Teachers = nullptr;
    QGroupBox* frame_Courses = nullptr;
    QPushButton* cmd_Courses = nullptr;
    QPushButton* cmd_Reg_Course = nullptr;
    QPushButton* cmd_Dates = nullptr;
    QGroupBox* Frame_Activities = nullptr;
    QPushButton* cmd_Exam = nullptr;
    QPushButton* cmd_Exam_Dates = nullptr;
    QPushButton* cmd_Exam_Register = nullptr;
    QPushButton* cmd_Exam_Times = nullptr;
    QPushButton* cmd_Exam_Results = nullptr;
    QGroupBox* Frame_Invoicing = nullptr;
    QPushButton* cmd_Auto_Invoice = nullptr;
    QPushButton* cmd_Invoices = nullptr;
    QPushButton* cmd_Receipts = nullptr;
    QGroupBox* Frame_Reports = nullptr;
    QPushButton* cmd_Reports = nullptr;
    QPushButton* cmd_Select_Parameters = nullptr;
    QPushButton* cmd_Standard_Text = nullptr;
    QPushButton* cmd_Change_Database = nullptr;
    QPushButton* cmd_exit = nullptr;
    QGroupBox* Frame_Changes = nullptr;
    QRadioButton* Opt_No_List = nullptr;
    QRadioButton* Opt_Save_List = nullptr;
    QLabel* lbl_Current_DB = nullptr;
    QLabel* lbl_Current_DB_Name = nullptr;

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void build_menu_bar();
    void build_commands();
    void connect_commands();
    // Opens a screen through Switch_Screen, or says that it isn't there yet.
    void open(const QString& form_name, const QString& option = QString());
    void cmd_Families_Click();
    void cmd_exit_Click();

    bool exit_requested_ = false;
};
