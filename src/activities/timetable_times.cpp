#include "activities/timetable_times.h"

#include "engine/err.h"
#include "engine/vb_values.h"
#include "shell/locale_formats.h"

#include <QDateTime>

namespace timetable {

namespace {

bool read_time(const QString& text, QDateTime& value)
{
    if (vb::IsDate(text) && vb::CDate(text, value))
        return true;
    engine::Err().Clear();
    return false;
}

}  // namespace

bool holds_time(const QString& text)
{
    return vb::IsDate(text);
}

QString time_text(const QString& text)
{
    QDateTime value;
    return read_time(text, value) ? vb::Format(value, Glob_Time_Format()) : text;
}

QString add_minutes(const QString& time, int minutes)
{
    QDateTime value;
    if (!read_time(time, value))
        return time;
    return vb::Format(vb::DateAdd(QStringLiteral("n"), minutes, value), Glob_Time_Format());
}

int minutes_between(const QString& from, const QString& to)
{
    QDateTime start;
    QDateTime end;
    if (!read_time(from, start) || !read_time(to, end))
        return 0;
    return static_cast<int>(vb::DateDiff(QStringLiteral("n"), start, end));
}

int whole_minutes(const QString& text)
{
    const QString trimmed = text.trimmed();
    int16_t minutes = 0;
    if (trimmed.isEmpty() || !vb::IsNumeric(trimmed) || !vb::CInt(trimmed, minutes)) {
        engine::Err().Clear();
        return 0;
    }
    return minutes;
}

bool is_blank(const QString& text)
{
    return text.trimmed().isEmpty();
}

}  // namespace timetable
