#include "ui/exams/frm_exam_list.h"

#include "activities/timetable_store.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "engine/vb_values.h"
#include "script/current_database.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "shell/locale_formats.h"
#include "toolkit/help_pages.h"
#include "ui/exams/register_drag_grid.h"
#include "ui/shell/switch_screen.h"
#include "ui/toolkit/app_boxes.h"
#include "ui/toolkit/form_rows.h"
#include "ui/toolkit/screen_kit.h"
#include "ui/toolkit/text_box_grid_widget.h"

#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QShowEvent>
#include <QVBoxLayout>

namespace {

constexpr int timetable_headers = 8;
constexpr int timetable_elements = 112;

// Each heading's tool tip, and the width of its column in characters.
struct HeaderLook {
    const char* tooltip;
    int characters;
    int stretch;
};
const HeaderLook header_looks[timetable_headers] = {
    {"Time calculated from the start time, duration and extra", 9, 0},
    {"Time currently stored in the database", 6, 0},
    {"Duration (in minutes) of exam (from Activities screen)", 9, 0},
    {"Extra minutes needed due to extra pupils in the exam - you can change these and it may be negative!", 6, 0},
    {"Number of pupils taking the exam together", 6, 0},
    {"Title of the exam (from Activities screen)", 14, 1},
    {nullptr, 30, 3},
    {nullptr, 0, 0},
};

}  // namespace

frm_ExamList::frm_ExamList(QWidget* parent)
    : QWidget(parent, Qt::Window), txg(new TextBoxGridWidget(timetable_headers, timetable_elements, this)),
      timetable_(txg->grid())
{
    setObjectName(QStringLiteral("frm_ExamList"));
    setWindowTitle(QStringLiteral("Pupils taking part in Exams"));
    Screen_Setup(this, true, Glob_Form_Colour());
    build_controls();
    txt_Status->clear();
    connect_controls();
    Setup_Controls();
    timetable_.Initialise();
}

frm_ExamList::~frm_ExamList()
{
    close_record_sets();
}

// ---- Construction ----

QWidget* frm_ExamList::build_lists()
{
    auto* lists = new QWidget(this);
    auto* column = new QVBoxLayout(lists);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    DBG_Dates_Caption = bold_caption(QStringLiteral("Activity Dates"), lists);
    DBG_Dates = new DataGrid(lists);
    DBG_Dates->setObjectName(QStringLiteral("DBG_Dates"));
    DBG_Dates->setAccessibleName(DBG_Dates_Caption->text());
    DBG_Dates->setSelectionMode(QAbstractItemView::SingleSelection);
    DBG_Dates->verticalHeader()->hide();
    DBG_Dates_Caption->setBuddy(DBG_Dates);
    dbg_Register_Caption = bold_caption(QStringLiteral("Pupils without times"), lists);
    dbg_Register = new RegisterDragGrid(lists);
    dbg_Register->setObjectName(QStringLiteral("dbg_Register"));
    dbg_Register->setAccessibleName(dbg_Register_Caption->text());
    dbg_Register->verticalHeader()->hide();
    dbg_Register_Caption->setBuddy(dbg_Register);
    const int character = fontMetrics().averageCharWidth();
    DBG_Dates->setMinimumSize(character * 40, fontMetrics().height() * 7);
    dbg_Register->setMinimumSize(character * 40, fontMetrics().height() * 12);
    column->addWidget(DBG_Dates_Caption);
    column->addWidget(DBG_Dates, 2);
    column->addSpacing(6);
    column->addWidget(dbg_Register_Caption);
    column->addWidget(dbg_Register, 5);
    return lists;
}

