#include "support/admin_school.h"

#include "database/code_values.h"
#include "database/db_handling.h"
#include "database/schema.h"
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

// Making a database with its stored queries takes a while: each test starts
// from a copy of one made once for the test program.
QString template_database(bool blank_row)
{
    static QTemporaryDir folder;
    const QString name = folder.filePath(blank_row ? QStringLiteral("blank.qdb") : QStringLiteral("empty.qdb"));
    if (!QFile::exists(name)) {
        EXPECT_TRUE(DB_Create_Database(name, blank_row));
    }
    return name;
}

QString dump_database(engine::Database& db)
{
    QString text;
    for (const QString& table : db.TableDef_names()) {
        text += QStringLiteral("== ") + table + QLatin1Char('\n');
        auto rows = db.OpenRecordset(QStringLiteral("SELECT * FROM \"%1\" ORDER BY rowid").arg(table));
        EXPECT_NE(rows, nullptr) << table.toStdString();
        if (!rows)
            continue;
        for (rows->MoveFirst(); !rows->at_eof(); rows->MoveNext()) {
            QStringList values;
            for (const QString& name : rows->field_names())
                values << name + QLatin1Char('=') + rows->Fields(name).toString();
            text += values.join(QStringLiteral(" | ")) + QLatin1Char('\n');
        }
    }
    return text;
}

}  // namespace

AdminSchool::AdminSchool()
{
    EXPECT_TRUE(dir_.isValid());
    engine::set_settings_store(std::make_unique<engine::SettingsStore>(file(QStringLiteral("s.ini"))));
    Default_Settings(Settings());
    Settings().file_locations = code::style_type::Locations_In_Settings;
    Current_Log_File() = file(QStringLiteral("quillary.log"));
    engine::Err().Clear();
    engine::DBEngine_Errors().clear();
    path_ = new_database(QStringLiteral("school.qdb"), true);
    EXPECT_TRUE(DB_Open(path_)) << engine::Err().Description.toStdString();
    Reset_Changed_Lists();
    Glob_Keep_Changed_List() = false;
}

AdminSchool::~AdminSchool()
{
    EXPECT_EQ(Program_Workspace().transaction_depth(), 0) << "a transaction was left open";
    while (Program_Workspace().transaction_depth() > 0)
        Program_Workspace().Rollback();
    DB_Close_All();
    Reset_Changed_Lists();
    Glob_Keep_Changed_List() = false;
    Current_Log_File().clear();
    engine::set_settings_store(nullptr);
    engine::Err().Clear();
    engine::DBEngine_Errors().clear();
}

engine::Database& AdminSchool::db()
{
    EXPECT_NE(Current_Db(), nullptr) << "no current database";
    return *Current_Db();
}

QString AdminSchool::log_text() const
{
    QFile log(file(QStringLiteral("quillary.log")));
    return log.open(QIODevice::ReadOnly) ? QString::fromUtf8(log.readAll()) : QString();
}

QString AdminSchool::new_database(const QString& name, bool blank_row) const
{
    const QString made = file(name);
    EXPECT_TRUE(QFile::copy(template_database(blank_row), made));
    QFile(made).setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    return made;
}

int AdminSchool::add_family(const QString& name, const QString& address)
{
    return insert(QStringLiteral("Families"), {{"Family_Name", name}, {"Family_Address", address}});
}

int AdminSchool::add_pupil(int family, const QString& first_name)
{
    return insert(QStringLiteral("Pupils"),
                  {{"Pupil_Family_Id", family}, {"Pupil_FirstName", first_name}, {"Pupil_Gender", QStringLiteral("F")}});
}

int AdminSchool::add_teacher(const QString& nickname)
{
    return insert(QStringLiteral("Teachers"), {{"Teacher_NickName", nickname}});
}

int AdminSchool::add_course(const QString& title, int weekday)
{
    return insert(QStringLiteral("Courses"), {{"Course_Title", title}, {"Day_of_Week", weekday}});
}

void AdminSchool::put_on_course(int pupil, int course)
{
    insert(QStringLiteral("Register_Courses"), {{"Pupil_id", pupil}, {"Course_id", course}});
}

int AdminSchool::add_term(const QString& name, QDate start, QDate end)
{
    return insert(QStringLiteral("Term_Dates"), {{"Term_Name", name}, {"Term_Start", start}, {"Term_End", end}});
}

