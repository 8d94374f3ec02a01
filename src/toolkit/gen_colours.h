#pragma once
// The colours that carry meaning on every screen. The program reads a
// control's colour back to decide what to do, so these are compared exactly.

namespace colours {

struct Rgb {
    int red = 0;
    int green = 0;
    int blue = 0;
    friend constexpr bool operator==(const Rgb&, const Rgb&) = default;
};

inline constexpr Rgb Form_Background{192, 255, 192};  // every screen, its status and navigation frames
inline constexpr Rgb Highlight{192, 192, 255};        // a field changed and not yet saved
inline constexpr Rgb At_Rest{255, 255, 255};          // a field after Clear_highlights
inline constexpr Rgb Owing{255, 192, 255};            // money still owed
inline constexpr Rgb Pale_Yellow{255, 255, 192};      // a family that owes nothing
inline constexpr Rgb Proposed{255, 255, 0};           // a receipt the program proposes, untouched

}  // namespace colours

// The screens' background colour, as Gen_Colours leaves it.
colours::Rgb& Glob_Form_Colour();

// Sets Glob_Form_Colour to the screens' background and returns it.
colours::Rgb Gen_Colours();
