#include "reportoutput/font_measure.h"

#include <QFont>
#include <QFontMetricsF>
#include <QImage>

namespace reportoutput {

double measured_width_mm(const QString& text, const reportengine::TextFont& font)
{
    // Measured at the resolution the PDF writer draws at, so that hinting
    // at screen sizes doesn't make a line look shorter than it prints.
    constexpr double dots_per_inch = 300;
    static const QImage device = [] {
        QImage image(1, 1, QImage::Format_Mono);
        image.setDotsPerMeterX(qRound(dots_per_inch / 0.0254));
        image.setDotsPerMeterY(qRound(dots_per_inch / 0.0254));
        return image;
    }();
    QFont f(font.family);
    f.setPointSizeF(font.size);
    f.setBold(font.bold);
    f.setItalic(font.italic);
    return QFontMetricsF(f, &device).horizontalAdvance(text) / dots_per_inch * 25.4;
}

}  // namespace reportoutput
