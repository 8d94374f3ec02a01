#pragma once
// A pupil's gender letter carries two facts: the sex, and whether the pupil
// is hidden. The capital letters are the pupils the working lists show; a
// hidden pupil keeps its history under the lower-case letter ("b" a boy, "g"
// a girl) and drops out of those lists.

#include "toolkit/gen_colours.h"

#include <QString>

enum class PupilSex { Male, Female, Unknown };

// How a letter is shown: the sex and hidden choices, and the colour and fill
// of the shape beside them. A letter the table doesn't know leaves the choices
// as they are (`known` false) and shows a yellow cross-hatched shape.
struct GenderLook {
    bool known = false;
    PupilSex sex = PupilSex::Unknown;
    bool hidden = false;
    colours::Rgb colour;
    bool cross_hatched = false;  // a diagonal cross fill rather than a solid one
};

namespace gender_colour {
inline constexpr colours::Rgb Male{192, 192, 255};
inline constexpr colours::Rgb Female{255, 192, 255};
inline constexpr colours::Rgb Unknown{255, 255, 0};
}  // namespace gender_colour

GenderLook Gender_Look(const QString& letter);

// The letter for a sex and the hidden choice: "M", "F", "b" or "g".
QString Gender_Letter(bool male, bool hidden);
