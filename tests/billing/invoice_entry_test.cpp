// Invoices and lines entered by hand: the kind of line the choices make, the
// rules of what is typed, storing an invoice and finding it again, the
// uniqueness of a reason per term or activity date, and the lists chosen from.

#include "billing/invoice_entry.h"

#include "database/code_values.h"
#include "database/db_handling.h"
#include "engine/currency.h"
#include "engine/jet_date.h"
#include "engine/vb_values.h"
#include "engine/workspace.h"
#include "support/school_made_current.h"

#include <gtest/gtest.h>

namespace {

using engine::Currency;
using testing_support::NewActivity;
using testing_support::NewCourse;
namespace kind = code::inv_line_type;

Currency money(const char* text)
{
    Currency amount;
    EXPECT_TRUE(vb::CCur(QString::fromLatin1(text), amount)) << text;
    return amount;
}

// ---- The kind of line ----

struct LineTypeCase {
    const char* story;
    ListChoice pupil;
    ListChoice course;
    ListChoice activity;
    const char* amount;
    int type;
};

TEST(InvoiceLineType, TheChoicesMakeTheKindOfLineLaterRulesWinning)
{
    const std::nullopt_t none = std::nullopt;  // no entry at all chosen
    const LineTypeCase cases[] = {
        {"a pupil's discount with nothing chosen in either list", 12, none, none, "-5", kind::Pupil_Only},
        {"a pupil's charge with nothing chosen in either list", 12, none, none, "5", kind::Manual_Amount},
        {"a pupil's line of nothing", 12, none, none, "0", kind::Pupil_Only},
        {"a pupil with (Blank) chosen for course and activity", 12, 0, 0, "30", kind::Pupil_Only},
        {"a pupil with only the course list's (Blank) chosen", 12, 0, none, "30", kind::Pupil_Only},
        {"a family charge: the (Blank) pupil, (Not Applicable) in both", 0, 0, 0, "30", kind::No_Pupil},
        {"no pupil chosen and a discount", none, none, none, "-30", kind::No_Pupil},
        {"no pupil chosen and a charge", none, none, none, "30", kind::Manual_Amount},
        {"a course", 12, 7, none, "120", kind::Course},
        {"a course with the activities' (Blank)", 12, 7, 0, "120", kind::Course},
        {"an activity", 12, 0, 4, "25", kind::Activity},
        {"a course and an activity: the activity wins", 12, 7, 4, "25", kind::Activity},
        {"a course refunded", 12, 7, none, "-120", kind::Course},
    };
    for (const LineTypeCase& c : cases) {
        SCOPED_TRACE(c.story);
        EXPECT_EQ(Invoice_Line_Type({c.pupil, c.course, c.activity, money(c.amount)}), c.type);
    }
}

// ---- What is typed ----

TEST(InvoiceEntryRules, TheFirstBrokenRuleIsTheAnswerAndTheChoicesGiveTermDateOrNeither)
{
    struct Case {
        const char* story;
        InvoiceTyped typed;
        InvoiceField field;
        const char* message;
    };
    const QString march_exams = Activity_Date_Entry_Text(QDate(2026, 3, 14), QStringLiteral("Spring Exams"));
    const Case refusals[] = {
        {"no date, no reason", {QStringLiteral("next week"), QString(), QString(), 3, std::nullopt},
         InvoiceField::Date, "Invalid date"},
        {"a blank reason", {QStringLiteral("10 Jan 2026"), QStringLiteral("   "), QString(), 3, std::nullopt},
         InvoiceField::Reason, "There must be a reason"},
        {"nothing chosen in either list", {QStringLiteral("10 Jan 2026"), QStringLiteral("Costume"), QString(), std::nullopt, std::nullopt},
         InvoiceField::Term, "Please choose a term or an activity"},
    };
    for (const Case& c : refusals) {
        SCOPED_TRACE(c.story);
        InvoiceHeader header;
        const EntryRefusal refusal = Check_Invoice_Entry(c.typed, 5, QTime(9, 0), header);
        EXPECT_EQ(refusal.field, int(c.field));
        EXPECT_EQ(refusal.message, QString::fromLatin1(c.message));
    }

    struct Chosen {
        const char* story;
        ListChoice term;
        std::optional<QString> date_entry;
        std::optional<int> term_id;
        std::optional<QDate> activity_date;
    };
    const Chosen chosen[] = {
        {"a term", 3, std::nullopt, 3, std::nullopt},
        {"a term and the dates' (Blank)", 3, QStringLiteral("(Blank)"), 3, std::nullopt},
        {"an activity date", std::nullopt, march_exams, std::nullopt, QDate(2026, 3, 14)},
        {"an activity date and the terms' (Blank)", 0, march_exams, std::nullopt, QDate(2026, 3, 14)},
        {"(Blank) in both: a reason alone", 0, QStringLiteral("(Blank)"), std::nullopt, std::nullopt},
        {"(None) where there are no terms", 0, std::nullopt, std::nullopt, std::nullopt},
    };
    for (const Chosen& c : chosen) {
        SCOPED_TRACE(c.story);
        InvoiceHeader header;
        const InvoiceTyped typed{QStringLiteral("10 Jan 2026"), QStringLiteral("Costume"), QStringLiteral("Red tutu"),
                                 c.term, c.date_entry};
        EXPECT_FALSE(Check_Invoice_Entry(typed, 5, QTime(14, 35, 12), header).refused());
        EXPECT_EQ(header.family_id, 5);
        EXPECT_EQ(header.invoice_date, engine::make_datetime(QDate(2026, 1, 10), QTime(14, 35, 12)));
        EXPECT_EQ(header.reason, QStringLiteral("Costume"));
        EXPECT_EQ(header.notes, QStringLiteral("Red tutu"));
        EXPECT_EQ(header.term_id, c.term_id);
        EXPECT_EQ(header.activity_date, c.activity_date);
    }
}

TEST(InvoiceEntryRules, ALineNeedsANumberAStoredInvoiceAndAPupilChoice)
{
    struct Case {
        const char* story;
        LineTyped typed;
        LineField field;
        QString message;
    };
    const Case refusals[] = {
        {"words for an amount", {QStringLiteral("ten"), QStringLiteral("4"), 12, std::nullopt, std::nullopt, QString()},
         LineField::Amount, QStringLiteral("Invalid amount")},
        {"no amount", {QString(), QStringLiteral("4"), 12, std::nullopt, std::nullopt, QString()},
         LineField::Amount, QStringLiteral("Invalid amount")},
        {"an invoice not yet stored", {QStringLiteral("10"), QStringLiteral("0"), 12, std::nullopt, std::nullopt, QString()},
         LineField::Invoice, QStringLiteral("Invalid invoice number - Please exit and try again")},
        {"no pupil entry chosen", {QStringLiteral("10"), QStringLiteral("4"), std::nullopt, std::nullopt, std::nullopt, QString()},
         LineField::Pupil, QStringLiteral("Invalid pupil")},
    };
    for (const Case& c : refusals) {
        SCOPED_TRACE(c.story);
        LineValues line;
        const EntryRefusal refusal = Check_Line_Entry(c.typed, line);
        EXPECT_EQ(refusal.field, int(c.field));
        EXPECT_EQ(refusal.message, c.message);
    }

    // An amount shown in the currency format is read back exactly, and the
    // "(Blank)" entries stand for no pupil and no course.
    LineValues line;
    ASSERT_FALSE(Check_Line_Entry({vb::Format(QVariant::fromValue(money("-12.35")), QStringLiteral("currency")),
                                   QStringLiteral("4"), 0, 0, std::nullopt, QString()},
                                  line)
                     .refused());
    EXPECT_EQ(line.amount, money("-12.35"));
    EXPECT_EQ(line.invoice_id, 4);
    EXPECT_EQ(line.pupil_id, std::nullopt);
    EXPECT_EQ(line.course_id, std::nullopt);
    EXPECT_EQ(line.type, kind::No_Pupil);
}

TEST(InvoiceEntryRules, AnActivityDatesEntryBeginsWithItsDate)
{
    const QString entry = Activity_Date_Entry_Text(QDate(2026, 3, 14), QStringLiteral("Spring Exams 2026"));
    EXPECT_EQ(entry, QStringLiteral("14 Mar 2026 Spring Exams 2026"));
    EXPECT_EQ(Activity_Date_At_Head(entry), QDate(2026, 3, 14));
    EXPECT_EQ(Activity_Date_At_Head(QStringLiteral("(Blank)")), std::nullopt);
    EXPECT_EQ(Activity_Date_At_Head(QStringLiteral("(None)")), std::nullopt);
}

// ---- Stored invoices and lines ----

class InvoiceEntryStore : public ::testing::Test {
protected:
    InvoiceEntryStore()
    {
        family = school.add_family(QStringLiteral("Ashby"));
        amy = school.add_pupil(family, QStringLiteral("Amy"));
        term = school.add_term(QStringLiteral("Spring 2026"), QDate(2026, 1, 5), QDate(2026, 3, 28));
    }

