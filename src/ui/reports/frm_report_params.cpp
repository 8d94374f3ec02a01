#include "ui/reports/frm_report_params.h"

#include "engine/database.h"
#include "engine/err.h"
#include "engine/jet_date.h"
#include "engine/msg_box.h"
#include "engine/vb_values.h"
#include "script/current_database.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "shell/locale_formats.h"
#include "shell/selection_lists.h"
#include "toolkit/gen_colours.h"
#include "toolkit/help_pages.h"
#include "toolkit/recordset_model.h"
#include "ui/shell/switch_screen.h"
#include "ui/toolkit/app_boxes.h"
#include "ui/toolkit/bound_fields.h"
#include "ui/toolkit/data_grid.h"
#include "ui/toolkit/format_delegate.h"
#include "ui/toolkit/screen_kit.h"

#include <QAction>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelection>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QShowEvent>
#include <QSet>
#include <QStyledItemDelegate>
#include <QTimer>
#include <QVBoxLayout>

namespace {

const QString tag = QStringLiteral("freptpar");

// A row's key as text, so that an id or a date from a list and the same from
// a record compare equal whatever their types.
QString key_text(const QVariant& value)
{
    if (value.metaType().id() == QMetaType::QDateTime)
        return value.toDateTime().date().toString(Qt::ISODate);
    if (value.metaType().id() == QMetaType::QDate)
        return value.toDate().toString(Qt::ISODate);
    return QString::number(value.toLongLong());
}

QVector<QVariant> counted(const IdList& list)
{
    QVector<QVariant> values;
    for (qint32 id : list.chosen())
        if (id > 0)
            values << id;
    return values;
}

QVector<QVariant> counted(const DateList& list)
{
    QVector<QVariant> values;
    for (const QDate& day : list.chosen())
        if (day.isValid() && day > engine::zero_date())
            values << day;
    return values;
}

void refill(IdList& list, const QVector<QVariant>& values)
{
    list.reset();
    for (const QVariant& value : values)
        list.append(static_cast<qint32>(value.toLongLong()));
}

void refill(DateList& list, const QVector<QVariant>& values)
{
    list.reset();
    for (const QVariant& value : values)
        list.append(value.toDateTime().date());
}

}  // namespace

frm_Report_Params::frm_Report_Params(QWidget* parent)
    : QWidget(parent, Qt::Window),
      standard_(QStringLiteral("Data_Stndrd"), QStringLiteral("Error accessing Standard Values Control "), tag)
{
    setObjectName(QStringLiteral("frm_Report_Params"));
    setWindowTitle(QStringLiteral("Select Report Criteria"));
    Screen_Setup(this, true, Glob_Form_Colour());
    build_controls();
    for (QGroupBox* frame : {frame_Terms, frame_Courses, frame_Exams, frame_Pupils, frame_Rates, frame_status})
        set_frame_colour(frame, Glob_Form_Colour());
    txt_Status->clear();
    connect_controls();
    Setup_Controls();
    Show_Selections();
}

frm_Report_Params::~frm_Report_Params()
{
    bindings_.clear();
    standard_.Close();
}

// ---- Construction ----

QGroupBox* frm_Report_Params::build_frame(const QString& name, const QString& title, QRadioButton*& all,
                                          const QString& all_name, const QString& all_caption, QRadioButton*& specific,
                                          const QString& specific_name, const QString& specific_caption)
{
    auto* frame = new QGroupBox(title, this);
    frame->setObjectName(name);
    all = new QRadioButton(all_caption, frame);
    all->setObjectName(all_name);
    specific = new QRadioButton(specific_caption, frame);
    specific->setObjectName(specific_name);
    auto* layout = new QVBoxLayout(frame);
    auto* options = new QHBoxLayout;
    options->addWidget(all);
    options->addWidget(specific);
    options->addStretch(1);
    layout->addLayout(options);
    return frame;
}

DataGrid* frm_Report_Params::make_grid(QWidget* parent, const QString& name, const QString& accessible_name)
{
    auto* grid = new DataGrid(parent);
    grid->setObjectName(name);
    grid->setAccessibleName(accessible_name);
    grid->verticalHeader()->hide();
    grid->setMinimumSize(grid->fontMetrics().averageCharWidth() * 24, grid->fontMetrics().height() * 8);
    // A grid hidden by its All option keeps its room, so that nothing jumps about.
    QSizePolicy policy = grid->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    grid->setSizePolicy(policy);
    return grid;
}

