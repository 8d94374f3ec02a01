#pragma once
// Activity Times and Results: every pupil taking part in an exam or a
// competition on the date chosen at the left, with the date, time, order,
// mark and grade open to correction. Edits are checked as a cell is left and
// stored together by Update. The rules live in ResultsEntry; this screen
// shows what it holds and passes on what the user does.

#include "activities/results_entry.h"

#include <QWidget>

class DataGrid;
class QAction;
class QGroupBox;
class QLabel;
class QLineEdit;
class QMenuBar;
class QPushButton;
class TextBoxGridWidget;

class frm_ExamTimes : public QWidget {
    Q_OBJECT
public:
    explicit frm_ExamTimes(QWidget* parent = nullptr);
    ~frm_ExamTimes() override;

    QMenuBar* menu_bar = nullptr;
    QAction* mnu_Exit = nullptr;
    QAction* mnu_Help = nullptr;
    QLabel* DBG_Dates_Caption = nullptr;
    DataGrid* DBG_Dates = nullptr;
    TextBoxGridWidget* txg = nullptr;
    QPushButton* cmd_Update = nullptr;
    QPushButton* cmd_Teachers = nullptr;
    QGroupBox* frame_status = nullptr;
    QLineEdit* txt_Status = nullptr;

    ResultsEntry& results() { return results_; }

    // What the commands do, so that they can be pressed by program.
    void cmd_Update_Click();
    void cmd_Teachers_Click();
    void mnu_Exit_Click();
    void mnu_Help_Click();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void build_controls();
    void connect_controls();
    void Setup_Controls();
    void DBG_Dates_RowColChange();
    bool date_chosen() const;
    void element_left(int element);
    void show_status();

    ResultsEntry results_;  // over txg's grid
};
