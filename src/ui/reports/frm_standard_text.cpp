#include "ui/reports/frm_standard_text.h"

#include "database/code_values.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "reports/standard_text_checks.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "toolkit/help_pages.h"
#include "ui/toolkit/app_boxes.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>

namespace {

RecordScreenWords standard_text_words()
{
    RecordScreenWords words;
    words.form_name = QStringLiteral("frm_Standard_Text");
    words.caption = QStringLiteral("Report Text");
    words.module = QStringLiteral("fstndrd");
    words.data_name = QStringLiteral("Data1");
    words.noun = QStringLiteral("Report Text");
    words.help_context = help::context::Report_Messages;
    words.cancel_routine = QStringLiteral("cmd_Cancel");
    return words;
}

// The report of a save that failed, as the record pattern gives it.
constexpr int unexpected_state = 300001;

}  // namespace

frm_Standard_Text::frm_Standard_Text(QWidget* parent) : RecordScreen(standard_text_words(), parent)
{
    // One row: nothing to choose, add or delete.
    frame_Navigation->hide();
    cmd_Add->hide();
    cmd_Delete->hide();
    cmd_Cancel->setText(QStringLiteral("Cancel (&Q)"));

    build_school_fields();
    build_notice_tabs();
    build_values_tab();
    build_vat_tab();
    bind_fields();

    // The options show what the hidden box holds, and write into it.
    connect(txt_VAT_Type, &QLineEdit::textChanged, this, &frm_Standard_Text::txt_VAT_Type_Change);
    connect(Opt_VAT_None, &QRadioButton::clicked, this, [this] { Opt_VAT_Click(code::vat_type::None); });
    connect(Opt_VAT_in_Total, &QRadioButton::clicked, this, [this] { Opt_VAT_Click(code::vat_type::In_Total); });
    connect(Opt_VAT_Script, &QRadioButton::clicked, this, [this] { Opt_VAT_Click(code::vat_type::By_Script); });

    Setup_Controls(QStringLiteral("Standard_Values"), QStringLiteral("stndrd_id"), QStringLiteral("School_Name"));
    show_vat_option();
    resize(minimumSizeHint().expandedTo(QSize(900, 660)));
}

void frm_Standard_Text::bind_fields()
{
    bind(txt_School_Name, QStringLiteral("School_Name"));
    bind(txt_Principle, QStringLiteral("School_Principle"));
    bind(txt_Address, QStringLiteral("School_Address"));
    bind(txt_Phone, QStringLiteral("School_Telephone"));
    bind(txt_Cheque_Payments, QStringLiteral("Cheque_Payments"));
    const std::pair<QWidget*, const char*> columns[] = {
        {txt_Course_Payment_Details, "Course_Payment_Details"}, {txt_Discounts, "Discounts"},
        {txt_Notice_Period, "Notice_Period"}, {txt_Deflt_Course_Hourly_Rate, "Deflt_Course_Hourly_Rate"},
        {txt_Exam_Payment, "Exam_Payment_Details"}, {txt_Exam_Arrival, "Exam_Arrival"},
        {txt_Exam_Notices, "Exam_Notices"}, {txt_Deflt_Exam_Hourly_Rate, "Deflt_Exam_Hourly_Rate"},
        {txt_Show_Payment_Details, "Show_Payment_Details"}, {Txt_Show_Arrival, "Show_Arrival"},
        {txt_Show_Notices, "Show_Notices"}, {txt_Show_Cost_per_Pupil, "Show_Cost_per_Pupil"},
        {txt_Outing_Payment_Details, "Outing_Payment_Details"}, {txt_Outing_Arrival, "Outing_Arrival"},
        {txt_Outing_Notices, "Outing_Notices"}, {txt_Comp_Payment_Details, "Competition_Payment_Details"},
        {txt_Comp_Arrival, "Competition_Arrival"}, {txt_Comp_Notices, "Competition_Notices"},
        {txt_Spare_Payment_Details, "Spare_Payment_Details"}, {txt_Spare_Arrival, "Spare_Arrival"},
        {txt_Spare_Notices, "Spare_Notices"}, {txt_VAT_Type, "VAT_Type"},
        {txt_VAT_Regn_Notice, "VAT_Regn_Notice"}, {txt_VAT_Notice, "VAT_Notice"}, {Txt_VAT_Included, "VAT_Included"},
    };
    for (const auto& [control, column] : columns)
        bind(control, QLatin1String(column));
    for (int i = 0; i < static_cast<int>(txt_Discount_descr.size()); ++i) {
        bind(txt_Discount_descr[i], QStringLiteral("txt_Discount_%1").arg(i + 1));
        bind(txt_Discount_Value[i], QStringLiteral("Discount_%1").arg(i + 1));
    }
    for (int i = 0; i < static_cast<int>(txt_VAT_Percent.size()); ++i)
        bind(txt_VAT_Percent[i], QStringLiteral("VAT_Percent%1").arg(i + 1));
}

