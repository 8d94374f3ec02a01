#include "people/pupil_import.h"

#include "database/db_handling.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/jet_date.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "engine/vb_values.h"
#include "engine/workspace.h"
#include "people/csv_records.h"
#include "script/current_database.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "shell/file_errors.h"
#include "shell/text_decoding.h"

#include <QDate>
#include <QFile>
#include <memory>
#include <optional>

namespace pupil_import {

namespace {

const QString module_tag = QStringLiteral("fpupimp");

const QString cant_read_line = QStringLiteral("Couldn't read a full line of data in file");

bool is_blank(const QString& text)
{
    return text.trimmed().isEmpty();
}

// A text as an SQL literal. Quotes of either kind are data, so that
// O'Brien and a note with "quotes" in it are written as they stand.
QString sql_text(const QString& value)
{
    return QLatin1Char('\'') + QString(value).replace(QLatin1Char('\''), QLatin1String("''")) + QLatin1Char('\'');
}

// A date as SQL text writes it, month first whatever the locale.
QString sql_date(QDate day)
{
    return QLatin1Char('#') + day.toString(QStringLiteral("MM/dd/yyyy")) + QLatin1Char('#');
}

QVariant text_or_null(const QString& text)
{
    return is_blank(text) ? QVariant() : QVariant(text);
}

// A date field of the file, read by the locale's rules; nothing when it
// holds no date.
std::optional<QDate> file_date(const QString& text)
{
    QDateTime value;
    if (!vb::IsDate(text) || !vb::CDate(text, value)) {
        engine::Err().Clear();
        return std::nullopt;
    }
    return value.date();
}

QVariant date_or_null(const QString& text)
{
    if (is_blank(text))
        return QVariant();
    const std::optional<QDate> day = file_date(text);
    return day ? QVariant(engine::make_datetime(*day)) : QVariant();
}

// The letter stored for the gender: the first of the trimmed field.
QString gender_letter(const QString& text)
{
    return text.trimmed().left(1);
}

QString pupil_name(const Record& record)
{
    return record[First_Name] + QLatin1Char(' ') + record[Family_Name];
}

// The words of a failure, followed by the engine's own when there are any,
// on a line of their own; the error state is cleared.
QString with_engine_words(const QString& words)
{
    engine::ErrState& err = engine::Err();
    QString text = words;
    if (err.Number != 0)
        text += QStringLiteral("\n%1 : %2").arg(err.Number).arg(err.Description);
    err.Clear();
    return text;
}

void report_unexpected(const QString& routine)
{
    Report_Error(report::Unexpected, QStringLiteral("Unexpected error "), engine::mb::Critical, module_tag, routine);
}

// What becomes of one line.
enum class Stored { Added, Updated, Refused };

struct LineResult {
    Stored how = Stored::Refused;
    QString reason;
};

// The stored queries a run uses, opened once for the whole file.
struct Queries {
    std::unique_ptr<engine::QueryDef> insert_family;
    std::unique_ptr<engine::QueryDef> select_family_id;
    std::unique_ptr<engine::QueryDef> insert_pupil;

    bool open(engine::Database& db)
    {
        insert_family = db.QueryDefs(QStringLiteral("Qry_Insert_Family"));
        select_family_id = insert_family ? db.QueryDefs(QStringLiteral("Qry_Select_Family_id")) : nullptr;
        insert_pupil = select_family_id ? db.QueryDefs(QStringLiteral("Qry_Insert_Pupil")) : nullptr;
        return insert_pupil != nullptr;
    }
};

struct Parameter {
    const char* step;  // what a failure says was being done
    const char* name;
    QVariant value;
};

// Sets the parameters in order; false with `step` left at the one that failed.
bool set_parameters(engine::QueryDef& query, std::initializer_list<Parameter> parameters, QString& step)
{
    for (const Parameter& parameter : parameters) {
        step = QString::fromLatin1(parameter.step);
        if (!query.set_parameter(QString::fromLatin1(parameter.name), parameter.value))
            return false;
    }
    return true;
}

class LineWriter {
public:
    LineWriter(engine::Database& db, Queries& queries) : db_(db), queries_(queries) {}

