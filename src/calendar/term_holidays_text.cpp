// The list of holidays per weekday that Number_Lessons keeps for reports.

#include "calendar/calendar_words.h"
#include "calendar/term_calendar.h"
#include "engine/database.h"
#include "engine/jet_date.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "engine/vb_values.h"
#include "script/current_database.h"
#include "shell/error_log.h"
#include "shell/locale_formats.h"

bool TermCalendar::Build_Hols_Str(QDate start, QDate end)
{
    holidays_text_.fill(QString());
    engine::Database* db = current_database_or_error();
    std::unique_ptr<engine::QueryDef> query = db ? db->QueryDefs(QStringLiteral("Qry_Select_Holidays")) : nullptr;
    std::unique_ptr<engine::Recordset> holidays;
    if (query && query->set_parameter(QStringLiteral("p_start_date"), engine::make_datetime(start))
        && query->set_parameter(QStringLiteral("p_end_date"), engine::make_datetime(end)))
        holidays = query->OpenRecordset();
    if (!holidays) {
        Report_Error(report::Unexpected, QStringLiteral("Unexpected error getting list of holiday dates"),
                     engine::mb::Critical, calendar_tag(), QStringLiteral("Build_Hols_Str"));
        return false;
    }
    for (holidays->MoveFirst(); !holidays->at_eof(); holidays->MoveNext()) {
        const QVariant day_off = holidays->Fields(QStringLiteral("Day_Off"));
        QString& text = holidays_text_[weekday_index(day_off.toDateTime().date())];
        if (!text.trimmed().isEmpty())
            text += QStringLiteral(", ");
        text += vb::Format(day_off, Glob_Day_Month_Format());
    }
    return true;
}
