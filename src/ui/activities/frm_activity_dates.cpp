#include "ui/activities/frm_activity_dates.h"

#include "engine/err.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "engine/vb_values.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "toolkit/help_pages.h"
#include "ui/toolkit/app_boxes.h"
#include "ui/toolkit/screen_kit.h"

#include <QComboBox>
#include <QEvent>
#include <QLineEdit>
#include <QPushButton>

namespace {

const QString module = QStringLiteral("fActDate");

RecordScreenWords date_words()
{
    RecordScreenWords words;
    words.form_name = QStringLiteral("frm_Activity_Dates");
    words.caption = QStringLiteral("Activity Dates");
    words.module = module;
    words.move_selected_module = QStringLiteral("fActDates");
    words.data_name = QStringLiteral("data_Activity_Titles");
    words.noun = QStringLiteral("Activity Date");
    words.control_noun = QStringLiteral("Activity Titles");
    words.choose_title = QStringLiteral("Choose an Activity Title to edit, or ") + QLatin1Char('\n');
    words.titles_out_of_date = QStringLiteral("Unexpected error - titles are out of date");
    words.title_missing = QStringLiteral("There must be an Activity Title");
    words.title_quotes = QStringLiteral("The title cannot include quotes");
    words.duplicate = QStringLiteral("The Activity Title must be unique");
    words.lost_after_update = QStringLiteral("Could not find the Activity Date that has just been updated!");
    words.help_context = help::context::Activity_Dates;
    return words;
}

QString count_text(int count)
{
    return QString::number(count);
}

}  // namespace

frm_Activity_Dates::frm_Activity_Dates(QWidget* parent) : RecordScreen(date_words(), parent)
{
    cmb_Names->setAccessibleName(QStringLiteral("Choose an Activity Date"));
    txt_Activity_Title = add_line(0, QStringLiteral("txt_Activity_Title"), QStringLiteral("Title :"));
    txt_Date = add_line(0, QStringLiteral("txt_Date"), QStringLiteral("Date :"));
    txt_Activity_Title->setMinimumWidth(txt_Activity_Title->fontMetrics().horizontalAdvance(QLatin1Char('0')) * 28);
    txt_Date->setFixedWidth(txt_Date->fontMetrics().horizontalAdvance(QStringLiteral("00 Mmm 0000")) + 24);
    txt_Exam_Results = add_count(QStringLiteral("txt_Exam_Results"), QStringLiteral("Number of Pupils "));
    txt_Invoices = add_count(QStringLiteral("txt_Invoices"), QStringLiteral("Number of Invoices "));
    txt_Receipts = add_count(QStringLiteral("txt_Receipts"), QStringLiteral("Number of Receipts"));

    bind_title(txt_Activity_Title, QStringLiteral("ActT_Title"));
    bind_date(txt_Date, QStringLiteral("ActT_Date"));
    txt_Date->installEventFilter(this);

    // Two days may share a title; the list goes by title all the same.
    set_list_by_title();
    Setup_Controls(QStringLiteral("Select * from Activity_Titles order by ActT_Date desc"), QStringLiteral("ActT_Date"),
                   QStringLiteral("ActT_Title"));
    resize(720, 300);
}

QLineEdit* frm_Activity_Dates::add_count(const QString& name, const QString& label)
{
    QLineEdit* count = add_line(1, name, label);
    count->setReadOnly(true);
    count->setFocusPolicy(Qt::NoFocus);
    count->setAlignment(Qt::AlignRight);
    count->setFixedWidth(count->fontMetrics().horizontalAdvance(QStringLiteral("000000")) + 16);
    return count;
}

void frm_Activity_Dates::Form_Activate()
{
    // The dates as they are now, newest first; the counts come with the move.
    if (EditMode() == engine::editmode::None && data().Recordset() && !data().Requery())
        report_unexpected(QStringLiteral("Setup_Controls"));
    Setup_List();
    if (data().is_empty()) {
        clear_uses();
        cmd_Add->setFocus(Qt::OtherFocusReason);
        return;
    }
    cmb_Names->setFocus(Qt::OtherFocusReason);
}

