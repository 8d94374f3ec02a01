#pragma once
// "Display Files" on the database administration screens: the file selector
// over database files, the choice going into the screen's name box.

class QLineEdit;
class QString;
class QWidget;

// Opens the selector in the folder of the name in `name_box`, or of
// `start_name` when the box is blank; a database chosen or named there
// replaces the box's text. A cancel leaves the box as it was.
void Choose_Database_File(QWidget* screen, QLineEdit* name_box, const QString& start_name);
