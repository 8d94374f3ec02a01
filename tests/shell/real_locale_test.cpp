// The machine's own regional settings, read from real locales rather than a
// stand-in, and the rule that holds whatever they are: dates put into SQL
// text are always month first.

#include "billing/tmp_tables.h"
#include "engine/locale_source.h"
#include "shell/locale_formats.h"
#include "shell/selection_lists.h"
#include "support/fake_locale_source.h"
#include "support/school_made_current.h"

#include <gtest/gtest.h>

namespace {

using engine::QtLocaleSource;
using testing_support::LocaleScope;

QString info(const QtLocaleSource& source, int type)
{
    QString value;
    int error = 0;
    EXPECT_TRUE(source.get_info(type, value, error));
    return value;
}

TEST(RealLocale, TheFourValuesComeFromTheLocalesOwnPatternsLeavingQuotedWordsAside)
{
    struct Case {
        const char* locale;
        QString short_order, long_order, date_separator, time_separator;
    };
    // Short and long patterns as Qt's locale data gives them, e.g. "M/d/yy",
    // "dd.MM.yy", "yyyy-MM-dd", "d/M/yy" with "d 'de' MMMM 'de' yyyy", "H.mm".
    const QList<Case> cases = {
        {"en_US", "0", "0", "/", ":"}, {"en_GB", "1", "1", "/", ":"}, {"de_DE", "1", "1", ".", ":"},
        {"sv_SE", "2", "1", "-", ":"}, {"fi_FI", "1", "1", ".", "."}, {"es_ES", "1", "1", "/", ":"},
        {"ja_JP", "2", "2", "/", ":"}, {"bg_BG", "1", "1", ".", ":"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.locale);
        const QtLocaleSource source{QLocale(QString::fromLatin1(c.locale))};
        EXPECT_EQ(info(source, engine::lctype::IDATE), c.short_order);
        EXPECT_EQ(info(source, engine::lctype::ILDATE), c.long_order);
        EXPECT_EQ(info(source, engine::lctype::SDATE), c.date_separator);
        EXPECT_EQ(info(source, engine::lctype::STIME), c.time_separator);
    }
    // Quoted words in a pattern are not fields: "Day" holds a y, "of" nothing, and the day still comes first.
    EXPECT_EQ(QtLocaleSource::date_order_of(QStringLiteral("'Day' dd 'of' MMMM yyyy")), 1);
    EXPECT_EQ(QtLocaleSource::date_order_of(QStringLiteral("yyyy'年'M'月'd'日'")), 2);
    EXPECT_EQ(QtLocaleSource::separator_of(QStringLiteral("HH'h'mm"), QLatin1Char('H')), QString());
    EXPECT_EQ(QtLocaleSource::separator_of(QStringLiteral("d.MM.yy 'г'."), QLatin1Char('d')), QStringLiteral("."));
}

TEST(RealLocale, UnderADayFirstLocaleDatesInSqlTextAreStillMonthFirst)
{
    testing_support::SchoolForRuns school;
    const QtLocaleSource german{QLocale(QStringLiteral("de_DE"))};
    const LocaleScope scope(german);
    Setup_Formats();
    // A date chosen for a run reaches SQL as 5 January, not 1 May.
    const int family = school.add_family(QStringLiteral("Weber"));
    const int pupil = school.add_pupil(family, QStringLiteral("Lena"));
    const int exam = school.add_activity(testing_support::NewActivity(QStringLiteral("Grade 2")));
    school.enter(pupil, exam, QDate(2026, 1, 5));
    school.title_date(QDate(2026, 1, 5), QStringLiteral("Winter exams"));
    Sel_Activity_Dates().append(QDate(2026, 1, 5));
    QString label;
    ASSERT_TRUE(Setup_exams(label));
    EXPECT_EQ(label, QStringLiteral("- Winter exams"));
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT tmp_Date FROM Tmp_Activities")).toDateTime().date(), QDate(2026, 1, 5));

    const testing_support::FakeLocaleSource standard;
    engine::set_locale_source(&standard);
    Setup_Formats();
}

}  // namespace
