// What the Pupil Details screen rests on, without the screen: a pupil's age by
// calendar parts, the gender letter's two facts, the name in the pupils'
// list, the checks before a pupil is stored, and the writes of a family and a
// pupil with their refusals.

#include "people/pupil_age.h"
#include "people/pupil_family_writes.h"
#include "people/pupil_gender.h"
#include "people/pupil_name.h"
#include "people/pupil_validation.h"

#include "engine/database.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "support/school_made_current.h"
#include "support/scripted_boxes.h"

#include <gtest/gtest.h>

using engine::answer::No;
using engine::answer::Yes;
using testing_support::AdminSchool;
using testing_support::ScriptedBoxes;

namespace {

// ---- Age ----

struct AgeCase {
    const char* story;
    QDate born;
    QDate today;
    PupilAge age;
};

class AgeByCalendarParts : public ::testing::TestWithParam<AgeCase> {};

TEST_P(AgeByCalendarParts, CountsYearsAndMonthsSinceTheBirthday)
{
    const AgeCase& c = GetParam();
    const PupilAge age = Display_Age(c.born, c.today);
    EXPECT_EQ(age.years, c.age.years) << c.story;
    EXPECT_EQ(age.months, c.age.months) << c.story;
}

INSTANTIATE_TEST_SUITE_P(
    Ages, AgeByCalendarParts,
    ::testing::Values(
        AgeCase{"born today", QDate(2025, 6, 10), QDate(2025, 6, 10), {0, 0}},
        AgeCase{"on the birthday: whole years", QDate(2015, 6, 10), QDate(2025, 6, 10), {10, 0}},
        AgeCase{"the day before: a year less and 11 months", QDate(2015, 6, 10), QDate(2025, 6, 9), {9, 11}},
        AgeCase{"the day after", QDate(2015, 6, 10), QDate(2025, 6, 11), {10, 0}},
        AgeCase{"next month, a day short of it", QDate(2015, 6, 10), QDate(2025, 7, 9), {10, 0}},
        AgeCase{"next month, on the day", QDate(2015, 6, 10), QDate(2025, 7, 10), {10, 1}},
        AgeCase{"an earlier month of the next year", QDate(2015, 6, 10), QDate(2026, 2, 20), {10, 8}},
        AgeCase{"an earlier month, a day short", QDate(2015, 6, 10), QDate(2026, 2, 9), {10, 7}},
        AgeCase{"29 February, on 28 February of a common year", QDate(2016, 2, 29), QDate(2025, 2, 28), {8, 11}},
        AgeCase{"29 February, on 1 March of a common year", QDate(2016, 2, 29), QDate(2025, 3, 1), {9, 0}},
        AgeCase{"29 February, on 29 February", QDate(2016, 2, 29), QDate(2028, 2, 29), {12, 0}},
        AgeCase{"the 31st, on the 30th of a 30-day month", QDate(2015, 1, 31), QDate(2025, 4, 30), {10, 2}},
        AgeCase{"the 31st, on the 1st of the next month", QDate(2015, 1, 31), QDate(2025, 5, 1), {10, 3}},
        AgeCase{"December birthday seen in January", QDate(2019, 12, 31), QDate(2025, 1, 1), {5, 0}}));

// ---- Gender ----

struct GenderCase {
    const char* letter;
    bool known;
    PupilSex sex;
    bool hidden;
    colours::Rgb colour;
    bool cross_hatched;
};

class GenderLetter : public ::testing::TestWithParam<GenderCase> {};

TEST_P(GenderLetter, CarriesSexHiddenColourAndFill)
{
    const GenderCase& c = GetParam();
    SCOPED_TRACE(c.letter);
    const GenderLook look = Gender_Look(QString::fromLatin1(c.letter));
    EXPECT_EQ(look.known, c.known);
    EXPECT_EQ(look.colour, c.colour);
    EXPECT_EQ(look.cross_hatched, c.cross_hatched);
    if (c.known) {
        EXPECT_EQ(look.sex, c.sex);
        EXPECT_EQ(look.hidden, c.hidden);
        // The letter is what the choices give back.
        EXPECT_EQ(Gender_Letter(c.sex == PupilSex::Male, c.hidden), QString::fromLatin1(c.letter));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Letters, GenderLetter,
    ::testing::Values(GenderCase{"M", true, PupilSex::Male, false, {192, 192, 255}, false},
                      GenderCase{"F", true, PupilSex::Female, false, {255, 192, 255}, false},
                      GenderCase{"b", true, PupilSex::Male, true, {192, 192, 255}, true},
                      GenderCase{"g", true, PupilSex::Female, true, {255, 192, 255}, true},
                      // Only the four letters mean anything: another case or letter is not known.
                      GenderCase{"m", false, PupilSex::Unknown, false, {255, 255, 0}, true},
                      GenderCase{"X", false, PupilSex::Unknown, false, {255, 255, 0}, true},
                      GenderCase{"", false, PupilSex::Unknown, false, {255, 255, 0}, true}));

// ---- The name in the list ----

TEST(FormatName, FamilyInCapitalsThenFirstNameThenAnyAlternateSurname)
{
    EXPECT_EQ(Format_Name(QStringLiteral("Smith"), QStringLiteral("Anna"), QString()), QStringLiteral("SMITH Anna"));
    EXPECT_EQ(Format_Name(QStringLiteral("Smith"), QStringLiteral("Anna"), QStringLiteral("Jones")),
              QStringLiteral("SMITH Anna (Jones)"));
    EXPECT_EQ(Format_Name(QStringLiteral("Smith"), QStringLiteral("Anna"), QStringLiteral("   ")), QStringLiteral("SMITH Anna"));
    EXPECT_EQ(Format_Name(QStringLiteral("O'Brien-Müller"), QStringLiteral("Zoë"), QString()),
              QStringLiteral("O'BRIEN-MÜLLER Zoë"));
}

TEST(FormatName, IsBuiltFromARecordOfThePupilsDetails)
{
    AdminSchool school;
    const int smith = school.add_family(QStringLiteral("Smith"));
    const int anna = school.add_pupil(smith, QStringLiteral("Anna"));
    school.exec(QStringLiteral("UPDATE Pupils SET Pupil_Surname = 'Jones' WHERE Pupil_id = %1").arg(anna));
    school.add_pupil(smith, QStringLiteral("Ben"));
    std::unique_ptr<engine::Recordset> pupils = school.db().OpenRecordset(QStringLiteral("Qry_Select_Pupil_Details"));
    ASSERT_TRUE(pupils);
    EXPECT_EQ(Format_Name(*pupils), QStringLiteral("SMITH Anna (Jones)"));
    pupils->MoveNext();
    EXPECT_EQ(Format_Name(*pupils), QStringLiteral("SMITH Ben"));
}

// ---- The checks before a pupil is stored ----

PupilDetails typed_pupil(const QString& first_name, const QString& birth = QString(), const QString& start = QString())
{
    PupilDetails pupil;
    pupil.first_name = first_name;
    pupil.birth_date = birth;
    pupil.start_date = start;
    return pupil;
}

const QDate today(2025, 6, 10);

TEST(ValidatePupil, TheFirstBrokenRuleIsShownAndNamesItsField)
{
    struct Case {
        PupilDetails pupil;
        QString family_id;
        QString words;
        int style;
        PupilField field;
    };
    const Case cases[] = {
        {typed_pupil(QStringLiteral("  ")), QStringLiteral("3"), QStringLiteral("invalid first name"),
         engine::mb::Information, PupilField::First_Name},
        {typed_pupil(QStringLiteral("An\"na")), QStringLiteral("3"), QStringLiteral("The first name cannot include quotes"),
         engine::mb::OkOnly, PupilField::First_Name},
        {typed_pupil(QStringLiteral("Anna"), QStringLiteral("the tenth")), QStringLiteral("3"), QStringLiteral("invalid date"),
         engine::mb::Information, PupilField::Birth_Date},
        {typed_pupil(QStringLiteral("Anna"), QStringLiteral("10 Jun 2015"), QStringLiteral("soon")), QStringLiteral("3"),
         QStringLiteral("invalid start date"), engine::mb::Information, PupilField::Start_Date},
        {typed_pupil(QStringLiteral("Anna")), QString(), QStringLiteral("invalid family name"), engine::mb::Information,
         PupilField::Family_Name},
        {typed_pupil(QStringLiteral("Anna")), QStringLiteral("Smith"), QStringLiteral("invalid family name"),
         engine::mb::Information, PupilField::Family_Name},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.words.toStdString());
        ScriptedBoxes boxes;
        boxes.expect(c.words, engine::answer::Ok, c.style);
        EXPECT_EQ(Validate_Pupil(c.pupil, c.family_id, today), c.field);
    }
}

TEST(ValidatePupil, ABirthDateInTheFutureIsAQuestion)
{
    const PupilDetails pupil = typed_pupil(QStringLiteral("Anna"), QStringLiteral("1 Jan 2026"), QStringLiteral("1 Sep 2025"));
    {
        ScriptedBoxes boxes;
        boxes.expect(QStringLiteral("The birthdate is in the future! OK?"), No, 68);
        EXPECT_EQ(Validate_Pupil(pupil, QStringLiteral("3"), today), PupilField::Birth_Date);
    }
    {
        // A start date ahead is planned, and passes without a word.
        ScriptedBoxes boxes;
        boxes.expect(QStringLiteral("The birthdate is in the future! OK?"), Yes, 68);
        EXPECT_EQ(Validate_Pupil(pupil, QStringLiteral("3"), today), PupilField::None);
    }
}

TEST(CheckTypedDate, BlankAndPastDatesPassAFutureOneIsAskedAbout)
{
    ScriptedBoxes boxes;
    EXPECT_EQ(Check_Typed_Date(QStringLiteral(" "), today, Startdate_Future_Question()), TypedDate::Accepted);
    EXPECT_EQ(Check_Typed_Date(QStringLiteral("10 Jun 2025"), today, Startdate_Future_Question()), TypedDate::Accepted);
    boxes.expect(QStringLiteral("invalid date"), engine::answer::Ok, engine::mb::Information)
        .expect(QStringLiteral("The Startdate is in the future! OK?"), No, 68)
        .expect(QStringLiteral("The Startdate is in the future! OK?"), Yes, 68);
    EXPECT_EQ(Check_Typed_Date(QStringLiteral("31 Feb 2025"), today, Startdate_Future_Question()), TypedDate::Not_A_Date);
    EXPECT_EQ(Check_Typed_Date(QStringLiteral("11 Jun 2025"), today, Startdate_Future_Question()), TypedDate::Declined);
    EXPECT_EQ(Check_Typed_Date(QStringLiteral("11 Jun 2025"), today, Startdate_Future_Question()), TypedDate::Accepted);
}

// ---- Writing a family and a pupil ----

class PupilWrites : public ::testing::Test {
protected:
    FamilyDetails family_named(const QString& name, const QString& address = QString())
    {
        FamilyDetails family;
        family.name = name;
        family.address = address;
        return family;
    }
    PupilDetails pupil_of(int family, const QString& first_name)
    {
        PupilDetails pupil = typed_pupil(first_name);
        pupil.family_id = family;
        pupil.gender = QStringLiteral("F");
        return pupil;
    }
    QVariant family_column(int family, const QString& column)
    {
        return school.scalar(QStringLiteral("SELECT %1 FROM Families WHERE Family_id = %2").arg(column).arg(family));
    }
    QVariant pupil_column(int pupil, const QString& column)
    {
        return school.scalar(QStringLiteral("SELECT %1 FROM Pupils WHERE Pupil_id = %2").arg(column).arg(pupil));
    }

