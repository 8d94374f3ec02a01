#pragma once
// The exports that office programs open: a spreadsheet (.xlsx, written by
// libxlsxwriter) with a row for each printed section, and a Word document
// (.docx, a package written with libzip) with the pages' lines and a page
// break between pages.

#include "reportengine/page_model.h"

#include <QString>

namespace reportoutput {

bool write_xlsx(const reportengine::PageModel& model, const QString& path, const QString& title, QString& error);
bool write_docx(const reportengine::PageModel& model, const QString& path, const QString& title, QString& error);

}  // namespace reportoutput
