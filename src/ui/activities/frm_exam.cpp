#include "ui/activities/frm_exam.h"

#include "activities/activity_fields.h"
#include "database/code_values.h"
#include "database/course_exam_deletion.h"
#include "database/db_handling.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "engine/vb_values.h"
#include "shell/app_globals.h"
#include "toolkit/help_pages.h"
#include "ui/toolkit/app_boxes.h"
#include "ui/toolkit/keyed_names.h"
#include "ui/toolkit/screen_kit.h"

#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTimer>

namespace {

RecordScreenWords exam_words()
{
    RecordScreenWords words;
    words.form_name = QStringLiteral("frm_Exam");
    words.caption = QStringLiteral("Activities");
    words.module = QStringLiteral("fExam");
    words.move_selected_module = QStringLiteral("fExams");
    words.data_name = QStringLiteral("data_Exams");
    words.noun = QStringLiteral("Activity");
    words.control_noun = QStringLiteral("Exam");
    words.choose_title = QStringLiteral("Choose a Title to edit, or ");
    words.titles_out_of_date = QStringLiteral("Unexpected error - titles are out of date");
    words.title_missing = QStringLiteral("There must be a Title");
    words.title_quotes = QStringLiteral("The title cannot include quotes");
    // The store's two unique rules, whichever of them the change broke.
    words.duplicate = QStringLiteral("The Title must be unique, ") + QStringLiteral("as must the combination of Dance and Level");
    words.lost_after_update = QStringLiteral("Could not find the Activity that has just been updated!");
    words.help_context = help::context::Activities;
    return words;
}

const QString teachers_sql = QStringLiteral("SELECT Teacher_id, Teacher_NickName FROM Teachers  ORDER BY Teacher_NickName ;");

// A short value needs a short box; a wide one only invites longer text.
void narrow(QLineEdit* edit, int characters)
{
    edit->setFixedWidth(edit->fontMetrics().horizontalAdvance(QLatin1Char('0')) * characters + 16);
}

}  // namespace

frm_Exam::frm_Exam(QWidget* parent) : RecordScreen(exam_words(), parent)
{
    cmb_Names->setAccessibleName(QStringLiteral("Choose an Activity"));
    build_fields();
    Fill_Types();

    bind_title(txt_Exam_Title, QStringLiteral("Exam_Title"));
    bind(txt_Exam_Type, QStringLiteral("Exam_Type"));
    bind(cmb_Style->lineEdit(), QStringLiteral("Exam_Dance"));
    bind(txt_Level, QStringLiteral("Exam_Level"));
    bind(txt_Duration, QStringLiteral("Exam_Duration"));
    bind_money(txt_Price, QStringLiteral("Exam_Price"));
    bind_money(txt_Expenses, QStringLiteral("Exam_Expenses"));
    bind(txt_Marker, QStringLiteral("Exam_Marker"));
    bind(txt_Teacher_id, QStringLiteral("Exam_Teacher"));
    bind(txt_Grade, QStringLiteral("Exam_Grade"));
    bind(txt_Description, QStringLiteral("Exam_Description"));
    bind(txt_Branch, QStringLiteral("Exam_Branch"));
    bind(txt_Category, QStringLiteral("Exam_Category"));
    bind(txt_Faculty, QStringLiteral("Exam_Faculty"));
    bind(txt_Notes, QStringLiteral("Exam_Notes"));
    bind(txt_Notes_M, QStringLiteral("Exam_Notes_M"));
    txt_Exam_Type->hide();
    txt_Teacher_id->hide();

    // The lists show what the record holds whenever the hidden boxes change,
    // and take their colour from them, which the pattern highlights and clears.
    connect(txt_Exam_Type, &QLineEdit::textChanged, this, &frm_Exam::Show_Type);
    connect(txt_Teacher_id, &QLineEdit::textChanged, this, &frm_Exam::Find_Teachers_Name);
    connect(lst_Exam_Types, &QListWidget::itemClicked, this, &frm_Exam::lst_Exam_Types_Click);
    // An editable combo box takes the focus and its key presses for its text
    // box, so the style is watched, and moves on with Enter, as the combo.
    for (QWidget* watched :
         std::initializer_list<QWidget*>{txt_Exam_Type, txt_Teacher_id, lst_Exam_Types, cmb_Teachers, cmb_Style})
        watched->installEventFilter(this);
    Enter_To_Tab(cmb_Teachers);
    Enter_To_Tab(cmb_Style);
    set_field_colour(lst_Exam_Types, colours::At_Rest);
    set_field_colour(cmb_Teachers, colours::At_Rest);

    Setup_Controls(QStringLiteral("Select * from Exams order by Exam_Type, Exam_Dance, Exam_Level"),
                   QStringLiteral("exam_id"), QStringLiteral("Exam_Title"));
    resize(900, 600);
}

