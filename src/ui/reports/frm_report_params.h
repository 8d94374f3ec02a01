#pragma once
// Select Report Criteria: the terms, courses, activities and their dates, and
// the pupils that reports and automated invoicing work on. The screen stores
// nothing in the database; what it leaves behind are the selection lists
// (shell/selection_lists.h), which stay until they are changed here, an All
// option is clicked, or another database is opened.

#include "engine/recordset.h"
#include "toolkit/data_control.h"

#include <QString>
#include <QWidget>
#include <memory>
#include <vector>

class DataGrid;
class QAction;
class QGroupBox;
class QLineEdit;
class QMenuBar;
class QPushButton;
class QRadioButton;

class frm_Report_Params : public QWidget {
    Q_OBJECT
public:
    explicit frm_Report_Params(QWidget* parent = nullptr);
    ~frm_Report_Params() override;

    QMenuBar* menu_bar = nullptr;
    QAction* mnu_Exit = nullptr;
    QAction* mnu_Help = nullptr;

    QGroupBox* frame_Terms = nullptr;
    QRadioButton* opt_All_Terms = nullptr;
    QRadioButton* opt_Specific_Terms = nullptr;
    DataGrid* dbg_Term = nullptr;

    QGroupBox* frame_Courses = nullptr;
    QRadioButton* opt_All_Courses = nullptr;
    QRadioButton* opt_Specific_Courses = nullptr;
    DataGrid* dbg_Course = nullptr;

    QGroupBox* frame_Exams = nullptr;
    QRadioButton* opt_All_Exams = nullptr;
    QRadioButton* opt_Specific_Exams = nullptr;
    DataGrid* dbg_Exam = nullptr;
    DataGrid* dbg_Activity_Dates = nullptr;

    QGroupBox* frame_Pupils = nullptr;
    QRadioButton* opt_All_Pupils = nullptr;
    QRadioButton* opt_Specific_Pupils = nullptr;
    DataGrid* dbg_Pupil = nullptr;

    QGroupBox* frame_Rates = nullptr;
    QLineEdit* txt_Course_Hourly_Rate = nullptr;  // shown, not changed here: see Report Messages
    QLineEdit* txt_Exam_Hourly_Rate = nullptr;
    QPushButton* cmd_Go = nullptr;

    QGroupBox* frame_status = nullptr;
    QLineEdit* txt_Status = nullptr;

    DataControl& Data_Stndrd() { return standard_; }

    // What the commands do, so that they can be pressed by program.
    void cmd_Go_Click();
    void mnu_Exit_Click();
    void mnu_Help_Click();

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    // One grid with the rows it shows and the field that each row's value is read from.
    struct GridSource {
        DataGrid* grid = nullptr;
        QString source;
        QString key_field;
        QString error_label;  // "dbg_term_Error = " and the like
        std::unique_ptr<engine::Recordset> rows;
    };

    void build_controls();
    QGroupBox* build_frame(const QString& name, const QString& title, QRadioButton*& all, const QString& all_name,
                           const QString& all_caption, QRadioButton*& specific, const QString& specific_name,
                           const QString& specific_caption);
    DataGrid* make_grid(QWidget* parent, const QString& name, const QString& accessible_name);
    void connect_controls();
    void Setup_Controls();
    bool open_grid(GridSource& source);
    // The screen as the lists stand: Specific, with the chosen rows selected,
    // for a list that holds something; All otherwise.
    void Show_Selections();
    void select_rows_holding(GridSource& source, const QVector<QVariant>& values);
    // The values of `field` in the selected rows; false when a row can't be read (reported).
    bool selected_values(GridSource& source, QVector<QVariant>& values);
    void show_grids(bool terms, bool courses, bool exams, bool pupils);
    void grid_row_changed(DataGrid* grid);
    void report_grid_error(const GridSource& source) const;

    GridSource terms_;
    GridSource courses_;
    GridSource exams_;
    GridSource dates_;
    GridSource pupils_;
    DataControl standard_;
    std::vector<std::unique_ptr<BoundField>> bindings_;
};
