#include "database/tmp_tables_lock.h"

#include "engine/err.h"
#include "engine/msg_box.h"
#include "shell/error_log.h"

#include <QFileInfo>
#include <QLockFile>
#include <map>
#include <memory>

namespace {

struct Holding {
    std::unique_ptr<QLockFile> file;
    int count = 0;
};

// The locks this process holds, by lock file name.
std::map<QString, Holding>& holdings()
{
    static std::map<QString, Holding> held;
    return held;
}

std::chrono::milliseconds& wait_setting()
{
    static std::chrono::milliseconds wait{5000};
    return wait;
}

QString key_of(const QString& database)
{
    return TmpTablesLock::lock_file_of(database);
}

void report_refusal(const QString& database, QLockFile::LockError error, const QString& module)
{
    if (error == QLockFile::LockFailedError) {
        Report_Error(report::Detected,
                     QStringLiteral("Another invoicing or report run is using the database ") + database + QLatin1Char('\n')
                         + QStringLiteral("Please try again when it has finished."),
                     engine::mb::Critical, module, QStringLiteral("TmpTablesLock"));
        return;
    }
    engine::Err().Raise(engine::vberr::PermissionDenied,
                        QStringLiteral("Could not write the lock file ") + TmpTablesLock::lock_file_of(database));
    Report_Error(report::Unexpected, QStringLiteral("Could not prepare the temporary tables of ") + database,
                 engine::mb::Critical, module, QStringLiteral("TmpTablesLock"));
}

}  // namespace

QString TmpTablesLock::lock_file_of(const QString& database)
{
    return QFileInfo(database).absoluteFilePath() + QStringLiteral(".run-lock");
}

void TmpTablesLock::set_wait(std::chrono::milliseconds wait)
{
    wait_setting() = wait;
}

std::chrono::milliseconds TmpTablesLock::wait()
{
    return wait_setting();
}

bool TmpTablesLock::acquire(const QString& database, const QString& module)
{
    if (held())
        return true;
    const QString key = key_of(database);
    Holding& holding = holdings()[key];
    if (holding.count == 0) {
        auto file = std::make_unique<QLockFile>(key);
        // A run can last as long as its screen is open: only a lock whose
        // program has died on this machine is taken over, never one by age.
        file->setStaleLockTime(std::chrono::milliseconds::zero());
        if (!file->tryLock(wait_setting())) {
            const QLockFile::LockError error = file->error();
            holdings().erase(key);
            report_refusal(database, error, module);
            return false;
        }
        holding.file = std::move(file);
    }
    ++holding.count;
    database_ = database;
    return true;
}

void TmpTablesLock::release()
{
    if (!held())
        return;
    const QString key = key_of(database_);
    database_.clear();
    auto it = holdings().find(key);
    if (it == holdings().end())
        return;
    if (--it->second.count == 0)
        holdings().erase(it);  // the lock file goes with its QLockFile
}
