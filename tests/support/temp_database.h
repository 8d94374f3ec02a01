#pragma once
// A database file in a temporary folder, opened in its own workspace, for
// tests of the engine and of the routines built on it.

#include "engine/database.h"
#include "engine/workspace.h"

#include <QTemporaryDir>
#include <memory>

namespace testing_support {

class TempDatabase {
public:
    // Creates an empty database file "school.mdb" in a fresh folder.
    TempDatabase();
    ~TempDatabase();

    engine::Workspace& workspace() { return *workspace_; }
    engine::Database& db() { return *db_; }
    QString path() const { return path_; }
    QString folder() const { return dir_.path(); }

    // Runs SQLite text; fails the test on error.
    void native(const QString& sql);
    // A single value of a query, for assertions.
    QVariant scalar(const QString& sql);

private:
    QTemporaryDir dir_;
    QString path_;
    std::unique_ptr<engine::Workspace> workspace_;
    engine::Database* db_ = nullptr;
};

}  // namespace testing_support