void AdminSchool::set_lessons(int term, int weekday, int lessons)
{
    insert(QStringLiteral("Number_Lessons"), {{"Term_Id", term}, {"Day_Number", weekday}, {"Num_Lessons", lessons}});
}

void AdminSchool::add_holiday(QDate day)
{
    insert(QStringLiteral("Holidays"), {{"Day_Off", day}});
}

int AdminSchool::add_activity(const QString& title, int exam_type, int level)
{
    return insert(QStringLiteral("Exams"), {{"Exam_Title", title},
                                            {"Exam_Type", exam_type},
                                            {"Exam_Dance", QStringLiteral("Ballet")},
                                            {"Exam_Level", level}});
}

void AdminSchool::enter(int pupil, int activity, QDate day)
{
    insert(QStringLiteral("Exam_Results"), {{"Results_Pupil_id", pupil}, {"Results_Exam_id", activity}, {"Results_Date", day}});
}

void AdminSchool::title_date(QDate day, const QString& title)
{
    insert(QStringLiteral("Activity_Titles"), {{"ActT_Date", day}, {"ActT_Title", title}});
}

int AdminSchool::add_invoice(int family, const QString& reason, const QVariant& term)
{
    return insert(QStringLiteral("Invoices"), {{"Invoice_Family_Id", family},
                                               {"Invoice_Reason", reason},
                                               {"Invoice_Date", QDate(2026, 1, 10)},
                                               {"Invoice_Term_Id", term},
                                               {"Invoice_Generated", code::invoice_generated::Manual}});
}

int AdminSchool::add_line(int invoice, const QVariantMap& values)
{
    QVariantMap line = values;
    line.insert(QStringLiteral("Inv_Line_Inv_id"), invoice);
    if (!line.contains(QStringLiteral("Inv_Line_Type")))
        line.insert(QStringLiteral("Inv_Line_Type"), code::inv_line_type::No_Pupil);
    return insert(QStringLiteral("Invoice_Lines"), line);
}

int AdminSchool::add_receipt(int invoice, double amount)
{
    return insert(QStringLiteral("Receipts"),
                  {{"Receipt_Invoice_id", invoice}, {"Receipt_Amount", amount}, {"Receipt_Date", QDate(2026, 2, 1)}});
}

int AdminSchool::insert(const QString& table, const QVariantMap& values)
{
    QStringList literals;
    for (const QVariant& value : values)
        literals << literal(value);
    exec(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
             .arg(table, values.keys().join(QStringLiteral(", ")), literals.join(QStringLiteral(", "))));
    return static_cast<int>(db().connection().last_insert_rowid());
}

void AdminSchool::exec(const QString& sql)
{
    EXPECT_TRUE(db().execute_native(sql)) << sql.toStdString() << "\n" << engine::Err().Description.toStdString();
}

QVariant AdminSchool::scalar(const QString& sql)
{
    auto rows = db().OpenRecordset(sql);
    EXPECT_NE(rows, nullptr) << sql.toStdString() << "\n" << engine::Err().Description.toStdString();
    if (!rows || rows->at_eof())
        return QVariant();
    return rows->Fields(rows->field(0).name);
}

int AdminSchool::count(const QString& table)
{
    return scalar(QStringLiteral("SELECT count(*) AS n FROM ") + table).toInt();
}

QString AdminSchool::dump()
{
    return dump_database(db());
}

QStringList AdminSchool::values_in(const QString& path, const QString& sql)
{
    QStringList found;
    engine::Workspace workspace;
    engine::Database* db = workspace.OpenDatabase(path);
    EXPECT_NE(db, nullptr) << path.toStdString();
    if (!db)
        return found;
    auto rows = db->OpenRecordset(sql);
    EXPECT_NE(rows, nullptr) << sql.toStdString() << "\n" << engine::Err().Description.toStdString();
    if (rows) {
        for (rows->MoveFirst(); !rows->at_eof(); rows->MoveNext())
            found << rows->Fields(rows->field(0).name).toString();
        rows.reset();
    }
    workspace.Close();
    return found;
}

QString AdminSchool::dump_of(const QString& path)
{
    engine::Workspace workspace;
    engine::Database* db = workspace.OpenDatabase(path);
    EXPECT_NE(db, nullptr) << path.toStdString();
    const QString text = db ? dump_database(*db) : QString();
    workspace.Close();
    return text;
}

}  // namespace testing_support
