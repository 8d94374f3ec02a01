#include "ui/reports/frm_view_report.h"

#include "engine/err.h"
#include "engine/msg_box.h"
#include "reportoutput/page_painter.h"
#include "reports/report_runner.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "shell/report_numbers.h"
#include "ui/reports/report_printing.h"
#include "ui/shell/switch_screen.h"
#include "ui/toolkit/app_boxes.h"
#include "ui/toolkit/screen_kit.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QShowEvent>
#include <QStackedWidget>
#include <QVBoxLayout>

using namespace reportengine;

// One page drawn as it prints, at the screen's scale.
class PageView : public QWidget {
public:
    explicit PageView(QWidget* parent) : QWidget(parent) { setAutoFillBackground(false); }

    void show(const Page* page, QSizeF paper, double pixels_per_mm)
    {
        page_ = page;
        paper_ = paper;
        scale_ = pixels_per_mm;
        setFixedSize((paper_ * scale_).toSize());
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), Qt::white);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setRenderHint(QPainter::TextAntialiasing);
        if (page_)
            reportoutput::paint_page(painter, *page_, scale_);
    }

private:
    const Page* page_ = nullptr;
    QSizeF paper_;
    double scale_ = 1;
};

namespace {

const QString page_width = QStringLiteral("Page Width");
const QString whole_page = QStringLiteral("Whole Page");

}  // namespace

int& View_Report_State()
{
    static int state = 0;
    return state;
}

frm_View_Report::frm_View_Report(const QString& name, QWidget* parent) : QWidget(parent, Qt::Window)
{
    setObjectName(QStringLiteral("frm_View_Report"));
    setWindowTitle(name + QStringLiteral(" View Report Screen"));
    colours::Rgb colour;
    Screen_Setup(this, true, colour);

    auto* layout = new QVBoxLayout(this);
    auto* commands = new QHBoxLayout;
    cmd_First = make_button(this, QStringLiteral("cmd_First"), QStringLiteral("&First"));
    cmd_Prev = make_button(this, QStringLiteral("cmd_Prev"), QStringLiteral("&Previous"));
    cmd_Next = make_button(this, QStringLiteral("cmd_Next"), QStringLiteral("&Next"));
    cmd_Last = make_button(this, QStringLiteral("cmd_Last"), QStringLiteral("&Last"));
    lbl_Page = new QLabel(this);
    lbl_Page->setObjectName(QStringLiteral("lbl_Page"));
    lbl_Page->setMinimumWidth(lbl_Page->fontMetrics().horizontalAdvance(QStringLiteral("Page 0000 of 0000")));
    lbl_Page->setAlignment(Qt::AlignCenter);
    cmb_Zoom = new QComboBox(this);
    cmb_Zoom->setObjectName(QStringLiteral("cmb_Zoom"));
    cmb_Zoom->addItems({page_width, whole_page, QStringLiteral("50%"), QStringLiteral("75%"), QStringLiteral("100%"),
                        QStringLiteral("150%"), QStringLiteral("200%")});
    auto* zoom_label = new QLabel(QStringLiteral("&Zoom :"), this);
    zoom_label->setBuddy(cmb_Zoom);
    cmd_Print = make_button(this, QStringLiteral("cmd_Print"), QStringLiteral("P&rint"));
    cmd_Close = make_button(this, QStringLiteral("cmd_Close"), QStringLiteral("&Close"));
    for (QWidget* control : {static_cast<QWidget*>(cmd_First), static_cast<QWidget*>(cmd_Prev),
                             static_cast<QWidget*>(lbl_Page), static_cast<QWidget*>(cmd_Next),
                             static_cast<QWidget*>(cmd_Last)})
        commands->addWidget(control);
    commands->addSpacing(16);
    commands->addWidget(zoom_label);
    commands->addWidget(cmb_Zoom);
    commands->addStretch(1);
    commands->addWidget(cmd_Print);
    commands->addWidget(cmd_Close);
    layout->addLayout(commands);

    stack_ = new QStackedWidget(this);
    scroll_ = new QScrollArea(stack_);
    scroll_->setObjectName(QStringLiteral("CRViewer1"));
    scroll_->setAccessibleName(QStringLiteral("Report page"));
    scroll_->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    scroll_->setBackgroundRole(QPalette::Dark);
    view_ = new PageView(scroll_);
    scroll_->setWidget(view_);
    lbl_No_Data = new QLabel(QStringLiteral("There is no data to display"), stack_);
    lbl_No_Data->setObjectName(QStringLiteral("lbl_No_Data"));
    lbl_No_Data->setAlignment(Qt::AlignCenter);
    stack_->addWidget(scroll_);
    stack_->addWidget(lbl_No_Data);
    layout->addWidget(stack_, 1);

    connect(cmd_First, &QPushButton::clicked, this, [this] { show_page(0); });
    connect(cmd_Prev, &QPushButton::clicked, this, [this] { show_page(page_ - 1); });
    connect(cmd_Next, &QPushButton::clicked, this, [this] { show_page(page_ + 1); });
    connect(cmd_Last, &QPushButton::clicked, this, [this] { show_page(static_cast<int>(model_.pages.size()) - 1); });
    connect(cmb_Zoom, &QComboBox::currentIndexChanged, this, &frm_View_Report::apply_zoom);
    connect(cmd_Print, &QPushButton::clicked, this, &frm_View_Report::cmd_Print_Click);
    connect(cmd_Close, &QPushButton::clicked, this, [this] { Switch_Screen(this, nullptr, false); });
    resize(900, 760);
}

