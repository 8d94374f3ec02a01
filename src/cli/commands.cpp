#include "cli/commands.h"

#include "cli/cli_boxes.h"
#include "cli/cli_support.h"
#include "cli/admin_commands.h"
#include "cli/database_commands.h"
#include "cli/demo_school.h"
#include "cli/invoicing_commands.h"
#include "cli/people_commands.h"
#include "cli/report_commands.h"
#include "database/db_handling.h"
#include "engine/workspace.h"
#include "shell/app_globals.h"
#include "shell/locale_formats.h"
#include "shell/settings.h"

#include <QTextStream>
#include <cstdio>
#include <functional>
#include <map>

namespace cli {

namespace {

int usage()
{
    err() << "usage: quillary-cli --version\n"
             "       quillary-cli check DB\n"
             "       quillary-cli demo DB\n"
          << database_usage() << admin_usage() << invoicing_usage() << people_usage() << report_usage();
    err().flush();
    return 2;
}

int demo_command(const QStringList& args)
{
    if (args.size() != 1)
        return usage();
    install_box_answers(Answer::Yes);
    // The same school every time: the install folder's scripts, whatever the
    // user's own settings say, and nothing written to their log.
    Default_Settings(Settings());
    Current_Log_File().clear();
    Setup_Formats();
    const bool built = demo::build_demo_school(args.first());
    close_all();
    if (built)
        out() << "The demo school is in " << args.first() << "\n";
    return built ? 0 : 1;
}

int check(const QStringList& args)
{
    if (args.size() != 1)
        return usage();
    install_box_answers(Answer::No);
    load_settings();
    const bool opened = open_database(args.first());
    if (opened) {
        const SystemRecord& record = Sys_Record();
        out() << "version: " << record.version << "\n"
              << "style: " << record.style << "\n"
              << "report list file: " << record.report_list << "\n"
              << "term invoicing script: " << record.term_script << "\n"
              << "activity invoicing script: " << record.activity_script << "\n"
              << "course costs script: " << record.cost_script << "\n";
        out().flush();
    }
    close_all();
    return opened ? 0 : 1;
}

}  // namespace

int run(const QStringList& args)
{
    if (args.isEmpty())
        return usage();
    const QString command = args.first();
    const QStringList rest = args.mid(1);
    if (command == QLatin1String("--version")) {
        out() << "quillary-cli " << QUILLARY_VERSION << "\n";
        out().flush();
        return 0;
    }
    if (command == QLatin1String("check"))
        return check(rest);
    if (command == QLatin1String("demo"))
        return demo_command(rest);
    for (const auto& runner : {run_database_command, run_admin_command, run_invoicing_command, run_people_command,
                                run_report_command}) {
        if (const int status = runner(command, rest); status >= 0)
            return status == 2 ? usage() : status;
    }
    return usage();
}

}  // namespace cli
