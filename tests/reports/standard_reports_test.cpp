// The standard report set on the demo school: the report list reads line by
// line, every report runs with the selections its line declares (to a table
// here and to PDF through the command-line tool), and the figures printed
// agree with the database.

#include "billing/auto_invoicing.h"
#include "database/db_handling.h"
#include "reports/report_params.h"
#include "reports/report_runner.h"
#include "reports/report_selections.h"
#include "script/global_run_sql.h"
#include "shell/selection_lists.h"
#include "shell/settings.h"
#include "support/cli_runner.h"
#include "support/database_file.h"
#include "support/test_folder.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <gtest/gtest.h>

#include <algorithm>

namespace {

using testing_support::value_in;
using testing_support::values_in;

const QString report_folder = QStringLiteral(QUILLARY_BUILD_DIR "/repfmts/");

// The fields of a report list line: comma-separated, text in double quotes.
QStringList list_fields(const QString& line)
{
    static const QRegularExpression field(QStringLiteral("\\s*(\"[^\"]*\"|[^,]*)\\s*(,|$)"));
    QStringList fields;
    for (auto it = field.globalMatch(line); it.hasNext();) {
        const QRegularExpressionMatch m = it.next();
        if (m.capturedLength(0) == 0 && m.capturedStart(0) == line.size())
            break;
        fields << m.captured(1).remove(QLatin1Char('"'));
    }
    return fields;
}

QList<QStringList> report_list()
{
    QFile file(report_folder + QStringLiteral("zrepfmt.lst"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly | QIODevice::Text));
    QList<QStringList> lines;
    for (const QString& line : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        lines << list_fields(line);
    return lines;
}

// The selection routine of each kind, whole families (+4) where the kind has them.
using Setup = bool (*)(bool, QString&, QString&, int&);
Setup setup_of(int kind, bool families)
{
    switch (kind) {
    case 0: return &selections::Setup_Terms;
    case 1: return &selections::Setup_courses;
    case 2: return &selections::Setup_exams;
    case 3: return families ? &selections::Setup_Pupil_Families : &selections::Setup_pupils;
    case 4: return &selections::Setup_Dates;
    default: return families ? &selections::Setup_Changed_Families : &selections::Setup_Changed_Pupils;
    }
}

QString and_joined(const QString& own, const QString& added)
{
    return own.isEmpty() ? added : added + QStringLiteral(" AND ") + own;
}

// A money figure as printed, whatever the currency sign: "1,234.50".
QString money(const QString& printed)
{
    return QString(printed).remove(QRegularExpression(QStringLiteral("[^0-9.-]")));
}

class StandardReports : public ::testing::Test {
protected:
    StandardReports()
    {
        EXPECT_TRUE(QFile::copy(QStringLiteral(QUILLARY_BUILD_DIR "/database/Demo.mdb"), school));
        EXPECT_TRUE(DB_Open(school));
        Reset_Changed_Lists();
        for (QString* global : {&GCR_Output_Type(), &GCR_Export_File(), &GCR_Invoice_Type_Value(), &GCR_Formula_Name(),
                                &GCR_Formula_Value(), &GCR_Group_Selection(), &GCR_Record_Selection()})
            global->clear();
    }
    ~StandardReports() override
    {
        GCR_End_Report();
        Glob_Keep_Changed_List() = false;
        Reset_Changed_Lists();
        DB_Close_All();
    }

    QString first(const char* sql) const { return value_in(school, QString::fromLatin1(sql)); }

    // Selections for every kind, each of rows the demo school has.
    void choose_everything()
    {
        Sel_Terms().append(first("SELECT min(Term_Id) FROM Term_Dates").toInt());
        for (const QString& id : values_in(school, QStringLiteral("SELECT Course_id FROM Courses ORDER BY Course_id LIMIT 2")))
            Sel_Courses().append(id.toInt());
        Sel_Activities().append(first("SELECT min(Results_Exam_id) FROM Exam_Results WHERE Results_Mark > 0").toInt());
        Sel_Activity_Dates().append(QDate::fromString(first("SELECT min(Results_Date) FROM Exam_Results WHERE Results_Mark > 0").left(10),
                                                      Qt::ISODate));
        for (const QString& id : values_in(school, QStringLiteral("SELECT Results_Pupil_id FROM Exam_Results WHERE Results_Mark > 0 LIMIT 3")))
            Sel_Pupils().append(id.toInt());
        Glob_Keep_Changed_List() = true;
        Changed_Pupils().append(Sel_Pupils().chosen().front());
    }

    // What the Reports screen asks of the runner for a list line: each kind
    // the line uses (or only those it must have) turned into selection text by its flags.
    void request_for(const QStringList& line, bool every_kind)
    {
        GCR_Report_File() = report_folder + line[2];
        GCR_Group_Selection() = line[4];
        GCR_Record_Selection() = line[5];
        for (int kind = 0; kind < 6; ++kind) {
            const int byte = line[6 + kind].toInt();
            if (byte % 4 == 1 || (!every_kind && byte % 4 != 3))
                continue;
            QString selection, shown;
            int status = 0;
            setup_of(kind, byte & 4)(byte & 8, selection, shown, status);
            ASSERT_EQ(status, 1) << "kind " << kind;
            QString& into = byte & 16 ? GCR_Record_Selection() : GCR_Group_Selection();
            into = and_joined(into, selection);
        }
        GCR_Formula_Name() = line[13];
        GCR_Formula_Value() = line[14];
        GCR_Invoice_Type_Value() = line[12] == QLatin1String("3") ? QStringLiteral("2") : QString();
    }

    bool run_pre_script(const QString& pre_script)
    {
        if (pre_script.isEmpty())
            return true;
        QString status;
        return Global_Run_SQL(QStringLiteral(QUILLARY_BUILD_DIR "/scripts/") + pre_script.mid(1) + QStringLiteral(".sql"), status);
    }

    // The report laid out on pages, from the request as it stands.
    reportengine::PageModel laid_out()
    {
        reportengine::PageModel model;
        EXPECT_TRUE(Init_Report() && GCR_Lay_Out(model)) << GCR_Report_File().toStdString();
        return model;
    }

    // The printed text standing level with `label` and right of it, on any page.
    static QString right_of(const reportengine::PageModel& model, const QString& label)
    {
        for (const reportengine::Page& page : model.pages)
            for (const reportengine::PageItem& item : page.items)
                if (item.text == label)
                    for (const reportengine::PageItem& other : page.items)
                        if (qAbs(other.rect.top() - item.rect.top()) < 0.01 && other.rect.left() > item.rect.left() + 20)
                            return other.text;
        return QString();
    }

    testing_support::TestFolder folder{testing_support::TestFolder::StartingSettings::ProgramDefaults};
    const QString school = folder.file(QStringLiteral("Demo.mdb"));
};

TEST_F(StandardReports, TheListHasSixteenFieldsALineAndEveryReportItNames)
{
    const QList<QStringList> lines = report_list();
    ASSERT_GT(lines.size(), 20);
    for (const QStringList& line : lines) {
        SCOPED_TRACE(line.join(QLatin1Char('|')).toStdString());
        ASSERT_EQ(line.size(), 16);
        ASSERT_TRUE(QStringList({"'", "*", "R"}).contains(line[0]));
        if (line[0] != QLatin1String("R"))
            continue;
        EXPECT_TRUE(QFile::exists(report_folder + line[2]));
        for (int kind = 0; kind < 6; ++kind)
            EXPECT_TRUE(QList<int>({1, 2, 3}).contains(line[6 + kind].toInt() % 4)) << "kind " << kind;
        EXPECT_TRUE(line[12] == QLatin1String("1") || line[12] == QLatin1String("3"));
        EXPECT_TRUE(line[15].isEmpty() || QFile::exists(QStringLiteral(QUILLARY_BUILD_DIR "/scripts/") + line[15].mid(1) + ".sql"));
    }
}

// Every kind of selection a line allows makes a selection the report can
// read; with the ones it must have, it prints rows of the demo school, and
// the command-line tool makes a PDF of it.
TEST_F(StandardReports, EveryReportRunsWithTheSelectionsItsLineDeclares)
{
    choose_everything();
    const testing_support::CliRunner cli(folder.file(QStringLiteral("config")));
    for (const QStringList& line : report_list()) {
        if (line[0] != QLatin1String("R"))
            continue;
        SCOPED_TRACE(line[3].toStdString());
        ASSERT_TRUE(run_pre_script(line[15]));
        request_for(line, true);
        GCR_Output_Type() = QStringLiteral("4");
        GCR_Export_File() = folder.file(line[1] + QStringLiteral(".csv"));
        ASSERT_TRUE(GCR_Run_Export());

        request_for(line, false);
        if (GCR_Formula_Name() == QLatin1String("Days"))
            GCR_Formula_Value() = QStringLiteral("100000");  // the demo's payments are older than a month
        EXPECT_GT(laid_out().records_read, 0);
        QStringList args = {QStringLiteral("report"), GCR_Report_File(), QStringLiteral("--database"), school,
                            QStringLiteral("--out"), folder.file(line[1] + QStringLiteral(".pdf"))};
        if (!GCR_Record_Selection().isEmpty())
            args << QStringLiteral("--record") << GCR_Record_Selection();
        if (!GCR_Group_Selection().isEmpty())
            args << QStringLiteral("--group") << GCR_Group_Selection();
        if (!line[13].isEmpty())
            args << QStringLiteral("--formula") << line[13] + QLatin1Char('=') + line[14];
        const testing_support::CliRun run = cli.run(args);
        EXPECT_EQ(run.status, 0) << run.err.toStdString();
        EXPECT_GT(QFileInfo(folder.file(line[1] + QStringLiteral(".pdf"))).size(), 1000);
    }
}

TEST_F(StandardReports, AnInvoicesTotalIsTheSumOfItsLinesAndItsBalanceWhatIsStillOwed)
{
    const QString invoice = first("SELECT Inv_Line_Inv_id FROM Invoice_Lines GROUP BY Inv_Line_Inv_id ORDER BY count(*) DESC LIMIT 1");
    GCR_Report_File() = report_folder + QStringLiteral("Invoice.rpt");
    GCR_Group_Selection() = QStringLiteral("({Invoices.Invoice_id} = %1)").arg(invoice);
    const reportengine::PageModel model = laid_out();
    ASSERT_EQ(model.pages.size(), 1u);
    const QString lines = value_in(school, QStringLiteral("SELECT printf('%.2f', sum(Amount)) FROM Invoice_Lines WHERE Inv_Line_Inv_id = ") + invoice);
    const QString paid = value_in(school, QStringLiteral("SELECT printf('%.2f', coalesce(sum(Receipt_Amount), 0)) FROM Receipts WHERE Receipt_Invoice_id = ") + invoice);
    EXPECT_EQ(money(right_of(model, QStringLiteral("Total"))), lines);
    EXPECT_EQ(money(right_of(model, QStringLiteral("Received, thank you"))), paid);
    EXPECT_DOUBLE_EQ(money(right_of(model, QStringLiteral("Balance owed"))).toDouble(), lines.toDouble() - paid.toDouble());
}

TEST_F(StandardReports, ARegisterListsExactlyItsCoursesPupils)
{
    const QString course = first("SELECT Course_id FROM Register_Courses GROUP BY Course_id ORDER BY count(*) DESC LIMIT 1");
    GCR_Report_File() = report_folder + QStringLiteral("Register.rpt");
    GCR_Record_Selection() = QStringLiteral("({Courses.Course_id} = %1) AND ({Term_Dates.Term_id} = %2)")
                                 .arg(course, first("SELECT min(Term_Id) FROM Term_Dates"));
    const reportengine::PageModel model = laid_out();
    QStringList printed;
    for (const reportengine::TableRow& row : model.rows)
        if (row.area == 5)  // the details: the row's number and the pupil
            printed << row.cells.value(1);
    QStringList expected = values_in(school, QStringLiteral(
        "SELECT P.Pupil_FirstName || ' ' || coalesce(nullif(trim(P.Pupil_SurName), ''), F.Family_Name) FROM Register_Courses R"
        " JOIN Pupils P ON P.Pupil_id = R.Pupil_id JOIN Families F ON F.Family_id = P.Pupil_Family_Id"
        " WHERE R.Course_id = %1 AND P.Pupil_Gender IN ('M', 'F')").arg(course));
    printed.sort();
    expected.sort();
    EXPECT_EQ(printed, expected);
    EXPECT_EQ(model.pages.size(), 1u);
}

TEST_F(StandardReports, MoneyReceivedInATermAddsUpToItsReceipts)
{
    const QString term = first("SELECT min(Term_Id) FROM Term_Dates");
    GCR_Report_File() = report_folder + QStringLiteral("RcptTerm.rpt");
    GCR_Record_Selection() = QStringLiteral("({Term_Dates.Term_id} = %1)").arg(term);
    const reportengine::PageModel model = laid_out();
    const QString total = value_in(school, QStringLiteral(
        "SELECT printf('%.2f', sum(Receipt_Amount)) FROM Receipts, Term_Dates WHERE Term_Id = %1"
        " AND Receipt_Date >= Term_Start AND Receipt_Date <= Term_End").arg(term));
    const QString count = value_in(school, QStringLiteral(
        "SELECT count(*) FROM Receipts, Term_Dates WHERE Term_Id = %1 AND Receipt_Date >= Term_Start AND Receipt_Date <= Term_End").arg(term));
    EXPECT_EQ(money(right_of(model, QStringLiteral("Total received: %1 payments").arg(count))), total);

    // A term with nothing received yet is a page with its headings and no rows, not a failure.
    GCR_Record_Selection() = QStringLiteral("({Term_Dates.Term_id} = %1)").arg(first("SELECT max(Term_Id) FROM Term_Dates"));
    const reportengine::PageModel none = laid_out();
    EXPECT_TRUE(none.is_empty());
    EXPECT_EQ(none.pages.size(), 1u);
}

}  // namespace

// An invoicing run lists what it raised; the next report prints those
// invoices, one to a page, and uses the list up.
TEST_F(StandardReports, TheInvoicesARunRaisesArePrintedByThemselvesOnce)
{
    Settings().cost_script = QStringLiteral(QUILLARY_BUILD_DIR "/scripts/CrsCosts.sql");
    Settings().term_script = QStringLiteral(QUILLARY_BUILD_DIR "/scripts/InTerms.sql");
    Sel_Terms().append(first("SELECT Term_Id FROM Term_Dates WHERE Term_Name = 'Spring 2027'").toInt());
    AutoInvoicing run;
    ASSERT_TRUE(run.prepare() && run.insert_term());
    const int raised = first("SELECT count(*) FROM Tmp_Invoices").toInt();
    EXPECT_EQ(raised, first("SELECT count(*) FROM Invoices I INNER JOIN Term_Dates T ON T.Term_Id = I.Invoice_Term_id "
                            "WHERE T.Term_Name = 'Spring 2027'").toInt());
    ASSERT_GT(raised, 0);

    GCR_Report_File() = report_folder + QStringLiteral("Invoice.rpt");
    Add_Invoice_Selection();
    const reportengine::PageModel model = laid_out();
    const auto invoice_pages = std::count_if(model.pages.begin(), model.pages.end(), [](const reportengine::Page& page) {
        return std::any_of(page.items.begin(), page.items.end(), [](const auto& item) { return item.text == QLatin1String("Invoice for Spring 2027"); });
    });
    EXPECT_EQ(static_cast<int>(model.pages.size()), raised);
    EXPECT_EQ(static_cast<int>(invoice_pages), raised);
    EXPECT_EQ(first("SELECT count(*) FROM Tmp_Invoices"), QStringLiteral("0"));
    run.unload();
}
