// A screen's Activate runs once the screen is on view, so that whatever it
// asks stands over the screen it is about and never over the one left behind.

#include "ui/people/frm_family.h"
#include "ui/toolkit/screen_kit.h"

#include "engine/msg_box.h"
#include "screen_driver.h"

#include <QShowEvent>
#include <QWindow>

#include <gtest/gtest.h>

using namespace screen_driver;

namespace {

// A screen whose Activate notes what was on view when it ran.
class ActivatedScreen : public QWidget {
public:
    ActivatedScreen() : QWidget(nullptr, Qt::Window) { resize(200, 100); }
    int activations = 0;
    bool exposed_when_activated = false;

protected:
    void showEvent(QShowEvent* event) override
    {
        QWidget::showEvent(event);
        if (!event->spontaneous())
            Activate_When_Shown(this, [this] {
                ++activations;
                exposed_when_activated = windowHandle() && windowHandle()->isExposed();
            });
    }
};

void wait_for(const std::function<bool()>& done)
{
    for (int wait = 0; wait < 100 && !done(); ++wait)
        QTest::qWait(10);
}

TEST(ScreenActivation, ActivateRunsOnceTheWindowIsOnTheDisplayAndNotForOneHiddenOrDeletedBefore)
{
    ActivatedScreen screen;
    screen.show();
    EXPECT_EQ(screen.activations, 0) << "not while the window is still being shown";
    wait_for([&] { return screen.activations > 0; });
    EXPECT_EQ(screen.activations, 1);
    EXPECT_TRUE(screen.exposed_when_activated);

    // Each time the screen comes back, once.
    screen.hide();
    screen.show();
    wait_for([&] { return screen.activations > 1; });
    settle();
    EXPECT_EQ(screen.activations, 2);

    // A screen hidden before it is on view is not activated, and one deleted is forgotten.
    ActivatedScreen hidden;
    hidden.show();
    hidden.hide();
    auto* deleted = new ActivatedScreen;
    deleted->show();
    delete deleted;
    // The wait for the deleted screen ends quietly; a screen shown next is activated once.
    ActivatedScreen next;
    next.show();
    wait_for([&] { return next.activations > 0; });
    settle();
    EXPECT_EQ(next.activations, 1);
    EXPECT_EQ(hidden.activations, 0);
}

class RecordScreenActivation : public ScreenTest<frm_Family> {};

TEST_F(RecordScreenActivation, TheFirstQuestionOfARecordScreenStandsOverThatScreen)
{
    bring_to_front(&menu);
    screen = new frm_Family;
    QStringList asked;
    bool screen_on_view = false;
    bool menu_on_view = true;
    const engine::MsgBoxResponder previous =
        engine::set_msgbox_responder([&](const QString& text, int, const QString&) {
            asked << text;
            screen_on_view = screen->isVisible() && screen->windowHandle() && screen->windowHandle()->isExposed();
            menu_on_view = menu.isVisible();
            return engine::answer::Ok;
        });
    Switch_Screen(&menu, screen, false);
    EXPECT_TRUE(asked.isEmpty());
    wait_for([&] { return !asked.isEmpty(); });
    engine::set_msgbox_responder(previous);

    ASSERT_EQ(asked, QStringList{QStringLiteral("There are no more records")});  // an empty table says so
    EXPECT_TRUE(screen_on_view);
    EXPECT_FALSE(menu_on_view);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Adding a new Family"));
}

}  // namespace
