// Which help page a request opens, and when there is nothing to open.

#include "shell/install_folder.h"
#include "toolkit/help_pages.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class HelpPages : public ::testing::Test {
protected:
    void SetUp() override
    {
        set_install_folder_for_tests(folder.path());
        help::help_is_open() = false;
    }
    void TearDown() override { set_install_folder_for_tests(QString()); }

    void install_manual(const QStringList& pages)
    {
        QDir(folder.path()).mkdir(QStringLiteral("manual"));
        for (const QString& page : pages) {
            QFile file(folder.filePath(QStringLiteral("manual/") + page));
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        }
    }

    QTemporaryDir folder;
};

TEST_F(HelpPages, WithoutTheManualNothingIsOpened)
{
    EXPECT_TRUE(help::manual_folder().isEmpty());
    EXPECT_FALSE(help::resolve(help::Context, help::context::Teachers).act);
    EXPECT_FALSE(help::resolve(help::Contents, 0).act);
}

TEST_F(HelpPages, AContextOpensThePageNamedByItsNumber)
{
    install_manual({QStringLiteral("1640.html"), QStringLiteral("index.html"), QStringLiteral("help_on_help.html")});
    const help::Request request = help::resolve(help::Context, help::context::Teachers);
    ASSERT_TRUE(request.act);
    EXPECT_TRUE(request.page.endsWith(QStringLiteral("manual/1640.html")));
    EXPECT_TRUE(help::resolve(help::Contents, 0).page.endsWith(QStringLiteral("index.html")));
    EXPECT_TRUE(help::resolve(help::Help_On_Help, 0).page.endsWith(QStringLiteral("help_on_help.html")));
}

TEST_F(HelpPages, ContextZeroAMissingPageAndQuitWithNothingOpenDoNothing)
{
    install_manual({QStringLiteral("index.html")});
    EXPECT_FALSE(help::resolve(help::Context, 0).act);
    EXPECT_FALSE(help::resolve(help::Context, 4242).act);
    EXPECT_FALSE(help::resolve(help::Quit, 0).act);
    help::help_is_open() = true;
    EXPECT_TRUE(help::resolve(help::Quit, 0).act);
}

}  // namespace
