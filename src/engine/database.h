#pragma once
// A database file, its stored queries and the running of SQL: the part of
// the engine that stands where DAO's Database and QueryDef stood.
//
// Every operation returns false on failure and leaves the engine error in
// engine::Err() and engine::DBEngine_Errors(); nothing throws.

#include "engine/field_type.h"

#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>
#include <memory>

namespace engine {

class Connection;
class Recordset;
struct DatabaseCore;

// Options of Execute.
namespace dbopt {
inline constexpr int FailOnError = 128;
inline constexpr int Consistent = 32;
inline constexpr int FailOnErrorConsistent = 160;
}  // namespace dbopt

struct QueryParameter {
    QString Name;
    FieldType Type = FieldType::Unknown;
    QVariant Value;
    bool has_value = false;
};

// A stored query: its SQL, its typed named parameters, and its running.
class QueryDef {
public:
    QString Name() const { return name_; }
    // The SQL text as it was stored, with its PARAMETERS clause.
    QString SQL() const { return sql_; }
    const QVector<QueryParameter>& Parameters() const { return parameters_; }

    // Parameters("name") = value. Raises 3265 for a name the query doesn't declare.
    bool set_parameter(const QString& name, const QVariant& value);
    QVariant parameter(const QString& name) const;

    // Runs an action query. A missing parameter value raises 3061.
    bool Execute(int options = dbopt::FailOnError);
    long long RecordsAffected() const { return records_affected_; }
    // Opens the rows of a select query; null on failure.
    std::unique_ptr<Recordset> OpenRecordset();

private:
    friend class Database;
    QueryDef(std::shared_ptr<DatabaseCore> core, QString name, QString sql, QVector<QueryParameter> parameters,
             QString runnable_sql);
    bool bind_parameters(class Statement& stmt);

    std::shared_ptr<DatabaseCore> core_;
    QString name_;
    QString sql_;
    QVector<QueryParameter> parameters_;
    QString runnable_sql_;  // SQLite text with :name parameters and the queries it names as CTEs
    long long records_affected_ = 0;
};

class Database {
public:
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    QString Name() const;
    bool is_open() const;

    // Direct SQL in the engine's dialect (DELETE *, #dates#, "strings",
    // True/False, &). Options 128 and 160 raise on failure; the failing
    // statement leaves nothing behind.
    bool Execute(const QString& sql, int options = dbopt::FailOnError);
    long long RecordsAffected() const;

    // A table name, a stored query name, or SELECT text in the engine's dialect.
    std::unique_ptr<Recordset> OpenRecordset(const QString& source);

    // Stores a query. The text may begin with "PARAMETERS name type, ...;"
    // and names its parameters bare or in brackets. It isn't checked against
    // the tables: a query naming a missing column fails when it runs.
    // Raises 3012 if a query of that name exists.
    bool CreateQueryDef(const QString& name, const QString& sql);
    // QueryDefs(name); null and 3265 when there is none.
    std::unique_ptr<QueryDef> QueryDefs(const QString& name);
    // QueryDefs.Delete(name); 3265 when there is none.
    bool DeleteQueryDef(const QString& name);
    QStringList QueryDef_names() const;
    QStringList TableDef_names() const;
    bool has_table(const QString& name) const;

    bool Close();

    // SQLite text, run as it stands (no dialect step): for the program's own
    // definitions, which are written for SQLite.
    bool execute_native(const QString& sql);
    // Re-creates the storage-convention triggers of a table after it was
    // created or altered.
    bool apply_conventions(const QString& table);
    Connection& connection();

private:
    friend class Workspace;
    explicit Database(std::shared_ptr<DatabaseCore> core);
    std::shared_ptr<DatabaseCore> core_;
};

}  // namespace engine
