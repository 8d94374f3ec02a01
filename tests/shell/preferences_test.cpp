// What the Preferences screen works out and stores: which discount scripts
// are the school's own, and where the settings point after a generation.

#include "engine/settings_store.h"
#include "shell/preferences.h"
#include "shell/settings.h"
#include "support/test_folder.h"

#include <gtest/gtest.h>

namespace {

struct ScriptsCase {
    const char* term;
    const char* activity;
    const char* cost;
    const char* shown;
};

const ScriptsCase scripts_cases[] = {
    // The standard scripts, whatever the letter case of their names.
    {"/f/scripts/InTerms.sql", "/F/SCRIPTS/inactdts.SQL", "/f/scripts/CrsCosts.sql", "None"},
    {"/f/scripts/OurTerms.sql", "/f/scripts/InActDts.sql", "/f/scripts/CrsCosts.sql",
     "Personalised course discounts currently in use"},
    {"/f/scripts/InTerms.sql", "/f/scripts/InActDts.sql", "/elsewhere/CrsCosts.sql",
     "Personalised course discounts currently in use"},
    {"/f/scripts/InTerms.sql", "/f/scripts/OurActs.sql", "/f/scripts/CrsCosts.sql",
     "Personalised activity discounts currently in use"},
    {"/f/scripts/OurTerms.sql", "/f/scripts/OurActs.sql", "/f/scripts/CrsCosts.sql",
     "Personalised course discounts currently in use\nPersonalised activity discounts currently in use"},
};

TEST(Preferences, ScriptsOtherThanTheStandardOnesAreShownAsPersonalisedDiscounts)
{
    testing_support::TestFolder folder;
    Settings().script_dir = QStringLiteral("/f/scripts");
    for (const ScriptsCase& row : scripts_cases) {
        Settings().term_script = QString::fromUtf8(row.term);
        Settings().activity_script = QString::fromUtf8(row.activity);
        Settings().cost_script = QString::fromUtf8(row.cost);
        EXPECT_EQ(Discount_Schemes_Text(), QString::fromUtf8(row.shown)) << row.term << " " << row.activity;
    }
}

TEST(Preferences, GeneratedFoldersReplaceTheStandardListButNotAPersonalOne)
{
    testing_support::TestFolder folder;
    Settings().report_format_dir = QStringLiteral("/f/repfmts");
    Settings().report_list = QStringLiteral("/f/repfmts/zrepfmt.lst");
    ASSERT_TRUE(Use_Generated_Folders(QStringLiteral("/f/genrepfmts"), QStringLiteral("/f/genrepfmts/zrepfmt.lst")));
    EXPECT_EQ(Settings().report_format_dir, QStringLiteral("/f/genrepfmts"));
    EXPECT_EQ(Settings().report_list, QStringLiteral("/f/genrepfmts/zrepfmt.lst"));
    EXPECT_EQ(engine::settings_store().GetSetting(QStringLiteral("Startup"), QStringLiteral("$RL"), QString()),
              QStringLiteral("/f/genrepfmts/zrepfmt.lst"));

    Settings().report_list = QStringLiteral("/school/zrepfmt.lst");
    ASSERT_TRUE(Use_Generated_Folders(QStringLiteral("/g/genrepfmts"), QStringLiteral("/g/genrepfmts/zrepfmt.lst")));
    EXPECT_EQ(Settings().report_format_dir, QStringLiteral("/g/genrepfmts"));
    EXPECT_EQ(Settings().report_list, QStringLiteral("/school/zrepfmt.lst"));
}

}  // namespace
