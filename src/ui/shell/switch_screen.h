#pragma once
// Moving between screens. One working screen is shown at a time; the main
// menu is what the program comes back to, and Glob_Return_Form is the one
// screen remembered to come back to (see toolkit/switch_rules.h).

#include <QPointer>
#include <QWidget>

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

// The end of the program: every other screen is unloaded, the databases and
// the workspace are closed, `form` is unloaded last and the event loop ends.
void Main_End_Prog(QWidget* form);
