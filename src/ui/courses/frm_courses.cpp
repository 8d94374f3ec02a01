#include "ui/courses/frm_courses.h"

#include "courses/course_entry.h"
#include "database/course_exam_deletion.h"
#include "database/db_handling.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "engine/vb_values.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "shell/report_numbers.h"
#include "toolkit/help_pages.h"
#include "ui/toolkit/keyed_names.h"
#include "ui/toolkit/screen_kit.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFocusEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QTimer>

namespace {

RecordScreenWords course_words()
{
    RecordScreenWords words;
    words.form_name = QStringLiteral("frm_Courses");
    words.caption = QStringLiteral("Courses");
    words.module = QStringLiteral("fCourse");
    words.move_selected_module = QStringLiteral("fcourses");
    words.data_name = QStringLiteral("data_Courses");
    words.noun = QStringLiteral("Course");
    words.choose_title = QStringLiteral("Choose a Course Title to edit, or ");
    words.titles_out_of_date = QStringLiteral("Unexpected error - titles are out of date");
    words.title_missing = QStringLiteral("There must be a Course Title");
    words.title_quotes = QStringLiteral("The title cannot include quotes");
    words.duplicate = QStringLiteral("The Course Title must be unique");
    words.lost_after_update = QStringLiteral("Could not find the Course that has just been updated!");
    words.help_context = help::context::Courses;
    return words;
}

// The tag of Validate_Data's own report of a start time that isn't a time.
const QString validate_module = QStringLiteral("fcourse");

// The teachers' list, as two pieces of text joined.
const QString teachers_sql = QStringLiteral("SELECT Teacher_id, Teacher_NickName FROM Teachers ")
                             + QStringLiteral(" ORDER BY Teacher_NickName ;");

bool leaving(QEvent* event)
{
    if (event->type() != QEvent::FocusOut)
        return false;
    // A message box or a pop-up taking the focus for a moment isn't leaving the field.
    const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
    return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason;
}

// A short value needs a short box; a wide one only invites longer text.
void narrow(QLineEdit* edit, int characters)
{
    edit->setFixedWidth(edit->fontMetrics().horizontalAdvance(QLatin1Char('0')) * characters + 16);
}

}  // namespace

