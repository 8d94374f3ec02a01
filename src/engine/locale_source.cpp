#include "engine/locale_source.h"

namespace engine {

namespace {

// A pattern without its quoted text ("d 'de' MMMM", "HH 'h' mm"), whose
// letters are words, not fields.
QString without_quoted_text(const QString& pattern)
{
    QString fields;
    bool quoted = false;
    for (const QChar c : pattern) {
        if (c == QLatin1Char('\''))
            quoted = !quoted;
        else if (!quoted)
            fields += c;
    }
    return fields;
}

// Where the day of the month stands: "d" or "dd", not the weekday's name
// ("ddd", "dddd") that long patterns begin with. -1 when there is none.
qsizetype day_of_month_at(const QString& pattern)
{
    for (qsizetype i = 0; i < pattern.size();) {
        qsizetype end = i;
        while (end < pattern.size() && pattern[end] == pattern[i])
            ++end;
        if (pattern[i] == QLatin1Char('d') && end - i <= 2)
            return i;
        i = end;
    }
    return -1;
}

}  // namespace

int QtLocaleSource::date_order_of(const QString& quoted_pattern)
{
    const QString pattern = without_quoted_text(quoted_pattern);
    const qsizetype d = day_of_month_at(pattern);
    const qsizetype m = pattern.indexOf(QLatin1Char('M'));
    const qsizetype y = pattern.indexOf(QLatin1Char('y'));
    if (y >= 0 && (m < 0 || y < m) && (d < 0 || y < d))
        return 2;
    if (m >= 0 && d >= 0 && m < d)
        return 0;
    return 1;
}

QString QtLocaleSource::separator_of(const QString& quoted_pattern, QChar field)
{
    // The first run of characters that follows a run of `field` letters and
    // is not a letter.
    const QString pattern = without_quoted_text(quoted_pattern);
    const qsizetype start = pattern.indexOf(field);
    if (start < 0)
        return QString();
    qsizetype i = start;
    while (i < pattern.size() && pattern[i] == field)
        ++i;
    QString separator;
    while (i < pattern.size() && !pattern[i].isLetter()) {
        separator += pattern[i];
        ++i;
    }
    return separator;
}

bool QtLocaleSource::get_info(int type, QString& value, int& error) const
{
    error = 0;
    const QString short_date = locale_.dateFormat(QLocale::ShortFormat);
    switch (type) {
    case lctype::SDATE: {
        const int order = date_order_of(short_date);
        const QChar first = order == 2 ? QLatin1Char('y') : order == 0 ? QLatin1Char('M') : QLatin1Char('d');
        value = separator_of(short_date, first);
        return true;
    }
    case lctype::IDATE:
        value = QString::number(date_order_of(short_date));
        return true;
    case lctype::ILDATE:
        value = QString::number(date_order_of(locale_.dateFormat(QLocale::LongFormat)));
        return true;
    case lctype::STIME: {
        const QString time = locale_.timeFormat(QLocale::ShortFormat);
        const QChar hour = time.contains(QLatin1Char('H')) ? QLatin1Char('H') : QLatin1Char('h');
        value = separator_of(time, hour);
        return true;
    }
    default:
        error = 1004;
        return false;
    }
}

namespace {
const LocaleSource*& installed()
{
    static const LocaleSource* source = nullptr;
    return source;
}
}  // namespace

const LocaleSource& locale_source()
{
    static const QtLocaleSource system_source;
    return installed() ? *installed() : system_source;
}

void set_locale_source(const LocaleSource* source)
{
    installed() = source;
}

}  // namespace engine
