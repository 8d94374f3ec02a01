// Help in the program's own window: a screen's Help opens the manual at that
// screen's page, the contents and Back and Forward move about it, and a
// manual that isn't installed is said to be missing.

#include "ui/toolkit/help_window.h"

#include "engine/msg_box.h"
#include "screen_driver.h"
#include "shell/install_folder.h"
#include "support/scripted_boxes.h"
#include "toolkit/help_pages.h"
#include "ui/people/frm_teachers.h"
#include "ui/toolkit/screen_kit.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPushButton>
#include <QTextBrowser>
#include <QTextCursor>
#include <QTextDocument>

#include <gtest/gtest.h>

using namespace screen_driver;
using testing_support::ScriptedBoxes;

namespace {

// A small manual: the contents, the Teachers and Families pages, each
// with a link to another.
const struct {
    const char* file;
    const char* title;
    const char* link_to;
    const char* link_text;
} manual_pages[] = {
    {"index.html", "Contents", "1640.html", "Teachers page"},
    {"1640.html", "Teachers", "1610.html", "Families page"},
    {"1610.html", "Families", "index.html", "Back to the contents"},
};

class HelpWindowTest : public ScreenTest<frm_Teachers> {
protected:
    void SetUp() override
    {
        ScreenTest::SetUp();
        set_install_folder_for_tests(school.file(QStringLiteral("install")));
        help::help_is_open() = false;
    }
    void TearDown() override
    {
        if (HelpWindow* window = existing_help_window())
            window->close();
        set_install_folder_for_tests(QString());
        ScreenTest::TearDown();
    }

    void install_manual()
    {
        ASSERT_TRUE(QDir().mkpath(school.file(QStringLiteral("install/manual"))));
        for (const auto& page : manual_pages)
            school.write_file(QStringLiteral("install/manual/") + QLatin1String(page.file),
                              QStringLiteral("<html><head><title>%1</title></head><body><h1>%1</h1>"
                                             "<p>Some words, then <a href=\"%2\">%3</a>.</p></body></html>")
                                  .arg(QLatin1String(page.title), QLatin1String(page.link_to), QLatin1String(page.link_text)));
    }

    static QString page_on_view()
    {
        HelpWindow* window = existing_help_window();
        return window && window->isVisible() ? QFileInfo(window->page()).fileName() : QString();
    }

    // Clicks a link of the page on view, found by its words.
    static void click_link(const QString& words)
    {
        QTextBrowser* browser = existing_help_window()->txt_Help;
        const QTextCursor found = browser->document()->find(words);
        ASSERT_FALSE(found.isNull()) << words.toStdString();
        QTextCursor inside(browser->document());
        inside.setPosition(found.selectionStart() + 1);
        const QPoint where = browser->cursorRect(inside).center();
        QTest::mouseClick(browser->viewport(), Qt::LeftButton, Qt::NoModifier, where);
        settle();
    }
};

TEST_F(HelpWindowTest, HelpOnAScreenShowsItsPageAndLinksContentsBackAndForwardMoveAboutTheManual)
{
    install_manual();
    open();
    screen->mnu_Help->trigger();
    settle();
    HelpWindow* window = existing_help_window();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(page_on_view(), QStringLiteral("1640.html"));
    EXPECT_TRUE(window->windowTitle().contains(QStringLiteral("Teachers")));
    EXPECT_FALSE(window->cmd_Back->isEnabled());
    EXPECT_TRUE(help::help_is_open());

    click_link(QStringLiteral("Families page"));
    EXPECT_EQ(page_on_view(), QStringLiteral("1610.html"));
    click(window->cmd_Contents);
    EXPECT_EQ(page_on_view(), QStringLiteral("index.html"));
    EXPECT_TRUE(window->cmd_Back->isEnabled());
    EXPECT_FALSE(window->cmd_Forward->isEnabled());

    click(window->cmd_Back);
    EXPECT_EQ(page_on_view(), QStringLiteral("1610.html"));
    click(window->cmd_Back);
    EXPECT_EQ(page_on_view(), QStringLiteral("1640.html"));
    EXPECT_FALSE(window->cmd_Back->isEnabled());
    EXPECT_TRUE(window->cmd_Forward->isEnabled());
    click(window->cmd_Forward);
    EXPECT_EQ(page_on_view(), QStringLiteral("1610.html"));

    // Help asked for again opens at the screen's page, in the same window.
    screen->mnu_Help->trigger();
    settle();
    EXPECT_EQ(existing_help_window(), window);
    EXPECT_EQ(page_on_view(), QStringLiteral("1640.html"));

    click(window->cmd_Close);
    EXPECT_FALSE(window->isVisible());

    // A screen's leaving quits help: the window goes.
    screen->mnu_Help->trigger();
    settle();
    EXPECT_TRUE(Show_Help(screen, help::Quit, 0));
    EXPECT_EQ(page_on_view(), QString());
    EXPECT_FALSE(help::help_is_open());
}

TEST_F(HelpWindowTest, AManualThatIsNotInstalledIsSaidToBeMissingAndWhere)
{
    open();
    ScriptedBoxes().expect(QStringLiteral("The help pages cannot be found.\nThey belong in the folder ")
                           + QDir::toNativeSeparators(school.file(QStringLiteral("install/manual"))),
                           engine::answer::Ok, engine::mb::Information)
        .during([&] { screen->mnu_Help->trigger(); settle(); });
    EXPECT_EQ(page_on_view(), QString());
    EXPECT_FALSE(help::help_is_open());
}

}  // namespace
