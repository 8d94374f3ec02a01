#include "support/school_rows.h"

#include "engine/database.h"
#include "engine/err.h"
#include "engine/recordset.h"
#include "engine/sqlite_connection.h"
#include "support/stored_values.h"
#include "support/database_file.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace testing_support {

namespace {

template <typename T>
QVariant optional_value(const std::optional<T>& value)
{
    return value ? QVariant(*value) : QVariant();
}

}  // namespace

// ---- People ----

int SchoolRows::add_family(const QString& name, const QString& address)
{
    return insert(QStringLiteral("Families"), {{"Family_Name", name}, {"Family_Address", address}});
}

int SchoolRows::add_pupil(int family, const QString& first_name, char gender)
{
    return insert(QStringLiteral("Pupils"), {{"Pupil_Family_Id", family},
                                             {"Pupil_FirstName", first_name},
                                             {"Pupil_Gender", QString(QLatin1Char(gender))}});
}

int SchoolRows::add_teacher(const QString& nickname)
{
    return insert(QStringLiteral("Teachers"), {{"Teacher_NickName", nickname}});
}

// ---- Courses, terms, lessons and holidays ----

int SchoolRows::add_course(const NewCourse& course)
{
    return insert(QStringLiteral("Courses"), {{"Course_Title", course.title},
                                              {"Day_of_Week", course.day},
                                              {"Course_LessonPrice", optional_value(course.lesson_price)},
                                              {"Lesson_Duration", course.duration},
                                              {"Course_Type", course.type.isEmpty() ? QVariant() : course.type},
                                              {"Course_Suppressed", course.suppressed},
                                              {"Course_Cancelled", course.cancelled},
                                              {"Course_Teacher_id", optional_value(course.teacher)}});
}

void SchoolRows::put_on_course(int pupil, int course)
{
    insert(QStringLiteral("Register_Courses"), {{"Pupil_id", pupil}, {"Course_id", course}});
}

int SchoolRows::add_term(const QString& name, QDate start, QDate end)
{
    return insert(QStringLiteral("Term_Dates"), {{"Term_Name", name}, {"Term_Start", start}, {"Term_End", end}});
}

void SchoolRows::set_lessons(int term, int weekday, int lessons)
{
    insert(QStringLiteral("Number_Lessons"), {{"Term_Id", term}, {"Day_Number", weekday}, {"Num_Lessons", lessons}});
}

void SchoolRows::add_holiday(QDate day)
{
    insert(QStringLiteral("Holidays"), {{"Day_Off", day}});
}

void SchoolRows::set_standard(const QString& column, const QVariant& value)
{
    exec(QStringLiteral("UPDATE Standard_Values SET %1 = %2").arg(column, sql_literal(value)));
}

// ---- Activities ----

int SchoolRows::add_activity(const NewActivity& activity)
{
    return insert(QStringLiteral("Exams"), {{"Exam_Title", activity.title},
                                            {"Exam_Type", activity.type},
                                            {"Exam_Dance", QStringLiteral("Ballet")},
                                            {"Exam_Level", activity.level},
                                            {"Exam_Duration", 15},
                                            {"Exam_Price", optional_value(activity.price)},
                                            {"Exam_Expenses", optional_value(activity.expenses)},
                                            {"Exam_Teacher", optional_value(activity.teacher)}});
}

void SchoolRows::title_date(QDate day, const QString& title)
{
    insert(QStringLiteral("Activity_Titles"), {{"ActT_Date", day}, {"ActT_Title", title}});
}

void SchoolRows::enter(int pupil, int activity, QDate day)
{
    insert(QStringLiteral("Exam_Results"), {{"Results_Pupil_id", pupil}, {"Results_Exam_id", activity}, {"Results_Date", day}});
}

// ---- What a run picked ----

void SchoolRows::pick_term(int term)
{
    insert(QStringLiteral("Tmp_Terms"), {{"Tmp_Term_id", term}});
}

void SchoolRows::pick_course(int course)
{
    insert(QStringLiteral("Tmp_Courses"), {{"Tmp_Course_id", course}});
}

