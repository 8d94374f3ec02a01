#include "toolkit/gen_colours.h"

colours::Rgb& Glob_Form_Colour()
{
    static colours::Rgb colour = colours::Form_Background;
    return colour;
}

colours::Rgb Gen_Colours()
{
    Glob_Form_Colour() = colours::Form_Background;
    return Glob_Form_Colour();
}
