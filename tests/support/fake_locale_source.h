#pragma once
// Regional settings of the test's choosing. Every value starts as the
// program's defaults (date separator " ", both date orders day first, time
// separator ":"); a test changes some, or makes one fail with an error code.

#include "engine/locale_source.h"

#include <QHash>
#include <QLocale>
#include <QString>

namespace testing_support {

class FakeLocaleSource : public engine::LocaleSource {
public:
    explicit FakeLocaleSource(QLocale locale = QLocale::c());

    FakeLocaleSource& set(int lctype, const QString& value);
    FakeLocaleSource& fail(int lctype, int error);
    // The date separator and both date orders (0 month, 1 day, 2 year first).
    FakeLocaleSource& dates(const QString& separator, int order);

    bool get_info(int lctype, QString& value, int& error) const override;
    QLocale locale() const override { return locale_; }

private:
    QLocale locale_;
    QHash<int, QString> values_;
    QHash<int, int> errors_;
};

// Installs a locale source for the life of the scope, then puts the system one back.
class LocaleScope {
public:
    explicit LocaleScope(const engine::LocaleSource& source) { engine::set_locale_source(&source); }
    ~LocaleScope() { engine::set_locale_source(nullptr); }
    LocaleScope(const LocaleScope&) = delete;
    LocaleScope& operator=(const LocaleScope&) = delete;
};

}  // namespace testing_support
