#include "support/current_school.h"

#include "database/db_handling.h"
#include "database/schema.h"
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
    case QMetaType::Bool: return value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Double: return value.toString();
    default: return QLatin1Char('\'') + value.toString().replace(QLatin1Char('\''), QLatin1String("''")) + QLatin1Char('\'');
    }
}

}  // namespace

CurrentSchool::CurrentSchool() : path_(dir_.filePath(QStringLiteral("school.qdb")))
{
    EXPECT_TRUE(dir_.isValid());
    engine::set_settings_store(std::make_unique<engine::SettingsStore>(file(QStringLiteral("settings.ini"))));
    Settings() = SettingsRecord{};
    Settings().file_locations = 2;
    Current_Log_File() = file(QStringLiteral("quillary.log"));
    engine::Err().Clear();
    EXPECT_TRUE(DB_Create_Database(path_, true)) << engine::Err().Description.toStdString();
    EXPECT_TRUE(DB_Open(path_)) << engine::Err().Description.toStdString();
}

CurrentSchool::~CurrentSchool()
{
    DB_Close_All();
    Program_Workspace().Close();
    Current_Log_File().clear();
    Settings() = SettingsRecord{};
    engine::set_settings_store(nullptr);
    engine::Err().Clear();
}

QString CurrentSchool::log_text() const
{
    QFile log(file(QStringLiteral("quillary.log")));
    return log.open(QIODevice::ReadOnly) ? QString::fromUtf8(log.readAll()) : QString();
}

int CurrentSchool::insert(const QString& table, const QVariantMap& values)
{
    QStringList literals;
    for (const QVariant& value : values)
        literals << literal(value);
    const QString sql = QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                            .arg(table, values.keys().join(QStringLiteral(", ")), literals.join(QStringLiteral(", ")));
    engine::Database* db = Current_Db();
    EXPECT_TRUE(db && db->execute_native(sql)) << sql.toStdString() << "\n" << engine::Err().Description.toStdString();
    return db ? static_cast<int>(db->connection().last_insert_rowid()) : 0;
}

int CurrentSchool::add_teacher(const QString& nickname, const QString& first_name, const QString& surname)
{
    return insert(QStringLiteral("Teachers"), {{"Teacher_NickName", nickname},
                                               {"Teacher_Name", first_name.isEmpty() ? QVariant() : first_name},
                                               {"Teacher_SurName", surname.isEmpty() ? QVariant() : surname}});
}

int CurrentSchool::add_family(const QString& name, const QString& address)
{
    return insert(QStringLiteral("Families"), {{"Family_Name", name}, {"Family_Address", address}});
}

int CurrentSchool::add_pupil(int family, const QString& first_name)
{
    return insert(QStringLiteral("Pupils"),
                  {{"Pupil_Family_Id", family}, {"Pupil_FirstName", first_name}, {"Pupil_Gender", QStringLiteral("F")}});
}

int CurrentSchool::add_course(const QString& title, int teacher)
{
    return insert(QStringLiteral("Courses"), {{"Course_Title", title}, {"Day_of_Week", 2}, {"Course_Teacher_id", teacher}});
}

int CurrentSchool::add_activity(const QString& title, int teacher)
{
    return insert(QStringLiteral("Exams"), {{"Exam_Title", title}, {"Exam_Type", 1}, {"Exam_Teacher", teacher}});
}

int CurrentSchool::add_invoice(int family, const QString& reason)
{
    return insert(QStringLiteral("Invoices"), {{"Invoice_Family_Id", family}, {"Invoice_Reason", reason}});
}

int CurrentSchool::add_invoice_line(int invoice, int pupil, double amount)
{
    return insert(QStringLiteral("Invoice_Lines"),
                  {{"Inv_Line_Inv_id", invoice}, {"Inv_Line_Pupil_id", pupil}, {"Amount", amount}, {"Inv_Line_Type", 1}});
}

int CurrentSchool::count(const QString& table) const
{
    return scalar(QStringLiteral("SELECT count(*) FROM ") + table).toInt();
}

QVariant CurrentSchool::scalar(const QString& sql) const
{
    engine::Database* db = Current_Db();
    std::unique_ptr<engine::Recordset> rows = db ? db->OpenRecordset(sql) : nullptr;
    EXPECT_TRUE(rows) << sql.toStdString() << "\n" << engine::Err().Description.toStdString();
    if (!rows || rows->at_eof())
        return QVariant();
    return rows->Fields(rows->field(0).name);
}

}  // namespace testing_support
