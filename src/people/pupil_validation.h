#pragma once
// The checks a pupil's typed values must pass before the pupil is stored,
// and the check of a date as the secretary leaves its field. Each refusal is
// shown here, in the screen's words; a date in the future is a question,
// since a start date can be planned ahead.

#include <QDate>
#include <QString>

struct PupilDetails;

// The field a refusal sends the secretary back to.
enum class PupilField { None, First_Name, Birth_Date, Start_Date, Family_Name };

// The first name, the birth date, the start date and the family, in that
// order; the first broken rule is the answer. `family_id_text` is the family
// key as the screen holds it, blank for none.
PupilField Validate_Pupil(const PupilDetails& pupil, const QString& family_id_text, QDate today);

enum class TypedDate {
    Accepted,    // blank, or a date not after today, or a later one the secretary confirmed
    Not_A_Date,  // "invalid date" shown
    Declined,    // a date after today, and the secretary answered No
};

// A date typed into a field, checked as the field is left. `future_question`
// is the question asked of a date after `today`.
TypedDate Check_Typed_Date(const QString& text, QDate today, const QString& future_question);

// The questions of a birth date and a start date after today.
QString Birthdate_Future_Question();
QString Startdate_Future_Question();