    // Adds or brings up to date the pupil and family of a checked line; a
    // failure refuses the line with the words of the step that failed.
    LineResult store(const Record& record)
    {
        int pupil = 0;
        int family = 0;
        bool exists = false;
        QString reason;
        if (!Does_Pupil_Already_Exist(record, exists, pupil, family, reason))
            return {Stored::Refused, reason};
        if (exists) {
            if (!Update_Old_Family(family, record, reason) || !Update_Old_Pupil(pupil, record, reason))
                return {Stored::Refused, reason};
            return {Stored::Updated, QString()};
        }
        if (!Add_New_Family(record, family, reason) || !Add_New_Pupil(family, record, reason))
            return {Stored::Refused, reason};
        return {Stored::Added, QString()};
    }

private:
    // The first pupil of that first name in a family of that name.
    bool Does_Pupil_Already_Exist(const Record& record, bool& exists, int& pupil, int& family, QString& reason)
    {
        const QString sql =
            QStringLiteral("SELECT Pupils.Pupil_id AS Pupil, Pupils.Pupil_Family_id AS Family FROM Pupils, Families "
                           "WHERE Pupils.Pupil_Family_id = Families.Family_id AND Pupils.Pupil_Firstname = %1 "
                           "AND Families.Family_Name = %2 ORDER BY Pupils.Pupil_id;")
                .arg(sql_text(record[First_Name]), sql_text(record[Family_Name]));
        const std::unique_ptr<engine::Recordset> rows = db_.OpenRecordset(sql);
        if (!rows) {
            reason = with_engine_words(QStringLiteral("Unexpected error"));
            return false;
        }
        exists = !rows->at_eof();
        if (exists) {
            pupil = rows->Fields(QStringLiteral("Pupil")).toInt();
            family = rows->Fields(QStringLiteral("Family")).toInt();
        }
        return true;
    }

    bool Add_New_Family(const Record& record, int& family_id, QString& reason)
    {
        QString step = QStringLiteral("opening insert query");
        const auto failed = [&] {
            reason = with_engine_words(QStringLiteral("Unexpected error on ") + step);
            return false;
        };
        // A blank address is one blank: the name and address are the family's unique key.
        const QString address = is_blank(record[Address1]) ? QStringLiteral(" ") : record[Address1];
        engine::QueryDef& insert = *queries_.insert_family;
        if (!set_parameters(insert,
                            {{"Family Name", "F_Name", record[Family_Name]},
                             {"Family Address", "F_Address", address},
                             {"Family Address2", "F_Address2", text_or_null(record[Address2])},
                             {"Family Address3", "F_Address3", text_or_null(record[Address3])},
                             {"Family Address4", "F_Address4", text_or_null(record[Address4])},
                             {"Family Phone 1", "F_Phone_1", text_or_null(record[Phone_1])},
                             {"Family Phone 2", "F_Phone_2", text_or_null(record[Phone_2])},
                             {"Family Postcode", "F_PostCode", text_or_null(record[Post_Code])},
                             {"Family Notes", "F_Notes", text_or_null(record[Family_Notes])},
                             {"Family Markers", "F_Marker", text_or_null(record[Family_Marker])},
                             {"Family Correspondence", "F_Correspondence", text_or_null(record[Correspondence])}},
                            step))
            return failed();
        step = QStringLiteral("execute query");
        if (!insert.Execute(engine::dbopt::FailOnError))
            return failed();
        // The engine gives no key back: the family is found again by its name and address.
        step = QStringLiteral("re-reading record");
        engine::QueryDef& select = *queries_.select_family_id;
        if (!select.set_parameter(QStringLiteral("F_Name"), record[Family_Name])
            || !select.set_parameter(QStringLiteral("F_Address"), address))
            return failed();
        const std::unique_ptr<engine::Recordset> rows = select.OpenRecordset();
        if (!rows || rows->at_eof())
            return failed();
        family_id = rows->Fields(QStringLiteral("Family_id")).toInt();
        return true;
    }

