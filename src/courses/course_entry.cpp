#include "courses/course_entry.h"

#include "engine/currency.h"
#include "engine/err.h"
#include "engine/jet_date.h"
#include "engine/locale_source.h"
#include "engine/vb_values.h"
#include "shell/locale_formats.h"
#include "shell/settings.h"
#include "toolkit/typed_time.h"

#include <QLocale>
#include <cstdint>

namespace {

constexpr int minutes_in_a_day = 1440;

// A time of day in the machine's time format, as courses keep and show it.
QString clock_text(QTime time)
{
    return vb::Format(engine::make_datetime(engine::zero_date(), time), Glob_Time_Format());
}

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
    QTime start;
    if (!Read_Time_Of_Day(entry.start_time, start))
        return {CourseField::Start_Time, QStringLiteral("The start time must be a time of day, such as 9:30 or 21:30")};
    entry.start_time = clock_text(start);
    if (entry.day_index < 1)
        return {CourseField::Day, QStringLiteral("There must be a day")};
    return {};
}

bool Course_Clock_Times(const QString& start_time, const QString& duration, QString& start_text, QString& end_text)
{
    QTime start;
    int16_t minutes = 0;
    if (!Read_Time_Of_Day(start_time, start)) {
        engine::Err().Raise(engine::vberr::TypeMismatch, QStringLiteral("Type mismatch"));
        return false;
    }
    if (!vb::CInt(duration, minutes))
        return false;
    // QTime goes round the clock: a late lesson ends at the next day's time.
    start_text = clock_text(start);
    end_text = clock_text(start.addSecs(minutes * 60));
    return true;
}

QString Course_Time_Shown(const QString& start_time)
{
    QTime time;
    if (!Read_Time_Of_Day(start_time, time))
        return start_time;
    return clock_text(time);
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
