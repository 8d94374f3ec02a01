#include "activities/activity_fields.h"

#include "database/code_values.h"
#include "engine/currency.h"
#include "engine/err.h"
#include "engine/vb_values.h"

#include <cstdint>

namespace {

// A whole number that fits the 16-bit column: `not_number` or `not_integer`
// when it doesn't.
QString whole_number_refusal(const QString& text, const QString& not_number, const QString& not_integer)
{
    if (!vb::IsNumeric(text))
        return not_number;
    int16_t value = 0;
    const bool fits = vb::CInt(text, value);
    engine::Err().Clear();
    return fits ? QString() : not_integer;
}

bool style_may_be_blank(const QString& type_code)
{
    return type_code == QString::number(code::exam_type::Show) || type_code == QString::number(code::exam_type::Outing);
}

}  // namespace

ActivityRefusal Check_Activity_Fields(ActivityFields& fields)
{
    engine::Currency price;
    const bool priced = vb::IsNumeric(fields.price) && vb::CCur(fields.price, price);
    engine::Err().Clear();
    if (!priced)
        return {ActivityField::Price, QStringLiteral("The price must be a decimal number")};

    if (!fields.level.trimmed().isEmpty()) {
        const QString refusal = whole_number_refusal(fields.level, QStringLiteral("The level must be a number"),
                                                     QStringLiteral("The level must be an integer"));
        if (!refusal.isEmpty())
            return {ActivityField::Level, refusal};
    }

    if (fields.duration.trimmed().isEmpty())
        fields.duration = QStringLiteral("0");
    const QString refusal = whole_number_refusal(fields.duration, QStringLiteral("The duration must be a number"),
                                                 QStringLiteral("The duration must be an integer"));
    if (!refusal.isEmpty())
        return {ActivityField::Duration, refusal};

    if (fields.type_row < 0 || fields.type_code.isEmpty() || fields.type_code == QStringLiteral("0"))
        return {ActivityField::Type, QStringLiteral("There must be a type")};

    if (!fields.style_listed && fields.style.trimmed().isEmpty()) {
        // A show or an outing may be for no style in particular: one blank
        // stands for that.
        if (!style_may_be_blank(fields.type_code))
            return {ActivityField::Style, QStringLiteral("There must be a dance style")};
        fields.style = QStringLiteral(" ");
    }
    return {};
}
