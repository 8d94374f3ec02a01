#pragma once
// The record by which callers use the file selector, and the selector's
// decisions that need no widget: where it opens, its caption and filters,
// the check of a new file name and the composing of the result.
//
// A caller fills the inputs, shows frm_Select_File modally and, on return,
// tests Cancelled. Paths use "/"; the "drive" of an absolute path is "/".
// There are no drive letters here, so Check_Drive and Check_Directory have
// nothing to refuse; the record keeps them so callers keep their form.

#include <QString>
#include <QStringList>
#include <array>
#include <utility>

struct FileSelectRecord {
    // In.
    QString Start_Path;             // blank: the application's folder
    bool Select_Directory = false;  // choose a folder
    bool Select_New_File = false;   // name a new file; both false: choose an existing file
    bool Name_Required = false;     // with Select_New_File: a typed name is compulsory
    bool Check_Drive = false;
    bool Check_Directory = false;
    std::array<std::pair<QString, QString>, 4> Filters;  // shown text and pattern; the first blank text ends them
    QString Extension;              // default extension of a new file, without the point
    // Out.
    bool Cancelled = false;
    QString Out_Drive;
    QString Out_Directory;
    QString Out_File;
    QString Out_Path;
};

FileSelectRecord& Glob_File_Select();

namespace file_select {

enum class Mode { Existing_File, New_File, Directory };
Mode mode_of(const FileSelectRecord& record);

// "Select a Directory", "Select a New File" or "Select an Existing File".
QString caption_of(const FileSelectRecord& record);

// The folder to open in: Start_Path's folder (the path itself when it names a
// folder); the application's folder when it is blank.
QString start_folder(const QString& start_path);

// The filters as the file dialog takes them ("Databases (*.mdb)"), stopping
// at the first blank text. No filter at all gives "All Files (*)".
QStringList name_filters(const FileSelectRecord& record);

// Trims the name and gives it the default extension when it has none (the
// caller shows the name back), then refuses a name that exists in `folder`
// with "The file <path> already exists. Type another name.". True when the
// name may be used.
bool Check_New_File(QString& name, const QString& folder, const QString& extension);

// The folder, a "/" unless it ends in one, and the file.
QString out_path(const QString& folder, const QString& file);

}  // namespace file_select
