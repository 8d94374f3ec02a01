#include "people/pupil_validation.h"

#include "engine/err.h"
#include "engine/msg_box.h"
#include "engine/vb_values.h"
#include "people/pupil_family_writes.h"
#include "shell/app_globals.h"

namespace {

int box(const QString& text, int style)
{
    return engine::MsgBox(text, style, App_Title());
}

bool is_date(const QString& text, QDate& day)
{
    QDateTime date;
    const bool ok = vb::IsDate(text) && vb::CDate(text, date);
    engine::Err().Clear();
    if (ok)
        day = date.date();
    return ok;
}

}  // namespace

QString Birthdate_Future_Question()
{
    return QStringLiteral("The birthdate is in the future! OK?");
}

QString Startdate_Future_Question()
{
    return QStringLiteral("The Startdate is in the future! OK?");
}

TypedDate Check_Typed_Date(const QString& text, QDate today, const QString& future_question)
{
    if (text.trimmed().isEmpty())
        return TypedDate::Accepted;
    QDate day;
    if (!is_date(text, day)) {
        box(QStringLiteral("invalid date"), engine::mb::Information);
        return TypedDate::Not_A_Date;
    }
    if (day > today
        && box(future_question, engine::mb::YesNo | engine::mb::Information) != engine::answer::Yes)
        return TypedDate::Declined;
    return TypedDate::Accepted;
}

PupilField Validate_Pupil(const PupilDetails& pupil, const QString& family_id_text, QDate today)
{
    if (pupil.first_name.trimmed().isEmpty()) {
        box(QStringLiteral("invalid first name"), engine::mb::Information);
        return PupilField::First_Name;
    }
    if (pupil.first_name.contains(QLatin1Char('"'))) {
        box(QStringLiteral("The first name cannot include quotes"), engine::mb::OkOnly);
        return PupilField::First_Name;
    }
    if (!pupil.birth_date.trimmed().isEmpty()
        && Check_Typed_Date(pupil.birth_date, today, Birthdate_Future_Question()) != TypedDate::Accepted)
        return PupilField::Birth_Date;
    QDate start;
    if (!pupil.start_date.trimmed().isEmpty() && !is_date(pupil.start_date, start)) {
        box(QStringLiteral("invalid start date"), engine::mb::Information);
        return PupilField::Start_Date;
    }
    const QString family = family_id_text.trimmed();
    if (family.isEmpty() || !vb::IsNumeric(family)) {
        engine::Err().Clear();
        box(QStringLiteral("invalid family name"), engine::mb::Information);
        return PupilField::Family_Name;
    }
    return PupilField::None;
}
