#include "reports/standard_text_checks.h"

#include "engine/currency.h"
#include "engine/err.h"
#include "engine/vb_values.h"

namespace {

// A blank value becomes "0"; true when the value then reads as a number.
bool blank_is_zero(QString& value)
{
    if (value.trimmed().isEmpty())
        value = QStringLiteral("0");
    return vb::IsNumeric(value);
}

bool converts_to_money(const QString& value)
{
    engine::Currency money;
    const bool converts = vb::CCur(value, money);
    engine::Err().Clear();
    return converts;
}

bool is_money(QString& value)
{
    return blank_is_zero(value) && converts_to_money(value);
}

}  // namespace

StandardTextRefusal Check_Standard_Text(StandardTextEntry& entry)
{
    const QString rate_words = QStringLiteral("The rate must be a decimal number");
    if (!is_money(entry.exam_rate))
        return {StandardTextField::Exam_Rate, 0, rate_words};
    if (!is_money(entry.course_rate))
        return {StandardTextField::Course_Rate, 0, rate_words};
    if (!is_money(entry.show_cost))
        return {StandardTextField::Show_Cost, 0, QStringLiteral("The cost must be a decimal number")};
    // Two refusals, told apart by a capital: text that isn't a number, and a
    // number too large to be money.
    for (int i = 0; i < static_cast<int>(entry.vat_percent.size()); ++i) {
        if (!blank_is_zero(entry.vat_percent[i]))
            return {StandardTextField::VAT_Percent, i, QStringLiteral("The VAT percent must be a decimal number")};
        if (!converts_to_money(entry.vat_percent[i]))
            return {StandardTextField::VAT_Percent, i, QStringLiteral("The VAT Percent must be a decimal number")};
    }
    return {};
}
