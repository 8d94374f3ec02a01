#include "engine/locale_source.h"

namespace engine {

int QtLocaleSource::date_order_of(const QString& pattern)
{
    const qsizetype d = pattern.indexOf(QLatin1Char('d'));
    const qsizetype m = pattern.indexOf(QLatin1Char('M'));
    const qsizetype y = pattern.indexOf(QLatin1Char('y'));
    if (y >= 0 && (m < 0 || y < m) && (d < 0 || y < d))
        return 2;
    if (m >= 0 && d >= 0 && m < d)
        return 0;
    return 1;
}

QString QtLocaleSource::separator_of(const QString& pattern, QChar field)
{
    // The first run of characters that follows a run of `field` letters and
    // is neither a letter nor a quote.
    const qsizetype start = pattern.indexOf(field);
    if (start < 0)
        return QString();
    qsizetype i = start;
    while (i < pattern.size() && pattern[i] == field)
        ++i;
    QString separator;
    while (i < pattern.size() && !pattern[i].isLetter() && pattern[i] != QLatin1Char('\'')) {
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
