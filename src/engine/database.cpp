#include "engine/database.h"

#include "engine/conventions.h"
#include "engine/database_core.h"
#include "engine/err.h"
#include "engine/sql_compat.h"

#include <QRegularExpression>
#include <QSet>
#include <sqlite3.h>

namespace engine {

namespace {

QString key_of(const QString& name) { return name.trimmed().toLower(); }

// Builds the runnable text of one query: the queries it names, and those
// they name, become common table expressions ahead of its own text.
class QueryExpander {
public:
    explicit QueryExpander(const QHash<QString, RawQuery>& raw) : raw_(raw) {}

    StoredQuery expand(const RawQuery& query)
    {
        ctes_.clear();
        seen_.clear();
        parameters_ = query.own_parameters;
        seen_.insert(key_of(query.name));
        collect(query.body);
        StoredQuery stored{query.name, query.sql, parameters_, query.body};
        if (!ctes_.isEmpty())
            stored.runnable = QStringLiteral("WITH ") + ctes_.join(QStringLiteral(",\n")) + QLatin1Char('\n') + query.body;
        return stored;
    }

private:
    void collect(const QString& body)
    {
        for (const QString& name : query_text::identifiers(body)) {
            const QString key = key_of(name);
            if (seen_.contains(key) || !raw_.contains(key))
                continue;
            seen_.insert(key);
            const RawQuery& inner = raw_[key];
            collect(inner.body);  // what it names comes first
            ctes_ << QStringLiteral("\"%1\" AS (%2)").arg(inner.name, strip_semicolon(inner.body));
            for (const QueryParameter& p : inner.own_parameters)
                add_parameter(p);
        }
    }

    void add_parameter(const QueryParameter& p)
    {
        for (const QueryParameter& existing : parameters_)
            if (existing.Name.compare(p.Name, Qt::CaseInsensitive) == 0)
                return;
        parameters_.append(p);
    }

    static QString strip_semicolon(QString text)
    {
        text = text.trimmed();
        while (text.endsWith(QLatin1Char(';')))
            text.chop(1);
        return text;
    }

