#include "support/current_school.h"

#include "database/code_values.h"

namespace testing_support {

int CurrentSchool::add_teacher(const QString& nickname, const QString& first_name, const QString& surname)
{
    return insert(QStringLiteral("Teachers"), {{"Teacher_NickName", nickname},
                                               {"Teacher_Name", first_name.isEmpty() ? QVariant() : first_name},
                                               {"Teacher_SurName", surname.isEmpty() ? QVariant() : surname}});
}

int CurrentSchool::add_course(const QString& title, int teacher)
{
    return add_course(NewCourse(title).taught_by(teacher));
}

int CurrentSchool::add_activity(const QString& title, int teacher)
{
    return insert(QStringLiteral("Exams"),
                  {{"Exam_Title", title}, {"Exam_Type", code::exam_type::Exam}, {"Exam_Teacher", teacher}});
}

}  // namespace testing_support