QWidget* frm_ExamList::build_timetable()
{
    auto* timetable = new QWidget(this);
    auto* column = new QVBoxLayout(timetable);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);

    // The start time first, then what can be done to the timetable.
    auto* commands = new QHBoxLayout;
    txt_Start = new QLineEdit(timetable);
    txt_Start->setObjectName(QStringLiteral("txt_Start"));
    txt_Start->setToolTip(QStringLiteral("Enter the start time of the exam session e.g. 09:00"));
    txt_Start->setFixedWidth(fontMetrics().horizontalAdvance(QStringLiteral("00:00 am")) + 16);
    auto* start_label = new QLabel(QStringLiteral("Start Time"), timetable);
    start_label->setBuddy(txt_Start);
    txt_Start->setAccessibleName(start_label->text());
    cmd_Add_Pupil = make_button(timetable, QStringLiteral("cmd_Add_Pupil"), QStringLiteral("Add &Pupils"));
    cmd_Add_Break = make_button(timetable, QStringLiteral("cmd_Add_Break"), QStringLiteral("Add &Break"));
    cmd_Delete_Slot = make_button(timetable, QStringLiteral("cmd_Delete_Slot"), QStringLiteral("&Delete "));
    cmd_Update = make_button(timetable, QStringLiteral("cmd_Update"), QStringLiteral("&Update"));
    commands->addWidget(start_label);
    commands->addWidget(txt_Start);
    commands->addSpacing(12);
    for (QPushButton* button : {cmd_Add_Pupil, cmd_Add_Break, cmd_Delete_Slot})
        commands->addWidget(button);
    commands->addStretch(1);
    commands->addWidget(cmd_Update);
    column->addLayout(commands);

    txg->setObjectName(QStringLiteral("txg_Timetable"));
    for (int i = 0; i < timetable_headers; ++i) {
        const HeaderLook& look = header_looks[i];
        if (look.tooltip)
            txg->txg_Hdr[i]->setToolTip(QString::fromLatin1(look.tooltip));
        txg->set_column_width(i, look.characters, look.stretch);
    }
    for (QLineEdit* element : txg->txg_Element)
        element->setAccessibleName(QStringLiteral("Timetable"));
    column->addWidget(txg);
    column->addStretch(1);
    return timetable;
}

void frm_ExamList::build_controls()
{
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(8);
    const ExitHelpMenu menu = add_exit_help_menu(this, layout);
    menu_bar = menu.bar;
    mnu_Exit = menu.exit;
    mnu_Help = menu.help;

    auto* body = new QHBoxLayout;
    body->setSpacing(14);
    body->addWidget(build_lists(), 2);
    body->addWidget(build_timetable(), 5);
    layout->addLayout(body, 1);

    const StatusLine status_line = add_status_line(this, layout);
    frame_status = status_line.frame;
    txt_Status = status_line.text;

    setTabOrder(DBG_Dates, dbg_Register);
    setTabOrder(dbg_Register, txt_Start);
    setTabOrder(txt_Start, cmd_Add_Pupil);
    setTabOrder(cmd_Add_Pupil, cmd_Add_Break);
    setTabOrder(cmd_Add_Break, cmd_Delete_Slot);
    setTabOrder(cmd_Delete_Slot, cmd_Update);
    setTabOrder(cmd_Update, txg->txg_Element.first());
    resize(minimumSizeHint().expandedTo(QSize(1180, 0)));
}

void frm_ExamList::connect_controls()
{
    connect(cmd_Add_Pupil, &QPushButton::clicked, this, &frm_ExamList::cmd_Add_Pupil_Click);
    connect(cmd_Add_Break, &QPushButton::clicked, this, &frm_ExamList::cmd_Add_Break_Click);
    connect(cmd_Delete_Slot, &QPushButton::clicked, this, &frm_ExamList::cmd_Delete_Slot_Click);
    connect(cmd_Update, &QPushButton::clicked, this, &frm_ExamList::cmd_Update_Click);
    connect(mnu_Exit, &QAction::triggered, this, &frm_ExamList::mnu_Exit_Click);
    connect(mnu_Help, &QAction::triggered, this, &frm_ExamList::mnu_Help_Click);
    connect(DBG_Dates, &DataGrid::RowColChange, this, &frm_ExamList::DBG_Dates_RowColChange);
    connect(dbg_Register, &DataGrid::RowColChange, this, &frm_ExamList::dbg_Register_RowColChange);
    // A click on a heading chooses every pupil.
    connect(dbg_Register, &DataGrid::HeadClick, dbg_Register, [this] {
        if (register_ && register_->RecordCount() > 0)
            dbg_Register->selectAll();
    });
    connect(txg, &TextBoxGridWidget::Element_LostFocus, this, &frm_ExamList::element_left);
    connect(txg, &TextBoxGridWidget::Element_Drop, this, &frm_ExamList::element_dropped);
    txt_Start->installEventFilter(this);
    Enter_To_Tab(txt_Start);
}

