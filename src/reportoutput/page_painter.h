#pragma once
// Drawing a report's pages with a QPainter: the viewer, the printer and PDF
// all draw through this, so that what is seen is what is printed.

#include "reportengine/page_model.h"

class QPainter;
class QPagedPaintDevice;

namespace reportoutput {

// Draws one page of the model at `scale` device units per millimetre.
void paint_page(QPainter& painter, const reportengine::Page& page, double scale);

// Draws every page onto a paged device (a PDF writer or a printer) whose page
// is the model's paper; false when the device can't be painted on.
bool paint_pages(const reportengine::PageModel& model, QPagedPaintDevice& device);

// Writes the pages as a PDF file; false with the reason when it can't.
bool write_pdf(const reportengine::PageModel& model, const QString& path, const QString& title, QString& error);

}  // namespace reportoutput
