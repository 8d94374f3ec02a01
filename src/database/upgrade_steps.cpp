#include "database/upgrade_steps.h"

#include "database/code_values.h"

#include <QDate>

namespace upgrade {

namespace {

// Jet's TEXT is TEXT(255) in a new file, and every text compares without
// regard to case: an added column is declared the same way.
QString add_text(const QString& table, const QString& column, int length = 255)
{
    return QStringLiteral("ALTER TABLE %1 ADD COLUMN %2 TEXT(%3) COLLATE NOCASE").arg(table, column).arg(length);
}

QString add_column(const QString& table, const QString& column, const QString& type)
{
    return QStringLiteral("ALTER TABLE %1 ADD COLUMN %2 %3").arg(table, column, type);
}

Change statement(const QString& label, const QString& sql)
{
    return Change{label, ChangeKind::Statement, sql};
}

Change schema_object(const QString& label, const QString& object)
{
    return Change{label, ChangeKind::SchemaObject, object};
}

Change require_table(const QString& label, const QString& table)
{
    return Change{label, ChangeKind::RequireTable, table};
}

// Texts of the report messages for the kinds of activity that came later,
// and the eight discounts: each column is its own label.
std::vector<Change> standard_values_texts()
{
    QStringList names = {"Competition_Payment_Details", "Competition_Arrival", "Competition_Notices",
                         "Spare_Payment_Details",       "Spare_Arrival",       "Spare_Notices"};
    for (int i = 1; i <= 8; ++i)
        names << QStringLiteral("Discount_%1").arg(i) << QStringLiteral("txt_Discount_%1").arg(i);
    std::vector<Change> changes;
    for (const QString& name : names)
        changes.push_back(statement(name, add_text(QStringLiteral("Standard_Values"), name)));
    return changes;
}

Step step_1_to_2()
{
    Step step{1, 2, QStringLiteral("DB_Upgrade_1_to_2"), false, {}, {}};
    step.changes = {
        statement("Pupil_Marker", add_text("Pupils", "Pupil_Marker", 10)),
        statement("Pupil_Ref_Num", add_text("Pupils", "Pupil_Ref_Num")),
        statement("Pupil_Notes", add_text("Pupils", "Pupil_Medical")),
        statement("Course_Teacher", add_text("Courses", "Course_Teacher")),
        statement("Course_Type", add_text("Courses", "Course_Type")),
    };
    for (Change& change : standard_values_texts())
        step.changes.push_back(change);
    return step;
}

Step step_2_to_3()
{
    return Step{2, 3, QStringLiteral("DB_Upgrade_2_to_3"), false,
                {
                    statement("Pupil_E_Mail", add_text("Pupils", "Pupil_E_Mail")),
                    statement("Pupil_Special_Needs", add_text("Pupils", "Pupil_Special_Needs")),
                    statement("Pupil_Notes", add_text("Pupils", "Pupil_Notes")),
                    statement("Exam_Description", add_text("Exams", "Exam_Description")),
                    statement("Exam_Marker", add_text("Exams", "Exam_Marker")),
                    statement("Exam_Grade", add_text("Exams", "Exam_Grade")),
                    statement("Family_Marker", add_text("Families", "Family_Marker")),
                },
                {}};
}

Step step_3_to_4()
{
    return Step{3, 4, QStringLiteral("DB_Upgrade_3_to_4"), false,
                {
                    Change{QStringLiteral("Invoice tables"), ChangeKind::InvoiceTables, QString()},
                    statement("Results_Grade", add_text("Exam_Results", "Results_Grade")),
                    statement("Family_Correspondence", add_text("Families", "Family_Correspondence")),
                },
                {}};
}

// A BIT column of Jet is never null: rows already there read False.
Step step_4_to_5()
{
    return Step{4, 5, QStringLiteral("DB_Upgrade_4_to_5"), false,
                {
                    statement("Suppress Invoicing", add_column("Courses", "Course_Suppressed", "BIT DEFAULT 0")),
                    statement("Cancelled", add_column("Courses", "Course_Cancelled", "BIT DEFAULT 0")),
                    statement("Location", add_text("Courses", "Course_Location")),
                },
                {}};
}

Step step_5_to_6()
{
    return Step{5, 6, QStringLiteral("DB_Upgrade_5_to_6"), false,
                {schema_object("Results Index", "Activity_Dates")}, {}};
}

Step step_6_to_7()
{
    return Step{6, 7, QStringLiteral("DB_Upgrade_6_to_7"), false,
                {
                    statement("Address2", add_text("Families", "Family_Address2")),
                    statement("Address3", add_text("Families", "Family_Address3")),
                    statement("Address4", add_text("Families", "Family_Address4")),
                    statement("Pupil Start date", add_column("Pupils", "Pupil_StartDate", "DATE")),
                    statement("Pupil Registration Fee", add_text("Pupils", "Pupil_Regn_Fee")),
                    statement("Pupil Ethnicity", add_text("Pupils", "Pupil_Ethnicity")),
                    statement("Pupil Reference Numbers", add_text("Pupils", "Pupil_Ref_Num2")),
                    statement("Pupil reference Numbers", add_text("Pupils", "Pupil_Ref_Num3")),
                    statement("Pupil reference Numbers", add_text("Pupils", "Pupil_Ref_Num4")),
                },
                {}};
}

// Teachers become a table of their own; each old free-text teacher of a
// course becomes a teacher with only a nickname, and each date that has
// entries gets a title. The date joins the key of an entry, so that a pupil
// may take one activity on several dates. SQLite can't drop a constraint:
// Results_Uniq is a named unique index, dropped and made again.
Step step_7_to_8()
{
    return Step{
        7, 8, QStringLiteral("DB_Upgrade_7_to_8"), true,
        {
            statement("Faculty", add_text("Exams", "Exam_Faculty")),
            statement("Branch", add_text("Exams", "Exam_Branch")),
            statement("Category", add_text("Exams", "Exam_Category")),
            statement("Male Dressing Notes", add_text("Exams", "Exam_Notes_M")),
            schema_object("Teachers", "Teachers"),
            statement("Exam Teacher",
                      add_column("Exams", "Exam_Teacher", "LONG CONSTRAINT FKeyExamT REFERENCES Teachers (Teacher_Id)")),
            statement("Course Teacher",
                      add_column("Courses", "Course_Teacher_id", "LONG CONSTRAINT FKeyCourseT REFERENCES Teachers (Teacher_Id)")),
            statement("Results_Order", add_column("Exam_Results", "Results_Order", "SHORT")),
            statement("Results_Teacher", add_column("Exam_Results", "Results_Teacher_id",
                                                    "LONG CONSTRAINT FKeyERT REFERENCES Teachers (Teacher_Id)")),
            schema_object("Activity_Titles", "Activity_Titles"),
            schema_object("Results Index", "Activity_Dates"),
            statement("Results Unique", "DROP INDEX Results_Uniq"),
            statement("Results Unique", "CREATE UNIQUE INDEX Results_Uniq ON Exam_Results "
                                        "(Results_Pupil_id, Results_Exam_id, Results_Date)"),
        },
        {
            statement("setting up Activity Titles",
                      "INSERT INTO Activity_Titles (ActT_Date) SELECT DISTINCT Results_Date FROM Exam_Results;"),
            statement("updating Activity Titles", "UPDATE Activity_Titles SET ActT_Title = \"Activity\";"),
            statement("setting up Teachers", "INSERT INTO Teachers (Teacher_NickName) SELECT DISTINCT Course_Teacher "
                                             "FROM Courses WHERE Course_Teacher IS NOT NULL;"),
        }};
}

Step step_8_to_9()
{
    return Step{8, 9, QStringLiteral("DB_Upgrade_8_to_9"), true,
                {schema_object("Results Pupils/Exams", "Results_PE")}, {}};
}

Step only_version(int from, int to)
{
    return Step{from, to, QStringLiteral("DB_Upgrade_%1_to_%2").arg(from).arg(to), true, {}, {}};
}

// VAT, and the file locations that a database may keep itself. An upgraded
// file keeps its locations in the database (style 1), with none filled in.
Step step_12_to_13()
{
    Step step{12, 13, QStringLiteral("DB_Upgrade_12_to_13"), true, {}, {}};
    step.changes.push_back(require_table("Standard_Values", "Standard_Values"));
    step.changes.push_back(statement("VAT_Type", add_column("Standard_Values", "VAT_Type", "BYTE")));
    for (int i = 1; i <= 6; ++i) {
        const QString name = QStringLiteral("VAT_Percent%1").arg(i);
        step.changes.push_back(statement(name, add_column("Standard_Values", name, "SINGLE")));
    }
    for (const char* name : {"VAT_Regn_Notice", "VAT_Notice", "VAT_Included"})
        step.changes.push_back(statement(name, add_text("Standard_Values", name)));
    step.changes.push_back(statement("standard_values", QStringLiteral("UPDATE Standard_Values SET  VAT_Type = %1 ; ")
                                                            .arg(code::vat_type::None)));
    step.changes.push_back(require_table("Sys_tab", "Sys_tab"));
    step.changes.push_back(statement("s_Style_Type", add_column("Sys_tab", "s_Style_Type", "BYTE")));
    for (const char* name : {"s_Filename_zrepfmt", "s_Filename_InvTerm", "s_Filename_InvAct", "s_Filename_CrsCost"})
        step.changes.push_back(statement(name, add_text("Sys_tab", name)));
    step.changes.push_back(statement("sys_tab1", QStringLiteral("UPDATE sys_tab SET  s_Style_Type = %1 ; ")
                                                     .arg(code::style_type::Locations_In_Database)));
    return step;
}

std::vector<Step> make_steps()
{
    return {step_1_to_2(),       step_2_to_3(),       step_3_to_4(),       step_4_to_5(),
            step_5_to_6(),       step_6_to_7(),       step_7_to_8(),       step_8_to_9(),
            only_version(9, 10), only_version(10, 12), step_12_to_13()};
}

}  // namespace

const std::vector<Step>& steps()
{
    static const std::vector<Step> all = make_steps();
    return all;
}

const Step* step_from(int version)
{
    if (version == 11)
        version = 10;
    for (const Step& step : steps())
        if (step.from == version)
            return &step;
    return nullptr;
}

QString version_statement(int version)
{
    const QString today = QDate::currentDate().toString(QStringLiteral("MM/dd/yyyy"));
    return QStringLiteral("UPDATE sys_tab SET  s_DB_Type = %1, s_Creation_Date = \"%2\", s_backup_date = \"%2\", "
                          "s_backup_filename = \" \" ; ")
        .arg(version)
        .arg(today);
}

}  // namespace upgrade
