#pragma once
// The file test, the path helpers and the check of a new database name.
// Paths use "/"; the "drive" of an absolute path is "/", a relative path has none.

#include <QString>

// 0: no such file (or folder); 1: the file is there (readable or not);
// 2: the test itself failed, with "Error Occurred, <number> : <description>"
// in error_text. error_text is blank otherwise.
int Glob_File_Check(const QString& name, QString& error_text);

// Splits a full name into drive, parent folder, base name and extension
// (without its point). A name without an extension is taken to be a folder:
// folder is then the whole name, file and extension stay empty.
void Split_Path(const QString& full, QString& drive, QString& folder, QString& file, QString& extension);

// Joins folder and name with exactly one "/" between them.
QString build_path(const QString& folder, const QString& name);

// What Check_New_Database_Name needs of a text box.
struct TextBoxLike {
    virtual ~TextBoxLike() = default;
    virtual QString text() const = 0;
    virtual void setText(const QString&) = 0;
    virtual void setFocus() = 0;
};

// Trims the box's text (putting it back) and checks it names a new database
// file: given, absolute, and, when must_not_exist, not there yet (a name
// without extension is tested with ".mdb" added; the box keeps it as typed).
// A failure puts the focus in the box, shows why and gives false.
bool Check_New_Database_Name(TextBoxLike& box, bool must_not_exist);
