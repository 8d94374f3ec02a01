#include "cli/people_commands.h"

#include "cli/cli_boxes.h"
#include "cli/cli_support.h"
#include "people/pupil_import.h"
#include "shell/settings.h"

namespace cli {

QString people_usage()
{
    return QStringLiteral("       quillary-cli import-pupils FILE [--database DB] [--header] [--skip-refused]\n");
}

int run_people_command(const QString& command, QStringList args)
{
    if (command != QLatin1String("import-pupils"))
        return -1;
    const QStringList databases = take_option(args, QStringLiteral("--database"));
    const bool header = take_flag(args, QStringLiteral("--header"));
    const bool skip_refused = take_flag(args, QStringLiteral("--skip-refused"));
    if (args.size() != 1 || databases.size() > 1)
        return 2;
    install_box_answers(Answer::No);
    load_settings();
    const QString database = databases.isEmpty() ? Settings().default_database : databases[0];
    if (database.trimmed().isEmpty()) {
        err() << "no default database: name one with --database DB\n";
        err().flush();
        return 2;
    }
    if (!open_database(database)) {
        close_all();
        return 1;
    }

    pupil_import::ImportHooks hooks;
    hooks.first_record = [header](const pupil_import::Record&) {
        return header ? pupil_import::HeaderAnswer::Header : pupil_import::HeaderAnswer::Data;
    };
    hooks.refused = [skip_refused](const QString& message) {
        err() << message << "\n";
        err().flush();
        if (!skip_refused)
            return false;
        pupil_import::Log_Passed_Over(message);
        return true;
    };
    pupil_import::PupilImport importer;
    const pupil_import::ImportOutcome outcome = importer.run(args[0], hooks);
    const bool done = outcome.end == pupil_import::ImportEnd::Processed;
    if (done) {
        out() << outcome.status << "\n"
              << QStringLiteral("%1 pupils added, %2 brought up to date, %3 lines passed over in %4\n")
                     .arg(outcome.added)
                     .arg(outcome.updated)
                     .arg(outcome.skipped)
                     .arg(database);
    } else {
        err() << outcome.status << "\nNothing has been imported.\n";
    }
    close_all();
    return done ? 0 : 1;
}

}  // namespace cli
