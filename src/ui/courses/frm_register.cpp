#include "ui/courses/frm_register.h"

#include "courses/course_entry.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "script/current_database.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "toolkit/gen_colours.h"
#include "toolkit/help_pages.h"
#include "ui/courses/register_grid.h"
#include "ui/shell/switch_screen.h"
#include "ui/toolkit/app_boxes.h"
#include "ui/toolkit/form_rows.h"
#include "ui/toolkit/screen_kit.h"

#include <QAction>
#include <QCloseEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

namespace {

const QString tag = QStringLiteral("fregstr");

const QStringList register_fields = {QStringLiteral("FirstName"), QStringLiteral("FamilyName"), QStringLiteral("Surname"),
                                     QStringLiteral("Pid"), QStringLiteral("Cid")};
const QStringList register_headers = {QStringLiteral("First Name"), QStringLiteral("Family Name"), QStringLiteral("Surname"),
                                      QStringLiteral("pid"), QStringLiteral("Cid")};

// Shows the rows under these columns. The names take the room the grid has
// to spare; the others are as wide as what they show.
void show_rows(RegisterGrid* grid, engine::Recordset* rows, const QStringList& fields, const QStringList& headers,
               std::initializer_list<int> stretched)
{
    grid->set_recordset(rows);
    grid->set_columns(fields, headers);
    QHeaderView* header = grid->horizontalHeader();
    header->setStretchLastSection(false);
    for (int column = 0; column < header->count(); ++column) {
        if (std::find(stretched.begin(), stretched.end(), column) != stretched.end())
            header->setSectionResizeMode(column, QHeaderView::Stretch);
        else
            grid->resizeColumnToContents(column);  // the last one too, no longer stretched
    }
}

}  // namespace

frm_Register::frm_Register(QWidget* parent) : QWidget(parent, Qt::Window)
{
    setObjectName(QStringLiteral("frm_Register"));
    setWindowTitle(QStringLiteral("Register of Pupils attending Courses"));
    Screen_Setup(this, true, Glob_Form_Colour());
    build_controls();
    set_frame_colour(frame_status, Glob_Form_Colour());
    txt_Status->clear();
    connect_controls();
    Setup_Controls();
}

frm_Register::~frm_Register()
{
    close_record_sets();
}

// ---- Construction ----

RegisterGrid* frm_Register::make_grid(const QString& name, const QString& caption, QLabel*& caption_label)
{
    auto* grid = new RegisterGrid(this);
    grid->setObjectName(name);
    grid->setAccessibleName(caption);
    grid->verticalHeader()->hide();
    caption_label = bold_caption(caption, this, grid);
    caption_label->setObjectName(name + QStringLiteral("_Caption"));
    return grid;
}