    AdminSchool school;
};

TEST_F(PupilWrites, ANewFamilyIsAddedAndItsKeyGivenBack)
{
    FamilyDetails family = family_named(QStringLiteral("Archer"), QStringLiteral("3 Elm Road"));
    family.address3 = QStringLiteral("Bath");
    family.post_code = QStringLiteral("BA1 2CD");
    family.phone_1 = QStringLiteral("01225 000000");
    family.correspondence = QStringLiteral("Mrs Archer");
    family.notes = QStringLiteral("Pays by cheque");
    family.marker = QStringLiteral("A");
    qint32 id = 0;
    ASSERT_EQ(Update_Family(family, id), FamilyWrite::Written);
    EXPECT_GT(id, 0);
    EXPECT_EQ(family_column(id, QStringLiteral("Family_Name")).toString(), QStringLiteral("Archer"));
    EXPECT_EQ(family_column(id, QStringLiteral("Family_Address3")).toString(), QStringLiteral("Bath"));
    EXPECT_EQ(family_column(id, QStringLiteral("Family_PostCode")).toString(), QStringLiteral("BA1 2CD"));
    EXPECT_EQ(family_column(id, QStringLiteral("Family_Correspondence")).toString(), QStringLiteral("Mrs Archer"));
    EXPECT_EQ(family_column(id, QStringLiteral("Family_Notes")).toString(), QStringLiteral("Pays by cheque"));
    EXPECT_TRUE(family_column(id, QStringLiteral("Family_Phone_2")).isNull());
}

TEST_F(PupilWrites, AFamilyIsChangedInPlace)
{
    const int archer = school.add_family(QStringLiteral("Archer"), QStringLiteral("3 Elm Road"));
    qint32 id = archer;
    FamilyDetails family = family_named(QStringLiteral("Archer"), QStringLiteral("8 Oak Way"));
    family.phone_2 = QStringLiteral("07700 900000");
    ASSERT_EQ(Update_Family(family, id), FamilyWrite::Written);
    EXPECT_EQ(id, archer);
    EXPECT_EQ(school.count(QStringLiteral("Families")), 1);
    EXPECT_EQ(family_column(archer, QStringLiteral("Family_Address")).toString(), QStringLiteral("8 Oak Way"));
    EXPECT_EQ(family_column(archer, QStringLiteral("Family_Phone_2")).toString(), QStringLiteral("07700 900000"));
}

// Name and first address line make a family; a blank address is one blank,
// so that two families of the same name without addresses clash too.
TEST_F(PupilWrites, TheSameFamilyTwiceIsRefusedAndNothingIsAdded)
{
    struct Case {
        QString address;
        QString stored_address;
    };
    for (const Case& c : {Case{QStringLiteral("3 Elm Road"), QStringLiteral("3 Elm Road")},
                          Case{QString(), QStringLiteral(" ")}}) {
        SCOPED_TRACE(c.address.toStdString());
        school.exec(QStringLiteral("DELETE FROM Families"));
        qint32 first = 0;
        ASSERT_EQ(Update_Family(family_named(QStringLiteral("Archer"), c.address), first), FamilyWrite::Written);
        EXPECT_EQ(family_column(first, QStringLiteral("Family_Address")).toString(), c.stored_address);
        ScriptedBoxes boxes;
        boxes.expect(QStringLiteral("This family already exists"), engine::answer::Ok, engine::mb::OkOnly);
        qint32 second = 0;
        EXPECT_EQ(Update_Family(family_named(QStringLiteral("Archer"), c.address), second), FamilyWrite::Duplicate);
        EXPECT_EQ(second, 0);
        EXPECT_EQ(school.count(QStringLiteral("Families")), 1);
    }
    // Another address is another family.
    qint32 other = 0;
    EXPECT_EQ(Update_Family(family_named(QStringLiteral("Archer"), QStringLiteral("8 Oak Way")), other), FamilyWrite::Written);
}

TEST_F(PupilWrites, AFamilyChangedIntoAnotherIsRefused)
{
    school.add_family(QStringLiteral("Archer"), QStringLiteral("3 Elm Road"));
    qint32 brown = school.add_family(QStringLiteral("Brown"), QStringLiteral("3 Elm Road"));
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("This family already exists"));
    EXPECT_EQ(Update_Family(family_named(QStringLiteral("Archer"), QStringLiteral("3 Elm Road")), brown),
              FamilyWrite::Duplicate);
    EXPECT_EQ(family_column(brown, QStringLiteral("Family_Name")).toString(), QStringLiteral("Brown"));
}

