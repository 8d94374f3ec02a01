#include "activities/timetable_store.h"

#include "activities/timetable_times.h"
#include "database/db_handling.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/jet_date.h"
#include "engine/msg_box.h"
#include "engine/vb_values.h"
#include "engine/workspace.h"
#include "script/current_database.h"
#include "shell/error_log.h"

namespace timetable {

namespace {

std::unique_ptr<engine::Recordset> open_pupils(const QString& query_name, QDate date)
{
    engine::Database* db = current_database_or_error();
    std::unique_ptr<engine::QueryDef> query = db ? db->QueryDefs(query_name) : nullptr;
    if (!query || !query->set_parameter(QStringLiteral("par_DAte"), engine::make_datetime(date)))
        return nullptr;
    return query->OpenRecordset();
}

}  // namespace

QString module()
{
    return QStringLiteral("fexamlist");
}

std::unique_ptr<engine::Recordset> open_timed_pupils(QDate date)
{
    return open_pupils(QStringLiteral("Qry_Exam_Timetable_Pupils_Times"), date);
}

std::unique_ptr<engine::Recordset> open_pupils_without_times(QDate date)
{
    return open_pupils(QStringLiteral("Qry_Exam_Timetable_Pupils_Without_Times"), date);
}

Writes::Writes() : began_(Program_Workspace().BeginTrans()) {}

Writes::~Writes()
{
    if (began_ && !done_)
        Program_Workspace().Rollback();
}

bool Writes::commit()
{
    done_ = true;
    return began_ && Program_Workspace().CommitTrans();
}

}  // namespace timetable

namespace {

constexpr int subscript_out_of_range = 9;

void report_missing_id()
{
    Report_Error(report::Detected,
                 QStringLiteral("Programming error - no result_id\nExit out of this screen and start your changes again!"),
                 engine::mb::OkOnly, timetable::module(), QStringLiteral("Extract_Result_ids"));
}

qint32 id_of(const QString& piece)
{
    int32_t id = -1;
    if (!vb::IsNumeric(piece) || !vb::CLng(piece, id)) {
        engine::Err().Clear();
        return -1;
    }
    return id;
}

}  // namespace

bool Extract_Result_ids(short count, const QString& list, QVector<qint32>& ids)
{
    ids = QVector<qint32>(1, 0);
    if (count == 0)
        return true;
    if (count < 1 || count > Most_Result_ids) {
        engine::Err().Raise(subscript_out_of_range, QStringLiteral("Subscript out of range"));
        return false;
    }
    ids.resize(count + 1);
    qsizetype start = 0;
    for (int i = 1; i <= count; ++i) {
        const qsizetype comma = list.indexOf(QLatin1Char(','), start);
        if (comma < 1)
            continue;
        const QString piece = list.mid(start, comma - start).trimmed();
        if (piece.isEmpty() || !vb::IsNumeric(piece)) {
            report_missing_id();
            ids[i] = -1;
        } else {
            ids[i] = id_of(piece);
        }
        start = comma + 1;
    }
    ids[count] = id_of(list.mid(start).trimmed());
    return true;
}

bool Update_Register(qint32 id, const QString& time, short order)
{
    engine::Database* db = current_database_or_error();
    std::unique_ptr<engine::QueryDef> query = db ? db->QueryDefs(QStringLiteral("Qry_Update_Exam_Results_Time")) : nullptr;
    const QString stored_time = timetable::is_blank(time) ? QString() : timetable::time_text(time);
    const bool written = query && query->set_parameter(QStringLiteral("par_Result_id"), id)
                         && query->set_parameter(QStringLiteral("par_order"), order)
                         && query->set_parameter(QStringLiteral("par_time"), stored_time)
                         && query->Execute(engine::dbopt::FailOnErrorConsistent);
    if (!written)
        Report_Error(report::Unexpected, QStringLiteral("Unexpected error "), engine::mb::Information, timetable::module(),
                     QStringLiteral("Update_Register"));
    return written;
}
