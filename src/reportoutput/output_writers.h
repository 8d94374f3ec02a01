#pragma once
// Hands the report runner the writers of PDF, Word and Excel files, which
// need libraries beyond the core, and the layout the measure of the fonts
// it prints with. The programs call it once at start.

namespace reportoutput {

void install_output_writers();

}  // namespace reportoutput
