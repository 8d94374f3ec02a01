// Which help page a request opens, and when there is nothing to open.

#include "shell/install_folder.h"
#include "toolkit/help_pages.h"

#include "support/test_folder.h"

#include <QDir>

#include <gtest/gtest.h>

namespace {

class HelpPages : public ::testing::Test {
protected:
    void SetUp() override
    {
        set_install_folder_for_tests(folder.file(QString()));
        help::help_is_open() = false;
    }
    void TearDown() override { set_install_folder_for_tests(QString()); }

    void install_manual(const QStringList& pages)
    {
        QDir().mkpath(folder.file(QStringLiteral("manual")));
        for (const QString& page : pages)
            folder.write_file(QStringLiteral("manual/") + page, QString());
    }

    testing_support::TestFolder folder;
};

TEST_F(HelpPages, AContextOpensThePageNamedByItsNumberAndNothingElseActs)
{
    install_manual({QStringLiteral("1640.html"), QStringLiteral("index.html"), QStringLiteral("help_on_help.html")});
    const help::Request request = help::resolve(help::Context, help::context::Teachers);
    ASSERT_TRUE(request.act);
    EXPECT_TRUE(request.page.endsWith(QStringLiteral("manual/1640.html")));
    EXPECT_TRUE(help::resolve(help::Contents, 0).page.endsWith(QStringLiteral("index.html")));
    EXPECT_TRUE(help::resolve(help::Help_On_Help, 0).page.endsWith(QStringLiteral("help_on_help.html")));
    // Context 0, a missing page, and Quit with nothing open do nothing.
    EXPECT_FALSE(help::resolve(help::Context, 0).act);
    EXPECT_FALSE(help::resolve(help::Context, 4242).act);
    EXPECT_FALSE(help::resolve(help::Quit, 0).act);
    help::help_is_open() = true;
    EXPECT_TRUE(help::resolve(help::Quit, 0).act);
}

TEST_F(HelpPages, WhatIsMissingIsNamedSoThatTheUserCanBeToldWhere)
{
    // No manual at all: nothing is opened, and every page request says where the manual belongs.
    EXPECT_TRUE(help::manual_folder().isEmpty());
    for (int command : {help::Context, help::Contents, help::Help_On_Help}) {
        const help::Request request = help::resolve(command, help::context::Teachers);
        EXPECT_FALSE(request.act) << command;
        EXPECT_EQ(request.missing, help::Missing::Manual) << command;
        EXPECT_EQ(request.missing_path, folder.file(QStringLiteral("manual")));
        EXPECT_TRUE(help::missing_words(request).startsWith(QStringLiteral("The help pages cannot be found.")));
        EXPECT_TRUE(help::missing_words(request).contains(QDir::toNativeSeparators(request.missing_path)));
    }
    // A manual without the screen's page names the page.
    install_manual({QStringLiteral("index.html")});
    const help::Request request = help::resolve(help::Context, help::context::Teachers);
    EXPECT_EQ(request.missing, help::Missing::Page);
    EXPECT_TRUE(request.missing_path.endsWith(QStringLiteral("manual/1640.html")));
    EXPECT_TRUE(help::missing_words(request).startsWith(QStringLiteral("The help page for this screen cannot be found.")));
    // Nothing asked for is nothing missing.
    EXPECT_EQ(help::resolve(help::Context, 0).missing, help::Missing::Nothing);
    EXPECT_EQ(help::resolve(help::Quit, 0).missing, help::Missing::Nothing);
    EXPECT_EQ(help::missing_words(help::resolve(help::Contents, 0)), QString());
}

}  // namespace
