#include "cli/invoicing_commands.h"

#include "billing/auto_invoicing.h"
#include "calendar/calendar_db.h"
#include "calendar/term_calendar.h"
#include "cli/cli_boxes.h"
#include "cli/cli_support.h"
#include "engine/jet_date.h"
#include "engine/vb_values.h"
#include "script/global_run_sql.h"
#include "shell/file_checks.h"
#include "shell/locale_formats.h"
#include "shell/selection_lists.h"
#include "shell/settings.h"

#include <functional>

namespace cli {

namespace {

// Wrong arguments: the caller prints the usage of every command.
int usage()
{
    return 2;
}

}  // namespace

QString invoicing_usage()
{
    return QStringLiteral("       quillary-cli run-script DB FILE [--yes|--no]\n"
             "       quillary-cli term save DB --name NAME --start YYYY-MM-DD --end YYYY-MM-DD [--id ID]\n"
             "       quillary-cli holiday add|remove DB YYYY-MM-DD\n"
             "       quillary-cli invoice terms DB [--term ID]... [--course ID]... [--pupil ID]... [--yes|--no]\n"
             "       quillary-cli invoice activities DB [--date YYYY-MM-DD]... [--activity ID]... [--pupil ID]... [--yes|--no]\n"
             "       quillary-cli invoice delete DB all|paid [--yes|--no]\n"
             "       quillary-cli invoice delete DB terms|activities [selection options] [--yes|--no]\n"
             "       (the invoice commands also take --scripts DIR)\n");
}

namespace {

bool read_date(const QString& text, QDate& day)
{
    day = QDate::fromString(text, Qt::ISODate);
    if (day.isValid())
        return true;
    err() << "not a date (YYYY-MM-DD): " << text << "\n";
    return false;
}

bool read_id(const QString& text, qint32& id)
{
    bool ok = false;
    id = text.toInt(&ok);
    if (ok && id > 0)
        return true;
    err() << "not an id: " << text << "\n";
    return false;
}

Answer answer_from(QStringList& args)
{
    const bool yes = take_flag(args, QStringLiteral("--yes"));
    const bool no = take_flag(args, QStringLiteral("--no"));
    if (yes)
        return Answer::Yes;
    return no ? Answer::No : Answer::Default;
}

// Installs the answers, reads the settings and opens the database; runs the
// work and closes everything. The work gives the exit status.
int with_database(const QString& database, Answer answer, const std::function<int()>& work)
{
    install_box_answers(answer);
    load_settings();
    if (!open_database(database)) {
        close_all();
        return 1;
    }
    const int status = work();
    close_all();
    return status;
}

void print_line(const QString& text)
{
    out() << text << "\n";
    out().flush();
}

int run_script(QStringList args)
{
    const Answer answer = answer_from(args);
    if (args.size() != 2)
        return usage();
    const QString file = args[1];
    return with_database(args[0], answer, [&file] {
        QString status;
        const bool applied = Global_Run_SQL(file, status);
        print_line(status);
        return applied ? 0 : 1;
    });
}

int save_term(QStringList args)
{
    const QStringList names = take_option(args, QStringLiteral("--name"));
    const QStringList starts = take_option(args, QStringLiteral("--start"));
    const QStringList ends = take_option(args, QStringLiteral("--end"));
    const QStringList ids = take_option(args, QStringLiteral("--id"));
    QDate start;
    QDate end;
    qint32 id = 0;
    if (args.size() != 1 || names.size() != 1 || starts.size() != 1 || ends.size() != 1 || ids.size() > 1)
        return usage();
    if (!read_date(starts[0], start) || !read_date(ends[0], end) || (!ids.isEmpty() && !read_id(ids[0], id)))
        return 2;
    return with_database(args[0], Answer::Default, [&] {
        // As on the screen: the dates typed, the grid filled, then Update.
        TermCalendar calendar;
        calendar.boxes.term_id = id > 0 ? QString::number(id) : QString();
        calendar.boxes.name = names[0];
        calendar.boxes.start = vb::Format(engine::make_datetime(start), Glob_Date_Format());
        calendar.boxes.end = vb::Format(engine::make_datetime(end), Glob_Date_Format());
        if (!calendar.Fill_Grid(start, end) || !calendar.Save_Term())
            return 1;
        QStringList totals;
        for (int day = 0; day < term_grid::Days; ++day)
            totals << QString::number(calendar.total(day));
        print_line(QStringLiteral("term ") + calendar.boxes.term_id + QStringLiteral(" saved; lessons Sunday to Saturday: ")
                   + totals.join(QStringLiteral(" ")));
        return 0;
    });
}

int change_holiday(const QString& action, QStringList args)
{
    QDate day;
    if (args.size() != 2 || (action != QLatin1String("add") && action != QLatin1String("remove")))
        return usage();
    if (!read_date(args[1], day))
        return 2;
    return with_database(args[0], Answer::Default, [&] {
        const bool changed = action == QLatin1String("add") ? DB_Insert_Holiday(day) : DB_Delete_Holiday(day);
        return changed ? 0 : 1;
    });
}

// The selection options, read before the database is opened and put in the
// selection lists after it, since opening a database resets them.
struct Selection {
    QVector<qint32> terms, courses, activities, pupils;
    QVector<QDate> dates;

