#include "engine/vb_values.h"

#include "engine/err.h"
#include "engine/jet_date.h"
#include "support/fake_locale_source.h"

#include <QLocale>

#include <gtest/gtest.h>

namespace {

using engine::Currency;
using engine::make_datetime;
using testing_support::FakeLocaleSource;
using testing_support::LocaleScope;

const QLocale british(QLocale::English, QLocale::UnitedKingdom);
const QLocale american(QLocale::English, QLocale::UnitedStates);
const QLocale german(QLocale::German, QLocale::Germany);

QDateTime at(int y, int m, int d, int h = 0, int n = 0, int s = 0)
{
    return make_datetime(QDate(y, m, d), QTime(h, n, s));
}

// A British office: day first, "/" between the parts of a date.
class VbValuesTest : public ::testing::Test {
protected:
    VbValuesTest() : source(british), scope(source) { source.dates("/", 1); }
    void SetUp() override { engine::Err().Clear(); }
    void TearDown() override { engine::Err().Clear(); }

    FakeLocaleSource source;
    LocaleScope scope;
};

// ---------------------------------------------------------------------------
// Numbers

TEST_F(VbValuesTest, IsNumericAcceptsWhatTheUserMayTypeAsANumberAndNothingElse)
{
    for (const char* text : {"1e3", " 12 ", "-5", "+5", "5-", "(5)", "1,234.50", ".5", "5.", "1d3", "&H1F", "£5",
                             "-£5.00", "£ 5", "5£"})
        EXPECT_TRUE(vb::IsNumeric(QString::fromUtf8(text))) << text;
    EXPECT_TRUE(vb::IsNumeric(42));
    EXPECT_TRUE(vb::IsNumeric(2.5));
    EXPECT_TRUE(vb::IsNumeric(true));
    EXPECT_TRUE(vb::IsNumeric(QVariant::fromValue(Currency::from_whole(3))));
    // Null, blanks, words and dates are not.
    for (const char* text : {"", "  ", "abc", "12abc", "1.2.3", "-", ".", "1e", "--5", "(5", "(-5)", "$5", "5 6"})
        EXPECT_FALSE(vb::IsNumeric(QString::fromUtf8(text))) << text;
    EXPECT_FALSE(vb::IsNumeric(QVariant()));
    EXPECT_FALSE(vb::IsNumeric(QDate(2026, 1, 5)));
}

// A conversion by name, as text: the value (money in ten-thousandths), or
// "error <number>" with the result left as it was.
QString converted(const QString& conversion, const QVariant& value)
{
    engine::Err().Clear();
    bool done = false;
    QString result;
    if (conversion == "CInt") {
        int16_t n = 7;
        done = vb::CInt(value, n);
        result = QString::number(n);
    } else if (conversion == "CLng") {
        int32_t n = 7;
        done = vb::CLng(value, n);
        result = QString::number(n);
    } else if (conversion == "CByte") {
        uint8_t n = 7;
        done = vb::CByte(value, n);
        result = QString::number(n);
    } else if (conversion == "CSng") {
        float n = 7;
        done = vb::CSng(value, n);
        result = QVariant(n).toString();
    } else if (conversion == "CDbl") {
        double n = 7;
        done = vb::CDbl(value, n);
        result = QVariant(n).toString();  // the shortest text that reads back as n
    } else if (conversion == "CCur") {
        Currency n = Currency::from_whole(7);
        done = vb::CCur(value, n);
        result = QString::number(n.units());
    } else if (conversion == "CBool") {
        bool n = false;
        done = vb::CBool(value, n);
        result = n ? QStringLiteral("true") : QStringLiteral("false");
    }
    return done ? result : QStringLiteral("error %1, left %2").arg(engine::Err().Number).arg(result);
}

// Halves round to even; beyond the type's range is overflow (6), text that is
// no number a type mismatch (13), a null an invalid use of null (94).
TEST_F(VbValuesTest, ConversionsRoundHalvesToEvenAndFailOutsideTheirRange)
{
    struct Case {
        const char* conversion;
        QVariant value;
        const char* result;
    };
    const QVariant money = QVariant::fromValue(Currency::from_units(12345));
    const Case cases[] = {
        {"CInt", 60.4, "60"}, {"CInt", 2.5, "2"}, {"CInt", 3.5, "4"}, {"CInt", QStringLiteral(" 60.5 "), "60"},
        {"CInt", true, "-1"}, {"CInt", 40000, "error 6, left 7"}, {"CInt", QStringLiteral("32767.5"), "error 6, left 7"},
        {"CInt", -32768.5, "-32768"}, {"CInt", QStringLiteral("twelve"), "error 13, left 7"},
        {"CLng", 2147483647.0, "2147483647"}, {"CLng", 2147483648.0, "error 6, left 7"},
        {"CLng", QStringLiteral("1,000,000.5"), "1000000"},
        {"CByte", 255, "255"}, {"CByte", 256, "error 6, left 7"}, {"CByte", -1, "error 6, left 7"},
        {"CSng", QStringLiteral("1.5"), "1.5"}, {"CSng", 1e39, "error 6, left 7"},
        {"CDbl", QStringLiteral("(1.5e2)"), "-150"}, {"CDbl", money, "1.2345"}, {"CDbl", QStringLiteral("1e400"), "error 6, left 7"},
        {"CDbl", QString(), "error 13, left 7"}, {"CDbl", QVariant(), "error 94, left 7"},
        {"CCur", QStringLiteral("0.00005"), "0"}, {"CCur", QStringLiteral("0.00015"), "2"}, {"CCur", QStringLiteral("0.00025"), "2"},
        {"CCur", QStringLiteral("-1234.56785"), "-12345678"}, {"CCur", QStringLiteral("1234.567851"), "12345679"},
        {"CCur", 0.1 + 0.2, "3000"}, {"CCur", QStringLiteral("1e3"), "10000000"},
        {"CCur", QStringLiteral("922337203685477.5807"), "9223372036854775807"},
        {"CCur", QStringLiteral("-922337203685477.5808"), "-9223372036854775808"},
        {"CCur", QStringLiteral("922337203685477.5808"), "error 6, left 70000"}, {"CCur", 1e16, "error 6, left 70000"},
        {"CBool", QStringLiteral("True"), "true"}, {"CBool", QStringLiteral("false"), "false"}, {"CBool", QStringLiteral("-1"), "true"},
        {"CBool", 0, "false"}, {"CBool", QStringLiteral("yes"), "error 13, left false"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(converted(QString::fromLatin1(c.conversion), c.value), QString::fromUtf8(c.result))
            << c.conversion << "(" << c.value.toString().toStdString() << ")";
    converted("CInt", 40000);
    EXPECT_EQ(engine::Err().Description, "Overflow");
    converted("CInt", QStringLiteral("twelve"));
    EXPECT_EQ(engine::Err().Description, "Type mismatch");
}

TEST_F(VbValuesTest, CCurReadsTheLocalesCurrencyTextBack)
{
    Currency c;
    ASSERT_TRUE(vb::CCur(QStringLiteral("£1,234.50"), c));
    EXPECT_EQ(c.units(), 12345000);
    for (const double amount : {0.0, 12.5, -7.25, 1234567.89}) {
        const QString shown = vb::Format(amount, QStringLiteral("currency"));
        ASSERT_TRUE(vb::IsNumeric(shown)) << shown.toStdString();
        ASSERT_TRUE(vb::CCur(shown, c)) << shown.toStdString();
        EXPECT_EQ(c, Currency::from_double(amount)) << shown.toStdString();
    }
}


// ---------------------------------------------------------------------------
// Dates

QDateTime cdate(const QString& text)
{
    QDateTime result;
    EXPECT_TRUE(vb::CDate(text, result)) << text.toStdString();
    return result;
}

// What a British office types, read day first; month names, year-first
// dates and times read the same in every locale.
TEST_F(VbValuesTest, TypedDatesAndTimesAreReadInTheLocalesOrder)
{
    const int this_year = engine::now().date().year();
    struct Case {
        const char* text;
        QDateTime read;
    };
    const Case cases[] = {
        {"05/01/2026", at(2026, 1, 5)}, {"5-1-2026", at(2026, 1, 5)}, {"5.1.26", at(2026, 1, 5)},
        // Two-digit years follow the window.
        {"1/1/00", at(2000, 1, 1)}, {"1/1/29", at(2029, 1, 1)}, {"1/1/30", at(1930, 1, 1)}, {"1 Mar 99", at(1999, 3, 1)},
        // Partial dates take this year or the first of the month.
        {"5 Jan", at(this_year, 1, 5)}, {"05/01", at(this_year, 1, 5)}, {"Jan 2026", at(2026, 1, 1)}, {"1/2026", at(2026, 1, 1)},
        // Times alone lie on the zero date.
        {"10:30", at(1899, 12, 30, 10, 30)}, {"10:30:15", at(1899, 12, 30, 10, 30, 15)}, {"2:30 pm", at(1899, 12, 30, 14, 30)},
        {"12:05:00 AM", at(1899, 12, 30, 0, 5)}, {"12:00 PM", at(1899, 12, 30, 12, 0)}, {"10 am", at(1899, 12, 30, 10, 0)},
        {"05/01/2026 10:30", at(2026, 1, 5, 10, 30)}, {"5 Jan 2026 2:30 pm", at(2026, 1, 5, 14, 30)},
        {"2026-01-05 00:00:00", at(2026, 1, 5)},
    };
    for (const Case& c : cases)
        EXPECT_EQ(cdate(QString::fromUtf8(c.text)), c.read) << c.text;

    const char* const everywhere[] = {"5 Jan 2026", "05-Jan-2026", "Jan 5 2026", "2026-01-05", "January 5, 2026",
                                      "Monday, 5 January 2026", "5 JAN 26", "2026 Jan 05", "2026/1/5"};
    for (const char* text : everywhere)
        EXPECT_EQ(cdate(QString::fromUtf8(text)), at(2026, 1, 5)) << text;
    FakeLocaleSource us(american);
    us.dates("/", 0);
    LocaleScope month_first(us);
    for (const char* text : everywhere)
        EXPECT_EQ(cdate(QString::fromUtf8(text)), at(2026, 1, 5)) << "month first: " << text;
    // Month first, and a date impossible that way is tried the other way.
    EXPECT_EQ(cdate("05/01/2026"), at(2026, 5, 1));
    EXPECT_EQ(cdate("13/01/2026"), at(2026, 1, 13));
}

TEST_F(VbValuesTest, WhatIsNoDateAndNumbersAsDateSerials)
{
    for (const char* text : {"", "abc", "31/02/2026", "Jan", "2026", "5", "25:00", "10:61", "13:00 pm", "1/2/3/4",
                             "5 Jan 2026 xyz", "10:30:", "-5/1/2026"}) {
        EXPECT_FALSE(vb::IsDate(QString::fromUtf8(text))) << text;
    }
    EXPECT_FALSE(vb::IsDate(QVariant()));
    EXPECT_FALSE(vb::IsDate(40000));
    EXPECT_FALSE(vb::IsDate(QStringLiteral("40000")));
    EXPECT_TRUE(vb::IsDate(QDate(2026, 1, 5)));
    EXPECT_TRUE(vb::IsDate(QTime(10, 30)));
    EXPECT_TRUE(vb::IsDate(QStringLiteral("5 Jan 2026")));

    QDateTime result;
    EXPECT_FALSE(vb::CDate(QStringLiteral("abc"), result));
    EXPECT_EQ(engine::Err().Number, 13);
    EXPECT_FALSE(vb::CDate(QVariant(), result));
    EXPECT_EQ(engine::Err().Number, 94);
    EXPECT_FALSE(vb::CDate(1e8, result));
    EXPECT_EQ(engine::Err().Number, 6);
    // Numbers are date serials.
    ASSERT_TRUE(vb::CDate(2.5, result));
    EXPECT_EQ(result, at(1900, 1, 1, 12, 0));
    ASSERT_TRUE(vb::CDate(QStringLiteral("46027"), result));
    EXPECT_EQ(result, at(2026, 1, 5));
    ASSERT_TRUE(vb::CDate(QDate(2026, 1, 5), result));
    EXPECT_EQ(result, at(2026, 1, 5));
}

TEST(VbValuesGermanTest, NumbersAndDatesFollowTheLocalesSeparatorsAndMonthNames)
{
    FakeLocaleSource source(german);
    source.dates(".", 1);
    LocaleScope scope(source);
    QDateTime result;
    ASSERT_TRUE(vb::CDate(QStringLiteral("5. Januar 2026"), result));
    EXPECT_EQ(result, at(2026, 1, 5));
    ASSERT_TRUE(vb::CDate(QStringLiteral("05.01.2026 10:30"), result));
    EXPECT_EQ(result, at(2026, 1, 5, 10, 30));
    double d = 0;
    ASSERT_TRUE(vb::CDbl(QStringLiteral("1,5"), d));
    EXPECT_EQ(d, 1.5);
    ASSERT_TRUE(vb::CDbl(QStringLiteral("1.234,5"), d));
    EXPECT_EQ(d, 1234.5);
    EXPECT_EQ(vb::Format(1234.5, QStringLiteral("#,##0.00")), "1.234,50");
    EXPECT_EQ(vb::Format(2.5, QStringLiteral("0.00")), "2,50");
    EXPECT_EQ(vb::Format(QDate(2026, 12, 25), QStringLiteral("mm/dd/yyyy")), "12/25/2026");
    Currency c;
    const QString shown = vb::Format(-1234.5, QStringLiteral("currency"));
    ASSERT_TRUE(vb::CCur(shown, c)) << shown.toStdString();
    EXPECT_EQ(c.units(), -12345000);
}

TEST(VbValuesDotTimeTest, ALocaleWhoseDateAndTimeSeparatorsAreBothDotsReadsTwoNumbersAsATime)
{
    FakeLocaleSource source(QLocale(QLocale::Finnish, QLocale::Finland));
    source.dates(".", 1).set(engine::lctype::STIME, ".");
    LocaleScope scope(source);
    QDateTime result;
    ASSERT_TRUE(vb::CDate(QStringLiteral("10.30"), result));
    EXPECT_EQ(result, at(1899, 12, 30, 10, 30));
    ASSERT_TRUE(vb::CDate(QStringLiteral("5.1.2026 10:30"), result));
    EXPECT_EQ(result, at(2026, 1, 5, 10, 30));
    EXPECT_EQ(vb::Format(result, QStringLiteral("hh.nn")), "10.30");
}

// ---------------------------------------------------------------------------
// Format

// A value in a picture: dates with any separator and single fields, times,
// text and serials read as dates, numbers, and no picture at all.
TEST_F(VbValuesTest, ValuesAreFormattedByTheirPicture)
{
    const QDateTime d = at(2026, 1, 5, 14, 30, 15);
    struct Case {
        QVariant value;
        const char* picture;
        const char* shown;
    };
    const Case cases[] = {
        {d, "dd mmm yyyy", "05 Jan 2026"}, {d, "dd/mmm/yyyy", "05/Jan/2026"}, {d, "yyyy-mmm-dd", "2026-Jan-05"},
        {d, "mmm.dd.yyyy", "Jan.05.2026"}, {d, "mmm dd yyyy", "Jan 05 2026"}, {d, "yyyy mmm dd", "2026 Jan 05"},
        {d, "dd-mmm", "05-Jan"}, {d, "mmm-dd", "Jan-05"}, {d, "DD MMM YYYY", "05 Jan 2026"},
        {d, "dd", "05"}, {d, "d", "5"}, {d, "mmm", "Jan"}, {d, "mmmm", "January"}, {d, "yyyy", "2026"}, {d, "yy", "26"},
        {d, "ddd", "Mon"}, {d, "dddd", "Monday"}, {d, "w", "2"}, {d, "q", "1"},
        {d, "\\d\\a\\y d \"of\" mmmm", "day 5 of January"},
        {d, "hh:nn", "14:30"}, {d, "hh.nn", "14.30"}, {d, "hh:mm", "14:30"}, {d, "hh:nn:ss", "14:30:15"},
        {d, "hh:nn ampm", "02:30 pm"}, {d, "h:nn AM/PM", "2:30 PM"}, {at(2026, 1, 5, 0, 5), "hh:nn ampm", "12:05 am"},
        {at(2026, 1, 5, 12, 0), "hh:nn ampm", "12:00 pm"}, {QTime(9, 5), "hh:nn", "09:05"},
        {QStringLiteral("05/01/2026"), "dd mmm yyyy", "05 Jan 2026"}, {QStringLiteral("10:30"), "hh:nn ampm", "10:30 am"},
        {46027, "dd mmm yyyy", "05 Jan 2026"}, {QStringLiteral("not a date"), "dd mmm yyyy", "not a date"},
        {QVariant(), "dd mmm yyyy", ""},
        {2.5, "0.00", "2.50"}, {1.005, "0.00", "1.01"}, {-0.001, "0.00", "0.00"}, {1234567.891, "#,##0.00", "1,234,567.89"},
        {12, "#,##0.00", "12.00"}, {0.5, "#,##0.00", "0.50"}, {2.5, "0", "3"}, {-2.5, "0", "-3"}, {7, "000", "007"},
        {0.256, "0.0%", "25.6%"}, {-5, "0.00;(0.00)", "(5.00)"}, {0, "0.00;(0.00);\"nil\"", "nil"},
        {QStringLiteral("12.345"), "0.00", "12.35"}, {QVariant::fromValue(Currency::from_units(125)), "0.00", "0.01"},
        {QStringLiteral("abc"), "0.00", "abc"}, {QVariant(), "0.00", ""},
        {12, "", "12"}, {2.5, "", "2.5"}, {QStringLiteral("abc"), "", "abc"}, {true, "", "True"},
        {at(2026, 1, 5), "", "05/01/2026"}, {at(2026, 1, 5, 10, 30), "", "05/01/2026 10:30:00"}, {QTime(10, 30), "", "10:30:00"},
        // The picture of dates in SQL text is month first whatever the locale; money has two decimals.
        {d, "mm/dd/yyyy", "01/05/2026"}, {1234.5, "currency", "£1,234.50"},
        {QVariant::fromValue(Currency::from_units(5)), "Currency", "£0.00"}, {QStringLiteral("12.345"), "currency", "£12.35"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(vb::Format(c.value, QString::fromUtf8(c.picture)), QString::fromUtf8(c.shown)) << c.picture;
}

// ---------------------------------------------------------------------------
// Date arithmetic

// Months keep the day or take the month's last day; minutes are whole.
TEST_F(VbValuesTest, DateAddMovesByEachIntervalAndFailsOnAnUnknownOne)
{
    struct Case {
        const char* interval;
        double number;
        QDateTime from;
        QDateTime to;
    };
    const Case cases[] = {
        {"m", 1, at(2026, 1, 31), at(2026, 2, 28)}, {"m", 1, at(2024, 1, 31), at(2024, 2, 29)},
        {"m", -1, at(2026, 3, 31, 10, 30), at(2026, 2, 28, 10, 30)}, {"m", 2, at(2026, 1, 15), at(2026, 3, 15)},
        {"q", 1, at(2025, 11, 30), at(2026, 2, 28)}, {"yyyy", 1, at(2024, 2, 29), at(2025, 2, 28)},
        {"d", 10, at(2026, 12, 25), at(2027, 1, 4)}, {"y", -1, at(2026, 1, 1), at(2025, 12, 31)},
        {"w", 1, at(2026, 1, 1), at(2026, 1, 2)}, {"ww", 2, at(2026, 1, 1), at(2026, 1, 15)},
        {"n", 90, at(1899, 12, 30, 23, 0), at(1899, 12, 31, 0, 30)}, {"h", -1, at(2026, 1, 1), at(2025, 12, 31, 23, 0)},
        {"s", 30, at(2026, 1, 1), at(2026, 1, 1, 0, 0, 30)}, {"N", 5.9, at(2026, 1, 1), at(2026, 1, 1, 0, 5)},
    };
    for (const Case& c : cases)
        EXPECT_EQ(vb::DateAdd(c.interval, c.number, c.from), c.to) << c.interval << " " << c.number;
    EXPECT_FALSE(vb::DateAdd("fortnight", 1, at(2026, 1, 1)).isValid());
    EXPECT_EQ(engine::Err().Number, 5);
    EXPECT_FALSE(vb::DateAdd("yyyy", 9000, at(2026, 1, 1)).isValid());
}

TEST_F(VbValuesTest, WeekdayCountsFromSundayAndDateDiffCountsBoundariesCrossed)
{
    EXPECT_EQ(vb::Weekday(at(2026, 1, 4)), 1);  // Sunday
    EXPECT_EQ(vb::Weekday(at(2026, 1, 5)), 2);  // Monday
    EXPECT_EQ(vb::Weekday(at(2026, 1, 10)), 7); // Saturday
    EXPECT_EQ(vb::Weekday(at(1899, 12, 30)), 7);
    // DateDiff counts the boundaries crossed.
    EXPECT_EQ(vb::DateDiff("d", at(2026, 1, 1, 23, 0), at(2026, 1, 2, 1, 0)), 1);
    EXPECT_EQ(vb::DateDiff("d", at(2026, 1, 10), at(2026, 1, 1)), -9);
    EXPECT_EQ(vb::DateDiff("m", at(2026, 1, 31), at(2026, 2, 1)), 1);
    EXPECT_EQ(vb::DateDiff("yyyy", at(2025, 12, 31), at(2026, 1, 1)), 1);
    EXPECT_EQ(vb::DateDiff("ww", at(2026, 1, 10), at(2026, 1, 11)), 1);  // Saturday to Sunday
    EXPECT_EQ(vb::DateDiff("ww", at(2026, 1, 4), at(2026, 1, 10)), 0);
    EXPECT_EQ(vb::DateDiff("n", at(2026, 1, 1, 10, 30), at(2026, 1, 1, 11, 15)), 45);
    EXPECT_EQ(vb::DateDiff("h", at(2026, 1, 1, 10, 59), at(2026, 1, 1, 11, 0)), 1);
    EXPECT_EQ(vb::DateDiff("h", at(1899, 12, 30, 10, 59), at(1899, 12, 30, 11, 0)), 1);
    EXPECT_EQ(vb::DateDiff("s", at(2026, 1, 1), at(2026, 1, 1, 0, 1, 1)), 61);
}

}  // namespace