void frm_Report_Params::build_controls()
{
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(8);

    const ExitHelpMenu menu = add_exit_help_menu(this, layout);
    menu_bar = menu.bar;
    mnu_Exit = menu.exit;
    mnu_Help = menu.help;

    frame_Terms = build_frame(QStringLiteral("frame_Terms"), QStringLiteral("Term"), opt_All_Terms,
                              QStringLiteral("opt_All_Terms"), QStringLiteral("All Terms"), opt_Specific_Terms,
                              QStringLiteral("opt_Specific_Terms"), QStringLiteral("Specific Terms"));
    dbg_Term = make_grid(frame_Terms, QStringLiteral("dbg_Term"), QStringLiteral("Terms"));
    frame_Terms->layout()->addWidget(dbg_Term);

    frame_Courses = build_frame(QStringLiteral("frame_Courses"), QStringLiteral("Courses"), opt_All_Courses,
                                QStringLiteral("opt_All_Courses"), QStringLiteral("All Courses "), opt_Specific_Courses,
                                QStringLiteral("opt_Specific_Courses"), QStringLiteral("Specific Courses "));
    dbg_Course = make_grid(frame_Courses, QStringLiteral("dbg_Course"), QStringLiteral("Courses"));
    frame_Courses->layout()->addWidget(dbg_Course);

    frame_Exams = build_frame(QStringLiteral("frame_Exams"), QStringLiteral("Activities"), opt_All_Exams,
                              QStringLiteral("opt_All_Exams"), QStringLiteral("All Activities"), opt_Specific_Exams,
                              QStringLiteral("opt_Specific_Exams"), QStringLiteral("Specific Activity"));
    dbg_Exam = make_grid(frame_Exams, QStringLiteral("dbg_Exam"), QStringLiteral("Activities"));
    dbg_Activity_Dates = make_grid(frame_Exams, QStringLiteral("dbg_Activity_Dates"), QStringLiteral("Activity Dates"));
    // Activity dates show in the long date format, as everywhere else.
    dbg_Activity_Dates->setItemDelegateForColumn(0, new FormatDelegate(Glob_Date_Format(), false, dbg_Activity_Dates));
    frame_Exams->layout()->addWidget(dbg_Exam);
    frame_Exams->layout()->addWidget(dbg_Activity_Dates);

    frame_Pupils = build_frame(QStringLiteral("frame_Pupils"), QStringLiteral("for whom"), opt_All_Pupils,
                               QStringLiteral("opt_All_Pupils"), QStringLiteral("All Pupils"), opt_Specific_Pupils,
                               QStringLiteral("opt_Specific_Pupils"), QStringLiteral("Specific Pupils"));
    dbg_Pupil = make_grid(frame_Pupils, QStringLiteral("dbg_Pupil"), QStringLiteral("Pupils"));
    frame_Pupils->layout()->addWidget(dbg_Pupil);

    // Terms over courses, the activities with their dates, the pupils: the
    // order in which a run narrows its choice.
    auto* frames = new QGridLayout;
    frames->setSpacing(10);
    frames->addWidget(frame_Terms, 0, 0);
    frames->addWidget(frame_Courses, 1, 0);
    frames->addWidget(frame_Exams, 0, 1, 2, 1);
    frames->addWidget(frame_Pupils, 0, 2, 2, 1);
    for (int column = 0; column < 3; ++column)
        frames->setColumnStretch(column, 1);
    frames->setRowStretch(0, 1);
    frames->setRowStretch(1, 1);
    layout->addLayout(frames, 1);

    // The default rates that invoicing uses, for reference; they are changed
    // on the Report Messages screen.
    frame_Rates = new QGroupBox(QStringLiteral("Default rates used by invoicing"), this);
    frame_Rates->setObjectName(QStringLiteral("frame_Rates"));
    auto* rates = new QHBoxLayout(frame_Rates);
    const auto rate_box = [this](const QString& name, const QString& caption, QHBoxLayout* row) {
        auto* field = new QLineEdit(frame_Rates);
        field->setObjectName(name);
        field->setReadOnly(true);
        field->setFocusPolicy(Qt::NoFocus);
        field->setAlignment(Qt::AlignRight);
        field->setFixedWidth(field->fontMetrics().horizontalAdvance(QStringLiteral("0000000.00")) + 16);
        auto* label = new QLabel(caption, frame_Rates);
        label->setBuddy(field);
        row->addWidget(label);
        row->addWidget(field);
        return field;
    };
    txt_Course_Hourly_Rate = rate_box(QStringLiteral("txt_Course_Hourly_Rate"), QStringLiteral("Course rate per hour :"), rates);
    rates->addSpacing(16);
    txt_Exam_Hourly_Rate = rate_box(QStringLiteral("txt_Exam_Hourly_Rate"), QStringLiteral("Exam charge per entrant :"), rates);
    rates->addStretch(1);

    cmd_Go = new QPushButton(QStringLiteral("&Finished"), this);
    cmd_Go->setObjectName(QStringLiteral("cmd_Go"));
    cmd_Go->setDefault(true);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(frame_Rates, 1);
    bottom->addSpacing(16);
    bottom->addWidget(cmd_Go, 0, Qt::AlignBottom);
    layout->addLayout(bottom);

    const StatusLine status_line = add_status_line(this, layout);
    frame_status = status_line.frame;
    txt_Status = status_line.text;

    for (QLineEdit* field : {txt_Course_Hourly_Rate, txt_Exam_Hourly_Rate}) {
        bindings_.push_back(make_bound_field(field, field == txt_Course_Hourly_Rate ? QStringLiteral("Deflt_Course_Hourly_Rate")
                                                                                     : QStringLiteral("Deflt_Exam_Hourly_Rate")));
        bindings_.back()->set_read_only(true);
        bindings_.back()->set_money(true);  // the columns are single, the values money
        standard_.bind(bindings_.back().get());
    }

    resize(minimumSizeHint().expandedTo(QSize(960, 640)));
}

