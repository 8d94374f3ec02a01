#pragma once
// The stored queries that order course lists, by number 1 to 4. The number
// is what the settings store keeps; the program works with the name.

#include <QString>

// Maps a name to its number or a number to its name; both are in-out. Give
// one of them: a name with a number as well is an invalid call (reported,
// and both come back blank). A name that is none of the four keeps number 0.
// A blank result, and so number 0 with no name, becomes query 1,
// Qry_Order_Courses_Title. A number outside 1 to 4 is reported.
void DB_Convert_Course_Qry(QString& name, short& number);
