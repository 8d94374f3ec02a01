#include "database/database_facts.h"

#include "database/db_handling.h"
#include "engine/jet_date.h"
#include "engine/vb_values.h"
#include "shell/locale_formats.h"
#include "shell/settings.h"

#include <QFileInfo>

namespace {

QString long_date(const QDateTime& value)
{
    return value.isValid() ? vb::Format(value, Glob_Date_Format()) : QString();
}

// The zero date is how a backup that never happened is stored.
QString backup_date(const QDateTime& value)
{
    return value.isValid() && value.date() == engine::zero_date() ? QString() : long_date(value);
}

}  // namespace

DatabaseFacts Gather_Database_Facts()
{
    DatabaseFacts facts;
    facts.file_name = Settings().default_database;
    const QFileInfo file(facts.file_name.trimmed());
    if (!facts.file_name.trimmed().isEmpty() && file.isFile())
        facts.size = QString::number(file.size());
    if (!Current_Db())
        return facts;
    const SystemRecord& record = Sys_Record();
    facts.created = long_date(record.creation_date);
    facts.backup_date = backup_date(record.backup_date);
    facts.backup_file = record.backup_filename;
    return facts;
}
