#include "support/school_for_runs.h"

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
#include "shell/selection_lists.h"
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
        return QStringLiteral("'%1 00:00:00'").arg(value.toDate().toString(Qt::ISODate));
    default:
        return QLatin1Char('\'') + value.toString().replace(QLatin1Char('\''), QLatin1String("''")) + QLatin1Char('\'');
    }
}

QVariant optional_value(const std::optional<double>& value)
{
    return value ? QVariant(*value) : QVariant();
}

// Making a database with all its stored queries takes a while: each test
// starts from a copy of one made for the whole test program.
QString template_database()
{
    static QTemporaryDir folder;
    static const QString path = [] {
        const QString made = folder.filePath(QStringLiteral("template.qdb"));
        EXPECT_TRUE(DB_Create_Database(made, true));
        return made;
    }();
    return path;
}

}  // namespace

SchoolForRuns::SchoolForRuns()
{
    EXPECT_TRUE(dir_.isValid());
    engine::set_settings_store(std::make_unique<engine::SettingsStore>(file(QStringLiteral("s.ini"))));
    Settings() = SettingsRecord{};
    Settings().file_locations = code::style_type::Locations_In_Settings;
    Current_Log_File() = file(QStringLiteral("quillary.log"));
    engine::Err().Clear();
    engine::DBEngine_Errors().clear();
    const QString path = file(QStringLiteral("school.qdb"));
    EXPECT_TRUE(QFile::copy(template_database(), path));
    EXPECT_TRUE(DB_Open(path)) << engine::Err().Description.toStdString();
    // Durability on disk is not what these tests are about, and waiting for it is slow.
    exec(QStringLiteral("PRAGMA synchronous = OFF"));
    Reset_Changed_Lists();
    Glob_Keep_Changed_List() = false;
}

SchoolForRuns::~SchoolForRuns()
{
    EXPECT_EQ(Program_Workspace().transaction_depth(), 0) << "a transaction was left open";
    while (Program_Workspace().transaction_depth() > 0)
        Program_Workspace().Rollback();
    DB_Close_All();
    Reset_Changed_Lists();
    Glob_Keep_Changed_List() = false;
    Current_Log_File().clear();
    Settings() = SettingsRecord{};
    engine::set_settings_store(nullptr);
    engine::Err().Clear();
    engine::DBEngine_Errors().clear();
}

engine::Database& SchoolForRuns::db()
{
    return *Current_Db();
}

QString SchoolForRuns::log_text() const
{
    QFile log(file(QStringLiteral("quillary.log")));
    return log.open(QIODevice::ReadOnly) ? QString::fromUtf8(log.readAll()) : QString();
}

QString SchoolForRuns::write_file(const QString& name, const QString& text) const
{
    QFile out(file(name));
    EXPECT_TRUE(out.open(QIODevice::WriteOnly | QIODevice::Truncate));
    out.write(text.toUtf8());
    return out.fileName();
}

int SchoolForRuns::insert(const QString& table, const QVariantMap& values)
{
    QStringList literals;
    for (const QVariant& value : values)
        literals << literal(value);
    const QString sql = QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                            .arg(table, values.keys().join(QStringLiteral(", ")), literals.join(QStringLiteral(", ")));
    EXPECT_TRUE(db().execute_native(sql)) << sql.toStdString() << "\n" << engine::Err().Description.toStdString();
    return static_cast<int>(db().connection().last_insert_rowid());
}

int SchoolForRuns::add_family(const QString& name, const QString& address)
{
    return insert(QStringLiteral("Families"), {{"Family_Name", name}, {"Family_Address", address}});
}

int SchoolForRuns::add_pupil(int family, const QString& first_name)
{
    return insert(QStringLiteral("Pupils"),
                  {{"Pupil_Family_Id", family}, {"Pupil_FirstName", first_name}, {"Pupil_Gender", QStringLiteral("F")}});
}

int SchoolForRuns::add_course(const RunCourse& course)
{
    return insert(QStringLiteral("Courses"), {{"Course_Title", course.title},
                                              {"Day_of_Week", course.day},
                                              {"Course_LessonPrice", optional_value(course.lesson_price)},
                                              {"Lesson_Duration", course.duration},
                                              {"Course_Type", course.type.isEmpty() ? QVariant() : course.type},
                                              {"Course_Suppressed", course.suppressed},
                                              {"Course_Cancelled", course.cancelled}});
}

void SchoolForRuns::put_on_course(int pupil, int course)
{
    insert(QStringLiteral("Register_Courses"), {{"Pupil_id", pupil}, {"Course_id", course}});
}

int SchoolForRuns::add_term(const QString& name, QDate start, QDate end)
{
    return insert(QStringLiteral("Term_Dates"), {{"Term_Name", name}, {"Term_Start", start}, {"Term_End", end}});
}

