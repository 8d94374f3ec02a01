#include "database/database_change.h"

#include "database/copy_merge.h"
#include "database/database_file_name.h"
#include "database/db_handling.h"
#include "database/schema.h"
#include "engine/msg_box.h"
#include "shell/app_globals.h"
#include "shell/file_checks.h"
#include "shell/settings.h"

namespace {

int box(const QString& text, int style)
{
    return engine::MsgBox(text, style, App_Title());
}

void note(const QString& text)
{
    box(text, engine::mb::Information);
}

// "THINK !! ": the information in the file is needed unless the answer is No.
bool information_not_needed(const QString& name)
{
    return box(QStringLiteral("THINK !! ") + QLatin1Char('\n') + QStringLiteral("Do you need the information in ") + name,
               engine::mb::YesNo | engine::mb::Question)
           == engine::answer::No;
}

QString deletion_outcome(bool deleted)
{
    return deleted ? QStringLiteral("database deleted") : QStringLiteral("deletion failed");
}

}  // namespace

void DatabaseChange::show_current()
{
    current_name = Current_Db_Name();
}

void DatabaseChange::create_empty(TextBoxLike& new_name)
{
    status.clear();
    if (!Check_New_Database_Name(new_name, true))
        return;
    status = DB_Create_Database(database_file_name(new_name.text()), true) ? QStringLiteral("New database created")
                                                                            : QStringLiteral("Creation failed");
}

void DatabaseChange::delete_current()
{
    status.clear();
    const QString name = current_name.trimmed();
    if (name.isEmpty()) {
        note(QStringLiteral("Enter a Current database name and try again."));
        return;
    }
    if (!information_not_needed(name)) {
        status = QStringLiteral("Deletion cancelled");
        return;
    }
    DB_Close_All();
    status = deletion_outcome(DB_Recycle_Files(name));
    current_name.clear();
}

void DatabaseChange::delete_new(TextBoxLike& new_name)
{
    status.clear();
    const QString typed = new_name.text().trimmed();
    if (typed.isEmpty()) {
        note(QStringLiteral("Enter a new database name and try again."));
        return;
    }
    if (same_database_file(typed, current_name.trimmed())) {
        note(QStringLiteral("This is the current database.") + QStringLiteral("Use the Delete Current button to try again."));
        return;
    }
    if (!information_not_needed(typed)) {
        status = QStringLiteral("Deletion cancelled");
        return;
    }
    status = deletion_outcome(DB_Recycle_Files(database_file_name(typed)));
    new_name.setText(QString());
}

void DatabaseChange::copy_all(TextBoxLike& new_name)
{
    status.clear();
    if (current_name.trimmed().isEmpty()) {
        note(QStringLiteral("There is no current database to compress."));
        return;
    }
    if (!Check_New_Database_Name(new_name, true))
        return;
    // The copy is made from the closed file; it stays closed until the user leaves.
    DB_Close_All();
    status = DB_Compact_Database(current_name.trimmed(), database_file_name(new_name.text()))
                 ? QStringLiteral("Successfully completed the copy and compress")
                 : QStringLiteral("copy failed");
}

void DatabaseChange::copy_selection(TextBoxLike& new_name, bool all_data)
{
    status.clear();
    if (current_name.trimmed().isEmpty()) {
        note(QStringLiteral("There is no current database to copy."));
        return;
    }
    if (!Check_New_Database_Name(new_name, true))
        return;
    const QString target = database_file_name(new_name.text());
    // The Standard_Values row comes with the copy.
    if (!DB_Create_Database(target, false)) {
        status = QStringLiteral("copy failed during database creation");
        return;
    }
    status = DB_Copy_DB_For_NewTerm(current_name.trimmed(), target, all_data) ? QStringLiteral("successfully copied")
                                                                             : QStringLiteral("copy failed");
}

void DatabaseChange::merge(TextBoxLike& new_name)
{
    status.clear();
    const QString typed = new_name.text().trimmed();
    if (typed.isEmpty()) {
        note(QStringLiteral("Enter a new database name and try again."));
        return;
    }
    if (same_database_file(typed, current_name.trimmed())) {
        note(QStringLiteral("The New database is the current database.")
             + QStringLiteral("Enter a different database and try again."));
        return;
    }
    const QString question = QStringLiteral("THINK !! ") + QLatin1Char('\n') + QStringLiteral("Have you taken to take a copy of ")
                             + typed + QStringLiteral(" before merging?") + QLatin1Char('\n')
                             + QStringLiteral("If the merge fails, this file will be deleted.");
    if (box(question, engine::mb::YesNo | engine::mb::Question) == engine::answer::No) {
        status = QStringLiteral("Merge abandoned");
        return;
    }
    status = DB_Merge_Databases(current_name.trimmed(), database_file_name(typed))
                 ? QStringLiteral("Successfully merged")
                 : QStringLiteral("Merge Failed - The New database has been deleted");
}

bool DatabaseChange::exit_current()
{
    status.clear();
    const QString name = current_name.trimmed();
    if (name.isEmpty()) {
        const int answer = box(QStringLiteral("Cannot have a blank database.") + QLatin1Char('\n')
                                   + QStringLiteral("Do you still wish to exit?"),
                               engine::mb::YesNo | engine::mb::Question);
        if (answer != engine::answer::Yes)
            return false;
        DB_Close_All();
        return true;
    }
    DB_Close_All();
    if (!DB_Open(name)) {
        note(QStringLiteral("Cannot open the current database.") + QLatin1Char('\n')
             + QStringLiteral("Choose or create a new database and use the Exit using New button."));
        return false;
    }
    return true;
}

bool DatabaseChange::use_new(TextBoxLike& new_name)
{
    status.clear();
    if (!Check_New_Database_Name(new_name, false))
        return false;
    const QString name = database_file_name(new_name.text());
    DB_Close_All();
    if (!DB_Open(name)) {
        note(QStringLiteral("Couldn't open this file as a database."));
        return false;
    }
    if (!Set_Default_Database(name)) {
        Settings().default_database = name;
        box(QStringLiteral("The database name used at startup could not be changed.")
                + QStringLiteral("so the change will only affect this session"),
            engine::mb::OkOnly);
    }
    return true;
}

bool DatabaseChange::quit(const QString& caption)
{
    status.clear();
    const QString question =
        QStringLiteral("This exit should only be used when you cannot create a database or use the current database. ")
        + QLatin1Char('\n') + QStringLiteral("Do you wish to quit from ") + caption;
    if (box(question, engine::mb::YesNo | engine::mb::Question) == engine::answer::No)
        return false;
    DB_Close_All();
    return true;
}
