#include "ui/people/frm_pupil.h"

#include "engine/msg_box.h"
#include "people/pupil_age.h"
#include "people/pupil_gender.h"
#include "people/pupil_validation.h"
#include "ui/people/frm_pupil_words.h"
#include "ui/toolkit/app_boxes.h"
#include "ui/toolkit/bound_fields.h"
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

// ---- Choosing or starting the pupil's family ----

void frm_Pupil::cmb_Family_Names_Click()
{
    const int index = cmb_Family_Names->currentIndex();
    if (index == -1)
        return;
    if (Family_Changed) {
        App_Box(QStringLiteral("There are outstanding changes to the family."));
        return;
    }
    const int key = cmb_Family_Names->itemData(index).toInt();
    if (!Display_Family(key))
        return;
    // A new pupil, or a pupil moved to another family: the family goes with
    // the pupil's own changes, not the family's.
    const bool new_pupil = txt_Pupil_id->text().trimmed().isEmpty();
    if (new_pupil || key != record_value(QStringLiteral("Pupil_Family_id")).toInt()) {
        Pupil_Changed = true;
        bound(txt_Family_id)->fill(key);
        set_field_colour(txt_Family_Name, colours::Highlight);
    }
}

bool frm_Pupil::txt_family_name_Validate()
{
    const QString typed = txt_Family_Name->text();
    if (typed.contains(QLatin1Char('"'))) {
        App_Box(QStringLiteral("The family name cannot include quotes"));
        return false;
    }
    if (typed.trimmed().isEmpty() || !bound(txt_Family_Name)->DataChanged() || Family_Changed)
        return true;
    const QString wanted = typed.toUpper();
    int found = -1;
    for (int i = 0; i < cmb_Family_Names->count() && found < 0; ++i)
        if (cmb_Family_Names->itemText(i).toUpper() == wanted)
            found = i;
    if (found >= 0) {
        cmb_Family_Names->setCurrentIndex(found);
        cmb_Family_Names_Click();
    } else {
        Family_Changed = true;
        Clear_Family(false);
        txt_Family_Name->setText(typed);
        cmb_Family_Names->setCurrentIndex(-1);
        set_status(QStringLiteral("Adding a new Family"));
    }
    set_field_colour(txt_Family_Name, colours::Highlight);
    Lock_Family(false);
    return true;
}

void frm_Pupil::cmd_Add_Family_Click()
{
    set_status(QString());
    if (Family_Changed
        && App_Question(QStringLiteral("There are changes to the Family already in progress")
               + QStringLiteral("Do you wish to cancel them? "))
               != engine::answer::Yes)
        return;
    if (!Pupil_Changed && txt_Pupil_id->text().trimmed().isEmpty()) {
        App_Box(QStringLiteral("There is no current Pupil.") + QLatin1Char('\n')
            + QStringLiteral("Choose a Pupil to edit or press Add"));
        return;
    }
    Family_Changed = true;
    Pupil_Changed = true;
    Lock_Family(false);
    Clear_Family(true);
    SSTab1->setCurrentIndex(0);
    txt_Address->setFocus(Qt::OtherFocusReason);
}

void frm_Pupil::Lock_Family(bool locked)
{
    for (Field& field : fields_) {
        if (field.half != Half::Family || field.control == txt_Family_Name)
            continue;
        if (auto* edit = qobject_cast<QLineEdit*>(field.control))
            edit->setReadOnly(locked);
        else if (auto* text = qobject_cast<QPlainTextEdit*>(field.control))
            text->setReadOnly(locked);
    }
}

bool frm_Pupil::family_locked() const
{
    return txt_Address->isReadOnly();
}

// ---- Typing ----

bool frm_Pupil::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == txt_Family_Name && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            validating_name_ = true;
            if (txt_family_name_Validate()) {
                SSTab1->setCurrentIndex(0);
                txt_Address->setFocus(Qt::TabFocusReason);
            }
            validating_name_ = false;
            return true;
        }
    }
    if (Is_Field_Left(event)) {
        auto* control = static_cast<QWidget*>(watched);
        Field* field = field_of(control);
        if (control == txt_Family_Name) {
            if (!validating_name_ && !txt_family_name_Validate())
                QTimer::singleShot(0, txt_Family_Name, [this] { txt_Family_Name->setFocus(Qt::OtherFocusReason); });
        } else if (field && field->half == Half::Family) {
            if (control == txt_Post_Code && !txt_Post_Code->isReadOnly()) {
                const QString upper = txt_Post_Code->text().toUpper();
                if (upper != txt_Post_Code->text())
                    txt_Post_Code->setText(upper);
            }
            Check_lostfocus_Family(control);
        } else if (field && field->half == Half::Pupil) {
            auto* date = qobject_cast<QLineEdit*>(control);
            if ((control == txt_BirthDate || control == txt_StartDate) && !date_field_Validate(date)) {
                QTimer::singleShot(0, date, [date] { date->setFocus(Qt::OtherFocusReason); });
                return QWidget::eventFilter(watched, event);
            }
            Check_lostfocus_Pupil(control);
        }
    }
    return QWidget::eventFilter(watched, event);
}

