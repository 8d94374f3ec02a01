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

TEST_F(VbValuesTest, RoundHalfEvenGoesToTheEvenNeighbourOnlyAtExactHalves)
{
    EXPECT_EQ(vb::round_half_even(0.5), 0);
    EXPECT_EQ(vb::round_half_even(1.5), 2);
    EXPECT_EQ(vb::round_half_even(2.5), 2);
    EXPECT_EQ(vb::round_half_even(-2.5), -2);
    EXPECT_EQ(vb::round_half_even(-3.5), -4);
    EXPECT_EQ(vb::round_half_even(2.4999), 2);
    EXPECT_EQ(vb::round_half_even(2.5001), 3);
}

TEST_F(VbValuesTest, IsNumericAcceptsWhatTheUserMayTypeAsANumber)
{
    for (const char* text : {"1e3", " 12 ", "-5", "+5", "5-", "(5)", "1,234.50", ".5", "5.", "1d3", "&H1F", "£5",
                             "-£5.00", "£ 5", "5£"})
        EXPECT_TRUE(vb::IsNumeric(QString::fromUtf8(text))) << text;
    EXPECT_TRUE(vb::IsNumeric(42));
    EXPECT_TRUE(vb::IsNumeric(2.5));
    EXPECT_TRUE(vb::IsNumeric(true));
    EXPECT_TRUE(vb::IsNumeric(QVariant::fromValue(Currency::from_whole(3))));
}

TEST_F(VbValuesTest, IsNumericRefusesNullBlankWordsAndDates)
{
    for (const char* text : {"", "  ", "abc", "12abc", "1.2.3", "-", ".", "1e", "--5", "(5", "(-5)", "$5", "5 6"})
        EXPECT_FALSE(vb::IsNumeric(QString::fromUtf8(text))) << text;
    EXPECT_FALSE(vb::IsNumeric(QVariant()));
    EXPECT_FALSE(vb::IsNumeric(QDate(2026, 1, 5)));
}

TEST_F(VbValuesTest, CIntRoundsHalvesToEven)
{
    int16_t n = 0;
    ASSERT_TRUE(vb::CInt(60.4, n));
    EXPECT_EQ(n, 60);
    ASSERT_TRUE(vb::CInt(2.5, n));
    EXPECT_EQ(n, 2);
    ASSERT_TRUE(vb::CInt(3.5, n));
    EXPECT_EQ(n, 4);
    ASSERT_TRUE(vb::CInt(QStringLiteral(" 60.5 "), n));
    EXPECT_EQ(n, 60);
    ASSERT_TRUE(vb::CInt(true, n));
    EXPECT_EQ(n, -1);
    EXPECT_EQ(engine::Err().Number, 0);
}

TEST_F(VbValuesTest, CIntOutOfSixteenBitsFailsWithOverflowAndLeavesTheResult)
{
    int16_t n = 7;
    EXPECT_FALSE(vb::CInt(40000, n));
    EXPECT_EQ(engine::Err().Number, 6);
    EXPECT_EQ(engine::Err().Description, "Overflow");
    EXPECT_EQ(n, 7);
    EXPECT_FALSE(vb::CInt(QStringLiteral("32767.5"), n));  // rounds to 32768
    EXPECT_TRUE(vb::CInt(-32768.5, n));                    // rounds to -32768
    EXPECT_EQ(n, -32768);
}

TEST_F(VbValuesTest, ConversionsOfTextThatIsNoNumberFailWithTypeMismatch)
{
    int16_t n = 0;
    EXPECT_FALSE(vb::CInt(QStringLiteral("twelve"), n));
    EXPECT_EQ(engine::Err().Number, 13);
    EXPECT_EQ(engine::Err().Description, "Type mismatch");
    engine::Err().Clear();
    double d = 0;
    EXPECT_FALSE(vb::CDbl(QString(), d));
    EXPECT_EQ(engine::Err().Number, 13);
    EXPECT_FALSE(vb::CDbl(QVariant(), d));
    EXPECT_EQ(engine::Err().Number, 94);
}