// ---- The record sets ----

void frm_ExamList::Setup_Controls()
{
    engine::Database* db = current_database_or_error();
    register_ = db ? db->OpenRecordset(QStringLiteral("Select Results_id from Exam_Results where Results_id = 0")) : nullptr;
    dates_ = db ? db->OpenRecordset(QStringLiteral("Qry_Select_Dates_Of_Exams_Only")) : nullptr;
    if (!dates_ || !register_) {
        Report_Error(report::BoundControl, QStringLiteral("Unexpected error "), engine::mb::Information, timetable::module(),
                     QStringLiteral("data_Dates_Error = ") + QString::number(engine::Err().Number));
        return;
    }
    timetable_.set_register(register_.get());
    DBG_Dates->set_recordset(dates_.get());
    DBG_Dates->set_columns({QStringLiteral("ActT_Date"), QStringLiteral("ActT_Title")},
                           {QStringLiteral("Date"), QStringLiteral("Title")});
    DBG_Dates->set_column_picture(0, Glob_Date_Format());
    DBG_Dates->horizontalHeader()->setStretchLastSection(true);
    show_register();
    // The newest date is the one on view.
    if (dates_->RecordCount() > 0 && dates_->MoveFirst()) {
        shown_date_ = dates_->bookmark();
        DBG_Dates->set_Bookmark(shown_date_);
    }
}

void frm_ExamList::show_register()
{
    dbg_Register->set_recordset(register_.get());
    if (register_ && register_->field_index(QStringLiteral("DisplayName")) >= 0)
        dbg_Register->set_columns({QStringLiteral("Exam_Title"), QStringLiteral("DisplayName"), QStringLiteral("Results_id"),
                                   QStringLiteral("Exam_Duration")},
                                  {QStringLiteral("Title"), QStringLiteral("Pupil"), QStringLiteral("Result id"),
                                   QStringLiteral("Duration")});
    dbg_Register->horizontalHeader()->setStretchLastSection(false);
    dbg_Register->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    if (dbg_Register->horizontalHeader()->count() > 1)
        dbg_Register->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
}

void frm_ExamList::Setup_Register()
{
    if (!dates_ || dates_->RecordCount() == 0 || dates_->at_bof() || dates_->at_eof())
        return;
    HourGlass wait;
    const QVariant day = dates_->Fields(QStringLiteral("ActT_Date"));
    dbg_Register_Caption->setText(QStringLiteral("Pupils without times on ") + vb::Format(day, Glob_Date_Format()));
    dbg_Register->setAccessibleName(dbg_Register_Caption->text());
    dbg_Register->set_recordset(nullptr);
    register_ = timetable::open_pupils_without_times(day.toDateTime().date());
    if (!register_)
        Report_Error(report::BoundControl, QStringLiteral("Unexpected error "), engine::mb::Information, timetable::module(),
                     QStringLiteral("data_Register_Error = ") + QString::number(engine::Err().Number));
    timetable_.set_register(register_.get());
    show_register();
    take_start();
    timetable_.Setup_Grid(day.toDateTime().date());
    show_outcome();
}

void frm_ExamList::close_record_sets()
{
    timetable_.set_register(nullptr);
    DBG_Dates->set_recordset(nullptr);
    dbg_Register->set_recordset(nullptr);
    if (register_)
        register_->Close();
    if (dates_)
        dates_->Close();
    register_.reset();
    dates_.reset();
}

// ---- Between the widgets and the timetable ----

void frm_ExamList::take_start()
{
    timetable_.start = txt_Start->text();
}

void frm_ExamList::show_outcome()
{
    txt_Start->setText(timetable_.start);
    txt_Status->setText(timetable_.status);
    dbg_Register->Refresh();
}

// ---- Activate and the lists ----

void frm_ExamList::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous())
        Activate_When_Shown(this, [this] { Activate(); });
}

void frm_ExamList::Activate()
{
    if (!dates_ || dates_->RecordCount() == 0) {
        txt_Status->setText(QStringLiteral("There are NO Dates"));
        return;
    }
    Setup_Register();
    loading_ = false;
}

