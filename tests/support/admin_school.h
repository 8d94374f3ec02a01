#pragma once
// A small school in a database of its own, made the program's current
// database in a temporary folder with its own settings and log: what the
// guarded deletions, the copy and the merge work on. Rows are written
// directly, so that a test reads as the school's story; dump() captures every
// table, so that a test can show that a refused run left nothing behind.

#include <QDate>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QVariant>
#include <QVariantMap>

namespace engine {
class Database;
}

namespace testing_support {

class AdminSchool {
public:
    AdminSchool();
    ~AdminSchool();
    AdminSchool(const AdminSchool&) = delete;
    AdminSchool& operator=(const AdminSchool&) = delete;

    // The current database; the test fails if none is open.
    engine::Database& db();
    QString path() const { return path_; }
    QString file(const QString& name) const { return dir_.filePath(name); }
    QString log_text() const;
    // A new, empty database file in the test's folder (without the
    // Standard_Values row when blank_row is false), not opened.
    QString new_database(const QString& name, bool blank_row) const;

    int add_family(const QString& name, const QString& address = QStringLiteral("1 High Street"));
    int add_pupil(int family, const QString& first_name);
    int add_teacher(const QString& nickname);
    int add_course(const QString& title, int weekday = 2);
    void put_on_course(int pupil, int course);
    int add_term(const QString& name, QDate start, QDate end);
    void set_lessons(int term, int weekday, int lessons);
    void add_holiday(QDate day);
    int add_activity(const QString& title, int exam_type, int level = 1);
    void enter(int pupil, int activity, QDate day);
    void title_date(QDate day, const QString& title);
    int add_invoice(int family, const QString& reason, const QVariant& term = QVariant());
    int add_line(int invoice, const QVariantMap& values);
    int add_receipt(int invoice, double amount);

    // SQLite text on the current database; fails the test on error.
    int insert(const QString& table, const QVariantMap& values);
    void exec(const QString& sql);
    QVariant scalar(const QString& sql);
    int count(const QString& table);
    QString dump();

    // The first column of each row of SQLite text, in a database file that
    // isn't (or is no longer) the current one.
    static QStringList values_in(const QString& path, const QString& sql);
    // Every table of a file, every row, in a stable order.
    static QString dump_of(const QString& path);

private:
    QTemporaryDir dir_;
    QString path_;
};

}  // namespace testing_support
