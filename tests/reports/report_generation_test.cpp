// Generating a school's own report files: a copy of the report format folder
// in "genrepfmts" beside the program, every report re-saved with the
// machine's date order and time separator, the heading in place; and the
// runs that stop (too many subreports, Cancel).

#include "reports/report_generation.h"

#include "engine/msg_box.h"
#include "reportengine/report_file.h"
#include "shell/install_folder.h"
#include "shell/locale_formats.h"
#include "shell/settings.h"
#include "support/scripted_boxes.h"
#include "support/test_folder.h"

#include <QDir>
#include <QFile>
#include <QTimer>

#include <gtest/gtest.h>

using engine::answer::Ok;
using engine::answer::Yes;
using reportengine::ObjectKind;
using testing_support::ScriptedBoxes;

namespace {

// A report of one date field and as many subreports (the heading) as asked.
QString report_text(int subreports)
{
    QString objects = QStringLiteral(
        R"(<field x="0" y="0" width="30" height="5" source="{Families.Family_Name}" format="date" dateOrder="1" dateSeparator1="/" dateSeparator2="/"/>)");
    for (int i = 0; i < subreports; ++i)
        objects += QStringLiteral(R"(<subreport x="40" y="0" width="10" height="5" file="PrtHead.rpt"/>)");
    return QStringLiteral(R"(<?xml version="1.0" encoding="UTF-8"?>
<report version="1"><tables><table name="Families"/></tables>
<area kind="details"><section height="6">%1</section></area></report>
)").arg(objects);
}

const QString list_text = QStringLiteral("Class list,Class.rpt,0,0,0,0,0,0,0,0,0,0,0,0,0,0\n");

class ReportGeneration : public ::testing::Test, protected testing_support::TestFolder {
protected:
    void SetUp() override
    {
        set_install_folder_for_tests(file(QStringLiteral("app")));
        QDir().mkpath(file(QStringLiteral("app/repfmts")));
        Settings().report_format_dir = file(QStringLiteral("app/repfmts"));
        Settings().report_list = file(QStringLiteral("app/repfmts/zrepfmt.lst"));
        write_file(QStringLiteral("app/repfmts/PrtHead.rpt"), report_text(0));
        write_file(QStringLiteral("app/repfmts/Class.rpt"), report_text(1));
        write_file(QStringLiteral("app/repfmts/zrepfmt.lst"), list_text);
        // A machine with month-first dates and a full stop in times.
        Glob_Date_Order() = 0;
        Glob_Time_Sep() = QStringLiteral(".");
        Glob_Standard_Formats() = false;
    }
    void TearDown() override
    {
        set_install_folder_for_tests(QString());
        Glob_Date_Order() = 1;
        Glob_Time_Sep() = QStringLiteral(":");
        GCR_Generate_State() = generate_state::Idle;
    }
    QString generated(const QString& name) const { return file(QStringLiteral("app/genrepfmts/") + name); }
    bool run(QString& new_dir, QString& new_list)
    {
        bool result = false;
        ScriptedBoxes()
            .expect(QStringLiteral("About to create a new folder with report files."), Yes)
            .during([&] { result = GCR_Generate_Reports(new_dir, new_list); });
        return result;
    }
    // The one field of a generated report.
    reportengine::FieldFormat field_format(const QString& name) const
    {
        reportengine::ReportDefinition report;
        reportengine::ReportFileError error;
        EXPECT_TRUE(reportengine::read_report_file(generated(name), report, error)) << error.text().toStdString();
        for (const reportengine::ReportArea& area : report.areas)
            for (const reportengine::ReportSection& section : area.sections)
                for (const reportengine::ReportObject& object : section.objects)
                    if (object.kind == ObjectKind::Field)
                        return object.format;
        ADD_FAILURE() << "no field in " << name.toStdString();
        return {};
    }
    QByteArray content(const QString& path) const
    {
        QFile in(path);
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
    }
};

TEST_F(ReportGeneration, EveryReportIsResavedWithTheMachinesDateOrderAndTimeSeparator)
{
    QString new_dir;
    QString new_list;
    ASSERT_TRUE(run(new_dir, new_list));
    EXPECT_EQ(new_dir, file(QStringLiteral("app/genrepfmts")));
    EXPECT_EQ(new_list, generated(QStringLiteral("zrepfmt.lst")));
    EXPECT_EQ(GCR_Generate_State(), generate_state::Idle);
    // The report, and the heading it shows as a subreport.
    for (const QString& name : {QStringLiteral("Class.rpt"), QStringLiteral("PrtHead.rpt")}) {
        const reportengine::FieldFormat format = field_format(name);
        EXPECT_EQ(format.date_order, 0) << name.toStdString();
        EXPECT_EQ(format.date_separator_1, QStringLiteral(" ")) << name.toStdString();
        EXPECT_EQ(format.date_separator_2, QStringLiteral(" ")) << name.toStdString();
        EXPECT_EQ(format.time_separator, QStringLiteral(".")) << name.toStdString();
    }
    // The list is copied and left alone; the standard files stay as they were.
    EXPECT_EQ(content(new_list), list_text.toUtf8());
    EXPECT_EQ(content(file(QStringLiteral("app/repfmts/Class.rpt"))), report_text(1).toUtf8());
}

TEST_F(ReportGeneration, APersonalHeadingReplacesTheStandardOneAndTheCopyInUseCanBeMadeAgain)
{
    // A personalised list with its own heading, whose title tells it apart.
    QDir().mkpath(file(QStringLiteral("own")));
    write_file(QStringLiteral("own/PrtHead.rpt"), QString(report_text(0)).replace(QStringLiteral("<report version=\"1\">"),
                                                                                  QStringLiteral("<report version=\"1\" title=\"Ours\">")));
    Settings().report_list = write_file(QStringLiteral("own/zrepfmt.lst"), list_text);
    QString new_dir;
    QString new_list;
    ScriptedBoxes()
        .expect(QStringLiteral(" replacing headers with the personalised header in ") + file(QStringLiteral("own/PrtHead.rpt")), Yes)
        .expect(QStringLiteral("you must change to it after generation"), Ok)
        .during([&] { EXPECT_TRUE(GCR_Generate_Reports(new_dir, new_list)); });
    reportengine::ReportDefinition heading;
    reportengine::ReportFileError error;
    ASSERT_TRUE(reportengine::read_report_file(generated(QStringLiteral("PrtHead.rpt")), heading, error));
    EXPECT_EQ(heading.title, QStringLiteral("Ours"));

    // Made again from itself: asked to overwrite, and its reports survive.
    Settings().report_format_dir = new_dir;
    Settings().report_list = new_list;
    Glob_Date_Order() = 2;
    ScriptedBoxes()
        .expect(QStringLiteral("The reports that you are currently using will be overwritten.\nOverwrite?"), Yes)
        .during([&] { EXPECT_TRUE(GCR_Generate_Reports(new_dir, new_list)); });
    EXPECT_EQ(field_format(QStringLiteral("Class.rpt")).date_order, 2);
    EXPECT_EQ(content(new_list), list_text.toUtf8());
}

TEST_F(ReportGeneration, AReportWithSixSubreportsStopsTheRun)
{
    write_file(QStringLiteral("app/repfmts/Class.rpt"), report_text(6));
    QString new_dir;
    QString new_list;
    bool result = true;
    ScriptedBoxes()
        .expect(QStringLiteral("About to create a new folder with report files."), Yes)
        .expect(QStringLiteral("too many subreports in Class.rpt"), Ok)
        .expect(QStringLiteral("Unexpected error in report Class.rpt"), Ok)
        .during([&] { result = GCR_Generate_Reports(new_dir, new_list); });
    EXPECT_FALSE(result);
    EXPECT_TRUE(new_dir.isEmpty());
    EXPECT_EQ(field_format(QStringLiteral("Class.rpt")).date_order, 1);  // left as copied
}

TEST_F(ReportGeneration, CancelDuringTheRunDeletesTheNewFolder)
{
    // Cancel pressed while the run lets events happen.
    QTimer::singleShot(0, [] { GCR_Generate_State() = generate_state::Cancelled; });
    QString new_dir;
    QString new_list;
    bool result = true;
    ScriptedBoxes()
        .expect(QStringLiteral("About to create a new folder with report files."), Yes)
        .expect(QStringLiteral("Generation Abandoned - generate directory being deleted"), Ok)
        .during([&] { result = GCR_Generate_Reports(new_dir, new_list); });
    EXPECT_FALSE(result);
    EXPECT_FALSE(QDir(file(QStringLiteral("app/genrepfmts"))).exists());
    EXPECT_TRUE(QFile::exists(file(QStringLiteral("app/repfmts/Class.rpt"))));
}

}  // namespace
