// Which screen comes next, and what is remembered to come back to.

#include "toolkit/switch_rules.h"

#include <gtest/gtest.h>

using namespace switching;

namespace {

const QString menu = QStringLiteral("frm_Main_Menu");

TEST(SwitchRules, EveryCaseOfTheTable)
{
    struct Case {
        const char* me;
        const char* target;
        bool no_return;
        const char* remembered;
        Decision expected;
    };
    const Case cases[] = {
        // Leaving with nothing remembered, or with the menu or oneself remembered: back to the menu.
        {"A", "", false, "", {Show::Main_Menu, Remember::Nothing, Leave::Unload}},
        {"A", "", false, "frm_Main_Menu", {Show::Main_Menu, Remember::Nothing, Leave::Unload}},
        {"A", "", false, "A", {Show::Main_Menu, Remember::Nothing, Leave::Unload}},
        // Leaving with another screen remembered: back to it, still remembered.
        {"B", "", false, "A", {Show::Return_Form, Remember::Keep, Leave::Unload}},
        // Asking for the menu itself.
        {"A", "frm_Main_Menu", false, "B", {Show::Main_Menu, Remember::Nothing, Leave::Unload}},
        // No return wanted.
        {"A", "B", true, "A", {Show::Target, Remember::Nothing, Leave::Unload}},
        // Opening from nothing remembered: the target is remembered, the opener hidden.
        {"frm_Main_Menu", "A", false, "", {Show::Target, Remember::Target, Leave::Hide}},
        // Opening another: the opener is remembered and hidden.
        {"A", "B", false, "A", {Show::Target, Remember::Me, Leave::Hide}},
        // Opening the remembered screen: it is shown and the opener unloaded.
        {"B", "A", false, "A", {Show::Target, Remember::Nothing, Leave::Unload}},
        // Screens are compared by name whatever the case.
        {"frm_family", "", false, "FRM_FAMILY", {Show::Main_Menu, Remember::Nothing, Leave::Unload}},
    };
    for (const Case& c : cases) {
        const Decision got = decide(QString::fromLatin1(c.me), QString::fromLatin1(c.target), c.no_return,
                                    QString::fromLatin1(c.remembered), menu);
        EXPECT_EQ(got, c.expected) << c.me << " -> '" << c.target << "' remembering '" << c.remembered << "'";
    }
}

}  // namespace