    InvoiceHeader header(const QString& reason, std::optional<int> term_id, std::optional<QDate> day)
    {
        return {family, engine::make_datetime(QDate(2026, 1, 12), QTime(10, 15, 30)), reason, QStringLiteral("By hand"),
                term_id, day};
    }

    testing_support::SchoolMadeCurrent school;
    int family = 0;
    int amy = 0;
    int term = 0;
    const QDate show_day{2026, 6, 20};
};

TEST_F(InvoiceEntryStore, ANewInvoiceIsFoundAgainByItsTermItsDateOrNeitherAndAChangeKeepsItsId)
{
    school.title_date(show_day, QStringLiteral("Summer Show"));
    struct Case {
        const char* story;
        std::optional<int> term_id;
        std::optional<QDate> day;
    };
    const Case cases[] = {
        {"for a term", term, std::nullopt},
        {"for an activity date", std::nullopt, show_day},
        {"for a reason alone", std::nullopt, std::nullopt},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.story);
        const InvoiceSave saved = DB_Insert_Manual_Invoice(header(QString::fromLatin1(c.story), c.term_id, c.day));
        ASSERT_EQ(saved.outcome, SaveOutcome::Saved);
        EXPECT_EQ(saved.status, QStringLiteral("Invoice added successfully"));
        EXPECT_EQ(Program_Workspace().transaction_depth(), 0);

        InvoiceRecord stored;
        bool found = false;
        ASSERT_TRUE(DB_Read_Invoice(saved.invoice_id, stored, found));
        ASSERT_TRUE(found);
        EXPECT_EQ(stored.family_id, family);
        EXPECT_EQ(stored.reason, QString::fromLatin1(c.story));
        EXPECT_EQ(stored.invoice_date, engine::make_datetime(QDate(2026, 1, 12), QTime(10, 15, 30)));
        EXPECT_EQ(stored.term_id, c.term_id);
        EXPECT_EQ(stored.activity_date, c.day);
        EXPECT_EQ(stored.notes, QStringLiteral("By hand"));
        EXPECT_EQ(stored.generated, code::invoice_generated::Manual);
    }
    // With neither a term nor a date, one reason may stand twice.
    EXPECT_EQ(DB_Insert_Manual_Invoice(header(QStringLiteral("for a reason alone"), std::nullopt, std::nullopt)).outcome,
              SaveOutcome::Saved);
    EXPECT_EQ(school.count(QStringLiteral("Invoices")), 4);

