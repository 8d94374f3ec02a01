#pragma once
// The school that screens find: a school made the program's current database
// (blank settings) that lets a test end with a transaction still open, since
// some guards leave one so on purpose, and a few rows as the screens' stories
// need them.

#include "support/school_made_current.h"

#include <QString>

namespace testing_support {

class CurrentSchool : public SchoolMadeCurrent {
public:
    CurrentSchool() : SchoolMadeCurrent(StartingSettings::Blank, OpenTransactionAtEnd::Allowed) {}

    using SchoolRows::add_activity;
    using SchoolRows::add_course;
    using SchoolRows::add_invoice;
    int add_teacher(const QString& nickname, const QString& first_name = QString(), const QString& surname = QString());
    int add_course(const QString& title, int teacher);
    int add_activity(const QString& title, int teacher);
    int add_invoice(int family) { return add_invoice(family, QStringLiteral("Spring fees")); }
};

}  // namespace testing_support
