// The grid's choice of rows, read back as the records' bookmarks.

#include "ui/toolkit/data_grid.h"

#include "screen_driver.h"
#include "support/temp_database.h"

#include <QHeaderView>
#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace screen_driver;

namespace {

TEST(DataGrid, RowsChosenWithTheMouseAreTheirRecordsBookmarks)
{
    testing_support::TempDatabase school;
    school.native(QStringLiteral("CREATE TABLE Terms (Term_id INTEGER PRIMARY KEY, Term_Name TEXT)"));
    school.native(QStringLiteral("INSERT INTO Terms VALUES (1, 'Autumn'), (2, 'Spring'), (3, 'Summer')"));
    auto terms = school.db().OpenRecordset(QStringLiteral("SELECT * FROM Terms ORDER BY Term_id"));
    ASSERT_TRUE(terms);

    DataGrid grid;
    grid.set_recordset(terms.get());
    grid.resize(400, 300);
    bring_to_front(&grid);
    QSignalSpy heads(&grid, &DataGrid::HeadClick);
    QSignalSpy moves(&grid, &DataGrid::RowColChange);

    auto row_point = [&grid](int row) { return grid.visualRect(grid.model()->index(row, 1)).center(); };
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, Qt::NoModifier, row_point(0));
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, Qt::ControlModifier, row_point(2));
    const QList<engine::Bookmark> chosen = grid.SelBookmarks();
    ASSERT_EQ(chosen.size(), 2);
    ASSERT_TRUE(terms->set_bookmark(chosen[1]));
    EXPECT_EQ(terms->Fields(QStringLiteral("Term_Name")).toString(), QStringLiteral("Summer"));
    EXPECT_EQ(grid.Bookmark(), chosen[1]);
    EXPECT_GE(moves.count(), 2);

    ASSERT_TRUE(grid.set_Bookmark(chosen[0]));
    EXPECT_EQ(grid.SelBookmarks(), QList<engine::Bookmark>{chosen[0]});

    QHeaderView* header = grid.horizontalHeader();
    QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(header->sectionViewportPosition(1) + 5, header->height() / 2));
    ASSERT_EQ(heads.count(), 1);
    EXPECT_EQ(heads.first().first().toInt(), 1);
}

}  // namespace
