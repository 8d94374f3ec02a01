#include "engine/sqlite_connection.h"

#include "engine/conventions.h"
#include "engine/currency.h"
#include "engine/err.h"
#include "engine/jet_date.h"
#include "engine/sql_functions.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <sqlite3.h>

namespace engine {

namespace {

QString not_a_database_text()
{
    return QStringLiteral("Unrecognized database format: the file is not a Quillary database, or it is damaged "
                          "(try Repair Database on a copy of it).");
}

QString damaged_text()
{
    return QStringLiteral("The database file is damaged. Try Repair Database on a copy of it, or go back to a backup.");
}

}  // namespace

Statement& Statement::operator=(Statement&& other) noexcept
{
    if (this != &other) {
        sqlite3_finalize(stmt_);
        stmt_ = other.stmt_;
        other.stmt_ = nullptr;
    }
    return *this;
}

Statement::~Statement()
{
    sqlite3_finalize(stmt_);
}

Connection::~Connection()
{
    close();
}

bool Connection::open(const QString& path, bool create)
{
    close();
    const bool exists = QFileInfo::exists(path);
    if (!create && !exists) {
        raise_engine_error(jet::FileNotFound, QStringLiteral("Could not find file '%1'.").arg(path));
        return false;
    }
    if (create && exists) {
        raise_engine_error(jet::DatabaseExists, QStringLiteral("Database already exists."));
        return false;
    }
    const int flags = SQLITE_OPEN_READWRITE | (create ? SQLITE_OPEN_CREATE : 0);
    const int rc = sqlite3_open_v2(path.toUtf8().constData(), &db_, flags, nullptr);
    if (rc != SQLITE_OK) {
        raise_engine_error(jet::FileNotFound,
                           QStringLiteral("Could not open '%1': %2").arg(path, QString::fromUtf8(sqlite3_errmsg(db_))));
        close();
        return false;
    }
    sqlite3_extended_result_codes(db_, 1);
    sqlite3_busy_timeout(db_, 2000);
    install_collations(db_);
    install_sql_functions(db_);
    // Reading the schema tells a database from any other file.
    if (!exec(QStringLiteral("PRAGMA foreign_keys = ON; SELECT count(*) FROM sqlite_master;"))) {
        if (Err().Number != jet::FileInUse && Err().Number != jet::Damaged)
            raise_engine_error(jet::UnrecognizedFormat, QStringLiteral("'%1': %2").arg(path, not_a_database_text()));
        close();
        return false;
    }
    return true;
}

void Connection::close()
{
    if (db_) {
        sqlite3_close_v2(db_);
        db_ = nullptr;
    }
}

bool Connection::exec(const QString& sql)
{
    if (refuse_nul_in_sql(sql))
        return false;
    char* message = nullptr;
    const int rc = sqlite3_exec(db_, sql.toUtf8().constData(), nullptr, nullptr, &message);
    if (rc != SQLITE_OK) {
        const QString text = message ? QString::fromUtf8(message) : QString::fromUtf8(sqlite3_errstr(rc));
        sqlite3_free(message);
        const MappedError mapped = map_sqlite_error(sqlite3_extended_errcode(db_), text, sql);
        raise_engine_error(mapped.number, mapped.description);
        return false;
    }
    return true;
}

bool refuse_nul_in_sql(const QString& sql)
{
    if (!sql.contains(QChar(0)))
        return false;
    raise_engine_error(jet::SyntaxError, QStringLiteral("The statement holds a NUL character (byte 0) and cannot be run."));
    return true;
}

bool Connection::prepare(const QString& sql, Statement& out)
{
    if (refuse_nul_in_sql(sql))
        return false;
    sqlite3_stmt* stmt = nullptr;
    const QByteArray utf8 = sql.toUtf8();
    const int rc = sqlite3_prepare_v2(db_, utf8.constData(), static_cast<int>(utf8.size()), &stmt, nullptr);
    if (rc != SQLITE_OK) {
        sqlite3_finalize(stmt);
        raise_last_error(rc, sql);
        return false;
    }
    out = Statement(stmt);
    return true;
}

bool Connection::bind_all(Statement& stmt, const QVector<QVariant>& values)
{
    for (int i = 0; i < values.size(); ++i) {
        if (!bind_value(stmt.get(), i + 1, values[i])) {
            raise_last_error(sqlite3_errcode(db_), QString());
            return false;
        }
    }
    return true;
}

bool Connection::bind_named(Statement& stmt, const QString& name, const QVariant& value)
{
    const int index = sqlite3_bind_parameter_index(stmt.get(), (QLatin1Char(':') + name).toUtf8().constData());
    if (index == 0)
        return true;  // the statement doesn't use it
    return bind_value(stmt.get(), index, value);
}

bool Connection::run(Statement& stmt)
{
    int rc;
    while ((rc = sqlite3_step(stmt.get())) == SQLITE_ROW) {
    }
    if (rc != SQLITE_DONE) {
        raise_last_error(rc, QString::fromUtf8(sqlite3_sql(stmt.get())));
        sqlite3_reset(stmt.get());
        return false;
    }
    sqlite3_reset(stmt.get());
    return true;
}

void Connection::raise_last_error(int rc, const QString& sql)
{
    const int code = db_ ? sqlite3_extended_errcode(db_) : rc;
    const QString message = db_ ? QString::fromUtf8(sqlite3_errmsg(db_)) : QString::fromUtf8(sqlite3_errstr(rc));
    const MappedError mapped = map_sqlite_error(code, message, sql);
    raise_engine_error(mapped.number, mapped.description);
}

long long Connection::changes() const
{
    return sqlite3_changes64(db_);
}

long long Connection::last_insert_rowid() const
{
    return sqlite3_last_insert_rowid(db_);
}

bool bind_value(sqlite3_stmt* stmt, int index, const QVariant& value)
{
    int rc = SQLITE_OK;
    if (!value.isValid() || value.isNull()) {
        rc = sqlite3_bind_null(stmt, index);
    } else if (value.canConvert<Currency>() && value.userType() == qMetaTypeId<Currency>()) {
        rc = sqlite3_bind_double(stmt, index, value.value<Currency>().to_double());
    } else {
        switch (value.typeId()) {
        case QMetaType::Bool:
            rc = sqlite3_bind_int(stmt, index, value.toBool() ? 1 : 0);
            break;
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::Short:
        case QMetaType::UShort:
        case QMetaType::UChar:
        case QMetaType::SChar:
        case QMetaType::Long:
        case QMetaType::LongLong:
        case QMetaType::ULong:
        case QMetaType::ULongLong:
            rc = sqlite3_bind_int64(stmt, index, value.toLongLong());
            break;
        case QMetaType::Double:
        case QMetaType::Float:
            rc = sqlite3_bind_double(stmt, index, value.toDouble());
            break;
        case QMetaType::QDate:
        case QMetaType::QDateTime:
        case QMetaType::QTime: {
            const QByteArray text = to_storage_date(value).value_or(QString()).toUtf8();
            rc = sqlite3_bind_text(stmt, index, text.constData(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
            break;
        }
        case QMetaType::QByteArray: {
            const QByteArray bytes = value.toByteArray();
            rc = sqlite3_bind_blob(stmt, index, bytes.constData(), static_cast<int>(bytes.size()), SQLITE_TRANSIENT);
            break;
        }
        default: {
            const QByteArray text = value.toString().toUtf8();
            rc = sqlite3_bind_text(stmt, index, text.constData(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
            break;
        }
        }
    }
    return rc == SQLITE_OK;
}

QVariant column_value(sqlite3_stmt* stmt, int i)
{
    switch (sqlite3_column_type(stmt, i)) {
    case SQLITE_INTEGER: return QVariant(static_cast<qlonglong>(sqlite3_column_int64(stmt, i)));
    case SQLITE_FLOAT: return QVariant(sqlite3_column_double(stmt, i));
    case SQLITE_TEXT:
        return QVariant(QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(stmt, i)),
                                          sqlite3_column_bytes(stmt, i)));
    case SQLITE_BLOB:
        return QVariant(QByteArray(static_cast<const char*>(sqlite3_column_blob(stmt, i)), sqlite3_column_bytes(stmt, i)));
    default: return QVariant();
    }
}

namespace {

const QString& duplicate_text()
{
    static const QString text = QStringLiteral(
        "The changes you requested to the table were not successful because they would create duplicate values in "
        "the index, primary key, or relationship. Change the data in the field or fields that contain duplicate "
        "data, remove the index, or redefine the index to permit duplicate entries and try again.");
    return text;
}

bool is_delete(const QString& sql)
{
    static const QRegularExpression starts_delete(QStringLiteral(R"(^\s*(WITH\b.*\)\s*)?DELETE\b)"),
                                                  QRegularExpression::CaseInsensitiveOption
                                                      | QRegularExpression::DotMatchesEverythingOption);
    return starts_delete.match(sql).hasMatch();
}

QString captured(const QString& message, const QString& pattern)
{
    const auto match = QRegularExpression(pattern).match(message);
    return match.hasMatch() ? match.captured(1) : QString();
}

}  // namespace

MappedError map_sqlite_error(int code, const QString& message, const QString& sql)
{
    // Our own triggers and functions raise "jet:<number>:<description>".
    static const QRegularExpression own(QStringLiteral(R"(jet:(\d+):(.*)$)"),
                                        QRegularExpression::DotMatchesEverythingOption);
    if (const auto match = own.match(message); match.hasMatch())
        return {match.captured(1).toInt(), match.captured(2)};

    switch (code) {
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_ROWID:
        return {jet::DuplicateKey, duplicate_text()};
    case SQLITE_CONSTRAINT_FOREIGNKEY:
        if (is_delete(sql))
            return {jet::RelatedRecordsExist,
                    QStringLiteral("The record cannot be deleted or changed because another table includes related records.")};
        return {jet::RelatedRecordRequired,
                QStringLiteral("You cannot add or change a record because a related record is required in another table.")};
    case SQLITE_CONSTRAINT_NOTNULL:
        return {jet::NullInIndex, QStringLiteral("Index or primary key cannot contain a Null value.")};
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return {jet::FileInUse, QStringLiteral("Could not use the database; file already in use.")};
    case SQLITE_READONLY:
        return {jet::ReadOnly, QStringLiteral("The database is read-only.")};
    default:
        break;
    }
    switch (code & 0xff) {
    case SQLITE_NOTADB:
        return {jet::UnrecognizedFormat, not_a_database_text()};
    case SQLITE_CORRUPT:
        return {jet::Damaged, damaged_text()};
    default:
        break;
    }

    if (QString table = captured(message, QStringLiteral(R"(^table (\S+) already exists)")); !table.isEmpty())
        return {jet::TableExists, QStringLiteral("Table '%1' already exists.").arg(table)};
    if (QString field = captured(message, QStringLiteral(R"(^duplicate column name: (\S+))")); !field.isEmpty())
        return {jet::FieldExists, QStringLiteral("Field '%1' already exists in table.").arg(field)};
    if (QString index = captured(message, QStringLiteral(R"(^index (\S+) already exists)")); !index.isEmpty())
        return {jet::IndexExists, QStringLiteral("Table already has an index named '%1'.").arg(index)};
    if (QString table = captured(message, QStringLiteral(R"(^no such table: (\S+))")); !table.isEmpty())
        return {jet::InputTableNotFound,
                QStringLiteral("The Microsoft Jet database engine cannot find the input table or query '%1'. Make sure it "
                               "exists and that its name is spelled correctly.").arg(table)};
    if (message.startsWith(QLatin1String("no such column")))
        return {jet::TooFewParameters, QStringLiteral("Too few parameters. Expected 1.")};
    if (message.startsWith(QLatin1String("no such index")))
        return {jet::ItemNotFound, QStringLiteral("Item not found in this collection.")};
    if (message.contains(QLatin1String("syntax error")) || message.startsWith(QLatin1String("incomplete input"))
        || message.startsWith(QLatin1String("unrecognized token")))
        return {jet::SyntaxError, QStringLiteral("Syntax error in query. (%1)").arg(message)};
    return {jet::Reserved, message};
}

}  // namespace engine
