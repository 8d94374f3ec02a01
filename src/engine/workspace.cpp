#include "engine/workspace.h"

#include "engine/database_core.h"
#include "engine/err.h"

#include <QFile>
#include <QFileInfo>
#include <sqlite3.h>

namespace engine {

Workspace::~Workspace()
{
    Close();
}

Database* Workspace::OpenDatabase(const QString& name)
{
    Err().Clear();
    auto core = std::make_shared<DatabaseCore>();
    if (!core->connection.open(name, false))
        return nullptr;
    core->name = name;
    core->open = true;
    // A database opened inside a transaction joins it, as all of a workspace's databases do.
    for (int level = 1; level <= depth_; ++level)
        core->connection.exec(level == 1 ? QStringLiteral("BEGIN") : QStringLiteral("SAVEPOINT qy_%1").arg(level));
    databases_.push_back(std::unique_ptr<Database>(new Database(core)));
    return databases_.back().get();
}

Database* Workspace::CreateDatabase(const QString& name)
{
    Err().Clear();
    auto core = std::make_shared<DatabaseCore>();
    if (!core->connection.open(name, true))
        return nullptr;
    core->name = name;
    core->open = true;
    databases_.push_back(std::unique_ptr<Database>(new Database(core)));
    return databases_.back().get();
}

std::vector<Database*> Workspace::Databases() const
{
    std::vector<Database*> open;
    for (const auto& db : databases_)
        open.push_back(db.get());
    return open;
}

bool Workspace::on_each(const QString& sql)
{
    for (const auto& db : databases_)
        if (!db->connection().exec(sql))
            return false;
    return true;
}

bool Workspace::BeginTrans()
{
    Err().Clear();
    const int level = depth_ + 1;
    if (!on_each(level == 1 ? QStringLiteral("BEGIN") : QStringLiteral("SAVEPOINT qy_%1").arg(level)))
        return false;
    depth_ = level;
    return true;
}

bool Workspace::CommitTrans()
{
    Err().Clear();
    if (depth_ == 0) {
        raise_engine_error(jet::NoTransaction, QStringLiteral("Commit or Rollback without BeginTrans."));
        return false;
    }
    if (!on_each(depth_ == 1 ? QStringLiteral("COMMIT") : QStringLiteral("RELEASE qy_%1").arg(depth_)))
        return false;
    --depth_;
    return true;
}

bool Workspace::Rollback()
{
    Err().Clear();
    if (depth_ == 0) {
        raise_engine_error(jet::NoTransaction, QStringLiteral("Commit or Rollback without BeginTrans."));
        return false;
    }
    const bool ok = on_each(depth_ == 1 ? QStringLiteral("ROLLBACK")
                                        : QStringLiteral("ROLLBACK TO qy_%1; RELEASE qy_%1").arg(depth_));
    --depth_;
    return ok;
}

void Workspace::close_database(Database* db)
{
    for (auto it = databases_.begin(); it != databases_.end(); ++it) {
        if (it->get() == db) {
            if (depth_ > 0)
                db->connection().exec(QStringLiteral("ROLLBACK"));
            db->Close();
            databases_.erase(it);
            return;
        }
    }
}

void Workspace::Close()
{
    while (!databases_.empty())
        close_database(databases_.back().get());
    depth_ = 0;
}

namespace DBEngine {

Workspace& Workspaces0()
{
    static Workspace workspace;
    return workspace;
}

void Idle() {}

bool CompactDatabase(const QString& old_name, const QString& new_name)
{
    Err().Clear();
    if (QFileInfo::exists(new_name)) {
        raise_engine_error(jet::DatabaseExists, QStringLiteral("Database already exists."));
        return false;
    }
    Connection source;
    if (!source.open(old_name, false))
        return false;
    QString target = new_name;
    target.replace(QLatin1Char('\''), QLatin1String("''"));
    return source.exec(QStringLiteral("VACUUM INTO '%1'").arg(target));
}

bool RepairDatabase(const QString& name)
{
    Err().Clear();
    Connection db;
    if (!db.open(name, false))
        return false;
    Statement check;
    if (!db.prepare(QStringLiteral("PRAGMA integrity_check"), check))
        return false;
    QString verdict;
    if (sqlite3_step(check.get()) == SQLITE_ROW)
        verdict = column_value(check.get(), 0).toString();
    check = Statement();
    // Rebuilding the indexes mends what the check finds in them; VACUUM rewrites the file.
    if (!db.exec(QStringLiteral("REINDEX; VACUUM;")))
        return false;
    if (verdict != QLatin1String("ok")) {
        Statement again;
        if (!db.prepare(QStringLiteral("PRAGMA integrity_check"), again))
            return false;
        if (sqlite3_step(again.get()) != SQLITE_ROW || column_value(again.get(), 0).toString() != QLatin1String("ok")) {
            raise_engine_error(jet::UnrecognizedFormat, QStringLiteral("The database could not be repaired: %1").arg(verdict));
            return false;
        }
    }
    return true;
}

}  // namespace DBEngine

}  // namespace engine
