#pragma once
// The screens the program has, by form name. A screen is loaded once: asking
// for one that is loaded (shown or hidden) gives that one.

#include <QString>
#include <functional>

class QWidget;

// The loaded screen of that name, or a new one; null for a screen that the
// program doesn't have yet.
QWidget* Load_Screen(const QString& form_name);

// The loaded screen of that name, or null.
QWidget* Loaded_Screen(const QString& form_name);

// Goes from `me` to the screen of that name through Switch_Screen; a screen
// the program doesn't have yet is refused with a message. The screen gone
// to, or null. `before_showing` may set the screen up first.
QWidget* Go_To_Screen(QWidget* me, const QString& form_name,
                      const std::function<void(QWidget*)>& before_showing = {});
