// The report viewer and printing: the pages shown one by one, an empty
// report said to be empty, a report that can't be laid out reported, and
// printing through the print dialog with the paper checked first. The
// printer is Qt's printing to a PDF file, read back by a real PDF reader.

#include "ui/reports/frm_view_report.h"

#include "engine/msg_box.h"
#include "reports/report_runner.h"
#include "screen_driver.h"
#include "support/scripted_boxes.h"
#include "ui/reports/report_printing.h"

#include <QLabel>
#include <QPageLayout>
#include <QPageSize>
#include <QProcess>
#include <QPushButton>
#include <QStackedWidget>

#include <gtest/gtest.h>

using namespace screen_driver;
using engine::answer::No;
using engine::answer::Ok;
using engine::answer::Yes;
using testing_support::ScriptedBoxes;

namespace {

// One page a family; the paper as the test asks.
QString families_report(const QString& page, const QString& table = QStringLiteral("Families"))
{
    return QStringLiteral(R"xml(<report version="1" title="Families">
  %1
  <tables><table name="%2"/></tables>
  <sort field="{Families.Family_Name}"/>
  <area kind="details"><section height="6" newPageAfter="true">
    <field x="0" y="0" width="80" height="5" source="{Families.Family_Name}"/></section></area>
</report>)xml")
        .arg(page, table);
}

QString pdf_info(const QString& file)
{
    QProcess info;
    info.start(QStringLiteral("pdfinfo"), {file});
    EXPECT_TRUE(info.waitForFinished(30000));
    return QString::fromUtf8(info.readAllStandardOutput());
}

class ReportViewer : public ::testing::Test {
protected:
    ReportViewer()
    {
        for (const char* name : {"Ashby", "Brook", "Cole"})
            school.add_family(QLatin1String(name));
        for (QString* global : {&GCR_Output_Type(), &GCR_Export_File(), &GCR_Invoice_Type_Value(), &GCR_Formula_Name(),
                                &GCR_Formula_Value(), &GCR_Group_Selection(), &GCR_Record_Selection()})
            global->clear();
        menu.setObjectName(QStringLiteral("frm_Main_Menu"));
        set_main_menu(&menu);
        previous_dialog = set_print_dialog_runner([this](QPrinter& printer, QWidget*) {
            ++dialogs;
            printer.setOutputFormat(QPrinter::PdfFormat);
            printer.setOutputFileName(pdf);
            return true;
        });
    }
    ~ReportViewer() override
    {
        if (viewer)
            Unload(viewer);
        settle();
        set_print_dialog_runner(previous_dialog);
        GCR_End_Report();
        set_main_menu(nullptr);
        Glob_Return_Form() = nullptr;
    }
    // The viewer of the requested report, on view.
    frm_View_Report* view(const QString& report_text)
    {
        GCR_Report_File() = school.write_file(QStringLiteral("Families.rpt"), report_text);
        EXPECT_TRUE(Init_Report());
        viewer = new frm_View_Report(QStringLiteral("Families"));
        Switch_Screen(&menu, viewer, false);
        bring_to_front(viewer);
        for (int wait = 0; wait < 100 && viewer && viewer->lbl_Page->text().isEmpty() && !viewer->failed()
                           && !viewer->lbl_No_Data->isVisible();
             ++wait)
            QTest::qWait(10);
        return viewer;
    }
    // The printer of the print button, set to print to a file on the given paper.
    void printer_holds(QPageSize::PageSizeId paper, QPageLayout::Orientation orientation)
    {
        viewer->printer().setOutputFormat(QPrinter::PdfFormat);
        viewer->printer().setOutputFileName(pdf);
        viewer->printer().setPageSize(QPageSize(paper));
        viewer->printer().setPageOrientation(orientation);
    }

