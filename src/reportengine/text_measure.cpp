#include "reportengine/text_measure.h"

#include <QRegularExpression>

namespace reportengine {

namespace {

TextMeasure& installed()
{
    static TextMeasure measure;
    return measure;
}

// Sans-serif letters average a little over half their size in width; a
// point is 0.3528 mm. Kept on the wide side: a line too short is harmless.
double estimated_width(const QString& text, const TextFont& font)
{
    const double per_character = font.size * 0.3528 * (font.bold ? 0.66 : 0.6);
    return text.size() * per_character;
}

// The longest start of `word` that fits, at least one character.
qsizetype fitting_prefix(const QString& word, double width, const TextFont& font)
{
    qsizetype n = word.size();
    while (n > 1 && text_width_mm(word.left(n), font) > width)
        --n;
    return n;
}

void wrap_paragraph(const QString& paragraph, double width, const TextFont& font, QStringList& lines)
{
    static const QRegularExpression blanks(QStringLiteral("\\s+"));
    QString line;
    for (QString word : paragraph.split(blanks, Qt::SkipEmptyParts)) {
        const QString tried = line.isEmpty() ? word : line + QLatin1Char(' ') + word;
        if (text_width_mm(tried, font) <= width) {
            line = tried;
            continue;
        }
        if (!line.isEmpty())
            lines << line;
        while (text_width_mm(word, font) > width) {
            const qsizetype n = fitting_prefix(word, width, font);
            lines << word.left(n);
            word = word.mid(n);
        }
        line = word;
    }
    lines << line;
}

}  // namespace

void install_text_measure(TextMeasure measure)
{
    installed() = std::move(measure);
}

double text_width_mm(const QString& text, const TextFont& font)
{
    return installed() ? installed()(text, font) : estimated_width(text, font);
}

QStringList wrapped_lines(const QString& text, double width, const TextFont& font)
{
    QStringList lines;
    QString normalised = text;
    normalised.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
    if (normalised.trimmed().isEmpty())
        return lines;
    for (const QString& paragraph : normalised.split(QLatin1Char('\n')))
        wrap_paragraph(paragraph, width, font, lines);
    while (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

}  // namespace reportengine
