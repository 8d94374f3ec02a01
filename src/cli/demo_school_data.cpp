#include "cli/demo_school_data.h"

namespace demo {

const std::vector<DemoTeacher>& demo_teachers()
{
    static const std::vector<DemoTeacher> teachers = {
        {"Eleanor", "Hart", "Miss Eleanor", 1201, "Principal; ballet and modern"},
        {"Rosa", "Delgado", "Miss Rosa", 1388, "Tap and jazz"},
        {"James", "Okafor", "Mr James", 1452, "Street dance and boys' ballet"},
        {"Hannah", "Price", "Miss Hannah", 1507, "Baby ballet and pre-school"},
        {"Megan", "Llewellyn", "Miss Megan", 1610, "Contemporary and lyrical"},
        {"Tom", "Ashby", "Mr Tom", 0, "Adult classes; not an examiner"},
    };
    return teachers;
}

const std::vector<DemoCourse>& demo_courses()
{
    // Two locations; lesson prices, hourly-rate courses (price 0) and one fixed fee.
    static const std::vector<DemoCourse> courses = {
        {"Ballet Grade 1 Mon", 2, "16:00", 45, 7.50, "", "Main Studio", 0, 6, 8, false},
        {"Ballet Grade 2 Mon", 2, "16:45", 45, 7.50, "", "Main Studio", 0, 7, 9, false},
        {"Ballet Grade 4 Mon", 2, "17:30", 60, 9.00, "", "Main Studio", 0, 10, 13, false},
        {"Tap Beginners Tue", 3, "16:15", 45, 7.00, "", "Church Hall", 1, 5, 9, false},
        {"Tap Intermediate Tue", 3, "17:00", 45, 7.00, "", "Church Hall", 1, 9, 14, false},
        {"Jazz Seniors Tue", 3, "18:00", 60, 0, "", "Church Hall", 1, 12, 18, false},
        {"Street Dance Wed", 4, "17:00", 60, 0, "", "Main Studio", 2, 8, 16, false},
        {"Boys Ballet Wed", 4, "18:00", 45, 7.50, "", "Main Studio", 2, 6, 14, false},
        {"Modern Grade 3 Thu", 5, "16:30", 45, 7.50, "", "Main Studio", 4, 9, 12, false},
        {"Contemporary Seniors Thu", 5, "17:30", 60, 9.00, "", "Main Studio", 4, 13, 18, false},
        {"Adult Tap Thu", 5, "19:30", 60, 0, "95", "Church Hall", 5, 18, 99, false},
        {"Baby Ballet Sat", 7, "09:00", 30, 5.50, "", "Main Studio", 3, 2, 4, false},
        {"Ballet Primary Sat", 7, "09:30", 45, 6.50, "", "Main Studio", 3, 4, 6, false},
        {"Summer Intensive", 7, "13:00", 120, 15.00, "", "Main Studio", 0, 10, 18, true},
    };
    return courses;
}

const std::vector<DemoTerm>& demo_terms()
{
    static const std::vector<DemoTerm> terms = {
        {"Autumn 2026", QDate(2026, 9, 7), QDate(2026, 12, 12)},
        {"Spring 2027", QDate(2027, 1, 11), QDate(2027, 4, 3)},
        {"Summer 2027", QDate(2027, 4, 19), QDate(2027, 7, 17)},
    };
    return terms;
}

const std::vector<QDate>& demo_holidays()
{
    static const std::vector<QDate> days = [] {
        std::vector<QDate> all;
        const auto week = [&all](QDate monday) {
            for (int d = 0; d < 6; ++d)
                all.push_back(monday.addDays(d));
        };
        week(QDate(2026, 10, 26));  // autumn half term, Monday to Saturday
        week(QDate(2027, 2, 15));   // spring half term
        week(QDate(2027, 5, 31));   // summer half term
        all.push_back(QDate(2027, 5, 3));  // the early May bank holiday
        return all;
    }();
    return days;
}

const std::vector<const char*>& demo_surnames()
{
    static const std::vector<const char*> names = {
        "Abbott", "Bennett", "Carter", "Dawson", "Ellis", "Fletcher", "Graham", "Hughes", "Iqbal", "Jenkins",
        "Kowalski", "Lambert", "Morgan", "Nash", "O'Neill", "Patel", "Quinn", "Roberts", "Singh", "Turner",
        "Underwood", "Vaughan", "Walsh", "Young", "Zielinski", "Ahmed", "Brooks", "Chen", "Doyle", "Evans",
        "Foster", "Gallagher", "Harris", "Ivanova", "Jones", "Khan", "Lloyd", "Murphy", "Nowak", "Owen",
    };
    return names;
}

const std::vector<const char*>& demo_girls_names()
{
    static const std::vector<const char*> names = {
        "Amelia", "Isla", "Olivia", "Ava", "Mia", "Freya", "Lily", "Grace", "Sophia", "Evie",
        "Ella", "Poppy", "Isabella", "Chloe", "Zara", "Maya", "Ruby", "Aisha", "Daisy", "Hana",
        "Niamh", "Sienna", "Layla", "Harper", "Imogen", "Matilda", "Rosie", "Esme", "Florence", "Willow",
    };
    return names;
}

const std::vector<const char*>& demo_boys_names()
{
    static const std::vector<const char*> names = {
        "Oliver", "Noah", "Leo", "Arthur", "Oscar", "Theo", "Finley", "Jacob", "Rory", "Ibrahim",
    };
    return names;
}

const std::vector<const char*>& demo_streets()
{
    static const std::vector<const char*> streets = {
        "Mill Lane", "Church Street", "Orchard Close", "Station Road", "Meadow Way", "The Crescent",
        "Park Avenue", "Willow Drive", "Bell Street", "Kings Road", "Elm Grove", "Castle View",
    };
    return streets;
}

}  // namespace demo
