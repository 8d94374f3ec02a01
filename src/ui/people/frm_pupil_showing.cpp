#include "ui/people/frm_pupil.h"

#include "courses/course_entry.h"
#include "database/db_handling.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "engine/vb_values.h"
#include "people/pupil_age.h"
#include "people/pupil_family_writes.h"
#include "people/pupil_gender.h"
#include "people/pupil_name.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "shell/report_numbers.h"
#include "ui/people/frm_pupil_words.h"
#include "ui/toolkit/app_boxes.h"
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

// ---- Moving through the pupils ----

bool frm_Pupil::Check_Changes()
{
    // Leaving the field being typed in makes its change count.
    cmd_Update->setFocus(Qt::OtherFocusReason);
    QCoreApplication::processEvents();
    return Pupil_Changed || Family_Changed || !lst_Courses_Added->selectedItems().isEmpty();
}

void frm_Pupil::cmb_Navigation_Click()
{
    if (cmb_Navigation->currentIndex() == -1 || data_Navigation_.is_empty())
        return;
    if (Check_Changes()) {
        App_Box(QStringLiteral("Cannot move - there are outstanding changes."));
        cmb_Navigation->setCurrentIndex(-1);
        return;
    }
    Move_Selected_Navigation();
}

void frm_Pupil::Move_Selected_Navigation()
{
    const QString routine = QStringLiteral("Move_Selected_Navigation");
    const int index = cmb_Navigation->currentIndex();
    if (index < 0)
        return;
    const QString criteria = QStringLiteral("Pupil_id = ") + QString::number(cmb_Navigation->itemData(index).toInt());
    // The pupil is looked for aside first, so that a list out of date leaves
    // the screen where it is.
    std::unique_ptr<engine::Recordset> clone = data_Navigation_.Recordset()->Clone();
    if (!clone || !clone->FindFirst(criteria)) {
        report_unexpected(routine);
        return;
    }
    if (clone->NoMatch()) {
        Report_Error(report::Detected, QStringLiteral("Unexpected error - pupil names are out of date"),
                     engine::mb::Information, module, routine);
        return;
    }
    clone->Close();
    if (!data_Navigation_.FindFirst(criteria)) {
        report_unexpected(routine);
        return;
    }
    if (data_Navigation_.NoMatch())
        Report_Error(report::Detected, QStringLiteral("Unexpected error - selected pupil name could not be found"),
                     engine::mb::Information, module, routine);
}

bool frm_Pupil::has_record() const
{
    const engine::Recordset* records = data_Navigation_.Recordset();
    return records && !records->at_bof() && !records->at_eof();
}

QVariant frm_Pupil::record_value(const QString& column) const
{
    if (!has_record())
        return QVariant();
    QVariant value;
    if (!data_Navigation_.Recordset()->get(column, value))
        engine::Err().Clear();
    return value;
}

void frm_Pupil::on_reposition()
{
    if (has_record())
        show_list_at_current();
    Display_Pupil();
}

void frm_Pupil::show_list_at_current()
{
    int index = Glob_Search_Combo(cmb_Navigation, record_value(QStringLiteral("Pupil_id")).toInt());
    if (index < 0)
        index = cmb_Navigation->findText(Format_Name(*data_Navigation_.Recordset()));
    cmb_Navigation->setCurrentIndex(index);
}

bool frm_Pupil::navigation_allowed()
{
    if (Check_Changes()) {
        App_Box(QStringLiteral("There are changes outstanding - cannot move"));
        return false;
    }
    set_status(QString());
    if (data_Navigation_.is_empty()) {
        App_Box(QStringLiteral("There are no records"));
        return false;
    }
    return true;
}

void frm_Pupil::cmd_First_Click()
{
    if (navigation_allowed() && !data_Navigation_.MoveFirst())
        report_unexpected(QStringLiteral("cmd_First"));
}

void frm_Pupil::cmd_Last_Click()
{
    if (navigation_allowed() && !data_Navigation_.MoveLast())
        report_unexpected(QStringLiteral("cmd_Last"));
}

