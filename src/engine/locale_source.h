#pragma once
// Where the machine's regional settings come from. The program asks for four
// values by their Windows numbers; tests install sources of their own.

#include <QLocale>
#include <QString>

namespace engine {

namespace lctype {
inline constexpr int SDATE = 29;   // date separator
inline constexpr int STIME = 30;   // time separator
inline constexpr int IDATE = 33;   // short date order: 0 month first, 1 day first, 2 year first
inline constexpr int ILDATE = 34;  // long date order, same codes
}  // namespace lctype

class LocaleSource {
public:
    virtual ~LocaleSource() = default;
    // Fills value and returns true; on failure returns false and sets error to
    // a Windows error code (87 invalid parameter, 122 buffer too small, 1004 invalid flags).
    virtual bool get_info(int lctype, QString& value, int& error) const = 0;
    // The locale used for money and for reading typed dates.
    virtual QLocale locale() const = 0;
};

// Reads the four values from a QLocale.
class QtLocaleSource : public LocaleSource {
public:
    explicit QtLocaleSource(QLocale locale = QLocale::system()) : locale_(std::move(locale)) {}
    bool get_info(int lctype, QString& value, int& error) const override;
    QLocale locale() const override { return locale_; }

    // The date order code (0 MDY, 1 DMY, 2 YMD) and separator of a Qt date pattern.
    static int date_order_of(const QString& pattern);
    static QString separator_of(const QString& pattern, QChar field);

private:
    QLocale locale_;
};

// The source in use; QtLocaleSource(QLocale::system()) unless replaced.
const LocaleSource& locale_source();
// Installs a source (not owned; must outlive its use). nullptr restores the system one.
void set_locale_source(const LocaleSource* source);

}  // namespace engine
