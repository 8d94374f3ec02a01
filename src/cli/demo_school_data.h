#pragma once
// The people, courses and activities of the demo school, as plain data.

#include <QDate>
#include <QString>
#include <vector>

namespace demo {

struct DemoTeacher {
    const char* first;
    const char* surname;
    const char* nickname;
    int exam_number;
    const char* description;
};

struct DemoCourse {
    const char* title;
    int weekday;         // 1 Sunday .. 7 Saturday
    const char* start;   // "16:00"
    int minutes;
    double price;        // 0: charged at the school's hourly rate
    const char* type;    // a number here is a fixed fee for the term
    const char* location;
    int teacher;         // index into the teachers
    int min_age;
    int max_age;
    bool suppressed;
};

struct DemoTerm {
    const char* name;
    QDate start;
    QDate end;
};

const std::vector<DemoTeacher>& demo_teachers();
const std::vector<DemoCourse>& demo_courses();
const std::vector<DemoTerm>& demo_terms();
const std::vector<QDate>& demo_holidays();
const std::vector<const char*>& demo_surnames();
const std::vector<const char*>& demo_girls_names();
const std::vector<const char*>& demo_boys_names();
const std::vector<const char*>& demo_streets();

}  // namespace demo
