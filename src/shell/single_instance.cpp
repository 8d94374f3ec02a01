#include "shell/single_instance.h"

#include <QDir>
#include <QLockFile>
#include <QStandardPaths>

SingleInstance::SingleInstance(const QString& folder)
{
    QString where = folder;
    if (where.isEmpty())
        where = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (where.isEmpty())
        where = QDir::tempPath();
    QDir().mkpath(where);
    lock_ = std::make_unique<QLockFile>(QDir(where).filePath(QStringLiteral("quillary.lock")));
    // A lock left by a copy that died is taken over; a live copy's never is.
    lock_->setStaleLockTime(0);
}

SingleInstance::~SingleInstance() = default;

bool SingleInstance::acquire()
{
    return lock_->tryLock(0);
}
