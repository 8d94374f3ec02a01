#include "school_fixture.h"

#include "database/db_handling.h"
#include "database/schema.h"
#include "engine/currency.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/recordset.h"
#include "engine/settings_store.h"
#include "engine/sqlite_connection.h"
#include "engine/workspace.h"
#include "shell/app_globals.h"
#include "shell/settings.h"

#include <QFile>
#include <QStringList>

#include <gtest/gtest.h>

namespace testing_support {

namespace {

QString literal(const QVariant& value)
{
    if (!value.isValid() || value.isNull())
        return QStringLiteral("NULL");
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Double:
        return value.toString();
    case QMetaType::QDate:
        return QLatin1Char('\'') + stored(value.toDate()) + QLatin1Char('\'');
    default:
        return QLatin1Char('\'') + value.toString().replace(QLatin1Char('\''), QLatin1String("''")) + QLatin1Char('\'');
    }
}

QVariant optional_value(const std::optional<double>& value)
{
    return value ? QVariant(*value) : QVariant();
}

}  // namespace

QString stored(QDate day)
{
    return day.toString(QStringLiteral("yyyy-MM-dd")) + QStringLiteral(" 00:00:00");
}

double money(const QVariant& value)
{
    if (value.userType() == qMetaTypeId<engine::Currency>())
        return value.value<engine::Currency>().to_double();
    return value.toDouble();
}

void Row::insert(const QString& column, const QVariant& value)
{
    const QString key = column.toLower();
    if (!by_lower_case_.contains(key))
        by_lower_case_.insert(key, value);
}

QVariant Row::operator[](const QString& column) const
{
    const auto found = by_lower_case_.constFind(column.toLower());
    if (found == by_lower_case_.constEnd()) {
        ADD_FAILURE() << "No column " << column.toStdString() << " among "
                      << by_lower_case_.keys().join(QStringLiteral(", ")).toStdString();
        return QVariant();
    }
    return *found;
}

// ---- TestFolder ----

TestFolder::TestFolder()
{
    EXPECT_TRUE(dir_.isValid());
    engine::set_settings_store(std::make_unique<engine::SettingsStore>(file(QStringLiteral("s.ini"))));
    Settings() = SettingsRecord{};
    Settings().file_locations = code::style_type::Locations_In_Settings;
    Current_Log_File() = file(QStringLiteral("quillary.log"));
    engine::Err().Clear();
    engine::DBEngine_Errors().clear();
}

TestFolder::~TestFolder()
{
    Current_Log_File().clear();
    Settings() = SettingsRecord{};
    engine::set_settings_store(nullptr);
    engine::Err().Clear();
}

QString TestFolder::log_text() const
{
    QFile log(file(QStringLiteral("quillary.log")));
    return log.open(QIODevice::ReadOnly) ? QString::fromUtf8(log.readAll()) : QString();
}

// ---- SchoolFixture ----

SchoolFixture::SchoolFixture() : path_(file(QStringLiteral("school.qdb")))
{
    EXPECT_TRUE(DB_Create_Database(path_, true));
    db_ = Program_Workspace().OpenDatabase(path_);
    EXPECT_NE(db_, nullptr) << engine::Err().Description.toStdString();
}

SchoolFixture::~SchoolFixture()
{
    if (db_)
        Program_Workspace().close_database(db_);
}

int SchoolFixture::insert(const QString& table, const QVariantMap& values)
{
    QStringList literals;
    for (const QVariant& value : values)
        literals << literal(value);
    const QString sql = QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                            .arg(table, values.keys().join(QStringLiteral(", ")), literals.join(QStringLiteral(", ")));
    EXPECT_TRUE(db_->execute_native(sql)) << sql.toStdString() << "\n" << engine::Err().Description.toStdString();
    return static_cast<int>(db_->connection().last_insert_rowid());
}

int SchoolFixture::add_family(const QString& name, const QString& address)
{
    return insert(QStringLiteral("Families"), {{"Family_Name", name}, {"Family_Address", address}});
}

int SchoolFixture::add_pupil(int family, const QString& first_name, char gender)
{
    return insert(QStringLiteral("Pupils"), {{"Pupil_Family_Id", family},
                                             {"Pupil_FirstName", first_name},
                                             {"Pupil_Gender", QString(QLatin1Char(gender))}});
}

int SchoolFixture::add_course(const NewCourse& course)
{
    return insert(QStringLiteral("Courses"), {{"Course_Title", course.title},
                                              {"Day_of_Week", course.day},
                                              {"Course_LessonPrice", optional_value(course.lesson_price)},
                                              {"Lesson_Duration", course.duration},
                                              {"Course_Type", course.type.isEmpty() ? QVariant() : course.type},
                                              {"Course_Suppressed", course.suppressed},
                                              {"Course_Cancelled", course.cancelled}});
}

void SchoolFixture::put_on_course(int pupil, int course)
{
    insert(QStringLiteral("Register_Courses"), {{"Pupil_id", pupil}, {"Course_id", course}});
}