void frm_ExamList::DBG_Dates_RowColChange()
{
    const engine::Bookmark mark = DBG_Dates->Bookmark();
    if (loading_ || !dates_ || mark < 0 || mark == shown_date_)
        return;
    take_start();
    if (!timetable_.OK_TO_Exit()) {
        // The list stays on the row chosen; the timetable on its own date.
        App_Box(QStringLiteral("Cannot change the date while there are changes outstanding"));
        return;
    }
    dates_->set_bookmark(mark);
    shown_date_ = mark;
    Setup_Register();
}

void frm_ExamList::dbg_Register_RowColChange()
{
    // The row under the cursor counts as chosen when nothing else is.
    const QModelIndex current = dbg_Register->currentIndex();
    if (current.isValid() && dbg_Register->SelBookmarks().isEmpty())
        dbg_Register->selectRow(current.row());
}

// ---- The commands ----

void frm_ExamList::cmd_Add_Pupil_Click()
{
    HourGlass wait;
    take_start();
    if (!vb::IsDate(txt_Start->text())) {
        App_Box(QStringLiteral("Please enter a valid start time"));
        return;
    }
    timetable_.Handle_Add_Pupil(dbg_Register->SelBookmarks());
    timetable_.Calculate_Times();
    txg->grid().txg_repaint();
    show_outcome();
}

void frm_ExamList::element_dropped(int element, QObject* source)
{
    if (!source || source->objectName() != dbg_Register->objectName())
        return;
    // As Add Pupils, onto the row dropped on, with times left to the next recalculation.
    take_start();
    txg->grid().txg_click(element);
    timetable_.Handle_Add_Pupil(dbg_Register->SelBookmarks());
    show_outcome();
}

void frm_ExamList::cmd_Add_Break_Click()
{
    HourGlass wait;
    take_start();
    timetable_.cmd_Add_Break();
    show_outcome();
}

void frm_ExamList::cmd_Delete_Slot_Click()
{
    HourGlass wait;
    take_start();
    timetable_.Handle_Delete_Slot();
    show_outcome();
}

void frm_ExamList::cmd_Update_Click()
{
    HourGlass wait;
    take_start();
    timetable_.Handle_Update();
    if (dates_ && dates_->RecordCount() > 0 && !dates_->at_bof() && !dates_->at_eof())
        timetable_.Setup_Grid(dates_->Fields(QStringLiteral("ActT_Date")).toDateTime().date());
    show_outcome();
}

// ---- Editing ----

void frm_ExamList::element_left(int element)
{
    HourGlass wait;
    take_start();
    timetable_.Element_Left(element, txg->txg_Element[element]->text());
    show_outcome();
}

void frm_ExamList::start_left()
{
    HourGlass wait;
    take_start();
    timetable_.Calculate_Times();
    txg->grid().txg_repaint();
}

bool frm_ExamList::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == txt_Start && Is_Field_Left(event))
        start_left();
    return QWidget::eventFilter(watched, event);
}

// ---- Leaving ----

void frm_ExamList::mnu_Exit_Click()
{
    // A last edit is taken in before deciding.
    cmd_Update->setFocus(Qt::OtherFocusReason);
    QCoreApplication::processEvents();
    take_start();
    if (timetable_.OK_TO_Exit()) {
        Switch_Screen(this, nullptr, false);
        return;
    }
    const int answer = App_Box(QStringLiteral("You have made changes to times that have not been stored in the database.\n"
                                          "Do you wish to save the changes?"),
                           engine::mb::YesNo | engine::mb::Question);
    if (answer == engine::answer::Yes) {
        // The screen stays open, showing the timetable as stored.
        cmd_Update_Click();
        return;
    }
    Switch_Screen(this, nullptr, false);
}

void frm_ExamList::mnu_Help_Click()
{
    Show_Help(this, help::Context, help::context::Exam_Timetable);
}

void frm_ExamList::closeEvent(QCloseEvent* event)
{
    if (Close_Box_Is_Exit(this, event, [this] { mnu_Exit_Click(); }))
        return;
    close_record_sets();
    event->accept();
}