TEST_F(PupilWrites, AFamilyWithoutANameIsNotWritten)
{
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("invalid family name"), engine::answer::Ok, engine::mb::Information);
    qint32 id = 0;
    EXPECT_EQ(Update_Family(family_named(QStringLiteral("  "), QStringLiteral("3 Elm Road")), id), FamilyWrite::Name_Missing);
    EXPECT_EQ(school.count(QStringLiteral("Families")), 0);
}

TEST_F(PupilWrites, ANewPupilIsAddedWithItsDetailsAndItsKeyGivenBack)
{
    const int archer = school.add_family(QStringLiteral("Archer"));
    PupilDetails pupil = pupil_of(archer, QStringLiteral("Lily"));
    pupil.surname = QStringLiteral("Green");
    pupil.birth_date = QStringLiteral("10 Jun 2015");
    pupil.start_date = QStringLiteral("1 Sep 2024");
    pupil.gender = QStringLiteral("g");
    pupil.ref3 = QStringLiteral("R3");
    pupil.medical = QStringLiteral("Asthma");
    pupil.marker = QStringLiteral("Junior");
    pupil.e_mail = QStringLiteral("lily@example.org");
    pupil.notes = QStringLiteral("Likes tap");
    pupil.special_needs = QStringLiteral("None");
    pupil.ethnicity = QStringLiteral("Not given");
    pupil.regn_fee = QStringLiteral("Paid");
    qint32 id = 0;
    ASSERT_EQ(Update_Pupil(pupil, id), PupilWrite::Written);
    EXPECT_GT(id, 0);
    const std::pair<const char*, QString> stored[] = {
        {"Pupil_FirstName", QStringLiteral("Lily")},    {"Pupil_Surname", QStringLiteral("Green")},
        {"Pupil_Gender", QStringLiteral("g")},          {"Pupil_Ref_Num3", QStringLiteral("R3")},
        {"Pupil_Medical", QStringLiteral("Asthma")},    {"Pupil_Marker", QStringLiteral("Junior")},
        {"Pupil_E_Mail", QStringLiteral("lily@example.org")}, {"Pupil_Notes", QStringLiteral("Likes tap")},
        {"Pupil_Special_Needs", QStringLiteral("None")}, {"Pupil_Ethnicity", QStringLiteral("Not given")},
        {"Pupil_Regn_Fee", QStringLiteral("Paid")},      {"Pupil_Family_id", QString::number(archer)},
    };
    for (const auto& [column, value] : stored)
        EXPECT_EQ(pupil_column(id, QString::fromLatin1(column)).toString(), value) << column;
    EXPECT_EQ(pupil_column(id, QStringLiteral("Pupil_Birthdate")).toDateTime().date(), QDate(2015, 6, 10));
    EXPECT_EQ(pupil_column(id, QStringLiteral("Pupil_Startdate")).toDateTime().date(), QDate(2024, 9, 1));
    EXPECT_TRUE(pupil_column(id, QStringLiteral("Pupil_Ref_Num")).isNull());
}

