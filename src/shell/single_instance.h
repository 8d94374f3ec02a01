#pragma once
// The test for another running copy of the program: a lock file held by the
// first process for its life, per user.

#include <QString>
#include <memory>

class QLockFile;

class SingleInstance {
public:
    // The lock lives in the user's runtime folder unless a folder is given.
    explicit SingleInstance(const QString& folder = QString());
    ~SingleInstance();
    // True when this process is the only one running; it then holds the lock.
    bool acquire();

private:
    std::unique_ptr<QLockFile> lock_;
};
