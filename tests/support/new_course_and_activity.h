#pragma once
// A course and an activity described as the school would, for a test to add:
// NewCourse("Ballet").on(Monday).priced(10), NewActivity("Summer Show").of_kind(Show).

#include "database/code_values.h"

#include <QString>
#include <optional>
#include <utility>

namespace testing_support {

// A weekly course: 45 minutes on Mondays, at the hourly rate, without a
// teacher, unless told otherwise.
struct NewCourse {
    explicit NewCourse(QString course_title) : title(std::move(course_title)) {}
    NewCourse& on(int weekday) { day = weekday; return *this; }
    NewCourse& priced(double per_lesson) { lesson_price = per_lesson; return *this; }
    NewCourse& lasting(int minutes) { duration = minutes; return *this; }
    NewCourse& of_type(const QString& text) { type = text; return *this; }
    NewCourse& suppressed_from_invoicing() { suppressed = true; return *this; }
    NewCourse& no_longer_running() { cancelled = true; return *this; }
    NewCourse& taught_by(int teacher_id) { teacher = teacher_id; return *this; }

    QString title;
    int day = code::weekday::Monday;
    std::optional<double> lesson_price;
    int duration = 45;
    QString type;
    bool suppressed = false;
    bool cancelled = false;
    std::optional<int> teacher;
};

// An activity of the catalogue: a level 1 ballet exam of 15 minutes an
// entrant, without price, expenses or teacher, unless told otherwise.
struct NewActivity {
    explicit NewActivity(QString activity_title) : title(std::move(activity_title)) {}
    NewActivity& of_kind(int exam_type) { type = exam_type; return *this; }
    NewActivity& priced(double per_entrant) { price = per_entrant; return *this; }
    NewActivity& with_expenses(double per_entrant) { expenses = per_entrant; return *this; }
    NewActivity& at_level(int exam_level) { level = exam_level; return *this; }
    NewActivity& taught_by(int teacher_id) { teacher = teacher_id; return *this; }

    QString title;
    int type = code::exam_type::Exam;
    std::optional<double> price;
    std::optional<double> expenses;
    int level = 1;
    std::optional<int> teacher;
};

}  // namespace testing_support