bool frm_Pupil::date_field_Validate(QLineEdit* field)
{
    // Only a date typed is checked: passing through a field changes nothing.
    if (!bound(field)->DataChanged())
        return true;
    const bool birth = field == txt_BirthDate;
    switch (Check_Typed_Date(field->text(), QDate::currentDate(),
                             birth ? Birthdate_Future_Question() : Startdate_Future_Question())) {
    case TypedDate::Not_A_Date:
        return false;
    case TypedDate::Declined: {
        // Back to the date stored, or to none for a pupil not yet stored.
        const bool stored = !txt_Pupil_id->text().trimmed().isEmpty();
        const QString column = birth ? QStringLiteral("Pupil_Birthdate") : QStringLiteral("Pupil_StartDate");
        bound(field)->fill(stored ? date_shown(record_value(column)) : QVariant());
        if (birth)
            Display_Age_Of(field->text());
        return true;
    }
    case TypedDate::Accepted:
        if (birth)
            Display_Age_Of(field->text().trimmed().isEmpty() ? QVariant() : QVariant(field->text()));
        return true;
    }
    return true;
}

void frm_Pupil::Check_lostfocus_Family(QWidget* control)
{
    BoundField* field = bound(control);
    if (!field)
        return;
    const auto* edit = qobject_cast<QLineEdit*>(control);
    const auto* text = qobject_cast<QPlainTextEdit*>(control);
    if ((edit && edit->isReadOnly()) || (text && text->isReadOnly()))
        return;
    const bool no_family = txt_Family_id->text().trimmed().isEmpty();
    if (Family_Changed) {
        if (no_family ? !field->trimmed_text().isEmpty() : field->DataChanged())
            set_field_colour(control, colours::Highlight);
        return;
    }
    if (!field->DataChanged())
        return;
    if (no_family) {
        App_Box(QStringLiteral("There is no family to edit. ") + QLatin1Char('\n') + QStringLiteral("Choose a Pupil to edit, or ")
            + QStringLiteral("press Add New"));
        return;
    }
    Family_Changed = true;
    set_field_colour(control, colours::Highlight);
}

void frm_Pupil::Check_lostfocus_Pupil(QWidget* control)
{
    BoundField* field = bound(control);
    if (!field || !field->DataChanged())
        return;
    const bool no_pupil = txt_Pupil_id->text().trimmed().isEmpty();
    if (Pupil_Changed && no_pupil && field->trimmed_text().isEmpty())
        return;
    if (!Pupil_Changed && no_pupil) {
        App_Box(QStringLiteral("There is no Pupil to edit. ") + QLatin1Char('\n') + QStringLiteral("Choose a Pupil to edit, or ")
            + QStringLiteral("press Add New"));
        // What was typed with no pupil to take it is not kept.
        field->fill(QVariant());
        return;
    }
    Pupil_Changed = true;
    set_field_colour(control, colours::Highlight);
}

void frm_Pupil::gender_clicked(bool male, bool hidden)
{
    if (Gender_Loading)
        return;
    const QString letter = Gender_Letter(male, hidden);
    if (letter == txt_Gender->text())
        return;
    txt_Gender->setText(letter);
    // A letter the user changed counts as the pupil's change. (The field
    // also changes while the record is shown, when it isn't one.)
    Check_lostfocus_Pupil(txt_Gender);
}

void frm_Pupil::txt_Gender_Changed()
{
    Display_Gender();
}

// ---- Clearing ----

void frm_Pupil::Clear_Family(bool keep_name)
{
    for (Field& field : fields_) {
        if (field.half != Half::Family && field.control != txt_Family_id)
            continue;
        if (keep_name && field.control == txt_Family_Name)
            continue;
        field.bound->fill(QVariant());
    }
    Clear_Family_Highlights();
    open_accounts(0, QStringLiteral("Qry_Select_Family_Invoices_All"));
}

void frm_Pupil::Clear_Pupil()
{
    for (Field& field : fields_)
        if (field.half == Half::Pupil)
            field.bound->fill(QVariant());
    txt_Age_Years->clear();
    txt_Age_Months->clear();
    // No sex chosen yet for a new pupil.
    const bool loading = Gender_Loading;
    Gender_Loading = true;
    for (QRadioButton* option : {Opt_Male, Opt_Female}) {
        option->setAutoExclusive(false);
        option->setChecked(false);
        option->setAutoExclusive(true);
    }
    Chk_Hidden->setChecked(false);
    Gender_Loading = loading;
    Display_Gender();
    Clear_Pupil_Highlights();
    open_pupil_grids(0);
}

void frm_Pupil::Clear_Family_Highlights()
{
    for (Field& field : fields_)
        if (field.half == Half::Family)
            set_field_colour(field.control, colours::At_Rest);
}

void frm_Pupil::Clear_Pupil_Highlights()
{
    for (Field& field : fields_)
        if (field.half == Half::Pupil)
            set_field_colour(field.control, colours::At_Rest);
    // A family chosen for the pupil showed on the family's name.
    set_field_colour(txt_Family_Name, colours::At_Rest);
}
