// The rules of a catalogue entry, after its title's, in the order the
// secretary meets them.

#include "activities/activity_fields.h"

#include <gtest/gtest.h>

namespace {

struct Case {
    const char* name;
    ActivityFields fields;
    ActivityField field;
    const char* message;
};

// A level 1 ballet exam of 15 minutes at 12.50: valid unless a case changes it.
ActivityFields exam()
{
    ActivityFields fields;
    fields.price = QStringLiteral("12.50");
    fields.level = QStringLiteral("1");
    fields.duration = QStringLiteral("15");
    fields.type_row = 1;
    fields.type_code = QStringLiteral("1");
    fields.style = QStringLiteral("Ballet");
    fields.style_listed = true;
    return fields;
}

ActivityFields with(ActivityFields fields, void (*change)(ActivityFields&))
{
    change(fields);
    return fields;
}

class ActivityFieldsRule : public ::testing::TestWithParam<Case> {};

TEST_P(ActivityFieldsRule, GivesItsWordsAndField)
{
    ActivityFields fields = GetParam().fields;
    const ActivityRefusal refusal = Check_Activity_Fields(fields);
    EXPECT_EQ(refusal.field, GetParam().field);
    EXPECT_EQ(refusal.message, QString::fromLatin1(GetParam().message));
}

INSTANTIATE_TEST_SUITE_P(
    Catalogue, ActivityFieldsRule,
    ::testing::Values(
        Case{"AnExamAsTyped", exam(), ActivityField::None, ""},
        Case{"ALevelOfOneAndAHalfConverts", with(exam(), [](ActivityFields& f) { f.level = QStringLiteral("1.5"); }),
             ActivityField::None, ""},
        Case{"ANewStyleTyped", with(exam(), [](ActivityFields& f) { f.style = QStringLiteral("Tap"); f.style_listed = false; }),
             ActivityField::None, ""},
        Case{"ABlankPrice", with(exam(), [](ActivityFields& f) { f.price.clear(); }), ActivityField::Price,
             "The price must be a decimal number"},
        Case{"AWordForPrice", with(exam(), [](ActivityFields& f) { f.price = QStringLiteral("free"); }),
             ActivityField::Price, "The price must be a decimal number"},
        Case{"AWordForLevel", with(exam(), [](ActivityFields& f) { f.level = QStringLiteral("one"); }),
             ActivityField::Level, "The level must be a number"},
        Case{"ALevelBeyondSixteenBits", with(exam(), [](ActivityFields& f) { f.level = QStringLiteral("40000"); }),
             ActivityField::Level, "The level must be an integer"},
        Case{"AWordForDuration", with(exam(), [](ActivityFields& f) { f.duration = QStringLiteral("long"); }),
             ActivityField::Duration, "The duration must be a number"},
        Case{"ADurationBeyondSixteenBits", with(exam(), [](ActivityFields& f) { f.duration = QStringLiteral("99999"); }),
             ActivityField::Duration, "The duration must be an integer"},
        Case{"NoKindChosen", with(exam(), [](ActivityFields& f) { f.type_row = -1; }), ActivityField::Type,
             "There must be a type"},
        Case{"UnknownChosen", with(exam(), [](ActivityFields& f) { f.type_row = 0; f.type_code = QStringLiteral("0"); }),
             ActivityField::Type, "There must be a type"},
        Case{"AnExamWithoutStyle", with(exam(), [](ActivityFields& f) { f.style = QStringLiteral("  "); f.style_listed = false; }),
             ActivityField::Style, "There must be a dance style"}),
    [](const ::testing::TestParamInfo<Case>& info) { return std::string(info.param.name); });

TEST(ActivityFields, ABlankDurationIsZeroAndAShowOrOutingWithoutStyleGetsOneBlank)
{
    for (const char* kind : {"2", "3"}) {
        ActivityFields show = exam();
        show.type_code = QString::fromLatin1(kind);
        show.type_row = show.type_code.toInt();
        show.style.clear();
        show.style_listed = false;
        show.duration.clear();
        EXPECT_EQ(Check_Activity_Fields(show).field, ActivityField::None) << kind;
        EXPECT_EQ(show.style, QStringLiteral(" "));
        EXPECT_EQ(show.duration, QStringLiteral("0"));
    }
}

}  // namespace
