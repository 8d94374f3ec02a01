#include "ui/activities/frm_exam_register.h"

#include "activities/activity_register.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "script/current_database.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "shell/locale_formats.h"
#include "toolkit/help_pages.h"
#include "toolkit/recordset_model.h"
#include "ui/shell/switch_screen.h"
#include "ui/toolkit/app_boxes.h"
#include "ui/toolkit/data_grid.h"
#include "ui/toolkit/form_rows.h"
#include "ui/toolkit/screen_kit.h"

#include <QAction>
#include <QCloseEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QShowEvent>
#include <QTimer>
#include <QVBoxLayout>

namespace {

const QString tag = QStringLiteral("fexamreg");

// Shows the rows under these columns; the first takes the room to spare.
void show_rows(DataGrid* grid, engine::Recordset* rows, const QStringList& fields, const QStringList& headers)
{
    grid->set_recordset(rows);
    grid->set_columns(fields, headers);
    QHeaderView* header = grid->horizontalHeader();
    header->setStretchLastSection(false);
    header->setSectionResizeMode(0, QHeaderView::Stretch);
    for (int column = 1; column < header->count(); ++column)
        grid->resizeColumnToContents(column);
}

bool has_rows(const engine::Recordset* rows)
{
    return rows && rows->RecordCount() > 0;
}

const QStringList register_fields = {QStringLiteral("DisplayName"), QStringLiteral("EDate"), QStringLiteral("Title"),
                                     QStringLiteral("Exam_id")};
const QStringList register_headers = {QStringLiteral("Name"), QStringLiteral("Date"), QStringLiteral("Activity"),
                                      QStringLiteral("Exam_id")};

}  // namespace

frm_ExamRegister::frm_ExamRegister(QWidget* parent) : QWidget(parent, Qt::Window)
{
    setObjectName(QStringLiteral("frm_ExamRegister"));
    setWindowTitle(QStringLiteral("Pupils taking part in Activities"));
    Screen_Setup(this, true, Glob_Form_Colour());
    build_controls();
    set_frame_colour(frame_status, Glob_Form_Colour());
    set_frame_colour(frame_Pupils, Glob_Form_Colour());
    txt_Status->clear();
    connect_controls();
    Setup_Controls();
}

frm_ExamRegister::~frm_ExamRegister()
{
    close_record_sets();
}

// ---- Construction ----

DataGrid* frm_ExamRegister::make_grid(const QString& name, const QString& accessible_name)
{
    auto* grid = new DataGrid(this);
    grid->setObjectName(name);
    grid->setAccessibleName(accessible_name);
    grid->verticalHeader()->hide();
    return grid;
}

QLabel* frm_ExamRegister::make_caption(const QString& text, DataGrid* grid)
{
    QLabel* caption = bold_caption(text, this, grid);
    caption->setObjectName(grid->objectName() + QStringLiteral("_Caption"));
    return caption;
}

void frm_ExamRegister::build_controls()
{
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(8);
    const ExitHelpMenu menu = add_exit_help_menu(this, layout);
    menu_bar = menu.bar;
    mnu_Exit = menu.exit;
    mnu_Help = menu.help;

    // The work goes from left to right: what and when, who, and who is on it.
    auto* columns = new QHBoxLayout;
    columns->setSpacing(14);
    columns->addLayout(build_activity_column(), 4);
    columns->addLayout(build_pupil_column(), 3);
    columns->addLayout(build_register_column(), 4);
    layout->addLayout(columns, 1);

    const StatusLine status_line = add_status_line(this, layout);
    frame_status = status_line.frame;
    txt_Status = status_line.text;

    setTabOrder(dbg_Exam, DBG_Dates);
    setTabOrder(DBG_Dates, opt_All);
    setTabOrder(opt_All, opt_Course);
    setTabOrder(opt_Course, dbg_Course);
    setTabOrder(dbg_Course, dbg_Pupil);
    setTabOrder(dbg_Pupil, cmd_Add);
    setTabOrder(cmd_Add, dbg_Register);
    setTabOrder(dbg_Register, cmd_Delete);
    resize(minimumSizeHint().expandedTo(QSize(1180, 680)));
}

