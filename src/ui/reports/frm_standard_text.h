#pragma once
// The Report Text screen: the one row of Standard_Values, which holds what
// reports print about the school, the fixed texts of each kind of notice,
// the default rates and the tax settings. A record-editing screen on a
// single row: no navigation, no adding or deleting by the user. The school's
// own fields stand above a tab for each kind of notice, the report values
// and tax.

#include "ui/toolkit/record_screen.h"

#include <array>

class QRadioButton;
class QTabWidget;

class frm_Standard_Text : public RecordScreen {
    Q_OBJECT
public:
    explicit frm_Standard_Text(QWidget* parent = nullptr);

    // The school.
    QLineEdit* txt_School_Name = nullptr;
    QLineEdit* txt_Principle = nullptr;
    QPlainTextEdit* txt_Address = nullptr;
    QLineEdit* txt_Phone = nullptr;
    QLineEdit* txt_Cheque_Payments = nullptr;

    QTabWidget* SSTab1 = nullptr;
    // Courses.
    QPlainTextEdit* txt_Course_Payment_Details = nullptr;
    QPlainTextEdit* txt_Discounts = nullptr;
    QPlainTextEdit* txt_Notice_Period = nullptr;
    QLineEdit* txt_Deflt_Course_Hourly_Rate = nullptr;
    // Exams.
    QPlainTextEdit* txt_Exam_Payment = nullptr;
    QPlainTextEdit* txt_Exam_Arrival = nullptr;
    QPlainTextEdit* txt_Exam_Notices = nullptr;
    QLineEdit* txt_Deflt_Exam_Hourly_Rate = nullptr;
    // Shows.
    QPlainTextEdit* txt_Show_Payment_Details = nullptr;
    QPlainTextEdit* Txt_Show_Arrival = nullptr;
    QPlainTextEdit* txt_Show_Notices = nullptr;
    QLineEdit* txt_Show_Cost_per_Pupil = nullptr;
    // Outings, festivals and the spare kind.
    QPlainTextEdit* txt_Outing_Payment_Details = nullptr;
    QPlainTextEdit* txt_Outing_Arrival = nullptr;
    QPlainTextEdit* txt_Outing_Notices = nullptr;
    QPlainTextEdit* txt_Comp_Payment_Details = nullptr;
    QPlainTextEdit* txt_Comp_Arrival = nullptr;
    QPlainTextEdit* txt_Comp_Notices = nullptr;
    QPlainTextEdit* txt_Spare_Payment_Details = nullptr;
    QPlainTextEdit* txt_Spare_Arrival = nullptr;
    QPlainTextEdit* txt_Spare_Notices = nullptr;
    // Values for the school's own report files and scripts.
    std::array<QLineEdit*, 8> txt_Discount_descr{};
    std::array<QLineEdit*, 8> txt_Discount_Value{};
    // Tax: the hidden box holds the VAT_Type that the options show.
    QLineEdit* txt_VAT_Type = nullptr;
    QRadioButton* Opt_VAT_None = nullptr;
    QRadioButton* Opt_VAT_in_Total = nullptr;
    QRadioButton* Opt_VAT_Script = nullptr;
    std::array<QLineEdit*, 6> txt_VAT_Percent{};
    QPlainTextEdit* txt_VAT_Regn_Notice = nullptr;
    QPlainTextEdit* txt_VAT_Notice = nullptr;
    QPlainTextEdit* Txt_VAT_Included = nullptr;

    void Form_Activate() override;
    void cmd_Update_Click() override;

protected:
    bool Check_Deletion(int key) override;
    QWidget* first_field() const override;

private:
    // Construction, by part of the screen (frm_standard_text_tabs.cpp).
    void build_school_fields();
    void build_notice_tabs();
    void build_values_tab();
    void build_vat_tab();
    void bind_fields();

    bool Validate_Data();
    void Opt_VAT_Click(int vat_type);
    void txt_VAT_Type_Change();
    void show_vat_option();
};
