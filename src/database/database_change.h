#pragma once
// The commands of the Change Current Database screen, without widgets:
// creating, choosing, deleting, copying and merging database files. The
// screen shows `status` and `current_name` and passes its name box, which
// the commands check, trim and blank as the user sees it. Refusals and
// questions come as message boxes.
//
// While the screen is open the current database may be closed (by a copy,
// a delete or a failed choice); `current_name` keeps the name it had, and the
// way out (exit_current, use_new, quit) decides what is open on the return.

#include <QString>

struct TextBoxLike;

class DatabaseChange {
public:
    QString status;        // txt_Status
    QString current_name;  // lbl_Current_DB_Name

    // Each time the screen comes to the front: the database in use.
    void show_current();

    // A new empty database, not opened.
    void create_empty(TextBoxLike& new_name);
    // To the trash, after the question whose No (the information isn't
    // needed) deletes and whose Yes keeps.
    void delete_current();
    void delete_new(TextBoxLike& new_name);
    // A compressed copy of all of the current database.
    void copy_all(TextBoxLike& new_name);
    // A new database holding people, courses and exams, or with all_data
    // everything else too.
    void copy_selection(TextBoxLike& new_name, bool all_data);
    // The current database's rows that the named one lacks, added to it.
    void merge(TextBoxLike& new_name);

    // The ways back to the menu; true when the screen goes back.
    bool exit_current();
    bool use_new(TextBoxLike& new_name);
    bool quit(const QString& caption);
};
