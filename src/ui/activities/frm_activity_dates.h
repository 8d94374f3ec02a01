#pragma once
// The calendar of named days on which activities take place, such as an exam
// day. Entries and activity invoices belong to a date, so the screen shows
// how many hang on the date shown, moves the entries with a changed date,
// deletes the date's invoices after asking, and keeps a date in use.

#include "activities/activity_dates.h"
#include "ui/toolkit/record_screen.h"

class frm_Activity_Dates : public RecordScreen {
    Q_OBJECT
public:
    explicit frm_Activity_Dates(QWidget* parent = nullptr);

    QLineEdit* txt_Activity_Title = nullptr;
    QLineEdit* txt_Date = nullptr;
    // What refers to the date shown: read-only counts, -1 when unread.
    QLineEdit* txt_Exam_Results = nullptr;
    QLineEdit* txt_Invoices = nullptr;
    QLineEdit* txt_Receipts = nullptr;

    void Form_Activate() override;

protected:
    bool Validate_Own_Rules() override;
    bool Write_Record() override;
    bool Check_Deletion(int key) override;
    void Move_After_Delete(const QString& title) override;
    void Record_Shown() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QLineEdit* add_count(const QString& name, const QString& label);
    void Display_Data();
    void show_uses();
    void clear_uses();
    bool change_date();

    DateUses uses_;
};
