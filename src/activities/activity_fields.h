#pragma once
// The rules a catalogue entry's typed values must meet before it is stored,
// after its title's: price, level, duration, kind and dance style, in the
// order the secretary meets them. Kept apart from the screen so that they
// read as the school's rules.

#include <QString>

// What the secretary typed or chose, as the screen holds it. The checks may
// complete it: a blank duration becomes "0", and a show or outing without a
// dance style gets one blank as its style.
struct ActivityFields {
    QString price;
    QString level;
    QString duration;
    int type_row = -1;     // the row chosen in the kind list; -1 none
    QString type_code;     // the hidden box the kind is stored from
    QString style;         // the style box's text
    bool style_listed = false;  // the text is one of the styles offered
};

// The field a refusal sends the secretary back to.
enum class ActivityField { None, Price, Level, Duration, Type, Style };

struct ActivityRefusal {
    ActivityField field = ActivityField::None;
    QString message;  // empty when all is well
};

// The first broken rule is the answer. "Unknown" can be seen on old
// entries but not stored.
ActivityRefusal Check_Activity_Fields(ActivityFields& fields);