void SchoolRows::pick_pupil(int pupil)
{
    const Rows family = rows(QStringLiteral("SELECT Pupil_Family_Id FROM Pupils WHERE Pupil_id = %1").arg(pupil));
    ASSERT_EQ(family.size(), 1u);
    insert(QStringLiteral("Tmp_Pupils"), {{"Tmp_Pupil_id", pupil}, {"Tmp_Family_id", family[0]["Pupil_Family_Id"]}});
}

void SchoolRows::pick_activity(int activity, QDate day)
{
    insert(QStringLiteral("Tmp_Activities"), {{"Tmp_Activity_id", activity}, {"Tmp_Date", day}});
}

// ---- Money ----

int SchoolRows::add_invoice(int family, const QString& reason, std::optional<int> term, std::optional<QDate> activity_date)
{
    return insert(QStringLiteral("Invoices"), {{"Invoice_Family_Id", family},
                                               {"Invoice_Reason", reason},
                                               {"Invoice_Date", QDate(2026, 1, 10)},
                                               {"Invoice_Term_Id", term ? QVariant(*term) : QVariant()},
                                               {"Invoice_Activity_Date", activity_date ? QVariant(*activity_date) : QVariant()},
                                               {"Invoice_Generated", code::invoice_generated::Manual}});
}

int SchoolRows::add_line(int invoice, double amount)
{
    return add_line(invoice, {{"Amount", amount}});
}

int SchoolRows::add_line(int invoice, const QVariantMap& columns)
{
    QVariantMap line = columns;
    line.insert(QStringLiteral("Inv_Line_Inv_id"), invoice);
    if (!line.contains(QStringLiteral("Inv_Line_Type")))
        line.insert(QStringLiteral("Inv_Line_Type"), code::inv_line_type::No_Pupil);
    return insert(QStringLiteral("Invoice_Lines"), line);
}

int SchoolRows::add_receipt(int invoice, double amount)
{
    return insert(QStringLiteral("Receipts"),
                  {{"Receipt_Invoice_id", invoice}, {"Receipt_Amount", amount}, {"Receipt_Date", QDate(2026, 2, 1)}});
}

// ---- Writing and running ----

int SchoolRows::insert(const QString& table, const QVariantMap& values)
{
    QStringList literals;
    for (const QVariant& value : values)
        literals << sql_literal(value);
    exec(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
             .arg(table, values.keys().join(QStringLiteral(", ")), literals.join(QStringLiteral(", "))));
    return static_cast<int>(db().connection().last_insert_rowid());
}

void SchoolRows::exec(const QString& sql)
{
    EXPECT_TRUE(db().execute_native(sql)) << sql.toStdString() << "\n" << engine::Err().Description.toStdString();
}

bool SchoolRows::run(const QString& query, const Params& params)
{
    auto def = db().QueryDefs(query);
    if (!def)
        return false;
    for (const auto& [name, value] : params)
        if (!def->set_parameter(name, value))
            return false;
    return def->Execute();
}

// ---- Reading back ----

Rows SchoolRows::rows(const QString& query_or_sql, const Params& params)
{
    std::unique_ptr<engine::Recordset> rs;
    if (db().QueryDef_names().contains(query_or_sql, Qt::CaseInsensitive)) {
        auto def = db().QueryDefs(query_or_sql);
        for (const auto& [name, value] : params)
            EXPECT_TRUE(def->set_parameter(name, value)) << name.toStdString();
        rs = def->OpenRecordset();
    } else {
        rs = db().OpenRecordset(query_or_sql);
    }
    EXPECT_NE(rs, nullptr) << query_or_sql.toStdString() << "\n" << engine::Err().Description.toStdString();
    Rows result;
    if (!rs)
        return result;
    for (rs->MoveFirst(); !rs->at_eof(); rs->MoveNext()) {
        Row row;
        for (const QString& name : rs->field_names())
            row.insert(name, rs->Fields(name));
        result.push_back(row);
    }
    return result;
}

QVariant SchoolRows::scalar(const QString& sql)
{
    return scalar_of(db(), sql);
}

int SchoolRows::count(const QString& table)
{
    return scalar(QStringLiteral("SELECT count(*) AS n FROM ") + table).toInt();
}

QString SchoolRows::dump()
{
    return dump_tables(db());
}

}  // namespace testing_support
