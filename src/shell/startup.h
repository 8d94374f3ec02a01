#pragma once
// The start and the end of the program, apart from its screens: the screen
// layer shows the start-up screen first and switches to the menu after.

#include <QString>

class SingleInstance;

// Steps of Main from clearing the abort flag to opening the default database.
// Returns false when the program must not go on (another copy is running, or
// the first-run question was answered No); the abort flag tells which.
bool Main_Start(SingleInstance& instance);

// Closes all databases and the workspace, as the program's end does.
void Main_End_Prog_Close();

// "Thank you for using " and the application name: composed, shown nowhere.
QString Main_End_Message();