void frm_Register::build_controls()
{
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(8);

    const ExitHelpMenu menu = add_exit_help_menu(this, layout);
    menu_bar = menu.bar;
    mnu_Exit = menu.exit;
    mnu_Help = menu.help;

    dbg_Course = make_grid(QStringLiteral("dbg_Course"), QStringLiteral("Course List"), course_caption);
    dbg_Pupil = make_grid(QStringLiteral("dbg_Pupil"), QStringLiteral("Pupil List"), pupil_caption);
    dbg_Register = make_grid(QStringLiteral("dbg_Register"), QStringLiteral("Register"), register_caption);
    const int character = fontMetrics().averageCharWidth();
    const int rows = fontMetrics().height() * 12;
    dbg_Course->setMinimumSize(character * 44, rows);
    dbg_Pupil->setMinimumSize(character * 26, rows);
    dbg_Register->setMinimumSize(character * 40, rows);

    cmd_Add = make_button(this, QStringLiteral("cmd_Add"), QStringLiteral("&Add"));
    cmd_Delete = make_button(this, QStringLiteral("cmd_Delete"), QStringLiteral("&Delete"));
    txt_Num_Records = new QLineEdit(this);
    txt_Num_Records->setObjectName(QStringLiteral("txt_Num_Records"));
    txt_Num_Records->setReadOnly(true);
    txt_Num_Records->setFocusPolicy(Qt::NoFocus);
    txt_Num_Records->setAlignment(Qt::AlignRight);
    txt_Num_Records->setFixedWidth(fontMetrics().horizontalAdvance(QStringLiteral("000000")) + 16);
    auto* count_label = new QLabel(QStringLiteral("Pupils in Register"), this);
    count_label->setBuddy(txt_Num_Records);
    txt_Num_Records->setAccessibleName(count_label->text());

    // Courses and pupils are chosen on the left and added with Add; the
    // register on the right is of the course last gone to.
    const auto column = [this](QLabel* caption, RegisterGrid* grid, QLayout* under) {
        auto* box = new QVBoxLayout;
        box->setSpacing(4);
        box->addWidget(caption);
        box->addWidget(grid, 1);
        box->addLayout(under);
        return box;
    };
    auto* under_courses = new QHBoxLayout;
    under_courses->addStretch(1);
    auto* under_pupils = new QHBoxLayout;
    under_pupils->addStretch(1);
    under_pupils->addWidget(cmd_Add);
    auto* under_register = new QHBoxLayout;
    under_register->addWidget(count_label);
    under_register->addWidget(txt_Num_Records);
    under_register->addStretch(1);
    under_register->addWidget(cmd_Delete);
    // The buttons' row is as high in each column, so that the grids end level.
    const int button_height = cmd_Add->sizeHint().height();
    for (QHBoxLayout* under : {under_courses, under_pupils, under_register})
        under->addStrut(button_height);

    auto* grids = new QHBoxLayout;
    grids->setSpacing(14);
    grids->addLayout(column(course_caption, dbg_Course, under_courses), 5);
    grids->addLayout(column(pupil_caption, dbg_Pupil, under_pupils), 3);
    grids->addLayout(column(register_caption, dbg_Register, under_register), 4);
    layout->addLayout(grids, 1);

    const StatusLine status_line = add_status_line(this, layout);
    frame_status = status_line.frame;
    txt_Status = status_line.text;

    setTabOrder(dbg_Course, dbg_Pupil);
    setTabOrder(dbg_Pupil, cmd_Add);
    setTabOrder(cmd_Add, dbg_Register);
    setTabOrder(dbg_Register, cmd_Delete);

    resize(minimumSizeHint().expandedTo(QSize(1120, 640)));
}

void frm_Register::connect_controls()
{
    connect(cmd_Add, &QPushButton::clicked, this, &frm_Register::cmd_Add_Click);
    connect(cmd_Delete, &QPushButton::clicked, this, &frm_Register::cmd_Delete_Click);
    connect(mnu_Exit, &QAction::triggered, this, &frm_Register::mnu_Exit_Click);
    connect(mnu_Help, &QAction::triggered, this, &frm_Register::mnu_Help_Click);

    // Going to a course shows its register; every course gone to stays chosen.
    connect(dbg_Course, &RegisterGrid::Row_Reached, this, &frm_Register::dbg_Course_Reached);
    // A heading of the pupils or of the register chooses every row; a heading
    // of the courses chooses nothing.
    connect(dbg_Pupil, &DataGrid::HeadClick, dbg_Pupil, &RegisterGrid::choose_all);
    connect(dbg_Register, &DataGrid::HeadClick, dbg_Register, &RegisterGrid::choose_all);
}

// ---- The record sets ----

void frm_Register::Setup_Controls()
{
    engine::Database* db = current_database_or_error();
    courses_ = db ? db->OpenRecordset(Course_Order_Query()) : nullptr;
    if (courses_) {
        show_rows(dbg_Course, courses_.get(), {QStringLiteral("Course_Title"), QStringLiteral("Course_id"), QStringLiteral("Description")},
                  {QStringLiteral("Title"), QStringLiteral("cid"), QStringLiteral("Description")}, {2});
    } else {
        report_grid_error(QStringLiteral("dbg_Course_Error = "));
    }

    db = current_database_or_error();
    pupils_ = db ? db->OpenRecordset(QStringLiteral("Qry_Select_Pupils_Not_Hidden")) : nullptr;
    if (pupils_) {
        show_rows(dbg_Pupil, pupils_.get(), {QStringLiteral("DisplayName")}, {QStringLiteral("Name")}, {0});
    } else {
        report_grid_error(QStringLiteral("dbg_pupil_Error = "));
    }

    // No course yet: a register of no one.
    if (register_.Open_Empty())
        show_rows(dbg_Register, register_.rows(), register_fields, register_headers, {0, 1, 2});
    else
        report_grid_error(QStringLiteral("dbg_register_Error = "));
}

