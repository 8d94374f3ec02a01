#include "ui/people/frm_teachers.h"

#include "database/guarded_deletions.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "engine/vb_values.h"
#include "shell/app_globals.h"
#include "toolkit/help_pages.h"

#include <QLineEdit>
#include <QPlainTextEdit>

namespace {

RecordScreenWords teacher_words()
{
    RecordScreenWords words;
    words.form_name = QStringLiteral("frm_Teachers");
    words.caption = QStringLiteral("Teachers");
    words.module = QStringLiteral("fTeach");
    words.move_selected_module = QStringLiteral("fTeachs");
    words.data_name = QStringLiteral("data_Teachers");
    words.noun = QStringLiteral("Teacher");
    words.choose_title = QStringLiteral("Choose a Teaching Name to edit, or ");
    words.titles_out_of_date = QStringLiteral("Unexpected error - names are out of date");
    words.title_missing = QStringLiteral("There must be a Teaching name");
    words.title_quotes = QStringLiteral("The teaching name cannot include quotes");
    words.duplicate = QStringLiteral("The Teaching Name must be unique");
    words.lost_after_update = QStringLiteral("Could not find the Teacher who has just been updated!");
    words.help_context = help::context::Teachers;
    // The labels under which the navigation commands' failures are logged.
    words.first_routine = QStringLiteral("cmd_first");
    words.last_routine = QStringLiteral("cmd_last");
    words.next_routine = QStringLiteral("Check_LostFocus");
    return words;
}

}  // namespace

frm_Teachers::frm_Teachers(QWidget* parent) : RecordScreen(teacher_words(), parent)
{
    // The teacher's fields: who, where, and the school's references on the right.
    txt_Nickname = add_line(0, QStringLiteral("txt_Nickname"), QStringLiteral("Teaching Name :"));
    txt_Name = add_line(0, QStringLiteral("txt_Name"), QStringLiteral("First Name :"));
    txt_Surname = add_line(0, QStringLiteral("txt_Surname"), QStringLiteral("Surname :"));
    txt_Address = add_text(0, QStringLiteral("txt_Address"), QStringLiteral("Address :"));
    txt_Phone_1 = add_line(0, QStringLiteral("txt_Phone_1"), QStringLiteral("Phone 1 :"));
    txt_Phone_2 = add_line(0, QStringLiteral("txt_Phone_2"), QStringLiteral("Phone 2 :"));
    txt_Reference_1 = add_line(1, QStringLiteral("txt_Reference_1"), QStringLiteral("Reference 1:"));
    txt_Reference_2 = add_line(1, QStringLiteral("txt_Reference_2"), QStringLiteral("Reference 2:"));
    txt_Description = add_line(1, QStringLiteral("txt_Description"), QStringLiteral("Description :"));
    txt_Notes = add_text(1, QStringLiteral("txt_Notes"), QStringLiteral("Notes :"));
    txt_Exam_Ref_No = add_line(1, QStringLiteral("txt_Exam_Ref_No"), QStringLiteral("Latest Exam Reference Number"));

    // Each field to its column of data_Teachers.
    bind_title(txt_Nickname, QStringLiteral("Teacher_NickName"));
    bind(txt_Name, QStringLiteral("Teacher_Name"));
    bind(txt_Surname, QStringLiteral("Teacher_SurName"));
    bind(txt_Address, QStringLiteral("Teacher_Address"));
    bind(txt_Phone_1, QStringLiteral("Teacher_Phone1"));
    bind(txt_Phone_2, QStringLiteral("Teacher_Phone2"));
    bind(txt_Reference_1, QStringLiteral("Teacher_Ref1"));
    bind(txt_Reference_2, QStringLiteral("Teacher_Ref2"));
    bind(txt_Description, QStringLiteral("Teacher_Description"));
    bind(txt_Notes, QStringLiteral("Teacher_Notes"));
    bind(txt_Exam_Ref_No, QStringLiteral("Teacher_Exam_No"));

    // The record set, in teaching name order.
    Setup_Controls(QStringLiteral("Select * from Teachers order by teacher_nickname"), QStringLiteral("teacher_id"),
                   QStringLiteral("Teacher_Nickname"));
    resize(760, 520);
}

bool frm_Teachers::Validate_Own_Rules()
{
    // The number is kept in a 16-bit field: numeric text beyond it is refused too.
    const QString number = txt_Exam_Ref_No->text().trimmed();
    int16_t converted = 0;
    if (!number.isEmpty() && (!vb::IsNumeric(number) || !vb::CInt(number, converted))) {
        engine::Err().Clear();
        engine::MsgBox(QStringLiteral("The latest exam reference number must be a number"), engine::mb::OkOnly,
                       App_Title());
        txt_Exam_Ref_No->setFocus(Qt::OtherFocusReason);
        return false;
    }
    return true;
}

bool frm_Teachers::Check_Deletion(int key)
{
    return Check_Teacher_Deletion(key);
}

QWidget* frm_Teachers::first_field() const
{
    return txt_Name;
}

bool frm_Teachers::kept_by_clear_screen(const QWidget* control) const
{
    return control == txt_Description;
}
