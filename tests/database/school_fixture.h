#pragma once
// A tiny school in a new database in a temporary folder, so that tests read
// as the school's story: families and pupils, courses and terms, activities
// and entries, what a run picked, invoices, lines and receipts.

#include "database/code_values.h"
#include "engine/database.h"

#include <QDate>
#include <QString>
#include <QTemporaryDir>
#include <QVariant>
#include <QVariantMap>
#include <optional>
#include <utility>
#include <vector>

namespace testing_support {

using Params = std::vector<std::pair<QString, QVariant>>;

// One row read back; its columns are named in any letter case, as the engine
// names them. Asking for a column the row hasn't got fails the test.
class Row {
public:
    void insert(const QString& column, const QVariant& value);
    QVariant operator[](const QString& column) const;

private:
    QVariantMap by_lower_case_;
};
using Rows = std::vector<Row>;

// A weekly course, described as the school would: NewCourse("Ballet").on(Monday).priced(10).
struct NewCourse {
    explicit NewCourse(QString course_title) : title(std::move(course_title)) {}
    NewCourse& on(int weekday) { day = weekday; return *this; }
    NewCourse& priced(double per_lesson) { lesson_price = per_lesson; return *this; }
    NewCourse& lasting(int minutes) { duration = minutes; return *this; }
    NewCourse& of_type(const QString& text) { type = text; return *this; }
    NewCourse& suppressed_from_invoicing() { suppressed = true; return *this; }
    NewCourse& no_longer_running() { cancelled = true; return *this; }

    QString title;
    int day = code::weekday::Monday;
    std::optional<double> lesson_price;
    int duration = 45;
    QString type;
    bool suppressed = false;
    bool cancelled = false;
};

// An activity of the catalogue: NewActivity("Summer Show").of_kind(Show).
struct NewActivity {
    explicit NewActivity(QString activity_title) : title(std::move(activity_title)) {}
    NewActivity& of_kind(int exam_type) { type = exam_type; return *this; }
    NewActivity& priced(double per_entrant) { price = per_entrant; return *this; }
    NewActivity& with_expenses(double per_entrant) { expenses = per_entrant; return *this; }
    NewActivity& at_level(int exam_level) { level = exam_level; return *this; }

    QString title;
    int type = code::exam_type::Exam;
    std::optional<double> price;
    std::optional<double> expenses;
    int level = 1;
};

// The folder, the settings store and the log of one test.
class TestFolder {
public:
    TestFolder();
    ~TestFolder();
    QString file(const QString& name) const { return dir_.filePath(name); }
    QString log_text() const;

private:
    QTemporaryDir dir_;
};

class SchoolFixture : public TestFolder {
public:
    // A new database, with its Standard_Values row, open for the test.
    SchoolFixture();
    ~SchoolFixture();

    engine::Database& db() { return *db_; }
    QString path() const { return path_; }

    // People.
    int add_family(const QString& name, const QString& address = QStringLiteral("1 High Street"));
    int add_pupil(int family, const QString& first_name, char gender = code::gender::Female);
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
    // Money.
    int add_invoice(int family, const QString& reason, std::optional<int> term = std::nullopt,
                    std::optional<QDate> activity_date = std::nullopt);
    int add_line(int invoice, double amount, std::optional<int> pupil = std::nullopt);
    void add_receipt(int invoice, double amount);

    // Runs an action query; false leaves the engine's error in engine::Err().
    bool run(const QString& query, const Params& params = {});
    // The rows of a stored query or of SELECT text; empty on failure.
    Rows rows(const QString& query_or_sql, const Params& params = {});
    int count(const QString& table);
    // A row of the engine's own making, as SQLite text.
    int insert(const QString& table, const QVariantMap& values);

private:
    QString path_;
    engine::Database* db_ = nullptr;
};

// The date as the database stores a date.
QString stored(QDate day);

// An amount read back, whether a money field or a sum.
double money(const QVariant& value);

}  // namespace testing_support
