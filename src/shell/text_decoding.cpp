#include "shell/text_decoding.h"

#include <QStringDecoder>
#include <array>

namespace {

// 0x80 to 0x9F, where Windows-1252 differs from Latin-1.
constexpr std::array<char16_t, 32> windows_1252_high = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

constexpr char utf8_bom[] = "\xEF\xBB\xBF";

}  // namespace

QString from_windows_1252(const QByteArray& bytes)
{
    QString text;
    text.reserve(bytes.size());
    for (const char byte : bytes) {
        const auto code = static_cast<unsigned char>(byte);
        if (code >= 0x80 && code <= 0x9F)
            text += QChar(windows_1252_high[code - 0x80]);
        else
            text += QChar(code);
    }
    return text;
}

DecodedText decode_text_bytes(const QByteArray& bytes)
{
    const QByteArray body = bytes.startsWith(utf8_bom) ? bytes.mid(3) : bytes;
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8.decode(body);
    if (!utf8.hasError())
        return {text, TextEncoding::Utf8};
    return {from_windows_1252(body), TextEncoding::Windows1252};
}