void frm_Report_Params::connect_controls()
{
    connect(cmd_Go, &QPushButton::clicked, this, &frm_Report_Params::cmd_Go_Click);
    connect(mnu_Exit, &QAction::triggered, this, &frm_Report_Params::mnu_Exit_Click);
    connect(mnu_Help, &QAction::triggered, this, &frm_Report_Params::mnu_Help_Click);

    // All forgets the list at once and hides its grid; Specific shows it.
    connect(opt_All_Terms, &QRadioButton::clicked, this, [this] {
        Sel_Terms().reset();
        dbg_Term->clearSelection();
        dbg_Term->hide();
    });
    connect(opt_All_Courses, &QRadioButton::clicked, this, [this] {
        Sel_Courses().reset();
        dbg_Course->clearSelection();
        dbg_Course->hide();
    });
    connect(opt_All_Exams, &QRadioButton::clicked, this, [this] {
        Sel_Activities().reset();
        Sel_Activity_Dates().reset();
        for (DataGrid* grid : {dbg_Exam, dbg_Activity_Dates}) {
            grid->clearSelection();
            grid->hide();
        }
    });
    connect(opt_All_Pupils, &QRadioButton::clicked, this, [this] {
        Sel_Pupils().reset();
        dbg_Pupil->clearSelection();
        dbg_Pupil->hide();
    });
    connect(opt_Specific_Terms, &QRadioButton::clicked, dbg_Term, &QWidget::show);
    connect(opt_Specific_Courses, &QRadioButton::clicked, dbg_Course, &QWidget::show);
    connect(opt_Specific_Exams, &QRadioButton::clicked, this, [this] {
        dbg_Exam->show();
        dbg_Activity_Dates->show();
    });
    connect(opt_Specific_Pupils, &QRadioButton::clicked, dbg_Pupil, &QWidget::show);

    // A heading click chooses every activity, or every date.
    for (DataGrid* grid : {dbg_Exam, dbg_Activity_Dates}) {
        connect(grid, &DataGrid::HeadClick, grid, [grid] { grid->selectAll(); });
        connect(grid, &DataGrid::RowColChange, this, [this, grid] { grid_row_changed(grid); });
    }
}

// ---- The rows of the grids ----

