// The grid's bookkeeping on its own: which data row each cell shows as the
// view scrolls, rows added, inserted and removed in the middle, the
// highlight following its data, and the calling screen's mistakes reported.

#include "toolkit/text_box_grid.h"

#include "support/scripted_boxes.h"

#include <gtest/gtest.h>

using testing_support::ScriptedBoxes;

namespace {

txg_column column(const char* title, short type = txg::Locked, bool tooltip = false,
                  std::optional<colours::Rgb> colour = std::nullopt)
{
    return txg_column{QString::fromLatin1(title), type, 0, tooltip, colour};
}

// Three columns (the last one hidden) over 3 headers and 2 visible rows.
class Grid : public ::testing::Test {
protected:
    void SetUp() override
    {
        grid.txg_Initialise(txg::Whole_Row, {column(" Name ", txg::Locked, true), column("Mark", txg::Editable, false, colours::At_Rest),
                                             column("id", txg::Invisible)});
    }
    void add(std::initializer_list<const char*> names)
    {
        for (const char* name : names)
            grid.txg_add_row(false, {QString::fromLatin1(name), QString(), QStringLiteral("k")});
    }
    // The names the cells of the first column show, top to bottom.
    QString shown() const { return grid.elements()[0].text + QLatin1Char('/') + grid.elements()[3].text; }
    bool lit(int element) const { return grid.elements()[element].background == txg::Highlight; }