QLayout* frm_ExamRegister::build_activity_column()
{
    dbg_Exam = make_grid(QStringLiteral("dbg_Exam"), QStringLiteral("Activities"));
    DBG_Dates = make_grid(QStringLiteral("DBG_Dates"), QStringLiteral("Activity Dates"));
    dates_caption = make_caption(QStringLiteral("Activity Dates"), DBG_Dates);
    const int character = fontMetrics().averageCharWidth();
    dbg_Exam->setMinimumSize(character * 36, fontMetrics().height() * 10);
    DBG_Dates->setMinimumSize(character * 36, fontMetrics().height() * 8);
    auto* column = new QVBoxLayout;
    column->setSpacing(4);
    column->addWidget(dbg_Exam, 3);
    column->addSpacing(8);
    column->addWidget(dates_caption);
    column->addWidget(DBG_Dates, 2);
    return column;
}

QLayout* frm_ExamRegister::build_pupil_column()
{
    frame_Pupils = new QGroupBox(QStringLiteral("Select Pupils by:"), this);
    frame_Pupils->setObjectName(QStringLiteral("frame_Pupils"));
    opt_All = new QRadioButton(QStringLiteral("All Pupils by Name"), frame_Pupils);
    opt_All->setObjectName(QStringLiteral("opt_All"));
    opt_Course = new QRadioButton(QStringLiteral("Course"), frame_Pupils);
    opt_Course->setObjectName(QStringLiteral("opt_Course"));
    opt_All->setChecked(true);
    auto* options = new QHBoxLayout(frame_Pupils);
    options->addWidget(opt_All);
    options->addWidget(opt_Course);
    options->addStretch(1);

    dbg_Course = make_grid(QStringLiteral("dbg_Course"), QStringLiteral("Course List"));
    course_caption = make_caption(QStringLiteral("Course List"), dbg_Course);
    dbg_Pupil = make_grid(QStringLiteral("dbg_Pupil"), QStringLiteral("Pupil List"));
    pupil_caption = make_caption(QStringLiteral("Pupil List"), dbg_Pupil);
    const int character = fontMetrics().averageCharWidth();
    dbg_Course->setMinimumSize(character * 30, fontMetrics().height() * 6);
    dbg_Pupil->setMinimumSize(character * 30, fontMetrics().height() * 10);
    // The course list is there only while pupils are chosen by course.
    dbg_Course->hide();
    course_caption->hide();
    cmd_Add = make_button(this, QStringLiteral("cmd_Add"), QStringLiteral("&Add Pupil(s) to Register"));

    auto* column = new QVBoxLayout;
    column->setSpacing(4);
    column->addWidget(frame_Pupils);
    column->addWidget(course_caption);
    column->addWidget(dbg_Course, 2);
    column->addWidget(pupil_caption);
    column->addWidget(dbg_Pupil, 3);
    auto* under = new QHBoxLayout;
    under->addStretch(1);
    under->addWidget(cmd_Add);
    column->addLayout(under);
    return column;
}

QLayout* frm_ExamRegister::build_register_column()
{
    dbg_Register = make_grid(QStringLiteral("dbg_Register"), QStringLiteral("Register"));
    register_caption = make_caption(QStringLiteral("Register"), dbg_Register);
    register_caption->setWordWrap(true);
    dbg_Register->setMinimumSize(fontMetrics().averageCharWidth() * 40, fontMetrics().height() * 12);
    cmd_Delete = make_button(this, QStringLiteral("cmd_Delete"), QStringLiteral("&Delete Pupil from Register"));
    txt_Num_Records = new QLineEdit(this);
    txt_Num_Records->setObjectName(QStringLiteral("txt_Num_Records"));
    txt_Num_Records->setReadOnly(true);
    txt_Num_Records->setFocusPolicy(Qt::NoFocus);
    txt_Num_Records->setAlignment(Qt::AlignRight);
    txt_Num_Records->setFixedWidth(fontMetrics().horizontalAdvance(QStringLiteral("000000")) + 16);
    auto* count_label = new QLabel(QStringLiteral("Pupils in Register"), this);
    count_label->setBuddy(txt_Num_Records);
    txt_Num_Records->setAccessibleName(count_label->text());

    auto* column = new QVBoxLayout;
    column->setSpacing(4);
    column->addWidget(register_caption);
    column->addWidget(dbg_Register, 1);
    auto* under = new QHBoxLayout;
    under->addWidget(count_label);
    under->addWidget(txt_Num_Records);
    under->addStretch(1);
    under->addWidget(cmd_Delete);
    column->addLayout(under);
    return column;
}