// What the entry is, how it is charged and who takes it on the left; the
// awarding body's words and the dressing notes on the right.
void frm_Exam::build_fields()
{
    txt_Exam_Title = add_line(0, QStringLiteral("txt_Exam_Title"), QStringLiteral("Title :"));
    lst_Exam_Types = new QListWidget;
    lst_Exam_Types->setObjectName(QStringLiteral("lst_Exam_Types"));
    lst_Exam_Types->setAccessibleName(QStringLiteral("Type"));
    add_field_row(0, QStringLiteral("Type"), lst_Exam_Types);
    cmb_Style = new QComboBox;
    cmb_Style->setObjectName(QStringLiteral("cmb_Style"));
    cmb_Style->setEditable(true);
    cmb_Style->setInsertPolicy(QComboBox::NoInsert);
    cmb_Style->setAccessibleName(QStringLiteral("Style of Dance"));
    add_field_row(0, QStringLiteral("Style of Dance :"), cmb_Style);
    txt_Level = add_line(0, QStringLiteral("txt_Level"), QStringLiteral("Level or Running Order :"));
    txt_Duration = new QLineEdit;
    txt_Duration->setObjectName(QStringLiteral("txt_Duration"));
    add_field_row(0, QStringLiteral("Duration :"), with_word_after(txt_Duration, QStringLiteral("in minutes")));
    txt_Price = add_line(0, QStringLiteral("txt_Price"), QStringLiteral("Price :"));
    txt_Expenses = add_line(0, QStringLiteral("txt_Expenses"), QStringLiteral("Expenses :"));
    txt_Marker = add_line(0, QStringLiteral("txt_Marker"), QStringLiteral("Alternate Pricing :"));
    cmb_Teachers = new QComboBox;
    cmb_Teachers->setObjectName(QStringLiteral("cmb_Teachers"));
    cmb_Teachers->setAccessibleName(QStringLiteral("Teacher"));
    add_field_row(0, QStringLiteral("Teacher :"), cmb_Teachers);

    txt_Grade = add_line(1, QStringLiteral("txt_Grade"), QStringLiteral("Grade :"));
    txt_Description = add_line(1, QStringLiteral("txt_Description"), QStringLiteral("Description :"));
    txt_Branch = add_line(1, QStringLiteral("txt_Branch"), QStringLiteral("Branch :"));
    txt_Category = add_line(1, QStringLiteral("txt_Category"), QStringLiteral("Category :"));
    txt_Faculty = add_line(1, QStringLiteral("txt_Faculty"), QStringLiteral("Faculty:"));
    txt_Notes = add_text(1, QStringLiteral("txt_Notes"), QStringLiteral("Female Dressing Notes :"));
    txt_Notes_M = add_text(1, QStringLiteral("txt_Notes_M"), QStringLiteral("Male Dressing Notes :"));

    txt_Exam_Type = new QLineEdit(this);
    txt_Exam_Type->setObjectName(QStringLiteral("txt_Exam_Type"));
    txt_Teacher_id = new QLineEdit(this);
    txt_Teacher_id->setObjectName(QStringLiteral("txt_Teacher_id"));

    // The list's label stands level with its first line.
    QGridLayout* left = column_layout(0);
    for (int row = 0; row < left->rowCount(); ++row) {
        QLayoutItem* field = left->itemAtPosition(row, 1);
        if (field && field->widget() == lst_Exam_Types && left->itemAtPosition(row, 0))
            left->itemAtPosition(row, 0)->setAlignment(Qt::AlignTop | Qt::AlignRight);
    }

    const int title_width = txt_Exam_Title->fontMetrics().horizontalAdvance(QLatin1Char('0')) * 26;
    txt_Exam_Title->setMinimumWidth(title_width);
    narrow(txt_Level, 6);
    narrow(txt_Duration, 6);
    narrow(txt_Price, 10);
    narrow(txt_Expenses, 10);

    // Fields placed in rows of their own go last in the Tab order unless told:
    // the order is the order on the screen, left column first.
    QWidget* previous = txt_Exam_Title;
    for (QWidget* next : std::initializer_list<QWidget*>{lst_Exam_Types, cmb_Style, txt_Level, txt_Duration, txt_Price,
                                                         txt_Expenses, txt_Marker, cmb_Teachers, txt_Grade,
                                                         txt_Description, txt_Branch, txt_Category, txt_Faculty,
                                                         txt_Notes, txt_Notes_M}) {
        setTabOrder(previous, next);
        previous = next;
    }
}

