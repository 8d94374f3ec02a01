#pragma once
// The households that are invoiced: a name and a postal address, with the
// family's pupils listed beside them.

#include "ui/toolkit/record_screen.h"

class QListWidget;

class frm_Family : public RecordScreen {
    Q_OBJECT
public:
    explicit frm_Family(QWidget* parent = nullptr);

    QLineEdit* txt_Family_Name = nullptr;
    QLineEdit* txt_Address = nullptr;
    QLineEdit* txt_Address2 = nullptr;
    QLineEdit* txt_Address3 = nullptr;
    QLineEdit* txt_Address4 = nullptr;
    QLineEdit* txt_Post_Code = nullptr;
    QLineEdit* txt_Phone_1 = nullptr;
    QLineEdit* txt_Phone_2 = nullptr;
    QPlainTextEdit* txt_Notes = nullptr;
    QLineEdit* txt_Marker = nullptr;
    QLineEdit* txt_Correspondence = nullptr;
    QLineEdit* txt_Family_id = nullptr;
    QListWidget* lst_Members = nullptr;
    QPushButton* cmd_Remove = nullptr;

    void Form_Activate() override;
    // Removes every family that has no pupils, asking family by family.
    void cmd_Remove_Click();

protected:
    bool Check_Deletion(int key) override;
    QString criteria_after_delete(const QString& title) const override;
    void clear_more() override;
    bool list_follows_record() const override { return !Bulk_Running; }

private:
    // Fills lst_Members with the first names of the family's pupils.
    void Get_Members();

    bool Bulk_Running = false;
};
