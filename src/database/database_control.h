#pragma once
// The commands of the Database Control screen, without widgets: refreshing
// a database's stored queries, repairing it, backing the current database up
// and upgrading an old file. Each works on the name in the screen's box,
// checked first (a backup must be a new file, the others an existing one),
// and ends by opening the default database again. The outcome is in `status`;
// reports come as message boxes.

#include <QString>

struct TextBoxLike;

class DatabaseControl {
public:
    // The one command the screen offers, as its option buttons choose it.
    enum class Command { Upgrade, Backup, Repair, Refresh };

    QString status;  // txt_Status

    // Runs the command on the name in the box. `current_name` is the database
    // a backup copies.
    void run(Command command, TextBoxLike& name, const QString& current_name);

private:
    void refresh(const QString& name);
    void backup(const QString& current_name, const QString& backup_name);
    void repair(const QString& name);
    void upgrade(const QString& name);
};
