#include "engine/jet_date.h"

#include <QRegularExpression>
#include <cmath>

namespace engine {

QDate zero_date() { return QDate(1899, 12, 30); }

QDateTime make_datetime(QDate date, QTime time)
{
    return QDateTime(date, time, Qt::UTC);
}

QDateTime zero_datetime() { return make_datetime(zero_date()); }

QString date_to_storage(const QDateTime& value)
{
    return value.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

std::optional<QDateTime> storage_to_date(const QString& text)
{
    static const QRegularExpression form(QStringLiteral(R"(^(\d{4})-(\d{2})-(\d{2})(?: (\d{2}):(\d{2}):(\d{2}))?$)"));
    const auto match = form.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    const QDate date(match.captured(1).toInt(), match.captured(2).toInt(), match.captured(3).toInt());
    const QTime time = match.captured(4).isEmpty()
                           ? QTime(0, 0, 0)
                           : QTime(match.captured(4).toInt(), match.captured(5).toInt(), match.captured(6).toInt());
    if (!date.isValid() || !time.isValid())
        return std::nullopt;
    return make_datetime(date, time);
}

double date_to_serial(const QDateTime& value)
{
    const qint64 days = zero_date().daysTo(value.date());
    const double fraction = value.time().msecsSinceStartOfDay() / 86400000.0;
    // Before the zero date the platform counts the days back but the time forward.
    return days >= 0 ? days + fraction : days - fraction;
}

QDateTime serial_to_date(double serial)
{
    // The platform's dates run from 1 January 100 to 31 December 9999; a
    // number outside them is no date.
    if (!std::isfinite(serial) || serial < -657434.0 || serial >= 2958466.0)
        return QDateTime();
    const double whole = std::trunc(serial);
    const double fraction = std::fabs(serial - whole);
    qint64 seconds = std::llround(fraction * 86400.0);
    qint64 days = static_cast<qint64>(whole);
    if (seconds >= 86400) {
        seconds -= 86400;
        days += serial < 0 ? -1 : 1;
    }
    return make_datetime(zero_date().addDays(days), QTime(0, 0, 0).addSecs(static_cast<int>(seconds)));
}

std::optional<QString> to_storage_date(const QVariant& value)
{
    if (value.isNull() || !value.isValid())
        return std::nullopt;
    switch (value.typeId()) {
    case QMetaType::QDateTime: {
        const QDateTime dt = value.toDateTime();
        return date_to_storage(make_datetime(dt.date(), QTime(dt.time().hour(), dt.time().minute(), dt.time().second())));
    }
    case QMetaType::QDate:
        return date_to_storage(make_datetime(value.toDate()));
    case QMetaType::QTime: {
        const QTime t = value.toTime();
        return date_to_storage(make_datetime(zero_date(), QTime(t.hour(), t.minute(), t.second())));
    }
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::Float: {
        const QDateTime date = serial_to_date(value.toDouble());
        if (!date.isValid())
            return std::nullopt;
        return date_to_storage(date);
    }
    default:
        break;
    }
    const QString text = value.toString().trimmed();
    if (auto stored = storage_to_date(text))
        return date_to_storage(*stored);
    static const QRegularExpression us(
        QStringLiteral(R"(^(\d{1,2})/(\d{1,2})/(\d{2,4})(?:\s+(\d{1,2}):(\d{2})(?::(\d{2}))?)?$)"));
    const auto match = us.match(text);
    if (match.hasMatch()) {
        int year = match.captured(3).toInt();
        if (match.captured(3).size() <= 2)
            year += year < 30 ? 2000 : 1900;
        const QDate date(year, match.captured(1).toInt(), match.captured(2).toInt());
        const QTime time = match.captured(4).isEmpty()
                               ? QTime(0, 0, 0)
                               : QTime(match.captured(4).toInt(), match.captured(5).toInt(),
                                       match.captured(6).isEmpty() ? 0 : match.captured(6).toInt());
        if (date.isValid() && time.isValid())
            return date_to_storage(make_datetime(date, time));
        return std::nullopt;
    }
    bool numeric = false;
    const double serial = text.toDouble(&numeric);
    if (numeric && serial_to_date(serial).isValid())
        return date_to_storage(serial_to_date(serial));
    return std::nullopt;
}

QDateTime now()
{
    const QDateTime local = QDateTime::currentDateTime();
    return make_datetime(local.date(), QTime(local.time().hour(), local.time().minute(), local.time().second()));
}

}  // namespace engine
