#include "people/pupil_age.h"

PupilAge Display_Age(QDate birth, QDate today)
{
    PupilAge age;
    age.years = today.year() - birth.year();
    if (today.month() != birth.month()) {
        if (today.month() < birth.month()) {
            age.months = 12 - birth.month() + today.month();
            --age.years;
        } else {
            age.months = today.month() - birth.month();
        }
        if (today.day() < birth.day())
            --age.months;
    } else if (today.day() < birth.day()) {
        --age.years;
        age.months = 11;
    } else {
        age.months = 0;
    }
    return age;
}
