#pragma once
// Moving between screens. One working screen is shown at a time; the main
// menu is what the program comes back to, and Glob_Return_Form is the one
// screen remembered to come back to (see toolkit/switch_rules.h).

#include <QPointer>
#include <functional>
#include <QWidget>

class QCloseEvent;

// The screen to come back to; null means nothing.
QPointer<QWidget>& Glob_Return_Form();

// The main menu, loaded once at start and kept to the end; null before.
QWidget* Main_Menu();
void set_main_menu(QWidget* menu);

// Shows `target` (or, for null, the screen to come back to) and hides or
// unloads `me`, as the rules say. The main menu is only ever hidden.
void Switch_Screen(QWidget* me, QWidget* target, bool no_return);

// Brings a screen to the front.
void show_screen(QWidget* screen);

// Unloads a screen: it closes (its own close handling runs, not its exit
// question) and is deleted once control returns to the event loop.
void Unload(QWidget* screen);
// True while a screen is being unloaded by the program, not by its user.
bool is_unloading(const QWidget* screen);

// A screen's closeEvent: the window's close box means the same as the
// screen's Exit (outstanding changes are asked about, and the screen goes back
// where it came from), run once control is back in the event loop. True when
// the event was turned into that; false while the program itself unloads the
// screen, which then lets go of what it holds and closes.
bool Close_Box_Is_Exit(QWidget* screen, QCloseEvent* event, const std::function<void()>& exit);

// The end of the program: every other screen is unloaded, the databases and
// the workspace are closed, `form` is unloaded last and the event loop ends.
void Main_End_Prog(QWidget* form);
