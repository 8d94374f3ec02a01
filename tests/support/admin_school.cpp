#include "support/admin_school.h"

#include "engine/database.h"
#include "engine/err.h"
#include "engine/recordset.h"
#include "engine/workspace.h"
#include "support/table_dump.h"
#include "support/template_database.h"

#include <gtest/gtest.h>

namespace testing_support {

AdminSchool::AdminSchool() : SchoolMadeCurrent(StartingSettings::ProgramDefaults) {}

QString AdminSchool::new_database(const QString& name, bool blank_row) const
{
    return copy_of_new_database(file(name), blank_row);
}

QStringList AdminSchool::values_in(const QString& path, const QString& sql)
{
    QStringList found;
    engine::Workspace workspace;
    engine::Database* db = workspace.OpenDatabase(path);
    EXPECT_NE(db, nullptr) << path.toStdString();
    if (!db)
        return found;
    auto rows = db->OpenRecordset(sql);
    EXPECT_NE(rows, nullptr) << sql.toStdString() << "\n" << engine::Err().Description.toStdString();
    if (rows) {
        for (rows->MoveFirst(); !rows->at_eof(); rows->MoveNext())
            found << rows->Fields(rows->field(0).name).toString();
        rows.reset();
    }
    workspace.Close();
    return found;
}

QString AdminSchool::dump_of(const QString& path)
{
    engine::Workspace workspace;
    engine::Database* db = workspace.OpenDatabase(path);
    EXPECT_NE(db, nullptr) << path.toStdString();
    const QString text = db ? dump_tables(*db) : QString();
    workspace.Close();
    return text;
}

}  // namespace testing_support
