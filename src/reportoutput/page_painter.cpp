#include "reportoutput/page_painter.h"

#include <QFile>
#include <QFontMetricsF>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>

#include <mutex>
#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace reportoutput {

using reportengine::PageItem;

namespace {

QRectF scaled(const QRectF& mm, double scale)
{
    return QRectF(mm.x() * scale, mm.y() * scale, mm.width() * scale, mm.height() * scale);
}

void paint_text(QPainter& painter, const PageItem& item, double scale)
{
    QFont font(item.font_family);
    font.setPointSizeF(item.font_size);
    font.setBold(item.bold);
    font.setItalic(item.italic);
    painter.setFont(font);
    const QRectF rect = scaled(item.rect, scale);
    // Text that will not fit its box is cut with an ellipsis, never drawn over its neighbours.
    const QString shown = QFontMetricsF(font, painter.device()).elidedText(item.text, Qt::ElideRight, rect.width());
    painter.drawText(rect, static_cast<int>(item.align | Qt::AlignVCenter | Qt::TextSingleLine), shown);
}

}  // namespace

void paint_page(QPainter& painter, const reportengine::Page& page, double scale)
{
    painter.save();
    for (const PageItem& item : page.items) {
        switch (item.kind) {
        case PageItem::Kind::Text:
            painter.setPen(Qt::black);
            paint_text(painter, item, scale);
            break;
        case PageItem::Kind::Line:
            painter.setPen(QPen(Qt::black, item.line_width * scale));
            painter.drawLine(QPointF(item.rect.left() * scale, item.rect.top() * scale),
                             QPointF(item.rect.right() * scale, item.rect.bottom() * scale));
            break;
        case PageItem::Kind::Box:
            painter.setPen(QPen(Qt::black, item.line_width * scale));
            painter.setBrush(Qt::NoBrush);
            painter.drawRect(scaled(item.rect, scale));
            break;
        }
    }
    painter.restore();
}

bool paint_pages(const reportengine::PageModel& model, QPagedPaintDevice& device)
{
    device.setPageLayout(QPageLayout(QPageSize(model.paper, QPageSize::Millimeter), QPageLayout::Portrait, QMarginsF()));
    QPainter painter;
    if (!painter.begin(&device))
        return false;
    const double scale = device.logicalDpiX() / 25.4;
    for (size_t i = 0; i < model.pages.size(); ++i) {
        if (i > 0 && !device.newPage())
            return false;
        paint_page(painter, model.pages[i], scale);
    }
    return painter.end();
}

// The PDF writer grows and frees large buffers page after page; with the C
// library's default thresholds each is mapped and given back to the system
// anew, which made a 10,000-page document three times slower. Freed memory
// is kept for reuse instead.
static void keep_freed_memory_for_reuse()
{
#ifdef __GLIBC__
    static std::once_flag once;
    std::call_once(once, [] {
        mallopt(M_TRIM_THRESHOLD, 64 * 1024 * 1024);
        mallopt(M_MMAP_THRESHOLD, 32 * 1024 * 1024);
    });
#endif
}

bool write_pdf(const reportengine::PageModel& model, const QString& path, const QString& title, QString& error)
{
    keep_freed_memory_for_reuse();
    {
        QPdfWriter writer(path);
        writer.setResolution(300);
        writer.setTitle(title);
        writer.setCreator(QStringLiteral("Quillary"));
        if (paint_pages(model, writer))
            return true;
    }
    error = QStringLiteral("The file %1 could not be written.").arg(path);
    QFile::remove(path);
    return false;
}

}  // namespace reportoutput
