#include "database/stored_queries.h"
#include "database/db_handling.h"
#include "engine/currency.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/recordset.h"
#include "engine/workspace.h"
#include "support/school_fixture.h"
#include "support/scripted_boxes.h"

#include <QRegularExpression>
#include <QSet>

#include <gtest/gtest.h>

namespace {

using testing_support::ScriptedBoxes;
using testing_support::SchoolFixture;

// The queries made to be run and to fail: each names a column that isn't there.
const QSet<QString> failing_by_design = {"Qry_Update_Invoice_Line_Null_Activity", "Qry_Setup_Alternate_Costs_Insert"};

QStringList all_query_names()
{
    QStringList names;
    for (const auto* texts : {&invoicing_query_texts(), &people_query_texts()})
        for (const StoredQueryText& query : *texts)
            if (!names.contains(query.name))
                names << query.name;
    names.sort(Qt::CaseInsensitive);
    return names;
}

// A value of the parameter's type that names no row, so that nothing is refused.
QVariant harmless_value(engine::FieldType type)
{
    switch (type) {
    case engine::FieldType::Date: return QDate(2026, 1, 5);
    case engine::FieldType::Text: return QStringLiteral("x");
    case engine::FieldType::Currency: return QVariant::fromValue(engine::Currency::from_whole(1));
    default: return QVariant();
    }
}

bool run_with_harmless_values(engine::Database& db, const QString& name)
{
    auto query = db.QueryDefs(name);
    if (!query)
        return false;
    for (const engine::QueryParameter& parameter : query->Parameters())
        if (!query->set_parameter(parameter.Name, harmless_value(parameter.Type)))
            return false;
    if (query->SQL().contains(QRegularExpression("(^|;)\\s*SELECT\\b", QRegularExpression::CaseInsensitiveOption)))
        return query->OpenRecordset() != nullptr;
    return query->Execute();
}

TEST(QueryCreation, ANewDatabaseHoldsEveryQueryOnceThePeoplesPupilCoursesAndMakingThemAgainChangesNothing)
{
    SchoolFixture school;
    EXPECT_EQ(school.db().QueryDef_names(), all_query_names());
    const QString before = school.db().QueryDefs("Qry_Setup_Invoice_Courses")->SQL();
    ScriptedBoxes boxes;
    EXPECT_TRUE(DB_Create_Queries(school.db()));
    EXPECT_EQ(school.db().QueryDef_names(), all_query_names());
    EXPECT_EQ(school.db().QueryDefs("Qry_Setup_Invoice_Courses")->SQL(), before);
    EXPECT_FALSE(school.log_text().contains("querydef creation"));

    // Of the two pupil courses queries, the people one is kept.
    auto rows = school.db().QueryDefs("Qry_Select_Pupil_Courses");
    ASSERT_TRUE(rows->set_parameter("par_Pupil_id", 1));
    auto courses = rows->OpenRecordset();
    ASSERT_NE(courses, nullptr);
    EXPECT_EQ(courses->field_names(), QStringList({"Pupil_id", "Course_id", "Course_Title", "Location", "Day_of_Week"}));
}

TEST(QueryCreation, AQueryThatCantBeMadeIsReportedAndTheOthersAreStillMade)
{
    SchoolFixture school;
    ScriptedBoxes boxes;
    boxes.expect("Error during querydef creation querydef Qry_Broken");
    const std::vector<StoredQueryText> texts = {
        {"Qry_First", "SELECT 1 AS One;"}, {"Qry_Broken", "PARAMETERS nothing_typed; SELECT 2;"},
        {"Qry_Last", "SELECT 3 AS Three;"},
    };
    EXPECT_FALSE(create_stored_queries(school.db(), texts, "Error during querydef creation "));
    const QStringList names = school.db().QueryDef_names();
    EXPECT_TRUE(names.contains("Qry_First"));
    EXPECT_FALSE(names.contains("Qry_Broken"));
    EXPECT_TRUE(names.contains("Qry_Last"));
    EXPECT_TRUE(school.log_text().contains("gen_dbde   : "));
}

// Catches slips in the hand translation: every text must prepare and run.
TEST(QueryCreation, EveryQueryRunsOnAnEmptyDatabaseButTheTwoMadeToFail)
{
    SchoolFixture school;
    for (const QString& name : all_query_names()) {
        ASSERT_TRUE(Program_Workspace().BeginTrans());
        const bool ran = run_with_harmless_values(school.db(), name);
        const int error = engine::Err().Number;
        const QString description = engine::Err().Description;
        ASSERT_TRUE(Program_Workspace().Rollback());
        if (failing_by_design.contains(name)) {
            EXPECT_FALSE(ran) << name.toStdString();
            EXPECT_EQ(error, engine::jet::TooFewParameters) << name.toStdString();
        } else {
            EXPECT_TRUE(ran) << name.toStdString() << ": " << description.toStdString();
        }
    }
}

}  // namespace
