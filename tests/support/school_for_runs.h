#pragma once
// A school database made the program's current database, in a folder of its
// own with its own settings and log: what the calendar, the script engine and
// invoicing runs work on. Helpers add the school's rows directly, so that a
// test reads as the school's story, and dump() captures every table so that
// a test can show that a failed run left nothing behind.

#include "database/code_values.h"

#include <QDate>
#include <QString>
#include <QTemporaryDir>
#include <QVariant>
#include <QVariantMap>
#include <optional>
#include <vector>

namespace engine {
class Database;
}

namespace testing_support {

struct RunCourse {
    QString title{};
    int day = code::weekday::Monday;
    std::optional<double> lesson_price{};
    int duration = 60;
    QString type{};
    bool suppressed = false;
    bool cancelled = false;
};

struct RunActivity {
    QString title{};
    int type = code::exam_type::Exam;
    std::optional<double> price{};
    std::optional<double> expenses{};
    int level = 1;
};

class SchoolForRuns {
public:
    SchoolForRuns();
    ~SchoolForRuns();
    SchoolForRuns(const SchoolForRuns&) = delete;
    SchoolForRuns& operator=(const SchoolForRuns&) = delete;

    engine::Database& db();
    QString file(const QString& name) const { return dir_.filePath(name); }
    QString log_text() const;
    // Writes a text file into the test's folder and gives its path.
    QString write_file(const QString& name, const QString& text) const;

    int add_family(const QString& name, const QString& address = QStringLiteral("1 High Street"));
    int add_pupil(int family, const QString& first_name);
    int add_course(const RunCourse& course);
    void put_on_course(int pupil, int course);
    int add_term(const QString& name, QDate start, QDate end);
    void set_lessons(int term, int weekday, int lessons);
    void add_holiday(QDate day);
    void set_standard(const QString& column, const QVariant& value);
    int add_activity(const RunActivity& activity);
    void title_date(QDate day, const QString& title);
    void enter(int pupil, int activity, QDate day);
    int add_invoice(int family, const QString& reason, std::optional<int> term = std::nullopt);
    int add_line(int invoice, double amount);
    void add_receipt(int invoice, double amount);

    // SQLite text, run as it stands; fails the test on error.
    void exec(const QString& sql);
    std::vector<QVariantMap> rows(const QString& sql);
    QVariant scalar(const QString& sql);
    int count(const QString& table);
    // Every table, every row, in a stable order.
    QString dump();

    int insert(const QString& table, const QVariantMap& values);

private:
    QTemporaryDir dir_;
};

}  // namespace testing_support
