#pragma once
// The Automated Invoicing screen: raises term and activity invoices for many
// families at once from the chosen criteria, and deletes invoices in bulk.
// Everything it does lives in AutoInvoicing; this screen shows what that
// holds (the criteria, the pupils, the status) and passes each command on.

#include "billing/auto_invoicing.h"

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

class frm_Auto_Invoice : public QWidget {
    Q_OBJECT
public:
    explicit frm_Auto_Invoice(QWidget* parent = nullptr);
    ~frm_Auto_Invoice() override;

    QMenuBar* menu_bar = nullptr;
    QAction* mnu_Exit = nullptr;
    QAction* mnu_Criteria = nullptr;
    QAction* mnu_Script = nullptr;
    QAction* mnu_View_Errors = nullptr;
    QAction* mnu_Help = nullptr;

    QGroupBox* Frame_Which_Pupils = nullptr;
    QRadioButton* Opt_Saved_List = nullptr;
    QRadioButton* Opt_Selected = nullptr;

    QGroupBox* frame_Inserts = nullptr;
    QPushButton* cmd_Insert_Term = nullptr;
    QPushButton* cmd_Insert_Activities = nullptr;

    QGroupBox* frame_Delete_Selected = nullptr;
    QPushButton* cmd_Del_Sel_Terms = nullptr;
    QPushButton* cmd_Del_Sel_Activities = nullptr;

    QGroupBox* frame_Deletes = nullptr;
    QPushButton* cmd_Del_All = nullptr;
    QPushButton* cmd_Del_Paid_All = nullptr;

    QGroupBox* frame_Scripts = nullptr;
    QLineEdit* txt_Filename = nullptr;
    QPushButton* cmd_Do = nullptr;
    QPushButton* cmd_Script_Select = nullptr;

    QGroupBox* frame_Changed = nullptr;
    QListWidget* lst_Selected_Pupils = nullptr;

    // The criteria, by AutoInvoicing::Criterion: a caption and how many are chosen.
    QGroupBox* frame_Params = nullptr;
    std::array<QLabel*, AutoInvoicing::Criteria_Count> lbl_Reqmnt{};
    std::array<QLabel*, AutoInvoicing::Criteria_Count> lbl_All{};
    QLabel* lbl_Term_Name = nullptr;
    QLabel* lbl_Activity_Date = nullptr;

    QGroupBox* frame_status = nullptr;
    QLineEdit* txt_Status = nullptr;

    const AutoInvoicing& invoicing() const { return invoicing_; }

    // What the commands do, so that they can be pressed by program.
    void cmd_Insert_Term_Click();
    void cmd_Insert_Activities_Click();
    void cmd_Del_Sel_Terms_Click();
    void cmd_Del_Sel_Activities_Click();
    void cmd_Del_All_Click();
    void cmd_Del_Paid_All_Click();
    void cmd_Do_Click();
    void cmd_Script_Select_Click();
    void Opt_Saved_List_Click();
    void Opt_Selected_Click();
    void mnu_Exit_Click();
    void mnu_Criteria_Click();
    void mnu_Script_Click();
    void mnu_View_Errors_Click();
    void mnu_Help_Click();

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void build_controls();
    void connect_commands();
    // Activate: the temporary tables filled afresh from the criteria.
    void Form_Activate();
    // Puts what the invoicing holds on the screen.
    void show_state();
    // Runs a command under the wait cursor and shows its outcome.
    template <typename Command>
    void run(Command command);
    // Leaves for another screen, coming back here when it is done.
    void open(const QString& form_name);

    AutoInvoicing invoicing_;
};
