#include "ui/people/frm_pupil.h"

#include "courses/course_entry.h"
#include "database/db_handling.h"
#include "database/guarded_deletions.h"
#include "database/pupil_course_changes.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "people/pupil_family_writes.h"
#include "people/pupil_gender.h"
#include "people/pupil_name.h"
#include "people/pupil_validation.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "shell/report_numbers.h"
#include "shell/transfer_ids.h"
#include "toolkit/help_pages.h"
#include "ui/people/frm_pupil_words.h"
#include "ui/shell/screen_catalogue.h"
#include "ui/shell/switch_screen.h"
#include "ui/toolkit/app_boxes.h"
#include "ui/toolkit/bound_fields.h"
#include "ui/toolkit/data_grid.h"
#include "ui/toolkit/screen_kit.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QCoreApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QMenuBar>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QShowEvent>
#include <QStandardItemModel>
#include <QStyledItemDelegate>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

using namespace pupil_screen;

// ---- The commands ----

void frm_Pupil::cmd_Add_Click()
{
    set_status(QString());
    if (Check_Changes()) {
        App_Box(QStringLiteral("There are changes already in progress"));
        return;
    }
    Pupil_Changed = true;
    bound(txt_Pupil_id)->fill(QVariant());
    bound(txt_Family_id)->fill(QVariant());
    Clear_Family(false);
    Clear_Pupil();
    cmb_Navigation->setCurrentIndex(-1);
    cmb_Family_Names->setCurrentIndex(-1);
    set_status(QStringLiteral("Adding a new Pupil"));
    SSTab1->setCurrentIndex(1);
    txt_First_Name->setFocus(Qt::OtherFocusReason);
    // Until a family is chosen or typed, its fields would belong to nobody.
    Lock_Family(true);
}

void frm_Pupil::cmd_Update_Click()
{
    if (!Check_Changes()) {
        set_status(QStringLiteral("No changes to update"));
        return;
    }
    set_status(QString());
    if (has_record())
        Current_Name = Format_Name(*data_Navigation_.Recordset());
    if (Family_Changed) {
        if (!Update_Family_Fields()) {
            set_status(QStringLiteral("error updating family"));
            return;
        }
        set_status(QStringLiteral("Family updated successfully"));
    }
    Clear_Family_Highlights();
    if (Pupil_Changed) {
        if (!Update_Pupil_Fields())
            return;
        set_status(QStringLiteral("Pupil updated successfully"));
    }
    if (!Update_Registers())
        return;
    Clear_Pupil_Highlights();
    refresh_after_change();
}

bool frm_Pupil::Update_Family_Fields()
{
    FamilyDetails family;
    family.name = txt_Family_Name->text();
    family.address = txt_Address->text();
    family.address2 = txt_Address2->text();
    family.address3 = txt_Address3->text();
    family.address4 = txt_Address4->text();
    family.post_code = txt_Post_Code->text();
    family.phone_1 = txt_Phone1->text();
    family.phone_2 = txt_Phone2->text();
    family.correspondence = txt_Correspondence->text();
    family.notes = txt_Family_Notes->toPlainText();
    family.marker = txt_Family_Marker->text();
    qint32 family_id = txt_Family_id->text().trimmed().toInt();
    switch (Update_Family(family, family_id)) {
    case FamilyWrite::Written:
        break;
    case FamilyWrite::Name_Missing:
        txt_Family_Name->setFocus(Qt::OtherFocusReason);
        return false;
    case FamilyWrite::Duplicate:
    case FamilyWrite::Failed:
        return false;
    }
    bound(txt_Family_id)->fill(family_id);
    Fill_Family_Names();
    cmb_Family_Names->setCurrentIndex(Glob_Search_Combo(cmb_Family_Names, family_id));
    Family_Changed = false;
    return true;
}