frm_Courses::frm_Courses(QWidget* parent) : RecordScreen(course_words(), parent)
{
    // When and what on the left; who, where and how it is charged on the right.
    txt_Course_Title = add_line(0, QStringLiteral("txt_Course_Title"), QStringLiteral("Title :"));
    txt_Description = add_line(0, QStringLiteral("txt_Description"), QStringLiteral("Description :"));
    lst_Day = new QListWidget(this);
    lst_Day->setObjectName(QStringLiteral("lst_Day"));
    add_growing_row(0, QStringLiteral("Day of Week :"), lst_Day);
    txt_Start_Time = add_line(0, QStringLiteral("txt_Start_Time"), QStringLiteral("Start Time :"));
    txt_Duration = add_line(0, QStringLiteral("txt_Duration"), QStringLiteral("Duration :"));
    txt_Price = add_line(0, QStringLiteral("txt_Price"), QStringLiteral("Price per lesson :"));
    cmb_Teachers = new QComboBox(this);
    cmb_Teachers->setObjectName(QStringLiteral("cmb_Teachers"));
    cmb_Teachers->setEditable(true);
    cmb_Teachers->setInsertPolicy(QComboBox::NoInsert);
    add_growing_row(1, QStringLiteral("Teacher :"), cmb_Teachers);
    txt_Altn_Costing = add_line(1, QStringLiteral("txt_Altn_Costing"), QStringLiteral("Alternative Costing :"));
    txt_Location = add_line(1, QStringLiteral("txt_Location"), QStringLiteral("Location :"));
    txt_Notes = add_text(1, QStringLiteral("txt_Notes"), QStringLiteral("Notes :"));
    chk_Cancelled = new QCheckBox(QStringLiteral("Course Cancelled"), this);
    chk_Cancelled->setObjectName(QStringLiteral("chk_Cancelled"));
    chk_Suppressed = new QCheckBox(QStringLiteral("Suppress Invoicing"), this);
    chk_Suppressed->setObjectName(QStringLiteral("chk_Suppressed"));
    add_check_boxes();
    txt_Day = new QLineEdit(this);
    txt_Day->setObjectName(QStringLiteral("txt_Day"));
    txt_Teacher_id = new QLineEdit(this);
    txt_Teacher_id->setObjectName(QStringLiteral("txt_Teacher_id"));
    tidy_layout();
    Fill_Days();

    // Each field to its column of data_Courses. The day and the teacher are
    // chosen from lists; hidden boxes carry their numbers to the record.
    bind_title(txt_Course_Title, QStringLiteral("Course_Title"));
    bind(txt_Description, QStringLiteral("Description"));
    bind(txt_Day, QStringLiteral("Day_of_Week"));
    bind(txt_Start_Time, QStringLiteral("Course_Time"));
    bind(txt_Duration, QStringLiteral("Lesson_Duration"));
    bind_money(txt_Price, QStringLiteral("Course_LessonPrice"));
    bind(txt_Teacher_id, QStringLiteral("Course_Teacher_id"));
    bind(txt_Altn_Costing, QStringLiteral("Course_Type"));
    bind(txt_Location, QStringLiteral("Course_Location"));
    bind(txt_Notes, QStringLiteral("Course_Notes"));
    bind(chk_Cancelled, QStringLiteral("Course_Cancelled"));
    bind(chk_Suppressed, QStringLiteral("Course_Suppressed"));
    txt_Day->hide();
    txt_Teacher_id->hide();

    // The lists show what the record holds, whenever the hidden boxes change.
    connect(txt_Day, &QLineEdit::textChanged, this, &frm_Courses::Show_Day);
    connect(txt_Teacher_id, &QLineEdit::textChanged, this, &frm_Courses::Find_Teachers_Name);
    connect(txt_Start_Time, &QLineEdit::textChanged, this, &frm_Courses::Show_Start_Time);
    connect(lst_Day, &QListWidget::currentRowChanged, this, &frm_Courses::lst_Day_Click);
    // The lists take their colour from the boxes they stand for, which the
    // pattern highlights and clears.
    txt_Day->installEventFilter(this);
    txt_Teacher_id->installEventFilter(this);
    cmb_Teachers->installEventFilter(this);
    Enter_To_Tab(cmb_Teachers);
    set_field_colour(lst_Day, colours::At_Rest);
    set_field_colour(cmb_Teachers, colours::At_Rest);

    // The record set, in the order the user prefers for courses.
    Setup_Controls(Course_Order_Query(), QStringLiteral("course_id"), QStringLiteral("Course_Title"));
    resize(860, 560);
}

// The two check boxes sit under the notes, without labels of their own.
void frm_Courses::add_check_boxes()
{
    auto* boxes = new QWidget;
    boxes->setObjectName(QStringLiteral("check_boxes"));
    auto* row = new QHBoxLayout(boxes);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(chk_Cancelled);
    row->addSpacing(16);
    row->addWidget(chk_Suppressed);
    row->addStretch(1);
    add_row_widget(1, boxes);
}

