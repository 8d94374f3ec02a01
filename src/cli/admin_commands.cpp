#include "cli/admin_commands.h"

#include "cli/cli_boxes.h"
#include "cli/cli_support.h"
#include "database/copy_merge.h"
#include "database/db_handling.h"
#include "database/schema.h"
#include "engine/jet_date.h"
#include "shell/file_checks.h"

#include <QFileInfo>

namespace cli {

namespace {

// A file name given on the command line stands where the screens' text box
// stands, so that the same check of a new name applies.
class NameArgument : public TextBoxLike {
public:
    explicit NameArgument(QString name) : name_(std::move(name)) {}
    QString text() const override { return name_; }
    void setText(const QString& text) override { name_ = text; }
    void setFocus() override {}

private:
    QString name_;
};

QString full_name(const QString& name)
{
    return QFileInfo(name).absoluteFilePath();
}

bool is_new_name(const QString& name)
{
    NameArgument argument(name);
    return Check_New_Database_Name(argument, true);
}

int finish(bool ok, const QString& success, const QString& failure)
{
    out() << (ok ? success : failure) << "\n";
    close_all();
    return ok ? 0 : 1;
}

// The source of a copy or merge is a file the program could work on: one
// that passes the version gate, without upgrading it.
bool usable_source(const QString& name)
{
    const bool opened = open_database(name);
    DB_Close_All();
    return opened;
}

int upgrade(const QStringList& args)
{
    if (args.size() != 1)
        return 2;
    const QString name = full_name(args.first());
    install_box_answers(Answer::Yes);
    load_settings();
    SystemRecord before;
    if (!DB_Open_Raw(name) || !DB_Read_Sys(before))
        return finish(false, QString(), QStringLiteral("Unsuccessful"));
    DB_Close_All();
    if (before.version == 13)
        return finish(true, QStringLiteral("The database is at version 13 already."), QString());
    return finish(open_database(name), QStringLiteral("The database has been upgraded."), QStringLiteral("Unsuccessful"));
}

int copy(QStringList args)
{
    const bool copy_all = take_flag(args, QStringLiteral("--all"));
    if (args.size() != 2)
        return 2;
    const QString source = full_name(args[0]);
    const QString target = full_name(args[1]);
    install_box_answers(Answer::No);
    load_settings();
    if (!usable_source(source) || !is_new_name(target))
        return finish(false, QString(), QStringLiteral("copy failed"));
    if (!DB_Create_Database(target, false))
        return finish(false, QString(), QStringLiteral("copy failed during database creation"));
    return finish(DB_Copy_DB_For_NewTerm(source, target, copy_all), QStringLiteral("successfully copied"),
                  QStringLiteral("copy failed"));
}

// The compressed copy, recorded in the source as its last backup.
int backup(const QStringList& args)
{
    if (args.size() != 2)
        return 2;
    const QString source = full_name(args[0]);
    const QString target = full_name(args[1]);
    install_box_answers(Answer::No);
    load_settings();
    if (!is_new_name(target) || !DB_Compact_Database(source, target))
        return finish(false, QString(), QStringLiteral("copy failed"));
    out() << "Successfully Copied. Please keep it in a safe place!\n";
    // The copy stands either way; the exit status says whether the source
    // also records it as its last backup.
    bool recorded = open_database(source);
    if (recorded) {
        Sys_Record().backup_filename = target;
        Sys_Record().backup_date = engine::now();
        recorded = DB_Update_Sys(Sys_Record());
        if (!recorded)
            out() << "Couldn't update the backup info in the current database.\n";
    }
    close_all();
    return recorded ? 0 : 1;
}

int merge(const QStringList& args)
{
    if (args.size() != 2)
        return 2;
    const QString source = full_name(args[0]);
    const QString target = full_name(args[1]);
    install_box_answers(Answer::No);
    load_settings();
    if (QFileInfo(source) == QFileInfo(target)) {
        err() << "The New database is the current database. Enter a different database and try again.\n";
        return finish(false, QString(), QStringLiteral("Merge abandoned"));
    }
    if (!usable_source(source))
        return finish(false, QString(), QStringLiteral("Merge abandoned"));
    return finish(DB_Merge_Databases(source, target), QStringLiteral("Successfully merged"),
                  QStringLiteral("Merge Failed - The New database has been deleted"));
}

int repair(const QStringList& args)
{
    if (args.size() != 1)
        return 2;
    install_box_answers(Answer::No);
    load_settings();
    return finish(DB_Repair(full_name(args.first())), QStringLiteral("Successfully Repaired. "),
                  QStringLiteral("repair failed"));
}

}  // namespace

int run_admin_command(const QString& command, QStringList args)
{
    if (command == QLatin1String("upgrade"))
        return upgrade(args);
    if (command == QLatin1String("copy"))
        return copy(args);
    if (command == QLatin1String("backup"))
        return backup(args);
    if (command == QLatin1String("merge"))
        return merge(args);
    if (command == QLatin1String("repair"))
        return repair(args);
    return -1;
}

QString admin_usage()
{
    return QStringLiteral("       quillary-cli upgrade DB\n"
                          "       quillary-cli copy SRC DST [--all]\n"
                          "       quillary-cli backup SRC DST\n"
                          "       quillary-cli merge SRC DST\n"
                          "       quillary-cli repair DB\n");
}

}  // namespace cli
