// The rates, cost per pupil and VAT percentages of the Report Text screen:
// which value is refused with which words, and blanks stored as 0.

#include "reports/standard_text_checks.h"

#include <gtest/gtest.h>

namespace {

struct TextCase {
    const char* exam;
    const char* course;
    const char* show;
    const char* vat;          // the same text in all six percentages
    StandardTextField field;  // None: accepted
    const char* message;
    const char* course_after;  // the course rate afterwards
};

const char* const rate_words = "The rate must be a decimal number";

const TextCase text_cases[] = {
    {"", "", "", "", StandardTextField::None, "", "0"},
    {"10", "12.5", "3", "17.5", StandardTextField::None, "", "12.5"},
    {"10", "twelve", "", "", StandardTextField::Course_Rate, rate_words, "twelve"},
    // Too large to be money is refused as not a number would be.
    {"1e30", "", "", "", StandardTextField::Exam_Rate, rate_words, ""},
    {"", "", "abc", "", StandardTextField::Show_Cost, "The cost must be a decimal number", "0"},
    // The two VAT refusals differ by one capital letter.
    {"", "", "", "x", StandardTextField::VAT_Percent, "The VAT percent must be a decimal number", "0"},
    {"", "", "", "1e30", StandardTextField::VAT_Percent, "The VAT Percent must be a decimal number", "0"},
};

TEST(StandardTextChecks, EachValueIsRefusedWithItsWordsAndBlanksBecomeZero)
{
    for (const TextCase& row : text_cases) {
        StandardTextEntry entry{row.exam, row.course, row.show, {}};
        entry.vat_percent.fill(QString::fromUtf8(row.vat));
        const StandardTextRefusal refusal = Check_Standard_Text(entry);
        const std::string label = std::string(row.exam) + " / " + row.course + " / " + row.show + " / " + row.vat;
        EXPECT_EQ(refusal.field, row.field) << label;
        EXPECT_EQ(refusal.index, 0) << label;
        EXPECT_EQ(refusal.message, QString::fromUtf8(row.message)) << label;
        EXPECT_EQ(entry.course_rate, QString::fromUtf8(row.course_after)) << label;
    }
}

TEST(StandardTextChecks, APercentageLaterInTheRowIsNamedByItsIndex)
{
    StandardTextEntry entry{"1", "2", "3", {"5", "", "", "twenty", "", ""}};
    const StandardTextRefusal refusal = Check_Standard_Text(entry);
    EXPECT_EQ(refusal.field, StandardTextField::VAT_Percent);
    EXPECT_EQ(refusal.index, 3);
    // The blanks before it are filled in, those after it stay as typed.
    EXPECT_EQ(entry.vat_percent[1], QStringLiteral("0"));
    EXPECT_EQ(entry.vat_percent[4], QString());
}

}  // namespace
