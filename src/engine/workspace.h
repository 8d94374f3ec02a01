#pragma once
// The engine's workspace: the open databases and the transactions over them.
// Transactions nest; an inner commit becomes final only when the outermost
// one commits, and a rollback at any level undoes everything since its
// BeginTrans, inner commits included.

#include "engine/database.h"

#include <QString>
#include <memory>
#include <vector>

namespace engine {

class Workspace {
public:
    Workspace() = default;
    ~Workspace();
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;

    // Opens an existing database file; null on failure (3024 missing, 3343 not a database).
    Database* OpenDatabase(const QString& name);
    // Makes a new, empty database file; null on failure (3204 if it exists).
    Database* CreateDatabase(const QString& name);
    // The open databases, first opened first.
    std::vector<Database*> Databases() const;

    bool BeginTrans();
    bool CommitTrans();
    bool Rollback();
    int transaction_depth() const { return depth_; }

    // Closes one database (it is removed from Databases()).
    void close_database(Database* db);
    // Closes all databases and ends open transactions by rolling them back.
    void Close();

private:
    bool on_each(const QString& sql);
    std::vector<std::unique_ptr<Database>> databases_;
    int depth_ = 0;
};

// DBEngine: the one default workspace and the file operations of the engine.
namespace DBEngine {
Workspace& Workspaces0();
// Lets the engine finish pending work; nothing to do on SQLite.
void Idle();
// Rewrites a closed database into a new file (3204 if the new file exists).
bool CompactDatabase(const QString& old_name, const QString& new_name);
// Checks a closed database and rebuilds it in place.
bool RepairDatabase(const QString& name);
}  // namespace DBEngine

}  // namespace engine
