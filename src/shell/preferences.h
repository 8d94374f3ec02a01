#pragma once
// What the Preferences screen shows and stores, without the screen: the
// machine's date order in words, whether the school runs its own invoicing
// scripts, the course order, and the settings that follow a generation of
// customised report files.

#include <QString>

// "Day Month Year" and the like for Glob_Date_Order's value.
QString Date_Order_Text(short order);

// "None", or which personalised discount scripts are in force (a term or
// course costs script, an activity script, or both on two lines): a script
// other than the standard one of the scripting folder is the school's own.
QString Discount_Schemes_Text();

// The number, 1 to 4, of the course order query in force.
short Course_Order_Number();
// Stores the course order query of that number; false once reported.
bool Store_Course_Order(short number);

// After a generation: the new report format folder becomes the one in force,
// and its list file too when the standard list was in force; a personalised
// list stays. False when the settings could not be written (reported).
bool Use_Generated_Folders(const QString& new_report_dir, const QString& new_list_file);
