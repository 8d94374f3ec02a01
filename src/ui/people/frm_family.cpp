#include "ui/people/frm_family.h"

#include "database/db_handling.h"
#include "database/guarded_deletions.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "engine/workspace.h"
#include "shell/app_globals.h"
#include "toolkit/help_pages.h"
#include "ui/toolkit/app_boxes.h"

#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>

namespace {

RecordScreenWords family_words()
{
    RecordScreenWords words;
    words.form_name = QStringLiteral("frm_Family");
    words.caption = QStringLiteral("Families");
    words.module = QStringLiteral("ffamily");
    words.data_name = QStringLiteral("data_Families");
    words.noun = QStringLiteral("Family");
    words.choose_title = QStringLiteral("Choose a Family Name to edit, or ");
    words.titles_out_of_date = QStringLiteral("Unexpected error - titles are out of date");
    words.title_missing = QStringLiteral("There must be a Family Name");
    words.title_quotes = QStringLiteral("The name cannot include quotes");
    words.duplicate = QStringLiteral("The Family Name and Address must be unique");
    words.lost_after_update = QStringLiteral("Could not find the Family that has just been updated!");
    words.deletion_refused = QStringLiteral("Deletion Abandoned");
    words.empty_list = QStringLiteral("There are no more records");
    words.help_context = help::context::Families;
    return words;
}

}  // namespace

frm_Family::frm_Family(QWidget* parent) : RecordScreen(family_words(), parent)
{
    // The family's name and address on the left; notes and members on the right.
    txt_Family_Name = add_line(0, QStringLiteral("txt_Family_Name"), QStringLiteral("Family Name :"));
    txt_Address = add_line(0, QStringLiteral("txt_Address"), QStringLiteral("Address :"));
    txt_Address2 = add_line(0, QStringLiteral("txt_Address2"), QString());
    txt_Address3 = add_line(0, QStringLiteral("txt_Address3"), QStringLiteral("Town :"));
    txt_Address4 = add_line(0, QStringLiteral("txt_Address4"), QStringLiteral("County :"));
    txt_Post_Code = add_line(0, QStringLiteral("txt_Post_Code"), QStringLiteral("Post Code :"));
    txt_Phone_1 = add_line(0, QStringLiteral("txt_Phone_1"), QStringLiteral("Phone 1 :"));
    txt_Phone_2 = add_line(0, QStringLiteral("txt_Phone_2"), QStringLiteral("Phone 2 :"));
    txt_Notes = add_text(1, QStringLiteral("txt_Notes"), QStringLiteral("Notes :"));
    txt_Marker = add_line(1, QStringLiteral("txt_Marker"), QStringLiteral("Marker :"));
    txt_Correspondence = add_line(1, QStringLiteral("txt_Correspondence"), QStringLiteral("Correspondence :"));
    lst_Members = new QListWidget(this);
    lst_Members->setObjectName(QStringLiteral("lst_Members"));
    lst_Members->setFocusPolicy(Qt::NoFocus);
    lst_Members->setMinimumHeight(lst_Members->fontMetrics().lineSpacing() * 4);
    add_growing_row(1, QStringLiteral("Family Members :"), lst_Members);
    txt_Family_id = new QLineEdit(this);
    txt_Family_id->setObjectName(QStringLiteral("txt_Family_id"));
    add_xfer_id();
    cmd_Remove = add_command(QStringLiteral("cmd_Remove"), QStringLiteral("&Remove Empty Families"));

    // Each field to its column of data_Families; the members follow the key.
    bind_title(txt_Family_Name, QStringLiteral("Family_Name"));
    bind(txt_Address, QStringLiteral("Family_Address"));
    bind(txt_Address2, QStringLiteral("Family_Address2"));
    bind(txt_Address3, QStringLiteral("Family_Address3"));
    bind(txt_Address4, QStringLiteral("Family_Address4"));
    bind(txt_Post_Code, QStringLiteral("Family_PostCode"), OnLeave::Upper_Case);
    bind(txt_Phone_1, QStringLiteral("Family_Phone_1"));
    bind(txt_Phone_2, QStringLiteral("Family_Phone_2"));
    bind(txt_Notes, QStringLiteral("Family_Notes"));
    bind(txt_Marker, QStringLiteral("Family_Marker"));
    bind(txt_Correspondence, QStringLiteral("Family_Correspondence"));
    bind_hidden(txt_Family_id, QStringLiteral("Family_id"));
    connect(txt_Family_id, &QLineEdit::textChanged, this, &frm_Family::Get_Members);
    connect(cmd_Remove, &QPushButton::clicked, this, &frm_Family::cmd_Remove_Click);

    // The record set, in name order.
    Setup_Controls(QStringLiteral("Qry_Select_Family_Details"), QStringLiteral("Family_id"),
                   QStringLiteral("Family_Name"));
    resize(820, 520);
}

