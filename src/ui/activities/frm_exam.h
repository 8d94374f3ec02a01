#pragma once
// The catalogue of activities: everything pupils can take part in apart from
// weekly courses (exams, shows, outings, competitions and a spare kind). One
// record is one entry, such as one grade of one style of dance; its dates
// and entrants are kept elsewhere.

#include "ui/toolkit/record_screen.h"

class QListWidget;

class frm_Exam : public RecordScreen {
    Q_OBJECT
public:
    explicit frm_Exam(QWidget* parent = nullptr);

    QLineEdit* txt_Exam_Title = nullptr;
    QListWidget* lst_Exam_Types = nullptr;
    QLineEdit* txt_Exam_Type = nullptr;  // hidden: the kind's code
    QComboBox* cmb_Style = nullptr;
    QLineEdit* txt_Level = nullptr;
    QLineEdit* txt_Duration = nullptr;
    QLineEdit* txt_Price = nullptr;
    QLineEdit* txt_Expenses = nullptr;
    QLineEdit* txt_Marker = nullptr;
    QComboBox* cmb_Teachers = nullptr;
    QLineEdit* txt_Teacher_id = nullptr;  // hidden: the teacher's key
    QLineEdit* txt_Grade = nullptr;
    QLineEdit* txt_Description = nullptr;
    QLineEdit* txt_Branch = nullptr;
    QLineEdit* txt_Category = nullptr;
    QLineEdit* txt_Faculty = nullptr;
    QPlainTextEdit* txt_Notes = nullptr;
    QPlainTextEdit* txt_Notes_M = nullptr;

    void Form_Activate() override;

protected:
    bool Validate_Own_Rules() override;
    bool Check_Deletion(int key) override;
    void Move_After_Delete(const QString& title) override;
    void Setup_Own_Lists() override;
    void clear_more() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void build_fields();
    QWidget* with_word_after(QLineEdit* box, const QString& word);
    void Fill_Types();
    void Fill_Teachers();
    void Find_Teachers_Name();
    void Show_Type();
    void lst_Exam_Types_Click();
    void cmb_Teachers_LostFocus();
    // A blank title or one with a quote is refused as soon as it is left.
    bool title_refused_on_leaving(QEvent* event);

    bool showing_type_ = false;  // the list follows the record, not the user
};
