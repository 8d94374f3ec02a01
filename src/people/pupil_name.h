#pragma once
// The name a pupil goes by in the pupils' list: "SMITH Anna", or with an
// alternate surname "SMITH Anna (Jones)", so that the list reads by family.

#include <QString>

namespace engine {
class Recordset;
}

QString Format_Name(const QString& family_name, const QString& first_name, const QString& alt_surname);

// The same from the current record of a record set holding the family's and
// the pupil's columns (Family_Name, Pupil_FirstName, Pupil_Surname).
QString Format_Name(const engine::Recordset& record);
