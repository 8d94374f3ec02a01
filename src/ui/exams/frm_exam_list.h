#pragma once
// Pupils taking part in Exams: the running order of one exam day. The dates
// are listed at the top left and the pupils of the date still without a
// time under them; the timetable on the right is built from the times
// stored, and pupils are moved into it by Add Pupils or by dragging them
// onto a row. The timetable's rules live in ExamTimetable; this screen shows
// what it holds and passes on what the user does.

#include "activities/timetable_grid.h"
#include "engine/recordset.h"

#include <QWidget>
#include <memory>

class DataGrid;
class QAction;
class QGroupBox;
class QLabel;
class QLineEdit;
class QMenuBar;
class QPushButton;
class RegisterDragGrid;
class TextBoxGridWidget;

class frm_ExamList : public QWidget {
    Q_OBJECT
public:
    explicit frm_ExamList(QWidget* parent = nullptr);
    ~frm_ExamList() override;

    QMenuBar* menu_bar = nullptr;
    QAction* mnu_Exit = nullptr;
    QAction* mnu_Help = nullptr;
    QLabel* DBG_Dates_Caption = nullptr;
    DataGrid* DBG_Dates = nullptr;
    QLabel* dbg_Register_Caption = nullptr;
    RegisterDragGrid* dbg_Register = nullptr;
    QLineEdit* txt_Start = nullptr;
    QPushButton* cmd_Add_Pupil = nullptr;
    QPushButton* cmd_Add_Break = nullptr;
    QPushButton* cmd_Delete_Slot = nullptr;
    QPushButton* cmd_Update = nullptr;
    TextBoxGridWidget* txg = nullptr;
    QGroupBox* frame_status = nullptr;
    QLineEdit* txt_Status = nullptr;

    engine::Recordset* Data_Dates() const { return dates_.get(); }
    engine::Recordset* data_Register() const { return register_.get(); }
    ExamTimetable& timetable() { return timetable_; }

    // What the commands do, so that they can be pressed by program.
    void cmd_Add_Pupil_Click();
    void cmd_Add_Break_Click();
    void cmd_Delete_Slot_Click();
    void cmd_Update_Click();
    void mnu_Exit_Click();
    void mnu_Help_Click();

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void build_controls();
    QWidget* build_lists();
    QWidget* build_timetable();
    void connect_controls();
    void Setup_Controls();
    void Activate();
    void Setup_Register();
    void show_register();
    void DBG_Dates_RowColChange();
    void dbg_Register_RowColChange();
    void element_left(int element);
    void element_dropped(int element, QObject* source);
    void start_left();
    // Between the widgets and the timetable.
    void take_start();
    void show_outcome();
    void close_record_sets();

    ExamTimetable timetable_;  // over txg's grid
    std::unique_ptr<engine::Recordset> dates_;
    std::unique_ptr<engine::Recordset> register_;
    bool loading_ = true;
    engine::Bookmark shown_date_ = -1;
};
