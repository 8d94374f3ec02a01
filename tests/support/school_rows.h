#pragma once
// A school's rows written straight into its database, so that a test reads as
// the school's story (families and pupils, courses and terms, activities and
// entries, what a run picked, invoices, lines and receipts), and what the test
// reads back. The fixture that holds the database says which database it is.

#include "database/code_values.h"
#include "support/new_course_and_activity.h"
#include "support/query_rows.h"

#include <QDate>
#include <QString>
#include <QVariant>
#include <QVariantMap>
#include <optional>

namespace engine {
class Database;
}

namespace testing_support {

class SchoolRows {
public:
    virtual ~SchoolRows() = default;

    // The school's database.
    virtual engine::Database& db() = 0;

    // People.
    int add_family(const QString& name, const QString& address = QStringLiteral("1 High Street"));
    int add_pupil(int family, const QString& first_name, char gender = code::gender::Female);
    int add_teacher(const QString& nickname);
    // Courses, terms, lessons and holidays.
    int add_course(const NewCourse& course);
    void put_on_course(int pupil, int course);
    int add_term(const QString& name, QDate start, QDate end);
    void set_lessons(int term, int weekday, int lessons);
    void add_holiday(QDate day);
    void set_standard(const QString& column, const QVariant& value);
    // Activities.
    int add_activity(const NewActivity& activity);
    void title_date(QDate day, const QString& title);
    void enter(int pupil, int activity, QDate day);
    // What a run picked.
    void pick_term(int term);
    void pick_course(int course);
    void pick_pupil(int pupil);
    void pick_activity(int activity, QDate day);
    // Money. A line is for no pupil unless its columns say otherwise.
    int add_invoice(int family, const QString& reason, std::optional<int> term = std::nullopt,
                    std::optional<QDate> activity_date = std::nullopt);
    int add_line(int invoice, double amount);
    int add_line(int invoice, const QVariantMap& columns);
    int add_receipt(int invoice, double amount);

    // A row of the test's own making; the values become SQLite literals.
    int insert(const QString& table, const QVariantMap& values);
    // SQLite text, run as it stands; fails the test on error.
    void exec(const QString& sql);
    // Runs a stored action query; false leaves the engine's error in engine::Err().
    bool run(const QString& query, const Params& params = {});

    // The rows of a stored query or of SELECT text; empty on failure.
    Rows rows(const QString& query_or_sql, const Params& params = {});
    // The first column of the first row of SELECT text; null when there is no row.
    QVariant scalar(const QString& sql);
    int count(const QString& table);
    // Every table, every row, in a stable order.
    QString dump();

protected:
    SchoolRows() = default;
    SchoolRows(const SchoolRows&) = delete;
    SchoolRows& operator=(const SchoolRows&) = delete;
};

}  // namespace testing_support
