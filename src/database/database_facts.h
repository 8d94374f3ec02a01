#pragma once
// What the Database information screen tells about the default database:
// its file, size, creation and last backup.

#include <QString>

struct DatabaseFacts {
    QString file_name;    // lbl_dbfilename: the default database
    QString size;         // lbl_filesize: its length in bytes; empty when it can't be read
    QString created;      // lbl_Created
    QString backup_date;  // lbl_BU_date: empty for a backup that never happened
    QString backup_file;  // lbl_BU_file
};

// The facts as they stand: the file from the settings, the dates (in the
// long date format) and backup name from the open database's system record.
// With no database open the record says nothing.
DatabaseFacts Gather_Database_Facts();