void frm_ExamRegister::connect_controls()
{
    connect(cmd_Add, &QPushButton::clicked, this, &frm_ExamRegister::cmd_Add_Click);
    connect(cmd_Delete, &QPushButton::clicked, this, &frm_ExamRegister::cmd_Delete_Click);
    connect(opt_All, &QRadioButton::clicked, this, &frm_ExamRegister::opt_All_Click);
    connect(opt_Course, &QRadioButton::clicked, this, &frm_ExamRegister::opt_Course_Click);
    connect(mnu_Exit, &QAction::triggered, this, &frm_ExamRegister::mnu_Exit_Click);
    connect(mnu_Help, &QAction::triggered, this, &frm_ExamRegister::mnu_Help_Click);

    // Going to an activity, a date or a course shows the register; the click
    // is handled first, so that a first Ctrl+click isn't undone.
    const auto later = [this](auto work) {
        if (activated_ && !following_)
            QTimer::singleShot(0, this, work);
    };
    connect(dbg_Exam, &DataGrid::RowColChange, this, [this, later] { later([this] { activity_or_date_reached(dbg_Exam); }); });
    connect(DBG_Dates, &DataGrid::RowColChange, this, [this, later] { later([this] { activity_or_date_reached(DBG_Dates); }); });
    connect(dbg_Course, &DataGrid::RowColChange, this, [this, later] { later([this] { dbg_Course_Reached(); }); });
    for (DataGrid* grid : {dbg_Pupil, dbg_Register})
        connect(grid, &DataGrid::RowColChange, this, [this, grid, later] { later([this, grid] { adopt_current_row(grid); }); });
    // A heading of the pupils or of the register chooses every row.
    connect(dbg_Pupil, &DataGrid::HeadClick, dbg_Pupil, &QTableView::selectAll);
    connect(dbg_Register, &DataGrid::HeadClick, dbg_Register, &QTableView::selectAll);
}

// ---- The record sets ----

void frm_ExamRegister::Setup_Controls()
{
    engine::Database* db = current_database_or_error();
    exams_ = db ? db->OpenRecordset(QStringLiteral("Select * from Exams order by Exam_Type, Exam_Dance, Exam_Level")) : nullptr;
    if (exams_)
        show_rows(dbg_Exam, exams_.get(), {QStringLiteral("Exam_Title")}, {QStringLiteral("Title")});
    else
        report_grid_error(QStringLiteral("data_Exams_Error = "));

    db = current_database_or_error();
    dates_ = db ? db->OpenRecordset(QStringLiteral("Select * from Activity_Titles order by ActT_Date Desc")) : nullptr;
    if (dates_) {
        show_rows(DBG_Dates, dates_.get(), {QStringLiteral("ActT_Date"), QStringLiteral("ActT_Title")},
                  {QStringLiteral("Date"), QStringLiteral("Title")});
        // The date as people read it; the title takes the room to spare.
        DBG_Dates->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Interactive);
        DBG_Dates->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
        DBG_Dates->set_column_picture(0, Glob_Date_Format());
    } else {
        report_grid_error(QStringLiteral("data_Dates_Error = "));
    }

    db = current_database_or_error();
    courses_ = db ? db->OpenRecordset(QStringLiteral("Courses")) : nullptr;
    if (courses_)
        show_rows(dbg_Course, courses_.get(), {QStringLiteral("Course_Title"), QStringLiteral("Description")},
                  {QStringLiteral("Title"), QStringLiteral("Description")});
    else
        report_grid_error(QStringLiteral("dbg_Course_Error = "));

    Get_Pupils(false);
    show_register_rows(Open_Empty_Activity_Register());
}

void frm_ExamRegister::Get_Pupils(bool by_course)
{
    dbg_Pupil->set_recordset(nullptr);
    pupils_.reset();
    engine::Database* db = current_database_or_error();
    if (by_course) {
        const engine::Bookmark mark = current_or_first(dbg_Course);
        QVector<RegisterCourse> course;
        if (!courses_ || mark < 0 || !Read_Courses(*courses_, {mark}, course)) {
            report_grid_error(QStringLiteral("dbg_Course_Error = "));
            return;
        }
        std::unique_ptr<engine::QueryDef> query =
            db ? db->QueryDefs(QStringLiteral("Qry_Select_Pupil_on_Course")) : nullptr;
        if (query && query->set_parameter(QStringLiteral("par_Course_id"), course.front().course_id))
            pupils_ = query->OpenRecordset();
    } else {
        pupils_ = db ? db->OpenRecordset(QStringLiteral("Qry_Select_Pupils_Not_Hidden")) : nullptr;
    }
    if (!pupils_) {
        report_grid_error(QStringLiteral("data_Pupils_Error = "));
        return;
    }
    show_rows(dbg_Pupil, pupils_.get(), {QStringLiteral("DisplayName")}, {QStringLiteral("Name")});
    if (!has_rows(pupils_.get()))
        txt_Status->setText(QStringLiteral("There are NO Pupils"));
}