    // A run's invoice changed by hand keeps its id, takes the new header and is manual.
    const int invoice = school.add_invoice(family, QStringLiteral("Spring fees"), term);
    const InvoiceSave saved = DB_Update_Manual_Invoice(invoice, header(QStringLiteral("Spring fees, late"), std::nullopt, std::nullopt));
    EXPECT_EQ(saved.outcome, SaveOutcome::Saved);
    EXPECT_EQ(saved.status, QStringLiteral("Invoice updated successfully"));
    InvoiceRecord stored;
    bool found = false;
    ASSERT_TRUE(DB_Read_Invoice(invoice, stored, found));
    EXPECT_EQ(stored.reason, QStringLiteral("Spring fees, late"));
    EXPECT_EQ(stored.term_id, std::nullopt);
    EXPECT_EQ(stored.generated, code::invoice_generated::Manual);
    ASSERT_TRUE(DB_Read_Invoice(invoice + 100, stored, found));
    EXPECT_FALSE(found);
}

TEST_F(InvoiceEntryStore, ASecondInvoiceWithOneReasonForATermOrDateIsADuplicateAndLeavesNothing)
{
    school.title_date(show_day, QStringLiteral("Summer Show"));
    struct Case {
        const char* story;
        std::optional<int> term_id;
        std::optional<QDate> day;
    };
    const Case cases[] = {{"the same term", term, std::nullopt}, {"the same activity date", std::nullopt, show_day}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.story);
        const int first = school.add_invoice(family, QStringLiteral("Extra lessons"), c.term_id, c.day);
        const QString before = school.dump();

        const InvoiceSave again = DB_Insert_Manual_Invoice(header(QStringLiteral("extra LESSONS"), c.term_id, c.day));
        EXPECT_EQ(again.outcome, SaveOutcome::Duplicate);
        EXPECT_EQ(school.dump(), before);
        EXPECT_EQ(Program_Workspace().transaction_depth(), 0);

        // Changing another invoice to that reason is refused the same way.
        const int other = school.add_invoice(family, QStringLiteral("Shoes"), c.term_id, c.day);
        const QString with_other = school.dump();
        EXPECT_EQ(DB_Update_Manual_Invoice(other, header(QStringLiteral("Extra lessons"), c.term_id, c.day)).outcome,
                  SaveOutcome::Duplicate);
        EXPECT_EQ(school.dump(), with_other);
        school.exec(QStringLiteral("DELETE FROM Invoices WHERE Invoice_id IN (%1, %2)").arg(first).arg(other));
    }
}