    const QHash<QString, RawQuery>& raw_;
    QStringList ctes_;
    QSet<QString> seen_;
    QVector<QueryParameter> parameters_;
};

bool ensure_query_store(Connection& connection)
{
    return connection.exec(QStringLiteral("CREATE TABLE IF NOT EXISTS %1 (Query_Name TEXT PRIMARY KEY COLLATE NOCASE, "
                                          "Query_SQL TEXT NOT NULL)")
                               .arg(QLatin1String(query_text::store_table)));
}

// A record set opened on one word names a table or a stored query; when
// there is neither, it is the name that is wrong, not the SQL.
bool is_plain_name(const QString& source)
{
    static const QRegularExpression name(QStringLiteral(R"(^(\w+|\[[^\]]+\])$)"));
    return name.match(source).hasMatch() && source.compare(QLatin1String("SELECT"), Qt::CaseInsensitive) != 0;
}

QString input_not_found_text(const QString& name)
{
    return QStringLiteral("The Microsoft Jet database engine cannot find the input table or query '%1'. Make sure it "
                          "exists and that its name is spelled correctly.")
        .arg(name);
}

// Runs every statement of a text, counting the rows the last one changed.
bool run_statements(Connection& connection, const QString& sql, long long& affected)
{
    // SQLite stops reading at a NUL, so the rest of such a text would be
    // dropped without a word, or read again for ever.
    if (refuse_nul_in_sql(sql))
        return false;
    const QByteArray utf8 = sql.toUtf8();
    const char* tail = utf8.constData();
    const char* end = tail + utf8.size();
    affected = 0;
    while (tail < end) {
        sqlite3_stmt* raw = nullptr;
        const char* next = nullptr;
        const int rc = sqlite3_prepare_v2(connection.handle(), tail, static_cast<int>(end - tail), &raw, &next);
        if (rc != SQLITE_OK) {
            sqlite3_finalize(raw);
            connection.raise_last_error(rc, QString::fromUtf8(tail, static_cast<int>(end - tail)));
            return false;
        }
        if (!raw && next == tail)
            break;  // nothing more that SQLite can read
        tail = next;
        if (!raw)
            continue;  // whitespace or a comment
        Statement stmt(raw);
        if (!connection.run(stmt))
            return false;
        affected = connection.changes();
    }
    return true;
}

// Tables that a CREATE TABLE or ALTER TABLE statement made or changed.
QStringList defined_tables(const QString& sql)
{
    static const QRegularExpression ddl(
        QStringLiteral(R"(\b(?:CREATE\s+TABLE(?:\s+IF\s+NOT\s+EXISTS)?|ALTER\s+TABLE)\s+(\[[^\]]+\]|"[^"]+"|\w+))"),
        QRegularExpression::CaseInsensitiveOption);
    QStringList tables;
    auto it = ddl.globalMatch(sql);
    while (it.hasNext()) {
        QString name = it.next().captured(1);
        if (name.startsWith(QLatin1Char('[')) || name.startsWith(QLatin1Char('"')))
            name = name.mid(1, name.size() - 2);
        tables << name;
    }
    return tables;
}

// Direct SQL that names stored queries reaches them as CTEs. Direct SQL gives
// no parameter values, so naming a query with parameters fails as Jet does.
bool with_named_queries(DatabaseCore& core, const QString& sql, QString& runnable)
{
    runnable = sql;
    if (!core.load_queries())
        return false;
    QStringList ctes;
    QSet<QString> seen;
    for (const QString& name : query_text::identifiers(sql)) {
        const std::optional<StoredQuery> q = core.find_query(name);
        if (!q || seen.contains(key_of(name)))
            continue;
        seen.insert(key_of(name));
        if (!check_parameters_given(q->parameters))
            return false;
        QString inner = q->runnable.trimmed();
        while (inner.endsWith(QLatin1Char(';')))
            inner.chop(1);
        ctes << QStringLiteral("\"%1\" AS (%2)").arg(q->name, inner);
    }
    if (!ctes.isEmpty())
        runnable = QStringLiteral("WITH ") + ctes.join(QStringLiteral(",\n")) + QLatin1Char('\n') + sql;
    return true;
}

}  // namespace

// Reads a stored query's text into its parts; false for a PARAMETERS clause
// that can't be read, which then fails when the query is used.
static bool parse_raw_query(const QString& name, const QString& sql, RawQuery& query)
{
    query.name = name;
    query.sql = sql;
    QString body;
    if (!query_text::split_parameters(sql, query.own_parameters, body))
        return false;
    query.body = query_text::mark_parameters(body, query.own_parameters);
    return true;
}

bool DatabaseCore::load_queries()
{
    if (queries_loaded)
        return true;
    raw_queries.clear();
    queries.clear();
    Statement stmt;
    if (connection.prepare(QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table' AND name = '%1'")
                               .arg(QLatin1String(query_text::store_table)),
                           stmt)
        && sqlite3_step(stmt.get()) == SQLITE_ROW) {
        Statement rows;
        if (!connection.prepare(QStringLiteral("SELECT Query_Name, Query_SQL FROM %1").arg(QLatin1String(query_text::store_table)), rows))
            return false;
        while (sqlite3_step(rows.get()) == SQLITE_ROW) {
            RawQuery q;
            if (parse_raw_query(column_value(rows.get(), 0).toString(), column_value(rows.get(), 1).toString(), q))
                raw_queries.insert(key_of(q.name), q);
        }
    }
    queries_loaded = true;
    return true;
}

void DatabaseCore::remember_query(const RawQuery& query)
{
    if (!queries_loaded)
        return;  // read with the rest when first needed
    raw_queries.insert(key_of(query.name), query);
    queries.clear();
}

void DatabaseCore::forget_query(const QString& name)
{
    raw_queries.remove(key_of(name));
    queries.clear();
}

std::optional<StoredQuery> DatabaseCore::find_query(const QString& name)
{
    if (!load_queries())
        return std::nullopt;
    const QString key = key_of(name);
    auto expanded = queries.constFind(key);
    if (expanded != queries.constEnd())
        return expanded.value();
    auto raw = raw_queries.constFind(key);
    if (raw == raw_queries.constEnd())
        return std::nullopt;
    QueryExpander expander(raw_queries);
    const StoredQuery query = expander.expand(raw.value());
    queries.insert(key, query);
    return query;
}

bool check_parameters_given(const QVector<QueryParameter>& parameters)
{
    QStringList missing;
    for (const QueryParameter& p : parameters)
        if (!p.has_value)
            missing << p.Name;
    if (missing.isEmpty())
        return true;
    raise_engine_error(jet::TooFewParameters, QStringLiteral("Too few parameters. Expected %1. (No value for %2.)")
                                                  .arg(missing.size())
                                                  .arg(missing.join(QStringLiteral(", "))));
    return false;
}

// ---- QueryDef ----

QueryDef::QueryDef(std::shared_ptr<DatabaseCore> core, QString name, QString sql, QVector<QueryParameter> parameters,
                   QString runnable_sql)
    : core_(std::move(core)), name_(std::move(name)), sql_(std::move(sql)), parameters_(std::move(parameters)),
      runnable_sql_(std::move(runnable_sql))
{
}

bool QueryDef::set_parameter(const QString& name, const QVariant& value)
{
    for (QueryParameter& p : parameters_) {
        if (p.Name.compare(name, Qt::CaseInsensitive) == 0) {
            FieldInfo as_field;
            as_field.name = p.Name;
            as_field.type = p.Type;
            QVariant stored;
            if (!store_value(value, as_field, stored))
                return false;
            p.Value = stored;
            p.has_value = true;
            return true;
        }
    }
    raise_engine_error(jet::ItemNotFound, QStringLiteral("Item not found in this collection."));
    return false;
}

QVariant QueryDef::parameter(const QString& name) const
{
    for (const QueryParameter& p : parameters_)
        if (p.Name.compare(name, Qt::CaseInsensitive) == 0)
            return present_value(p.Value, p.Type);
    return QVariant();
}

bool QueryDef::bind_parameters(Statement& stmt)
{
    if (!check_parameters_given(parameters_))
        return false;
    for (const QueryParameter& p : parameters_) {
        if (!core_->connection.bind_named(stmt, p.Name, p.Value)) {
            core_->connection.raise_last_error(SQLITE_ERROR, runnable_sql_);
            return false;
        }
    }
    return true;
}

bool QueryDef::Execute(int)
{
    Err().Clear();
    if (!core_->open) {
        raise_engine_error(jet::ObjectClosed, QStringLiteral("Object invalid or no longer set."));
        return false;
    }
    Statement stmt;
    if (!core_->connection.prepare(runnable_sql_, stmt) || !bind_parameters(stmt))
        return false;
    if (!core_->connection.run(stmt))
        return false;
    records_affected_ = core_->connection.changes();
    core_->records_affected = records_affected_;
    return true;
}

std::unique_ptr<Recordset> QueryDef::OpenRecordset()
{
    Err().Clear();
    if (!core_->open) {
        raise_engine_error(jet::ObjectClosed, QStringLiteral("Object invalid or no longer set."));
        return nullptr;
    }
    if (!check_parameters_given(parameters_))
        return nullptr;
    auto store = std::make_shared<RowStore>();
    store->runnable_sql = runnable_sql_;
    store->parameters = parameters_;
    if (!store->load(*core_))
        return nullptr;
    return std::unique_ptr<Recordset>(new Recordset(core_, store));
}

// ---- Database ----

Database::Database(std::shared_ptr<DatabaseCore> core) : core_(std::move(core)) {}

Database::~Database()
{
    Close();
}

QString Database::Name() const { return core_->name; }
bool Database::is_open() const { return core_->open; }
long long Database::RecordsAffected() const { return core_->records_affected; }
Connection& Database::connection() { return core_->connection; }

bool Database::Execute(const QString& sql, int)
{
    Err().Clear();
    if (!core_->open) {
        raise_engine_error(jet::ObjectClosed, QStringLiteral("Object invalid or no longer set."));
        return false;
    }
    QString sqlite_text;
    QString runnable;
    if (!jet_to_sqlite(sql, sqlite_text) || !with_named_queries(*core_, sqlite_text, runnable))
        return false;
    long long affected = 0;
    if (!run_statements(core_->connection, runnable, affected))
        return false;
    core_->records_affected = affected;
    for (const QString& table : defined_tables(runnable))
        if (!apply_conventions(table))
            return false;
    return true;
}

bool Database::execute_native(const QString& sql)
{
    Err().Clear();
    long long affected = 0;
    if (!run_statements(core_->connection, sql, affected))
        return false;
    core_->records_affected = affected;
    return true;
}

bool Database::apply_conventions(const QString& table)
{
    return engine::apply_conventions(core_->connection, table);
}

std::unique_ptr<Recordset> Database::OpenRecordset(const QString& source)
{
    Err().Clear();
    if (!core_->open) {
        raise_engine_error(jet::ObjectClosed, QStringLiteral("Object invalid or no longer set."));
        return nullptr;
    }
    const QString trimmed = source.trimmed();
    auto store = std::make_shared<RowStore>();
    if (has_table(trimmed)) {
        store->runnable_sql = QStringLiteral("SELECT *, rowid AS __rowid__ FROM \"%1\"").arg(trimmed);
    } else if (core_->find_query(trimmed)) {
        auto def = QueryDefs(trimmed);
        return def ? def->OpenRecordset() : nullptr;
    } else if (is_plain_name(trimmed)) {
        raise_engine_error(jet::InputTableNotFound, input_not_found_text(trimmed));
        return nullptr;
    } else if (QString sqlite_text;
               !jet_to_sqlite(trimmed, sqlite_text) || !with_named_queries(*core_, sqlite_text, store->runnable_sql)) {
        return nullptr;
    }
    if (!store->load(*core_))
        return nullptr;
    return std::unique_ptr<Recordset>(new Recordset(core_, store));
}

bool Database::CreateQueryDef(const QString& name, const QString& sql)
{
    Err().Clear();
    if (!ensure_query_store(core_->connection))
        return false;
    QVector<QueryParameter> parameters;
    QString body;
    if (!query_text::split_parameters(sql, parameters, body))
        return false;
    Statement stmt;
    if (!core_->connection.prepare(QStringLiteral("INSERT INTO %1 (Query_Name, Query_SQL) VALUES (?, ?)").arg(QLatin1String(query_text::store_table)), stmt))
        return false;
    if (!core_->connection.bind_all(stmt, {name, sql}))
        return false;
    if (!core_->connection.run(stmt)) {
        if (Err().Number == jet::DuplicateKey)
            raise_engine_error(jet::ObjectExists, QStringLiteral("Object '%1' already exists.").arg(name));
        return false;
    }
    RawQuery query;
    if (parse_raw_query(name, sql, query))
        core_->remember_query(query);
    return true;
}

std::unique_ptr<QueryDef> Database::QueryDefs(const QString& name)
{
    Err().Clear();
    const std::optional<StoredQuery> q = core_->find_query(name);
    if (!q) {
        if (Err().Number == 0)
            raise_engine_error(jet::ItemNotFound, QStringLiteral("Item not found in this collection."));
        return nullptr;
    }
    return std::unique_ptr<QueryDef>(new QueryDef(core_, q->name, q->sql, q->parameters, q->runnable));
}

bool Database::DeleteQueryDef(const QString& name)
{
    Err().Clear();
    if (!core_->load_queries() || !core_->raw_queries.contains(key_of(name))) {
        raise_engine_error(jet::ItemNotFound, QStringLiteral("Item not found in this collection."));
        return false;
    }
    Statement stmt;
    if (!core_->connection.prepare(QStringLiteral("DELETE FROM %1 WHERE Query_Name = ?").arg(QLatin1String(query_text::store_table)), stmt)
        || !core_->connection.bind_all(stmt, {name}) || !core_->connection.run(stmt))
        return false;
    core_->forget_query(name);
    return true;
}

QStringList Database::QueryDef_names() const
{
    QStringList names;
    if (!core_->load_queries())
        return names;
    for (const RawQuery& q : core_->raw_queries)
        names << q.name;
    names.sort(Qt::CaseInsensitive);
    return names;
}

QStringList Database::TableDef_names() const
{
    QStringList names;
    Statement stmt;
    if (!core_->connection.prepare(QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite_%' "
                                                  "AND name <> '%1' ORDER BY rowid").arg(QLatin1String(query_text::store_table)),
                                   stmt))
        return names;
    while (sqlite3_step(stmt.get()) == SQLITE_ROW)
        names << column_value(stmt.get(), 0).toString();
    return names;
}

bool Database::has_table(const QString& name) const
{
    for (const QString& table : TableDef_names())
        if (table.compare(name, Qt::CaseInsensitive) == 0)
            return true;
    return false;
}

bool Database::Close()
{
    if (core_->open) {
        core_->connection.close();
        core_->open = false;
        core_->forget_queries();
    }
    return true;
}

}  // namespace engine