void frm_ExamRegister::show_register_rows(std::unique_ptr<engine::Recordset> rows)
{
    dbg_Register->set_recordset(nullptr);
    register_ = std::move(rows);
    if (!register_) {
        report_grid_error(QStringLiteral("data_Register_Error = "));
        return;
    }
    show_rows(dbg_Register, register_.get(), register_fields, register_headers);
    dbg_Register->set_column_picture(1, Glob_Date_Format());
}

engine::Bookmark frm_ExamRegister::current_or_first(const DataGrid* grid) const
{
    const engine::Bookmark current = grid->Bookmark();
    if (current >= 0)
        return current;
    const QList<engine::Bookmark> chosen = grid->SelBookmarks();
    return chosen.isEmpty() ? -1 : chosen.front();
}

void frm_ExamRegister::report_grid_error(const QString& label) const
{
    Report_Error(report::BoundControl, QStringLiteral("Unexpected error "), engine::mb::Information, tag,
                 label + QString::number(engine::Err().Number));
}

void frm_ExamRegister::report_command_error(const QString& routine) const
{
    Report_Error(report::Unexpected, QStringLiteral("Unexpected error "), engine::mb::Information, tag, routine);
}

void frm_ExamRegister::close_record_sets()
{
    for (DataGrid* grid : {dbg_Exam, DBG_Dates, dbg_Pupil, dbg_Course, dbg_Register})
        grid->set_recordset(nullptr);
    for (std::unique_ptr<engine::Recordset>* rows : {&exams_, &dates_, &pupils_, &courses_, &register_}) {
        if (*rows)
            (*rows)->Close();
        rows->reset();
    }
}

// ---- Choosing ----

void frm_ExamRegister::Form_Activate()
{
    activated_ = true;
    if (!has_rows(exams_.get())) {
        txt_Status->setText(QStringLiteral("There are NO Activities"));
        return;
    }
    if (!has_rows(dates_.get())) {
        txt_Status->setText(QStringLiteral("There are NO Dates"));
        return;
    }
    // The first activity and the newest date are shown at once.
    following_ = true;
    for (DataGrid* grid : {dbg_Exam, DBG_Dates, dbg_Pupil}) {
        const engine::Bookmark mark = current_or_first(grid);
        grid->set_Bookmark(mark >= 0 ? mark : grid->model_of_records()->bookmark_at(0));
    }
    following_ = false;
    Show_Register();
}