void frm_Courses::tidy_layout()
{
    // The day list shows all eight entries, and no more room than that.
    lst_Day->setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents);
    lst_Day->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    lst_Day->setMaximumWidth(lst_Day->fontMetrics().horizontalAdvance(QStringLiteral("Wednesday")) * 2 + 24);
    // The day list and the teacher list keep their own height; the notes take the rest.
    for (int column = 0; column < 2; ++column) {
        QGridLayout* grid = column_layout(column);
        for (int row = 0; grid && row < grid->rowCount(); ++row) {
            QLayoutItem* item = grid->itemAtPosition(row, 1);
            if (!item || (item->widget() != lst_Day && item->widget() != cmb_Teachers))
                continue;
            grid->setRowStretch(row, 0);
            if (QLayoutItem* label = grid->itemAtPosition(row, 0))
                label->setAlignment((item->widget() == lst_Day ? Qt::AlignTop : Qt::AlignVCenter) | Qt::AlignRight);
        }
    }
    // The duration is in minutes, said beside it.
    QGridLayout* left = column_layout(0);
    if (left) {
        auto* duration = new QWidget(left->parentWidget());
        auto* row = new QHBoxLayout(duration);
        row->setContentsMargins(0, 0, 0, 0);
        if (QLayoutItem* replaced = left->replaceWidget(txt_Duration, duration)) {
            delete replaced;  // the layout hands its old item over to the caller
            row->addWidget(txt_Duration);
            row->addWidget(new QLabel(QStringLiteral("in minutes"), duration));
            row->addStretch(1);
        } else {
            delete duration;
        }
    }
    // Moving fields into their rows put them last in the Tab order: the order
    // is the order on the screen, left column first.
    QWidget* previous = txt_Course_Title;
    for (QWidget* next : std::initializer_list<QWidget*>{txt_Description, lst_Day, txt_Start_Time, txt_Duration,
                                                         txt_Price, cmb_Teachers, txt_Altn_Costing, txt_Location,
                                                         txt_Notes, chk_Cancelled, chk_Suppressed}) {
        setTabOrder(previous, next);
        previous = next;
    }
    // A course title stays readable however small the window is made.
    const int title_width = txt_Course_Title->fontMetrics().horizontalAdvance(QLatin1Char('0')) * 22;
    txt_Course_Title->setMinimumWidth(title_width);
    txt_Description->setMinimumWidth(title_width);
    narrow(txt_Start_Time, 8);
    narrow(txt_Duration, 6);
    narrow(txt_Price, 10);
}

void frm_Courses::Fill_Days()
{
    // Row and weekday number are the same: a blank first, then Sunday to Saturday.
    lst_Day->clear();
    auto* blank = new QListWidgetItem(QString(), lst_Day);
    blank->setData(Qt::UserRole, 0);
    const QStringList names = Course_Day_Names();
    for (int day = 0; day < names.size(); ++day) {
        auto* item = new QListWidgetItem(names.at(day), lst_Day);
        item->setData(Qt::UserRole, day + 1);
    }
    lst_Day->setFixedHeight(lst_Day->sizeHintForRow(0) * lst_Day->count() + 2 * lst_Day->frameWidth());
}

void frm_Courses::Fill_Teachers()
{
    cmb_Teachers->clear();
    if (!add_keyed_names(cmb_Teachers, teachers_sql, QStringLiteral("Teacher_NickName"), QStringLiteral("Teacher_id"))) {
        report_unexpected(QStringLiteral("Fill_Teachers"));
        return;
    }
    Find_Teachers_Name();
}

void frm_Courses::Form_Activate()
{
    // The teachers may have changed on their own screen since the last visit.
    Fill_Teachers();
    RecordScreen::Form_Activate();
}

void frm_Courses::Find_Teachers_Name()
{
    const QString key = txt_Teacher_id->text().trimmed();
    if (key.isEmpty() || !vb::IsNumeric(key)) {
        cmb_Teachers->setCurrentIndex(-1);
        cmb_Teachers->setEditText(QString());
        return;
    }
    cmb_Teachers->setCurrentIndex(Glob_Search_Combo(cmb_Teachers, key.toInt()));
}

void frm_Courses::Show_Day()
{
    // A course without a day shows none rather than the day of the course before.
    bool is_number = false;
    const int day = txt_Day->text().trimmed().toInt(&is_number);
    showing_day_ = true;
    lst_Day->setCurrentRow(is_number && day >= 0 && day < lst_Day->count() ? day : -1);
    showing_day_ = false;
}

void frm_Courses::Show_Start_Time()
{
    // Only what the program puts there is reformatted; typing is left alone
    // until the field is left.
    if (txt_Start_Time->isModified())
        return;
    const QString shown = Course_Time_Shown(txt_Start_Time->text());
    if (shown != txt_Start_Time->text())
        txt_Start_Time->setText(shown);
}

void frm_Courses::lst_Day_Click(int row)
{
    if (showing_day_ || row < 0)
        return;
    const QString day = QString::number(lst_Day->item(row)->data(Qt::UserRole).toInt());
    if (txt_Day->text() != day)
        txt_Day->setText(day);
    Check_LostFocus(txt_Day);
}