void frm_Pupil::cmd_Next_Click()
{
    if (!navigation_allowed())
        return;
    if (!data_Navigation_.MoveNext()) {
        report_unexpected(QStringLiteral("cmd_Next"));
        return;
    }
    if (data_Navigation_.Recordset()->at_eof()) {
        set_status(QStringLiteral("There are no more records"));
        data_Navigation_.MoveLast();
    }
}

void frm_Pupil::cmd_Prev_Click()
{
    if (!navigation_allowed())
        return;
    if (!data_Navigation_.MovePrevious()) {
        report_unexpected(QStringLiteral("cmd_Prev"));
        return;
    }
    if (data_Navigation_.Recordset()->at_bof()) {
        set_status(QStringLiteral("There are no more records"));
        data_Navigation_.MoveFirst();
    }
}

// ---- Showing a pupil ----

void frm_Pupil::Display_Pupil()
{
    const QVariant birth_date = record_value(QStringLiteral("Pupil_Birthdate"));
    bound(txt_BirthDate)->fill(date_shown(birth_date));
    bound(txt_StartDate)->fill(date_shown(record_value(QStringLiteral("Pupil_StartDate"))));
    Display_Age_Of(birth_date);
    Display_Gender();
    const bool showing = has_record();
    open_pupil_grids(showing ? record_value(QStringLiteral("Pupil_id")).toInt() : 0);
    open_accounts(showing ? record_value(QStringLiteral("Pupil_Family_id")).toInt() : 0,
                  chk_Show_Outstanding->isChecked() ? QStringLiteral("Qry_Select_Family_Invoices_Unpaid")
                                                    : QStringLiteral("Qry_Select_Family_Invoices_All"));
    if (showing)
        cmb_Family_Names->setCurrentIndex(Glob_Search_Combo(cmb_Family_Names, record_value(QStringLiteral("Family_id")).toInt()));
}

void frm_Pupil::Display_Age_Of(const QVariant& birth_date)
{
    QDateTime born;
    const bool known = !birth_date.isNull() && birth_date.isValid() && vb::CDate(birth_date, born);
    engine::Err().Clear();
    if (!known) {
        txt_Age_Years->clear();
        txt_Age_Months->clear();
        return;
    }
    const PupilAge age = Display_Age(born.date(), QDate::currentDate());
    txt_Age_Years->setText(QString::number(age.years));
    txt_Age_Months->setText(QString::number(age.months));
}

void frm_Pupil::Display_Gender()
{
    const GenderLook look = Gender_Look(txt_Gender->text());
    Shape_Gender->set_look(look.colour, look.cross_hatched);
    if (!look.known)
        return;
    const bool loading = Gender_Loading;
    Gender_Loading = true;
    Opt_Male->setChecked(look.sex == PupilSex::Male);
    Opt_Female->setChecked(look.sex == PupilSex::Female);
    Chk_Hidden->setChecked(look.hidden);
    Gender_Loading = loading;
}

namespace {

// Opens a parameter query for a grid, in place of the rows it showed.
bool reopen(DataGrid* grid, std::unique_ptr<engine::Recordset>& rows, const QString& query, const QString& parameter,
            int key, const QStringList& fields, const QStringList& headers, const QString& error_words,
            const QString& control)
{
    engine::Database* db = Current_Db();
    std::unique_ptr<engine::QueryDef> source = db ? db->QueryDefs(query) : nullptr;
    std::unique_ptr<engine::Recordset> opened =
        source && source->set_parameter(parameter, key) ? source->OpenRecordset() : nullptr;
    if (!opened) {
        if (engine::Err().Number == 0)
            engine::Err().Raise(engine::jet::ObjectClosed, QStringLiteral("There is no database open."));
        Report_Error(report::BoundControl,
                     error_words + QStringLiteral("Number = ") + QString::number(engine::Err().Number),
                     engine::mb::OkOnly, module, control + QStringLiteral("_Error"));
        grid->set_recordset(nullptr);
        rows.reset();
        return false;
    }
    grid->set_recordset(opened.get());
    grid->set_columns(fields, headers);
    rows = std::move(opened);
    return true;
}

}  // namespace