    bool Add_New_Pupil(int family_id, const Record& record, QString& reason)
    {
        QString step = QStringLiteral("opening query");
        const auto failed = [&] {
            if (engine::Err().Number == engine::jet::DuplicateKey) {
                engine::Err().Clear();
                reason = QStringLiteral("This pupil ") + pupil_name(record) + QStringLiteral(" already exists");
            } else {
                reason = with_engine_words(QStringLiteral("Unexpected error on ") + step + QStringLiteral(" for pupil ")
                                           + pupil_name(record));
            }
            return false;
        };
        engine::QueryDef& insert = *queries_.insert_pupil;
        if (!set_parameters(insert,
                            {{"Pupil Birthdate", "P_Birthdate", date_or_null(record[Birth_Date])},
                             {"Pupil Start Date", "P_Startdate", date_or_null(record[Start_Date])},
                             {"Family id", "P_Family_id", family_id},
                             {"First Name", "P_FirstName", record[First_Name]},
                             {"Surname", "P_Surname", text_or_null(record[Alt_Surname])},
                             {"Pupil Reference 1", "P_Ref1", text_or_null(record[Ref1])},
                             {"Pupil Reference 2", "P_Ref2", text_or_null(record[Ref2])},
                             {"Pupil Reference 3", "P_Ref3", text_or_null(record[Ref3])},
                             {"Pupil Reference 4", "P_Ref4", text_or_null(record[Ref4])},
                             {"Pupil Marker", "P_Marker", text_or_null(record[Pupil_Marker])},
                             {"Pupil Medical", "P_Medical", text_or_null(record[Medical])},
                             {"Pupil Special", "P_Special", text_or_null(record[Special_Needs])},
                             {"Pupil E-mail", "P_E_Mail", text_or_null(record[E_Mail])},
                             {"Pupil Notes", "p_notes", text_or_null(record[Pupil_Notes])},
                             {"Pupil Registration ", "P_Regn_Fee", text_or_null(record[Regn_Fee])},
                             {"Pupil Gender", "P_Gender", gender_letter(record[Gender])},
                             {"Pupil Ethnicity", "p_ethn", text_or_null(record[Ethnicity])}},
                            step))
            return failed();
        step = QStringLiteral("execute query");
        if (!insert.Execute(engine::dbopt::FailOnError))
            return failed();
        return true;
    }

    // Only the fields that aren't blank are written, so that an import never
    // blanks what is stored. The name stays: it is how the family was found.
    bool Update_Old_Family(int family_id, const Record& record, QString& reason)
    {
        static const std::pair<Field, const char*> columns[] = {
            {Address1, "Family_Address"},   {Address2, "Family_Address2"}, {Address3, "Family_Address3"},
            {Address4, "Family_Address4"},  {Phone_1, "Family_Phone_1"},   {Phone_2, "Family_Phone_2"},
            {Post_Code, "Family_PostCode"}, {Family_Notes, "Family_Notes"}, {Family_Marker, "Family_Marker"},
            {Correspondence, "Family_Correspondence"},
        };
        QStringList sets;
        for (const auto& [field, column] : columns)
            if (!is_blank(record[field]))
                sets << QString::fromLatin1(column) + QStringLiteral(" = ") + sql_text(record[field]);
        if (sets.isEmpty())
            return true;
        const QString sql = QStringLiteral("UPDATE Families SET ") + sets.join(QStringLiteral(", "))
                            + QStringLiteral(" WHERE Family_id = ") + QString::number(family_id);
        if (db_.Execute(sql, engine::dbopt::FailOnError))
            return true;
        reason = with_engine_words(QStringLiteral("Update_Old_Family : updating old family"));
        return false;
    }

    // As for the family; the first name, the alternative surname and the
    // family stay as they are.
    bool Update_Old_Pupil(int pupil_id, const Record& record, QString& reason)
    {
        QStringList sets;
        for (const auto& [field, column] : {std::pair{Birth_Date, "Pupil_Birthdate"}, std::pair{Start_Date, "Pupil_Startdate"}})
            if (!is_blank(record[field]))
                if (const std::optional<QDate> day = file_date(record[field]))
                    sets << QString::fromLatin1(column) + QStringLiteral(" = ") + sql_date(*day);
        static const std::pair<Field, const char*> columns[] = {
            {Ref1, "Pupil_Ref_Num"},        {Ref2, "Pupil_Ref_Num2"},           {Ref3, "Pupil_Ref_Num3"},
            {Ref4, "Pupil_Ref_Num4"},       {Pupil_Marker, "Pupil_Marker"},     {Medical, "Pupil_Medical"},
            {Special_Needs, "Pupil_Special_Needs"}, {E_Mail, "Pupil_E_Mail"},   {Pupil_Notes, "Pupil_Notes"},
            {Ethnicity, "Pupil_Ethnicity"}, {Regn_Fee, "Pupil_Regn_Fee"},
        };
        for (const auto& [field, column] : columns)
            if (!is_blank(record[field]))
                sets << QString::fromLatin1(column) + QStringLiteral(" = ") + sql_text(record[field]);
        if (!is_blank(record[Gender]))
            sets << QStringLiteral("Pupil_Gender = ") + sql_text(gender_letter(record[Gender]));
        if (sets.isEmpty())
            return true;
        const QString sql = QStringLiteral("UPDATE Pupils SET ") + sets.join(QStringLiteral(", "))
                            + QStringLiteral(" WHERE Pupil_id = ") + QString::number(pupil_id);
        if (db_.Execute(sql, engine::dbopt::FailOnError))
            return true;
        reason = with_engine_words(QStringLiteral("Unexpected error at updating old pupil for pupil ") + pupil_name(record));
        return false;
    }