    testing_support::CurrentSchool school;
    QWidget menu;
    QPointer<frm_View_Report> viewer;
    QString pdf = school.file(QStringLiteral("printed.pdf"));
    int dialogs = 0;
    PrintDialogRunner previous_dialog;
};

TEST_F(ReportViewer, ShowsThePagesOneByOne)
{
    view(families_report(QStringLiteral("<page paper=\"A4\" orientation=\"portrait\"/>")));
    ASSERT_NE(viewer, nullptr);
    EXPECT_EQ(viewer->windowTitle(), QStringLiteral("Families View Report Screen"));
    EXPECT_EQ(viewer->lbl_Page->text(), QStringLiteral("Page 1 of 3"));
    EXPECT_FALSE(viewer->cmd_Prev->isEnabled());
    click(viewer->cmd_Next);
    EXPECT_EQ(viewer->lbl_Page->text(), QStringLiteral("Page 2 of 3"));
    click(viewer->cmd_Last);
    EXPECT_EQ(viewer->lbl_Page->text(), QStringLiteral("Page 3 of 3"));
    EXPECT_FALSE(viewer->cmd_Next->isEnabled());
    click(viewer->cmd_First);
    EXPECT_EQ(viewer->page_on_view(), 0);
}

TEST_F(ReportViewer, AReportWithoutRowsSaysSo)
{
    GCR_Record_Selection() = QStringLiteral("{Families.Family_Name} = 'Nobody'");
    view(families_report(QString()));
    ASSERT_NE(viewer, nullptr);
    EXPECT_TRUE(viewer->lbl_No_Data->isVisible());
    EXPECT_EQ(viewer->lbl_No_Data->text(), QStringLiteral("There is no data to display"));
    EXPECT_FALSE(viewer->cmd_Print->isEnabled());
}

TEST_F(ReportViewer, AReportThatCannotBeReadIsReportedAndTheViewerGoes)
{
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Unexpected error in "));
    view(families_report(QString(), QStringLiteral("No_Such_Table")));
    settle();
    EXPECT_TRUE(viewer.isNull() || viewer->failed());
    EXPECT_TRUE(menu.isVisible());
}

TEST_F(ReportViewer, PrintingOnTheReportsPaperGoesThroughThePrintDialog)
{
    view(families_report(QStringLiteral("<page paper=\"A4\" orientation=\"portrait\"/>")));
    printer_holds(QPageSize::A4, QPageLayout::Portrait);
    click(viewer->cmd_Print);
    EXPECT_EQ(dialogs, 1);
    const QString info = pdf_info(pdf);
    EXPECT_TRUE(info.contains(QStringLiteral("Pages:           3"))) << info.toStdString();
    EXPECT_TRUE(info.contains(QStringLiteral("(A4)"))) << info.toStdString();
}

TEST_F(ReportViewer, APrinterWithOtherPaperIsOfferedThenTheReportMayTakeItsPaper)
{
    view(families_report(QStringLiteral("<page paper=\"A5\" orientation=\"landscape\"/>")));
    printer_holds(QPageSize::A4, QPageLayout::Portrait);
    // The user keeps to a printer that holds A4 only.
    set_print_dialog_runner([this](QPrinter& printer, QWidget*) {
        ++dialogs;
        printer.setPageSize(QPageSize(QPageSize::A4));
        printer.setPageOrientation(QPageLayout::Portrait);
        return true;
    });
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Your printer seems to have the wrong paper settings for this report.\nContinue anyway?"), No, 36);
    boxes.expect(QStringLiteral("Continue anyway?"), No, 36);  // the printer chosen still holds A4
    boxes.expect(QStringLiteral("The printer settings dont match those of the report. \n"
                                "Shall I change the report settings to match the printer?"),
                 Yes, 36);
    click(viewer->cmd_Print);
    EXPECT_EQ(dialogs, 1);  // the printer was chosen once, and that choice prints
    EXPECT_NEAR(viewer->pages().paper.width(), 210, 0.5);
    EXPECT_TRUE(pdf_info(pdf).contains(QStringLiteral("(A4)")));
}

TEST_F(ReportViewer, TheRunnerPrintsTheRequestedReport)
{
    GCR_Report_File() = school.write_file(QStringLiteral("Families.rpt"), families_report(QString()));
    QPrinter printer;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(pdf);
    EXPECT_TRUE(GCR_Run_Printer(printer));
    EXPECT_EQ(dialogs, 1);
    EXPECT_TRUE(pdf_info(pdf).contains(QStringLiteral("Pages:           3")));
}

}  // namespace