bool frm_Pupil::open_exams(int pupil_id)
{
    return reopen(DBGrid_Exams_Taken, exams_taken_, QStringLiteral("Qry_Select_Pupil_Exam_Details"),
                  QStringLiteral("par_Pupil_id"), pupil_id,
                  {QStringLiteral("Exam_Title"), QStringLiteral("Results_Date"), QStringLiteral("Results_Mark")},
                  {QStringLiteral("Title"), QStringLiteral("Date"), QStringLiteral("Mark")}, exams_error,
                  QStringLiteral("Data_Exams_Taken"));
}

bool frm_Pupil::open_festivals(int pupil_id)
{
    return reopen(DBGrid_Festivals, festivals_, QStringLiteral("Qry_Select_Pupil_Festival_Details"),
                  QStringLiteral("par_Pupil_id"), pupil_id,
                  {QStringLiteral("Activity_Title"), QStringLiteral("Results_Date"), QStringLiteral("Exam_Title"),
                   QStringLiteral("Results_Mark")},
                  {QStringLiteral("Festival"), QStringLiteral("Date"), QStringLiteral("Title"), QStringLiteral("Mark")},
                  festivals_error, QStringLiteral("Data_Festivals"));
}

bool frm_Pupil::open_courses(int pupil_id)
{
    return reopen(DBGrid_Courses_Taken, courses_taken_, QStringLiteral("Qry_Select_Pupil_Courses"),
                  QStringLiteral("par_Pupil_id"), pupil_id,
                  {QStringLiteral("Course_Title"), QStringLiteral("Location"), QStringLiteral("Description"),
                   QStringLiteral("Course_id")},
                  {QStringLiteral("Title"), QStringLiteral("Location"), QStringLiteral("Description"),
                   QStringLiteral("Course id")},
                  courses_error, QStringLiteral("Data_Courses_Taken"));
}

bool frm_Pupil::open_pupil_grids(int pupil_id)
{
    // Each grid on its own: one that fails leaves the others showing.
    const bool exams = open_exams(pupil_id);
    const bool festivals = open_festivals(pupil_id);
    const bool courses = open_courses(pupil_id);
    return exams && festivals && courses;
}

bool frm_Pupil::open_accounts(int family_id, const QString& query)
{
    return reopen(DBGrid_Accounts, accounts_, query, QStringLiteral("par_Family_id"), family_id,
                  {QStringLiteral("Invoice_Date"), QStringLiteral("Invoice_Reason"), QStringLiteral("Owed"),
                   QStringLiteral("Paid")},
                  {QStringLiteral("Invoice Date"), QStringLiteral("Reason"), QStringLiteral("Invoice Total"),
                   QStringLiteral("Received")},
                  accounts_error, QStringLiteral("Data_Accounts"));
}

void frm_Pupil::chk_Show_Outstanding_Click()
{
    Display_Pupil();
}

bool frm_Pupil::Display_Family(int family_id)
{
    engine::Database* db = Current_Db();
    std::unique_ptr<engine::QueryDef> query = db ? db->QueryDefs(QStringLiteral("Qry_Select_Family_Details_By_id")) : nullptr;
    std::unique_ptr<engine::Recordset> family =
        query && query->set_parameter(QStringLiteral("par_Family_id"), family_id) ? query->OpenRecordset() : nullptr;
    if (!family) {
        report_unexpected(QStringLiteral("Display_Family"));
        return false;
    }
    if (family->at_eof()) {
        // Reported under the routine's old label, as the log has always had it.
        Report_Error(report::Detected, QStringLiteral("Unexpected error - couldn't find family"), engine::mb::Information,
                     module, QStringLiteral("Update_Family"));
        return false;
    }
    for (Field& field : fields_) {
        if (field.half == Half::Family || field.control == txt_Family_id)
            field.bound->fill(family->Fields(field.bound->DataField()));
    }
    family->Close();
    engine::Err().Clear();
    return true;
}
