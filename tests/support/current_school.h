#pragma once
// A new school database that is the program's current database for the life
// of a test, as screens expect to find it, with its own settings store and
// log in a temporary folder. Rows are added as the school's story needs them.

#include <QString>
#include <QTemporaryDir>
#include <QVariant>
#include <QVariantMap>

namespace testing_support {

class CurrentSchool {
public:
    CurrentSchool();
    ~CurrentSchool();
    CurrentSchool(const CurrentSchool&) = delete;
    CurrentSchool& operator=(const CurrentSchool&) = delete;

    QString folder() const { return dir_.path(); }
    QString path() const { return path_; }
    QString file(const QString& name) const { return dir_.filePath(name); }
    QString log_text() const;

    int add_teacher(const QString& nickname, const QString& first_name = QString(), const QString& surname = QString());
    int add_family(const QString& name, const QString& address = QStringLiteral("1 High Street"));
    int add_pupil(int family, const QString& first_name);
    int add_course(const QString& title, int teacher);
    int add_activity(const QString& title, int teacher);
    int add_invoice(int family, const QString& reason = QStringLiteral("Spring fees"));
    int add_invoice_line(int invoice, int pupil, double amount = 10.0);

    // A row written directly; the values become SQL literals.
    int insert(const QString& table, const QVariantMap& values);
    int count(const QString& table) const;
    QVariant scalar(const QString& sql) const;

private:
    QTemporaryDir dir_;
    QString path_;
};

}  // namespace testing_support
