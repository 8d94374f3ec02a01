#pragma once
// Pupils taking part in Activities: who takes part in what, and when. Five
// linked lists (the activities, their dates, the pupils, the courses that
// choose pupils, and the register of the activity and date gone to) and two
// commands, so that a whole class can be entered for several activities on
// a date in one action, or taken off again.

#include "engine/recordset.h"

#include <QString>
#include <QWidget>
#include <memory>

class DataGrid;
class QAction;
class QGroupBox;
class QLabel;
class QLineEdit;
class QMenuBar;
class QPushButton;
class QRadioButton;

class frm_ExamRegister : public QWidget {
    Q_OBJECT
public:
    explicit frm_ExamRegister(QWidget* parent = nullptr);
    ~frm_ExamRegister() override;

    QMenuBar* menu_bar = nullptr;
    QAction* mnu_Exit = nullptr;
    QAction* mnu_Help = nullptr;

    DataGrid* dbg_Exam = nullptr;
    DataGrid* DBG_Dates = nullptr;
    DataGrid* dbg_Pupil = nullptr;
    DataGrid* dbg_Course = nullptr;
    DataGrid* dbg_Register = nullptr;
    // The grids' headings, shown above them.
    QLabel* dates_caption = nullptr;
    QLabel* pupil_caption = nullptr;
    QLabel* course_caption = nullptr;
    QLabel* register_caption = nullptr;

    QGroupBox* frame_Pupils = nullptr;
    QRadioButton* opt_All = nullptr;
    QRadioButton* opt_Course = nullptr;
    QPushButton* cmd_Add = nullptr;
    QPushButton* cmd_Delete = nullptr;
    QLineEdit* txt_Num_Records = nullptr;
    QGroupBox* frame_status = nullptr;
    QLineEdit* txt_Status = nullptr;

    // The record sets behind the grids.
    engine::Recordset* data_Exams() const { return exams_.get(); }
    engine::Recordset* Data_Dates() const { return dates_.get(); }
    engine::Recordset* data_Pupils() const { return pupils_.get(); }
    engine::Recordset* data_Courses() const { return courses_.get(); }
    engine::Recordset* data_Register() const { return register_.get(); }

    // What the commands do, so that they can be pressed by program.
    void cmd_Add_Click();
    void cmd_Delete_Click();
    void opt_All_Click();
    void opt_Course_Click();
    void mnu_Exit_Click();
    void mnu_Help_Click();
    void Show_Register();

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void build_controls();
    QLayout* build_activity_column();
    QLayout* build_pupil_column();
    QLayout* build_register_column();
    DataGrid* make_grid(const QString& name, const QString& accessible_name);
    QLabel* make_caption(const QString& text, DataGrid* grid);
    void connect_controls();
    void Setup_Controls();
    void Form_Activate();
    // Each grid's current row joins its choice when nothing is chosen yet.
    void adopt_current_row(DataGrid* grid);
    void activity_or_date_reached(DataGrid* grid);
    void dbg_Course_Reached();
    void Get_Pupils(bool by_course);
    // The current row's bookmark, or the first chosen when there is no current row.
    engine::Bookmark current_or_first(const DataGrid* grid) const;
    void show_register_rows(std::unique_ptr<engine::Recordset> rows);
    void report_grid_error(const QString& label) const;
    void report_command_error(const QString& routine) const;
    void close_record_sets();

    std::unique_ptr<engine::Recordset> exams_;
    std::unique_ptr<engine::Recordset> dates_;
    std::unique_ptr<engine::Recordset> pupils_;
    std::unique_ptr<engine::Recordset> courses_;
    std::unique_ptr<engine::Recordset> register_;
    bool following_ = false;  // the program moving a grid: no Show_Register of its own
    bool activated_ = false;  // the lists follow the user only once Activate has chosen their first rows
};
