#include "script/query_call.h"

#include "engine/currency.h"
#include "engine/vb_values.h"

namespace {

constexpr QChar blank = QLatin1Char(' ');
constexpr QChar quote = QLatin1Char('"');

qsizetype skip_blanks(const QString& text, qsizetype position)
{
    while (position < text.size() && text[position] == blank)
        ++position;
    return position;
}

}  // namespace

QueryCall parse_query_call(const QString& call)
{
    QueryCall parsed;
    const qsizetype name_end = call.indexOf(blank);
    parsed.name = name_end < 0 ? call : call.left(name_end);
    if (name_end < 0)
        return parsed;

    qsizetype position = skip_blanks(call, name_end);
    while (position < call.size()) {
        const qsizetype name_blank = call.indexOf(blank, position);
        if (name_blank < 0)
            break;
        const QString name = call.mid(position, name_blank - position);
        const qsizetype opening = call.indexOf(quote, name_blank + 1);
        if (opening < 0)
            break;
        const qsizetype closing = call.indexOf(quote, opening + 1);
        if (closing < 0)
            break;
        const QString value = call.mid(opening + 1, closing - opening - 1);
        position = skip_blanks(call, closing + 1);
        if (name.trimmed().isEmpty())
            continue;
        parsed.parameters.push_back({name.trimmed(), value});
    }
    return parsed;
}

bool parameter_value_from_text(const QString& text, engine::FieldType type, QVariant& value)
{
    using engine::FieldType;
    switch (type) {
    case FieldType::Boolean: {
        bool converted = false;
        if (!vb::CBool(text, converted))
            return false;
        value = converted;
        return true;
    }
    case FieldType::Byte: {
        uint8_t converted = 0;
        if (!vb::CByte(text, converted))
            return false;
        value = static_cast<int>(converted);
        return true;
    }
    case FieldType::Integer: {
        int16_t converted = 0;
        if (!vb::CInt(text, converted))
            return false;
        value = static_cast<int>(converted);
        return true;
    }
    case FieldType::Long: {
        int32_t converted = 0;
        if (!vb::CLng(text, converted))
            return false;
        value = static_cast<int>(converted);
        return true;
    }
    case FieldType::Currency: {
        engine::Currency converted;
        if (!vb::CCur(text, converted))
            return false;
        value = QVariant::fromValue(converted);
        return true;
    }
    case FieldType::Single: {
        float converted = 0;
        if (!vb::CSng(text, converted))
            return false;
        value = static_cast<double>(converted);
        return true;
    }
    case FieldType::Double: {
        double converted = 0;
        if (!vb::CDbl(text, converted))
            return false;
        value = converted;
        return true;
    }
    case FieldType::Date: {
        QDateTime converted;
        if (!vb::CDate(text, converted))
            return false;
        value = converted;
        return true;
    }
    case FieldType::Text:
    case FieldType::Memo:
    case FieldType::Unknown:
        value = text;
        return true;
    }
    value = text;
    return true;
}
