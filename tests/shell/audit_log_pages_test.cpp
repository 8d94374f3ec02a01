#include "shell/audit_log_pages.h"
#include "support/scripted_boxes.h"
#include "support/test_folder.h"

#include <QFileInfo>
#include <optional>

#include <gtest/gtest.h>

namespace {

using testing_support::ScriptedBoxes;

const QString beginning = QStringLiteral("  --  Beginning of File  --  ");
const QString ending = QStringLiteral("  --  End of File  --  ");

class AuditLogPagerTest : public ::testing::Test {
protected:
    QString write_log(const QByteArray& content)
    {
        return dir.write_file(QStringLiteral("audit.log"), QString::fromUtf8(content));
    }

    // Lines of 29 characters and a line end, without blanks, so that no
    // trimming at a block boundary can hide a fault.
    static QByteArray numbered_lines(int count)
    {
        QByteArray content;
        for (int i = 0; i < count; ++i)
            content += line(i) + '\n';
        return content;
    }
    static QByteArray line(int i) { return QByteArray("entry-") + QByteArray::number(i).rightJustified(4, '0') + QByteArray(19, 'x'); }

    testing_support::TestFolder dir;
    AuditLogPager pager;
};

// A log opens at its last block; a missing one is made, empty.
TEST_F(AuditLogPagerTest, AShortLogIsOnePageBetweenTheMarkersAndOneOfABlocksLengthTwo)
{
    struct Case {
        const char* what;
        std::optional<QByteArray> content;  // none: no file
        int blocks;
        bool up;
        QString shown;
    };
    const QList<Case> cases = {
        {"shorter than a block", QByteArray("first entry\nsecond entry\n"), 1, false,
         beginning + "\nfirst entry\nsecond entry\n\n" + ending + "\n"},
        {"exactly a block long", QByteArray(AuditLogPager::block_size - 1, 'a') + '\n', 2, true, ending + "\n"},
        {"missing", std::nullopt, 1, false, beginning + "\n\n" + ending + "\n"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const QString log = c.content ? write_log(*c.content) : dir.file(QStringLiteral("new.log"));
        ASSERT_EQ(pager.activate(log), AuditLogPager::Activation::Shown);
        EXPECT_EQ(QFileInfo(log).size(), c.content.value_or(QByteArray()).size());
        EXPECT_EQ(pager.block_count(), c.blocks);
        EXPECT_EQ(pager.current_block(), c.blocks);
        EXPECT_EQ(pager.up_enabled(), c.up);
        EXPECT_FALSE(pager.down_enabled());
        EXPECT_EQ(pager.text_to_show(), c.shown);
    }
}

TEST_F(AuditLogPagerTest, LogThatCannotBeOpenedIsReportedAndLeavesTheViewerEmpty)
{
    write_log("blocks the folder\n");
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Could not open Audit Log File, error:76 - Path not found"), engine::answer::Ok, 16);

    EXPECT_EQ(pager.activate(dir.file(QStringLiteral("audit.log/inner.log"))),
              AuditLogPager::Activation::OpenFailed);

    EXPECT_TRUE(pager.text_to_show().isEmpty());
    EXPECT_FALSE(pager.up_enabled());
    EXPECT_FALSE(pager.down_enabled());
}

// ---- paging through several blocks -------------------------------------------

class AuditLogPagingTest : public AuditLogPagerTest {
protected:
    // 200 lines of 30 bytes: line 139 runs from byte 4170 to 4199, so the
    // first block boundary (4192) cuts it.
    static constexpr int cut_line = 139;

    void SetUp() override
    {
        ASSERT_EQ(pager.activate(write_log(numbered_lines(200))), AuditLogPager::Activation::Shown);
    }

    static QString whole(int i) { return QString::fromLatin1(line(i)) + QLatin1Char('\n'); }
};

TEST_F(AuditLogPagingTest, UpAndDownShowTheLineCutByTheBoundaryWholeOnBothPages)
{
    EXPECT_EQ(pager.block_count(), 2);
    EXPECT_EQ(pager.current_block(), 2);
    EXPECT_TRUE(pager.up_enabled());
    EXPECT_FALSE(pager.down_enabled());
    EXPECT_TRUE(pager.text_to_show().endsWith(whole(199) + QStringLiteral("\n") + ending + QStringLiteral("\n")));
    EXPECT_FALSE(pager.text_to_show().contains(beginning));

    ASSERT_TRUE(pager.page_up());
    EXPECT_EQ(pager.current_block(), 1);
    EXPECT_FALSE(pager.up_enabled());
    EXPECT_TRUE(pager.down_enabled());
    EXPECT_TRUE(pager.text_to_show().startsWith(beginning + QStringLiteral("\n") + whole(0)));
    EXPECT_TRUE(pager.text_to_show().endsWith(whole(cut_line - 1) + whole(cut_line)));

    ASSERT_TRUE(pager.page_down());
    EXPECT_EQ(pager.current_block(), 2);
    EXPECT_TRUE(pager.text_to_show().startsWith(whole(cut_line) + whole(cut_line + 1)));
    EXPECT_FALSE(pager.down_enabled());

    // Previous never goes below the first block.
    ASSERT_TRUE(pager.Get_Page(AuditLogPager::First));
    ASSERT_TRUE(pager.Get_Page(AuditLogPager::Previous));

    EXPECT_EQ(pager.current_block(), 1);
    EXPECT_TRUE(pager.block_text().startsWith(QStringLiteral("\n") + beginning + QStringLiteral("\n")));
}

TEST_F(AuditLogPagingTest, SplitKeepsWholeLinesAndCutsThePartialOnes)
{
    ASSERT_TRUE(pager.Get_Page(AuditLogPager::Last));
    QString start_fragment, end_fragment;

    pager.Split_Page(start_fragment, end_fragment);

    // Block 2 starts in the middle of the cut line.
    EXPECT_EQ(start_fragment, whole(cut_line).mid(4192 - 4170));
    EXPECT_TRUE(end_fragment.isEmpty());
    EXPECT_TRUE(pager.block_text().startsWith(whole(cut_line + 1)));
}

TEST_F(AuditLogPagerTest, SplitOfTextWithoutLineEndMovesItAllToTheStartFragment)
{
    // One block of a single line longer than the block: its middle block has no line end.
    const QString log = write_log(QByteArray(3 * AuditLogPager::block_size, 'z'));
    ASSERT_EQ(pager.activate(log), AuditLogPager::Activation::Shown);
    ASSERT_TRUE(pager.Get_Page(AuditLogPager::Previous));
    QString start_fragment, end_fragment;

    pager.Split_Page(start_fragment, end_fragment);

    EXPECT_EQ(start_fragment, QString(AuditLogPager::block_size, QLatin1Char('z')));
    EXPECT_TRUE(end_fragment.isEmpty());
    EXPECT_TRUE(pager.block_text().isEmpty());
}

TEST_F(AuditLogPagerTest, CharacterCutByTheBoundaryIsReadWhole)
{
    // "é" is two bytes in UTF-8; put its first byte on the last place of block 1.
    QByteArray content(AuditLogPager::block_size - 6, 'a');
    content += "\nDupr\xc3\xa9-family\n";
    ASSERT_EQ(content.indexOf("\xc3"), AuditLogPager::block_size - 1);
    const QString log = write_log(content);
    ASSERT_EQ(pager.activate(log), AuditLogPager::Activation::Shown);

    ASSERT_TRUE(pager.page_up());
    ASSERT_TRUE(pager.page_down());

    EXPECT_TRUE(pager.text_to_show().startsWith(QStringLiteral("Dupr\u00e9-family\n"))) << pager.text_to_show().toStdString();
}

}  // namespace
