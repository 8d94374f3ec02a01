#include "toolkit/typed_time.h"

#include "shell/locale_formats.h"

#include <QRegularExpression>

namespace {

enum class Meridiem { None, Am, Pm };

// Splits off a trailing am or pm, with or without a space and dots.
Meridiem take_meridiem(QString& text)
{
    static const QRegularExpression suffix(QStringLiteral("^(.*?)\\s*([ap])\\.?(?:m\\.?)?$"),
                                           QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = suffix.match(text);
    if (!match.hasMatch())
        return Meridiem::None;
    text = match.captured(1);
    return match.captured(2).compare(QLatin1String("a"), Qt::CaseInsensitive) == 0 ? Meridiem::Am : Meridiem::Pm;
}

// Hours, minutes and seconds as typed, before am or pm is applied.
bool take_clock(const QString& text, int& hour, int& minute, int& second)
{
    QString separators = QStringLiteral(":.");
    const QString machine = Glob_Time_Sep().trimmed();
    if (machine.size() == 1 && !separators.contains(machine) && !machine.at(0).isLetterOrNumber())
        separators += machine;
    const QString sep = QLatin1Char('[') + QRegularExpression::escape(separators) + QLatin1Char(']');
    const QRegularExpression clock(QStringLiteral("^([0-9]{1,2})") + sep + QStringLiteral("([0-9]{2})(?:") + sep
                                   + QStringLiteral("([0-9]{2}))?$"));
    static const QRegularExpression figures(QStringLiteral("^[0-9]{1,4}$"));

    second = 0;
    const QRegularExpressionMatch parts = clock.match(text);
    if (parts.hasMatch()) {
        hour = parts.captured(1).toInt();
        minute = parts.captured(2).toInt();
        if (parts.lastCapturedIndex() >= 3 && !parts.captured(3).isEmpty())
            second = parts.captured(3).toInt();
        return true;
    }
    if (!figures.match(text).hasMatch())
        return false;
    // One or two figures are an hour; three or four end in the minutes.
    const int value = text.toInt();
    if (text.size() <= 2) {
        hour = value;
        minute = 0;
    } else {
        hour = value / 100;
        minute = value % 100;
    }
    return true;
}

}  // namespace

bool Read_Time_Of_Day(const QString& typed, QTime& time)
{
    QString text = typed.trimmed();
    const Meridiem meridiem = take_meridiem(text);
    text = text.trimmed();
    int hour = 0;
    int minute = 0;
    int second = 0;
    if (text.isEmpty() || !take_clock(text, hour, minute, second))
        return false;
    if (minute > 59 || second > 59)
        return false;
    if (meridiem == Meridiem::None) {
        if (hour > 23)
            return false;
    } else {
        // On a twelve-hour clock 12 am is midnight and 12 pm noon.
        if (hour < 1 || hour > 12)
            return false;
        hour %= 12;
        if (meridiem == Meridiem::Pm)
            hour += 12;
    }
    time = QTime(hour, minute, second);
    return true;
}
