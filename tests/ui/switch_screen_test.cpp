// Moving between screens: the menu opens A, A opens B, B's exit returns to A,
// and A's exit returns to the menu.

#include "ui/shell/switch_screen.h"

#include "screen_driver.h"

#include <QPointer>
#include <QWidget>

#include <gtest/gtest.h>

using namespace screen_driver;

namespace {

QWidget* make_screen(const QString& name)
{
    auto* screen = new QWidget(nullptr, Qt::Window);
    screen->setObjectName(name);
    return screen;
}

class SwitchScreen : public ::testing::Test {
protected:
    void SetUp() override
    {
        menu = make_screen(QStringLiteral("frm_Main_Menu"));
        set_main_menu(menu);
        menu->show();
    }
    void TearDown() override
    {
        for (QWidget* screen : {a.data(), b.data()})
            if (screen)
                Unload(screen);
        set_main_menu(nullptr);
        Glob_Return_Form() = nullptr;
        delete menu;
        settle();
    }

    QWidget* menu = nullptr;
    QPointer<QWidget> a;
    QPointer<QWidget> b;
};

TEST_F(SwitchScreen, MenuToAToBBackToABackToMenuWhichIsHiddenButNeverUnloaded)
{
    a = make_screen(QStringLiteral("frm_A"));
    b = make_screen(QStringLiteral("frm_B"));

    Switch_Screen(menu, a, false);
    settle();
    EXPECT_TRUE(a->isVisible());
    EXPECT_FALSE(menu->isVisible());
    EXPECT_EQ(Glob_Return_Form(), a);

    Switch_Screen(a, b, false);
    settle();
    EXPECT_TRUE(b->isVisible());
    EXPECT_FALSE(a->isVisible());
    EXPECT_EQ(Glob_Return_Form(), a);

    Switch_Screen(b, nullptr, false);
    settle();
    EXPECT_FALSE(b) << "B is unloaded on its way out";
    ASSERT_TRUE(a);
    EXPECT_TRUE(a->isVisible());
    EXPECT_EQ(Glob_Return_Form(), a);

    Switch_Screen(a, nullptr, false);
    settle();
    EXPECT_FALSE(a);
    EXPECT_TRUE(menu->isVisible());
    EXPECT_EQ(Glob_Return_Form(), nullptr);

    // The menu is hidden but never unloaded.
    a = make_screen(QStringLiteral("frm_A"));
    Switch_Screen(menu, a, false);
    Switch_Screen(a, menu, false);
    settle();
    // A remembered screen asked for by the menu: the menu steps aside but stays loaded.
    Glob_Return_Form() = a = make_screen(QStringLiteral("frm_A"));
    Switch_Screen(menu, a, false);
    settle();
    EXPECT_FALSE(menu->isVisible());
    EXPECT_FALSE(is_unloading(menu));
}

}  // namespace
