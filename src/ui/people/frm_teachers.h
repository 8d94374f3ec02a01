#pragma once
// The school's teachers, one record each; the teaching name is how other
// screens show a teacher, so it is the record's title.

#include "ui/toolkit/record_screen.h"

class frm_Teachers : public RecordScreen {
    Q_OBJECT
public:
    explicit frm_Teachers(QWidget* parent = nullptr);

    QLineEdit* txt_Nickname = nullptr;
    QLineEdit* txt_Name = nullptr;
    QLineEdit* txt_Surname = nullptr;
    QPlainTextEdit* txt_Address = nullptr;
    QLineEdit* txt_Phone_1 = nullptr;
    QLineEdit* txt_Phone_2 = nullptr;
    QLineEdit* txt_Reference_1 = nullptr;
    QLineEdit* txt_Reference_2 = nullptr;
    QLineEdit* txt_Description = nullptr;
    QPlainTextEdit* txt_Notes = nullptr;
    QLineEdit* txt_Exam_Ref_No = nullptr;

protected:
    bool Validate_Own_Rules() override;
    bool Check_Deletion(int key) override;
    QWidget* first_field() const override;
    bool kept_by_clear_screen(const QWidget* control) const override;
};
