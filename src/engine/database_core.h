#pragma once
// The shared state behind a Database, its QueryDefs and its Recordsets.

#include "engine/database.h"
#include "engine/recordset.h"
#include "engine/sqlite_connection.h"

#include <QHash>
#include <optional>
#include <vector>

namespace engine {

struct StoredQuery {
    QString name;
    QString sql;                        // as stored, PARAMETERS clause included
    QVector<QueryParameter> parameters; // its own and those of the queries it names
    QString runnable;                   // SQLite text: :parameters, named queries as CTEs
};

// A stored query as read from the file, its parameters split off and marked.
struct RawQuery {
    QString name;
    QString sql;
    QVector<QueryParameter> own_parameters;
    QString body;
};

struct DatabaseCore {
    Connection connection;
    QString name;
    long long records_affected = 0;
    bool open = false;

    // The stored queries, read from the file once; their runnable forms are
    // worked out when first used and forgotten whenever a query is added or
    // removed, since a query's form depends on the queries it names.
    bool queries_loaded = false;
    QHash<QString, RawQuery> raw_queries;      // by lower-case name
    QHash<QString, StoredQuery> queries;       // expanded, by lower-case name

    bool load_queries();
    void forget_queries() { queries_loaded = false; raw_queries.clear(); queries.clear(); }
    void remember_query(const RawQuery& query);
    void forget_query(const QString& name);
    std::optional<StoredQuery> find_query(const QString& name);
};

// Raises Jet's 3061 when any of the parameters has no value, naming them so
// that whoever wrote the call can see which one it left out. True when all
// have values.
bool check_parameters_given(const QVector<QueryParameter>& parameters);

struct Row {
    Bookmark serial = 0;
    bool deleted = false;
    QVector<QVariant> values;
};

struct TableKey {
    int field = -1;        // the field holding the table's key
    QString column;        // its column in the table ("rowid" for the engine's hidden key)
};

struct RowStore {
    QString runnable_sql;
    QVector<QueryParameter> parameters;
    QVector<FieldInfo> fields;
    int visible_fields = 0;
    std::vector<Row> rows;
    Bookmark next_serial = 1;
    QHash<QString, TableKey> keys;  // base table (lower case) -> its key

    bool load(DatabaseCore& core);
    int row_of(Bookmark mark) const;
};

// Text of the query-definition store and the rewriting of stored query texts.
namespace query_text {
// The name of the table that keeps stored queries inside the database file.
inline const char* const store_table = "Quillary_QueryDefs";
// Splits off a leading "PARAMETERS a Long, b DateTime;" clause.
bool split_parameters(const QString& sql, QVector<QueryParameter>& parameters, QString& body);
// Names of parameters written bare or in brackets become :name.
QString mark_parameters(const QString& body, const QVector<QueryParameter>& parameters);
// The names (as written) of identifiers in the text, outside strings.
QStringList identifiers(const QString& body);
}  // namespace query_text

// Converts values between their stored and their presented forms.
QVariant present_value(const QVariant& stored, FieldType type);
bool store_value(const QVariant& value, const FieldInfo& field, QVariant& stored);

}  // namespace engine
