#pragma once
// Storing what the Pupil Details screen holds: the family and the pupil are
// written through the stored queries, each on its own, so that a family saved
// stays saved when its new pupil is then refused. A new row's key is read
// back by what makes the row unique (a family's name and first address line,
// a pupil's family and first name).
//
// Refusals are shown here, with the screen's words; failures of the database
// are reported as the screen's own (module "fpupils").

#include <QString>
#include <QtGlobal>

// The family's fields as typed. Blank fields are stored as Null, except the
// first address line: it is part of what makes a family unique, so a blank
// one is stored as one blank.
struct FamilyDetails {
    QString name;
    QString address;
    QString address2;
    QString address3;
    QString address4;
    QString post_code;
    QString phone_1;
    QString phone_2;
    QString correspondence;
    QString notes;
    QString marker;
};

enum class FamilyWrite {
    Written,
    Name_Missing,  // "invalid family name" shown: back to the family name
    Duplicate,     // "This family already exists" shown
    Failed,        // reported
};

// Adds the family when `family_id` is 0 and then gives its new key there;
// otherwise changes the family of that key.
FamilyWrite Update_Family(const FamilyDetails& family, qint32& family_id);

// The pupil's fields as typed. The dates are text as typed (blank is Null)
// and must already have passed Validate_Pupil; `gender` is the letter.
struct PupilDetails {
    QString first_name;
    qint32 family_id = 0;
    QString surname;
    QString ref1;
    QString ref2;
    QString ref3;
    QString ref4;
    QString medical;
    QString marker;
    QString e_mail;
    QString notes;
    QString special_needs;
    QString birth_date;
    QString ethnicity;
    QString regn_fee;
    QString start_date;
    QString gender;
};

enum class PupilWrite {
    Written,
    Duplicate,  // "This pupil already exists" shown: the family has a pupil of that first name
    Failed,     // reported
};

// Adds the pupil when `pupil_id` is 0 and then gives its new key there;
// otherwise changes the pupil of that key, its family included.
PupilWrite Update_Pupil(const PupilDetails& pupil, qint32& pupil_id);