void frm_Report_Params::Setup_Controls()
{
    terms_ = {dbg_Term, QStringLiteral("Qry_Select_Terms"), QStringLiteral("Term_id"), QStringLiteral("dbg_term_Error = "), nullptr};
    courses_ = {dbg_Course, QStringLiteral("Courses"), QStringLiteral("Course_id"), QStringLiteral("dbg_course_Error = "), nullptr};
    exams_ = {dbg_Exam, QStringLiteral("Select * from Exams order by Exam_Dance, Exam_Level"), QStringLiteral("Exam_id"),
              QStringLiteral("dbg_exam_Error = "), nullptr};
    dates_ = {dbg_Activity_Dates, QStringLiteral("Qry_Select_Activity_Dates"), QStringLiteral("Activity_Date"),
              QStringLiteral("dbg_Activity_dates_Error = "), nullptr};
    pupils_ = {dbg_Pupil, QStringLiteral("Qry_Select_Pupils_Not_Hidden"), QStringLiteral("Pid"),
               QStringLiteral("dbg_pupil_Error = "), nullptr};
    if (open_grid(terms_))
        dbg_Term->set_columns({QStringLiteral("Term_Name")}, {QStringLiteral("Term Name")});
    if (open_grid(courses_))
        dbg_Course->set_columns({QStringLiteral("Course_Title")}, {QStringLiteral("Title")});
    if (open_grid(exams_))
        dbg_Exam->set_columns({QStringLiteral("Exam_Title")}, {QStringLiteral("Title")});
    if (open_grid(dates_))
        dbg_Activity_Dates->set_columns({QStringLiteral("Activity_Date"), QStringLiteral("Activity_Title")},
                                        {QStringLiteral("Date"), QStringLiteral("Title")});
    if (open_grid(pupils_))
        dbg_Pupil->set_columns({QStringLiteral("DisplayName")}, {QStringLiteral("Name")});

    engine::Database* db = current_database_or_error();
    if (db)
        standard_.Refresh(db, QStringLiteral("Standard_Values"));
    engine::Err().Clear();
}

bool frm_Report_Params::open_grid(GridSource& source)
{
    source.grid->set_recordset(nullptr);
    engine::Database* db = current_database_or_error();
    source.rows = db ? db->OpenRecordset(source.source) : nullptr;
    if (!source.rows) {
        report_grid_error(source);
        return false;
    }
    source.grid->set_recordset(source.rows.get());
    return true;
}

void frm_Report_Params::report_grid_error(const GridSource& source) const
{
    Report_Error(report::BoundControl, source.error_label + QString::number(engine::Err().Number), engine::mb::OkOnly, tag,
                 source.grid->objectName());
}

void frm_Report_Params::select_rows_holding(GridSource& source, const QVector<QVariant>& values)
{
    DataGrid* grid = source.grid;
    grid->clearSelection();
    if (!source.rows || values.isEmpty())
        return;
    QSet<QString> wanted;
    for (const QVariant& value : values)
        wanted.insert(key_text(value));
    QItemSelection rows;
    int first_row = -1;
    std::unique_ptr<engine::Recordset> walk = source.rows->Clone();
    if (walk && walk->RecordCount() > 0 && walk->MoveFirst()) {
        while (!walk->at_eof()) {
            if (wanted.contains(key_text(walk->Fields(source.key_field)))) {
                const int row = grid->model_of_records()->row_of(walk->bookmark());
                if (row >= 0) {
                    rows.select(grid->model()->index(row, 0), grid->model()->index(row, grid->model()->columnCount() - 1));
                    if (first_row < 0 || row < first_row)
                        first_row = row;
                }
            }
            if (!walk->MoveNext())
                break;
        }
    }
    engine::Err().Clear();
    if (first_row < 0)
        return;
    grid->selectionModel()->setCurrentIndex(grid->model()->index(first_row, 0), QItemSelectionModel::NoUpdate);
    grid->selectionModel()->select(rows, QItemSelectionModel::Select | QItemSelectionModel::Rows);
    grid->scrollTo(grid->model()->index(first_row, 0));
}

bool frm_Report_Params::selected_values(GridSource& source, QVector<QVariant>& values)
{
    values.clear();
    for (const engine::Bookmark mark : source.grid->SelBookmarks()) {
        QVariant value;
        if (!source.rows || !source.rows->set_bookmark(mark) || !source.rows->get(source.key_field, value)) {
            report_grid_error(source);
            return false;
        }
        values << value;
    }
    return true;
}

