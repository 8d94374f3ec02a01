#pragma once
// A family's invoices and the lines of the chosen one. Invoices and lines are
// made and changed on the Invoice Lines screen, which this one opens; here
// they are seen and deleted.

#include "ui/billing/family_account_screen.h"

class frm_Invoices : public FamilyAccountScreen {
    Q_OBJECT
public:
    explicit frm_Invoices(QWidget* parent = nullptr);

    // What the Invoice Lines screen is opened for.
    enum LinesCommand { Add_Invoice = 1, Add_Line = 2, Change_Invoice = 3, Change_Line = 4 };

    QListWidget* lst_Lines = nullptr;
    QLineEdit* txt_Invoice_id = nullptr;  // hidden
    QPushButton* cmd_Add_Invoice = nullptr;
    QPushButton* cmd_Change_Invoice = nullptr;
    QPushButton* cmd_Delete_Invoice = nullptr;
    QPushButton* cmd_Add_Line = nullptr;
    QPushButton* cmd_Change_Line = nullptr;
    QPushButton* cmd_Delete_Line = nullptr;
    QAction* mnu_Receipts = nullptr;
    QAction* mnu_Pupils = nullptr;

    void cmd_Setup_Lines_Screen(LinesCommand command);
    void cmd_Delete_Invoice_Click();
    void cmd_Delete_Line_Click();
    void mnu_Exit_Click() override;
    void Form_Activate() override;

protected:
    void invoice_chosen() override;
    void Clear_screen() override;

private:
    void Get_Invoice_Lines();
    void Setup_Next_Screen(const QString& form_name);
    // After the Invoice Lines screen: the invoices again, at the same place.
    void back_from_lines();

    // The row of the invoice chosen when the Invoice Lines screen was
    // opened; -1 when it isn't open.
    int row_before_lines_ = -1;
};