void SchoolForRuns::set_lessons(int term, int weekday, int lessons)
{
    insert(QStringLiteral("Number_Lessons"), {{"Term_Id", term}, {"Day_Number", weekday}, {"Num_Lessons", lessons}});
}

void SchoolForRuns::add_holiday(QDate day)
{
    insert(QStringLiteral("Holidays"), {{"Day_Off", day}});
}

void SchoolForRuns::set_standard(const QString& column, const QVariant& value)
{
    exec(QStringLiteral("UPDATE Standard_Values SET %1 = %2").arg(column, literal(value)));
}

int SchoolForRuns::add_activity(const RunActivity& activity)
{
    return insert(QStringLiteral("Exams"), {{"Exam_Title", activity.title},
                                            {"Exam_Type", activity.type},
                                            {"Exam_Dance", QStringLiteral("Ballet")},
                                            {"Exam_Level", activity.level},
                                            {"Exam_Duration", 15},
                                            {"Exam_Price", optional_value(activity.price)},
                                            {"Exam_Expenses", optional_value(activity.expenses)}});
}

void SchoolForRuns::title_date(QDate day, const QString& title)
{
    insert(QStringLiteral("Activity_Titles"), {{"ActT_Date", day}, {"ActT_Title", title}});
}

void SchoolForRuns::enter(int pupil, int activity, QDate day)
{
    insert(QStringLiteral("Exam_Results"), {{"Results_Pupil_id", pupil}, {"Results_Exam_id", activity}, {"Results_Date", day}});
}

int SchoolForRuns::add_invoice(int family, const QString& reason, std::optional<int> term)
{
    return insert(QStringLiteral("Invoices"), {{"Invoice_Family_Id", family},
                                               {"Invoice_Reason", reason},
                                               {"Invoice_Date", QDate(2026, 1, 10)},
                                               {"Invoice_Term_Id", term ? QVariant(*term) : QVariant()},
                                               {"Invoice_Generated", code::invoice_generated::Manual}});
}

int SchoolForRuns::add_line(int invoice, double amount)
{
    return insert(QStringLiteral("Invoice_Lines"), {{"Inv_Line_Inv_id", invoice},
                                                    {"Amount", amount},
                                                    {"Inv_Line_Type", code::inv_line_type::No_Pupil}});
}

void SchoolForRuns::add_receipt(int invoice, double amount)
{
    insert(QStringLiteral("Receipts"),
           {{"Receipt_Invoice_id", invoice}, {"Receipt_Amount", amount}, {"Receipt_Date", QDate(2026, 2, 1)}});
}

void SchoolForRuns::exec(const QString& sql)
{
    EXPECT_TRUE(db().execute_native(sql)) << sql.toStdString() << "\n" << engine::Err().Description.toStdString();
}

std::vector<QVariantMap> SchoolForRuns::rows(const QString& sql)
{
    std::vector<QVariantMap> result;
    auto rs = db().OpenRecordset(sql);
    EXPECT_NE(rs, nullptr) << sql.toStdString() << "\n" << engine::Err().Description.toStdString();
    if (!rs)
        return result;
    for (rs->MoveFirst(); !rs->at_eof(); rs->MoveNext()) {
        QVariantMap row;
        for (const QString& name : rs->field_names())
            if (!row.contains(name))
                row.insert(name, rs->Fields(name));
        result.push_back(row);
    }
    return result;
}

QVariant SchoolForRuns::scalar(const QString& sql)
{
    const auto found = rows(sql);
    return found.empty() ? QVariant() : found.front().first();
}

int SchoolForRuns::count(const QString& table)
{
    return scalar(QStringLiteral("SELECT count(*) AS n FROM ") + table).toInt();
}

QString SchoolForRuns::dump()
{
    QString text;
    for (const QString& table : db().TableDef_names()) {
        text += QStringLiteral("== ") + table + QLatin1Char('\n');
        auto rs = db().OpenRecordset(QStringLiteral("SELECT * FROM %1 ORDER BY rowid").arg(table));
        EXPECT_NE(rs, nullptr) << table.toStdString();
        if (!rs)
            continue;
        for (rs->MoveFirst(); !rs->at_eof(); rs->MoveNext()) {
            QStringList values;
            for (const QString& name : rs->field_names()) {
                const QVariant value = rs->Fields(name);
                const QString shown = value.userType() == qMetaTypeId<engine::Currency>()
                                          ? value.value<engine::Currency>().to_string()
                                          : value.toString();
                values << name + QLatin1Char('=') + (value.isNull() ? QStringLiteral("null") : shown);
            }
            text += values.join(QStringLiteral(" | ")) + QLatin1Char('\n');
        }
    }
    return text;
}

}  // namespace testing_support
