#include "support/fake_locale_source.h"

namespace testing_support {

FakeLocaleSource::FakeLocaleSource(QLocale locale) : locale_(std::move(locale))
{
    values_ = {{engine::lctype::SDATE, QStringLiteral(" ")},
               {engine::lctype::IDATE, QStringLiteral("1")},
               {engine::lctype::ILDATE, QStringLiteral("1")},
               {engine::lctype::STIME, QStringLiteral(":")}};
}

FakeLocaleSource& FakeLocaleSource::set(int lctype, const QString& value)
{
    values_[lctype] = value;
    errors_.remove(lctype);
    return *this;
}

FakeLocaleSource& FakeLocaleSource::fail(int lctype, int error)
{
    errors_[lctype] = error;
    return *this;
}

FakeLocaleSource& FakeLocaleSource::dates(const QString& separator, int order)
{
    set(engine::lctype::SDATE, separator);
    set(engine::lctype::IDATE, QString::number(order));
    return set(engine::lctype::ILDATE, QString::number(order));
}

bool FakeLocaleSource::get_info(int lctype, QString& value, int& error) const
{
    error = 0;
    if (errors_.contains(lctype)) {
        error = errors_.value(lctype);
        return false;
    }
    if (!values_.contains(lctype)) {
        error = 1004;
        return false;
    }
    value = values_.value(lctype);
    return true;
}

}  // namespace testing_support