TEST_F(PupilWrites, APupilChangedKeepsItsKeyAndMayMoveFamily)
{
    const int archer = school.add_family(QStringLiteral("Archer"));
    const int brown = school.add_family(QStringLiteral("Brown"));
    const int lily = school.add_pupil(archer, QStringLiteral("Lily"));
    school.exec(QStringLiteral("UPDATE Pupils SET Pupil_Birthdate = '2015-06-10 00:00:00' WHERE Pupil_id = %1").arg(lily));
    qint32 id = lily;
    PupilDetails pupil = pupil_of(brown, QStringLiteral("Lily"));
    ASSERT_EQ(Update_Pupil(pupil, id), PupilWrite::Written);
    EXPECT_EQ(id, lily);
    EXPECT_EQ(pupil_column(lily, QStringLiteral("Pupil_Family_id")).toInt(), brown);
    // A blank date is Null.
    EXPECT_TRUE(pupil_column(lily, QStringLiteral("Pupil_Birthdate")).isNull());
}

TEST_F(PupilWrites, TheSameFirstNameTwiceInAFamilyIsRefused)
{
    const int archer = school.add_family(QStringLiteral("Archer"));
    const int brown = school.add_family(QStringLiteral("Brown"));
    school.add_pupil(archer, QStringLiteral("Lily"));
    const int tom = school.add_pupil(archer, QStringLiteral("Tom"));
    {
        ScriptedBoxes boxes;
        boxes.expect(QStringLiteral("This pupil already exists"), engine::answer::Ok, engine::mb::OkOnly)
            .expect(QStringLiteral("This pupil already exists"), engine::answer::Ok, engine::mb::OkOnly);
        qint32 added = 0;
        EXPECT_EQ(Update_Pupil(pupil_of(archer, QStringLiteral("Lily")), added), PupilWrite::Duplicate);
        EXPECT_EQ(added, 0);
        qint32 renamed = tom;
        EXPECT_EQ(Update_Pupil(pupil_of(archer, QStringLiteral("Lily")), renamed), PupilWrite::Duplicate);
    }
    EXPECT_EQ(school.count(QStringLiteral("Pupils")), 2);
    EXPECT_EQ(pupil_column(tom, QStringLiteral("Pupil_FirstName")).toString(), QStringLiteral("Tom"));
    // Another family may have its own Lily.
    qint32 other = 0;
    EXPECT_EQ(Update_Pupil(pupil_of(brown, QStringLiteral("Lily")), other), PupilWrite::Written);
}

}  // namespace
