#include "people/pupil_family_writes.h"

#include "engine/database.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "engine/vb_values.h"
#include "script/current_database.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"

#include <memory>

namespace {

const QString module = QStringLiteral("fpupils");

std::unique_ptr<engine::QueryDef> stored_query(const QString& name)
{
    engine::Database* db = current_database_or_error();
    return db ? db->QueryDefs(name) : nullptr;
}

QVariant text_or_null(const QString& text)
{
    return text.isEmpty() ? QVariant() : QVariant(text);
}

// A date already checked by Validate_Pupil; blank is Null.
QVariant date_or_null(const QString& text)
{
    if (text.trimmed().isEmpty())
        return QVariant();
    QDateTime date;
    if (!vb::CDate(text, date))
        return QVariant();
    return date;
}

struct Parameter {
    const char* name;
    QVariant value;
};

bool set_all(engine::QueryDef& query, std::initializer_list<Parameter> parameters)
{
    for (const Parameter& parameter : parameters)
        if (!query.set_parameter(QString::fromLatin1(parameter.name), parameter.value))
            return false;
    return true;
}

// The first column of the first row of a select query, or nothing.
bool first_key(engine::QueryDef& query, const QString& column, qint32& key, bool& found)
{
    std::unique_ptr<engine::Recordset> rows = query.OpenRecordset();
    if (!rows)
        return false;
    found = !rows->at_eof();
    if (found)
        key = rows->Fields(column).toInt();
    rows->Close();
    return true;
}

bool is_duplicate()
{
    if (engine::Err().Number != engine::jet::DuplicateKey)
        return false;
    engine::Err().Clear();
    return true;
}

void refuse(const QString& words)
{
    engine::MsgBox(words, engine::mb::OkOnly, App_Title());
}

void report_unexpected(const QString& routine)
{
    Report_Error(report::Unexpected, QStringLiteral("Unexpected error "), engine::mb::Critical, module, routine);
}

void report_missing(const QString& words, const QString& routine)
{
    Report_Error(report::Detected, words, engine::mb::Information, module, routine);
}

}  // namespace

FamilyWrite Update_Family(const FamilyDetails& family, qint32& family_id)
{
    const QString routine = QStringLiteral("Update_Family");
    if (family.name.trimmed().isEmpty()) {
        engine::MsgBox(QStringLiteral("invalid family name"), engine::mb::Information, App_Title());
        return FamilyWrite::Name_Missing;
    }
    const bool adding = family_id == 0;
    std::unique_ptr<engine::QueryDef> write =
        stored_query(adding ? QStringLiteral("Qry_Insert_Family") : QStringLiteral("Qry_Update_Family"));
    // The address is a part of the unique key, where a Null would never clash.
    const QString address = family.address.isEmpty() ? QStringLiteral(" ") : family.address;
    const bool written = write && (adding || write->set_parameter(QStringLiteral("F_id"), family_id))
                         && set_all(*write, {{"F_Name", family.name},
                                             {"F_Address", address},
                                             {"F_Address2", text_or_null(family.address2)},
                                             {"F_Address3", text_or_null(family.address3)},
                                             {"F_Address4", text_or_null(family.address4)},
                                             {"F_PostCode", text_or_null(family.post_code)},
                                             {"F_Phone_1", text_or_null(family.phone_1)},
                                             {"F_Phone_2", text_or_null(family.phone_2)},
                                             {"F_Correspondence", text_or_null(family.correspondence)},
                                             {"F_Notes", text_or_null(family.notes)},
                                             {"F_Marker", text_or_null(family.marker)}})
                         && write->Execute(engine::dbopt::FailOnErrorConsistent);
    if (!written) {
        if (is_duplicate()) {
            refuse(QStringLiteral("This family already exists"));
            return FamilyWrite::Duplicate;
        }
        report_unexpected(routine);
        return FamilyWrite::Failed;
    }
    if (!adding)
        return FamilyWrite::Written;

    std::unique_ptr<engine::QueryDef> find = stored_query(QStringLiteral("Qry_Select_Family_id"));
    qint32 key = 0;
    bool found = false;
    if (!find || !set_all(*find, {{"F_Name", family.name}, {"F_Address", address}})
        || !first_key(*find, QStringLiteral("Family_id"), key, found)) {
        report_unexpected(routine);
        return FamilyWrite::Failed;
    }
    if (!found) {
        report_missing(QStringLiteral("Unexpected error - couldn't find newly added family"), routine);
        return FamilyWrite::Failed;
    }
    family_id = key;
    return FamilyWrite::Written;
}

PupilWrite Update_Pupil(const PupilDetails& pupil, qint32& pupil_id)
{
    const QString routine = QStringLiteral("Update_Pupil");
    const bool adding = pupil_id == 0;
    std::unique_ptr<engine::QueryDef> write =
        stored_query(adding ? QStringLiteral("Qry_Insert_Pupil") : QStringLiteral("Qry_Update_Pupil"));
    const bool written = write && (adding || write->set_parameter(QStringLiteral("P_id"), pupil_id))
                         && set_all(*write, {{"P_FirstName", pupil.first_name},
                                             {"P_Family_id", pupil.family_id},
                                             {"P_Surname", text_or_null(pupil.surname)},
                                             {"P_Ref1", text_or_null(pupil.ref1)},
                                             {"P_Ref2", text_or_null(pupil.ref2)},
                                             {"P_Ref3", text_or_null(pupil.ref3)},
                                             {"P_Ref4", text_or_null(pupil.ref4)},
                                             {"P_Medical", text_or_null(pupil.medical)},
                                             {"P_Marker", text_or_null(pupil.marker)},
                                             {"P_E_Mail", text_or_null(pupil.e_mail)},
                                             {"p_notes", text_or_null(pupil.notes)},
                                             {"P_Special", text_or_null(pupil.special_needs)},
                                             {"P_Birthdate", date_or_null(pupil.birth_date)},
                                             {"p_ethn", text_or_null(pupil.ethnicity)},
                                             {"P_Regn_Fee", text_or_null(pupil.regn_fee)},
                                             {"P_Startdate", date_or_null(pupil.start_date)},
                                             {"P_Gender", text_or_null(pupil.gender)}})
                         && write->Execute(engine::dbopt::FailOnErrorConsistent);
    if (!written) {
        if (is_duplicate()) {
            refuse(QStringLiteral("This pupil already exists"));
            return PupilWrite::Duplicate;
        }
        report_unexpected(routine);
        return PupilWrite::Failed;
    }
    if (!adding)
        return PupilWrite::Written;

    std::unique_ptr<engine::QueryDef> find = stored_query(QStringLiteral("Qry_Select_Pupil_In_Family"));
    qint32 key = 0;
    bool found = false;
    if (!find || !set_all(*find, {{"P_FirstName", pupil.first_name}, {"P_Family_id", pupil.family_id}})
        || !first_key(*find, QStringLiteral("Pupil_id"), key, found)) {
        report_unexpected(routine);
        return PupilWrite::Failed;
    }
    if (!found) {
        report_missing(QStringLiteral("Unexpected error - couldn't find newly added pupil"), routine);
        return PupilWrite::Failed;
    }
    pupil_id = key;
    return PupilWrite::Written;
}
