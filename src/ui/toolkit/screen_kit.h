#pragma once
// What every screen shares: its setup and colours, Enter moving to the next
// field, finding a key among a list's entries, and opening its help page.
// Colours are kept in the widgets' palettes, so that they can be read back.

#include "toolkit/gen_colours.h"

#include <QString>
#include <functional>

class QAction;
class QBoxLayout;
class QComboBox;
class QGroupBox;
class QHBoxLayout;
class QLineEdit;
class QMenuBar;
class QEvent;
class QListWidget;
class QPushButton;
class QWidget;

// The wait cursor while a routine runs; the normal pointer comes back
// however the routine is left.
class HourGlass {
public:
    HourGlass();
    ~HourGlass();
    HourGlass(const HourGlass&) = delete;
    HourGlass& operator=(const HourGlass&) = delete;
};

// The screen's menu bar with its Exit and Help menus (named `exit_name`
// and `help_name`); a screen adds its own menus between them.
struct ExitHelpMenu {
    QMenuBar* bar = nullptr;
    QAction* exit = nullptr;
    QAction* help = nullptr;
};
ExitHelpMenu add_exit_help_menu(QWidget* screen, QBoxLayout* layout, const QString& exit_name = QStringLiteral("mnu_Exit"),
                                const QString& help_name = QStringLiteral("mnu_Help"));

// A menu of the screen's own, placed before Help.
QAction* add_menu_before_help(const ExitHelpMenu& menu, const QString& name, const QString& caption);

// `frame_Navigation`: the list of the records by name (`list_name`, wide
// enough for `characters`) and First, Previous, Next and Last. A screen may
// add to its row.
struct NavigationFrame {
    QGroupBox* frame = nullptr;
    QHBoxLayout* row = nullptr;
    QComboBox* names = nullptr;
    QPushButton* first = nullptr;
    QPushButton* prev = nullptr;
    QPushButton* next = nullptr;
    QPushButton* last = nullptr;
};
NavigationFrame add_navigation_frame(QWidget* screen, QBoxLayout* layout, const QString& list_name, int characters);

// The status line at the foot of a screen: `frame_status`, captioned
// "Status Message", holding the read-only `txt_Status`.
struct StatusLine {
    QGroupBox* frame = nullptr;
    QLineEdit* text = nullptr;
};
StatusLine add_status_line(QWidget* screen, QBoxLayout* layout);

// A command button named `name` with its caption.
QPushButton* make_button(QWidget* parent, const QString& name, const QString& caption);

// First step of every screen's construction: the screen takes the background
// colour that Gen_Colours gives, which is also left in `colour`. Screens are
// laid out with layouts, so there is no scaling to do; `keep_label_size` is
// kept for the callers' form.
void Screen_Setup(QWidget* form, bool keep_label_size, colours::Rgb& colour);

// A frame's or screen's background.
void set_frame_colour(QWidget* frame, const colours::Rgb& colour);
colours::Rgb frame_colour(const QWidget* frame);

// A field's background: white at rest, light blue when changed, pink when owing.
void set_field_colour(QWidget* field, const colours::Rgb& colour);
colours::Rgb field_colour(const QWidget* field);

// A screen's Activate runs once the screen is on view. Called from the
// screen's showEvent (which comes before the window is on the display), it
// waits for the window to be shown and exposed, so that a question that
// Activate asks stands over the screen it is about, never over the screen
// left behind. A screen hidden again before then is not activated.
void Activate_When_Shown(QWidget* screen, std::function<void()> activate);

// True when the event is a field being left: a focus-out, but not one of a
// message box or pop-up taking the focus for a moment.
bool Is_Field_Left(const QEvent* event);

// Enter in `field` moves on to the next field, as a Tab would, and is swallowed.
// In a multi-line box Ctrl+Enter still starts a new line.
void Enter_To_Tab(QWidget* field);

// The index of the first entry, from 0, whose item data (the record's key) is
// `key`; -1 when there is none.
short Glob_Search_Combo(const QComboBox* combo, int key);
short Glob_Search_List(const QListWidget* list, int key);

// Help for a screen, in the program's own help window (ui/help_window.h):
// command 1 opens the page of `context`, 2 closes help, 3 the contents, 4
// help on help (see toolkit/help_pages.h). A manual or page that isn't there
// is reported with where it belongs. False when nothing was opened.
bool Show_Help(QWidget* form, int command, int context);
