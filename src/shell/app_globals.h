#pragma once
// The few values the whole program shares from start to end: the title of
// every message box, the executable's name, the abort flag and the name of
// the log file that Report_Error writes to.

#include <QString>

// "Quillary <major>.<revision>"; the minor number is left out on purpose.
QString App_Title();

// The executable's base name: names the settings and the default log file.
QString App_Name();

// True when start-up must not go on; the main menu then ends the program.
bool& Abort_Flag();

// The log file in use; empty means that nothing is logged.
QString& Current_Log_File();