bool frm_Courses::cmb_Teachers_Validate()
{
    const QString typed = cmb_Teachers->currentText();
    int index = cmb_Teachers->findText(typed, Qt::MatchFixedString);
    if (index < 0 && !typed.trimmed().isEmpty()) {
        set_status(QStringLiteral("Unknown Teacher"));
        return false;
    }
    if (typed.trimmed().isEmpty())
        index = -1;
    const QString id = index < 0 ? QString() : QString::number(cmb_Teachers->itemData(index).toInt());
    if (index >= 0 && cmb_Teachers->currentIndex() != index)
        cmb_Teachers->setCurrentIndex(index);
    if (txt_Teacher_id->text() != id)
        txt_Teacher_id->setText(id);
    return true;
}

bool frm_Courses::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::PaletteChange) {
        if (watched == txt_Day)
            set_field_colour(lst_Day, field_colour(txt_Day));
        else if (watched == txt_Teacher_id)
            set_field_colour(cmb_Teachers, field_colour(txt_Teacher_id));
    } else if (leaving(event)) {
        if (watched == txt_Start_Time) {
            const QString shown = Course_Time_Shown(txt_Start_Time->text());
            if (shown != txt_Start_Time->text())
                txt_Start_Time->setText(shown);
        } else if (watched == cmb_Teachers) {
            if (cmb_Teachers_Validate())
                Check_LostFocus(txt_Teacher_id);
            else
                QTimer::singleShot(0, cmb_Teachers, [box = cmb_Teachers] { box->setFocus(Qt::OtherFocusReason); });
        }
    }
    return RecordScreen::eventFilter(watched, event);
}

void frm_Courses::clear_more()
{
    showing_day_ = true;
    lst_Day->setCurrentRow(-1);
    showing_day_ = false;
    cmb_Teachers->setCurrentIndex(-1);
    cmb_Teachers->setEditText(QString());
}

bool frm_Courses::Validate_Own_Rules()
{
    CourseEntry entry{txt_Price->text(), txt_Duration->text(), txt_Start_Time->text(), lst_Day->currentRow()};
    const CourseRefusal refusal = Check_Course_Entry(entry);
    // A blank price or start time is completed even when a later rule fails.
    if (txt_Price->text() != entry.price)
        txt_Price->setText(entry.price);
    if (txt_Start_Time->text() != entry.start_time)
        txt_Start_Time->setText(entry.start_time);
    engine::Err().Clear();
    if (refusal.field != CourseField::None) {
        engine::MsgBox(refusal.message, engine::mb::OkOnly, App_Title());
        QWidget* field = refusal.field == CourseField::Price        ? static_cast<QWidget*>(txt_Price)
                         : refusal.field == CourseField::Duration   ? static_cast<QWidget*>(txt_Duration)
                         : refusal.field == CourseField::Start_Time ? static_cast<QWidget*>(txt_Start_Time)
                                                                    : static_cast<QWidget*>(lst_Day);
        field->setFocus(Qt::OtherFocusReason);
        return false;
    }
    const QString day = QString::number(lst_Day->currentItem()->data(Qt::UserRole).toInt());
    if (txt_Day->text() != day)
        txt_Day->setText(day);

    // The clock times that reports print are kept with the course.
    QString start_text;
    QString end_text;
    engine::Recordset* record = data().Recordset();
    if (!Course_Clock_Times(txt_Start_Time->text(), txt_Duration->text(), start_text, end_text) || !record
        || !record->set(QStringLiteral("Course_Start_txt"), start_text)
        || !record->set(QStringLiteral("Course_End_txt"), end_text)) {
        Report_Error(report::Unexpected, QStringLiteral("Unexpected error "), engine::mb::Critical, validate_module,
                     QStringLiteral("Validate_Data"));
        return false;
    }

    // A new course takes the teacher chosen in the list, or none.
    if (EditMode() == engine::editmode::Add) {
        const int index = cmb_Teachers->currentIndex();
        const QString id = index < 0 ? QString() : QString::number(cmb_Teachers->itemData(index).toInt());
        if (txt_Teacher_id->text() != id)
            txt_Teacher_id->setText(id);
    }
    return true;
}

bool frm_Courses::Check_Deletion(int key)
{
    return Check_Course_Deletion(key);
}
