#pragma once
// A pupil's age as the school counts it: whole years and the months past the
// last birthday, by the parts of the calendar dates, not by days elapsed.

#include <QDate>

struct PupilAge {
    int years = 0;
    int months = 0;
    friend constexpr bool operator==(const PupilAge&, const PupilAge&) = default;
};

// The age on `today` of a pupil born on `birth`. A month is complete only on
// the day of the month of the birth: someone born on the 31st is a month
// older on the 31st, or on the 1st of the next month when there is none.
PupilAge Display_Age(QDate birth, QDate today);
