// The report list as a school keeps it: the standard list read line by line,
// a personalised list editing it, the parameter bytes, what a report asks of
// the request, and the script a report runs first.

#include "reports/report_list.h"
#include "reports/report_outputs.h"
#include "reports/report_params.h"
#include "reports/report_pre_script.h"
#include "reports/report_runner.h"
#include "shell/selection_lists.h"
#include "shell/settings.h"
#include "support/school_made_current.h"
#include "support/scripted_boxes.h"

#include <QDir>
#include <gtest/gtest.h>

namespace {

using testing_support::ScriptedBoxes;

const QString standard_text = QStringLiteral(
    "\"*\",0,\"\",\"Accounts\",\"\",\"\",1,1,1,1,1,1,1,\"\",\"\",\"\"\n"
    "\"'\",0,\"\",\"an old report\",\"\",\"\",1,1,1,1,1,1,1,\"\",\"\",\"\"\n"
    "\"R\",10,\"Invoices.rpt\",\"Invoices, by family\",\"{Invoices.Invoice_Total} > 0\",\"\",19,2,1,1,1,1,3,\"\",\"\",\"\"\n"
    "' a note for whoever keeps this list\n"
    "\n"
    "\"R\", 11 ,\"Families.rpt\"  ,\"Families\",\"\",\"\",1,1,1,1,1,1,1,\"Heading\",\"'Ours'\",\"?CrsCosts\"\n");

// An entry in brief: type, id, file, name, the six bytes, notices.
QString brief(const ReportEntry& entry)
{
    QStringList bytes;
    for (quint8 byte : entry.params)
        bytes << QString::number(byte);
    return QStringLiteral("%1|%2|%3|%4|%5|%6")
        .arg(entry.line_type, QString::number(entry.report_id), entry.report_file, entry.report_name,
             bytes.join(QLatin1Char(',')), QString::number(entry.notices));
}

QStringList briefs(const ReportsList& list)
{
    QStringList all;
    for (const ReportEntry& entry : list)
        all << brief(entry);
    return all;
}

const QString choose = QStringLiteral("|1||Choose myself|0,0,0,0,0,0|1");
const QString accounts = QStringLiteral("*|0||Accounts|1,1,1,1,1,1|1");
const QString invoices = QStringLiteral("R|10|Invoices.rpt|Invoices, by family|19,2,1,1,1,1|3");
const QString families = QStringLiteral("R|11|Families.rpt|Families|1,1,1,1,1,1|1");

class ReportList : public ::testing::Test {
protected:
    ReportList()
    {
        Settings().report_format_dir = school.file(QString());
        standard = school.write_file(QStringLiteral("zrepfmt.lst"), standard_text);
    }

    // The standard list with the personalised one applied.
    ReportsList with_personal(const QString& personal_text)
    {
        ReportsList list;
        EXPECT_TRUE(Load_Report_List(list, standard));
        personal = school.write_file(QStringLiteral("mine.lst"), personal_text);
        EXPECT_TRUE(Load_Personal_List(list, standard, personal, status));
        return list;
    }

