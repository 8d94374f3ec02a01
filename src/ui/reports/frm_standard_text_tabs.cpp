// The Report Text screen's construction: the school's fields above the tabs,
// then a tab for each kind of notice, the report values and tax.

#include "ui/reports/frm_standard_text.h"

#include "database/code_values.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QSpacerItem>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {

// A tab of fields: labels on the left, fields on the right.
class TabPage {
public:
    TabPage(QTabWidget* tabs, const QString& title) : page_(new QWidget(tabs)), grid_(new QGridLayout(page_))
    {
        grid_->setColumnStretch(1, 1);
        grid_->setVerticalSpacing(8);
        tabs->addTab(page_, title);
    }
    QWidget* page() const { return page_; }
    QGridLayout* grid() const { return grid_; }

    // A text of a few lines, as a notice on an invoice is.
    QPlainTextEdit* add_text(const QString& name, const QString& caption)
    {
        auto* text = new QPlainTextEdit(page_);
        text->setObjectName(name);
        text->setTabChangesFocus(true);
        add_row(caption, text, Qt::AlignTop);
        return text;
    }
    // An amount, in a box as wide as an amount needs.
    QLineEdit* add_amount(const QString& name, const QString& caption)
    {
        auto* edit = new QLineEdit(page_);
        edit->setObjectName(name);
        edit->setMaximumWidth(edit->fontMetrics().horizontalAdvance(QLatin1Char('0')) * 12 + 16);
        add_row(caption, edit, Qt::AlignVCenter);
        return edit;
    }
    void add_row(const QString& caption, QWidget* field, Qt::Alignment label_alignment)
    {
        const int row = grid_->rowCount();
        auto* label = new QLabel(caption, page_);
        label->setBuddy(field);
        grid_->addWidget(label, row, 0, label_alignment | Qt::AlignRight);
        grid_->addWidget(field, row, 1, field->maximumWidth() < QWIDGETSIZE_MAX ? Qt::AlignLeft : Qt::Alignment());
    }

private:
    QWidget* page_;
    QGridLayout* grid_;
};

QLineEdit* named_line(QWidget* parent, const QString& name)
{
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(name);
    return edit;
}

}  // namespace

void frm_Standard_Text::build_school_fields()
{
    // Who the school is, as reports print it: name and people on the left,
    // the address on the right.
    txt_School_Name = add_line(0, QStringLiteral("txt_School_Name"), QStringLiteral("School Name :"));
    txt_Principle = add_line(0, QStringLiteral("txt_Principle"), QStringLiteral("Principal :"));
    txt_Phone = add_line(0, QStringLiteral("txt_Phone"), QStringLiteral("Telephone :"));
    txt_Cheque_Payments = add_line(0, QStringLiteral("txt_Cheque_Payments"), QStringLiteral("Cheques Payable to:"));
    txt_Address = add_text(1, QStringLiteral("txt_Address"), QStringLiteral("Address :"));
    txt_Address->setTabChangesFocus(true);
    // Four or five lines of address; the tabs below take the height to spare.
    txt_Address->setMaximumHeight(txt_Address->fontMetrics().lineSpacing() * 5 + 12);
    // The column keeps to the top, level with the name, with room to spare below.
    QGridLayout* right = column_layout(1);
    right->setRowStretch(0, 0);
    right->addItem(new QSpacerItem(0, 0, QSizePolicy::Minimum, QSizePolicy::Expanding), right->rowCount(), 1);

    SSTab1 = new QTabWidget(this);
    SSTab1->setObjectName(QStringLiteral("SSTab1"));
    SSTab1->setUsesScrollButtons(false);  // every kind of notice stays in sight
    add_wide_widget(SSTab1, true);
}

void frm_Standard_Text::build_notice_tabs()
{
    // Each kind of notice prints what to pay, when to arrive and what else to
    // know; courses have their discounts and notice period instead of arrival.
    TabPage courses(SSTab1, QStringLiteral("Courses"));
    txt_Course_Payment_Details =
        courses.add_text(QStringLiteral("txt_Course_Payment_Details"), QStringLiteral("Course Payment Details :"));
    txt_Discounts = courses.add_text(QStringLiteral("txt_Discounts"), QStringLiteral("Discount Details :"));
    txt_Notice_Period = courses.add_text(QStringLiteral("txt_Notice_Period"), QStringLiteral("Notice Period :"));
    txt_Deflt_Course_Hourly_Rate =
        courses.add_amount(QStringLiteral("txt_Deflt_Course_Hourly_Rate"), QStringLiteral("Default Course Hourly Rate"));

    TabPage exams(SSTab1, QStringLiteral("Exams"));
    txt_Exam_Payment = exams.add_text(QStringLiteral("txt_Exam_Payment"), QStringLiteral("Exam Payment Details :"));
    txt_Exam_Arrival = exams.add_text(QStringLiteral("txt_Exam_Arrival"), QStringLiteral("Exam Arrival :"));
    txt_Exam_Notices = exams.add_text(QStringLiteral("txt_Exam_Notices"), QStringLiteral("Exam Notices :"));
    txt_Deflt_Exam_Hourly_Rate =
        exams.add_amount(QStringLiteral("txt_Deflt_Exam_Hourly_Rate"), QStringLiteral("Default Exam Rate"));

    TabPage shows(SSTab1, QStringLiteral("Shows"));
    txt_Show_Payment_Details =
        shows.add_text(QStringLiteral("txt_Show_Payment_Details"), QStringLiteral("Payment Details :"));
    Txt_Show_Arrival = shows.add_text(QStringLiteral("Txt_Show_Arrival"), QStringLiteral("Arrival Details :"));
    txt_Show_Notices = shows.add_text(QStringLiteral("txt_Show_Notices"), QStringLiteral("Notices :"));
    txt_Show_Cost_per_Pupil =
        shows.add_amount(QStringLiteral("txt_Show_Cost_per_Pupil"), QStringLiteral("Cost per Pupil :"));

    struct Kind {
        const char* tab;
        const char* prefix;  // of the controls' names
        QPlainTextEdit** payment;
        QPlainTextEdit** arrival;
        QPlainTextEdit** notices;
    };
    const Kind kinds[] = {
        {"Outings", "txt_Outing", &txt_Outing_Payment_Details, &txt_Outing_Arrival, &txt_Outing_Notices},
        {"Festivals", "txt_Comp", &txt_Comp_Payment_Details, &txt_Comp_Arrival, &txt_Comp_Notices},
        {"Spare", "txt_Spare", &txt_Spare_Payment_Details, &txt_Spare_Arrival, &txt_Spare_Notices},
    };
    for (const Kind& kind : kinds) {
        TabPage page(SSTab1, QLatin1String(kind.tab));
        const QString prefix = QLatin1String(kind.prefix);
        *kind.payment = page.add_text(prefix + QStringLiteral("_Payment_Details"), QStringLiteral("Payment Details :"));
        *kind.arrival = page.add_text(prefix + QStringLiteral("_Arrival"), QStringLiteral("Arrival :"));
        *kind.notices = page.add_text(prefix + QStringLiteral("_Notices"), QStringLiteral("Notices :"));
    }
}

