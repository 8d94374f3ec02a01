#pragma once
// The exports that need no library of their own, written from the page model:
// comma-separated values (a row for each printed section of the detail and
// group areas, or of any area the report leaves in), plain text and Rich Text
// (the pages' lines, top to bottom, left to right), and HTML (each page as a
// sheet with every item where the page has it).

#include "reportengine/page_model.h"

#include <QByteArray>
#include <QString>
#include <vector>

namespace reportengine {

// A value as one comma-separated cell: quoted, its quotes doubled, when it
// holds a comma, a quote or a line end.
QString csv_quoted(const QString& text);

// A page's texts as lines, top to bottom: texts whose tops stand within half
// a millimetre share a line, left to right.
std::vector<std::vector<const PageItem*>> lines_of(const Page& page);

QByteArray csv_export(const PageModel& model);
QByteArray text_export(const PageModel& model);
QByteArray rtf_export(const PageModel& model, const QString& title);
QByteArray html_export(const PageModel& model, const QString& title);

}  // namespace reportengine
