#include "courses/course_entry.h"

#include "engine/currency.h"
#include "engine/err.h"
#include "engine/locale_source.h"
#include "engine/vb_values.h"
#include "shell/locale_formats.h"
#include "shell/settings.h"

#include <QLocale>
#include <cstdint>

namespace {

constexpr int minutes_in_a_day = 1440;

}  // namespace

CourseRefusal Check_Course_Entry(CourseEntry& entry)
{
    const QString price_words = QStringLiteral("The price must be a decimal number");
    if (!entry.price.trimmed().isEmpty() && !vb::IsNumeric(entry.price))
        return {CourseField::Price, price_words};
    if (entry.price.trimmed().isEmpty())
        entry.price = QStringLiteral("0");
    engine::Currency money;
    if (!vb::CCur(entry.price, money))
        return {CourseField::Price, price_words};

    if (!vb::IsNumeric(entry.duration))
        return {CourseField::Duration, QStringLiteral("The duration must be a number")};
    int16_t minutes = 0;
    if (!vb::CInt(entry.duration, minutes))
        return {CourseField::Duration, QStringLiteral("The duration must be an integer")};
    // Zero and a whole day are both allowed: the words are the program's own.
    if (minutes < 0)
        return {CourseField::Duration, QStringLiteral("The duration must be positive!")};
    if (minutes > minutes_in_a_day)
        return {CourseField::Duration, QStringLiteral("The duration must be less than a day!")};
    engine::Err().Clear();

    if (entry.start_time.trimmed().isEmpty())
        entry.start_time = QStringLiteral("00:00");
    if (entry.day_index < 1)
        return {CourseField::Day, QStringLiteral("There must be a day")};
    return {};
}

bool Course_Clock_Times(const QString& start_time, const QString& duration, QString& start_text, QString& end_text)
{
    QDateTime start;
    int16_t minutes = 0;
    if (!vb::CDate(start_time, start) || !vb::CInt(duration, minutes))
        return false;
    const QDateTime end = vb::DateAdd(QStringLiteral("n"), minutes, start);
    if (!end.isValid())
        return false;
    start_text = vb::Format(start, Glob_Time_Format());
    end_text = vb::Format(end, Glob_Time_Format());
    return true;
}

QString Course_Time_Shown(const QString& start_time)
{
    QDateTime time;
    if (start_time.trimmed().isEmpty() || !vb::CDate(start_time, time)) {
        engine::Err().Clear();
        return start_time;
    }
    return vb::Format(time, Glob_Time_Format());
}

QStringList Course_Day_Names()
{
    const QLocale locale = engine::locale_source().locale();
    QStringList names;
    names << locale.dayName(Qt::Sunday, QLocale::LongFormat);
    for (int day = Qt::Monday; day <= Qt::Saturday; ++day)
        names << locale.dayName(day, QLocale::LongFormat);
    return names;
}

QString Course_Order_Query()
{
    const QString chosen = Settings().course_query.trimmed();
    return chosen.isEmpty() ? QStringLiteral("Qry_Order_Courses_Title") : chosen;
}