TEST_F(VbValuesTest, CLngAndCByteHaveTheirOwnRanges)
{
    int32_t l = 0;
    ASSERT_TRUE(vb::CLng(2147483647.0, l));
    EXPECT_EQ(l, 2147483647);
    EXPECT_FALSE(vb::CLng(2147483648.0, l));
    EXPECT_EQ(engine::Err().Number, 6);
    ASSERT_TRUE(vb::CLng(QStringLiteral("1,000,000.5"), l));
    EXPECT_EQ(l, 1000000);

    uint8_t b = 0;
    ASSERT_TRUE(vb::CByte(255, b));
    EXPECT_EQ(b, 255);
    EXPECT_FALSE(vb::CByte(256, b));
    EXPECT_FALSE(vb::CByte(-1, b));
    EXPECT_EQ(engine::Err().Number, 6);
}

TEST_F(VbValuesTest, CCurKeepsFourPlacesRoundingHalvesToEven)
{
    Currency c;
    ASSERT_TRUE(vb::CCur(QStringLiteral("0.00005"), c));
    EXPECT_EQ(c.units(), 0);
    ASSERT_TRUE(vb::CCur(QStringLiteral("0.00015"), c));
    EXPECT_EQ(c.units(), 2);
    ASSERT_TRUE(vb::CCur(QStringLiteral("0.00025"), c));
    EXPECT_EQ(c.units(), 2);
    ASSERT_TRUE(vb::CCur(QStringLiteral("-1234.56785"), c));
    EXPECT_EQ(c.units(), -12345678);
    ASSERT_TRUE(vb::CCur(QStringLiteral("1234.567851"), c));
    EXPECT_EQ(c.units(), 12345679);
    ASSERT_TRUE(vb::CCur(0.1 + 0.2, c));
    EXPECT_EQ(c, Currency::from_units(3000));
    ASSERT_TRUE(vb::CCur(QStringLiteral("1e3"), c));
    EXPECT_EQ(c, Currency::from_whole(1000));
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

TEST_F(VbValuesTest, CCurBeyondTheCurrencyRangeOverflows)
{
    Currency c;
    EXPECT_TRUE(vb::CCur(QStringLiteral("922337203685477.5807"), c));
    EXPECT_EQ(c.units(), std::numeric_limits<int64_t>::max());
    EXPECT_TRUE(vb::CCur(QStringLiteral("-922337203685477.5808"), c));
    EXPECT_FALSE(vb::CCur(QStringLiteral("922337203685477.5808"), c));
    EXPECT_EQ(engine::Err().Number, 6);
    EXPECT_FALSE(vb::CCur(1e16, c));
}

TEST_F(VbValuesTest, CSngCDblAndCBool)
{
    float f = 0;
    ASSERT_TRUE(vb::CSng(QStringLiteral("1.5"), f));
    EXPECT_EQ(f, 1.5f);
    EXPECT_FALSE(vb::CSng(1e39, f));
    EXPECT_EQ(engine::Err().Number, 6);

    double d = 0;
    ASSERT_TRUE(vb::CDbl(QStringLiteral("(1.5e2)"), d));
    EXPECT_EQ(d, -150.0);
    ASSERT_TRUE(vb::CDbl(QVariant::fromValue(Currency::from_units(12345)), d));
    EXPECT_EQ(d, 1.2345);
    EXPECT_FALSE(vb::CDbl(QStringLiteral("1e400"), d));
    EXPECT_EQ(engine::Err().Number, 6);

    bool b = false;
    ASSERT_TRUE(vb::CBool(QStringLiteral("True"), b));
    EXPECT_TRUE(b);
    ASSERT_TRUE(vb::CBool(QStringLiteral("false"), b));
    EXPECT_FALSE(b);
    ASSERT_TRUE(vb::CBool(QStringLiteral("-1"), b));
    EXPECT_TRUE(b);
    ASSERT_TRUE(vb::CBool(0, b));
    EXPECT_FALSE(b);
    EXPECT_FALSE(vb::CBool(QStringLiteral("yes"), b));
    EXPECT_EQ(engine::Err().Number, 13);
}

TEST(VbValuesGermanTest, NumbersFollowTheLocalesSeparators)
{
    FakeLocaleSource source(german);
    LocaleScope scope(source);
    double d = 0;
    ASSERT_TRUE(vb::CDbl(QStringLiteral("1,5"), d));
    EXPECT_EQ(d, 1.5);
    ASSERT_TRUE(vb::CDbl(QStringLiteral("1.234,5"), d));
    EXPECT_EQ(d, 1234.5);
    EXPECT_EQ(vb::Format(1234.5, QStringLiteral("#,##0.00")), "1.234,50");
    EXPECT_EQ(vb::Format(2.5, QStringLiteral("0.00")), "2,50");
    Currency c;
    const QString shown = vb::Format(-1234.5, QStringLiteral("currency"));
    ASSERT_TRUE(vb::CCur(shown, c)) << shown.toStdString();
    EXPECT_EQ(c.units(), -12345000);
}

// ---------------------------------------------------------------------------
// Dates

QDateTime cdate(const QString& text)
{
    QDateTime result;
    EXPECT_TRUE(vb::CDate(text, result)) << text.toStdString();
    return result;
}

TEST_F(VbValuesTest, NumericDatesFollowTheLocalesOrder)
{
    EXPECT_EQ(cdate("05/01/2026"), at(2026, 1, 5));
    EXPECT_EQ(cdate("5-1-2026"), at(2026, 1, 5));
    EXPECT_EQ(cdate("5.1.26"), at(2026, 1, 5));

    FakeLocaleSource us(american);
    us.dates("/", 0);
    LocaleScope scope(us);
    EXPECT_EQ(cdate("05/01/2026"), at(2026, 5, 1));
}

TEST_F(VbValuesTest, ADateImpossibleInTheLocalesOrderIsTriedTheOtherWay)
{
    FakeLocaleSource us(american);
    us.dates("/", 0);
    LocaleScope scope(us);
    EXPECT_EQ(cdate("13/01/2026"), at(2026, 1, 13));
}

TEST_F(VbValuesTest, MonthNamesAndYearFirstDatesReadTheSameInEveryLocale)
{
    const char* const texts[] = {"5 Jan 2026", "05-Jan-2026", "Jan 5 2026", "2026-01-05", "January 5, 2026",
                                 "Monday, 5 January 2026", "5 JAN 26", "2026 Jan 05", "2026/1/5"};
    for (const char* text : texts)
        EXPECT_EQ(cdate(QString::fromUtf8(text)), at(2026, 1, 5)) << text;

    FakeLocaleSource us(american);
    us.dates("/", 0);
    LocaleScope scope(us);
    for (const char* text : texts)
        EXPECT_EQ(cdate(QString::fromUtf8(text)), at(2026, 1, 5)) << "month first: " << text;
}

TEST_F(VbValuesTest, TwoDigitYearsFollowTheWindow)
{
    EXPECT_EQ(cdate("1/1/00").date().year(), 2000);
    EXPECT_EQ(cdate("1/1/29").date().year(), 2029);
    EXPECT_EQ(cdate("1/1/30").date().year(), 1930);
    EXPECT_EQ(cdate("1 Mar 99").date().year(), 1999);
}

TEST_F(VbValuesTest, PartialDatesTakeThisYearOrTheFirstOfTheMonth)
{
    const int this_year = engine::now().date().year();
    EXPECT_EQ(cdate("5 Jan"), at(this_year, 1, 5));
    EXPECT_EQ(cdate("05/01"), at(this_year, 1, 5));
    EXPECT_EQ(cdate("Jan 2026"), at(2026, 1, 1));
    EXPECT_EQ(cdate("1/2026"), at(2026, 1, 1));
}

TEST_F(VbValuesTest, TimesAloneLieOnTheZeroDate)
{
    EXPECT_EQ(cdate("10:30"), at(1899, 12, 30, 10, 30));
    EXPECT_EQ(cdate("10:30:15"), at(1899, 12, 30, 10, 30, 15));
    EXPECT_EQ(cdate("2:30 pm"), at(1899, 12, 30, 14, 30));
    EXPECT_EQ(cdate("12:05:00 AM"), at(1899, 12, 30, 0, 5));
    EXPECT_EQ(cdate("12:00 PM"), at(1899, 12, 30, 12, 0));
    EXPECT_EQ(cdate("10 am"), at(1899, 12, 30, 10, 0));
}

TEST_F(VbValuesTest, ADateWithATime)
{
    EXPECT_EQ(cdate("05/01/2026 10:30"), at(2026, 1, 5, 10, 30));
    EXPECT_EQ(cdate("5 Jan 2026 2:30 pm"), at(2026, 1, 5, 14, 30));
    EXPECT_EQ(cdate("2026-01-05 00:00:00"), at(2026, 1, 5));
}

TEST_F(VbValuesTest, WhatIsNoDate)
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
}

