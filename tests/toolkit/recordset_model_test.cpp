// The grid's model: one row per record in order, each carrying its bookmark.

#include "toolkit/recordset_model.h"

#include "support/temp_database.h"

#include <gtest/gtest.h>

namespace {

TEST(RecordsetModel, RowsFollowTheRecordSetAndCarryTheirBookmarks)
{
    testing_support::TempDatabase school;
    school.native(QStringLiteral("CREATE TABLE Terms (Term_id INTEGER PRIMARY KEY, Term_Name TEXT)"));
    school.native(QStringLiteral("INSERT INTO Terms VALUES (1, 'Spring'), (2, 'Summer'), (3, 'Autumn')"));
    auto terms = school.db().OpenRecordset(QStringLiteral("SELECT * FROM Terms ORDER BY Term_Name"));
    ASSERT_TRUE(terms);
    RecordsetModel model;
    model.set_recordset(terms.get());
    ASSERT_EQ(model.rowCount(), 3);
    EXPECT_EQ(model.columnCount(), 2);
    EXPECT_EQ(model.headerData(1, Qt::Horizontal).toString(), QStringLiteral("Term_Name"));
    EXPECT_EQ(model.index(0, 1).data().toString(), QStringLiteral("Autumn"));

    // The record set's own cursor is not moved by the model.
    EXPECT_EQ(terms->Fields(QStringLiteral("Term_Name")).toString(), QStringLiteral("Autumn"));
    ASSERT_TRUE(terms->set_bookmark(model.bookmark_at(2)));
    EXPECT_EQ(terms->Fields(QStringLiteral("Term_Name")).toString(), QStringLiteral("Summer"));
    EXPECT_EQ(model.row_of(terms->bookmark()), 2);

    model.set_columns({QStringLiteral("Term_Name")}, {QStringLiteral("Term")});
    EXPECT_EQ(model.columnCount(), 1);
    EXPECT_EQ(model.headerData(0, Qt::Horizontal).toString(), QStringLiteral("Term"));
    EXPECT_EQ(model.bookmark_at(3), -1);
}

}  // namespace
