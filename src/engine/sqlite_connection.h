#pragma once
// One SQLite connection with the program's conventions installed: foreign
// keys enforced, the case-insensitive Unicode collation, the Jet functions.
// Failures are turned into Jet's error numbers.

#include <QString>
#include <QVariant>
#include <QVector>

struct sqlite3;
struct sqlite3_stmt;

namespace engine {

// A prepared statement, finalized when it goes out of scope.
class Statement {
public:
    Statement() = default;
    explicit Statement(sqlite3_stmt* stmt) : stmt_(stmt) {}
    Statement(Statement&& other) noexcept : stmt_(other.stmt_) { other.stmt_ = nullptr; }
    Statement& operator=(Statement&& other) noexcept;
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    sqlite3_stmt* get() const { return stmt_; }
    explicit operator bool() const { return stmt_ != nullptr; }

private:
    sqlite3_stmt* stmt_ = nullptr;
};

class Connection {
public:
    Connection() = default;
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    // Opens an existing file (create false) or makes a new one (create true).
    // Raises 3024 when the file isn't there, 3204 when it exists and create is
    // asked, 3343 when it isn't a database.
    bool open(const QString& path, bool create);
    void close();
    bool is_open() const { return db_ != nullptr; }
    sqlite3* handle() const { return db_; }

    // Runs statements that return no rows; raises the mapped error on failure.
    bool exec(const QString& sql);
    // Prepares one statement; raises on failure.
    bool prepare(const QString& sql, Statement& out);
    // Binds positional values (1-based in SQLite; here 0-based list).
    bool bind_all(Statement& stmt, const QVector<QVariant>& values);
    bool bind_named(Statement& stmt, const QString& name, const QVariant& value);
    // Steps to the end of a statement that returns no rows.
    bool run(Statement& stmt);

    // Raises the engine error that SQLite's last failure stands for.
    void raise_last_error(int rc, const QString& sql);

    long long changes() const;
    long long last_insert_rowid() const;

private:
    sqlite3* db_ = nullptr;
};

// SQLite reads SQL text only up to a NUL: such a text is refused (3075)
// rather than run in part. True when it was refused.
bool refuse_nul_in_sql(const QString& sql);

// Binds one value, converting the program's value types to stored forms.
bool bind_value(sqlite3_stmt* stmt, int index, const QVariant& value);
// Reads column i of the current row as a QVariant of the storage type.
QVariant column_value(sqlite3_stmt* stmt, int i);

// The Jet error (number, description) that an SQLite failure stands for.
struct MappedError {
    int number;
    QString description;
};
MappedError map_sqlite_error(int extended_code, const QString& message, const QString& sql);

}  // namespace engine
