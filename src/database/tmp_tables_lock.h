#pragma once
// The temporary tables (Tmp_Terms, Tmp_Courses, Tmp_Pupils, Tmp_Activities,
// Tmp_Invoices, Tmp_CourseCosts) live in the database file, so two runs on
// one file, from this program and the command-line tool or from two desks,
// would empty and fill each other's selections. Whoever fills them holds this
// lock, a lock file beside the database, from preparing the tables until it
// has finished with them. Another run waits a short while for it and is then
// refused with a message naming the database.
//
// Within one process the lock is re-entrant: a run that holds it may run
// scripts and deletions that take it again.

#include <QString>
#include <chrono>

class TmpTablesLock {
public:
    // Takes the lock of `database` (a file name), waiting up to the wait set
    // below; reports the refusal and gives false when another run holds it.
    bool acquire(const QString& database, const QString& module);
    // Gives the lock back; nothing when it is not held.
    void release();
    bool held() const { return !database_.isEmpty(); }

    TmpTablesLock() = default;
    ~TmpTablesLock() { release(); }
    TmpTablesLock(const TmpTablesLock&) = delete;
    TmpTablesLock& operator=(const TmpTablesLock&) = delete;

    // How long a run waits for another to finish (five seconds unless set).
    static void set_wait(std::chrono::milliseconds wait);
    static std::chrono::milliseconds wait();

    // The lock file of a database.
    static QString lock_file_of(const QString& database);

private:
    QString database_;
};
