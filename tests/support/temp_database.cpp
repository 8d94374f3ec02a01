#include "support/temp_database.h"

#include "engine/err.h"
#include "support/database_file.h"

#include <gtest/gtest.h>

namespace testing_support {

TempDatabase::TempDatabase() : workspace_(std::make_unique<engine::Workspace>())
{
    path_ = dir_.filePath(QStringLiteral("school.mdb"));
    db_ = workspace_->CreateDatabase(path_);
    EXPECT_NE(db_, nullptr) << engine::Err().Description.toStdString();
}

TempDatabase::~TempDatabase()
{
    workspace_->Close();
}

void TempDatabase::native(const QString& sql)
{
    EXPECT_TRUE(db_->execute_native(sql)) << engine::Err().Number << " " << engine::Err().Description.toStdString()
                                          << "\n" << sql.toStdString();
}

QVariant TempDatabase::scalar(const QString& sql)
{
    return scalar_of(*db_, sql);
}

}  // namespace testing_support