TEST_F(InvoiceEntryStore, ADiscountLineIsStoredToTheLastDecimalAndWrittenAgain)
{
    const int invoice = school.add_invoice(family, QStringLiteral("Spring fees"), term);
    LineValues line;
    ASSERT_FALSE(Check_Line_Entry({QStringLiteral("-12.3456"), QString::number(invoice), amy, std::nullopt,
                                   std::nullopt, QStringLiteral("Sibling discount")},
                                  line)
                     .refused());
    const LineSave added = DB_Save_Invoice_Line(0, line);
    EXPECT_TRUE(added.stored);
    EXPECT_EQ(added.status, QStringLiteral("Line added successfully"));
    const int line_id = school.scalar(QStringLiteral("SELECT max(Invoice_Line_id) FROM Invoice_Lines")).toInt();

    LineRecord stored;
    bool found = false;
    ASSERT_TRUE(DB_Read_Invoice_Line(line_id, stored, found));
    ASSERT_TRUE(found);
    EXPECT_EQ(stored.amount, money("-12.3456"));
    EXPECT_EQ(stored.pupil_id, amy);
    EXPECT_EQ(stored.course_id, std::nullopt);
    EXPECT_EQ(stored.activity_id, std::nullopt);
    EXPECT_EQ(stored.type, kind::Pupil_Only);
    EXPECT_EQ(stored.description, QStringLiteral("Sibling discount"));

    line.amount = money("40");
    line.pupil_id = std::nullopt;
    line.type = kind::No_Pupil;
    const LineSave written = DB_Save_Invoice_Line(line_id, line);
    EXPECT_TRUE(written.stored);
    EXPECT_EQ(written.status, QStringLiteral("Line updated successfully"));
    ASSERT_TRUE(DB_Read_Invoice_Line(line_id, stored, found));
    EXPECT_EQ(stored.amount, money("40"));
    EXPECT_EQ(stored.pupil_id, std::nullopt);

    const LineSave missing = DB_Save_Invoice_Line(line_id + 100, line);
    EXPECT_FALSE(missing.stored);
    EXPECT_EQ(missing.status, QStringLiteral("COULD NOT UPDATE LINE"));
    EXPECT_EQ(school.count(QStringLiteral("Invoice_Lines")), 1);
}

