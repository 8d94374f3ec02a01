#pragma once
// A new school database that is the program's current database for the life
// of a test, as screens expect to find it, with its own settings store and
// log in a temporary folder. Rows are added as the school's story needs them.
// Unlike the invoicing fixtures it lets a test end with a transaction still
// open, since some guards leave one so on purpose.

#include "support/school_rows.h"
#include "support/test_folder.h"

#include <QString>

namespace testing_support {

class CurrentSchool : public TestFolder, public SchoolRows {
public:
    CurrentSchool();
    ~CurrentSchool() override;

    engine::Database& db() override;
    QString path() const { return path_; }

    using SchoolRows::add_activity;
    using SchoolRows::add_course;
    using SchoolRows::add_invoice;
    int add_teacher(const QString& nickname, const QString& first_name = QString(), const QString& surname = QString());
    int add_course(const QString& title, int teacher);
    int add_activity(const QString& title, int teacher);
    int add_invoice(int family) { return add_invoice(family, QStringLiteral("Spring fees")); }
    int add_invoice_line(int invoice, int pupil, double amount = 10.0);

private:
    QString path_;
};

}  // namespace testing_support