bool frm_Pupil::Update_Pupil_Fields()
{
    PupilDetails pupil;
    pupil.first_name = txt_First_Name->text();
    pupil.surname = txt_Alt_Surname->text();
    pupil.ref1 = txt_Ref->text();
    pupil.ref2 = txt_Ref2->text();
    pupil.ref3 = txt_Ref3->text();
    pupil.ref4 = txt_Ref4->text();
    pupil.medical = txt_Medical->text();
    pupil.marker = txt_Pupil_Marker->text();
    pupil.e_mail = txt_E_Mail->text();
    pupil.notes = txt_Pupil_Notes->toPlainText();
    pupil.special_needs = txt_Special_Needs->text();
    pupil.birth_date = txt_BirthDate->text();
    pupil.ethnicity = txt_Ethnicity->text();
    pupil.regn_fee = txt_Regn_Fee->text();
    pupil.start_date = txt_StartDate->text();
    pupil.gender = txt_Gender->text();
    switch (Validate_Pupil(pupil, txt_Family_id->text(), QDate::currentDate())) {
    case PupilField::None:
        break;
    case PupilField::First_Name:
        txt_First_Name->setFocus(Qt::OtherFocusReason);
        return false;
    case PupilField::Birth_Date:
        SSTab1->setCurrentIndex(1);
        txt_BirthDate->setFocus(Qt::OtherFocusReason);
        return false;
    case PupilField::Start_Date:
        SSTab1->setCurrentIndex(1);
        txt_StartDate->setFocus(Qt::OtherFocusReason);
        return false;
    case PupilField::Family_Name:
        txt_Family_Name->setFocus(Qt::OtherFocusReason);
        return false;
    }
    pupil.family_id = txt_Family_id->text().trimmed().toInt();
    Current_Name = Format_Name(txt_Family_Name->text(), txt_First_Name->text(), txt_Alt_Surname->text());
    qint32 pupil_id = txt_Pupil_id->text().trimmed().toInt();
    if (Update_Pupil(pupil, pupil_id) != PupilWrite::Written) {
        set_status(QStringLiteral("Error updating pupil"));
        return false;
    }
    bound(txt_Pupil_id)->fill(pupil_id);
    Pupil_Changed = false;
    return true;
}

bool frm_Pupil::Update_Registers()
{
    if (txt_Pupil_id->text().trimmed().isEmpty()) {
        Report_Error(report::Detected, QStringLiteral("Unexpected error - no pupil id"), engine::mb::Information, module,
                     QStringLiteral("Update_Registers"));
        return false;
    }
    const qint32 pupil_id = txt_Pupil_id->text().trimmed().toInt();
    bool all_added = true;
    for (QListWidgetItem* course : lst_Courses_Added->selectedItems()) {
        // A course the pupil is on already stays chosen, after its message.
        if (DB_Add_Pupil_To_Course(course->data(Qt::UserRole).toInt(), pupil_id, txt_First_Name->text()))
            course->setSelected(false);
        else
            all_added = false;
    }
    open_courses(pupil_id);
    return all_added;
}

// After a save or a deletion: the pupils again, at Current_Name.
void frm_Pupil::refresh_after_change()
{
    if (!data_Navigation_.Requery()) {
        data_Navigation_.report_error(QStringLiteral("Requery"));
        return;
    }
    Setup_Navigation_List();
    const int index = Current_Name.isEmpty() ? -1 : cmb_Navigation->findText(Current_Name);
    if (index < 0) {
        if (has_record())
            show_list_at_current();
        return;
    }
    cmb_Navigation->setCurrentIndex(index);
    cmb_Navigation_Click();
}

void frm_Pupil::cmd_Cancel_Click()
{
    if (!Check_Changes()) {
        set_status(QStringLiteral("Nothing to cancel"));
        return;
    }
    if (Family_Changed)
        set_status(txt_Family_id->text().trimmed().isEmpty() ? QStringLiteral("Add Family cancelled")
                                                             : QStringLiteral("Change Family cancelled"));
    if (Pupil_Changed)
        set_status(txt_Pupil_id->text().trimmed().isEmpty() ? QStringLiteral("Add Pupil cancelled")
                                                            : QStringLiteral("Change Pupil cancelled"));
    Family_Changed = false;
    Pupil_Changed = false;
    lst_Courses_Added->clearSelection();
    Clear_Family_Highlights();
    Clear_Pupil_Highlights();
    data_Navigation_.UpdateControls();
    if (has_record())
        show_list_at_current();
    Display_Pupil();
}

void frm_Pupil::cmd_Delete_Click()
{
    set_status(QString());
    if (Check_Changes()) {
        App_Box(QStringLiteral("There are changes in progress - cannot delete"));
        return;
    }
    if (!has_record()) {
        App_Box(QStringLiteral("There are no records to delete"));
        return;
    }
    engine::Recordset* records = data_Navigation_.Recordset();
    const QString first_name = records->Fields(QStringLiteral("Pupil_FirstName")).toString();
    const QString family_name = records->Fields(QStringLiteral("Family_Name")).toString();
    const QString who = first_name + QLatin1Char(' ') + family_name;
    if (!App_Yes(QStringLiteral("Do you really want to delete ") + who)) {
        set_status(QStringLiteral("Deletion cancelled"));
        return;
    }
    // The pupil to show afterwards: the next one, or the first after the last.
    Current_Name.clear();
    std::unique_ptr<engine::Recordset> next = records->Clone();
    if (next && next->set_bookmark(records->bookmark()) && next->MoveNext()) {
        if (next->at_eof())
            next->MoveFirst();
        if (!next->at_eof() && next->bookmark() != records->bookmark())
            Current_Name = Format_Name(*next);
    }
    engine::Err().Clear();
    const QString this_pupil = Format_Name(*records);
    if (DB_Delete_Pupil(records->Fields(QStringLiteral("Pupil_id")).toInt())) {
        set_status(who + QStringLiteral(" deleted but the Family still exists"));
    } else {
        set_status(QStringLiteral("Could not delete ") + who);
        Current_Name = this_pupil;
    }
    refresh_after_change();
}