QWidget* frm_Exam::with_word_after(QLineEdit* box, const QString& word)
{
    auto* row_widget = new QWidget;
    auto* row = new QHBoxLayout(row_widget);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(box);
    row->addWidget(new QLabel(word, row_widget));
    row->addStretch(1);
    return row_widget;
}

void frm_Exam::Fill_Types()
{
    // The row is the kind's code, and the screen relies on it.
    for (int code = 0; code < code::exam_type::Count; ++code) {
        auto* item = new QListWidgetItem(code::exam_type::text(code), lst_Exam_Types);
        item->setData(Qt::UserRole, code);
    }
    lst_Exam_Types->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    lst_Exam_Types->setFixedHeight(lst_Exam_Types->sizeHintForRow(0) * lst_Exam_Types->count()
                                   + 2 * lst_Exam_Types->frameWidth());
    lst_Exam_Types->setMaximumWidth(lst_Exam_Types->fontMetrics().horizontalAdvance(QStringLiteral("Competition")) * 2 + 24);
}

void frm_Exam::Fill_Teachers()
{
    cmb_Teachers->clear();
    cmb_Teachers->addItem(QString(), 0);
    if (!add_keyed_names(cmb_Teachers, teachers_sql, QStringLiteral("Teacher_NickName"), QStringLiteral("Teacher_id"))) {
        report_unexpected(QStringLiteral("Fill_Teachers"));
        return;
    }
}

// The styles already in use; a new style is made by typing it.
void frm_Exam::Setup_Own_Lists()
{
    QLineEdit* style = cmb_Style->lineEdit();
    const QString shown = style->text();
    const QSignalBlocker quiet(style);  // refilling the list is no change of the record
    cmb_Style->clear();
    engine::Database* db = Current_Db();
    std::unique_ptr<engine::Recordset> styles =
        db ? db->OpenRecordset(QStringLiteral("Qry_Select_Exam_Dance_Styles")) : nullptr;
    if (!styles) {
        report_unexpected(QStringLiteral("Setup_Style"));
        return;
    }
    while (!styles->at_eof()) {
        const QVariant dance = styles->Fields(QStringLiteral("Exam_Dance"));
        if (!dance.isNull())
            cmb_Style->addItem(dance.toString());
        if (!styles->MoveNext())
            break;
    }
    styles->Close();
    engine::Err().Clear();
    cmb_Style->setCurrentIndex(-1);
    style->setText(shown);
}

void frm_Exam::Form_Activate()
{
    // The catalogue, the styles and the teachers as they are now, from the first entry.
    if (EditMode() == engine::editmode::None && data().Recordset() && !data().Requery())
        report_unexpected(QStringLiteral("Setup_Controls"));
    Fill_Teachers();
    Setup_List();
    if (data().is_empty()) {
        cmd_Add->setFocus(Qt::OtherFocusReason);
        return;
    }
    cmb_Names->setFocus(Qt::OtherFocusReason);
    Find_Teachers_Name();
}

void frm_Exam::Find_Teachers_Name()
{
    const QString key = txt_Teacher_id->text().trimmed();
    if (key.isEmpty() || !vb::IsNumeric(key)) {
        cmb_Teachers->setCurrentIndex(-1);
        return;
    }
    cmb_Teachers->setCurrentIndex(Glob_Search_Combo(cmb_Teachers, key.toInt()));
}

void frm_Exam::Show_Type()
{
    const QString code = txt_Exam_Type->text().trimmed();
    if (code.isEmpty())
        return;
    showing_type_ = true;
    lst_Exam_Types->setCurrentRow(code.toInt());
    showing_type_ = false;
}

void frm_Exam::lst_Exam_Types_Click()
{
    QListWidgetItem* chosen = lst_Exam_Types->currentItem();
    if (showing_type_ || !chosen || !chosen->isSelected())
        return;
    const QString code = QString::number(chosen->data(Qt::UserRole).toInt());
    if (txt_Exam_Type->text() != code)
        txt_Exam_Type->setText(code);
    Check_LostFocus(txt_Exam_Type);
}