// Moving onto a row of a grid that has nothing chosen chooses that row. It is
// looked at once the click or key that moved has made its own choice, so that
// a Ctrl+click doesn't take back the row it has just chosen.
void frm_Report_Params::grid_row_changed(DataGrid* grid)
{
    QTimer::singleShot(0, grid, [grid] {
        if (!grid->SelBookmarks().isEmpty() || grid->Bookmark() < 0)
            return;
        grid->selectionModel()->select(grid->currentIndex(), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    });
}

// ---- The selections ----

void frm_Report_Params::Show_Selections()
{
    const QVector<QVariant> terms = counted(Sel_Terms());
    const QVector<QVariant> courses = counted(Sel_Courses());
    const QVector<QVariant> activities = counted(Sel_Activities());
    const QVector<QVariant> dates = counted(Sel_Activity_Dates());
    const QVector<QVariant> pupils = counted(Sel_Pupils());
    const bool exams = !activities.isEmpty() || !dates.isEmpty();

    (terms.isEmpty() ? opt_All_Terms : opt_Specific_Terms)->setChecked(true);
    (courses.isEmpty() ? opt_All_Courses : opt_Specific_Courses)->setChecked(true);
    (exams ? opt_Specific_Exams : opt_All_Exams)->setChecked(true);
    (pupils.isEmpty() ? opt_All_Pupils : opt_Specific_Pupils)->setChecked(true);
    select_rows_holding(terms_, terms);
    select_rows_holding(courses_, courses);
    select_rows_holding(exams_, activities);
    select_rows_holding(dates_, dates);
    select_rows_holding(pupils_, pupils);
    show_grids(!terms.isEmpty(), !courses.isEmpty(), exams, !pupils.isEmpty());
}

void frm_Report_Params::show_grids(bool terms, bool courses, bool exams, bool pupils)
{
    dbg_Term->setVisible(terms);
    dbg_Course->setVisible(courses);
    dbg_Exam->setVisible(exams);
    dbg_Activity_Dates->setVisible(exams);
    dbg_Pupil->setVisible(pupils);
}

void frm_Report_Params::cmd_Go_Click()
{
    QVector<QVariant> values;
    if (opt_Specific_Courses->isChecked()) {
        if (dbg_Course->SelBookmarks().isEmpty()) {
            App_Box(QStringLiteral("Please select a course"));
            return;
        }
        if (!selected_values(courses_, values))
            return;
        refill(Sel_Courses(), values);
    }
    if (opt_Specific_Exams->isChecked()) {
        if (dbg_Exam->SelBookmarks().isEmpty() && dbg_Activity_Dates->SelBookmarks().isEmpty()) {
            App_Box(QStringLiteral("Please select an Activity and/or Date"));
            return;
        }
        QVector<QVariant> days;
        if (!selected_values(exams_, values) || !selected_values(dates_, days))
            return;
        refill(Sel_Activities(), values);
        refill(Sel_Activity_Dates(), days);
    }
    if (opt_Specific_Pupils->isChecked()) {
        if (dbg_Pupil->SelBookmarks().isEmpty()) {
            App_Box(QStringLiteral("Please select a pupil"));
            return;
        }
        if (!selected_values(pupils_, values))
            return;
        refill(Sel_Pupils(), values);
    }
    if (opt_Specific_Terms->isChecked()) {
        if (dbg_Term->SelBookmarks().isEmpty()) {
            App_Box(QStringLiteral("Please select a term"));
            return;
        }
        if (!selected_values(terms_, values))
            return;
        refill(Sel_Terms(), values);
    }
    Switch_Screen(this, nullptr, false);
}

void frm_Report_Params::mnu_Exit_Click()
{
    const bool all = opt_All_Terms->isChecked() && opt_All_Courses->isChecked() && opt_All_Exams->isChecked()
                     && opt_All_Pupils->isChecked();
    if (all) {
        Switch_Screen(this, nullptr, false);
        return;
    }
    const QString question =
        QStringLiteral("You have not set up your selections. ") + QLatin1Char('\n') + QStringLiteral("Do you wish to save them? ");
    if (App_Box(question, engine::mb::YesNo | engine::mb::Question) == engine::answer::Yes)
        cmd_Go_Click();
    else
        Switch_Screen(this, nullptr, false);
}

void frm_Report_Params::mnu_Help_Click()
{
    Show_Help(this, help::Context, help::context::Report_Selections);
}

// ---- Events ----

void frm_Report_Params::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    // Shown again after being hidden: the lists may have changed meanwhile.
    if (!event->spontaneous())
        Show_Selections();
}

void frm_Report_Params::closeEvent(QCloseEvent* event)
{
    if (Close_Box_Is_Exit(this, event, [this] { mnu_Exit_Click(); }))
        return;
    standard_.Close();
    event->accept();
}