void frm_Register::Display_Register(qint32 course_id, const QString& title)
{
    HourGlass wait;
    register_caption->setText(QStringLiteral("Register"));
    dbg_Register->setAccessibleName(register_caption->text());
    txt_Num_Records->clear();
    dbg_Register->set_recordset(nullptr);
    if (!register_.Open(course_id)) {
        report_grid_error(QStringLiteral("dbg_register_Error = "));
        return;
    }
    show_rows(dbg_Register, register_.rows(), register_fields, register_headers, {0, 1, 2});
    register_caption->setText(QStringLiteral("Register for ") + title);
    dbg_Register->setAccessibleName(register_caption->text());
    txt_Num_Records->setText(QString::number(register_.Count_Shown()));
}

void frm_Register::dbg_Course_Reached()
{
    const engine::Bookmark mark = dbg_Course->Bookmark();
    if (!courses_ || courses_->RecordCount() == 0 || mark < 0)
        return;
    QVector<RegisterCourse> course;
    if (!Read_Courses(*courses_, {mark}, course)) {
        report_grid_error(QStringLiteral("dbg_Course_Error = "));
        return;
    }
    Display_Register(course.front().course_id, course.front().title);
}

void frm_Register::report_grid_error(const QString& label) const
{
    Report_Error(report::BoundControl, QStringLiteral("Unexpected error "), engine::mb::Information, tag,
                 label + QString::number(engine::Err().Number));
}

void frm_Register::report_command_error(const QString& routine) const
{
    Report_Error(report::Unexpected, QStringLiteral("Unexpected error "), engine::mb::Information, tag, routine);
}

void frm_Register::close_record_sets()
{
    dbg_Course->set_recordset(nullptr);
    dbg_Pupil->set_recordset(nullptr);
    dbg_Register->set_recordset(nullptr);
    if (courses_)
        courses_->Close();
    if (pupils_)
        pupils_->Close();
    register_.Close();
    courses_.reset();
    pupils_.reset();
}

// ---- The commands ----

void frm_Register::cmd_Add_Click()
{
    const QList<engine::Bookmark> course_marks = dbg_Course->SelBookmarks_In_Order();
    if (course_marks.isEmpty()) {
        App_Box(QStringLiteral("Please select a course"));
        return;
    }
    const QList<engine::Bookmark> pupil_marks = dbg_Pupil->SelBookmarks_In_Order();
    if (pupil_marks.isEmpty()) {
        App_Box(QStringLiteral("Please select at least one pupil"));
        return;
    }
    QVector<RegisterCourse> courses;
    QVector<RegisterPupil> pupils;
    if (!courses_ || !pupils_ || !Read_Courses(*courses_, course_marks, courses)
        || !Read_Pupils(*pupils_, pupil_marks, pupils)) {
        report_command_error(QStringLiteral("cmd_add_click"));
        return;
    }
    RegisterOutcome outcome;
    const bool searched = Add_Pupils_To_Courses(
        courses, pupils, register_,
        [this](const RegisterCourse& course) { Display_Register(course.course_id, course.title); }, outcome);
    if (!searched) {
        report_command_error(QStringLiteral("cmd_add_click"));
        return;
    }
    txt_Status->setText(outcome.status);
}

void frm_Register::cmd_Delete_Click()
{
    const QList<engine::Bookmark> marks = dbg_Register->SelBookmarks_In_Order();
    if (marks.isEmpty()) {
        App_Box(QStringLiteral("Please select a pupil in the Register"));
        return;
    }
    if (App_Box(QStringLiteral("Do you really want to remove the pupil(s) from the register?"), engine::mb::YesNo)
        != engine::answer::Yes)
        return;
    QVector<RegisterEntry> entries;
    if (!register_.rows() || !Read_Register_Entries(*register_.rows(), marks, entries)) {
        report_command_error(QStringLiteral("cmd_delete_click"));
        return;
    }
    RegisterOutcome outcome;
    Remove_Pupils_From_Register(entries, outcome);
    txt_Status->setText(outcome.status);

    // The register again, of the course the course list stands on.
    QVector<RegisterCourse> current;
    if (!courses_ || !Read_Courses(*courses_, {courses_->bookmark()}, current)) {
        report_command_error(QStringLiteral("cmd_delete_click"));
        return;
    }
    Display_Register(current.front().course_id, current.front().title);
}

void frm_Register::mnu_Exit_Click()
{
    // Nothing here is ever left half done.
    Switch_Screen(this, nullptr, false);
}

void frm_Register::mnu_Help_Click()
{
    Show_Help(this, help::Context, help::context::Course_Register);
}

// ---- Events ----

void frm_Register::closeEvent(QCloseEvent* event)
{
    if (Close_Box_Is_Exit(this, event, [this] { mnu_Exit_Click(); }))
        return;
    close_record_sets();
    event->accept();
}
