#include "shell/locale_formats.h"

#include "engine/locale_source.h"
#include "shell/error_log.h"

#include <array>

namespace {

// The globals, with the values they keep when the settings can't be read.
struct Formats {
    short date_order = 1;
    QString date_sep = QStringLiteral(" ");
    QString time_sep = QStringLiteral(":");
    QString date_format = QStringLiteral("dd mmm yyyy");
    QString day_month_format = QStringLiteral("dd-mmm");
    QString entry_date_format = QStringLiteral("dd mmm yyyy");
    QString time_format = QStringLiteral("hh:nn");
    QString time_ampm_format = QStringLiteral("hh:nn ampm");
    bool standard = false;
};

Formats& formats()
{
    static Formats values;
    return values;
}

}  // namespace

short& Glob_Date_Order() { return formats().date_order; }
QString& Glob_Date_Sep() { return formats().date_sep; }
QString& Glob_Time_Sep() { return formats().time_sep; }
QString& Glob_Date_Format() { return formats().date_format; }
QString& Glob_Day_Month_Format() { return formats().day_month_format; }
QString& Glob_Entry_Date_Format() { return formats().entry_date_format; }
QString& Glob_Time_Format() { return formats().time_format; }
QString& Glob_Time_AMPM_Format() { return formats().time_ampm_format; }
bool& Glob_Standard_Formats() { return formats().standard; }

namespace {

// The values are read into 8-character buffers, closing zero included.
constexpr int buffer_size = 8;
constexpr int error_insufficient_buffer = 122;

struct LocaleRow {
    int lctype;
    QString value;
};

// Reads one value as into a fixed buffer: false and the error code on failure.
bool read_row(LocaleRow& row, int& error)
{
    error = 0;
    QString value;
    if (!engine::locale_source().get_info(row.lctype, value, error))
        return false;
    while (value.endsWith(QChar(0)))
        value.chop(1);
    if (value.size() + 1 > buffer_size) {
        error = error_insufficient_buffer;
        return false;
    }
    row.value = value;
    return true;
}

QString error_word(int error, int lctype)
{
    switch (error) {
    case 87: return QStringLiteral("Invalid Parameter ");
    case error_insufficient_buffer: return QStringLiteral("Insufficient Buffer");
    case 1004: return QStringLiteral("Invalid Flags ") + QString::number(lctype, 16).toUpper();
    default: return QStringLiteral("??");
    }
}

}  // namespace

void Setup_Formats()
{
    formats() = Formats{};

    std::array<LocaleRow, 4> rows{{{engine::lctype::SDATE, {}},
                                   {engine::lctype::IDATE, {}},
                                   {engine::lctype::ILDATE, {}},
                                   {engine::lctype::STIME, {}}}};
    int failures = 0;
    for (LocaleRow& row : rows) {
        int error = 0;
        if (read_row(row, error))
            continue;
        Report_Error(report::Detected, QStringLiteral("Unexpected error Finding Date and Time formats"), 0,
                     QStringLiteral("globLib"), error_word(error, row.lctype));
        ++failures;
    }
    if (failures > 0)
        return;

    const QString& sep = rows[0].value;
    const QString& short_order = rows[1].value;
    const QString& long_order = rows[2].value;
    short order = 0;
    QString date_format;
    QString day_month_format;
    if (short_order != long_order) {
        // The order is undecided: day first, and no day-month picture.
        date_format = QStringLiteral("dd") + sep + QStringLiteral("mmm") + sep + QStringLiteral("yyyy");
    } else {
        bool ok = false;
        order = static_cast<short>(long_order.trimmed().toInt(&ok));
        if (!ok)
            order = 1;
        switch (order) {
        case 0:
            date_format = QStringLiteral("mmm") + sep + QStringLiteral("dd") + sep + QStringLiteral("yyyy");
            day_month_format = QStringLiteral("mmm") + sep + QStringLiteral("dd");
            break;
        case 2:
            date_format = QStringLiteral("yyyy") + sep + QStringLiteral("mmm") + sep + QStringLiteral("dd");
            day_month_format = QStringLiteral("mmm") + sep + QStringLiteral("dd");
            break;
        default:
            date_format = QStringLiteral("dd") + sep + QStringLiteral("mmm") + sep + QStringLiteral("yyyy");
            day_month_format = QStringLiteral("dd") + sep + QStringLiteral("mmm");
            break;
        }
    }
    Glob_Date_Order() = order;
    Glob_Date_Sep() = sep;
    Glob_Date_Format() = date_format;
    Glob_Entry_Date_Format() = date_format;
    Glob_Day_Month_Format() = day_month_format;

    QString time_sep = rows[3].value;
    if (time_sep.trimmed().isEmpty())
        time_sep = QStringLiteral(":");
    Glob_Time_Sep() = time_sep;
    Glob_Time_Format() = QStringLiteral("hh") + time_sep + QStringLiteral("nn");
    Glob_Time_AMPM_Format() = Glob_Time_Format() + QStringLiteral(" ampm");

    Glob_Standard_Formats() = time_sep == QLatin1String(":") && sep == QLatin1String(" ") && order == 1;
}