void frm_Exam::cmb_Teachers_LostFocus()
{
    const int index = cmb_Teachers->currentIndex();
    const QString id = index <= 0 ? QString() : QString::number(cmb_Teachers->itemData(index).toInt());
    if (txt_Teacher_id->text() != id)
        txt_Teacher_id->setText(id);
    Check_LostFocus(txt_Teacher_id);
}

bool frm_Exam::title_refused_on_leaving(QEvent* event)
{
    if (!Is_Field_Left(event) || !txt_Exam_Title->text().trimmed().isEmpty())
        return false;
    // An addition can always be cancelled, title or no title.
    if (QApplication::focusWidget() == cmd_Cancel)
        return true;
    App_Box(QStringLiteral("There must be a Title"));
    QTimer::singleShot(0, txt_Exam_Title, [field = txt_Exam_Title] { field->setFocus(Qt::OtherFocusReason); });
    return true;
}

bool frm_Exam::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == txt_Exam_Title && title_refused_on_leaving(event))
        return false;
    if (event->type() == QEvent::PaletteChange) {
        if (watched == txt_Exam_Type)
            set_field_colour(lst_Exam_Types, field_colour(txt_Exam_Type));
        else if (watched == txt_Teacher_id)
            set_field_colour(cmb_Teachers, field_colour(txt_Teacher_id));
    } else if (Is_Field_Left(event)) {
        if (watched == lst_Exam_Types)
            lst_Exam_Types_Click();
        else if (watched == cmb_Teachers)
            cmb_Teachers_LostFocus();
        else if (watched == cmb_Style)
            Check_LostFocus(cmb_Style->lineEdit());
    }
    return RecordScreen::eventFilter(watched, event);
}

void frm_Exam::clear_more()
{
    // A new entry has no kind and no teacher until they are chosen.
    showing_type_ = true;
    lst_Exam_Types->setCurrentRow(-1);
    lst_Exam_Types->clearSelection();
    showing_type_ = false;
    cmb_Teachers->setCurrentIndex(-1);
}

bool frm_Exam::Validate_Own_Rules()
{
    QListWidgetItem* type = lst_Exam_Types->currentItem();
    ActivityFields fields;
    fields.price = txt_Price->text();
    fields.level = txt_Level->text();
    fields.duration = txt_Duration->text();
    fields.type_row = type && type->isSelected() ? lst_Exam_Types->currentRow() : -1;
    fields.type_code = txt_Exam_Type->text().trimmed();
    fields.style = cmb_Style->currentText();
    fields.style_listed = cmb_Style->findText(fields.style, Qt::MatchExactly) >= 0;
    const ActivityRefusal refusal = Check_Activity_Fields(fields);
    // A blank duration is written as 0, and a show's blank style as one blank.
    if (txt_Duration->text() != fields.duration)
        txt_Duration->setText(fields.duration);
    if (cmb_Style->currentText() != fields.style)
        cmb_Style->lineEdit()->setText(fields.style);
    if (refusal.field == ActivityField::None)
        return true;
    App_Box(refusal.message);
    QWidget* field = refusal.field == ActivityField::Price      ? static_cast<QWidget*>(txt_Price)
                     : refusal.field == ActivityField::Level    ? static_cast<QWidget*>(txt_Level)
                     : refusal.field == ActivityField::Duration ? static_cast<QWidget*>(txt_Duration)
                     : refusal.field == ActivityField::Type     ? static_cast<QWidget*>(lst_Exam_Types)
                                                                : static_cast<QWidget*>(cmb_Style);
    field->setFocus(Qt::OtherFocusReason);
    return false;
}

bool frm_Exam::Check_Deletion(int key)
{
    return Check_Exam_Deletion(key);
}

// The entry after the deleted one by title becomes current.
void frm_Exam::Move_After_Delete(const QString& title)
{
    if (!data().MoveNext()) {
        report_unexpected(QStringLiteral("cmd_Delete_Click"));
        return;
    }
    if (data().Recordset()->at_eof() && data().Recordset()->RecordCount() == 0) {
        App_Box(QStringLiteral("There are no more records"));
        data().MoveFirst();
        engine::Err().Clear();
        return;
    }
    if (!data().Requery()) {
        report_unexpected(QStringLiteral("cmd_Delete_Click"));
        return;
    }
    Setup_List();
    if (data().FindFirst(QStringLiteral("Exam_Title > \"") + title + QLatin1Char('"')) && data().NoMatch())
        data().MoveLast();
}
