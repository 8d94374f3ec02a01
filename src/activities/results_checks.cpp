#include "activities/results_checks.h"

#include "engine/err.h"
#include "engine/vb_values.h"

#include <QDateTime>

bool Check_Date_on_List(const engine::Recordset& dates, const QString& date, bool& on_list)
{
    on_list = false;
    std::unique_ptr<engine::Recordset> clone = dates.Clone();
    if (!clone)
        return false;
    if (clone->RecordCount() > 0) {
        QDateTime day;
        if (!vb::CDate(date, day))
            return false;
        // The search's date is always month first, whatever the machine's order.
        const QString criteria = QStringLiteral("ActT_Date = #") + vb::Format(day, QStringLiteral("mm/dd/yyyy")) + QStringLiteral(" #");
        if (!clone->FindFirst(criteria))
            return false;
        on_list = !clone->NoMatch();
    }
    clone->Close();
    return true;
}

namespace {

QString date_refusal(const QString& text, const engine::Recordset& dates)
{
    if (text.trimmed().isEmpty())
        return QStringLiteral("Please enter a date");
    if (!vb::IsDate(text))
        return QStringLiteral("The entered date is invalid");
    bool on_list = false;
    if (!Check_Date_on_List(dates, text, on_list) || !on_list) {
        engine::Err().Clear();
        return QStringLiteral("The entered date is NOT on the activities list");
    }
    return QString();
}

QString time_refusal(const QString& text)
{
    if (text.trimmed().isEmpty())
        return QStringLiteral("Please select a time");
    if (!vb::IsDate(text))
        return QStringLiteral("The time is invalid");
    return QString();
}

// A mark of 100 passes, whatever the words say.
QString mark_refusal(const QString& text)
{
    int16_t mark = 0;
    if (!vb::IsNumeric(text) || !vb::CInt(text, mark) || mark > 100 || mark < 0) {
        engine::Err().Clear();
        return QStringLiteral("The mark must be a whole number,  less than 100");
    }
    return QString();
}

}  // namespace

QString Cell_Refusal(short column, const QString& text, const engine::Recordset& dates)
{
    switch (column) {
    case result::Date:
        return date_refusal(text, dates);
    case result::Time:
        return time_refusal(text);
    case result::Mark:
        return mark_refusal(text);
    default:
        return QString();
    }
}
