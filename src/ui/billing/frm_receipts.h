#pragma once
// Money received against a family's invoices: what each invoice comes to,
// what has been paid on it and what is outstanding, with the outstanding
// amount proposed as the next receipt. A debt can be written off.
//
// The state of the receipt fields is the background of txt_Receipt_id:
// white nothing in progress, yellow a proposal untouched, light blue a
// receipt being added or changed.

#include "engine/currency.h"
#include "ui/billing/family_account_screen.h"

class QComboBox;

class frm_Receipts : public FamilyAccountScreen {
    Q_OBJECT
public:
    explicit frm_Receipts(QWidget* parent = nullptr);

    QListWidget* lst_Receipts = nullptr;
    QLineEdit* txt_Invoice_Total = nullptr;
    QLineEdit* txt_Receipt_Total = nullptr;
    QLineEdit* txt_Outstanding = nullptr;
    QLineEdit* txt_Receipt_id = nullptr;  // hidden; its background is the state
    QLineEdit* txt_Amount = nullptr;
    QLineEdit* txt_Date = nullptr;
    QLineEdit* txt_Pay_Notes = nullptr;
    QComboBox* cmb_Method = nullptr;
    QPushButton* cmd_Add = nullptr;
    QPushButton* cmd_Update = nullptr;
    QPushButton* cmd_Delete = nullptr;
    QPushButton* cmd_Cancel = nullptr;
    QPushButton* cmd_Bad_Debt = nullptr;
    QPushButton* cmd_Prev_Owing = nullptr;
    QPushButton* cmd_Next_Owing = nullptr;
    QAction* mnu_Invoices = nullptr;
    QAction* mnu_Pupils = nullptr;

    void cmd_Add_Click();
    void cmd_Update_Click();
    void cmd_Delete_Click();
    void cmd_Cancel_Click();
    void cmd_Bad_Debt_Click();
    void cmd_Next_Owing_Click();
    void cmd_Prev_Owing_Click();
    void mnu_Exit_Click() override;

protected:
    bool Check_Progress() override;
    void invoice_chosen() override;
    void Clear_screen() override;
    void Show_Selected_Invoice() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // The values last loaded into the receipt fields: a field that differs
    // from its copy has been changed.
    struct LoadedValues {
        QString amount;
        QString date;
        QString notes;
        QString method;
    };

    QWidget* build_invoice_figures();
    QWidget* build_receipt_fields();
    void Get_Receipts();
    void Calculate_Outstanding();
    void Setup_Add();
    void Select_Receipt();
    void Display_Receipt();
    void Clear_highlights();
    bool Validate_Data(struct ReceiptValues& receipt);
    bool Insert_Bad_Debt();
    void field_left(QWidget* field);
    void Check_LostFocus(QWidget* field);
    void seek_owing(bool forwards);
    void Setup_Next_Screen(const QString& form_name);
    // Asks about changes in progress before leaving; true when the screen may go.
    bool leave_allowed();
    colours::Rgb state() const;
    void set_state(const colours::Rgb& colour);
    void show_loaded(const LoadedValues& values);
    LoadedValues shown_values() const;

    LoadedValues loaded_;
    // The chosen invoice's figures, exact; the boxes show them rounded to the penny.
    engine::Currency invoice_total_;
    engine::Currency receipt_total_;
    engine::Currency outstanding_;
    QString Last_Method;
    bool checking_field_ = false;
};
