#include "reportoutput/output_writers.h"

#include "reportoutput/font_measure.h"
#include "reportoutput/office_exports.h"
#include "reportoutput/page_painter.h"
#include "reports/report_runner.h"

namespace reportoutput {

void install_output_writers()
{
    install_report_writers({&write_pdf, &write_docx, &write_xlsx});
    reportengine::install_text_measure(&measured_width_mm);
}

}  // namespace reportoutput
