#pragma once
// How wide a text prints, for breaking a growing field into lines. The
// programs that draw install a measure that asks the font itself; without
// one (the core's own tests) a generous estimate serves, so that a line
// never comes out wider than its box.

#include <QString>
#include <QStringList>
#include <functional>

namespace reportengine {

struct TextFont {
    QString family;
    double size = 9;  // points
    bool bold = false;
    bool italic = false;
};

// The width of a text in millimetres.
using TextMeasure = std::function<double(const QString& text, const TextFont& font)>;

void install_text_measure(TextMeasure measure);
double text_width_mm(const QString& text, const TextFont& font);

// The text broken into lines no wider than `width` mm: at its own line ends,
// between words, and inside a word only when the word alone is too wide.
// An empty text is no line at all.
QStringList wrapped_lines(const QString& text, double width, const TextFont& font);

}  // namespace reportengine
