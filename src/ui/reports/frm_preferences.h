#pragma once
// The Preferences screen: the date order, time and money format the program
// has worked out from the machine, whether the school uses its own discount
// scripts, the order in which courses are listed, and the generation of
// report files customised for this machine and the school's own heading.
// The logic lives in shell/preferences and reports/report_generation.

#include <QWidget>
#include <array>

class QAction;
class QGroupBox;
class QLabel;
class QLineEdit;
class QMenuBar;
class QPushButton;
class QRadioButton;

class frm_Preferences : public QWidget {
    Q_OBJECT
public:
    explicit frm_Preferences(QWidget* parent = nullptr);

    QMenuBar* menu_bar = nullptr;
    QAction* mnu_Exit = nullptr;
    QAction* mnu_Help = nullptr;
    QGroupBox* frame_Course_Order = nullptr;
    std::array<QRadioButton*, 4> opt_Course_Order{};  // the order number is the index plus 1
    QLabel* lbl_Date_Order = nullptr;
    QLabel* Lbl_Time = nullptr;
    QLabel* lbl_Currency = nullptr;
    QGroupBox* frame_Discount = nullptr;
    QLabel* lbl_Discount = nullptr;
    QLabel* lbl_Persnl_Header = nullptr;
    QPushButton* cmd_Update = nullptr;
    QPushButton* cmd_Generate = nullptr;
    QPushButton* cmd_Cancel_Generate = nullptr;
    QGroupBox* frame_status = nullptr;
    QLineEdit* txt_Status = nullptr;

    void cmd_Update_Click();
    void cmd_Generate_Click();
    void cmd_Cancel_Generate_Click();
    void mnu_Exit_Click();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QGroupBox* build_course_order();
    QWidget* build_locale();
    void show_settings_in_force();
};