    TextBoxGrid grid{3, 6};
};

TEST_F(Grid, AnEmptyGridShowsBlankLockedCellsAndWipesWhatIsTypedIntoThem)
{
    EXPECT_EQ(grid.headers()[0].text, QStringLiteral("Name"));
    EXPECT_FALSE(grid.headers()[2].visible);  // all columns fit: the hidden one's cells go
    EXPECT_FALSE(grid.elements()[5].visible);
    EXPECT_FALSE(grid.hscroll().visible);
    for (const txg_cell& cell : grid.elements())
        EXPECT_TRUE(cell.locked && cell.text.isEmpty());
    grid.txg_click(0);
    EXPECT_EQ(grid.record().highlight_row, -1);
    QString old = QStringLiteral("untouched");
    grid.txg_change(1, QStringLiteral("typed"), old);
    EXPECT_EQ(old, QString());
    EXPECT_EQ(grid.elements()[1].text, QString());
}

TEST_F(Grid, RowsGrowTheBarAndTheLastOneRemovedLeavesItEmptyForReuse)
{
    add({"Ann"});
    EXPECT_EQ(grid.vscroll().max, 1);
    EXPECT_FALSE(grid.elements()[1].locked);  // the editable Mark
    EXPECT_EQ(grid.elements()[1].background, colours::At_Rest);
    EXPECT_EQ(grid.elements()[0].tooltip, QStringLiteral("Ann"));
    add({"Bea"});
    EXPECT_EQ(grid.vscroll().max, 2);
    grid.txg_remove_row(1);
    grid.txg_remove_row(1);
    EXPECT_EQ(grid.record().last_row, -1);
    EXPECT_EQ(grid.vscroll().max, grid.vscroll().min);
    add({"Cat"});
    EXPECT_EQ(grid.array_rows(), 1);
    EXPECT_EQ(shown(), QStringLiteral("Cat/"));
}

TEST_F(Grid, ScrollingShowsOtherRowsAndTheHighlightStaysWithItsRow)
{
    add({"Ann", "Bea", "Cat", "Dot"});
    grid.txg_click(3);  // Bea
    EXPECT_EQ(grid.record().highlight_row, 2);
    EXPECT_TRUE(lit(3) && lit(5));  // the hidden column's blank cell too
    grid.txg_vscroll_change(3);
    EXPECT_EQ(shown(), QStringLiteral("Cat/Dot"));
    EXPECT_FALSE(lit(0) || lit(3));
    grid.txg_vscroll_change(2);
    EXPECT_TRUE(lit(0));
    grid.txg_vscroll_change(4);
    grid.txg_click(3);  // a blank row below the last: nothing changes
    EXPECT_EQ(grid.record().highlight_row, 2);
    grid.txg_vscroll_change(2);
    grid.txg_click(0);  // Bea again: off
    EXPECT_EQ(grid.record().highlight_row, -1);
}

TEST_F(Grid, InsertingAndRemovingAboveTheHighlightKeepItOnItsData)
{
    add({"Ann", "Bea", "Cat"});
    grid.txg_highlight(3);
    grid.txg_insert_row(1, {QStringLiteral("New")});
    EXPECT_EQ(grid.record().highlight_row, 4);
    EXPECT_EQ(grid.row_texts(4).first(), QStringLiteral("Cat"));
    EXPECT_EQ(shown(), QStringLiteral("New/Ann"));
    EXPECT_EQ(grid.vscroll().max, 4);
    grid.txg_remove_row(2);
    EXPECT_EQ(grid.record().highlight_row, 3);
    EXPECT_EQ(grid.row_texts(3).first(), QStringLiteral("Cat"));
    // Removing the highlighted row takes the highlight with it.
    grid.txg_remove_row(3);
    EXPECT_EQ(grid.record().highlight_row, -1);
}

TEST_F(Grid, AViewScrolledPastANewEndShowsBlanksUntilTheNextScroll)
{
    add({"Ann", "Bea", "Cat"});
    grid.txg_vscroll_change(3);
    grid.txg_remove_row(3);
    EXPECT_EQ(grid.vscroll().value, 2);
    EXPECT_EQ(grid.record().first_row, 3);
    EXPECT_EQ(shown(), QStringLiteral("/"));
}

TEST_F(Grid, AChangeGivesTheOldTextAndKeepsTheNewOne)
{
    add({"Ann"});
    QString old;
    grid.txg_change(1, QStringLiteral("72"), old);
    grid.txg_change(1, QStringLiteral("75"), old);
    EXPECT_EQ(old, QStringLiteral("72"));
    EXPECT_EQ(grid.row_texts(1)[1], QStringLiteral("75"));
    EXPECT_EQ(grid.record().current_col, 2);
}

TEST_F(Grid, MistakesOfTheCallerAreReportedOnceEachAndTheGridGoesOn)
{
    ScriptedBoxes()
        .expect(QStringLiteral("Programming Error - too much or too little data for a row"), engine::answer::Ok,
                engine::mb::Critical)
        .expect(QStringLiteral("Programming Error - invalid row number"))
        .expect(QStringLiteral("Programming Error - invalid column number"))
        .during([&] {
            grid.txg_add_row(false, {QStringLiteral("Ann"), QStringLiteral("1"), QStringLiteral("k"), QStringLiteral("extra")});
            grid.txg_remove_row(5);
            QString text;
            colours::Rgb colour;
            bool highlighted = false;
            EXPECT_FALSE(grid.txg_get_data(1, 4, text, colour, highlighted));
        });
    EXPECT_EQ(grid.row_texts(1), (QStringList{QStringLiteral("Ann"), QStringLiteral("1"), QStringLiteral("k")}));
}

TEST(GridWithMoreColumnsThanHeaders, ShowsTheBarUpToTheLastVisibleColumn)
{
    TextBoxGrid grid(2, 2);
    grid.txg_Initialise(txg::Whole_Row, {column("A"), column("B"), column("C"), column("key", txg::Invisible)});
    EXPECT_TRUE(grid.hscroll().visible);
    EXPECT_EQ(grid.hscroll().max, 3);
    grid.txg_add_row(false, {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"), QStringLiteral("k")});
    grid.txg_hscroll_change(3);
    EXPECT_EQ(grid.headers()[0].text, QStringLiteral("C"));
    EXPECT_EQ(grid.headers()[1].text, QString());  // the hidden column lies past the bar's end
    EXPECT_EQ(grid.elements()[1].text, QString());
}

}  // namespace
