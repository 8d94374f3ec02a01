#pragma once
// The school's weekly courses: what is taught, on which day, when, for how
// long, by whom and at what price per lesson. The title names a course
// everywhere else, so it is the record's title.

#include "ui/toolkit/record_screen.h"

class QCheckBox;
class QListWidget;

class frm_Courses : public RecordScreen {
    Q_OBJECT
public:
    explicit frm_Courses(QWidget* parent = nullptr);

    QLineEdit* txt_Course_Title = nullptr;
    QLineEdit* txt_Description = nullptr;
    QListWidget* lst_Day = nullptr;
    QLineEdit* txt_Day = nullptr;
    QLineEdit* txt_Start_Time = nullptr;
    QLineEdit* txt_Duration = nullptr;
    QLineEdit* txt_Price = nullptr;
    QComboBox* cmb_Teachers = nullptr;
    QLineEdit* txt_Teacher_id = nullptr;
    QLineEdit* txt_Altn_Costing = nullptr;
    QLineEdit* txt_Location = nullptr;
    QPlainTextEdit* txt_Notes = nullptr;
    QCheckBox* chk_Cancelled = nullptr;
    QCheckBox* chk_Suppressed = nullptr;

    void Form_Activate() override;

protected:
    bool Validate_Own_Rules() override;
    bool Check_Deletion(int key) override;
    void clear_more() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Fill_Days();
    void Fill_Teachers();
    void Find_Teachers_Name();
    void Show_Day();
    void Show_Start_Time();
    void lst_Day_Click(int row);
    // False keeps the focus in the teacher list: the typed name is no teacher's.
    bool cmb_Teachers_Validate();
    void add_check_boxes();
    void tidy_layout();

    bool showing_day_ = false;  // the list follows the record, not the user
};