void frm_Activity_Dates::Record_Shown()
{
    Display_Data();
}

void frm_Activity_Dates::Display_Data()
{
    const QDateTime date = data().Recordset()->Fields(QStringLiteral("ActT_Date")).toDateTime();
    engine::Err().Clear();
    uses_ = Count_Date_Uses(date);
    show_uses();
}

void frm_Activity_Dates::show_uses()
{
    txt_Exam_Results->setText(count_text(uses_.results));
    txt_Invoices->setText(count_text(uses_.invoices));
    txt_Receipts->setText(count_text(uses_.receipts));
}

// No date, no counts.
void frm_Activity_Dates::clear_uses()
{
    uses_ = DateUses();
    for (QLineEdit* count : {txt_Exam_Results, txt_Invoices, txt_Receipts})
        count->clear();
}

bool frm_Activity_Dates::Validate_Own_Rules()
{
    if (vb::IsDate(txt_Date->text()))
        return true;
    App_Box(QStringLiteral("There must be a date"));
    txt_Date->setFocus(Qt::OtherFocusReason);
    return false;
}

bool frm_Activity_Dates::Write_Record()
{
    if (EditMode() == engine::editmode::Add)
        return RecordScreen::Write_Record();
    if (!Date_Change_Allowed(uses_)) {
        set_status(QStringLiteral("Update cancelled"));
        data().CancelUpdate();
        Clear_highlights();
        data().UpdateControls();
        return false;
    }
    if (change_date())
        return true;
    Report_Write_Failure();
    return false;
}

// The entries follow the date and its invoices go, with the record, in one transaction.
bool frm_Activity_Dates::change_date()
{
    const QDateTime old_date = data().Recordset()->Fields(QStringLiteral("ActT_Date")).toDateTime();
    QDateTime new_date;
    if (!vb::CDate(txt_Date->text(), new_date))
        return false;
    return Change_Activity_Date(uses_, old_date, new_date, [this] { return data().Update(); });
}

bool frm_Activity_Dates::Check_Deletion(int /*key*/)
{
    if (!Date_In_Use(uses_))
        return true;
    App_Box(QStringLiteral("There are results or invoices for this ") + QStringLiteral(" date, so it cannot be deleted"));
    return false;
}

// The date after the deleted one becomes current, found again by its title.
void frm_Activity_Dates::Move_After_Delete(const QString& /*title*/)
{
    if (!data().MoveNext()) {
        report_unexpected(QStringLiteral("cmd_Delete_Click"));
        return;
    }
    engine::Recordset* records = data().Recordset();
    if (records->RecordCount() == 0) {
        clear_uses();
        App_Box(QStringLiteral("There are no more records"));
        return;
    }
    // The oldest date gone: the one before it is the next.
    if (records->at_eof() && !data().MoveLast()) {
        report_unexpected(QStringLiteral("cmd_Delete_Click"));
        return;
    }
    const QString next_title = current_title();
    if (!data().Requery()) {
        report_unexpected(QStringLiteral("cmd_Delete_Click"));
        return;
    }
    Setup_List();
    data().FindFirst(QStringLiteral("ActT_Title = \"") + next_title + QLatin1Char('"'));
}

bool frm_Activity_Dates::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == txt_Date && Is_Field_Left(event) && !txt_Date->text().trimmed().isEmpty()) {
        QString text = txt_Date->text();
        if (!Date_Text_After_Leaving(text))
            Report_Error(report::Unexpected, QStringLiteral("Unexpected error "), engine::mb::Critical, module,
                         QStringLiteral("txt_Date_LostFocus"));
        else if (text != txt_Date->text())
            txt_Date->setText(text);
    }
    return RecordScreen::eventFilter(watched, event);
}
