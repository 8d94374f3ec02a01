#include "shell/preferences.h"

#include "shell/course_order_query.h"
#include "shell/file_checks.h"
#include "shell/settings.h"

namespace {

// Compared as the file names of the machine the program came from, where
// letter case makes no difference.
bool is_standard(const QString& script, const QString& standard_name)
{
    return script.toUpper() == build_path(Settings().script_dir, standard_name).toUpper();
}

}  // namespace

QString Date_Order_Text(short order)
{
    switch (order) {
    case 0: return QStringLiteral("Month Day Year");
    case 1: return QStringLiteral("Day Month Year");
    case 2: return QStringLiteral("Year Month Day");
    default: return QStringLiteral("unknown - defaulting to day month year");
    }
}

QString Discount_Schemes_Text()
{
    const SettingsRecord& s = Settings();
    QString text = QStringLiteral("None");
    const bool own_courses = !is_standard(s.term_script, QStringLiteral("InTerms.sql"))
                             || !is_standard(s.cost_script, QStringLiteral("CrsCosts.sql"));
    if (own_courses)
        text = QStringLiteral("Personalised course discounts currently in use");
    if (!is_standard(s.activity_script, QStringLiteral("InActDts.sql"))) {
        const QString activities = QStringLiteral("Personalised activity discounts currently in use");
        text = own_courses ? text + QLatin1Char('\n') + activities : activities;
    }
    return text;
}

short Course_Order_Number()
{
    QString name = Settings().course_query;
    short number = 0;
    DB_Convert_Course_Qry(name, number);
    return number;
}

bool Store_Course_Order(short number)
{
    QString name;
    DB_Convert_Course_Qry(name, number);
    if (name.trimmed().isEmpty())
        return true;
    return Replace_Defaults(false, QString(), QString(), QString(), QString(), QString(), QString(), QString(),
                            QString(), name, 0, Settings());
}

bool Use_Generated_Folders(const QString& new_report_dir, const QString& new_list_file)
{
    const SettingsRecord& s = Settings();
    const bool standard_list = s.report_list == build_path(s.report_format_dir, QStringLiteral("zrepfmt.lst"));
    return Replace_Defaults(false, QString(), new_report_dir, standard_list ? new_list_file : QString(), QString(),
                            QString(), QString(), QString(), QString(), QString(), 0, Settings());
}
