#pragma once
// The screens the program has, by form name. A screen is loaded once: asking
// for one that is loaded (shown or hidden) gives that one.

#include <QString>

class QWidget;

// The loaded screen of that name, or a new one; null for a screen that the
// program doesn't have yet.
QWidget* Load_Screen(const QString& form_name);

// The loaded screen of that name, or null.
QWidget* Loaded_Screen(const QString& form_name);
