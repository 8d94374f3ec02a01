// The rows a report reads: its tables joined by its links, its selection
// applied by the database or row by row with the same result, in the order
// of its groups and sorts.

#include "reportengine/report_data.h"
#include "reportengine/report_file.h"
#include "support/school_fixture.h"

#include <gtest/gtest.h>

namespace {

using namespace reportengine;

class ReportDataTest : public ::testing::Test {
protected:
    ReportDataTest()
    {
        const int ashby = school.add_family(QStringLiteral("Ashby"));
        const int brook = school.add_family(QStringLiteral("Brook"));
        const int cole = school.add_family(QStringLiteral("Cole"));
        spring = school.add_term(QStringLiteral("Spring"), QDate(2026, 1, 5), QDate(2026, 3, 27));
        const int summer = school.add_term(QStringLiteral("Summer"), QDate(2026, 4, 20), QDate(2026, 7, 17));
        school.add_invoice(brook, QStringLiteral("Spring fees"), spring);
        school.add_invoice(ashby, QStringLiteral("Spring fees"), spring);
        school.add_invoice(ashby, QStringLiteral("Summer fees"), summer);
        school.add_invoice(ashby, QStringLiteral("Costume"));
        school.add_family(QStringLiteral("Dyer"));  // no invoices
        school.add_invoice(cole, QStringLiteral("Summer fees"), summer);
    }

    // A report of invoices with their families, grouped by family, newest invoice first.
    ReportDefinition report(const QString& selection, const QString& extra = QString())
    {
        const QByteArray xml = QStringLiteral(R"(<report version="1">
  <tables>
    <table name="Invoices"/><table name="Families"/>
    <link from="Invoices.Invoice_Family_id" to="Families.Family_id"/>
  </tables>
  <recordSelection>%1</recordSelection>
  <formula name="Reason">UpperCase({Invoices.Invoice_Reason})</formula>
  <sort field="{Invoices.Invoice_id}" order="descending"/>
  <group field="{Families.Family_Name}"/>
  %2
</report>)").arg(selection.toHtmlEscaped(), extra).toUtf8();
        ReportDefinition r;
        ReportFileError error;
        EXPECT_TRUE(read_report_text(xml, QStringLiteral("Invoices.rpt"), r, error)) << error.text().toStdString();
        return r;
    }

    bool read(const ReportDefinition& r, ReportData& data, QString& error)
    {
        ReportFormulas formulas;
        return formulas.parse(r, error) && read_report_data(school.db(), r, formulas, data, error);
    }

    // "family: reason" of each row, in order.
    QStringList lines(const ReportData& data)
    {
        QStringList out;
        const int family = data.index_of({QStringLiteral("Families"), QStringLiteral("Family_Name")});
        const int reason = data.index_of({QStringLiteral("Invoices"), QStringLiteral("Invoice_Reason")});
        for (const auto& row : data.rows)
            out << row[family].as_text() + QStringLiteral(": ") + row[reason].as_text();
        return out;
    }

    testing_support::SchoolFixture school;
    int spring = 0;
};

TEST_F(ReportDataTest, RowsComeInGroupOrderThenSortOrder)
{
    ReportData data;
    QString error;
    ASSERT_TRUE(read(report(QString()), data, error)) << error.toStdString();
    EXPECT_EQ(lines(data), QStringList({QStringLiteral("Ashby: Costume"), QStringLiteral("Ashby: Summer fees"),
                                        QStringLiteral("Ashby: Spring fees"), QStringLiteral("Brook: Spring fees"),
                                        QStringLiteral("Cole: Summer fees")}));
}

TEST_F(ReportDataTest, ASelectionGivesTheSameRowsInTheDatabaseAndRowByRow)
{
    ReportData in_sql;
    ReportData by_row;
    QString error;
    ASSERT_TRUE(read(report(QStringLiteral("{Invoices.Invoice_Term_id} = %1").arg(spring)), in_sql, error)) << error.toStdString();
    EXPECT_TRUE(in_sql.selected_by_database);
    ASSERT_TRUE(read(report(QStringLiteral("{@Reason} = 'SPRING FEES'")), by_row, error)) << error.toStdString();
    EXPECT_FALSE(by_row.selected_by_database);
    EXPECT_EQ(lines(in_sql), QStringList({QStringLiteral("Ashby: Spring fees"), QStringLiteral("Brook: Spring fees")}));
    EXPECT_EQ(lines(by_row), lines(in_sql));
}

TEST_F(ReportDataTest, AReportThatCannotBeReadSaysWhy)
{
    const QList<std::pair<QString, QString>> cases = {
        {QStringLiteral("{Pupils.Pupil_id} = 1"), QStringLiteral("The field {Pupils.Pupil_id} is not in a table of the report.")},
        {QStringLiteral("{Invoices.Invoice_id} ="), QStringLiteral("cannot be read at position")},
        {QStringLiteral("{Invoices.Invoice_Reason} + 1 = 2"), QStringLiteral("text and a number cannot be worked together")},
    };
    for (const auto& [selection, words] : cases) {
        ReportData data;
        QString error;
        EXPECT_FALSE(read(report(selection), data, error)) << selection.toStdString();
        EXPECT_TRUE(error.contains(words)) << error.toStdString();
    }
    ReportDefinition unlinked = report(QString());
    unlinked.links.push_back({QStringLiteral("Pupils.Pupil_Family_id"), QStringLiteral("Families.Family_id"), false});
    ReportData data;
    QString error;
    EXPECT_FALSE(read(unlinked, data, error));
    EXPECT_EQ(error, QStringLiteral("The link from Pupils.Pupil_Family_id to Families.Family_id joins no table of the report."));
}

TEST_F(ReportDataTest, ALeftLinkKeepsRowsWithNothingToJoin)
{
    ReportDefinition r = report(QString());
    std::swap(r.tables[0], r.tables[1]);
    r.links[0] = {QStringLiteral("Families.Family_id"), QStringLiteral("Invoices.Invoice_Family_id"), true};
    ReportData data;
    QString error;
    ASSERT_TRUE(read(r, data, error)) << error.toStdString();
    EXPECT_EQ(lines(data).filter(QStringLiteral("Dyer")), QStringList{QStringLiteral("Dyer: ")});
}

}  // namespace