    bool read(QStringList& args)
    {
        return read_ids(args, QStringLiteral("--term"), terms) && read_ids(args, QStringLiteral("--course"), courses)
               && read_ids(args, QStringLiteral("--activity"), activities) && read_ids(args, QStringLiteral("--pupil"), pupils)
               && read_dates(args);
    }
    void apply() const
    {
        for (qint32 id : terms)
            Sel_Terms().append(id);
        for (qint32 id : courses)
            Sel_Courses().append(id);
        for (qint32 id : activities)
            Sel_Activities().append(id);
        for (qint32 id : pupils)
            Sel_Pupils().append(id);
        for (const QDate& day : dates)
            Sel_Activity_Dates().append(day);
    }

private:
    static bool read_ids(QStringList& args, const QString& option, QVector<qint32>& ids)
    {
        for (const QString& text : take_option(args, option)) {
            qint32 id = 0;
            if (!read_id(text, id))
                return false;
            ids << id;
        }
        return true;
    }
    bool read_dates(QStringList& args)
    {
        for (const QString& text : take_option(args, QStringLiteral("--date"))) {
            QDate day;
            if (!read_date(text, day))
                return false;
            dates << day;
        }
        return true;
    }
};

void use_scripts_folder(const QString& folder)
{
    SettingsRecord& settings = Settings();
    settings.script_dir = folder;
    settings.cost_script = build_path(folder, QStringLiteral("CrsCosts.sql"));
    settings.term_script = build_path(folder, QStringLiteral("InTerms.sql"));
    settings.activity_script = build_path(folder, QStringLiteral("InActDts.sql"));
}

// An invoicing command as the Automated Invoicing screen runs it: the
// criteria chosen, the screen brought to the front, a button, the screen closed.
int invoice(const QString& action, QStringList args)
{
    const Answer answer = answer_from(args);
    const QStringList scripts = take_option(args, QStringLiteral("--scripts"));
    Selection selection;
    if (!selection.read(args))
        return 2;
    const bool deleting = action == QLatin1String("delete");
    const QString what = deleting && args.size() == 2 ? args[1] : QString();
    if (scripts.size() > 1 || args.size() != (deleting ? 2 : 1))
        return usage();
    std::function<bool(AutoInvoicing&)> button;
    if (action == QLatin1String("terms"))
        button = &AutoInvoicing::insert_term;
    else if (action == QLatin1String("activities"))
        button = &AutoInvoicing::insert_activities;
    else if (deleting && what == QLatin1String("all"))
        button = &AutoInvoicing::delete_all;
    else if (deleting && what == QLatin1String("paid"))
        button = &AutoInvoicing::delete_paid;
    else if (deleting && what == QLatin1String("terms"))
        button = &AutoInvoicing::delete_selected_terms;
    else if (deleting && what == QLatin1String("activities"))
        button = &AutoInvoicing::delete_selected_activities;
    else
        return usage();

    return with_database(args[0], answer, [&] {
        if (!scripts.isEmpty())
            use_scripts_folder(scripts[0]);
        selection.apply();
        AutoInvoicing screen;
        // What the preparation could not set up has been said already; no
        // button is pressed on it.
        if (!screen.prepare()) {
            screen.unload();
            return 1;
        }
        const bool done = button(screen);
        print_line(screen.status);
        screen.unload();
        return done ? 0 : 1;
    });
}

}  // namespace

int run_invoicing_command(const QString& command, QStringList args)
{
    if (command == QLatin1String("run-script"))
        return run_script(args);
    if (command == QLatin1String("term")) {
        if (args.isEmpty() || args[0] != QLatin1String("save"))
            return usage();
        return save_term(args.mid(1));
    }
    if (command == QLatin1String("holiday")) {
        if (args.isEmpty())
            return usage();
        return change_holiday(args[0], args.mid(1));
    }
    if (command == QLatin1String("invoice")) {
        if (args.isEmpty())
            return usage();
        return invoice(args[0], args.mid(1));
    }
    return -1;
}

}  // namespace cli