void frm_Pupil::cmd_Reg_Delete_Click()
{
    const QList<engine::Bookmark> chosen = DBGrid_Courses_Taken->SelBookmarks();
    if (chosen.isEmpty()) {
        App_Box(QStringLiteral("Please select a Course in the Register"));
        return;
    }
    if (txt_Pupil_id->text().trimmed().isEmpty()) {
        Report_Error(report::Detected, QStringLiteral("There is no pupil"), engine::mb::Information, module,
                     QStringLiteral("cmd_Reg_Delete_Click"));
        return;
    }
    if (App_Box(QStringLiteral("Do you really want to remove the pupil") + QStringLiteral(" from the Register(s)?"),
            engine::mb::YesNo)
        != engine::answer::Yes)
        return;
    const qint32 pupil_id = txt_Pupil_id->text().trimmed().toInt();
    QString failures;
    for (const engine::Bookmark mark : chosen) {
        if (!courses_taken_ || !courses_taken_->set_bookmark(mark)) {
            Report_Error(report::BoundControl,
                         courses_grid_error + QStringLiteral("Number = ") + QString::number(engine::Err().Number),
                         engine::mb::OkOnly, module, QStringLiteral("DBGrid_Courses_Taken_Error"));
            continue;
        }
        const QString title = courses_taken_->Fields(QStringLiteral("Course_Title")).toString();
        if (courses_taken_->Fields(QStringLiteral("Pupil_id")).toInt() != pupil_id
            || !DB_Delete_Pupil_From_Course(courses_taken_->Fields(QStringLiteral("Course_id")).toInt(), pupil_id))
            failures += title + QStringLiteral(", ");
    }
    set_status(failures.isEmpty() ? QStringLiteral("Pupil successfully deleted from the Register")
                                   : QStringLiteral("The following courses could NOT be deleted") + failures);
    open_courses(pupil_id);
}

// ---- To the Invoices and Money Received screens ----

void frm_Pupil::cmd_Invoice_Receipt_Click(int index)
{
    if (!is_numeric_text(txt_Family_id->text()) || !is_numeric_text(txt_Pupil_id->text()))
        return;
    if (Check_Changes() && App_Yes(exit_question)) {
        cmd_Update_Click();
        return;
    }
    const QList<engine::Bookmark> chosen = DBGrid_Accounts->SelBookmarks();
    if (chosen.isEmpty()) {
        App_Box(QStringLiteral("Please select an invoice"));
        return;
    }
    if (!accounts_ || !accounts_->set_bookmark(chosen.front())) {
        Report_Error(report::BoundControl,
                     accounts_grid_error + QStringLiteral("Number = ") + QString::number(engine::Err().Number),
                     engine::mb::OkOnly, module, QStringLiteral("DBGrid_Accounts_Error"));
        return;
    }
    Glob_Xfer_Invoice_id() = accounts_->Fields(QStringLiteral("Invoice_id")).toInt();
    Glob_Xfer_Family_id() = txt_Family_id->text().trimmed().toInt();
    Glob_Xfer_Pupil_id() = txt_Pupil_id->text().trimmed().toInt();
    Go_To_Screen(this, index == 1 ? QStringLiteral("frm_Invoices") : QStringLiteral("frm_Receipts"));
}

// ---- Leaving ----

// Changes in progress are saved first when the user wants; the screen then
// stays, so that the outcome of the save can be seen.
bool frm_Pupil::leave_allowed()
{
    if (!Check_Changes())
        return true;
    if (App_Yes(exit_question)) {
        cmd_Update_Click();
        return false;
    }
    Pupil_Changed = false;
    Family_Changed = false;
    lst_Courses_Added->clearSelection();
    return true;
}

void frm_Pupil::mnu_Exit_Click()
{
    if (!leave_allowed())
        return;
    Switch_Screen(this, nullptr, false);
}

void frm_Pupil::mnu_Help_Click()
{
    Show_Help(this, help::Context, help::context::Pupils);
}

// ---- Helpers ----

void frm_Pupil::set_status(const QString& text)
{
    txt_Status->setText(text);
}

frm_Pupil::Field* frm_Pupil::field_of(QWidget* control)
{
    for (Field& field : fields_)
        if (field.control == control)
            return &field;
    return nullptr;
}

BoundField* frm_Pupil::bound(QWidget* control)
{
    Field* field = field_of(control);
    return field ? field->bound.get() : nullptr;
}

void frm_Pupil::report_unexpected(const QString& routine) const
{
    Report_Error(report::Unexpected, QStringLiteral("Unexpected error "), engine::mb::Critical, module, routine);
}