    testing_support::SchoolForRuns school;
    QString standard;
    QString personal;
    QString status;
};

TEST_F(ReportList, TheStandardListFollowsTheBuiltInChoiceWithoutItsComments)
{
    ReportsList list;
    ASSERT_TRUE(Load_Report_List(list, standard));
    EXPECT_EQ(briefs(list), QStringList({choose, accounts, invoices, families}));
    EXPECT_EQ(list[2].group_selection, QStringLiteral("{Invoices.Invoice_Total} > 0"));
    EXPECT_EQ(list[3].formula_name, QStringLiteral("Heading"));
    EXPECT_EQ(list[3].formula_value, QStringLiteral("'Ours'"));
    EXPECT_EQ(list[3].pre_script, QStringLiteral("?CrsCosts"));
    EXPECT_EQ(report_file_path(list[2].report_file, QString()), school.file(QStringLiteral("Invoices.rpt")));
    EXPECT_EQ(report_file_path(QStringLiteral("?Mine.rpt"), QStringLiteral("/school/own")), QStringLiteral("/school/own/Mine.rpt"));
}

struct BadLine {
    const char* name;
    const char* line;
};

class BadStandardLine : public ReportList, public ::testing::WithParamInterface<BadLine> {};

TEST_P(BadStandardLine, StopsTheLoadAtItsLineKeepingWhatCameBefore)
{
    const QString path = school.write_file(QStringLiteral("bad.lst"), standard_text.section(QLatin1Char('\n'), 0, 2)
                                                                        + QLatin1Char('\n') + QLatin1String(GetParam().line)
                                                                        + QStringLiteral("\n") + standard_text);
    ReportsList list;
    ScriptedBoxes().expect(QStringLiteral("Invalid line in file") + path + QStringLiteral(" about line 4")).during([&] {
        EXPECT_FALSE(Load_Report_List(list, path));
    });
    EXPECT_EQ(briefs(list), QStringList({choose, accounts, invoices}));
}

INSTANTIATE_TEST_SUITE_P(
    Lines, BadStandardLine,
    ::testing::Values(BadLine{"TooFewFields", R"("R",12,"A.rpt","A","","",1,1,1,1,1,1,1,"","")"},
                      BadLine{"TooManyFields", R"("R",12,"A.rpt","A","","",1,1,1,1,1,1,1,"","","","")"},
                      BadLine{"IdNotANumber", R"("R",twelve,"A.rpt","A","","",1,1,1,1,1,1,1,"","","")"},
                      BadLine{"ByteTooLarge", R"("R",12,"A.rpt","A","","",300,1,1,1,1,1,1,"","","")"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(ReportList, ListsThatCannotBeOpenedAreReported)
{
    ReportsList list;
    const QString missing = school.file(QStringLiteral("none.lst"));
    ScriptedBoxes().expect(QStringLiteral("Cannot open file ") + missing).during([&] {
        EXPECT_FALSE(Load_Report_List(list, missing));
    });
    EXPECT_EQ(briefs(list), QStringList({choose}));
    ScriptedBoxes().expect(QStringLiteral("Cannot open personalised file ") + missing).during([&] {
        EXPECT_FALSE(Load_Personal_List(list, standard, missing, status));
    });
    for (const QString& none : {standard, QString()}) {
        status.clear();
        EXPECT_TRUE(Load_Personal_List(list, standard, none, status));
        EXPECT_EQ(status, QStringLiteral("no personalised file found"));
    }
}

struct PersonalCase {
    const char* name;
    const char* lines;
    QStringList expected;  // the whole list afterwards
};

class PersonalLine : public ReportList, public ::testing::WithParamInterface<PersonalCase> {};

TEST_P(PersonalLine, EditsTheStandardList)
{
    const ReportsList list = with_personal(QLatin1String(GetParam().lines));
    EXPECT_EQ(status, QStringLiteral("found personalised file - ") + personal);
    EXPECT_EQ(briefs(list), GetParam().expected);
    // What a line doesn't give, the entry keeps.
    EXPECT_EQ(list[2].group_selection, QStringLiteral("{Invoices.Invoice_Total} > 0"));
}

INSTANTIATE_TEST_SUITE_P(
    Lines, PersonalLine,
    ::testing::Values(
        PersonalCase{"RemovingAnUnknownIdChangesNothing", R"("-",99,"","","","",0,0,0,0,0,0,0,"","","")",
                     {choose, accounts, invoices, families}},
        PersonalCase{"RemovingTakesTheReportOffTheList", R"("-",11,"","","","",0,0,0,0,0,0,0,"","","")",
                     {choose, accounts, invoices, QStringLiteral("'|11|||1,1,1,1,1,1|1")}},
        PersonalCase{"ANewNameAloneKeepsFileSelectionsAndBytes",
                     R"("=",10,"","Our invoices","","",0,0,0,0,0,0,0,"","","")",
                     {choose, accounts, QStringLiteral("R|10|Invoices.rpt|Our invoices|19,2,1,1,1,1|3"), families}},
        PersonalCase{"ChangedBytesReplaceOnlyThemselves",
                     R"("=",10,"","","","",0,3,0,0,0,0,0,"","","")",
                     {choose, accounts, QStringLiteral("R|10|Invoices.rpt|Invoices, by family|19,3,1,1,1,1|3"), families}},
        PersonalCase{"ASwapChangesTheFileUnderTheSameEntry",
                     R"("!",0,"Families.rpt","OurFamilies.rpt","","",0,0,0,0,0,0,0,"","","")",
                     {choose, accounts, invoices, QStringLiteral("R|11|OurFamilies.rpt|Families|1,1,1,1,1,1|1")}},
        PersonalCase{"PlusAndStarAppend",
                     "\"*\",0,\"\",\"Our own\",\"\",\"\",1,1,1,1,1,1,1,\"\",\"\",\"\"\n"
                     "\"+\",20,\"?Mine.rpt\",\"Mine\",\"\",\"\",2,1,1,1,1,1,1,\"\",\"\",\"\"\n",
                     {choose, accounts, invoices, families, QStringLiteral("*|0||Our own|1,1,1,1,1,1|1"),
                      QStringLiteral("+|20|?Mine.rpt|Mine|2,1,1,1,1,1|1")}}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(ReportList, ABadPersonalLineIsReportedAndTheRestStillApplies)
{
    const QString lines = QStringLiteral("\"X\",10,\"\",\"Gone?\",\"\",\"\",0,0,0,0,0,0,0,\"\",\"\",\"\"\n"
                                         "\"=\",10,\"\",\"too short\"\n"
                                         "\"-\",11,\"\",\"\",\"\",\"\",0,0,0,0,0,0,0,\"\",\"\",\"\"\n");
    const QString path = school.file(QStringLiteral("mine.lst"));
    ReportsList list;
    ScriptedBoxes()
        .expect(QStringLiteral("Invalid line in file") + path + QStringLiteral(" on line 1, unknown line type X"))
        .expect(QStringLiteral("Invalid line in file") + path + QStringLiteral(" on line 2"))
        .during([&] { list = with_personal(lines); });
    EXPECT_EQ(briefs(list), QStringList({choose, accounts, invoices, QStringLiteral("'|11|||1,1,1,1,1,1|1")}));
}

TEST(ParamByte, SplitsIntoLevelAndFlags)
{
    struct Case {
        quint8 byte;
        int level;
        bool record, invoice, families;
    };
    for (const Case& c : {Case{0, ParamNeed::Unknown, false, false, false}, Case{1, ParamNeed::Not_Used, false, false, false},
                          Case{2, ParamNeed::Optional, false, false, false}, Case{19, ParamNeed::Mandatory, true, false, false},
                          Case{10, ParamNeed::Optional, false, true, false}, Case{31, ParamNeed::Mandatory, true, true, true},
                          Case{6, ParamNeed::Optional, false, false, true}}) {
        const ParamNeed need = decode_param_byte(c.byte);
        EXPECT_EQ(need.level, c.level) << int(c.byte);
        EXPECT_EQ(need.record_selection, c.record) << int(c.byte);
        EXPECT_EQ(need.invoice_form, c.invoice) << int(c.byte);
        EXPECT_EQ(need.families, c.families) << int(c.byte);
    }
}

TEST_F(ReportList, TheRequestTakesTheReportsOwnSelectionsBehindTheChosenOnes)
{
    ReportsList list;
    ASSERT_TRUE(Load_Report_List(list, standard));
    ReportEntry needs_term = list[2];  // terms 19: mandatory, into the record selection; courses 2: optional
    needs_term.record_selection = QStringLiteral("{Invoices.Invoice_id} > 0");
    ParamRows rows;
    ScriptedBoxes().expect(QStringLiteral("This report needs a Term."), engine::answer::Ok, engine::mb::OkOnly).during([&] {
        EXPECT_FALSE(Report_Params(needs_term, rows));
    });

    const int spring = school.add_term(QStringLiteral("Spring 2026"), QDate(2026, 1, 5), QDate(2026, 3, 27));
    Sel_Terms().append(spring);
    ASSERT_TRUE(Report_Params(needs_term, rows));
    EXPECT_EQ(GCR_Record_Selection(), QStringLiteral("({Term_Dates.Term_id} = %1) AND {Invoices.Invoice_id} > 0").arg(spring));
    EXPECT_EQ(GCR_Group_Selection(), needs_term.group_selection);  // no course chosen: the optional row adds nothing
    EXPECT_TRUE(rows[Param_Terms].visible);
    EXPECT_EQ(rows[Param_Terms].requirement, QStringLiteral("Mandatory"));
    EXPECT_EQ(rows[Param_Terms].amount, QStringLiteral("One"));
    EXPECT_EQ(rows[Param_Terms].shown, QStringLiteral("Spring 2026, "));
    EXPECT_EQ(rows[Param_Courses].requirement, QStringLiteral("Optional"));
    EXPECT_EQ(rows[Param_Courses].amount, QStringLiteral("All"));
    EXPECT_FALSE(rows[Param_Activities].visible);

    // The invoices a run has just raised go before the group selection, once.
    const int invoice = school.add_invoice(school.add_family(QStringLiteral("Ashby")), QStringLiteral("Spring fees"));
    school.exec(QStringLiteral("INSERT INTO Tmp_Invoices (tmp_Invoice_id) VALUES (%1)").arg(invoice));
    Add_Invoice_Selection();
    EXPECT_EQ(GCR_Group_Selection(), QStringLiteral("({Invoices.Invoice_id} = %1) AND ").arg(invoice) + needs_term.group_selection);
    EXPECT_EQ(school.count(QStringLiteral("Tmp_Invoices")), 0);

    Report_Notices(needs_term, 4);
    EXPECT_EQ(GCR_Invoice_Type_Value(), QStringLiteral("4"));
    Report_Notices(list[3], 4);  // a report without notices
    EXPECT_EQ(GCR_Invoice_Type_Value(), QString());
}

TEST_F(ReportList, APreScriptIsAConfiguredScriptOrAFileInTheScriptFolder)
{
    Settings().script_dir = QStringLiteral("/school/scripts");
    Settings().cost_script = QStringLiteral("/school/costs.sql");
    Settings().term_script = QStringLiteral("/school/terms.sql");
    Settings().activity_script = QStringLiteral("/school/dates.sql");
    const std::pair<const char*, const char*> cases[] = {
        {"?CrsCosts", "/school/costs.sql"}, {" ?interms ", "/school/terms.sql"}, {"?INACTDTS", "/school/dates.sql"},
        {"Tidy.sql", "/school/scripts/Tidy.sql"}};
    for (const auto& [name, expected] : cases) {
        QString path;
        EXPECT_TRUE(resolve_pre_script(QLatin1String(name), path)) << name;
        EXPECT_EQ(path, QLatin1String(expected)) << name;
    }
    QString path;
    EXPECT_FALSE(resolve_pre_script(QStringLiteral("?Other"), path));
}

TEST_F(ReportList, AFailingPreScriptStopsTheReportWithItsWords)
{
    Settings().script_dir = school.file(QString());
    QString status;
    EXPECT_TRUE(Run_Pre_Script(QStringLiteral("  "), QStringLiteral("/r/A.rpt"), status));
    const QString words = QStringLiteral(" before the report /r/A.rpt could be run.");
    ScriptedBoxes().expect(QStringLiteral("Error occurred in script ?Nothing") + words).during([&] {
        EXPECT_FALSE(Run_Pre_Script(QStringLiteral("?Nothing"), QStringLiteral("/r/A.rpt"), status));
    });
    EXPECT_EQ(status, QStringLiteral("Error occurred in script ?Nothing") + words);

    const QString failing = school.write_file(QStringLiteral("bad.sql"), QStringLiteral("DELETE * FROM No_Such_Table;\n"));
    ScriptedBoxes()
        .expect(QStringLiteral("Error occurred while executing command"))
        .expect(QStringLiteral("Do you wish to cancel the updates"), engine::answer::Yes)
        .expect(QStringLiteral("Error occurred in script ") + failing + words)
        .during([&] { EXPECT_FALSE(Run_Pre_Script(QStringLiteral("bad.sql"), QStringLiteral("/r/A.rpt"), status)); });

    school.write_file(QStringLiteral("good.sql"), QStringLiteral("DELETE * FROM Tmp_Invoices;\n"));
    EXPECT_TRUE(Run_Pre_Script(QStringLiteral("good.sql"), QStringLiteral("/r/A.rpt"), status));
    EXPECT_EQ(status, QStringLiteral(" Script successfully applied"));
}

TEST(ReportOutputs, FileKindsAndTheirProposedNames)
{
    QStringList offered;
    for (const OutputKind& kind : output_kinds())
        offered << QStringLiteral("%1=%2.%3").arg(kind.text).arg(kind.type).arg(kind.extension);
    EXPECT_EQ(offered, QStringList({"WORD Format=1.doc", "EXCEL 97=2.xls", "EXCEL without Headers/Footers=3.xls",
                                    "Comma separated(CSV)=4.csv", "Text=5.txt", "Rich Text Format=6.rtf"}));
    EXPECT_EQ(extension_of(7), QStringLiteral("htm"));
    Settings().report_output_dir = QStringLiteral("/school/out");
    EXPECT_EQ(proposed_output_file(QStringLiteral("/school/repfmts/Invoices.rpt"), QStringLiteral("csv")),
              QStringLiteral("/school/out/Invoices.csv"));
    Settings() = SettingsRecord{};
    EXPECT_EQ(printer_paper_words(27, 2), QStringLiteral("DL Envelope - Landscape"));
    EXPECT_EQ(printer_paper_words(8, 0), QStringLiteral("Unknown - Unknown"));
}

}  // namespace