void frm_Family::Form_Activate()
{
    Bulk_Running = false;
    RecordScreen::Form_Activate();
}

void frm_Family::Get_Members()
{
    lst_Members->clear();
    const QString key = txt_Family_id->text().trimmed();
    if (key.isEmpty()) {
        lst_Members->addItem(QStringLiteral("(None)"));
        return;
    }
    engine::Database* db = Current_Db();
    std::unique_ptr<engine::QueryDef> names = db ? db->QueryDefs(QStringLiteral("Qry_Select_Pupil_Names")) : nullptr;
    std::unique_ptr<engine::Recordset> pupils;
    if (names && names->set_parameter(QStringLiteral("par_fid"), key.toInt()))
        pupils = names->OpenRecordset();
    if (!pupils) {
        report_unexpected(QStringLiteral("Get_Members"));
        return;
    }
    if (pupils->at_eof())
        lst_Members->addItem(QStringLiteral("(None)"));
    while (!pupils->at_eof()) {
        lst_Members->addItem(pupils->Fields(QStringLiteral("Pupil_FirstName")).toString());
        if (!pupils->MoveNext())
            break;
    }
    pupils->Close();
    engine::Err().Clear();
}

void frm_Family::clear_more()
{
    lst_Members->clear();
}

bool frm_Family::Check_Deletion(int key)
{
    return Check_Family_Deletion(key);
}

QString frm_Family::criteria_after_delete(const QString& title) const
{
    // The next family in name order, or the first when there is none.
    return QStringLiteral("Family_Name > \"") + title + QLatin1Char('"');
}

void frm_Family::cmd_Remove_Click()
{
    set_status(QString());
    if (EditMode() != engine::editmode::None) {
        engine::MsgBox(QStringLiteral("There are changes in progress - cannot delete"), engine::mb::OkOnly, App_Title());
        return;
    }
    if (data().is_empty()) {
        engine::MsgBox(QStringLiteral("There are no records"), engine::mb::OkOnly, App_Title());
        return;
    }
    if (App_Question(QStringLiteral("Do you really want to delete all families ") + QStringLiteral("where there are no pupils?"))
        != engine::answer::Yes) {
        set_status(QStringLiteral("Removal cancelled"));
        return;
    }
    Bulk_Running = true;
    QString deleted;
    engine::Database* db = Current_Db();
    data().MoveFirst();
    while (data().Recordset() && !data().Recordset()->at_eof()) {
        const int key = current_key();
        std::unique_ptr<engine::QueryDef> names = db ? db->QueryDefs(QStringLiteral("Qry_Select_Pupil_Names")) : nullptr;
        std::unique_ptr<engine::Recordset> pupils;
        if (names && names->set_parameter(QStringLiteral("par_fid"), key))
            pupils = names->OpenRecordset();
        if (!pupils) {
            report_unexpected(QStringLiteral("cmd_Remove_Click"));
            break;
        }
        const bool no_pupils = pupils->at_eof();
        pupils->Close();
        if (no_pupils && Check_Family_Deletion(key)) {
            const QString name = current_title();
            // Two blanks after "delete", as the question has always been put.
            if (App_Yes(QStringLiteral("Do you really want to delete  ") + name)) {
                if (!data().Delete()) {
                    report_unexpected(QStringLiteral("cmd_Remove_Click"));
                    break;
                }
                deleted += name + QStringLiteral(", ");
            }
        }
        if (!data().MoveNext())
            break;
    }
    data().MoveFirst();
    set_status(deleted + QStringLiteral(" deleted"));
    engine::DBEngine::Idle();
    data().Requery();
    data().MoveFirst();
    Bulk_Running = false;
    // The list loses the families just removed.
    Setup_List();
}