void frm_ExamRegister::adopt_current_row(DataGrid* grid)
{
    const QModelIndex current = grid->currentIndex();
    if (current.isValid() && !grid->selectionModel()->hasSelection())
        grid->selectionModel()->select(current, QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

void frm_ExamRegister::activity_or_date_reached(DataGrid* grid)
{
    adopt_current_row(grid);
    Show_Register();
}

void frm_ExamRegister::dbg_Course_Reached()
{
    if (dbg_Course->Bookmark() < 0)
        return;
    adopt_current_row(dbg_Course);
    Get_Pupils(true);
    Show_Register();
}

void frm_ExamRegister::opt_All_Click()
{
    dbg_Course->hide();
    course_caption->hide();
    dbg_Course->clearSelection();
    Get_Pupils(false);
    Show_Register();
}

void frm_ExamRegister::opt_Course_Click()
{
    course_caption->show();
    dbg_Course->show();
}

void frm_ExamRegister::Show_Register()
{
    if (!has_rows(exams_.get()))
        return;
    if (dbg_Exam->SelBookmarks().isEmpty()) {
        App_Box(QStringLiteral("Please select an exam, show or outing"));
        return;
    }
    if (!has_rows(dates_.get()))
        return;
    if (DBG_Dates->SelBookmarks().isEmpty()) {
        App_Box(QStringLiteral("Please select a date"));
        return;
    }
    HourGlass wait;
    // When several activities are chosen, the one gone to last is shown.
    QVector<ActivityChoice> activity;
    const engine::Bookmark day = current_or_first(DBG_Dates);
    if (!Read_Activities(*exams_, {current_or_first(dbg_Exam)}, activity) || !dates_->set_bookmark(day)) {
        report_grid_error(QStringLiteral("data_Register_Error = "));
        return;
    }
    const QDateTime date = dates_->Fields(QStringLiteral("ActT_Date")).toDateTime();
    std::optional<qint32> course_id;
    if (opt_Course->isChecked()) {
        const QList<engine::Bookmark> courses = dbg_Course->SelBookmarks();
        if (courses.isEmpty()) {
            App_Box(QStringLiteral("Please select a course"));
            return;
        }
        QVector<RegisterCourse> course;
        if (!Read_Courses(*courses_, {courses.front()}, course)) {
            report_grid_error(QStringLiteral("dbg_Course_Error = "));
            return;
        }
        course_id = course.front().course_id;
    }
    show_register_rows(Open_Activity_Register(activity.front().exam_id, date, course_id));
    if (!register_)
        return;
    register_caption->setText(Activity_Register_Caption(activity.front().title, date));
    dbg_Register->setAccessibleName(register_caption->text());
    txt_Num_Records->setText(QString::number(register_->RecordCount()));
}

// ---- The commands ----

void frm_ExamRegister::cmd_Add_Click()
{
    txt_Status->clear();
    if (dbg_Exam->SelBookmarks().isEmpty()) {
        if (!has_rows(exams_.get()) || dbg_Exam->Bookmark() < 0) {
            App_Box(QStringLiteral("There are no Activities to add"));
            return;
        }
        adopt_current_row(dbg_Exam);
    }
    if (dbg_Pupil->SelBookmarks().isEmpty()) {
        if (!has_rows(pupils_.get()) || dbg_Pupil->Bookmark() < 0) {
            App_Box(QStringLiteral("There are no pupils to add"));
            return;
        }
        adopt_current_row(dbg_Pupil);
    }
    if (DBG_Dates->SelBookmarks().isEmpty()) {
        App_Box(QStringLiteral("Please enter a date"));
        DBG_Dates->setFocus(Qt::OtherFocusReason);
        return;
    }
    const QList<engine::Bookmark> activity_marks = dbg_Exam->SelBookmarks();
    QVector<ActivityChoice> activities;
    QVector<RegisterPupil> pupils;
    if (!Read_Activities(*exams_, activity_marks, activities) || !Read_Pupils(*pupils_, dbg_Pupil->SelBookmarks(), pupils)
        || !dates_->set_bookmark(current_or_first(DBG_Dates))) {
        report_command_error(QStringLiteral("cmd_add_click"));
        return;
    }
    const QDateTime date = dates_->Fields(QStringLiteral("ActT_Date")).toDateTime();
    EntryOutcome outcome;
    {
        HourGlass wait;
        Add_Pupils_To_Activities(activities, pupils, date, outcome);
    }
    txt_Status->setText(outcome.status);
    // The activity taken last is the one gone to, and its register is shown.
    following_ = true;
    const int last_row = dbg_Exam->model_of_records()->row_of(activity_marks.back());
    dbg_Exam->selectionModel()->setCurrentIndex(dbg_Exam->model()->index(last_row, 0), QItemSelectionModel::NoUpdate);
    following_ = false;
    Show_Register();
}

void frm_ExamRegister::cmd_Delete_Click()
{
    if (dbg_Register->SelBookmarks().isEmpty()) {
        if (!has_rows(register_.get()) || dbg_Register->Bookmark() < 0) {
            App_Box(QStringLiteral("There are no pupils in the Register to delete"));
            return;
        }
        adopt_current_row(dbg_Register);
    }
    if (App_Box(QStringLiteral("Do you really want to remove the pupil(s)") + QStringLiteral(" from the register?"),
            engine::mb::YesNo | engine::mb::Question)
        != engine::answer::Yes)
        return;
    QVector<ActivityEntry> entries;
    if (!Read_Activity_Entries(*register_, dbg_Register->SelBookmarks(), entries)) {
        report_command_error(QStringLiteral("cmd_delete_click"));
        return;
    }
    EntryOutcome outcome;
    Remove_Pupils_From_Activities(entries, outcome);
    txt_Status->setText(outcome.status);
    Show_Register();
}

void frm_ExamRegister::mnu_Exit_Click()
{
    // Every change is stored as it is made: nothing is ever left half done.
    Switch_Screen(this, nullptr, false);
}

void frm_ExamRegister::mnu_Help_Click()
{
    Show_Help(this, help::Context, help::context::Activity_Register);
}

// ---- Events ----

void frm_ExamRegister::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous())
        Activate_When_Shown(this, [this] { Form_Activate(); });
}

void frm_ExamRegister::closeEvent(QCloseEvent* event)
{
    if (Close_Box_Is_Exit(this, event, [this] { mnu_Exit_Click(); }))
        return;
    close_record_sets();
    event->accept();
}
