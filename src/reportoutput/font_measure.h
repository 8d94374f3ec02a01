#pragma once
// The width of a text as the page painter will print it, in millimetres:
// what the layout breaks growing fields by.

#include "reportengine/text_measure.h"

namespace reportoutput {

double measured_width_mm(const QString& text, const reportengine::TextFont& font);

}  // namespace reportoutput