// Each time the screen comes to the front: the row, or a new one when the
// database has none yet.
void frm_Standard_Text::Form_Activate()
{
    engine::Recordset* records = data().Recordset();
    if (!records || EditMode() != engine::editmode::None)
        return;
    if (records->RecordCount() > 0) {
        if (!data().MoveFirst())
            report_unexpected(QStringLiteral("Form_Activate"));
        return;
    }
    if (!data().AddNew() || !records->set(QStringLiteral("stndrd_id"), code::Standard_Values_Row)) {
        report_unexpected(QStringLiteral("Form_Activate"));
        return;
    }
    Clear_screen();
    txt_School_Name->setFocus(Qt::OtherFocusReason);
}

// The row is stored where it is: there is no other to find it among.
void frm_Standard_Text::cmd_Update_Click()
{
    const int mode = EditMode();
    if (mode == engine::editmode::None) {
        set_status(QStringLiteral("No changes to update"));
        return;
    }
    if (mode == engine::editmode::Add
        && !data().Recordset()->set(QStringLiteral("stndrd_id"), code::Standard_Values_Row)) {
        report_unexpected(QStringLiteral("cmd_Update"));
        return;
    }
    if (!Validate_Data())
        return;
    const QString done = txt_School_Name->text() + (mode == engine::editmode::Add ? QStringLiteral(" added successfully")
                                                                                 : QStringLiteral(" updated successfully"));
    if (!data().Update()) {
        Report_Error(unexpected_state, QStringLiteral("Unexpected error "), engine::mb::Information, words().module,
                     QStringLiteral("cmd_Update"));
        return;
    }
    Clear_highlights();
    set_status(done);
    // The fields show the row as stored, and count as unchanged again.
    if (!data().MoveFirst())
        report_unexpected(QStringLiteral("cmd_Update"));
}

bool frm_Standard_Text::Validate_Data()
{
    StandardTextEntry entry{txt_Deflt_Exam_Hourly_Rate->text(), txt_Deflt_Course_Hourly_Rate->text(),
                            txt_Show_Cost_per_Pupil->text(), {}};
    for (int i = 0; i < static_cast<int>(txt_VAT_Percent.size()); ++i)
        entry.vat_percent[i] = txt_VAT_Percent[i]->text();
    const StandardTextRefusal refusal = Check_Standard_Text(entry);

    // A blank value has become "0", even when a later one is refused.
    const auto put_back = [](QLineEdit* box, const QString& value) {
        if (box->text() != value)
            box->setText(value);
    };
    put_back(txt_Deflt_Exam_Hourly_Rate, entry.exam_rate);
    put_back(txt_Deflt_Course_Hourly_Rate, entry.course_rate);
    put_back(txt_Show_Cost_per_Pupil, entry.show_cost);
    for (int i = 0; i < static_cast<int>(txt_VAT_Percent.size()); ++i)
        put_back(txt_VAT_Percent[i], entry.vat_percent[i]);
    if (refusal.field == StandardTextField::None)
        return true;

    App_Box(refusal.message);
    QLineEdit* field = refusal.field == StandardTextField::Exam_Rate     ? txt_Deflt_Exam_Hourly_Rate
                       : refusal.field == StandardTextField::Course_Rate ? txt_Deflt_Course_Hourly_Rate
                       : refusal.field == StandardTextField::Show_Cost   ? txt_Show_Cost_per_Pupil
                                                                         : txt_VAT_Percent[refusal.index];
    // The field may stand on a tab that isn't showing.
    for (QWidget* w = field->parentWidget(); w; w = w->parentWidget())
        if (SSTab1->indexOf(w) >= 0)
            SSTab1->setCurrentWidget(w);
    field->setFocus(Qt::OtherFocusReason);
    return false;
}

void frm_Standard_Text::Opt_VAT_Click(int vat_type)
{
    txt_VAT_Type->setText(QString::number(vat_type));
}

// A change of the hidden box, by an option or by the record: a change the
// user made starts an edit, as leaving a field does.
void frm_Standard_Text::txt_VAT_Type_Change()
{
    for (const BoundField* field : data().bound_fields())
        if (field->DataField() == QLatin1String("VAT_Type") && field->DataChanged())
            Check_LostFocus(txt_VAT_Type);
    show_vat_option();
}

void frm_Standard_Text::show_vat_option()
{
    bool is_number = false;
    const int vat_type = txt_VAT_Type->text().trimmed().toInt(&is_number);
    QRadioButton* chosen = !is_number                          ? nullptr
                           : vat_type == code::vat_type::None     ? Opt_VAT_None
                           : vat_type == code::vat_type::In_Total ? Opt_VAT_in_Total
                           : vat_type == code::vat_type::By_Script   ? Opt_VAT_Script
                                                                  : nullptr;
    for (QRadioButton* option : {Opt_VAT_None, Opt_VAT_in_Total, Opt_VAT_Script}) {
        // Options that exclude one another can't all be cleared otherwise.
        option->setAutoExclusive(false);
        option->setChecked(option == chosen);
        option->setAutoExclusive(true);
    }
}

bool frm_Standard_Text::Check_Deletion(int /*key*/)
{
    return false;  // the row is never deleted
}

QWidget* frm_Standard_Text::first_field() const
{
    return txt_School_Name;
}
