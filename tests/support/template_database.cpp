#include "support/template_database.h"

#include "database/schema.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace testing_support {

namespace {

QString template_database(bool with_standard_values)
{
    static QTemporaryDir folder;
    const QString made = folder.filePath(with_standard_values ? QStringLiteral("blank.qdb") : QStringLiteral("empty.qdb"));
    if (!QFile::exists(made)) {
        EXPECT_TRUE(DB_Create_Database(made, with_standard_values));
    }
    return made;
}

}  // namespace

QString copy_of_new_database(const QString& target, bool with_standard_values)
{
    EXPECT_TRUE(QFile::copy(template_database(with_standard_values), target)) << target.toStdString();
    QFile(target).setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    return target;
}

}  // namespace testing_support
