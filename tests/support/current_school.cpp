#include "support/current_school.h"

#include "database/code_values.h"
#include "database/db_handling.h"
#include "engine/err.h"
#include "engine/workspace.h"
#include "support/template_database.h"

#include <gtest/gtest.h>

namespace testing_support {

CurrentSchool::CurrentSchool() : path_(copy_of_new_database(file(QStringLiteral("school.qdb")), true))
{
    EXPECT_TRUE(DB_Open(path_)) << engine::Err().Description.toStdString();
}

CurrentSchool::~CurrentSchool()
{
    DB_Close_All();
    Program_Workspace().Close();
}

engine::Database& CurrentSchool::db()
{
    EXPECT_NE(Current_Db(), nullptr) << "no current database";
    return *Current_Db();
}

int CurrentSchool::add_teacher(const QString& nickname, const QString& first_name, const QString& surname)
{
    return insert(QStringLiteral("Teachers"), {{"Teacher_NickName", nickname},
                                               {"Teacher_Name", first_name.isEmpty() ? QVariant() : first_name},
                                               {"Teacher_SurName", surname.isEmpty() ? QVariant() : surname}});
}

int CurrentSchool::add_course(const QString& title, int teacher)
{
    const int id = add_course(NewCourse(title).on(code::weekday::Monday));
    exec(QStringLiteral("UPDATE Courses SET Course_Teacher_id = %1 WHERE Course_id = %2").arg(teacher).arg(id));
    return id;
}

int CurrentSchool::add_activity(const QString& title, int teacher)
{
    return insert(QStringLiteral("Exams"),
                  {{"Exam_Title", title}, {"Exam_Type", code::exam_type::Exam}, {"Exam_Teacher", teacher}});
}

int CurrentSchool::add_invoice_line(int invoice, int pupil, double amount)
{
    return add_line(invoice, {{"Inv_Line_Pupil_id", pupil}, {"Amount", amount},
                              {"Inv_Line_Type", code::inv_line_type::Activity}});
}

}  // namespace testing_support
