#include "people/pupil_gender.h"

#include "database/code_values.h"

GenderLook Gender_Look(const QString& letter)
{
    GenderLook look;
    look.known = true;
    if (letter == QLatin1Char(code::gender::Male)) {
        look.sex = PupilSex::Male;
        look.colour = gender_colour::Male;
    } else if (letter == QLatin1Char(code::gender::Female)) {
        look.sex = PupilSex::Female;
        look.colour = gender_colour::Female;
    } else if (letter == QLatin1Char(code::gender::Hidden_Male)) {
        look.sex = PupilSex::Male;
        look.hidden = true;
        look.colour = gender_colour::Male;
        look.cross_hatched = true;
    } else if (letter == QLatin1Char(code::gender::Hidden_Female)) {
        look.sex = PupilSex::Female;
        look.hidden = true;
        look.colour = gender_colour::Female;
        look.cross_hatched = true;
    } else {
        look.known = false;
        look.colour = gender_colour::Unknown;
        look.cross_hatched = true;
    }
    return look;
}

QString Gender_Letter(bool male, bool hidden)
{
    if (male)
        return QString(QLatin1Char(hidden ? code::gender::Hidden_Male : code::gender::Male));
    return QString(QLatin1Char(hidden ? code::gender::Hidden_Female : code::gender::Female));
}