frm_View_Report::~frm_View_Report() = default;

void frm_View_Report::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous() && !activated_)
        Activate_When_Shown(this, [this] { Form_Activate(); });
}

void frm_View_Report::closeEvent(QCloseEvent* event)
{
    if (Close_Box_Is_Exit(this, event, [this] { Switch_Screen(this, nullptr, false); }))
        return;
    // The report stays open as long as it is shown.
    GCR_End_Report();
    QWidget::closeEvent(event);
}

void frm_View_Report::Form_Activate()
{
    activated_ = true;
    {
        HourGlass hour_glass;
        if (!lay_out()) {
            report_source_error();
            return;
        }
        show_page(0);
    }
    View_Report_State() = view_state::Finished;
    GCR_Check_Alerts();
}

bool frm_View_Report::lay_out()
{
    model_ = PageModel();
    return GCR_Report() && GCR_Lay_Out(model_);
}

// The report could not be shown: said with what was read, and the screen goes.
void frm_View_Report::report_source_error()
{
    const engine::ErrState& err = engine::Err();
    Report_Error(report::Detected,
                 QStringLiteral("Unexpected error in ") + GCR_Report_File() + QStringLiteral(" error ")
                     + QString::number(err.Number) + QStringLiteral(" - ") + err.Description,
                 engine::mb::Information, QStringLiteral("fviewreport"),
                 QStringLiteral("CRViewer1_OnReportSourceError - ") + err.Description + QStringLiteral(" Records = ")
                     + QString::number(model_.records_read) + QStringLiteral(" Groups = ")
                     + QString::number(model_.groups_counted));
    failed_ = true;
    View_Report_State() = view_state::Failed;
    Switch_Screen(this, nullptr, false);
}

void frm_View_Report::show_page(int page)
{
    const int count = static_cast<int>(model_.pages.size());
    const bool empty = model_.is_empty() || count == 0;
    stack_->setCurrentWidget(empty ? static_cast<QWidget*>(lbl_No_Data) : static_cast<QWidget*>(scroll_));
    for (QWidget* control : {cmd_First, cmd_Prev, cmd_Next, cmd_Last, cmd_Print})
        control->setEnabled(!empty);
    if (empty) {
        lbl_Page->clear();
        return;
    }
    page_ = std::clamp(page, 0, count - 1);
    lbl_Page->setText(QStringLiteral("Page %1 of %2").arg(page_ + 1).arg(count));
    cmd_First->setEnabled(page_ > 0);
    cmd_Prev->setEnabled(page_ > 0);
    cmd_Next->setEnabled(page_ < count - 1);
    cmd_Last->setEnabled(page_ < count - 1);
    apply_zoom();
    scroll_->verticalScrollBar()->setValue(0);
}

void frm_View_Report::apply_zoom()
{
    if (model_.pages.empty() || model_.paper.isEmpty())
        return;
    const QString zoom = cmb_Zoom->currentText();
    const QSize room = scroll_->viewport()->size() - QSize(24, 24);
    double scale = logicalDpiX() / 25.4;
    if (zoom == page_width)
        scale = room.width() / model_.paper.width();
    else if (zoom == whole_page)
        scale = std::min(room.width() / model_.paper.width(), room.height() / model_.paper.height());
    else
        scale *= QString(zoom).remove(QLatin1Char('%')).toDouble() / 100;
    view_->show(&model_.pages[static_cast<size_t>(page_)], model_.paper, std::max(scale, 0.5));
}

// ---- Printing ----

bool frm_View_Report::check_paper_before_printing(bool& printer_chosen)
{
    printer_chosen = false;
    ReportDefinition& report = GCR_Report()->definition;
    if (GCR_Check_Paper(report, printer_state(printer_)))
        return true;
    give_printer_paper(printer_, report.page.paper_size, report.page.orientation);
    if (!Run_Print_Dialog(printer_, this))
        return false;
    printer_chosen = true;
    const PrinterState chosen = printer_state(printer_);
    if (GCR_Check_Paper(report, chosen))
        return true;
    if (App_Question(QStringLiteral("The printer settings dont match those of the report. ") + QLatin1Char('\n')
            + QStringLiteral("Shall I change the report settings to match the printer?"))
        == engine::answer::Yes) {
        report.page.paper_size = chosen.paper_size;
        report.page.orientation = chosen.orientation;
        HourGlass hour_glass;
        if (!lay_out()) {
            report_source_error();
            return false;
        }
        show_page(page_);
    }
    return true;
}

void frm_View_Report::cmd_Print_Click()
{
    if (!GCR_Report() || model_.is_empty())
        return;
    bool printer_chosen = false;
    if (!check_paper_before_printing(printer_chosen))
        return;
    if (!printer_chosen && !Run_Print_Dialog(printer_, this))
        return;
    HourGlass hour_glass;
    if (!print_pages(model_, printer_))
        Report_Error(report::Unexpected, QStringLiteral("Unexpected error printing report ") + GCR_Report_File(),
                     engine::mb::Information, QStringLiteral("fviewreport"), QStringLiteral("PrintButtonClicked"));
}