int SchoolFixture::add_term(const QString& name, QDate start, QDate end)
{
    return insert(QStringLiteral("Term_Dates"), {{"Term_Name", name}, {"Term_Start", start}, {"Term_End", end}});
}

void SchoolFixture::set_lessons(int term, int weekday, int lessons)
{
    insert(QStringLiteral("Number_Lessons"), {{"Term_Id", term}, {"Day_Number", weekday}, {"Num_Lessons", lessons}});
}

void SchoolFixture::add_holiday(QDate day)
{
    insert(QStringLiteral("Holidays"), {{"Day_Off", day}});
}

void SchoolFixture::set_standard(const QString& column, const QVariant& value)
{
    EXPECT_TRUE(db_->execute_native(QStringLiteral("UPDATE Standard_Values SET %1 = %2").arg(column, literal(value))));
}

int SchoolFixture::add_activity(const NewActivity& activity)
{
    return insert(QStringLiteral("Exams"), {{"Exam_Title", activity.title},
                                            {"Exam_Type", activity.type},
                                            {"Exam_Dance", QStringLiteral("Ballet")},
                                            {"Exam_Level", activity.level},
                                            {"Exam_Duration", 15},
                                            {"Exam_Price", optional_value(activity.price)},
                                            {"Exam_Expenses", optional_value(activity.expenses)}});
}

void SchoolFixture::title_date(QDate day, const QString& title)
{
    insert(QStringLiteral("Activity_Titles"), {{"ActT_Date", day}, {"ActT_Title", title}});
}

void SchoolFixture::enter(int pupil, int activity, QDate day)
{
    insert(QStringLiteral("Exam_Results"), {{"Results_Pupil_id", pupil}, {"Results_Exam_id", activity}, {"Results_Date", day}});
}

void SchoolFixture::pick_term(int term)
{
    insert(QStringLiteral("Tmp_Terms"), {{"Tmp_Term_id", term}});
}

void SchoolFixture::pick_course(int course)
{
    insert(QStringLiteral("Tmp_Courses"), {{"Tmp_Course_id", course}});
}

void SchoolFixture::pick_pupil(int pupil)
{
    const Rows family = rows(QStringLiteral("SELECT Pupil_Family_Id FROM Pupils WHERE Pupil_id = %1").arg(pupil));
    ASSERT_EQ(family.size(), 1u);
    insert(QStringLiteral("Tmp_Pupils"), {{"Tmp_Pupil_id", pupil}, {"Tmp_Family_id", family[0]["Pupil_Family_Id"]}});
}

void SchoolFixture::pick_activity(int activity, QDate day)
{
    insert(QStringLiteral("Tmp_Activities"), {{"Tmp_Activity_id", activity}, {"Tmp_Date", day}});
}

int SchoolFixture::add_invoice(int family, const QString& reason, std::optional<int> term, std::optional<QDate> activity_date)
{
    return insert(QStringLiteral("Invoices"), {{"Invoice_Family_Id", family},
                                               {"Invoice_Reason", reason},
                                               {"Invoice_Date", QDate(2026, 1, 10)},
                                               {"Invoice_Term_Id", term ? QVariant(*term) : QVariant()},
                                               {"Invoice_Activity_Date", activity_date ? QVariant(*activity_date) : QVariant()},
                                               {"Invoice_Generated", code::invoice_generated::Manual}});
}

int SchoolFixture::add_line(int invoice, double amount, std::optional<int> pupil)
{
    return insert(QStringLiteral("Invoice_Lines"), {{"Inv_Line_Inv_id", invoice},
                                                    {"Amount", amount},
                                                    {"Inv_Line_Pupil_id", pupil ? QVariant(*pupil) : QVariant()},
                                                    {"Inv_Line_Type", code::inv_line_type::Manual_Amount}});
}

void SchoolFixture::add_receipt(int invoice, double amount)
{
    insert(QStringLiteral("Receipts"), {{"Receipt_Invoice_id", invoice}, {"Receipt_Amount", amount}, {"Receipt_Date", QDate(2026, 2, 1)}});
}

bool SchoolFixture::run(const QString& query, const Params& params)
{
    auto def = db_->QueryDefs(query);
    if (!def)
        return false;
    for (const auto& [name, value] : params)
        if (!def->set_parameter(name, value))
            return false;
    return def->Execute();
}

Rows SchoolFixture::rows(const QString& query_or_sql, const Params& params)
{
    std::unique_ptr<engine::Recordset> rs;
    if (db_->QueryDef_names().contains(query_or_sql, Qt::CaseInsensitive)) {
        auto def = db_->QueryDefs(query_or_sql);
        for (const auto& [name, value] : params)
            EXPECT_TRUE(def->set_parameter(name, value)) << name.toStdString();
        rs = def->OpenRecordset();
    } else {
        rs = db_->OpenRecordset(query_or_sql);
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

int SchoolFixture::count(const QString& table)
{
    const Rows counted = rows(QStringLiteral("SELECT count(*) AS n FROM %1").arg(table));
    return counted.empty() ? -1 : counted[0]["n"].toInt();
}

}  // namespace testing_support