TEST_F(VbValuesTest, NumbersAreDateSerials)
{
    QDateTime result;
    ASSERT_TRUE(vb::CDate(2.5, result));
    EXPECT_EQ(result, at(1900, 1, 1, 12, 0));
    ASSERT_TRUE(vb::CDate(QStringLiteral("46027"), result));
    EXPECT_EQ(result, at(2026, 1, 5));
    ASSERT_TRUE(vb::CDate(QDate(2026, 1, 5), result));
    EXPECT_EQ(result, at(2026, 1, 5));
}

TEST(VbValuesGermanTest, DatesWithTheLocalesMonthNames)
{
    FakeLocaleSource source(german);
    source.dates(".", 1);
    LocaleScope scope(source);
    QDateTime result;
    ASSERT_TRUE(vb::CDate(QStringLiteral("5. Januar 2026"), result));
    EXPECT_EQ(result, at(2026, 1, 5));
    ASSERT_TRUE(vb::CDate(QStringLiteral("05.01.2026 10:30"), result));
    EXPECT_EQ(result, at(2026, 1, 5, 10, 30));
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

TEST_F(VbValuesTest, DatePicturesWithAnySeparator)
{
    const QDateTime d = at(2026, 1, 5, 14, 30, 15);
    EXPECT_EQ(vb::Format(d, "dd mmm yyyy"), "05 Jan 2026");
    EXPECT_EQ(vb::Format(d, "dd/mmm/yyyy"), "05/Jan/2026");
    EXPECT_EQ(vb::Format(d, "yyyy-mmm-dd"), "2026-Jan-05");
    EXPECT_EQ(vb::Format(d, "mmm.dd.yyyy"), "Jan.05.2026");
    EXPECT_EQ(vb::Format(d, "mmm dd yyyy"), "Jan 05 2026");
    EXPECT_EQ(vb::Format(d, "yyyy mmm dd"), "2026 Jan 05");
    EXPECT_EQ(vb::Format(d, "dd-mmm"), "05-Jan");
    EXPECT_EQ(vb::Format(d, "mmm-dd"), "Jan-05");
    EXPECT_EQ(vb::Format(d, "DD MMM YYYY"), "05 Jan 2026");
}

TEST_F(VbValuesTest, SqlDatePictureIsAlwaysMonthFirstWithSlashes)
{
    EXPECT_EQ(vb::Format(at(2026, 1, 5), "mm/dd/yyyy"), "01/05/2026");
    FakeLocaleSource source(german);
    source.dates(".", 1);
    LocaleScope scope(source);
    EXPECT_EQ(vb::Format(QDate(2026, 12, 25), "mm/dd/yyyy"), "12/25/2026");
}

TEST_F(VbValuesTest, SingleFieldPicturesAndNames)
{
    const QDateTime d = at(2026, 1, 5, 14, 30, 15);
    EXPECT_EQ(vb::Format(d, "dd"), "05");
    EXPECT_EQ(vb::Format(d, "d"), "5");
    EXPECT_EQ(vb::Format(d, "mmm"), "Jan");
    EXPECT_EQ(vb::Format(d, "mmmm"), "January");
    EXPECT_EQ(vb::Format(d, "yyyy"), "2026");
    EXPECT_EQ(vb::Format(d, "yy"), "26");
    EXPECT_EQ(vb::Format(d, "ddd"), "Mon");
    EXPECT_EQ(vb::Format(d, "dddd"), "Monday");
    EXPECT_EQ(vb::Format(d, "w"), "2");
    EXPECT_EQ(vb::Format(d, "q"), "1");
    EXPECT_EQ(vb::Format(d, "\\d\\a\\y d \"of\" mmmm"), "day 5 of January");
}

TEST_F(VbValuesTest, TimePictures)
{
    const QDateTime afternoon = at(2026, 1, 5, 14, 30, 15);
    EXPECT_EQ(vb::Format(afternoon, "hh:nn"), "14:30");
    EXPECT_EQ(vb::Format(afternoon, "hh.nn"), "14.30");
    EXPECT_EQ(vb::Format(afternoon, "hh:mm"), "14:30");
    EXPECT_EQ(vb::Format(afternoon, "hh:nn:ss"), "14:30:15");
    EXPECT_EQ(vb::Format(afternoon, "hh:nn ampm"), "02:30 pm");
    EXPECT_EQ(vb::Format(afternoon, "h:nn AM/PM"), "2:30 PM");
    EXPECT_EQ(vb::Format(at(2026, 1, 5, 0, 5), "hh:nn ampm"), "12:05 am");
    EXPECT_EQ(vb::Format(at(2026, 1, 5, 12, 0), "hh:nn ampm"), "12:00 pm");
    EXPECT_EQ(vb::Format(QTime(9, 5), "hh:nn"), "09:05");
}

TEST_F(VbValuesTest, DatePicturesReadTextAndSerialsAndPassOtherTextThrough)
{
    EXPECT_EQ(vb::Format(QStringLiteral("05/01/2026"), "dd mmm yyyy"), "05 Jan 2026");
    EXPECT_EQ(vb::Format(QStringLiteral("10:30"), "hh:nn ampm"), "10:30 am");
    EXPECT_EQ(vb::Format(46027, "dd mmm yyyy"), "05 Jan 2026");
    EXPECT_EQ(vb::Format(QStringLiteral("not a date"), "dd mmm yyyy"), "not a date");
    EXPECT_EQ(vb::Format(QVariant(), "dd mmm yyyy"), "");
}

TEST_F(VbValuesTest, NumberPictures)
{
    EXPECT_EQ(vb::Format(2.5, "0.00"), "2.50");
    EXPECT_EQ(vb::Format(1.005, "0.00"), "1.01");
    EXPECT_EQ(vb::Format(-0.001, "0.00"), "0.00");
    EXPECT_EQ(vb::Format(1234567.891, "#,##0.00"), "1,234,567.89");
    EXPECT_EQ(vb::Format(12, "#,##0.00"), "12.00");
    EXPECT_EQ(vb::Format(0.5, "#,##0.00"), "0.50");
    EXPECT_EQ(vb::Format(2.5, "0"), "3");
    EXPECT_EQ(vb::Format(-2.5, "0"), "-3");
    EXPECT_EQ(vb::Format(7, "000"), "007");
    EXPECT_EQ(vb::Format(0.256, "0.0%"), "25.6%");
    EXPECT_EQ(vb::Format(-5, "0.00;(0.00)"), "(5.00)");
    EXPECT_EQ(vb::Format(0, "0.00;(0.00);\"nil\""), "nil");
    EXPECT_EQ(vb::Format(QStringLiteral("12.345"), "0.00"), "12.35");
    EXPECT_EQ(vb::Format(QVariant::fromValue(Currency::from_units(125)), "0.00"), "0.01");
    EXPECT_EQ(vb::Format(QStringLiteral("abc"), "0.00"), "abc");
    EXPECT_EQ(vb::Format(QVariant(), "0.00"), "");
}

TEST_F(VbValuesTest, CurrencyPictureUsesTheLocalesCurrencyWithTwoDecimals)
{
    EXPECT_EQ(vb::Format(1234.5, "currency"), QStringLiteral("£1,234.50"));
    EXPECT_EQ(vb::Format(QVariant::fromValue(Currency::from_units(5)), "Currency"), QStringLiteral("£0.00"));
    EXPECT_EQ(vb::Format(QStringLiteral("12.345"), "currency"), QStringLiteral("£12.35"));
    FakeLocaleSource us(american);
    LocaleScope scope(us);
    EXPECT_EQ(vb::Format(-5, "currency"), american.toCurrencyString(-5.0, QString(), 2));
}

TEST_F(VbValuesTest, AnEmptyPictureGivesThePlainText)
{
    EXPECT_EQ(vb::Format(12, ""), "12");
    EXPECT_EQ(vb::Format(2.5, ""), "2.5");
    EXPECT_EQ(vb::Format(QStringLiteral("abc"), ""), "abc");
    EXPECT_EQ(vb::Format(true, ""), "True");
    EXPECT_EQ(vb::Format(at(2026, 1, 5), ""), "05/01/2026");
    EXPECT_EQ(vb::Format(at(2026, 1, 5, 10, 30), ""), "05/01/2026 10:30:00");
    EXPECT_EQ(vb::Format(QTime(10, 30), ""), "10:30:00");
}

// ---------------------------------------------------------------------------
// Date arithmetic

TEST_F(VbValuesTest, AddingMonthsKeepsTheDayOrTakesTheMonthsLastDay)
{
    EXPECT_EQ(vb::DateAdd("m", 1, at(2026, 1, 31)), at(2026, 2, 28));
    EXPECT_EQ(vb::DateAdd("m", 1, at(2024, 1, 31)), at(2024, 2, 29));
    EXPECT_EQ(vb::DateAdd("m", -1, at(2026, 3, 31, 10, 30)), at(2026, 2, 28, 10, 30));
    EXPECT_EQ(vb::DateAdd("m", 2, at(2026, 1, 15)), at(2026, 3, 15));
    EXPECT_EQ(vb::DateAdd("q", 1, at(2025, 11, 30)), at(2026, 2, 28));
    EXPECT_EQ(vb::DateAdd("yyyy", 1, at(2024, 2, 29)), at(2025, 2, 28));
}

TEST_F(VbValuesTest, AddingDaysWeeksAndTimes)
{
    EXPECT_EQ(vb::DateAdd("d", 10, at(2026, 12, 25)), at(2027, 1, 4));
    EXPECT_EQ(vb::DateAdd("y", -1, at(2026, 1, 1)), at(2025, 12, 31));
    EXPECT_EQ(vb::DateAdd("w", 1, at(2026, 1, 1)), at(2026, 1, 2));
    EXPECT_EQ(vb::DateAdd("ww", 2, at(2026, 1, 1)), at(2026, 1, 15));
    EXPECT_EQ(vb::DateAdd("n", 90, at(1899, 12, 30, 23, 0)), at(1899, 12, 31, 0, 30));
    EXPECT_EQ(vb::DateAdd("h", -1, at(2026, 1, 1)), at(2025, 12, 31, 23, 0));
    EXPECT_EQ(vb::DateAdd("s", 30, at(2026, 1, 1)), at(2026, 1, 1, 0, 0, 30));
    EXPECT_EQ(vb::DateAdd("N", 5.9, at(2026, 1, 1)), at(2026, 1, 1, 0, 5));
}

TEST_F(VbValuesTest, AnUnknownIntervalFails)
{
    EXPECT_FALSE(vb::DateAdd("fortnight", 1, at(2026, 1, 1)).isValid());
    EXPECT_EQ(engine::Err().Number, 5);
    EXPECT_FALSE(vb::DateAdd("yyyy", 9000, at(2026, 1, 1)).isValid());
}

TEST_F(VbValuesTest, WeekdayCountsFromSunday)
{
    EXPECT_EQ(vb::Weekday(at(2026, 1, 4)), 1);  // Sunday
    EXPECT_EQ(vb::Weekday(at(2026, 1, 5)), 2);  // Monday
    EXPECT_EQ(vb::Weekday(at(2026, 1, 10)), 7); // Saturday
    EXPECT_EQ(vb::Weekday(at(1899, 12, 30)), 7);
}

TEST_F(VbValuesTest, DateDiffCountsBoundariesCrossed)
{
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