void frm_Standard_Text::build_values_tab()
{
    // Eight named values for the school's own report files and scripts: a
    // description and a value on each line.
    TabPage values(SSTab1, QStringLiteral("Values"));
    QGridLayout* grid = values.grid();
    auto* heading = new QLabel(QStringLiteral("Values used in Personalised Report Formats :"), values.page());
    grid->addWidget(heading, 0, 0, 1, 4);
    grid->setColumnStretch(1, 3);
    grid->setColumnStretch(3, 2);
    for (int i = 0; i < static_cast<int>(txt_Discount_descr.size()); ++i) {
        txt_Discount_descr[i] = named_line(values.page(), QStringLiteral("txt_Discount_descr_%1").arg(i));
        txt_Discount_Value[i] = named_line(values.page(), QStringLiteral("txt_Discount_Value_%1").arg(i));
        auto* description = new QLabel(QStringLiteral("Description :"), values.page());
        description->setBuddy(txt_Discount_descr[i]);
        auto* value = new QLabel(QStringLiteral("Value :"), values.page());
        value->setBuddy(txt_Discount_Value[i]);
        grid->addWidget(description, i + 1, 0, Qt::AlignRight);
        grid->addWidget(txt_Discount_descr[i], i + 1, 1);
        grid->addWidget(value, i + 1, 2, Qt::AlignRight);
        grid->addWidget(txt_Discount_Value[i], i + 1, 3);
    }
    grid->setColumnMinimumWidth(2, 60);
    grid->setRowStretch(grid->rowCount(), 1);
}

void frm_Standard_Text::build_vat_tab()
{
    // How tax is treated, its rates for scripts and reports, and the texts
    // that invoices print about it.
    TabPage vat(SSTab1, QStringLiteral("V.A.T."));
    QGridLayout* grid = vat.grid();

    auto* treatment = new QGroupBox(vat.page());
    treatment->setObjectName(QStringLiteral("frame_VAT_Type"));
    auto* options = new QVBoxLayout(treatment);
    const auto option = [&](const char* name, int vat_type) {
        auto* button = new QRadioButton(code::vat_type::text(vat_type), treatment);
        button->setObjectName(QLatin1String(name));
        options->addWidget(button);
        return button;
    };
    Opt_VAT_None = option("Opt_VAT_None", code::vat_type::None);
    Opt_VAT_in_Total = option("Opt_VAT_in_Total", code::vat_type::In_Total);
    Opt_VAT_Script = option("Opt_VAT_Script", code::vat_type::By_Script);
    txt_VAT_Type = named_line(treatment, QStringLiteral("txt_VAT_Type"));
    txt_VAT_Type->hide();

    // The six rates in two columns of three, beside the options.
    auto* rates = new QWidget(vat.page());
    auto* rate_grid = new QGridLayout(rates);
    rate_grid->setContentsMargins(16, 0, 0, 0);
    for (int i = 0; i < static_cast<int>(txt_VAT_Percent.size()); ++i) {
        txt_VAT_Percent[i] = named_line(rates, QStringLiteral("txt_VAT_Percent_%1").arg(i));
        txt_VAT_Percent[i]->setMaximumWidth(txt_VAT_Percent[i]->fontMetrics().horizontalAdvance(QLatin1Char('0')) * 8 + 16);
        auto* label = new QLabel(QStringLiteral("Percentage :"), rates);
        label->setBuddy(txt_VAT_Percent[i]);
        rate_grid->addWidget(label, i % 3, (i / 3) * 2, Qt::AlignRight);
        rate_grid->addWidget(txt_VAT_Percent[i], i % 3, (i / 3) * 2 + 1, Qt::AlignLeft);
    }
    auto* top = new QHBoxLayout;
    top->addWidget(treatment);
    top->addWidget(rates);
    top->addStretch(1);
    grid->addLayout(top, 0, 0, 1, 2);

    txt_VAT_Regn_Notice = vat.add_text(QStringLiteral("txt_VAT_Regn_Notice"), QStringLiteral("Registration Notice :"));
    txt_VAT_Notice = vat.add_text(QStringLiteral("txt_VAT_Notice"), QStringLiteral("Notice :"));
    Txt_VAT_Included = vat.add_text(QStringLiteral("Txt_VAT_Included"), QStringLiteral("Included Notice :"));
}