// ---- The lists ----

QStringList texts(const ListEntries& entries)
{
    QStringList list;
    for (const ListEntry& entry : entries)
        list << entry.text;
    return list;
}

TEST_F(InvoiceEntryStore, ListsBeginWithBlankOrHoldNoneAlone)
{
    ListEntries entries;
    ASSERT_TRUE(Invoice_Activity_Date_Entries(entries));
    EXPECT_EQ(texts(entries), QStringList{QStringLiteral("(None)")});

    school.add_term(QStringLiteral("Summer 2026"), QDate(2026, 4, 20), QDate(2026, 7, 18));
    ASSERT_TRUE(Invoice_Term_Entries(entries));
    EXPECT_EQ(texts(entries), (QStringList{QStringLiteral("(Blank)"), QStringLiteral("Summer 2026"), QStringLiteral("Spring 2026")}));
    EXPECT_EQ(entries[0].item_data, 0);
    EXPECT_EQ(entries[2].item_data, term);

    school.title_date(show_day, QStringLiteral("Summer Show"));
    ASSERT_TRUE(Invoice_Activity_Date_Entries(entries));
    EXPECT_EQ(texts(entries), (QStringList{QStringLiteral("(Blank)"), QStringLiteral("20 Jun 2026 Summer Show")}));

    const int ben = school.add_pupil(family, QStringLiteral("Ben"));
    ASSERT_TRUE(Family_Pupil_Entries(family, entries));
    ASSERT_EQ(entries.size(), 3u);
    EXPECT_EQ(entries[0].text, QStringLiteral("(Blank)"));
    EXPECT_EQ(entries[2].text, QStringLiteral("Ben"));
    EXPECT_EQ(entries[2].item_data, ben);
    ASSERT_TRUE(Family_Pupil_Entries(family + 100, entries));
    EXPECT_EQ(texts(entries), QStringList{QStringLiteral("(None)")});
}

TEST_F(InvoiceEntryStore, APupilsCoursesAndActivitiesOnTheInvoicesDate)
{
    const int ballet = school.add_course(NewCourse(QStringLiteral("Ballet Grade 1")));
    school.put_on_course(amy, ballet);
    const int exam = school.add_activity(NewActivity(QStringLiteral("Grade 1 Exam")));
    const int show = school.add_activity(NewActivity(QStringLiteral("Summer Show")).of_kind(code::exam_type::Show));
    school.title_date(show_day, QStringLiteral("Summer Show"));
    school.enter(amy, show, show_day);
    school.enter(amy, exam, QDate(2026, 3, 14));

    struct Case {
        const char* story;
        PupilFor pupil_for;
        QStringList courses;
        QStringList activities;
    };
    const QString on_show_day = QStringLiteral("Summer Show on ") + vb::CStr(engine::make_datetime(show_day));
    const Case cases[] = {
        {"an invoice not yet stored", PupilFor::No_Invoice, {"(None)"}, {"(None)"}},
        {"no pupil chosen", PupilFor::No_Pupil, {}, {}},
        {"the family's (Blank) pupil", PupilFor::Blank, {"(Not Applicable)"}, {"(Not Applicable)"}},
        {"Amy", PupilFor::Pupil, {"(Blank)", "Ballet Grade 1"}, {"(Blank)", on_show_day}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.story);
        ListEntries entries;
        ASSERT_TRUE(Pupil_Course_Entries(c.pupil_for, amy, entries));
        EXPECT_EQ(texts(entries), c.courses);
        ASSERT_TRUE(Pupil_Activity_Entries(c.pupil_for, amy, show_day, entries));
        EXPECT_EQ(texts(entries), c.activities);
        if (c.pupil_for == PupilFor::Pupil) {
            EXPECT_EQ(entries[1].item_data, show);
        }
    }
    // A term invoice has no activity date, and so no activities.
    ListEntries entries;
    ASSERT_TRUE(Pupil_Activity_Entries(PupilFor::Pupil, amy, std::nullopt, entries));
    EXPECT_EQ(texts(entries), QStringList{QStringLiteral("(None)")});
}

}  // namespace
