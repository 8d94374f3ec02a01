#pragma once
// Driving real screens as a user would: opening them in front, typing into a
// field, leaving it with Tab, clicking commands. The screens run on the
// offscreen platform, where focus changes need an active window.

#include "support/current_school.h"
#include "ui/shell/switch_screen.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QRadioButton>
#include <QCoreApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QStringList>
#include <QTest>
#include <QWidget>

#include <gtest/gtest.h>

namespace screen_driver {

// Lets queued work (deferred deletes, focus given back later) happen.
inline void settle()
{
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

inline void bring_to_front(QWidget* screen)
{
    screen->show();
    screen->raise();
    screen->activateWindow();
    QApplication::setActiveWindow(screen);
    EXPECT_TRUE(QTest::qWaitForWindowActive(screen)) << screen->objectName().toStdString();
    settle();
}

// Puts the focus in a field and types, as a user does.
inline void type_into(QWidget* field, const QString& text)
{
    field->setFocus(Qt::MouseFocusReason);
    QTest::keyClicks(field, text);
}

// Replaces the field's text by typing.
inline void retype(QLineEdit* field, const QString& text)
{
    field->setFocus(Qt::MouseFocusReason);
    field->selectAll();
    QTest::keyClick(field, Qt::Key_Delete);
    QTest::keyClicks(field, text);
}

// Leaves the field that has the focus, by Tab.
inline void tab_out(QWidget* field)
{
    QTest::keyClick(field, Qt::Key_Tab);
    settle();
}

inline void click(QAbstractButton* button)
{
    // A radio button or check box answers on its box and text, at its left.
    const bool box_at_left = qobject_cast<QRadioButton*>(button) || qobject_cast<QCheckBox*>(button);
    const QPoint where = box_at_left ? QPoint(8, button->height() / 2) : button->rect().center();
    QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, where);
    settle();
}

// The row of a grid or list that shows `text` in `column`; -1 when none does.
inline int row_showing(const QAbstractItemView* view, const QString& text, int column = 0)
{
    for (int row = 0; row < view->model()->rowCount(); ++row)
        if (view->model()->index(row, column).data().toString() == text)
            return row;
    return -1;
}

// What a list or combo box offers, top to bottom.
template <typename View>
QStringList entries(const View* view)
{
    QStringList texts;
    for (int row = 0; row < view->model()->rowCount(); ++row)
        texts << view->model()->index(row, 0).data().toString();
    return texts;
}

// A click on the row showing `text`, with Ctrl to add it to those chosen.
inline void click_row(QAbstractItemView* view, const QString& text, bool add = false, int column = 0)
{
    const int row = row_showing(view, text, column);
    ASSERT_GE(row, 0) << text.toStdString();
    QTest::mouseClick(view->viewport(), Qt::LeftButton, add ? Qt::ControlModifier : Qt::NoModifier,
                      view->visualRect(view->model()->index(row, column)).center());
    settle();
}

// A test of one screen on a school that is the current database, opened from
// a stand-in main menu; the screen is unloaded and the way back forgotten at
// the end.
template <typename Screen, typename School = testing_support::CurrentSchool>
class ScreenTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        menu.setObjectName(QStringLiteral("frm_Main_Menu"));
        set_main_menu(&menu);
    }
    Screen* open()
    {
        screen = new Screen;
        bring_to_front(screen);
        return screen;
    }
    void TearDown() override
    {
        if (screen)
            Unload(screen);
        settle();
        set_main_menu(nullptr);
        Glob_Return_Form() = nullptr;
    }

    School school;
    QWidget menu;
    QPointer<Screen> screen;
};

}  // namespace screen_driver