    engine::Database& db_;
    Queries& queries_;
};

// The whole file as text; false, reported, when it can't be read.
bool read_import_file(const QString& file_name, QString& text)
{
    QFile file(file_name);
    QByteArray bytes;
    if (file.open(QIODevice::ReadOnly)) {
        bytes = file.readAll();
        if (file.error() != QFileDevice::NoError)
            engine::Err() = read_failure(file);
    } else {
        engine::Err() = open_failure(file_name, file);
    }
    if (engine::Err().Number != 0) {
        Report_Error(report::Unexpected, QStringLiteral("Cannot open file ") + file_name, engine::mb::Critical, module_tag,
                     QStringLiteral("cmd_Add"));
        return false;
    }
    const DecodedText decoded = decode_text_bytes(bytes);
    if (decoded.encoding == TextEncoding::Windows1252)
        Report_Error(report::Trace, QStringLiteral("The import file ") + file_name
                         + QStringLiteral(" is not in UTF-8; it has been read as Windows-1252."),
                     engine::mb::OkOnly, module_tag);
    text = decoded.text;
    return true;
}

// Why a line's fields can't make a record; empty when they can. Fields
// beyond the 27th are allowed when blank, as spreadsheets write them.
QString fields_fault(const QStringList& fields)
{
    if (fields.size() < Field_Count)
        return cant_read_line;
    for (qsizetype extra = Field_Count; extra < fields.size(); ++extra)
        if (!is_blank(fields[extra]))
            return QStringLiteral("The line has %1 fields; a pupil's line has %2").arg(fields.size()).arg(Field_Count);
    return QString();
}

bool all_blank(const QStringList& fields)
{
    for (const QString& field : fields)
        if (!is_blank(field))
            return false;
    return true;
}

}  // namespace

HeaderAnswer Ask_Header_Question()
{
    const int answer = engine::MsgBox(QStringLiteral("Is this the header record?") + QLatin1Char('\n')
                                          + QStringLiteral("Or Press Cancel to Stop processing"),
                                      engine::mb::YesNoCancel, App_Title());
    if (answer == engine::answer::Yes)
        return HeaderAnswer::Header;
    return answer == engine::answer::No ? HeaderAnswer::Data : HeaderAnswer::Stop;
}

bool Import_Error(const QString& message)
{
    const int answer = engine::MsgBox(message + QLatin1Char('\n') + QStringLiteral("Contine?"),
                                      engine::mb::YesNo | engine::mb::Information, App_Title());
    if (answer != engine::answer::Yes)
        return false;
    Log_Passed_Over(message);
    return true;
}

void Log_Passed_Over(const QString& message)
{
    Report_Error(report::Trace, message, engine::mb::OkOnly, module_tag);
}

QString Check_Record(const Record& record)
{
    // The family.
    if (is_blank(record[Family_Name]))
        return QStringLiteral("Invalid family name");
    // Screens find families and pupils again by their names between double quotes.
    if (record[Family_Name].contains(QLatin1Char('"')))
        return QStringLiteral("The family name cannot include quotes");
    // The pupil.
    if (is_blank(record[First_Name]))
        return QStringLiteral("invalid first name");
    if (record[First_Name].contains(QLatin1Char('"')))
        return QStringLiteral("The first name cannot include quotes");
    if (!is_blank(record[Birth_Date])) {
        const std::optional<QDate> born = file_date(record[Birth_Date]);
        if (!born)
            return QStringLiteral("invalid birthdate");
        if (*born > QDate::currentDate())
            return QStringLiteral("birthdate is in the future");
    }
    if (!is_blank(record[Start_Date]) && !file_date(record[Start_Date]))
        return QStringLiteral("invalid start date");
    // Only the capital letters: the lower-case ones mark hidden pupils, which an import can't make.
    const QString gender = record[Gender].trimmed();
    if (gender != QLatin1String("M") && gender != QLatin1String("F"))
        return QStringLiteral("invalid gender");
    return QString();
}

ImportOutcome PupilImport::run(const QString& file_name, const ImportHooks& hooks)
{
    ImportOutcome outcome;
    Import_Stop = false;
    Import_Line = 0;
    Import_Header = false;
    Import_Running = true;
    struct Running {
        bool& flag;
        ~Running() { flag = false; }
    } running{Import_Running};

    const QString abandoned = QStringLiteral("File ") + file_name + QStringLiteral(" abandoned");
    outcome.status = abandoned;

    QString text;
    if (!read_import_file(file_name, text))
        return outcome;
    engine::Database* db = current_database_or_error();
    Queries queries;
    if (!db || !queries.open(*db)) {
        report_unexpected(QStringLiteral("cmd_Add"));
        return outcome;
    }
    engine::Workspace& workspace = Program_Workspace();
    const int depth_before = workspace.transaction_depth();
    if (!workspace.BeginTrans()) {
        report_unexpected(QStringLiteral("cmd_Add"));
        return outcome;
    }

    LineWriter writer(*db, queries);
    CsvReader reader(text);
    CsvRecord line;
    bool first = true;
    enum class Ending { Finished, Cancelled, Abandoned } ending = Ending::Finished;
    const auto at_line = [&](const QString& reason) {
        return QStringLiteral("Error detected in Import File ") + file_name + QStringLiteral(" at line ")
               + QString::number(Import_Line) + QLatin1Char('\n') + reason;
    };
    // Asks about a refused line; true to pass over it and go on.
    const auto refuse = [&](const QString& reason) {
        const QString message = at_line(reason);
        if (hooks.refused && hooks.refused(message)) {
            ++outcome.skipped;
            return true;
        }
        outcome.stopped_by = message;
        return false;
    };

    while (reader.next(line)) {
        // A stop asked for during the last line comes too late to stop anything.
        if (Import_Stop) {
            ending = Ending::Cancelled;
            break;
        }
        Import_Line = line.line;
        if (!line.complete) {
            // An open quote has taken the rest of the file: there is nothing to go on with.
            outcome.stopped_by = at_line(cant_read_line);
            Report_Error(report::Detected, outcome.stopped_by, engine::mb::OkOnly, module_tag, QStringLiteral("cmd_Add"));
            ending = Ending::Abandoned;
            break;
        }
        if (all_blank(line.fields))
            continue;
        if (const QString fault = fields_fault(line.fields); !fault.isEmpty()) {
            if (refuse(fault))
                continue;
            ending = Ending::Abandoned;
            break;
        }
        Record record;
        for (int field = 0; field < Field_Count; ++field)
            record[field] = line.fields[field];

        Import_Header = false;
        if (first) {
            first = false;
            const HeaderAnswer answer = hooks.first_record ? hooks.first_record(record) : HeaderAnswer::Data;
            if (answer == HeaderAnswer::Stop) {
                Import_Stop = true;
                ending = Ending::Cancelled;
                break;
            }
            Import_Header = answer == HeaderAnswer::Header;
        }

        if (!Import_Header) {
            if (hooks.processing)
                hooks.processing(record);
            LineResult result{Stored::Refused, Check_Record(record)};
            if (result.reason.isEmpty()) {
                // The line's own transaction, so that a line refused half-way leaves nothing.
                if (!workspace.BeginTrans()) {
                    report_unexpected(QStringLiteral("Update_Record"));
                    ending = Ending::Abandoned;
                    break;
                }
                result = writer.store(record);
                if (!(result.how == Stored::Refused ? workspace.Rollback() : workspace.CommitTrans())) {
                    report_unexpected(QStringLiteral("Update_Record"));
                    ending = Ending::Abandoned;
                    break;
                }
            }
            if (result.how == Stored::Added)
                ++outcome.added;
            else if (result.how == Stored::Updated)
                ++outcome.updated;
            else if (!refuse(result.reason)) {
                Import_Stop = true;
                ending = Ending::Cancelled;
                break;
            }
        }
        if (hooks.between_records)
            hooks.between_records();
    }

    if (ending == Ending::Finished) {
        if (workspace.CommitTrans()) {
            outcome.end = ImportEnd::Processed;
            outcome.status = QStringLiteral("File ") + file_name + QStringLiteral(" processed");
            return outcome;
        }
        report_unexpected(QStringLiteral("cmd_Add"));
        ending = Ending::Abandoned;
    }
    // Nothing of the file is kept: every level this run began is undone.
    while (workspace.transaction_depth() > depth_before)
        if (!workspace.Rollback())
            break;
    outcome.added = 0;
    outcome.updated = 0;
    if (ending == Ending::Cancelled) {
        outcome.end = ImportEnd::Cancelled;
        outcome.status = QStringLiteral("Import Cancelled");
    }
    return outcome;
}

}  // namespace pupil_import
