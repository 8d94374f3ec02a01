#pragma once
// Which screen Switch_Screen shows, what becomes of the screen that asked, and
// what it remembers to come back to. Screens are compared by name; an empty
// name stands for "nothing".
//
// The program remembers one screen, Glob_Return_Form. The menu opens A (A is
// remembered, the menu hidden); A opens B (A is remembered and hidden); B's
// exit shows A again; A's exit finds itself remembered and shows the menu.

#include <QString>

namespace switching {

enum class Show { Main_Menu, Target, Return_Form };
enum class Leave { Unload, Hide };
enum class Remember { Keep, Nothing, Target, Me };

struct Decision {
    Show show = Show::Main_Menu;
    Remember remember = Remember::Nothing;
    Leave me = Leave::Unload;
    friend bool operator==(const Decision&, const Decision&) = default;
};

Decision decide(const QString& me, const QString& target, bool no_return, const QString& return_form,
                const QString& main_menu);

}  // namespace switching
